// The widgets of scroll bars and progress bars.
#pragma once

#include <QProgressBar>
#include <QScrollBar>

#include "ControlWidget.h"

namespace vk32 {

class ScrollBarWidget : public QScrollBar, public ControlWidget {
 public:
  ScrollBarWidget(VScrollBar& bar, QWidget& parent);

  QWidget& AsWidget() override { return *this; }
  void Sync() override;

  /// Of the area that it moves.
  Fill Ground() const { return bar_.ground; }

 private:
  void Moved(int value);

  VScrollBar& bar_;
};

class ProgressWidget : public QProgressBar, public ControlWidget {
 public:
  ProgressWidget(ProgressBar& bar, QWidget& parent);

  QWidget& AsWidget() override { return *this; }
  void Sync() override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ProgressBar& bar_;
};

}  // namespace vk32
