// The record of what passes on a line.
#include "trace/Trace.h"

#include <cstdio>
#include <stdexcept>

#include "platform/PosixEventLoop.h"
#include "core/Convert.h"
#include "trace/MessageNames.h"

namespace vk32 {

Trace::Trace(const std::string& path) : file_(path, std::ios::binary), start_(MonotonicNow()) {
  if (!file_)
    throw std::runtime_error("The trace " + path + " can't be written. Name a file in a folder that you may write to.");
}

void Trace::Line(char direction, const Bytes& bytes) {
  if (bytes.empty()) return;
  char moment[32];
  const double milliseconds = std::chrono::duration<double, std::milli>(MonotonicNow() - start_).count();
  std::snprintf(moment, sizeof moment, "%12.3f ", milliseconds);
  std::string line = moment;
  line.append({direction, ' '}).append(HexText(bytes));
  if (const auto name = MessageName(bytes); !name.empty()) line.append("  ").append(name);
  file_ << line << std::endl;
}

}  // namespace vk32
