// The system that the program runs on, and its words.
#pragma once

#include <cstdint>
#include <string>

namespace vk32 {

/// "Debian GNU/Linux 12 (bookworm), Linux 6.1.0-37-amd64, x86_64"
std::string SystemName();

/// The system's words for the code of an error: "No such file or directory".
std::string SystemWords(std::int32_t code);

}  // namespace vk32
