// The way back from a cleared table.
#pragma once

#include <functional>

#include "forms/Controls.h"

namespace vk32 {

/// "Undo Clear", in the place of the button that clears.
class UndoClearButton : public CommandButton {
 public:
  UndoClearButton(const Container& container, ControlName name, CommandButton& clear);

  /// Shows until it is clicked or withdrawn. `restore` brings back what was there.
  void Offer(std::function<void()> restore);
  /// The table has moved on: the button that clears is back.
  void Withdraw();

 private:
  void Undo();

  CommandButton& clear_;
  std::function<void()> restore_;
};

}  // namespace vk32
