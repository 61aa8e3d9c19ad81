// The fault of a value that the device can't hold.
#pragma once

#include <string>

#include "platform/Fault.h"

namespace vk32 {

/// Its description is for the user: names the page and the field, and says what to do.
class DoesNotFit : public RuntimeFault {
 public:
  DoesNotFit(const std::string& field, const std::string& advice)
      : RuntimeFault(Overflow, field + ": the device can't hold this value.\r\n" + advice) {}
};

// What to enter into a field of one byte, or of a word.
constexpr const char* EnterByte = "Enter a number from 0 to 255.";
constexpr const char* EnterWord = "Enter a number from 0 to 32767.";

}  // namespace vk32
