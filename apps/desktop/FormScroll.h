// A form that is larger than the room on its screen: the part of it that shows, and the bars that move it.
#pragma once

#include <QScrollBar>

namespace vk32 {

/// All sizes and places in pixels, places from the form's corner.
class FormScroll {
 public:
  /// `window` holds the controls as children.
  explicit FormScroll(QWidget& window);

  /// Gives the window the size of the form, or what there is room for, with bars.
  void Fit(QSize form, QSize room);
  /// The corner of the part that shows.
  QPoint Corner() const { return corner_; }
  void BringIntoView(const QRect& place);
  /// Above the controls that have come since.
  void Raise();
  /// The bar that the wheel turns, or nullptr if all of the form shows.
  QScrollBar* Bar() { return down_.isHidden() ? nullptr : &down_; }

 private:
  void Move();

  QWidget& window_;
  QScrollBar across_, down_;
  QPoint corner_;
};

}  // namespace vk32
