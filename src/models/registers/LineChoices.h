// The codes of a serial line in the registers of the RB family.
#pragma once

#include "models/lists/ChoiceList.h"

namespace vk32::LineChoices {

// Every row: text, then when it is picked (byte & test == value), then the mask of the bits that it writes.

/// Bit/s. The RBCard ends at 115200.
inline ChoiceTable Speeds() {
  return {Code("300", 3),  Code("600", 4),   Code("1200", 5),   Code("2400", 6),   Code("4800", 7),
          Code("9600", 8), Code("19200", 9), Code("38400", 10), Code("57600", 11), Code("115200", 12)};
}

// Line flags
inline const Choice NoParity{"None", 2, 0, 2};  // the even bit keeps what it had
inline const Choice OddParity{"Odd", 6, 2, 6};
inline const Choice EvenParity{"Even", 6, 6, 6};
inline ChoiceTable DataBits() { return {{"7", 16, 16, 16}, {"8", 16, 0, 16}}; }
inline ChoiceTable StopBits() { return {{"1", 8, 0, 8}, {"2", 8, 8, 8}}; }

// DF1 flags
inline ChoiceTable ErrorChecking() { return {{"BCC", 1, 0, 1}, {"CRC", 1, 1, 1}}; }

}  // namespace vk32::LineChoices
