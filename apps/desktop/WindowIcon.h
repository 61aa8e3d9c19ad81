// The icon that windows and the task bar show.
#pragma once

#include <QIconEngine>
#include <QPixmap>
#include <map>

namespace vk32 {

/// Draws each size when it is first asked for. QIcon's own engine would put the pixmaps into the cache of Qt, whose
/// clock wakes the program every half minute.
class WindowIcon : public QIconEngine {
 public:
  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override;
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
  QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
  QIconEngine* clone() const override { return new WindowIcon(*this); }

 private:
  std::map<int, QPixmap> drawn_;  // by their height
};

}  // namespace vk32
