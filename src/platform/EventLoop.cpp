// The timers that wait for their moment.
#include "platform/EventLoop.h"

namespace vk32 {

TimerQueue::Id TimerQueue::Start(Time due, std::function<void()> tick) {
  ticks_.emplace(Key{due, ++last_}, std::move(tick));
  due_.emplace(last_, due);
  return last_;
}

void TimerQueue::Stop(Id id) {
  if (const auto at = due_.find(id); at != due_.end()) {
    ticks_.erase({at->second, id});
    due_.erase(at);
  }
}

void TimerQueue::Move(Id id, Time due) {
  const auto at = due_.find(id);
  if (at == due_.end()) return;
  auto moved = ticks_.extract({at->second, id});
  moved.key() = {due, id};
  ticks_.insert(std::move(moved));
  at->second = due;
}

std::optional<Time> TimerQueue::NextDue() const {
  if (ticks_.empty() || ticks_.begin()->first.first == Never) return std::nullopt;
  return ticks_.begin()->first.first;
}

void TimerQueue::RunDue(Time now) {
  const Id newest = last_;
  // Every round searches anew, since a tick may have started, stopped or run others.
  for (auto at = ticks_.begin(); at != ticks_.end() && at->first.first <= now;) {
    if (at->first.second > newest) {
      ++at;
      continue;
    }
    const auto tick = std::move(at->second);
    due_.erase(at->first.second);
    ticks_.erase(at);
    tick();
    at = ticks_.begin();
  }
}

std::string EventLoop::TimeOfDay() const {
  const std::tm local = LocalTime();
  char text[sizeof "21:40"];
  return {text, std::strftime(text, sizeof text, "%H:%M", &local)};
}

std::string EventLoop::DateAndTime() const {
  const std::tm local = LocalTime();
  char text[sizeof "2026-11-25 21:40"];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local)};
}

TimerQueue::Id EventLoop::StartTimer(Time delay, std::function<void()> tick) {
  const TimerQueue::Id id = timers_.Start(Now() + delay, std::move(tick));
  TimersChanged();
  return id;
}

TimerQueue::Id EventLoop::StartWhenReadable(int fd, std::function<void()> tick) {
  const TimerQueue::Id id = timers_.Start(Never, std::move(tick));
  if (fd >= 0) watched_[fd] = id;
  WatchedChanged();
  return id;
}

void EventLoop::StopTimer(TimerQueue::Id id) {
  timers_.Stop(id);
  TimersChanged();
  if (std::erase_if(watched_, [id](const auto& watcher) { return watcher.second == id; }) > 0) WatchedChanged();
}

void EventLoop::Readable(int fd) {
  const auto at = watched_.find(fd);
  if (at == watched_.end()) return;
  timers_.Move(at->second, Now());
  watched_.erase(at);
  WatchedChanged();
  TimersChanged();
}

}  // namespace vk32
