// A text in lines.
#include "TextBlock.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "Theme.h"

namespace vk32 {
namespace {

QString WithoutTrailingBlanks(QString line) {
  while (line.endsWith(u' ')) line.chop(1);
  return line;
}

}  // namespace

TextBlock::TextBlock(const QString& text, const QFont& font, int width, Wrapping wrapping)
    : font_(font), pitch_(Theme::LinePitch(font)) {
  QString plain = text;
  plain.remove(u'\r');
  for (const QString& paragraph : plain.split(u'\n')) Break(paragraph, width, wrapping);
}

void TextBlock::Break(const QString& paragraph, int width, Wrapping wrapping) {
  const QFontMetricsF metrics(font_);
  if (metrics.horizontalAdvance(WithoutTrailingBlanks(paragraph)) <= width) {
    lines_ += WithoutTrailingBlanks(paragraph);
    return;
  }
  if (wrapping != Wrapping::Words) {
    const auto cut = wrapping == Wrapping::NoneCutAtStart ? Qt::ElideLeft : Qt::ElideRight;
    lines_ += metrics.elidedText(paragraph, cut, width);
    cut_ = true;
    return;
  }
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  QTextLayout layout(paragraph, font_);
  layout.setTextOption(option);
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    lines_ += WithoutTrailingBlanks(paragraph.mid(line.textStart(), line.textLength()));
  }
  layout.endLayout();
}

int TextBlock::Width() const {
  const QFontMetricsF metrics(font_);
  qreal width = 0;
  for (const QString& line : lines_) width = std::max(width, metrics.horizontalAdvance(line));
  return static_cast<int>(std::ceil(width));
}

int TextBlock::Height() const { return pitch_ * static_cast<int>(lines_.size()); }

void TextBlock::Draw(QPainter& painter, const QRect& area, Qt::Alignment alignment, const QColor& color,
                     QChar mark) const {
  const QFontMetricsF metrics(font_);
  painter.setFont(font_);
  painter.setPen(color);
  double top = area.top();
  if (alignment & Qt::AlignVCenter) top += (area.height() - Height()) / 2.0;
  if (alignment & Qt::AlignBottom) top += area.height() - Height();
  for (const QString& line : lines_) {
    double left = area.left();
    const double free = area.width() - metrics.horizontalAdvance(line);
    if (alignment & Qt::AlignRight) left += free;
    if (alignment & Qt::AlignHCenter) left += std::floor(free / 2);
    // Half a capital's height, which is about 0.72 of the size in the faces of the program.
    const double baseline = std::floor(top + pitch_ / 2.0 + 0.36 * font_.pixelSize());
    painter.drawText(QPointF(left, baseline), line);
    if (const auto at = mark.isNull() ? -1 : line.indexOf(mark, 0, Qt::CaseInsensitive); at >= 0) {
      const double start = metrics.horizontalAdvance(line.left(at));
      const double end = metrics.horizontalAdvance(line.left(at + 1));
      painter.fillRect(QRectF(left + start, baseline + 2, end - start, 1), color);
      mark = {};
    }
    top += pitch_;
  }
}

}  // namespace vk32
