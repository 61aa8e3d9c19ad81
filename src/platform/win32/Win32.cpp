// What the files for Windows share.
#include "platform/win32/Win32.h"

namespace vk32 {

std::wstring WideOf(std::string_view text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string NarrowOf(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  const int needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), needed, nullptr, nullptr);
  return narrow;
}

bool NamesDevice(const std::wstring& path) {
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full.starts_with(LR"(\\.\)");
}

}  // namespace vk32
