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

void DrawSign(QPainter& painter, const QRectF& area, bool good) {
  const double radius = area.height() / 2;
  const auto at = [&](double x, double y) { return area.center() + QPointF(x, y) * radius; };
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(good ? colors::Filled : colors::Accent);
  painter.drawEllipse(area.center(), radius, radius);
  painter.setPen(QPen(colors::Page, radius < 12 ? 1.6 : 2.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  if (good) {
    const QPointF points[] = {at(-0.42, 0.04), at(-0.12, 0.36), at(0.44, -0.30)};
    painter.drawPolyline(points, 3);
  } else {
    painter.drawLine(at(-0.36, -0.36), at(0.36, 0.36));
    painter.drawLine(at(0.36, -0.36), at(-0.36, 0.36));
  }
}

void DrawButtonFace(QPainter& painter, const QRectF& area, bool pressed, bool enabled) {
  if (pressed) {
    DrawBox(painter, area, 4, colors::Text, colors::PressedFace);
  } else {
    DrawBox(painter, area, 4, enabled ? colors::Border : colors::Hairline, colors::Page, 1, 2);
  }
}

}  // namespace vk32
