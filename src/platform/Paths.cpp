// The names of files, in the form that all systems share.
#include "platform/Paths.h"

namespace vk32 {

std::string FileNameOf(std::string_view path) { return TextOf(PathOf(path).filename()); }

bool IsThere(std::string_view path) {
  std::error_code ignored;
  return std::filesystem::exists(PathOf(path), ignored);
}

}  // namespace vk32
