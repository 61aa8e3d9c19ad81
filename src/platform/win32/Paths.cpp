// The names of files: UTF-16 for the system.
#include "platform/Paths.h"

#include <system_error>

#include "platform/FileParts.h"
#include "platform/win32/Win32.h"

namespace vk32 {

std::filesystem::path PathOf(std::string_view text) { return WideOf(text); }

std::string TextOf(const std::filesystem::path& path) { return NarrowOf(path.wstring()); }

std::string MakeTemporaryFolder(const std::string& name) {
  std::error_code fault;
  const std::filesystem::path folder = std::filesystem::temp_directory_path();
  for (int attempt = 0; attempt < 100 && !fault; ++attempt) {
    const std::filesystem::path path = folder / PathOf(name + "-" + FreshDigits());
    if (std::filesystem::create_directory(path, fault)) return TextOf(path);
  }
  throw std::system_error(fault, TextOf(folder));
}

}  // namespace vk32
