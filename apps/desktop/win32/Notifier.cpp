// What wakes Qt's event loop: a handle that is signalled.
#include "Notifier.h"

#include <windows.h>

#include <QWinEventNotifier>

namespace vk32 {

Notifier::Notifier(int fd, WaitFor::Ready, const std::function<void()>& tell) {
  auto watcher = std::make_unique<QWinEventNotifier>(reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(fd)));
  if (tell) QObject::connect(watcher.get(), &QWinEventNotifier::activated, watcher.get(), tell);
  watcher_ = std::move(watcher);
}

}  // namespace vk32
