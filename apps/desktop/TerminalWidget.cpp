// The widget of a text box of many lines.
#include "TerminalWidget.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStringList>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <functional>

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

void TerminalWidget::Sync() {
  const std::size_t change = box_.TakeChange();
  if (change < Text().size() && QAccessible::isActive()) {
    const int from = static_cast<int>(change);
    QAccessibleTextInsertEvent inserted(this, from, Part(from, Length()));
    QAccessible::updateAccessibility(&inserted);
  }
  update();
}

QString TerminalWidget::RowText(const TextRow& row) const {
  QString text = FromBytes(std::string_view(Text()).substr(row.start, row.length));
  for (QChar& character : text) {
    if (character == u'\r' || character == u'\t') character = u' ';
    // What a wrong speed makes of a text must not upset the columns.
    if (!character.isPrint()) character = u'\u00B7';
  }
  return text;
}

QString TerminalWidget::VisibleText() const {
  QStringList lines;
  const TextRows& rows = box_.Rows();
  for (int row = box_.TopRow; row < std::min(box_.TopRow + VisibleRows(), rows.Count()); ++row) {
    lines += RowText(rows[row]);
  }
  return lines.join(u'\n');
}

QRectF TerminalWidget::CellsOf(int line, const TextRow& row, std::size_t from, std::size_t to) const {
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
  const auto from = static_cast<std::size_t>(box_.MarkStart.Value());
  const std::size_t to = from + static_cast<std::size_t>(box_.MarkLength.Value());
  const TextRows& rows = box_.Rows();
  for (int line = 0; line < VisibleRows() && box_.TopRow + line < rows.Count(); ++line) {
    const TextRow& row = rows[box_.TopRow + line];
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
  const int row = box_.Rows().RowOf(position);
  const int line = row - box_.TopRow;
  if (line < 0 || line >= VisibleRows()) return;
  const QRectF cell = CellsOf(line, box_.Rows()[row], position, position + 1).toAlignedRect();
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
    if (box_.MarkLength > 0) box_.Copy();
  } else if (shortcut && event->key() == Qt::Key_V) {
    Paste();
  } else if (Scrolled(*event)) {
    return;
  } else if (event->text().isEmpty()) {
    event->ignore();
  } else {
    TypeAll(event->text());
  }
}

/// The device has no use for these keys.
bool TerminalWidget::Scrolled(const QKeyEvent& key) {
  const bool up = key.key() == Qt::Key_PageUp;
  if (!up && key.key() != Qt::Key_PageDown) return false;
  const int page = VisibleRows() - 1;
  box_.ScrollTo(box_.TopRow + (up ? -page : page));
  return true;
}

void TerminalWidget::Paste() { TypeAll(QApplication::clipboard()->text()); }

void TerminalWidget::TypeAll(const QString& text) {
  for (const char key : ToBytes(text)) {
    if (!IsAttached()) return;
    box_.Key(key == '\n' ? '\r' : key);
  }
  if (IsAttached()) box_.ScrollTo(box_.LastTopRow());
}

void TerminalWidget::wheelEvent(QWheelEvent* event) {
  wheel_ += event->angleDelta().y();
  const int steps = wheel_ / WheelStep;
  wheel_ -= steps * WheelStep;
  box_.ScrollTo(box_.TopRow - steps * WheelRows);
}

std::size_t TerminalWidget::PositionAt(QPointF point) const {
  const int line = static_cast<int>(std::floor((point.y() - PaddingY) / LineHeight));
  const TextRow& hit = box_.Rows()[std::clamp(box_.TopRow + line, 0, box_.Rows().Count() - 1)];
  const double column = std::round((point.x() - PaddingX) / cell_);
  return hit.start + static_cast<std::size_t>(std::clamp(column, 0.0, static_cast<double>(hit.length)));
}

void TerminalWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  anchor_ = PositionAt(event->position());
  MarkTo(anchor_);
}

void TerminalWidget::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton)) return event->ignore();
  MarkTo(PositionAt(event->position()));
}

void TerminalWidget::MarkTo(std::size_t position) {
  const auto [from, to] = std::minmax(anchor_, position);
  box_.Mark(static_cast<int>(from), static_cast<int>(to - from));
}

void TerminalWidget::mouseReleaseEvent(QMouseEvent*) {
  QClipboard* clipboard = QApplication::clipboard();
  if (box_.MarkLength > 0 && clipboard->supportsSelection()) {
    clipboard->setText(FromBytes(box_.MarkedText()).remove(u'\r'), QClipboard::Selection);
  }
}

void TerminalWidget::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const QString& words, bool enabled, const std::function<void()>& act) {
    QAction* action = menu->addAction(words);
    action->setEnabled(enabled);
    connect(action, &QAction::triggered, this, [this, act] {
      if (IsAttached()) act();
    });
  };
  add(QStringLiteral("&Copy\tCtrl+Shift+C"), box_.MarkLength > 0, [this] { box_.Copy(); });
  add(QStringLiteral("&Paste\tCtrl+Shift+V"), !QApplication::clipboard()->text().isEmpty(), [this] { Paste(); });
  add(QStringLiteral("Select &All"), !Text().empty(), [this] { box_.Mark(0, static_cast<int>(Text().size())); });
  // Shown without waiting for it: the device goes on meanwhile, and the form may close.
  menu->popup(event->globalPos());
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
  const int row = box_.Rows().RowOf(at);
  return CellsOf(row - box_.TopRow, box_.Rows()[row], at, at + 1).toAlignedRect();
}

int TerminalWidget::PositionNear(QPoint place) const { return static_cast<int>(PositionAt(place)); }

std::pair<int, int> TerminalWidget::Selection() const { return {box_.MarkStart, box_.MarkStart + box_.MarkLength}; }

void TerminalWidget::Select(int from, int to) {
  const int start = std::clamp(from, 0, Length());
  box_.Mark(start, std::clamp(to, start, Length()) - start);
}

void TerminalWidget::ShowPosition(int position) {
  const int row = box_.Rows().RowOf(static_cast<std::size_t>(std::clamp(position, 0, Length())));
  if (row < box_.TopRow || row >= box_.TopRow + VisibleRows()) box_.ScrollTo(row);
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
