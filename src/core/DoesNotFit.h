// The fault of a value that the device can't hold.
#pragma once

#include <string>

#include "forms/Control.h"
#include "platform/Fault.h"

namespace vk32 {

/// A field as the user knows it: the title of its page, its own words there, and the control that shows it on the
/// wizard. Words and control may be empty.
struct FieldPlace {
  std::string page, field;
  ControlName control{""};
};

/// Its description is for the user: names the page and the field, and says what to do.
class DoesNotFit : public RuntimeFault {
 public:
  DoesNotFit(const FieldPlace& place, const std::string& advice);
  /// Of all fields together.
  explicit DoesNotFit(const std::string& description) : RuntimeFault(Overflow, description) {}

  /// The same beside the field: "Slot 3, Low: enter a number from 0 to 255"
  const std::string& Hint() const { return hint_; }
  const ControlName& Where() const { return control_; }

 private:
  std::string hint_;
  ControlName control_{""};
};

// What to enter into a field of one byte, or of a word.
constexpr const char* EnterByte = "Enter a number from 0 to 255.";
constexpr const char* EnterWord = "Enter a number from 0 to 32767.";

}  // namespace vk32
