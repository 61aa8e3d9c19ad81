// The event loop of the programs without a window: the system's waits and the timers.
#pragma once

#include <span>
#include <vector>

#include "platform/EventLoop.h"

namespace vk32 {

class SystemEventLoop : public EventLoop {
 public:
  Time Now() const override;
  void RunDue() override;
  void RunPasses(int passes) override;
  void Wait(const WaitFor& what) override;
};

/// The monotonic clock of the machine.
Time MonotonicNow();

/// Sleeps until one of these is ready or the earliest of their moments has come. For each, whether it is ready.
std::vector<bool> WaitForAny(std::span<const WaitFor> whats);

}  // namespace vk32
