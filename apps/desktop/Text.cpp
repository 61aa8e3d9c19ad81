// The way between the bytes of the forms and the characters of the screen.
#include "Text.h"

#include <QStringDecoder>

namespace vk32 {

std::string ToBytes(const QString& text) {
  std::string bytes;
  for (const QChar character : text) {
    if (character.unicode() <= 0xFF) bytes += static_cast<char>(character.unicode());
  }
  return bytes;
}

QString FromWords(std::string_view words) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString text = decoder.decode(QByteArrayView(words.data(), static_cast<qsizetype>(words.size())));
  return decoder.hasError() ? FromBytes(words) : text;
}

}  // namespace vk32
