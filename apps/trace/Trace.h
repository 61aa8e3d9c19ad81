// The record of what passes on a line.
#pragma once

#include <fstream>
#include <string>

#include "platform/EventLoop.h"
#include "platform/SerialDriver.h"

namespace vk32 {

/// Lines of time in ms since the start, direction, bytes in hexadecimal and the message's name where it is a whole one:
/// "   1234.567 > 54 45 45  image upload". ">" is what VK32 writes, "<" what it reads.
class Trace {
 public:
  /// std::runtime_error, with words for the user, if the file can't be written.
  explicit Trace(const std::string& path);

  void Line(char direction, const Bytes& bytes);

 private:
  std::ofstream file_;
  Time start_;
};

}  // namespace vk32
