// How fast files leave whole programs, against plain programs and against the line.
#pragma once

#include <optional>

#include "Figures.h"

namespace vk32::bench {

/// The time of a file as text over an unpaced pseudo-terminal, from the first byte to the last, by that of cat.
Figures StreamAgainstCat();
/// The time of an Xmodem transfer, from the first byte to the answered end, by that of Debian's sx to the same
/// receiver; nothing if there is no sx.
std::optional<Figures> XmodemAgainstSx();
/// The time of a file as text that a receiver takes at 19200 bit/s, by the bytes' own time. The file is longer than
/// what a pseudo-terminal takes at once, and the receiver takes no more than a line would.
Figures PacedStream();
/// The time of an Xmodem transfer at 19200 bit/s, by that of 132 + 1 bytes a block.
Figures PacedXmodem();

}  // namespace vk32::bench
