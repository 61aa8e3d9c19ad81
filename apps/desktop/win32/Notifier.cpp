// What wakes Qt's event loop: a handle that is signalled.
#include "Notifier.h"

#include <QWinEventNotifier>

#include "platform/win32/Win32.h"

namespace vk32 {

Notifier::Notifier(int fd, WaitFor::Ready, const std::function<void()>& tell) {
  auto watcher = std::make_unique<QWinEventNotifier>(HandleOf(fd));
  if (tell) QObject::connect(watcher.get(), &QWinEventNotifier::activated, watcher.get(), tell);
  watcher_ = std::move(watcher);
}

}  // namespace vk32
