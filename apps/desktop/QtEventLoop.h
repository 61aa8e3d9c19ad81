// The event loop of the desktop: Qt's, with one alarm for all timers of the program.
#pragma once

#include <QTimer>
#include <map>
#include <memory>

#include "Notifier.h"
#include "platform/EventLoop.h"

namespace vk32 {

/// Its timers also run while the program idles in Qt's own loop. Needs the application object.
class QtEventLoop : public EventLoop {
 public:
  QtEventLoop();

  Time Now() const override;
  void RunDue() override;
  void Wait(const WaitFor& what) override;

 private:
  void TimersChanged() override;
  void WatchedChanged() override;
  void Ring();

  QTimer alarm_;
  std::map<int, std::unique_ptr<Notifier>> notifiers_;  // of the watched descriptors
  bool waiting_ = false;                                // nothing may tick
};

}  // namespace vk32
