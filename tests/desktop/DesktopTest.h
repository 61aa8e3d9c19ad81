// The program on a desktop without a screen, and the hands of its user.
#pragma once

#include <gtest/gtest.h>

#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "DesktopScreen.h"
#include "FormWindow.h"
#include "MessageBox.h"
#include "app/App.h"
#include "support/EveryControl.h"
#include "support/FakeSerialDriver.h"
#include "support/VirtualEventLoop.h"

namespace vk32 {

// The user's hands. Positions are the widget's own.
void MouseDown(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton);
void MouseUp(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton);
void MouseMove(QWidget& widget, QPoint at, Qt::MouseButton held = Qt::NoButton);
void SendKey(QWidget& widget, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers = {},
             const QString& text = {});
/// Down and up.
void Press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {});
/// Letters, one by one.
void Type(QWidget& widget, const QString& text);

class DesktopTest : public testing::Test {
 protected:
  ~DesktopTest() override;

  /// Lets Qt deliver what is due.
  static void Settle();
  Form& Show(const std::string& name);
  EveryControl& ShowEvery();

  FormWindow& WindowOf(const Form& form) const { return *screen.WindowOf(form); }
  QWidget& WidgetOf(const Control& control) const;
  QImage Picture(const Control& control) const { return WidgetOf(control).grab().toImage(); }
  /// Moves to the middle of the control and clicks what is on top there.
  void Click(const Control& control);
  /// The control's widget has the focus of its window.
  bool HasFocus(const Control& control) const;
  /// Presses a key in whatever has the focus.
  void PressIn(const Form& form, int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {});

  VirtualEventLoop loop;
  DesktopScreen screen;
  FakeSerialDriver driver{loop};
  PortNames names{"", "/nowhere", "/nowhere"};
  App app{loop, screen, driver, names};
};

/// Looks at each message box that opens and closes it by Escape, or as `look` does.
class BoxWatcher {
 public:
  explicit BoxWatcher(std::function<void(MessageBox& box)> look = [](MessageBox& box) { Press(box, Qt::Key_Escape); });

  int Seen() const { return seen_; }

 private:
  QTimer timer_;
  int seen_ = 0;
};

}  // namespace vk32
