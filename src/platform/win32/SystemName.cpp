// The system that the program runs on, as it describes itself.
#include "platform/SystemName.h"

#include "platform/win32/Win32.h"

namespace vk32 {
namespace {

std::string VersionText(const wchar_t* name) {
  wchar_t text[128];
  DWORD size = sizeof text;
  const LSTATUS status = RegGetValueW(HKEY_LOCAL_MACHINE, LR"(SOFTWARE\Microsoft\Windows NT\CurrentVersion)", name,
                                      RRF_RT_REG_SZ, nullptr, text, &size);
  return status == ERROR_SUCCESS ? NarrowOf(text) : "";
}

/// Empty if the system has none in that language.
std::string WordsIn(WORD language, std::int32_t code) {
  wchar_t* words = nullptr;
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, static_cast<DWORD>(code), language, reinterpret_cast<wchar_t*>(&words), 0, nullptr);
  std::string text = NarrowOf({words, length});
  LocalFree(words);
  // The program's own sentence goes on behind it.
  while (!text.empty() && std::string_view(" .\r\n").find(text.back()) != std::string_view::npos) text.pop_back();
  return text;
}

}  // namespace

std::string SystemName() {
  const std::string product = VersionText(L"ProductName"), build = VersionText(L"CurrentBuild");
  SYSTEM_INFO machine;
  GetNativeSystemInfo(&machine);
  const bool arm = machine.wProcessorArchitecture == PROCESSOR_ARCHITECTURE_ARM64;
  return (product.empty() ? "Windows" : product) + ", build " + build + (arm ? ", arm64" : ", x86_64");
}

std::string SystemWords(std::int32_t code) {
  // In the program's own language, where the system has it.
  for (const int language : {MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL)}) {
    if (std::string words = WordsIn(static_cast<WORD>(language), code); !words.empty()) return words;
  }
  return "Unknown error " + std::to_string(code);
}

}  // namespace vk32
