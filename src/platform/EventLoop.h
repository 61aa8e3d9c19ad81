// The clock, the timers and the one place where the program sleeps.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace vk32 {

/// A moment or a span on the event loop's clock; moments count from some fixed start.
using Time = std::chrono::nanoseconds;
constexpr Time Never = Time::max();

/// The timers that wait for their moment, in the order in which they are due. Equal moments run in the order of their
/// start.
class TimerQueue {
 public:
  using Id = std::uint64_t;

  /// Runs `tick` once, when the clock has reached `due`.
  Id Start(Time due, std::function<void()> tick);
  void Stop(Id id);
  /// Makes a timer due at another moment. No such timer: does nothing.
  void Move(Id id, Time due);
  /// The moment of the first timer; nothing if none waits, or only such as are due at Never.
  std::optional<Time> NextDue() const;
  /// Runs the ticks that are due at `now` and were started before this call: a tick that starts the next one at once
  /// does not hold the caller. Ticks may start and stop timers, and may run RunDue again.
  void RunDue(Time now);

 private:
  using Key = std::pair<Time, Id>;

  Id last_ = 0;
  std::map<Key, std::function<void()>> ticks_;
  std::map<Id, Time> due_;
};

/// What a wait ends by, besides timers and acts of the user.
struct WaitFor {
  enum Ready { ToRead, ToWrite };

  WaitFor(int descriptor, Ready forWhat = ToRead, Time atLast = Never)
      : fd(descriptor), ready(forWhat), until(atLast) {}

  int fd;  // the system's descriptor, or handle; -1: none
  Ready ready;
  Time until;
};

/// What a front end, or a test, supplies to let time pass. Single-threaded.
class EventLoop {
 public:
  virtual ~EventLoop() = default;

  virtual Time Now() const = 0;
  /// The date and the time of day where the user is.
  virtual std::tm LocalTime() const;
  /// "21:40"
  std::string TimeOfDay() const;
  /// "2026-11-25 21:40"
  std::string DateAndTime() const;

  /// Runs `tick` once after `delay`. Returns the number by which StopTimer takes it back.
  TimerQueue::Id StartTimer(Time delay, std::function<void()> tick);
  /// The same, as soon as `fd` can be read. One watcher a descriptor; -1 never can.
  TimerQueue::Id StartWhenReadable(int fd, std::function<void()> tick);
  void StopTimer(TimerQueue::Id id);

  /// Runs what is due - timers, acts of the user - and returns without waiting.
  virtual void RunDue() = 0;
  /// The same, so many times in a row: what a pass has started at once runs in the next one.
  virtual void RunPasses(int passes) {
    while (passes-- > 0) RunDue();
  }
  /// Sleeps until what it waits for has come, or a timer or an act of the user is due. Runs none of them.
  virtual void Wait(const WaitFor& what) = 0;

 protected:
  /// A front end that sleeps outside of Wait arms its alarm anew here.
  virtual void TimersChanged() {}
  /// And looks after other descriptors.
  virtual void WatchedChanged() {}
  /// A watched descriptor can be read: its watcher is due, and it is watched no longer.
  void Readable(int fd);
  /// The earlier of `until` and the first timer.
  Time EarliestDue(Time until) const { return std::min(until, timers_.NextDue().value_or(Never)); }

  TimerQueue timers_;
  std::map<int, TimerQueue::Id> watched_;
};

/// A timer that goes with its block, however that is left.
class Alarm {
 public:
  Alarm(EventLoop& loop, Time delay, std::function<void()> ring)
      : loop_(loop), id_(loop.StartTimer(delay, std::move(ring))) {}
  ~Alarm() { loop_.StopTimer(id_); }
  Alarm(const Alarm&) = delete;
  Alarm& operator=(const Alarm&) = delete;

 private:
  EventLoop& loop_;
  TimerQueue::Id id_;
};

}  // namespace vk32
