// The conversions between texts, numbers and bytes. All ignore the locale; none has state.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SerialDriver.h"

namespace vk32 {

/// The number that the text starts with, after blanks, and 0 if it starts with none. Faults 6 on a number too large.
double Val(std::string_view text);
/// The text as a number, whole. Faults 13 on a text that is not one, and on the empty text.
double CDbl(std::string_view text);

/// The text is a number, whole, and not outside `first` to `last`.
bool IsNumberIn(std::string_view text, double first, double last);

// Rounded to the nearest, halves to even. What does not fit faults 6.
std::int16_t CInt(double value);
std::int32_t CLng(double value);
std::uint8_t CByte(double value);

/// A value as one byte; outside 0 to 255 faults 6, never wraps.
char Chr(std::int32_t value);
/// The byte at `position`, counted from 1; 0 to 255. Beyond the end faults 5.
std::int32_t Asc(const Bytes& text, int position);
/// Up to `length` bytes from `position`, counted from 1. What lies beyond the end is left out.
Bytes Mid(const Bytes& text, int position, int length);
Bytes Mid(const Bytes& text, int position);

/// A whole number in plain decimal or octal digits.
std::string Str(std::int32_t value);
std::string Oct(std::int32_t value);
/// A number in as many decimal digits as it needs.
std::string Str(double value);
/// Two upper-case hexadecimal digits.
std::string ByteToHex(std::uint8_t byte);
/// "54 45 45"
std::string HexText(const Bytes& bytes);
/// The parts of a dotted address. At most four: the fourth takes all the rest of the text.
std::vector<std::string> SplitAddress(const std::string& text);

/// value = low + 256 x high, for values that are not negative.
void SplitWord(std::int32_t value, std::int32_t& low, std::int32_t& high);
/// An overflow of the signed 32-bit product faults 6.
std::int32_t JoinWord(std::int32_t low, std::int32_t high);
std::int32_t SetBits(std::int32_t value, std::int32_t mask);
std::int32_t ClearBits(std::int32_t value, std::int32_t mask);

}  // namespace vk32
