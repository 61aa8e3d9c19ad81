// The system that the program runs on.
#pragma once

#include <string>

namespace vk32 {

/// "Debian GNU/Linux 12 (bookworm), Linux 6.1.0-37-amd64, x86_64"
std::string SystemName();

}  // namespace vk32
