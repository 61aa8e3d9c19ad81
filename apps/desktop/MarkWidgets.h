// The widgets of check boxes and options: a box or circle with a mark, and words beside it.
#pragma once

#include <QButtonGroup>
#include <QCheckBox>
#include <QRadioButton>

#include "ControlWidget.h"
#include "TextBlock.h"

namespace vk32 {

/// What check boxes and options have in common; `Button` gives it the right role for assistive technology.
template <class Button, class MarkControl>
class MarkWidget : public Button, public ControlWidget {
 public:
  QWidget& AsWidget() override { return *this; }
  void Sync() override;
  Ring FocusRing() const override;
  void Activate() override { control_.Click(); }
  void ShowMark(QChar mark) override;
  QString Tip() const override;

 protected:
  MarkWidget(MarkControl& control, QWidget& parent, Theme& theme);

  /// The mark follows the control alone.
  void nextCheckState() override {}
  bool hitButton(const QPoint& position) const override { return this->rect().contains(position); }
  void paintEvent(QPaintEvent* event) override;

  virtual void DrawMark(QPainter& painter, const QRectF& box) const = 0;

  MarkControl& control_;

 private:
  void Clicked();
  /// Not where another label stands for the words, beside a place that holds the box alone.
  bool ShowsWords() const;
  TextBlock Words() const;

  Theme& theme_;
  QChar mark_;
};

class CheckWidget : public MarkWidget<QCheckBox, CheckBox> {
 public:
  CheckWidget(CheckBox& box, QWidget& parent, Theme& theme) : MarkWidget(box, parent, theme) {}

 protected:
  void DrawMark(QPainter& painter, const QRectF& box) const override;
};

class OptionWidget : public MarkWidget<QRadioButton, OptionButton> {
 public:
  OptionWidget(OptionButton& option, QWidget& parent, Theme& theme);

 protected:
  void DrawMark(QPainter& painter, const QRectF& box) const override;

 private:
  QButtonGroup alone_;
};

}  // namespace vk32
