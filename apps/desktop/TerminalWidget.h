// The widget of a text box of many lines: a terminal, whose keys go to the form one by one.
#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "ControlWidget.h"

namespace vk32 {

class TerminalWidget : public QWidget, public ControlWidget {
 public:
  TerminalWidget(TextBox& box, QWidget& parent, Theme& theme);

  QWidget& AsWidget() override { return *this; }
  void Sync() override;
  Ring FocusRing() const override { return {rect(), 2, false}; }

  /// What can be seen at the moment, a row a line.
  QString VisibleText() const;
  int Columns() const { return box_.screenful.columns; }
  int VisibleRows() const { return box_.screenful.rows; }

  // For assistive technology. Positions are those of the text.
  int Length() const;
  QString Part(int from, int to) const;
  int CursorPosition() const;
  QRect CharacterPlace(int position) const;
  int PositionNear(QPoint place) const;
  std::pair<int, int> Selection() const;
  void Select(int from, int to);
  void ShowPosition(int position);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  bool Scrolled(const QKeyEvent& key);
  /// Marks from where the mouse went down up to there.
  void MarkTo(std::size_t position);
  QString RowText(const TextRow& row) const;
  const std::string& Text() const { return box_.Text.Value(); }
  std::size_t PositionAt(QPointF point) const;
  QRectF CellsOf(int line, const TextRow& row, std::size_t from, std::size_t to) const;
  void DrawCursor(QPainter& painter) const;
  void TypeAll(const QString& text);
  void Paste();

  TextBox& box_;
  const QFont& font_;
  double cell_;  // width of a character
  int wheel_ = 0;
  std::size_t anchor_ = 0;  // where a mark begins
};

}  // namespace vk32
