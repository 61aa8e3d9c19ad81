// The event loop of the desktop.
#include "QtEventLoop.h"

#include <poll.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QScopedValueRollback>
#include <QSocketNotifier>
#include <algorithm>
#include <memory>

#include "platform/PosixEventLoop.h"

namespace vk32 {
namespace {

using std::chrono::milliseconds;

/// How long a window may have to wait for being painted during a long write.
constexpr milliseconds PaintDelay{20};

/// Whole milliseconds, never too few.
int ToMilliseconds(Time span) {
  return static_cast<int>(std::clamp<Time>(span + milliseconds(1) - Time(1), Time{0}, std::chrono::hours(24)) /
                          milliseconds(1));
}

/// Lets Qt work, but for the acts of the user.
void HoldActsBack(QEventLoop::ProcessEventsFlags flags) {
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | flags);
  // Else GLib's dispatcher would look at what was held back only when something else comes.
  QAbstractEventDispatcher::instance()->wakeUp();
}

}  // namespace

QtEventLoop::QtEventLoop() {
  alarm_.setSingleShot(true);
  alarm_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&alarm_, &QTimer::timeout, &alarm_, [this] { Ring(); });
}

Time QtEventLoop::Now() const { return MonotonicNow(); }

void QtEventLoop::TimersChanged() {
  if (const auto due = timers_.NextDue()) {
    alarm_.start(ToMilliseconds(*due - Now()));
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

void QtEventLoop::Wait(int fd) {
  if (const auto due = timers_.NextDue(); due && *due <= Now()) return;
  {
    const QScopedValueRollback waiting(waiting_, true);
    // Wakes the loop; what has come is for the caller to read.
    std::unique_ptr<QSocketNotifier> notifier;
    if (fd >= 0) notifier = std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Read);
    HoldActsBack(QEventLoop::WaitForMoreEvents);
  }
  TimersChanged();
}

void QtEventLoop::WaitQuietly(int fd, Time until) {
  const QScopedValueRollback waiting(waiting_, true);
  for (Time now = Now(); now < until; now = Now()) {
    // Polled, since Qt's own wait returns at once for as long as held-back input is in its queue.
    pollfd descriptor{fd, POLLOUT, 0};
    const int patience = ToMilliseconds(std::min<Time>(until - now, PaintDelay));
    const bool writable = poll(&descriptor, fd >= 0 ? 1 : 0, patience) > 0;
    HoldActsBack(QEventLoop::AllEvents);
    if (writable) break;
  }
  TimersChanged();
}

}  // namespace vk32
