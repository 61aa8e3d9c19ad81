// The shapes that several kinds of widgets are drawn of.
#include "Drawing.h"

#include "Theme.h"

namespace vk32 {

void DrawBox(QPainter& painter, const QRectF& area, double radius, const QColor& border, const QColor& face,
             double thickness, double bottom) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(border);
  painter.drawRoundedRect(area, radius, radius);
  painter.setBrush(face);
  const double inner = radius > thickness ? radius - thickness : 0;
  painter.drawRoundedRect(area.adjusted(thickness, thickness, -thickness, -bottom), inner, inner);
}

void DrawChevron(QPainter& painter, QPointF middle, Direction direction, const QColor& color) {
  const double rise = direction == Direction::Down ? 2 : -2;
  const QPointF points[] = {middle + QPointF(-4, -rise), middle + QPointF(0, rise), middle + QPointF(4, -rise)};
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(points, 3);
}

void DrawButtonFace(QPainter& painter, const QRectF& area, bool pressed, bool enabled) {
  if (pressed) {
    DrawBox(painter, area, 4, colors::Text, colors::PressedFace);
  } else {
    DrawBox(painter, area, 4, enabled ? colors::Border : colors::Hairline, colors::Page, 1, 2);
  }
}

}  // namespace vk32
