// The frame builder: makes a message from the shared variables.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/Globals.h"

namespace vk32 {

/// The frame for a product, or an empty string if it has none. The product decides the kind: the VK-RTX, and the VK5300
/// but for code 208, have block frames; all others have image frames, whatever the code.
/// Takes BlockNumber, BlockLength and BlockData, or ConfigImage; an image sets BlockLength on the way.
/// Faults 6 when a value does not fit its byte, or when the sum of the image message exceeds 32767.
Bytes BuildFrame(Globals& globals, std::string_view product, std::uint8_t code);

}  // namespace vk32
