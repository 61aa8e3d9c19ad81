// An event loop in virtual time.
#include "support/VirtualEventLoop.h"

#include <algorithm>
#include <stdexcept>

namespace vk32 {

void VirtualEventLoop::RunDue() {
  ++passes_;
  AdvanceTo(now_);
  timers_.RunDue(now_);
}

void VirtualEventLoop::Wait(const WaitFor& what) {
  Time next = EarliestDue(what.until);
  for (const Outside* outside : outside_) next = std::min(next, outside->NextDue().value_or(Never));
  if (next == Never) throw std::logic_error("nothing will ever happen");
  AdvanceTo(next);
}

void VirtualEventLoop::AdvanceTo(Time moment) {
  now_ = std::max(now_, moment);
  for (Outside* outside : outside_) outside->RunDue(now_);
  const auto watched = watched_;  // whoever is told may change it
  for (const auto& [fd, watcher] : watched) {
    const bool readable =
        std::any_of(outside_.begin(), outside_.end(), [&](auto* outside) { return outside->Readable(fd); });
    if (readable) EventLoop::Readable(fd);
  }
}

}  // namespace vk32
