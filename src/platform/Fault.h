// The run-time fault: the one exception that crosses modules.
#pragma once

#include <stdexcept>
#include <string>

namespace vk32 {

/// A fault with the classic number and words. Caught exactly where the system traps faults; anywhere else it reaches
/// the Dispatcher and ends the program.
class RuntimeFault : public std::runtime_error {
 public:
  enum Number {
    InvalidCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    FileNotFound = 53,
    DeviceIOError = 57,
    InputPastEndOfFile = 62,
    PathFileAccessError = 75,
  };

  /// With the classic words of the number.
  explicit RuntimeFault(Number number) : RuntimeFault(number, Words(number)) {}
  RuntimeFault(Number number, const std::string& description) : std::runtime_error(description), number_(number) {}

  int Code() const { return number_; }
  std::string Description() const { return what(); }

 private:
  static const char* Words(Number number);

  Number number_;
};

}  // namespace vk32
