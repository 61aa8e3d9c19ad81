// The widgets of the buttons: those that show a numbered picture and those that show words.
#pragma once

#include <QAbstractButton>

#include "ControlWidget.h"

namespace vk32 {

/// Down, up and click as the forms know them, by every button of the mouse and by keys.
class PushWidget : public QAbstractButton, public ControlWidget {
 public:
  QWidget& AsWidget() override { return *this; }
  Ring FocusRing() const override { return {rect(), 1, false}; }
  void Activate() override;
  void LetGo() override;

 protected:
  explicit PushWidget(QWidget& parent);

  virtual void Press() = 0;
  virtual void Release() = 0;
  virtual void Click() = 0;

  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  enum class HeldBy { Nobody, Mouse, Key };

  void Hold(HeldBy by);

  HeldBy heldBy_ = HeldBy::Nobody;
  int heldWith_ = 0;  // the button or the key
};

class PictureButtonWidget : public PushWidget {
 public:
  PictureButtonWidget(ImageButton& button, QWidget& parent, Theme& theme);

  void Sync() override;
  void ShowMark(QChar mark) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void Press() override;
  void Release() override;
  void Click() override;

 private:
  void DrawKeyTip(QPainter& painter) const;

  ImageButton& button_;
  Theme& theme_;
  QChar mark_;
};

class CommandButtonWidget : public PushWidget {
 public:
  CommandButtonWidget(CommandButton& button, QWidget& parent, Theme& theme);

  void Sync() override;
  void ShowMark(QChar mark) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void Press() override;
  void Release() override;
  void Click() override;

 private:
  CommandButton& button_;
  Theme& theme_;
  QChar mark_;
  bool pressed_ = false;
};

}  // namespace vk32
