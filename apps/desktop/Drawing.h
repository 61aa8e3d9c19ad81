// The shapes that several kinds of widgets are drawn of.
#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

namespace vk32 {

/// A filled area in a border of `thickness`; `bottom` is the thickness of the lower edge.
void DrawBox(QPainter& painter, const QRectF& area, double radius, const QColor& border, const QColor& face,
             double thickness = 1, double bottom = 1);

enum class Direction { Up, Down };
/// Drawn around its middle, 8 px wide.
void DrawChevron(QPainter& painter, QPointF middle, Direction direction, const QColor& color);

/// The sign of a good or a bad end: a white tick or cross in a filled circle.
void DrawSign(QPainter& painter, const QRectF& area, bool good);

/// A raised or pressed button face without words.
void DrawButtonFace(QPainter& painter, const QRectF& area, bool pressed, bool enabled);

}  // namespace vk32
