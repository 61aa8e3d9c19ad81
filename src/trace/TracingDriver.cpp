// A serial driver that records what passes through another one.
#include "trace/TracingDriver.h"

namespace vk32 {

bool TracingDriver::Read(Handle handle, std::uint32_t count, Bytes& data) {
  const bool read = driver_.Read(handle, count, data);
  if (read) trace_.Passed(loop_.Now(), '<', data);
  return read;
}

bool TracingDriver::Write(Handle handle, std::string_view data, std::uint32_t& written) {
  const bool done = driver_.Write(handle, data, written);
  outgoing_ = data;
  gone_ = written;
  if (done || driver_.LastError() != ErrorIoPending) TraceOutgoing();
  return done;
}

bool TracingDriver::PendingResult(Handle handle, std::uint32_t& count) {
  const bool done = driver_.PendingResult(handle, count);
  gone_ = count;
  if (done || driver_.LastError() != ErrorIoIncomplete) TraceOutgoing();
  return done;
}

bool TracingDriver::Purge(Handle handle, std::uint32_t flags) {
  TraceOutgoing();
  return driver_.Purge(handle, flags);
}

bool TracingDriver::Close(Handle handle) {
  TraceOutgoing();
  return driver_.Close(handle);
}

void TracingDriver::TraceOutgoing() {
  if (gone_ < outgoing_.size()) outgoing_.resize(gone_);
  if (!outgoing_.empty()) trace_.Passed(loop_.Now(), '>', outgoing_);
  outgoing_.clear();
  gone_ = 0;
}

}  // namespace vk32
