// The conversions between texts, numbers and bytes.
#include "core/Convert.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "platform/Fault.h"

namespace vk32 {
namespace {

constexpr std::string_view Blanks = " \t\r\n";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// The length of the decimal number at the start of `text`: sign, digits, point, exponent. 0 if there is none.
std::size_t NumberLength(std::string_view text) {
  std::size_t i = 0;
  const auto digits = [&] {
    const std::size_t from = i;
    while (i < text.size() && IsDigit(text[i])) ++i;
    return i - from;
  };
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  std::size_t count = digits();
  if (i < text.size() && text[i] == '.') {
    ++i;
    count += digits();
  }
  if (count == 0) return 0;
  const std::size_t mantissa = i;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    ++i;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
    if (digits() == 0) return mantissa;
  }
  return i;
}

double ParseNumber(std::string_view number) {
  if (number[0] == '+') number.remove_prefix(1);
  double value = 0;
  if (std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc::result_out_of_range) {
    // Too small is 0; too large is no number that the program could hold.
    const bool small = number.find("e-") != std::string_view::npos || number.find("E-") != std::string_view::npos;
    if (!small) throw RuntimeFault(RuntimeFault::Overflow);
    return 0;
  }
  return value;
}

template <class T>
T ToWhole(double value) {
  const double rounded = std::nearbyint(value);  // the default rounding mode: halves to even
  if (!(rounded >= std::numeric_limits<T>::min() && rounded <= std::numeric_limits<T>::max())) {
    throw RuntimeFault(RuntimeFault::Overflow);
  }
  return static_cast<T>(rounded);
}

std::string Digits(std::int32_t value, int radix) {
  char text[16];
  const auto end = std::to_chars(text, text + sizeof text, value, radix).ptr;
  return {text, end};
}

}  // namespace

double Val(std::string_view text) {
  const std::size_t first = text.find_first_not_of(Blanks);
  if (first == std::string_view::npos) return 0;
  text.remove_prefix(first);
  const std::size_t length = NumberLength(text);
  return length == 0 ? 0 : ParseNumber(text.substr(0, length));
}

double CDbl(std::string_view text) {
  const std::size_t first = text.find_first_not_of(Blanks);
  if (first == std::string_view::npos) throw RuntimeFault(RuntimeFault::TypeMismatch);
  text = text.substr(first, text.find_last_not_of(Blanks) - first + 1);
  if (NumberLength(text) != text.size()) throw RuntimeFault(RuntimeFault::TypeMismatch);
  return ParseNumber(text);
}

bool IsNumberIn(std::string_view text, double first, double last) {
  try {
    const double number = CDbl(text);
    return number >= first && number <= last;
  } catch (const RuntimeFault&) {
    return false;
  }
}

std::int16_t CInt(double value) { return ToWhole<std::int16_t>(value); }

std::int32_t CLng(double value) { return ToWhole<std::int32_t>(value); }

std::uint8_t CByte(double value) { return ToWhole<std::uint8_t>(value); }

char Chr(std::int32_t value) {
  if (value < 0 || value > 255) throw RuntimeFault(RuntimeFault::Overflow);
  return static_cast<char>(static_cast<unsigned char>(value));
}

std::int32_t Asc(const Bytes& text, int position) {
  if (position < 1 || static_cast<std::size_t>(position) > text.size()) throw RuntimeFault(RuntimeFault::InvalidCall);
  return static_cast<unsigned char>(text[static_cast<std::size_t>(position) - 1]);
}

Bytes Mid(const Bytes& text, int position, int length) {
  if (position < 1 || length < 0) throw RuntimeFault(RuntimeFault::InvalidCall);
  const auto start = static_cast<std::size_t>(position) - 1;
  return start >= text.size() ? Bytes() : text.substr(start, static_cast<std::size_t>(length));
}

Bytes Mid(const Bytes& text, int position) { return Mid(text, position, std::numeric_limits<int>::max()); }

std::string Str(std::int32_t value) { return Digits(value, 10); }

std::string Oct(std::int32_t value) { return Digits(value, 8); }

std::string Str(double value) {
  char text[512];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr;
  return {text, end};
}

std::vector<std::string> SplitAddress(const std::string& text) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t point = text.find('.'); point != std::string::npos && parts.size() < 3;
       point = text.find('.', start)) {
    parts.push_back(text.substr(start, point - start));
    start = point + 1;
  }
  parts.push_back(text.substr(start));
  return parts;
}

void SplitWord(std::int32_t value, std::int32_t& low, std::int32_t& high) {
  low = value & 255;
  high = value / 256;
}

std::int32_t JoinWord(std::int32_t low, std::int32_t high) {
  std::int32_t product = 0;
  if (__builtin_mul_overflow(high, 256, &product)) throw RuntimeFault(RuntimeFault::Overflow);
  return low | product;
}

std::int32_t SetBits(std::int32_t value, std::int32_t mask) { return value | mask; }

std::int32_t ClearBits(std::int32_t value, std::int32_t mask) { return value & ~mask; }

std::string ByteToHex(std::uint8_t byte) {
  constexpr char digits[] = "0123456789ABCDEF";
  return {digits[byte >> 4], digits[byte & 15]};
}

std::string HexText(const Bytes& bytes) {
  std::string text;
  for (const char c : bytes) {
    if (!text.empty()) text += ' ';
    text += ByteToHex(static_cast<std::uint8_t>(c));
  }
  return text;
}

}  // namespace vk32
