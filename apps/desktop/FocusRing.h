// The ring around what has the focus: one for a window, above all its controls.
#pragma once

#include <QWidget>

#include "ControlWidget.h"

namespace vk32 {

class FocusRing : public QWidget {
 public:
  explicit FocusRing(QWidget& window);

  /// `companion`: a label that belongs to the widget and stands at its right, or nullptr.
  void Surround(ControlWidget& widget, const QWidget* companion);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool onDark_ = false;
  int radius_ = 0;
};

}  // namespace vk32
