// The event loop of the programs without a window.
#include "platform/PosixEventLoop.h"

#include <poll.h>
#include <time.h>

#include <algorithm>

namespace vk32 {
namespace {

void Poll(int fd, short events, std::optional<Time> until) {
  pollfd descriptor{fd, events, 0};
  timespec left{};
  if (until) {
    const auto span = std::max(*until - MonotonicNow(), Time{0});
    left.tv_sec = static_cast<time_t>(span.count() / 1'000'000'000);
    left.tv_nsec = static_cast<long>(span.count() % 1'000'000'000);
  }
  ppoll(&descriptor, fd >= 0 ? 1 : 0, until ? &left : nullptr, nullptr);
}

}  // namespace

Time MonotonicNow() { return std::chrono::duration_cast<Time>(std::chrono::steady_clock::now().time_since_epoch()); }

Time PosixEventLoop::Now() const { return MonotonicNow(); }

void PosixEventLoop::RunDue() { timers_.RunDue(Now()); }

void PosixEventLoop::Wait(int fd) { Poll(fd, POLLIN, timers_.NextDue()); }

void PosixEventLoop::WaitQuietly(int fd, Time until) { Poll(fd, POLLOUT, until); }

}  // namespace vk32
