// The widgets of scroll bars and progress bars.
#include "BarWidgets.h"

#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>

#include "Drawing.h"
#include "Theme.h"

namespace vk32 {

ScrollBarWidget::ScrollBarWidget(VScrollBar& bar, QWidget& parent) : QScrollBar(Qt::Vertical, &parent), bar_(bar) {
  setFocusPolicy(Qt::StrongFocus);
  setContextMenuPolicy(Qt::NoContextMenu);
  if (bar_.ground == Fill::Band) setAttribute(Qt::WA_OpaquePaintEvent, false);
  connect(this, &QScrollBar::valueChanged, this, [this](int value) { Moved(value); });
}

void ScrollBarWidget::Sync() {
  const QSignalBlocker blocker(this);
  setRange(bar_.Min, std::max(bar_.Min.Value(), bar_.Max.Value()));
  setSingleStep(bar_.SmallChange);
  setPageStep(bar_.LargeChange);
  setValue(bar_.Value);
  update();
}

void ScrollBarWidget::Moved(int value) {
  bar_.Scroll(value);
  if (IsAttached()) Sync();
}

ProgressWidget::ProgressWidget(ProgressBar& bar, QWidget& parent) : QProgressBar(&parent), bar_(bar) {
  setTextVisible(false);
}

void ProgressWidget::Sync() {
  setRange(bar_.Min, bar_.Max);
  setValue(bar_.Value);
}

void ProgressWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DrawBox(painter, rect(), 3, colors::Border, colors::Track);
  const int range = maximum() - minimum();
  if (range <= 0 || value() <= minimum()) return;
  const QRectF track = QRectF(rect()).adjusted(1, 1, -1, -1);
  const double part = static_cast<double>(value() - minimum()) / range;
  painter.setBrush(colors::Filled);
  painter.drawRoundedRect(QRectF(track.topLeft(), QSizeF(track.width() * part, track.height())), 2, 2);
}

}  // namespace vk32
