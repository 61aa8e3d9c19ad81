// The widget of a text box of many lines.
#include "TerminalWidget.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStringList>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "Drawing.h"
#include "Text.h"
#include "Theme.h"

namespace vk32 {
namespace {

constexpr int PaddingX = 8, PaddingY = 4, LineHeight = 16, CursorHeight = 15;
constexpr int WheelRows = 3, WheelStep = 120;

}  // namespace

TerminalWidget::TerminalWidget(TextBox& box, QWidget& parent, Theme& theme)
    : QWidget(&parent), box_(box), font_(theme.TerminalFont()), cell_(QFontMetricsF(font_).horizontalAdvance(u'M')) {
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::IBeamCursor);
  setAttribute(Qt::WA_InputMethodEnabled, false);
}

int TerminalWidget::Columns() const { return std::max(1, static_cast<int>((width() - 2 * PaddingX) / cell_)); }

int TerminalWidget::VisibleRows() const { return std::max(1, (height() - 2 * PaddingY) / LineHeight); }

void TerminalWidget::Sync() {
  // Only what follows the first change is laid out anew: the text grows as long as the form is open.
  const std::size_t change = box_.TakeChange();
  if (change < Text().size() || change < rows_.back().start + rows_.back().length) {
    const std::size_t row = RowOf(change);
    const std::size_t start = rows_[row].start;
    rows_.resize(row);
    anchor_ = selectionEnd_ = 0;
    Wrap(start);
    top_ = LastTop();
    const int from = static_cast<int>(change);
    QAccessibleTextInsertEvent inserted(this, from, QAccessible::isActive() ? Part(from, Length()) : QString());
    QAccessible::updateAccessibility(&inserted);
  }
  update();
}

void TerminalWidget::Wrap(std::size_t start) {
  const auto columns = static_cast<std::size_t>(Columns());
  std::size_t length = 0;
  const std::string& text = Text();
  for (std::size_t at = start; at < text.size(); ++at) {
    if (text[at] == '\n') {
      rows_.push_back({start, length});
      start = at + 1;
      length = 0;
    } else if (text[at] == '\r' && (at + 1 == text.size() || text[at + 1] == '\n')) {
      continue;  // a part of the line end
    } else if (length == columns) {
      rows_.push_back({start, length});
      start = at;
      length = 1;
    } else {
      ++length;
    }
  }
  rows_.push_back({start, length});
}

void TerminalWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  rows_.clear();
  Wrap(0);
  top_ = LastTop();
}

int TerminalWidget::LastTop() const { return std::max(0, static_cast<int>(rows_.size()) - VisibleRows()); }

void TerminalWidget::ScrollTo(int row) {
  top_ = std::clamp(row, 0, LastTop());
  update();
}

std::size_t TerminalWidget::RowOf(std::size_t position) const {
  const auto after = std::upper_bound(rows_.begin(), rows_.end(), position,
                                      [](std::size_t at, const Row& row) { return at < row.start; });
  return static_cast<std::size_t>(after - rows_.begin()) - 1;
}

QString TerminalWidget::RowText(const Row& row) const {
  // The text may have become shorter since it was laid out.
  const std::size_t start = std::min(row.start, Text().size());
  QString text = FromBytes(std::string_view(Text()).substr(start, row.length));
  for (QChar& character : text) {
    if (character == u'\r' || character == u'\t') character = u' ';
    // What a wrong speed makes of a text must not upset the columns.
    if (!character.isPrint()) character = u'\u00B7';
  }
  return text;
}

QString TerminalWidget::VisibleText() const {
  QStringList lines;
  for (int row = top_; row < std::min(top_ + VisibleRows(), static_cast<int>(rows_.size())); ++row) {
    lines += RowText(rows_[static_cast<std::size_t>(row)]);
  }
  return lines.join(u'\n');
}

QRectF TerminalWidget::CellsOf(int line, const Row& row, std::size_t from, std::size_t to) const {
  const double left = PaddingX + static_cast<double>(from - row.start) * cell_;
  return {left, static_cast<double>(PaddingY + line * LineHeight), static_cast<double>(to - from) * cell_,
          CursorHeight};
}

void TerminalWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colors::Band);
  painter.drawRoundedRect(rect(), 3, 3);
  painter.setFont(font_);
  const auto [from, to] = std::minmax(anchor_, selectionEnd_);
  for (int line = 0; line < VisibleRows() && top_ + line < static_cast<int>(rows_.size()); ++line) {
    const Row& row = rows_[static_cast<std::size_t>(top_ + line)];
    const std::size_t first = std::clamp(from, row.start, row.start + row.length);
    const std::size_t last = std::clamp(to, row.start, row.start + row.length);
    if (first < last) painter.fillRect(CellsOf(line, row, first, last), colors::Thumb);
    painter.setPen(colors::TerminalText);
    const double baseline = PaddingY + line * LineHeight + std::floor(LineHeight / 2.0 + 0.36 * font_.pixelSize()) + 1;
    painter.drawText(QPointF(PaddingX, baseline), RowText(row));
  }
  DrawCursor(painter);
}

