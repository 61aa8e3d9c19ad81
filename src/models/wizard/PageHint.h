// What is wrong with a value, in words on the page that shows it.
#pragma once

#include <string>

#include "forms/Controls.h"

namespace vk32 {

class PageHint {
 public:
  explicit PageHint(Form& form);

  /// `place`: of the words, on the form; the sign stands before them. `value`: what they are about, or nullptr. Its row
  /// is marked, if it stands in a table.
  void Show(const std::string& words, Place place, const Control* value);
  void Hide();
  /// A control has changed: what was wrong may be so no more.
  void Follow(const Control& changed);

 private:
  void MarkRows();

  const Control* value_ = nullptr;

 public:
  Image PageHintMark;
  Label PageHintLbl;
};

}  // namespace vk32
