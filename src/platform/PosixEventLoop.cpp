// The event loop of the programs without a window.
#include "platform/PosixEventLoop.h"

#include <poll.h>
#include <time.h>

#include <algorithm>
#include <vector>

namespace vk32 {

Time MonotonicNow() { return std::chrono::duration_cast<Time>(std::chrono::steady_clock::now().time_since_epoch()); }

Time PosixEventLoop::Now() const { return MonotonicNow(); }

void PosixEventLoop::RunDue() { timers_.RunDue(Now()); }

void PosixEventLoop::Wait(const WaitFor& what) {
  std::vector<pollfd> descriptors{{what.fd, static_cast<short>(what.ready == WaitFor::ToWrite ? POLLOUT : POLLIN), 0}};
  for (const auto& [fd, watcher] : watched_) descriptors.push_back({fd, POLLIN, 0});
  const Time until = EarliestDue(what.until);
  timespec left{};
  if (until != Never) {
    const auto span = std::max(until - Now(), Time{0});
    left.tv_sec = static_cast<time_t>(span.count() / 1'000'000'000);
    left.tv_nsec = static_cast<long>(span.count() % 1'000'000'000);
  }
  if (ppoll(descriptors.data(), descriptors.size(), until != Never ? &left : nullptr, nullptr) <= 0) return;
  for (std::size_t i = 1; i < descriptors.size(); ++i) {
    if (descriptors[i].revents != 0) Readable(descriptors[i].fd);
  }
}

}  // namespace vk32
