// The way between the bytes of the forms and the characters of the screen.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace vk32 {

/// What a field holds: each byte is one character.
inline QString FromBytes(std::string_view bytes) {
  return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

/// Characters that no byte can hold are left out.
std::string ToBytes(const QString& text);

/// What a person reads: a text that is UTF-8 - a path, the words of the operating system - or else one character a
/// byte.
QString FromWords(std::string_view words);

}  // namespace vk32
