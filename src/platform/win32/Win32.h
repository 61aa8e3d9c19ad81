// What the files for Windows share: its header, its texts and its handles.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <string_view>

namespace vk32 {

/// From UTF-8 to the system's UTF-16, and back.
std::wstring WideOf(std::string_view text);
std::string NarrowOf(std::wstring_view text);

/// The program's own seams take a number. The system's handles have 32 bits that count, so that 32-bit programs can
/// share them; the rest follows from the sign.
inline int NumberOf(HANDLE handle) { return static_cast<int>(HandleToLong(handle)); }
inline HANDLE HandleOf(int number) { return LongToHandle(number); }

struct HandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
/// Closes its handle; empty if there is none.
using OwnedHandle = std::unique_ptr<void, HandleCloser>;

/// An event that stays signalled until it is reset: whoever looks takes nothing away.
inline OwnedHandle MakeEvent(bool signalled = false) {
  return OwnedHandle(CreateEventW(nullptr, TRUE, signalled ? TRUE : FALSE, nullptr));
}
inline bool IsSignalled(HANDLE handle) { return WaitForSingleObject(handle, 0) == WAIT_OBJECT_0; }

/// Opens what is there, for reading or for all that a serial device needs; INVALID_HANDLE_VALUE, with the last error
/// set, if it can't be had.
struct Opening {
  DWORD access = GENERIC_READ;
  DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  DWORD flags = FILE_ATTRIBUTE_NORMAL;
};
inline HANDLE OpenExisting(const std::wstring& path, const Opening& how) {
  return CreateFileW(path.c_str(), how.access, how.share, nullptr, OPEN_EXISTING, how.flags, nullptr);
}

/// A path that names a device, as "com1.cfg" does in any folder: to open it would raise the port's control lines.
bool NamesDevice(const std::wstring& path);

}  // namespace vk32
