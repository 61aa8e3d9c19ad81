// Lists whose choice is held in a byte of the parameter registers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/Globals.h"
#include "forms/Controls.h"

namespace vk32 {

enum class Half { High, Low };  // RegisterHigh is the first byte on the wire

/// A byte of the image: byte 2 x index of it, or the one behind.
struct RegisterByte {
  int index;  // 0 to 256
  Half half;

  std::int32_t& In(Parameters& parameters) const {
    return (half == Half::High ? parameters.RegisterHigh : parameters.RegisterLow)[static_cast<std::size_t>(index)];
  }
};

/// A row of a list. It is picked when (byte & test) == value; picking it writes `writes` under mask.
struct Choice {
  Choice(std::string text_, int test_, int value_, int mask_)
      : Choice(std::move(text_), test_, value_, mask_, value_) {}
  Choice(std::string text_, int test_, int value_, int mask_, int writes_)
      : text(std::move(text_)), test(test_), value(value_), mask(mask_), writes(writes_) {}

  std::string text;
  int test, value;
  int mask, writes;
};
using ChoiceTable = std::vector<Choice>;

/// A choice by the whole byte: picked by its code, writes its code.
inline Choice Code(std::string text, int code) { return {std::move(text), 255, code, 255}; }

/// Handler and decoder walk the same rows. Selecting an entry, by code or by the user, writes its bits; the other bits
/// of the byte keep what they had.
class RegisterList : public ComboBox {
 public:
  /// `then`: what else a click does.
  RegisterList(const Container& container, ControlName name, Place place, Parameters& registers, RegisterByte byte,
               ChoiceTable choices, std::string defaultText, const Handler& then = {});

  void SelectDefault() { Text = default_; }
  /// Selects the row that the register's byte picks; a byte that picks none leaves the list and the byte.
  void Decode();

 private:
  void Encode();

  std::int32_t& byte_;
  const ChoiceTable choices_;
  const std::string default_;
};

}  // namespace vk32
