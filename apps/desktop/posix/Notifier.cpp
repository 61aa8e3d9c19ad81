// What wakes Qt's event loop: a descriptor that is ready.
#include "Notifier.h"

#include <QSocketNotifier>

namespace vk32 {

Notifier::Notifier(int fd, WaitFor::Ready ready, const std::function<void()>& tell) {
  const auto type = ready == WaitFor::ToWrite ? QSocketNotifier::Write : QSocketNotifier::Read;
  auto watcher = std::make_unique<QSocketNotifier>(fd, type);
  if (tell) QObject::connect(watcher.get(), &QSocketNotifier::activated, watcher.get(), tell);
  watcher_ = std::move(watcher);
}

}  // namespace vk32
