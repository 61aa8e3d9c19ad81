// An event loop in virtual time: when nothing is due, the clock jumps to what comes next.
#pragma once

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <vector>

#include "platform/EventLoop.h"

namespace vk32 {

/// Something outside the program that has a time of its own: a device on a line.
class Outside {
 public:
  virtual ~Outside() = default;
  virtual std::optional<Time> NextDue() const = 0;
  virtual void RunDue(Time now) = 0;
  virtual bool Readable(int) const { return false; }
};

class VirtualEventLoop : public EventLoop {
 public:
  Time Now() const override { return now_; }
  /// It starts at 21:40.
  std::tm LocalTime() const override {
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(now_).count() + 21 * 60 + 40;
    std::tm local{};
    local.tm_year = 126, local.tm_mon = 10, local.tm_mday = 25;
    local.tm_hour = static_cast<int>(minutes / 60 % 24), local.tm_min = static_cast<int>(minutes % 60);
    return local;
  }
  void RunDue() override {
    ++passes_;
    AdvanceTo(now_);
    timers_.RunDue(now_);
  }
  /// std::logic_error if nothing will ever happen: a wait that would hang.
  void Wait(const WaitFor& what) override {
    if (CanRead(what.fd)) return;
    Time next = EarliestDue(what.until);
    for (const Outside* outside : outside_) next = std::min(next, outside->NextDue().value_or(Never));
    if (next == Never) throw std::logic_error("nothing will ever happen");
    AdvanceTo(next);
  }
  /// The program gets no turn until then.
  void Freeze(Time until) { AdvanceTo(until); }

  void Add(Outside& outside) { outside_.push_back(&outside); }
  /// How often events were let run.
  int Passes() const { return passes_; }

 private:
  bool CanRead(int fd) const {
    return std::ranges::any_of(outside_, [fd](const Outside* outside) { return outside->Readable(fd); });
  }

  void AdvanceTo(Time moment) {
    now_ = std::max(now_, moment);
    for (Outside* outside : outside_) outside->RunDue(now_);
    const auto watched = watched_;  // whoever is told may change it
    for (const auto& [fd, watcher] : watched) {
      if (CanRead(fd)) EventLoop::Readable(fd);
    }
  }

  Time now_{0};
  std::vector<Outside*> outside_;
  int passes_ = 0;
};

}  // namespace vk32
