// What is wrong with a value, in words on the page that shows it.
#pragma once

#include <functional>
#include <string>

#include "forms/Controls.h"

namespace vk32 {

class PageHint {
 public:
  /// `tell`: hears the words when they show, and an empty text when they go.
  PageHint(Form& form, std::function<void(const std::string&)> tell);

  /// `place`: of the words, on the form; the sign stands before them. `value`: what they are about, or nullptr. Its row
  /// is marked, if it stands in a table.
  void Show(const std::string& words, Place place, const Control* value);
  void Hide();
  bool Shows() const { return PageHintLbl.Visible; }
  bool Says(const std::string& words) const { return Shows() && PageHintLbl.Caption.Value() == words; }
  /// The value that they are about; nullptr: none, or nothing shows.
  const Control* About() const { return value_; }
  /// A control has changed: what was wrong may be so no more.
  void Follow(const Control& changed);

 private:
  void MarkRows();

  const std::function<void(const std::string&)> tell_;
  const Control* value_ = nullptr;

 public:
  Image PageHintMark;
  Label PageHintLbl;
};

}  // namespace vk32
