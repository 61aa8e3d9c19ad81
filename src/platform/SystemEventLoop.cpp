// The event loop of the programs without a window.
#include "platform/SystemEventLoop.h"

namespace vk32 {

Time MonotonicNow() { return std::chrono::duration_cast<Time>(std::chrono::steady_clock::now().time_since_epoch()); }

Time SystemEventLoop::Now() const { return MonotonicNow(); }

void SystemEventLoop::RunDue() { timers_.RunDue(Now()); }

/// Nothing comes from outside between the passes, and a look at the clock takes longer than one that finds nothing due.
void SystemEventLoop::RunPasses(int passes) {
  const Time now = Now();
  while (passes-- > 0) timers_.RunDue(now);
}

void SystemEventLoop::Wait(const WaitFor& what) {
  std::vector<WaitFor> whats{{what.fd, what.ready, EarliestDue(what.until)}};
  for (const auto& [fd, watcher] : watched_) whats.emplace_back(fd);
  const std::vector<bool> ready = WaitForAny(whats);
  for (std::size_t i = 1; i < whats.size(); ++i) {
    if (ready[i]) Readable(whats[i].fd);
  }
}

}  // namespace vk32
