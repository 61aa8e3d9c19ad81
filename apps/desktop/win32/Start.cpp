// What a start that fails tells, in a box unless somebody reads the standard error.
#include "Start.h"

#include <windows.h>

#include <QString>
#include <cstdio>

namespace vk32 {

std::string WhyNoDisplay() { return "there is no desktop to show windows on: log in to one"; }

void TellAtStart(const std::string& text) {
  // A program with windows gets no console, only what its caller has put there.
  const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
  if (error && error != INVALID_HANDLE_VALUE) {
    std::fprintf(stderr, "vk32: %s\n", text.c_str());
    return;
  }
  const QString words = QString::fromStdString(text);
  MessageBoxW(nullptr, reinterpret_cast<const wchar_t*>(words.utf16()), L"VK32", MB_OK | MB_ICONEXCLAMATION);
}

}  // namespace vk32
