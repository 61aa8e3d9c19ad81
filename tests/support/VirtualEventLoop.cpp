// An event loop in virtual time.
#include "support/VirtualEventLoop.h"

#include <algorithm>
#include <stdexcept>

namespace vk32 {

void VirtualEventLoop::RunDue() {
  AdvanceTo(now_);
  timers_.RunDue(now_);
}

void VirtualEventLoop::Wait(const WaitFor& what) {
  const Time next = std::min(EarliestDue(what.until), NextOutside().value_or(Never));
  if (next == Never) throw std::logic_error("nothing will ever happen");
  ++sleeps_;
  AdvanceTo(next);
}

std::optional<Time> VirtualEventLoop::NextOutside() const {
  std::optional<Time> next;
  for (const Outside* outside : outside_) {
    const auto due = outside->NextDue();
    if (due && (!next || *due < *next)) next = due;
  }
  return next;
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
