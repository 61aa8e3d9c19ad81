// The names of the messages on the wire.
#pragma once

#include <string_view>

#include "platform/SerialDriver.h"

namespace vk32 {

/// The name, if the bytes are one whole message of the catalogue; else empty.
std::string_view MessageName(const Bytes& bytes);

}  // namespace vk32
