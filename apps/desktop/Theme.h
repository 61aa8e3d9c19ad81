// The program's own colours, type and pictures: the same on every desktop, also on a dark one.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QPixmap>
#include <map>
#include <tuple>

#include "forms/Look.h"

namespace vk32 {

constexpr int TwipsPerPixel = 15;

/// The nearest pixel at scale 1.
constexpr int ToPixels(int twips) {
  return (twips >= 0 ? twips + TwipsPerPixel / 2 : twips - TwipsPerPixel / 2) / TwipsPerPixel;
}
constexpr int ToTwips(int pixels) { return pixels * TwipsPerPixel; }

namespace colors {

constexpr QColor Rgb(int rgb) { return QColor((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF); }

constexpr QColor Page = Rgb(0xFFFFFF);
constexpr QColor Side = Rgb(0xF6F7F5);
constexpr QColor Text = Rgb(0x1E211D);
constexpr QColor Muted = Rgb(0x555B52);
constexpr QColor Accent = Rgb(0xAC2424);
constexpr QColor Border = Rgb(0x868D83);
constexpr QColor Disabled = Rgb(0x868D83);
constexpr QColor OtherStepOnContrast = Rgb(0x62685F);
constexpr QColor Band = Rgb(0x1E211D);
constexpr QColor OnBand = Rgb(0xD5D9D2);
constexpr QColor OnBandStrong = Rgb(0xFFFFFF);
constexpr QColor Hairline = Rgb(0xD5D9D2);
constexpr QColor DisabledField = Rgb(0xE0E0E0);
constexpr QColor DisabledFieldText = Rgb(0x5F655C);
constexpr QColor Track = Rgb(0xE3E6E0);
constexpr QColor PressedFace = Rgb(0xE3E6E0);
constexpr QColor Filled = Rgb(0x4A5147);
constexpr QColor Thumb = Rgb(0x6B7168);
constexpr QColor TerminalText = Rgb(0xE9ECE6);

/// The back colour by which code shows that a field takes no input.
constexpr Color DisabledFieldBack = 0xE0E0E0;

constexpr QColor FromForm(Color color) { return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF); }
/// Of a text that no code colours.
QColor OfRole(TextRole role);
/// Whole, so that nothing of the desktop's own palette gets in.
QPalette ProgramPalette();

}  // namespace colors

class Theme {
 public:
  Theme();

  /// The desktop asks for high contrast.
  bool highContrast = false;

  const QFont& Font(TextRole role) const;
  const QFont& TerminalFont() const { return terminal_; }
  /// From baseline to baseline, in pixels.
  static int LinePitch(const QFont& font);

  /// A numbered button picture at the screen's scale.
  const QPixmap& ButtonPicture(int number, QSize size, bool enabled, qreal scale);
  static QPixmap Icon(QSize size, qreal scale);

 private:
  using PictureKey = std::tuple<int, int, int, bool, int>;

  QFont body_, bold_, title_, product_, step_, small_, smallBold_, splashName_, bandName_, terminal_;
  std::map<PictureKey, QPixmap> pictures_;
};

/// An SVG file from the resources, drawn to a size in logical pixels.
QPixmap DrawPicture(const QString& file, QSize size, qreal scale);

}  // namespace vk32
