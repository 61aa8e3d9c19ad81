// How fast firmware files leave, against plain programs and against the line.
#pragma once

#include <optional>

namespace vk32::bench {

/// The time of the firmware stream over an unpaced pseudo-terminal, divided by that of cat with the same file.
double StreamAgainstCat();
/// The time of an Xmodem transfer, divided by that of Debian's sx to the same receiver; nothing if there is no sx.
std::optional<double> XmodemAgainstSx();
/// The time of a stream that a receiver takes at 19200 bit/s, divided by the bytes' own time.
double PacedStream();
/// The time of an Xmodem transfer at 19200 bit/s, divided by that of 132 + 1 bytes a block.
double PacedXmodem();

}  // namespace vk32::bench
