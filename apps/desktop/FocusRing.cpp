// The ring around what has the focus.
#include "FocusRing.h"

#include <QPainter>
#include <algorithm>

#include "LabelWidget.h"
#include "Theme.h"

namespace vk32 {
namespace {

constexpr int Thickness = 2;

}  // namespace

FocusRing::FocusRing(QWidget& window) : QWidget(&window) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void FocusRing::Surround(ControlWidget& widget, const QWidget* companion) {
  const ControlWidget::Ring ring = widget.FocusRing();
  if (ring.area.isEmpty() || !widget.AsWidget().isVisibleTo(parentWidget())) return hide();
  const int grown = ring.gap + Thickness;
  QRect area(widget.AsWidget().mapTo(parentWidget(), ring.area.topLeft()), ring.area.size());
  if (const auto* label = dynamic_cast<const LabelWidget*>(companion)) {
    const int right = label->mapTo(parentWidget(), QPoint(label->Block().Width(), 0)).x();
    area.setRight(std::max(area.right(), right));
  }
  setGeometry(area.adjusted(-grown, -grown, grown, grown));
  onDark_ = ring.onDark;
  radius_ = ring.radius;
  raise();
  show();
  update();
}

void FocusRing::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(onDark_ ? colors::OnBandStrong : colors::Text, Thickness));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius_, radius_);
}

}  // namespace vk32
