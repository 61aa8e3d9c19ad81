// An event loop in virtual time: when nothing is due, the clock jumps to what comes next.
#pragma once

#include <optional>
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
  void RunDue() override;
  /// std::logic_error if nothing will ever happen: a wait that would hang.
  void Wait(const WaitFor& what) override;
  /// The program gets no turn until then.
  void Freeze(Time until) { AdvanceTo(until); }

  void Add(Outside& outside) { outside_.push_back(&outside); }
  void Remove(Outside& outside) { std::erase(outside_, &outside); }
  /// How often events were let run.
  int Passes() const { return passes_; }

 private:
  void AdvanceTo(Time moment);

  Time now_{0};
  std::vector<Outside*> outside_;
  int passes_ = 0;
};

}  // namespace vk32
