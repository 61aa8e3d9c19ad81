// The clock of the day, and the sleep by ppoll().
#include "platform/SystemEventLoop.h"

#include <poll.h>
#include <time.h>

#include <algorithm>

namespace vk32 {

std::tm EventLoop::LocalTime() const {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return local;
}

std::vector<bool> WaitForAny(std::span<const WaitFor> whats) {
  std::vector<pollfd> descriptors;
  descriptors.reserve(whats.size());
  Time until = Never;
  for (const WaitFor& what : whats) {
    descriptors.push_back({what.fd, static_cast<short>(what.ready == WaitFor::ToWrite ? POLLOUT : POLLIN), 0});
    until = std::min(until, what.until);
  }
  timespec left{};
  if (until != Never) {
    const auto span = std::max(until - MonotonicNow(), Time{0});
    left.tv_sec = static_cast<time_t>(span.count() / 1'000'000'000);
    left.tv_nsec = static_cast<long>(span.count() % 1'000'000'000);
  }
  const bool any = ppoll(descriptors.data(), descriptors.size(), until != Never ? &left : nullptr, nullptr) > 0;
  std::vector<bool> ready;
  ready.reserve(descriptors.size());
  for (const pollfd& descriptor : descriptors) ready.push_back(any && descriptor.revents != 0);
  return ready;
}

}  // namespace vk32
