// Whether the desktop asks for high contrast.
#pragma once

#include <QObject>
#include <functional>

namespace vk32 {

/// Asks the desktop each time the program comes to the front, without waiting for the answer.
class ContrastSetting {
 public:
  /// `told` is run with each answer. A desktop that doesn't know of contrast gives none.
  explicit ContrastSetting(std::function<void(bool high)> told);

 private:
  void Ask();

  std::function<void(bool high)> told_;
  QObject context_;  // of what waits for an answer
};

}  // namespace vk32
