// The event loop of the programs without a window: the system's waits and the timers.
#pragma once

#include <algorithm>
#include <chrono>
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

/// For the system's own waits, which take whole milliseconds: never too few, at most a day, 0 of what is past.
inline std::chrono::milliseconds RoundedUp(Time span) {
  return std::chrono::ceil<std::chrono::milliseconds>(std::clamp<Time>(span, Time{0}, std::chrono::hours(24)));
}

/// Sleeps until one of these is ready or the earliest of their moments has come. For each, whether it is ready.
std::vector<bool> WaitForAny(std::span<const WaitFor> whats);

}  // namespace vk32
