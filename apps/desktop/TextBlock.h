// A text in lines: broken to a width, measured and drawn with an even line pitch.
#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRect>
#include <QString>
#include <QStringList>

namespace vk32 {

/// Without wrapping, a line that is too wide has an ellipsis at its end, or at its start.
enum class Wrapping { Words, None, NoneCutAtStart };

class TextBlock {
 public:
  /// Line ends in the text (CR LF, LF) always break. All blanks stand as they are. `width`: of the longest
  /// line, in pixels.
  TextBlock(const QString& text, const QFont& font, int width, Wrapping wrapping);

  const QStringList& Lines() const { return lines_; }
  /// Of the widest line.
  int Width() const;
  int Height() const;
  /// A part of the text had to be left out.
  bool IsCut() const { return cut_; }

  /// `mark`: the first of these letters is underlined; none if null.
  void Draw(QPainter& painter, const QRect& area, Qt::Alignment alignment, const QColor& color, QChar mark = {}) const;

 private:
  void Break(const QString& paragraph, int width, Wrapping wrapping);

  QFont font_;
  int pitch_;
  QStringList lines_;
  bool cut_ = false;
};

}  // namespace vk32
