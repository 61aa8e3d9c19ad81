// What wakes Qt's event loop: a descriptor, or on Windows a handle, that is ready.
#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "platform/EventLoop.h"

namespace vk32 {

/// Watches as long as it lives.
class Notifier {
 public:
  /// `tell` is run by the loop each time that it is ready; without one the loop is only woken.
  Notifier(int fd, WaitFor::Ready ready, const std::function<void()>& tell = nullptr);

 private:
  std::unique_ptr<QObject> watcher_;
};

}  // namespace vk32
