// The program on a desktop without a screen, and the hands of its user.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <tuple>

#include "DesktopScreen.h"
#include "FormWindow.h"
#include "MessageBox.h"
#include "Text.h"
#include "app/App.h"
#include "support/EveryControl.h"
#include "support/FakeSerialDriver.h"
#include "support/VirtualEventLoop.h"

namespace vk32 {

// The user's hands. Positions are the widget's own.
inline void SendMouse(QWidget& widget, QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) {
  QMouseEvent event(type, QPointF(at), QPointF(widget.mapToGlobal(at)), button, held, Qt::NoModifier);
  QCoreApplication::sendEvent(&widget, &event);
}
inline void MouseDown(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton) {
  if (widget.focusPolicy() & Qt::ClickFocus) widget.setFocus(Qt::MouseFocusReason);
  SendMouse(widget, QEvent::MouseButtonPress, at, button, button);
}
inline void MouseUp(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton) {
  SendMouse(widget, QEvent::MouseButtonRelease, at, button, Qt::NoButton);
}
inline void MouseMove(QWidget& widget, QPoint at, Qt::MouseButton held = Qt::NoButton) {
  SendMouse(widget, QEvent::MouseMove, at, held, held);
}
inline void SendKey(QWidget& widget, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers, QString text) {
  QKeyEvent event(type, key, modifiers, text);
  QCoreApplication::sendEvent(&widget, &event);
}
/// Down and up.
inline void Press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
  const QPointer<QWidget> guard(&widget);
  SendKey(widget, QEvent::KeyPress, key, modifiers, text);
  if (guard) SendKey(widget, QEvent::KeyRelease, key, modifiers, {});
}
/// Letters, one by one.
inline void Type(QWidget& widget, const QString& text) {
  for (const QChar letter : text) Press(widget, letter.toUpper().unicode(), {}, letter);
}

class DesktopTest : public testing::Test {
 protected:
  ~DesktopTest() override {
    DesktopTest::Settle();
    if (!screen.Ended()) return;
    // Qt would open no loop any more: let it come to an end as the program does.
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
  }

  /// Lets Qt deliver what is due.
  virtual void Settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  Form& Show(const std::string& name) {
    app.forms.dispatcher.Dispatch([&] { app.forms.Show(name); });
    Settle();
    return *app.forms.Find(name);
  }
  FormWindow& WindowOf(const Form& form) const { return *screen.WindowOf(form); }
  QWidget& WidgetOf(const Control& control) const { return *WindowOf(control.OwnerForm()).WidgetOf(control); }
  QImage Picture(const Control& control) const { return WidgetOf(control).grab().toImage(); }
  /// Clicks in the middle of the control, which must lie on top there.
  void Click(const Control& control) {
    FormWindow& window = WindowOf(control.OwnerForm());
    const QPoint middle = PlaceOnForm(control).center();
    QWidget* onTop = window.childAt(middle);
    ASSERT_EQ(onTop, window.WidgetOf(control)) << control.FullName() << " is covered";
    const QPoint at = onTop->mapFrom(&window, middle);
    MouseDown(*onTop, at);
    MouseUp(*onTop, at);
    Settle();
  }
  /// The control's widget has the focus of its window.
  bool HasFocus(const Control& control) const {
    const FormWindow& window = WindowOf(control.OwnerForm());
    return window.focusWidget() == window.WidgetOf(control);
  }
  /// Presses a key in whatever has the focus.
  void PressIn(const Form& form, int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
    QWidget* focused = WindowOf(form).focusWidget();
    Press(focused ? *focused : WindowOf(form), key, modifiers, text);
    Settle();
  }

  VirtualEventLoop loop;
  DesktopScreen screen;
  FakeSerialDriver driver{loop};
  PortNames names{"", "/nowhere", "/nowhere"};
  App app{loop, screen, driver, names};
};

/// The form that has every control is shown. Whenever things have settled, its window shows what the controls say, the
/// form knows where the focus is, and nothing that shows is older than what would be drawn now.
class EveryTest : public DesktopTest {
 protected:
  EveryTest() { DesktopTest::Settle(); }

  void Settle() override {
    DesktopTest::Settle();
    FormWindow* window = screen.WindowOf(form);
    if (!window || !window->isVisible()) return;
    std::string focused;
    for (const Control* control : form.Controls()) {
      const QWidget* widget = window->WidgetOf(*control);
      if (!widget) continue;
      if (window->focusWidget() == widget) focused = control->Name();
      EXPECT_EQ(widget->isEnabled() && widget->isVisible(), IsReachable(*control)) << control->FullName();
      if (control != &form.LaterCbo) ExpectAsTold(*control, *widget);
    }
    EXPECT_EQ(form.ActiveControl.Value(), focused);
    if (!window->screen()->geometry().contains(window->geometry())) return;  // its rest is drawn nowhere
    for (int tries = 0; tries < 40 && !IsDrawnAnew(*window); ++tries) usleep(500), DesktopTest::Settle();
    EXPECT_TRUE(IsDrawnAnew(*window));
  }

  EveryControl& form = EveryControl::Open(app.forms);

 private:
  static void ExpectAsTold(const Control& control, const QWidget& widget) {
    using Kind = Control::Kind;
    const std::tuple<Kind, const char*, const char*> rows[] = {
        {Kind::Label, "text", "Caption"},      {Kind::TextBox, "text", "Text"},
        {Kind::TextBox, "readOnly", "Locked"}, {Kind::ComboBox, "currentText", "Text"},
        {Kind::CheckBox, "checked", "Value"},  {Kind::OptionButton, "checked", "Value"},
        {Kind::VScrollBar, "value", "Value"},  {Kind::VScrollBar, "maximum", "Max"},
        {Kind::ProgressBar, "maximum", "Max"}, {Kind::ProgressBar, "value", "Value"}};
    for (const auto& [kind, shown, told] : rows) {
      const QVariant value = widget.property(shown);
      if (kind != control.GetKind() || !value.isValid()) continue;
      const std::string text = control.FindProperty(told)->AsText();
      const bool flag = value.typeId() == QMetaType::Bool;
      EXPECT_TRUE(flag ? value.toBool() == (text == "True" || text == "1") : value.toString() == FromBytes(text))
          << control.FullName() << ": " << text;
    }
  }
  static bool IsDrawnAnew(FormWindow& window) {
    const QImage shown = window.screen()->grabWindow(window.winId()).toImage();
    return shown == window.grab().toImage().convertToFormat(shown.format());
  }
};

/// Looks at each message box that opens and closes it by Escape, or as `look` does.
class BoxWatcher {
 public:
  explicit BoxWatcher(std::function<void(MessageBox& box)> look = [](MessageBox& box) { Press(box, Qt::Key_Escape); }) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this, look = std::move(look)] {
      auto* box = dynamic_cast<MessageBox*>(QApplication::activeModalWidget());
      // A real desktop gives it the keys some time after it shows.
      if (!box || !box->focusWidget() || !box->focusWidget()->hasFocus()) return;
      if (++seen_ > 9) return void(box->close());  // the test has failed to, and fails
      look(*box);
    });
    timer_.start(0);
  }
  int Seen() const { return seen_; }

 private:
  QTimer timer_;
  int seen_ = 0;
};

}  // namespace vk32
