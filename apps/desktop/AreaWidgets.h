// The widgets of frames and of pictures.
#pragma once

#include <QPixmap>

#include "ControlWidget.h"
#include "forms/Tables.h"

namespace vk32 {

class FrameWidget : public QWidget, public ControlWidget {
 public:
  FrameWidget(Frame& frame, QWidget& parent);

  QWidget& AsWidget() override { return *this; }
  void Sync() override {}

  /// nullptr when the form has gone.
  Frame* GetFrame() const { return IsAttached() ? &frame_ : nullptr; }
  Fill GetFill() const { return IsAttached() ? frame_.fill : Fill::None; }
  /// Whether the parent draws a hairline around it.
  bool IsOutlined() const { return frame_.fill == Fill::Table || frame_.fill == Fill::List; }
  /// The title of the page that it is, or the heading of the panel; empty if it begins with none.
  QString Heading() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void DrawRowLines();

  Frame& frame_;
};

/// Takes the mouse for all its rows; its keys come through the window.
class RowTableWidget : public FrameWidget {
 public:
  RowTableWidget(RowTable& table, QWidget& parent);

  void Sync() override;
  /// Round the table and its scroll bar.
  Ring FocusRing() const override;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  RowTable& table_;
  int told_ = 0;        // the chosen row that assistive technology knows of
  bool opens_ = false;  // the button of a double click is down
};

/// The hairlines around the tables, with their scroll bars, that lie in `parent`.
void DrawOutlines(QWidget& parent);

class PictureWidget : public QWidget, public ControlWidget {
 public:
  PictureWidget(Image& image, QWidget& parent, Theme& theme) : QWidget(&parent), image_(image), theme_(theme) {}

  QWidget& AsWidget() override { return *this; }
  void Sync() override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Image& image_;
  Theme& theme_;
  QPixmap icon_;
};

}  // namespace vk32
