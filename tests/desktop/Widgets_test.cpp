// The widgets follow their controls, and the user's hands on them reach the handlers.
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>
#include <QWindow>

#include "DesktopTest.h"
#include "LabelWidget.h"
#include "ListWidget.h"
#include "TerminalWidget.h"

namespace vk32 {
namespace {

class WidgetsTest : public EveryTest {
 protected:
  template <class Widget>
  Widget& As(const Control& control) {
    return dynamic_cast<Widget&>(WidgetOf(control));
  }
};

TEST_F(WidgetsTest, PropertiesAreFollowed) {
  EXPECT_FALSE(WindowOf(form).WidgetOf(form.TitleLbl)) << "a hidden page has no widgets yet";
  form.TitleLbl.Caption = "Changed while hidden";
  form.OneOpt.Enabled = form.CloseEnabled = false;
  form.SecondFrame.Visible = true;
  form.Bar.Value = 40;
  form.NameTxt.Text = "h\xE9";
  form.Caption = "New title";
  Settle();
  EXPECT_EQ(WindowOf(form).windowTitle(), "New title");
  EXPECT_EQ(As<LabelWidget>(form.AreaLbl[1]).Tip(), "a text that its cell can't hold");
  EXPECT_EQ(As<LabelWidget>(form.SlotLbl[1]).Tip() + As<LabelWidget>(form.LineLbl).Tip(), "");
  const QString line = "COM3, /dev/serial/by-id/usb-a-name-of-some-length, free";
  form.TwoOpt.Caption = form.TwoOpt.Caption.Value() + "!";
  form.BareChk.ForeColor = 255;
  form.FlagChk.Height = form.LineLbl.Height;
  form.FlagChk.Caption = std::string(99, 'x');
  form.LineLbl.Caption = line.toStdString().replace(4, 2, "\t").replace(line.size() - 7, 2, "\t");
  for (Frame* frame : {static_cast<Frame*>(&form.TableFrame), &form.HeadFrame}) {
    for (const bool shown : {false, true}) frame->Visible = shown, Settle();
  }
  EXPECT_EQ(As<LabelWidget>(form.LineLbl).Tip(), line);
  EXPECT_EQ(dynamic_cast<ControlWidget&>(WidgetOf(form.FlagChk)).Tip(), QString(99, 'x'));
  const Qt::WindowFlags flags = WindowOf(form).windowHandle()->flags();
  EXPECT_EQ(flags & (Qt::WindowCloseButtonHint | Qt::WindowMinimizeButtonHint), Qt::WindowMinimizeButtonHint);
  for (const Color color : {StepCurrent, StepOther}) {
    form.StepLbl.ForeColor = color;
    Settle();
    const bool current = color == StepCurrent;
    EXPECT_EQ(WidgetOf(form.StepLbl).accessibleDescription(), current ? "current step" : "");
    EXPECT_EQ(WindowOf(form).accessibleDescription(), current ? "Welcome / Open Configuration" : "");
  }
  const QImage step = Picture(form.StepLbl);
  screen.ShowHighContrast(true);
  EXPECT_NE(Picture(form.StepLbl), step);
  const QWidget* made = &WidgetOf(form.TitleLbl);
  for (const bool shown : {false, true}) form.SecondFrame.Visible = shown, Settle();
  EXPECT_EQ(&WidgetOf(form.TitleLbl), made);
}

TEST_F(WidgetsTest, FieldsShowWhatTheFormMakesOfWhatWasEntered) {
  auto& field = As<QLineEdit>(form.NameTxt);
  Type(field, QStringLiteral("a\u20AC"));
  EXPECT_EQ(field.text(), "a") << "a character that is no byte is left out";
  form.NameTxt.OnKeyPress = [](char key) { return key >= '0' && key <= '9'; };
  Type(field, "1x2");
  EXPECT_EQ(field.text(), "a12");
  field.setSelection(0, 2);
  Type(field, "7");
  EXPECT_EQ(field.text() + QString::number(field.cursorPosition()), "721");
  form.NameTxt.SelStart = 0, form.NameTxt.SelLength = 1, form.AddCmd.Caption = "Other";
  Settle();
  EXPECT_EQ(field.selectedText(), "7");
  auto& list = As<QComboBox>(form.PortCbo);
  form.PortCbo.OnClick = Handler([this] { form.PortCbo.Show("None"); });
  Press(list, Qt::Key_Down);
  EXPECT_EQ(list.currentText(), "None");
  form.PortCbo.SetEntries({"A", "B"});
  list.showPopup();
  EXPECT_EQ(list.itemText(1) + list.itemData(1, Qt::ToolTipRole).toString(), "Bbehind B");
  list.hidePopup();
  form.PortCbo.Notes = {{"free", false}, {"in use", true}};
  Settle();
  EXPECT_EQ(list.itemData(1, Qt::UserRole).toString(), "in use");
  EXPECT_TRUE(list.itemData(1, Qt::ForegroundRole).isValid() && !list.itemData(0, Qt::ForegroundRole).isValid());
  EXPECT_EQ(As<ListWidget>(form.PortCbo).ListWidth(), list.width());
  form.PortCbo.ListWidth = 4500;
  EXPECT_EQ(As<ListWidget>(form.PortCbo).ListWidth(), 300);
  const QImage open = Picture(form.PortCbo);
  form.PortCbo.Locked = form.FreeCbo.Locked = form.NameTxt.Locked = true;
  Settle();
  EXPECT_NE(Picture(form.PortCbo), open) << "no arrow invites to what can't be done";
  list.showPopup(), Press(list, Qt::Key_Down), Type(field, "7"), Type(WidgetOf(form.FreeCbo), "7");
  EXPECT_FALSE(QApplication::activePopupWidget());
  EXPECT_EQ(form.TakeLog(), "name:a name:a name:a1 name:a12 name:72 ");
}

TEST_F(WidgetsTest, AChoiceThatWaitsIsMadeByAClickElsewhereAndDroppedForTheForms) {
  auto& list = As<QComboBox>(form.LaterCbo);
  const auto move = [&](int key) { list.setFocus(), Press(list, key); };
  move(Qt::Key_Down);
  MouseDown(WindowOf(form), {5, 500});
  EXPECT_EQ(form.LogLbl.Caption.Value(), "") << "a box must not come between press and release";
  MouseUp(WindowOf(form), {5, 500});
  EXPECT_TRUE(HasFocus(form.LaterCbo));
  move(Qt::Key_End);
  Click(form.AddCmd);
  EXPECT_EQ(form.TakeLog(), "later:COM2 form later:COM26 add ");
  move(Qt::Key_Up);
  form.LaterCbo.Show("None");
  Settle();
  EXPECT_EQ(list.currentText(), "None");
}

TEST_F(WidgetsTest, TheWheelScrollsAndChangesNoClosedList) {
  const auto turn = [this](QWidget& widget, QPointF at, int angle) {
    QWheelEvent event(at, widget.mapToGlobal(at), {}, {0, angle}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
    Settle();
    return event.isAccepted();
  };
  WidgetOf(form.PortCbo).setFocus();
  EXPECT_FALSE(turn(WidgetOf(form.PortCbo), {5, 5}, -120)) << "what lies around it is scrolled";
  EXPECT_EQ(form.PortCbo.Text.Value(), "COM2");
  turn(WindowOf(form), PlaceOnForm(form.SlotLbl[2]).center(), -120);
  EXPECT_EQ(WidgetOf(form.RowsFrame).y(), -96) << "over a table it moves the rows";
  for (int line = 0; line < 40; ++line) form.Term.SetSelText(std::to_string(line) + "\r\n");
  Click(form.NextCmd);
  auto& terminal = As<TerminalWidget>(form.Term);
  const int first = 41 - terminal.VisibleRows();
  for (const int top : {first - 3, first - 6, 0}) {
    if (top == 0) form.Term.Text = "0\r\n1";
    Settle();
    for (const int half : {60, 60}) turn(terminal, {5, 5}, half);
    EXPECT_TRUE(terminal.VisibleText().startsWith(QString::number(top) + "\n")) << top;
  }
}

TEST_F(WidgetsTest, ATableTakesTheFocusItsClicksAndItsKeys) {
  QWidget& table = WidgetOf(form.TableFrame);
  const QPoint third(300, 70);
  EXPECT_EQ(WindowOf(form).childAt(PlaceOnForm(form.TableFrame).topLeft() + third), &WidgetOf(form.RowsFrame));
  MouseDown(table, third), MouseUp(table, third);
  PressIn(form, Qt::Key_Down);
  EXPECT_EQ(form.TableFrame.Row.AsText() + form.ActiveControl.Value(), "4TableFrame");
  PressIn(form, Qt::Key_Return), PressIn(form, Qt::Key_Delete), PressIn(form, Qt::Key_End);
  SendMouse(table, QEvent::MouseButtonDblClick, third, Qt::LeftButton, Qt::LeftButton);
  EXPECT_EQ(form.TakeLog(), "edit4 delete4 scroll:1440 ") << "nothing opens under a button that is down";
  MouseUp(table, third);
  EXPECT_EQ(form.TakeLog(), "edit6 ") << "the rows have slid";
  form.SetFocus(form.NameTxt);
  Settle();
  EXPECT_TRUE(HasFocus(form.NameTxt));
  form.SetFocus(form.OffTxt), Settle();  // which can't have it
}

TEST_F(WidgetsTest, TheMouseReachesWhatWantsItOrElseTheForm) {
  using Controls = std::vector<const Control*>;
  const Controls clicked{&form.BareLbl, &form.SiteLbl, &form.NameLbl, &form.FlagChk, &form.TwoOpt, &form.OffOpt};
  MouseUp(WindowOf(form), {5, 500});  // it went down elsewhere
  for (const Control* control : clicked) Click(*control);
  EXPECT_EQ(form.TakeLog(), "label down up site form flag:1 two ");
  // Elsewhere, or by another button, a press is none.
  for (QWidget* widget : {&WidgetOf(form.SiteLbl), static_cast<QWidget*>(&WindowOf(form)), &WidgetOf(form.BareLbl)}) {
    MouseDown(*widget, {5, 5}), MouseDown(*widget, {5, 5}, Qt::RightButton);
    MouseUp(*widget, {5, 5}, Qt::RightButton), MouseUp(*widget, {-9, 5});
    MouseDown(*widget, {5, 5}, Qt::RightButton), MouseUp(*widget, {5, 5}, Qt::RightButton);
  }
  MouseDown(WidgetOf(form.TableFrame), {5, 5}, Qt::RightButton);
  EXPECT_EQ(form.TakeLog() + form.TableFrame.Row.AsText(), "down up down up 0");
  EXPECT_FALSE(As<QAbstractButton>(form.OneOpt).isChecked());
  EXPECT_EQ(WidgetOf(form.SiteLbl).cursor().shape(), Qt::PointingHandCursor);
  As<QAbstractButton>(form.FlagChk).toggle();  // as assistive technology does
  for (const Control* control : Controls{&form.SiteLbl, &form.NameLbl, &form.NextCmd})
    MouseMove(WidgetOf(*control), {5, 5});
  EXPECT_EQ(form.TakeLog(), "flag:0 over move move ");
}

TEST_F(WidgetsTest, AButtonIsPressedByEveryMouseButtonButClickedByTheLeftOneInside) {
  QWidget& button = WidgetOf(form.NextCmd);
  for (const Control* control : std::vector<const Control*>{&form.NextCmd, &form.AddCmd}) {
    QWidget& held = WidgetOf(*control);
    const QImage raised = Picture(*control);
    for (const auto mouse : {Qt::RightButton, Qt::LeftButton}) {
      MouseDown(held, {5, 5}, mouse), MouseDown(held, {5, 5}, Qt::MiddleButton),
          MouseUp(held, {5, 5}, Qt::MiddleButton);
      Settle();
      EXPECT_NE(Picture(*control), raised);
      MouseUp(held, {mouse == Qt::LeftButton ? -20 : 5, 5}, mouse);
      Settle();
      EXPECT_EQ(Picture(*control), raised) << "up restores wherever the pointer went";
    }
    held.setFocus();
    SendKey(held, QEvent::KeyPress, Qt::Key_Space, {}, " ");
    EXPECT_NE(Picture(*control), raised);
    SendKey(held, QEvent::KeyRelease, Qt::Key_Return, {}, "\r");
    WidgetOf(form.NameTxt).setFocus();
    EXPECT_EQ(Picture(*control), raised) << "so does leaving it";
    SendKey(held, QEvent::KeyRelease, Qt::Key_Space, {}, " ");
  }
  MouseDown(button, {5, 5});
  MouseDown(WidgetOf(form.SiteLbl), {5, 5});
  app.forms.dispatcher.Dispatch([this] {
    const BoxWatcher boxes;
    app.forms.MsgBox("A timer has something to say", MessageIcon::None);
    EXPECT_EQ(form.NextCmd.Picture.Value(), 111) << "the box has taken the mouse from it";
  });
  MouseUp(button, {5, 5});
  EXPECT_EQ(form.TakeLog(), "down up ");
  MouseDown(button, {5, 5});
  form.NextCmd.Visible = false;
  Settle();
  EXPECT_EQ(form.NextCmd.Picture.Value(), 111);
}

TEST_F(WidgetsTest, AFormThatIsLargerThanItsScreenScrollsToWhatHasTheFocus) {
  FormWindow& window = WindowOf(form);
  window.move(1700, 50);  // to the smaller screen
  for (const bool shown : {false, true}) form.Visible = shown, Settle();
  EXPECT_EQ(window.height(), 512 - 32);
  for (const Control* control : std::vector<const Control*>{&form.NextCmd, &form.NameTxt, &form.SiteLbl}) {
    QFocusEvent comes(QEvent::FocusIn, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&WidgetOf(*control), &comes);
    const QRect place(WidgetOf(*control).mapTo(&window, QPoint()), WidgetOf(*control).size());
    EXPECT_TRUE(window.rect().contains(place)) << control->Name();
  }
  for (const int y : {5, 470}) EXPECT_TRUE(dynamic_cast<QScrollBar*>(window.childAt(window.width() - 5, y))) << y;
  const int top = WidgetOf(form.FirstFrame).y();
  WidgetOf(form.NameTxt).setFocus();
  PressIn(form, Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(WidgetOf(form.FirstFrame).y(), 480 - 560 + 48);
  PressIn(form, Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(WidgetOf(form.FirstFrame).y(), top);
  QWheelEvent wheel({5, 5}, window.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                    false);
  QCoreApplication::sendEvent(&window, &wheel);
  EXPECT_LT(WidgetOf(form.FirstFrame).y(), top);
  form.NextCmd.Click();
  Settle();
  EXPECT_EQ(WidgetOf(form.SecondFrame).y(), top) << "a page begins at its top";
}

TEST_F(WidgetsTest, WindowsOpenOverTheOneBeforeAndInsideTheScreen) {
  const struct {
    FormStyle style;
    Qt::WindowType type;
    bool minimizes, modal;
  } rows[] = {{FormStyle::Window, Qt::Dialog, true, false},  // X knows an owner of dialogs alone
              {FormStyle::Dialog, Qt::Dialog, false, false},
              {FormStyle::Modal, Qt::Dialog, false, true},
              {FormStyle::Splash, Qt::SplashScreen, false, false}};
  const auto isNear = [](QPoint a, QPoint b) { return (a - b).manhattanLength() < 8; };  // frames differ
  const auto corner = [this](const Form& of) { return WindowOf(of).geometry().topLeft(); };
  for (const auto& row : rows) {
    SCOPED_TRACE(static_cast<int>(row.style));
    app.forms.Register("Other", [&] { return std::make_shared<EveryControl>(app.forms, "Other", row.style); });
    WindowOf(form).move(120, 150);
    Form& other = Show("Other");
    const QWindow& window = *WindowOf(other).windowHandle();
    EXPECT_EQ(window.type(), row.type);
    EXPECT_EQ(window.flags().testFlag(Qt::WindowMinimizeButtonHint), row.minimizes);
    EXPECT_EQ(window.modality() != Qt::NonModal, row.modal);
    EXPECT_TRUE(window.transientParent() || row.style == FormStyle::Splash);
    EXPECT_TRUE(isNear(corner(other), corner(form)));
    WindowOf(form).move(900, -200);
    for (const bool shown : {false, true}) other.Visible = shown, Settle();
    EXPECT_TRUE(isNear(WindowOf(other).geometry().topRight(), {1599, 32}));
    // Nor do they forget the place of one that has gone.
    WindowOf(form).move(300, 200);
    form.Visible = other.Visible = false;
    other.Visible = true;
    EXPECT_TRUE(isNear(corner(other), corner(form)));
    WindowOf(other).move(330, 220);
    const QPoint last = corner(other);
    app.forms.Unload("Other");
    form.Visible = true;
    EXPECT_TRUE(isNear(corner(form), last));
  }
}

TEST_F(WidgetsTest, AWindowThatIsClosedAsksItsFormAndOutlivesTheHandler) {
  form.CloseEnabled = false;
  WindowOf(form).close();
  EXPECT_TRUE(WindowOf(form).isVisible());
  form.Visible = false;
  EXPECT_FALSE(WindowOf(form).isVisible());
  form.Visible = true;
  form.NextCmd.OnClick = Handler([this] {
    form.CloseEnabled = true;
    WindowOf(form).close();
    Settle();  // as a wait inside the handler does
  });
  const QPointer<FormWindow> window = &WindowOf(form);
  Click(form.NextCmd);
  EXPECT_FALSE(window);
  EXPECT_TRUE(screen.Ended()) << "it was the last one";
}

TEST_F(WidgetsTest, TheTerminalWrapsFollowsTheEndAndSendsEveryKey) {
  Click(form.NextCmd);
  auto& terminal = As<TerminalWidget>(form.Term);
  EXPECT_GE(terminal.Columns(), 68);
  form.Term.Text = "\x01" + std::string(static_cast<std::size_t>(terminal.Columns()), 'x') + "\r\nlast";
  Settle();
  EXPECT_EQ(terminal.VisibleText(), QStringLiteral("\u00B7") + QString(terminal.Columns() - 1, 'x') + "\nx\nlast");
  for (int line = 0; line < 80; ++line) form.Term.SetSelText("\r\n" + std::to_string(line));
  Settle();
  EXPECT_EQ(terminal.VisibleText().split('\n').size(), terminal.VisibleRows());
  EXPECT_TRUE(terminal.VisibleText().endsWith("\n79"));
  Press(terminal, Qt::Key_PageUp);
  form.Term.SetSelText("\r\n80");
  EXPECT_TRUE(terminal.VisibleText().endsWith("\n56")) << "the user reads on where he is";
  for (const char* last : {"\n79", "\n80"}) {
    Press(terminal, Qt::Key_PageDown);
    EXPECT_TRUE(terminal.VisibleText().endsWith(last));
  }
  form.Term.Text = "a\tb\r\rshort\r\nline";
  WidgetOf(form.NextCmd).setFocus();
  Settle();
  EXPECT_EQ(terminal.VisibleText(), "a b  short\nline");
  form.Term.Text = "short\r\nline";
  terminal.setFocus();
  Settle();

  std::string keys;
  form.Term.OnKeyPress = [&](char key) { return keys += key, false; };
  Press(terminal, Qt::Key_Return, {}, "\r");
  Press(terminal, Qt::Key_Escape, {}, "\x1B");
  // What is selected goes through the clipboard, and back in as keys.
  constexpr auto Shortcut = Qt::ControlModifier | Qt::ShiftModifier;
  QGuiApplication::clipboard()->clear();
  MouseMove(terminal, {300, 30});
  Press(terminal, Qt::Key_C, Shortcut);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "") << "nothing has been selected";
  MouseDown(terminal, {8, 8});
  MouseMove(terminal, {300, 30}, Qt::LeftButton);
  Press(terminal, Qt::Key_C, Shortcut);
  Press(terminal, Qt::Key_V, Shortcut);
  EXPECT_EQ(keys, "\r\x1Bshort\rline");
  MouseDown(terminal, {8, 8});
  for (const char* word : {"Copy", "All", "Copy", "Paste"}) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, {8, 8}, terminal.mapToGlobal(QPoint(8, 8)));
    QCoreApplication::sendEvent(&terminal, &event);
    auto& menu = dynamic_cast<QMenu&>(*QApplication::activePopupWidget());
    for (QAction* action : menu.actions()) {
      if (action->text().contains(word)) action->trigger();
    }
    menu.close();
    Settle();
  }
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "short\nline");
  EXPECT_EQ(keys.substr(12), "short\rline");
}

}  // namespace
}  // namespace vk32
