// The event loop of the desktop.
#include "QtEventLoop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QScopedValueRollback>
#include <algorithm>
#include <memory>
#include <optional>

#include "platform/SystemEventLoop.h"

namespace vk32 {

QtEventLoop::QtEventLoop() {
  alarm_.setSingleShot(true);
  alarm_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&alarm_, &QTimer::timeout, &alarm_, [this] { Ring(); });
}

Time QtEventLoop::Now() const { return MonotonicNow(); }

void QtEventLoop::TimersChanged() {
  if (const auto due = timers_.NextDue()) {
    alarm_.start(RoundedUp(*due - Now()));
  } else {
    alarm_.stop();
  }
}

void QtEventLoop::Ring() {
  if (waiting_) return;
  // A tick may wait for the user in a loop of its own; the other timers go on meanwhile.
  alarm_.start(0);
  timers_.RunDue(Now());
  TimersChanged();
}

void QtEventLoop::RunDue() {
  const QScopedValueRollback live(waiting_, false);
  Ring();
  QCoreApplication::processEvents();
  TimersChanged();
}

void QtEventLoop::WatchedChanged() {
  std::erase_if(notifiers_, [this](const auto& notifier) { return watched_.count(notifier.first) == 0; });
  for (const auto& [fd, watcher] : watched_) {
    auto& notifier = notifiers_[fd];
    if (notifier) continue;
    notifier = std::make_unique<Notifier>(fd, WaitFor::ToRead, [this, fd = fd] { Readable(fd); });
  }
}

void QtEventLoop::Wait(const WaitFor& what) {
  const Time until = EarliestDue(what.until), now = Now();
  if (until <= now) return;
  {
    const QScopedValueRollback waiting(waiting_, true);
    if (until != Never) alarm_.start(RoundedUp(until - now));
    // Wakes the loop; what has come is for the caller to read.
    std::optional<Notifier> notifier;
    if (what.fd >= 0) notifier.emplace(what.fd, what.ready);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
    // Else GLib's dispatcher would look at the input that was held back only when something else comes.
    QAbstractEventDispatcher::instance()->wakeUp();
  }
  TimersChanged();
}

}  // namespace vk32
