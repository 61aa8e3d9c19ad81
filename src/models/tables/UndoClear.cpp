// The way back from a cleared table.
#include "models/tables/UndoClear.h"

#include <utility>

namespace vk32 {

UndoClearButton::UndoClearButton(const Container& container, ControlName name, CommandButton& clear)
    : CommandButton(container, name, {clear.Left, clear.Top, clear.Width, clear.Height}, "Undo Clear",
                    [this] { Undo(); }),
      clear_(clear) {
  Withdraw();
}

void UndoClearButton::Offer(std::function<void()> restore) {
  restore_ = std::move(restore);
  Visible = true;
  clear_.Visible = false;
}

void UndoClearButton::Withdraw() {
  restore_ = {};
  clear_.Visible = true;
  Visible = false;
}

void UndoClearButton::Undo() {
  const auto restore = std::exchange(restore_, {});
  Withdraw();
  restore();
}

}  // namespace vk32
