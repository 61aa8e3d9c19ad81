// The names of files: bytes, taken as they stand.
#include "platform/Paths.h"

#include <stdlib.h>

#include <cerrno>
#include <system_error>

namespace vk32 {

std::filesystem::path PathOf(std::string_view text) { return text; }

std::string TextOf(const std::filesystem::path& path) { return path; }

std::string MakeTemporaryFolder(const std::string& name) {
  std::string path = TextOf(std::filesystem::temp_directory_path() / (name + "-XXXXXX"));
  if (mkdtemp(path.data()) == nullptr) throw std::system_error(errno, std::generic_category(), path);
  return path;
}

}  // namespace vk32
