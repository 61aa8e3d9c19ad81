// An event loop in virtual time.
#include "support/VirtualEventLoop.h"

#include <algorithm>
#include <stdexcept>

namespace vk32 {

void VirtualEventLoop::RunDue() {
  AdvanceTo(now_);
  timers_.RunDue(now_);
}

void VirtualEventLoop::Wait(int) {
  const auto outside = NextOutside(), timer = timers_.NextDue();
  if (!outside && !timer) throw std::logic_error("nothing will ever happen");
  ++sleeps_;
  AdvanceTo(!outside ? *timer : !timer ? *outside : std::min(*outside, *timer));
}

void VirtualEventLoop::WaitQuietly(int, Time until) {
  ++sleeps_;
  const auto outside = NextOutside();
  AdvanceTo(outside ? std::min(*outside, until) : until);
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
}

}  // namespace vk32
