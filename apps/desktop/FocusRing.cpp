// The ring around what has the focus.
#include "FocusRing.h"

#include <QPainter>

#include "Theme.h"

namespace vk32 {
namespace {

constexpr int Thickness = 2;

}  // namespace

FocusRing::FocusRing(QWidget& window) : QWidget(&window) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void FocusRing::Surround(ControlWidget& widget) {
  const ControlWidget::Ring ring = widget.FocusRing();
  if (ring.area.isEmpty() || !widget.AsWidget().isVisibleTo(parentWidget())) return hide();
  const int grown = ring.gap + Thickness;
  const QPoint corner = widget.AsWidget().mapTo(parentWidget(), ring.area.topLeft());
  setGeometry(QRect(corner, ring.area.size()).adjusted(-grown, -grown, grown, grown));
  onDark_ = ring.onDark;
  raise();
  show();
  update();
}

void FocusRing::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(onDark_ ? colors::OnBandStrong : colors::Text, Thickness));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 5, 5);
}

}  // namespace vk32
