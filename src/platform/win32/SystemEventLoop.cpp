// The clock of the day, and the sleep until one of several handles is signalled.
#include "platform/SystemEventLoop.h"

#include <algorithm>

#include "platform/win32/Win32.h"

namespace vk32 {
namespace {

DWORD MillisecondsUntil(Time until) {
  return until == Never ? INFINITE : static_cast<DWORD>(RoundedUp(until - MonotonicNow()).count());
}

}  // namespace

std::tm EventLoop::LocalTime() const {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_s(&local, &now);
  return local;
}

std::vector<bool> WaitForAny(std::span<const WaitFor> whats) {
  std::vector<HANDLE> handles;
  Time until = Never;
  for (const WaitFor& what : whats) {
    if (what.fd != -1 && handles.size() < MAXIMUM_WAIT_OBJECTS) handles.push_back(HandleOf(what.fd));
    until = std::min(until, what.until);
  }
  const DWORD patience = MillisecondsUntil(until);
  if (handles.empty()) {
    Sleep(patience);
  } else {
    WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), FALSE, patience);
  }
  std::vector<bool> ready;
  for (const WaitFor& what : whats) ready.push_back(what.fd != -1 && IsSignalled(HandleOf(what.fd)));
  return ready;
}

}  // namespace vk32
