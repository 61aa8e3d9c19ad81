// Texts as the text front end prints and reads them.
#include "script/Quoting.h"

#include <charconv>

namespace vk32 {
namespace {

constexpr std::string_view ShortEscapes = "rnt\"\\";
constexpr std::string_view EscapedBytes = "\r\n\t\"\\";

}  // namespace

std::string Quote(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string quoted = "\"";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (const std::size_t at = EscapedBytes.find(c); at != std::string_view::npos) {
      quoted += {'\\', ShortEscapes[at]};
    } else if (byte < 32 || byte > 126) {
      quoted += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
    } else {
      quoted += c;
    }
  }
  return quoted + '"';
}

std::optional<std::string> Unquote(std::string_view text) {
  if (text.empty() || text.front() != '"') return std::string(text);
  std::string bytes;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] == '"') return i + 1 == text.size() ? std::optional(bytes) : std::nullopt;
    if (text[i] != '\\') {
      bytes += text[i];
      continue;
    }
    if (++i == text.size()) return std::nullopt;
    if (const std::size_t at = ShortEscapes.find(text[i]); at != std::string_view::npos) {
      bytes += EscapedBytes[at];
    } else {
      unsigned value = 0;
      const char* const hex = text.data() + i + 1;
      if (text[i] != 'x' || i + 2 >= text.size() || std::from_chars(hex, hex + 2, value, 16).ptr != hex + 2) {
        return std::nullopt;
      }
      bytes += static_cast<char>(value);
      i += 2;
    }
  }
  return std::nullopt;
}

}  // namespace vk32
