// The icon that windows and the task bar show.
#include "WindowIcon.h"

#include <QPainter>

#include "Theme.h"
#include "resources/Pictures.h"

namespace vk32 {

void WindowIcon::paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) {
  painter->drawPixmap(place, pixmap(place.size(), mode, state));
}

QPixmap WindowIcon::pixmap(const QSize& size, QIcon::Mode, QIcon::State) {
  QPixmap& picture = drawn_[size.height()];
  if (picture.size() != size) picture = Theme::Icon(size, 1);
  return picture;
}

QList<QSize> WindowIcon::availableSizes(QIcon::Mode, QIcon::State) {
  QList<QSize> sizes;
  for (const int side : IconSizes) sizes.emplace_back(side, side);
  return sizes;
}

}  // namespace vk32
