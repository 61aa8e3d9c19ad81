// The names of files: UTF-8 in the whole program, whatever the system's own form is.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vk32 {

/// The way from a text to the standard library, and back.
std::filesystem::path PathOf(std::string_view text);
std::string TextOf(const std::filesystem::path& path);

/// "line-2.cfg" of "/home/user/line-2.cfg"; empty of a folder's name with a separator at its end.
std::string FileNameOf(std::string_view path);
/// There is something at that place.
bool IsThere(std::string_view path);

/// Makes a folder of a fresh name, which begins like `name`, among the system's temporary ones. std::system_error if
/// that can't be done.
std::string MakeTemporaryFolder(const std::string& name);

}  // namespace vk32