void TerminalWidget::DrawCursor(QPainter& painter) const {
  const auto position = std::min(static_cast<std::size_t>(box_.SelStart.Value()), Text().size());
  const std::size_t at = RowOf(position);
  const int line = static_cast<int>(at) - top_;
  if (line < 0 || line >= VisibleRows()) return;
  const QRectF cell = CellsOf(line, rows_[at], position, position + 1).toAlignedRect();
  if (hasFocus()) {
    painter.fillRect(cell, colors::TerminalText);
  } else {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(colors::TerminalText);
    painter.drawRect(cell.adjusted(0.5, 0.5, -0.5, -0.5));
  }
}

void TerminalWidget::keyPressEvent(QKeyEvent* event) {
  const bool shortcut = event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
  if (shortcut && event->key() == Qt::Key_C) {
    QApplication::clipboard()->setText(SelectedText());
  } else if (shortcut && event->key() == Qt::Key_V) {
    TypeAll(QApplication::clipboard()->text());
  } else if (event->text().isEmpty()) {
    event->ignore();
  } else {
    TypeAll(event->text());
  }
}

void TerminalWidget::TypeAll(const QString& text) {
  for (const char key : ToBytes(text)) {
    if (!IsAttached()) return;
    box_.Key(key == '\n' ? '\r' : key);
  }
  if (IsAttached()) ScrollTo(LastTop());
}

void TerminalWidget::wheelEvent(QWheelEvent* event) {
  wheel_ += event->angleDelta().y();
  const int steps = wheel_ / WheelStep;
  wheel_ -= steps * WheelStep;
  ScrollTo(top_ - steps * WheelRows);
}

std::size_t TerminalWidget::PositionAt(QPointF point) const {
  const int line = static_cast<int>(std::floor((point.y() - PaddingY) / LineHeight));
  const int row = std::clamp(top_ + line, 0, static_cast<int>(rows_.size()) - 1);
  const Row& hit = rows_[static_cast<std::size_t>(row)];
  const double column = std::round((point.x() - PaddingX) / cell_);
  return hit.start + static_cast<std::size_t>(std::clamp(column, 0.0, static_cast<double>(hit.length)));
}

void TerminalWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  anchor_ = selectionEnd_ = PositionAt(event->position());
  update();
}

void TerminalWidget::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton)) return event->ignore();
  selectionEnd_ = PositionAt(event->position());
  update();
}

void TerminalWidget::mouseReleaseEvent(QMouseEvent*) {
  QClipboard* clipboard = QApplication::clipboard();
  if (anchor_ != selectionEnd_ && clipboard->supportsSelection()) {
    clipboard->setText(SelectedText(), QClipboard::Selection);
  }
}

QString TerminalWidget::SelectedText() const {
  const auto [from, to] = std::minmax(anchor_, std::min(selectionEnd_, Text().size()));
  return FromBytes(std::string_view(Text()).substr(from, to - from)).remove(u'\r');
}

int TerminalWidget::Length() const { return IsAttached() ? static_cast<int>(Text().size()) : 0; }

QString TerminalWidget::Part(int from, int to) const {
  const int start = std::clamp(from, 0, Length());
  const auto length = static_cast<std::size_t>(std::clamp(to, start, Length()) - start);
  return length == 0 ? QString() : FromBytes(std::string_view(Text()).substr(static_cast<std::size_t>(start), length));
}

int TerminalWidget::CursorPosition() const { return IsAttached() ? std::min(box_.SelStart.Value(), Length()) : 0; }

QRect TerminalWidget::CharacterPlace(int position) const {
  const auto at = static_cast<std::size_t>(std::clamp(position, 0, Length()));
  const std::size_t row = RowOf(at);
  return CellsOf(static_cast<int>(row) - top_, rows_[row], at, at + 1).toAlignedRect();
}

int TerminalWidget::PositionNear(QPoint place) const { return static_cast<int>(PositionAt(place)); }

std::pair<int, int> TerminalWidget::Selection() const {
  const auto [from, to] = std::minmax(anchor_, selectionEnd_);
  return {static_cast<int>(from), std::min(static_cast<int>(to), Length())};
}

void TerminalWidget::Select(int from, int to) {
  anchor_ = static_cast<std::size_t>(std::clamp(from, 0, Length()));
  selectionEnd_ = static_cast<std::size_t>(std::clamp(to, 0, Length()));
  update();
}

void TerminalWidget::ShowPosition(int position) {
  const int row = static_cast<int>(RowOf(static_cast<std::size_t>(std::clamp(position, 0, Length()))));
  if (row < top_ || row >= top_ + VisibleRows()) ScrollTo(row);
}

void TerminalWidget::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void TerminalWidget::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

}  // namespace vk32
