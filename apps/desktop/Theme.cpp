// Colours, type and pictures.
#include "Theme.h"

#include <QFile>
#include <QImage>
#include <QPainter>

#include "SvgDrawing.h"
#include "SystemFonts.h"

namespace vk32 {
namespace {

QFont MakeFont(const QStringList& families, int pixels, QFont::Weight weight = QFont::Normal) {
  QFont font;
  font.setFamilies(families);
  font.setPixelSize(pixels);
  font.setWeight(weight);
  // Hinted widths would differ from the designed ones at scale 1, and texts would no longer fit their places.
  font.setHintingPreference(QFont::PreferVerticalHinting);
  return font;
}

QPixmap Faded(const QPixmap& picture) {
  QImage image = picture.toImage().convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const int gray = qGray(line[x]);
      line[x] = qRgba(gray, gray, gray, qAlpha(line[x]) * 45 / 100);
    }
  }
  return QPixmap::fromImage(image);
}

}  // namespace

namespace colors {

QColor OfRole(TextRole role) {
  switch (role) {
    case TextRole::TableHead:
    case TextRole::Muted:
    case TextRole::MutedRight:
    case TextRole::Small: return Muted;
    case TextRole::BandName: return OnBandStrong;
    case TextRole::BandText:
    case TextRole::BandSubtitle: return OnBand;
    case TextRole::Link: return Border;
    case TextRole::Body:
    case TextRole::Title:
    case TextRole::Product:
    case TextRole::BodyLink:
    case TextRole::Heading:
    case TextRole::HeadingLink:
    case TextRole::Step:
    case TextRole::TableText:
    case TextRole::TablePath:
    case TextRole::TableName:
    case TextRole::SplashName:
    case TextRole::SplashSubtitle: break;
  }
  return Text;
}

QPalette ProgramPalette() {
  QPalette palette(Text, Page, Page, Border, Hairline, Text, Page, Page, Page);
  palette.setColor(QPalette::AlternateBase, Side);
  palette.setColor(QPalette::Highlight, Filled);
  palette.setColor(QPalette::HighlightedText, Page);
  palette.setColor(QPalette::PlaceholderText, Muted);
  palette.setColor(QPalette::ToolTipBase, Page);
  palette.setColor(QPalette::ToolTipText, Text);
  palette.setColor(QPalette::Link, Text);
  palette.setColor(QPalette::LinkVisited, Text);
  palette.setColor(QPalette::Shadow, Border);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, Disabled);
  }
  return palette;
}

}  // namespace colors

Theme::Theme() {
  const auto [sans, mono] = SystemFonts();
  body_ = MakeFont(sans, 13);
  bold_ = MakeFont(sans, 13, QFont::Bold);
  title_ = MakeFont(sans, 18);
  product_ = MakeFont(sans, 18, QFont::Bold);
  step_ = MakeFont(sans, 14);
  small_ = MakeFont(sans, 12);
  smallBold_ = MakeFont(sans, 12, QFont::Bold);
  splashName_ = MakeFont(sans, 46, QFont::Bold);
  bandName_ = MakeFont(sans, 22, QFont::Bold);
  terminal_ = MakeFont(mono, 13);
  terminal_.setStyleHint(QFont::Monospace);
}

const QFont& Theme::Font(TextRole role) const {
  switch (role) {
    case TextRole::Title:
    case TextRole::SplashSubtitle: return title_;
    case TextRole::Product: return product_;
    case TextRole::Heading:
    case TextRole::HeadingLink: return bold_;
    case TextRole::Step: return step_;
    case TextRole::TableHead:
    case TextRole::TableText:
    case TextRole::TablePath:
    case TextRole::Small: return small_;
    case TextRole::TableName: return smallBold_;
    case TextRole::SplashName: return splashName_;
    case TextRole::BandName: return bandName_;
    case TextRole::Body:
    case TextRole::BodyLink:
    case TextRole::Muted:
    case TextRole::MutedRight:
    case TextRole::BandText:
    case TextRole::BandSubtitle:
    case TextRole::Link: break;
  }
  return body_;
}

int Theme::LinePitch(const QFont& font) {
  switch (font.pixelSize()) {
    case 12: return 16;
    case 13: return 18;
    default: return font.pixelSize() * 4 / 3;
  }
}

const QPixmap& Theme::ButtonPicture(int number, QSize size, bool enabled, qreal scale) {
  const PictureKey key{number, size.width(), size.height(), enabled, qRound(scale * 100)};
  auto at = pictures_.find(key);
  if (at == pictures_.end()) {
    QPixmap picture = DrawPicture(QStringLiteral(":/pictures/%1.svg").arg(number), size, scale);
    at = pictures_.emplace(key, enabled ? picture : Faded(picture)).first;
  }
  return at->second;
}

QPixmap Theme::Icon(QSize size, qreal scale) { return DrawPicture(QStringLiteral(":/pictures/icon.svg"), size, scale); }

QPixmap DrawPicture(const QString& file, QSize size, qreal scale) {
  QPixmap picture(size * scale);
  picture.setDevicePixelRatio(scale);
  picture.fill(Qt::transparent);
  QFile source(file);
  if (!source.open(QIODevice::ReadOnly)) return picture;
  QPainter painter(&picture);
  DrawSvg(painter, source.readAll(), QRectF(QPointF(), QSizeF(size)));
  return picture;
}

}  // namespace vk32
