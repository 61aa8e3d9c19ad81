// What a window asks of the widget of a control, whatever its kind.
#pragma once

#include <QChar>
#include <QKeyEvent>
#include <QRect>
#include <QWidget>

#include "forms/Controls.h"

namespace vk32 {

class Theme;

class ControlWidget {
 public:
  /// What the focus ring goes round, in the widget's coordinates. Empty: the widget shows its focus by itself.
  struct Ring {
    QRect area;
    int gap = 1;
    bool onDark = false;
    int radius = 5;
  };

  virtual ~ControlWidget() = default;

  virtual QWidget& AsWidget() = 0;
  /// Takes over what the control shows; its place and its flags are the window's.
  virtual void Sync() = 0;
  /// What assistive technology calls it.
  virtual void Name(const QString& name) { AsWidget().setAccessibleName(name); }
  virtual Ring FocusRing() const { return {}; }
  /// Does what a click does, by a key.
  virtual void Activate() {}
  /// It has a use for the key that goes before what the key does in the window.
  virtual bool Wants(const QKeyEvent&) const { return false; }
  /// The user has gone on to something else.
  virtual void Leave() {}
  /// The pointer or the key that holds it down is out of reach.
  virtual void LetGo() {}
  /// The letter that leads to it together with Alt, to be underlined; null: none.
  virtual void ShowMark(QChar) {}
  /// The tip at this moment, if the control has none of its own.
  virtual QString Tip() const { return {}; }

  /// From now on the control may be gone; what is still on the stack must not touch it.
  void Detach() { attached_ = false; }

 protected:
  bool IsAttached() const { return attached_; }

 private:
  bool attached_ = true;
};

/// The widget of a control, a child of `parent`; nullptr for a kind that stands nowhere on the form.
ControlWidget* MakeWidget(Control& control, QWidget& parent, Theme& theme);

}  // namespace vk32
