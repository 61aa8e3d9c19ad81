// The widgets of frames and of pictures.
#pragma once

#include <QPixmap>

#include "ControlWidget.h"

namespace vk32 {

class FrameWidget : public QWidget, public ControlWidget {
 public:
  FrameWidget(Frame& frame, QWidget& parent);

  QWidget& AsWidget() override { return *this; }
  void Sync() override {}

  /// Whether the parent draws a hairline around it.
  bool IsOutlined() const { return frame_.fill == Fill::Table; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void DrawRowLines();

  Frame& frame_;
};

/// The hairlines around the tables, with their scroll bars, that lie in `parent`.
void DrawOutlines(QWidget& parent);

class PictureWidget : public QWidget, public ControlWidget {
 public:
  PictureWidget(Image& image, QWidget& parent, Theme& theme) : QWidget(&parent), image_(image), theme_(theme) {}

  QWidget& AsWidget() override { return *this; }
  void Sync() override { update(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Image& image_;
  Theme& theme_;
  QPixmap icon_;
};

}  // namespace vk32
