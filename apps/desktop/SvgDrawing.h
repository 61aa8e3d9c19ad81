// Draws the pictures of the program: SVG of the few shapes that they consist of.
#pragma once

#include <QByteArray>
#include <QPainter>
#include <QRectF>

namespace vk32 {

/// Draws rect, circle and path (M L C Z l h), filled or stroked; the picture's viewBox fills `place`, in the painter's
/// coordinates. False if the picture holds something else: what stands before that has been drawn.
bool DrawSvg(QPainter& painter, const QByteArray& svg, const QRectF& place);

}  // namespace vk32
