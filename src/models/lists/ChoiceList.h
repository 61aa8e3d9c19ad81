// Lists whose choice is held in a number, as a code of its own or in some of its bits.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/NumberRef.h"
#include "forms/Controls.h"

namespace vk32 {

/// A row of a list. It is picked when (number & test) == value; picking it writes `writes` under mask.
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

/// A choice by the whole number: picked by its code, writes its code.
inline Choice Code(std::string text, int code) { return {std::move(text), ~0, code, ~0}; }
/// Picked by every number that picks no other row; writes its code.
inline Choice Otherwise(std::string text, int code) { return {std::move(text), 0, 0, ~0, code}; }
/// Decimal numbers from `first` to `last`, each its own code.
ChoiceTable Numbers(int first, int last);

/// Handler and decoder walk the same rows. Selecting an entry, by code or by the user, writes its bits; the other bits
/// of the number keep what they had.
class ChoiceList : public ComboBox {
 public:
  /// `then`: what else a click does.
  ChoiceList(const Container& container, ControlName name, Place place, NumberRef number, ChoiceTable choices,
             std::string defaultText, const Handler& then = {});

  void SelectDefault() { Text = default_; }
  /// Selects the row that the number picks; a number that picks none leaves the list and the number.
  void Decode();
  /// Takes other rows, with nothing selected.
  void SetChoices(ChoiceTable choices);

 private:
  void Encode();

  const NumberRef number_;
  ChoiceTable choices_;
  const std::string default_;
};

}  // namespace vk32
