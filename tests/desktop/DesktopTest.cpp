// The program on a desktop without a screen, and the hands of its user.
#include "DesktopTest.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

namespace vk32 {
namespace {

void SendMouse(QWidget& widget, QEvent::Type type, QPoint at, Qt::MouseButton button) {
  const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
  QMouseEvent event(type, QPointF(at), QPointF(widget.mapToGlobal(at)), button, held, Qt::NoModifier);
  QCoreApplication::sendEvent(&widget, &event);
}

}  // namespace

void MouseDown(QWidget& widget, QPoint at, Qt::MouseButton button) {
  if (widget.focusPolicy() & Qt::ClickFocus) widget.setFocus(Qt::MouseFocusReason);
  SendMouse(widget, QEvent::MouseButtonPress, at, button);
}

void MouseUp(QWidget& widget, QPoint at, Qt::MouseButton button) {
  SendMouse(widget, QEvent::MouseButtonRelease, at, button);
}

void MouseMove(QWidget& widget, QPoint at, Qt::MouseButton held) { SendMouse(widget, QEvent::MouseMove, at, held); }

void SendKey(QWidget& widget, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
  QKeyEvent event(type, key, modifiers, text);
  QCoreApplication::sendEvent(&widget, &event);
}

void Press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
  const QPointer<QWidget> guard(&widget);
  SendKey(widget, QEvent::KeyPress, key, modifiers, text);
  if (guard) SendKey(widget, QEvent::KeyRelease, key, modifiers);
}

void Type(QWidget& widget, const QString& text) {
  for (const QChar letter : text) Press(widget, letter.toUpper().unicode(), {}, letter);
}

DesktopTest::~DesktopTest() {
  Settle();
  if (!screen.Ended()) return;
  // Qt would open no loop any more: let it come to an end as the program does.
  QTimer::singleShot(0, qApp, &QCoreApplication::quit);
  QCoreApplication::exec();
}

void DesktopTest::Settle() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

Form& DesktopTest::Show(const std::string& name) {
  app.forms.dispatcher.Dispatch([&] { app.forms.Show(name); });
  Settle();
  return *app.forms.Find(name);
}

EveryControl& DesktopTest::ShowEvery() {
  EveryControl::RegisterAt(app.forms);
  auto& form = dynamic_cast<EveryControl&>(Show(EveryControl::FormName));
  form.TakeLog();
  return form;
}

QWidget& DesktopTest::WidgetOf(const Control& control) const {
  return *WindowOf(control.OwnerForm()).WidgetOf(control);
}

void DesktopTest::Click(const Control& control) {
  FormWindow& window = WindowOf(control.OwnerForm());
  const QPoint middle = PlaceOnForm(control).center();
  QWidget* onTop = window.childAt(middle);
  ASSERT_EQ(onTop, window.WidgetOf(control)) << control.FullName() << " is covered";
  const QPoint at = onTop->mapFrom(&window, middle);
  MouseDown(*onTop, at);
  MouseUp(*onTop, at);
  Settle();
}

bool DesktopTest::HasFocus(const Control& control) const {
  const FormWindow& window = WindowOf(control.OwnerForm());
  return window.focusWidget() == window.WidgetOf(control);
}

void DesktopTest::PressIn(const Form& form, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
  QWidget* focused = WindowOf(form).focusWidget();
  Press(focused ? *focused : WindowOf(form), key, modifiers, text);
  Settle();
}

BoxWatcher::BoxWatcher(std::function<void(MessageBox& box)> look) {
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this, look = std::move(look)] {
    auto* box = dynamic_cast<MessageBox*>(QApplication::activeModalWidget());
    if (!box) return;
    if (++seen_ > 9) return void(box->close());  // the test has failed to, and fails
    look(*box);
  });
  timer_.start(0);
}

}  // namespace vk32
