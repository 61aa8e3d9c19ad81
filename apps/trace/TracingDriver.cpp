// A serial driver that records what passes through another one.
#include "trace/TracingDriver.h"

namespace vk32 {

bool TracingDriver::Read(Handle handle, std::uint32_t count, Bytes& data) {
  const bool read = driver_.Read(handle, count, data);
  if (read) trace_.Line('<', data);
  return read;
}

bool TracingDriver::Write(Handle handle, std::string_view data, std::uint32_t& written) {
  const bool done = driver_.Write(handle, data, written);
  if (done) trace_.Line('>', Bytes(data.substr(0, written)));
  return done;
}

}  // namespace vk32
