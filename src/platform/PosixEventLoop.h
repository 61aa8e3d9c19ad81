// The event loop of the programs without a window: poll() on one descriptor and the timers.
#pragma once

#include "platform/EventLoop.h"

namespace vk32 {

class PosixEventLoop : public EventLoop {
 public:
  Time Now() const override;
  void RunDue() override;
  void Wait(const WaitFor& what) override;
};

/// The monotonic clock of the machine.
Time MonotonicNow();

}  // namespace vk32
