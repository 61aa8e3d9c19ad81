// The widgets follow their controls, and the user's hands on them reach the handlers.
#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QScrollBar>
#include <QWheelEvent>
#include <QWindow>

#include "DesktopTest.h"
#include "LabelWidget.h"
#include "TerminalWidget.h"

namespace vk32 {
namespace {

class WidgetsTest : public DesktopTest {
 protected:
  QImage Picture(const Control& control) { return WidgetOf(control).grab().toImage(); }
  template <class Widget>
  Widget& As(const Control& control) {
    return dynamic_cast<Widget&>(WidgetOf(control));
  }

  GalleryForm& form = ShowGallery();
};

TEST_F(WidgetsTest, PropertiesAreFollowed) {
  form.NameLbl.Left = 375;
  form.NameLbl.Caption = "Other";
  form.AddCmd.Visible = false;
  form.FlagChk.Value = 1;
  form.OneOpt.Enabled = false;
  form.Bar.Value = 40;
  form.NameTxt.Text = "h\xE9";
  form.PortCbo.Text = "COM3";
  form.Caption = "New title";
  form.CloseEnabled = false;
  Settle();
  EXPECT_EQ(WidgetOf(form.NameLbl).x(), 25);
  EXPECT_EQ(As<QLabel>(form.NameLbl).text(), "Other");
  EXPECT_FALSE(WidgetOf(form.AddCmd).isVisible());
  EXPECT_TRUE(As<QAbstractButton>(form.FlagChk).isChecked());
  EXPECT_FALSE(WidgetOf(form.OneOpt).isEnabled());
  EXPECT_EQ(As<QProgressBar>(form.Bar).value(), 40);
  EXPECT_EQ(As<QLineEdit>(form.NameTxt).text(), QString::fromLatin1("h\xE9"));
  EXPECT_EQ(As<QComboBox>(form.PortCbo).currentText(), "COM3");
  EXPECT_EQ(WindowOf(form).windowTitle(), "New title");
  EXPECT_EQ(As<LabelWidget>(form.AreaLbl[1]).Tip(), "a text that its cell can't hold");
  EXPECT_EQ(As<LabelWidget>(form.SlotLbl[1]).Tip(), "");
  const Qt::WindowFlags flags = WindowOf(form).windowHandle()->flags();
  EXPECT_FALSE(flags & Qt::WindowCloseButtonHint);
  EXPECT_TRUE(flags & Qt::WindowMinimizeButtonHint);
}

TEST_F(WidgetsTest, ControlsOfAHiddenPageGetTheirWidgetsWhenItIsFirstShown) {
  EXPECT_FALSE(WindowOf(form).WidgetOf(form.Term));
  form.TitleLbl.Caption = "Changed while hidden";
  const QWidget* made = nullptr;
  for (const bool shown : {true, false, true}) {
    form.SecondFrame.Visible = shown;
    Settle();
    if (!made) made = &WidgetOf(form.TitleLbl);
    EXPECT_EQ(&WidgetOf(form.TitleLbl), made);
  }
  EXPECT_EQ(As<QLabel>(form.TitleLbl).text(), "Changed while hidden");
}

TEST_F(WidgetsTest, ADisabledFieldAndOneMarkedByItsBackColorLookAlike) {
  for (const TextBox* box : {&form.OffTxt, &form.GrayTxt}) {
    EXPECT_EQ(Picture(*box).pixelColor(100, 5), QColor(0xE0, 0xE0, 0xE0));
  }
  EXPECT_EQ(Picture(form.NameTxt).pixelColor(100, 5), QColor(Qt::white));
}

TEST_F(WidgetsTest, TypingReachesTheFormKeyByKeyAndKeepsTheCursor) {
  QWidget& field = WidgetOf(form.NameTxt);
  Type(field, "abd");
  Press(field, Qt::Key_Left);
  Type(field, "c");
  Settle();
  EXPECT_EQ(As<QLineEdit>(form.NameTxt).cursorPosition(), 3);
  Press(field, Qt::Key_End);
  Type(field, QStringLiteral("\u20AC"));
  EXPECT_EQ(form.NameTxt.Text.Value(), "abcd") << "a character that is no byte is left out";
  EXPECT_EQ(As<QLineEdit>(form.NameTxt).text(), "abcd");
  EXPECT_EQ(form.TakeLog(), "name name name name name ");
  form.NameTxt.OnKeyPress = [](char key) { return key >= '0' && key <= '9'; };
  Type(field, "1x2");
  EXPECT_EQ(As<QLineEdit>(form.NameTxt).text(), "abcd12");
  Type(WidgetOf(form.ReadTxt), "x");
  EXPECT_EQ(form.ReadTxt.Text.Value(), "read only");
}

TEST_F(WidgetsTest, AListPicksByKeysAndTheFormMayChooseOtherwise) {
  auto& list = As<QComboBox>(form.PortCbo);
  Press(list, Qt::Key_Down);
  EXPECT_EQ(form.PortCbo.Text.Value(), "COM3");
  Type(list, "n");
  EXPECT_EQ(form.PortCbo.Text.Value(), "None");
  EXPECT_EQ(form.TakeLog(), "port port ");
  form.PortCbo.OnClick = Handler([this] { form.PortCbo.Show("None"); });
  Press(list, Qt::Key_Down);
  EXPECT_EQ(list.currentText(), "None");
  form.PortCbo.SetEntries({"A", "B"});
  list.showPopup();
  EXPECT_EQ(list.itemText(1), "B");
  EXPECT_EQ(list.itemData(1, Qt::ToolTipRole), "behind B");
  list.hidePopup();
  Type(*As<QComboBox>(form.FreeCbo).lineEdit(), "960");
  EXPECT_EQ(form.FreeCbo.Text.Value(), "960") << "a text part takes any text";
}

TEST_F(WidgetsTest, AChoiceThatIsMadeWhenDoneIsMadeOnce) {
  auto& list = As<QComboBox>(form.LaterCbo);
  const auto press = [&](int key) { return [&list, key] { Press(list, key); }; };
  const auto type = [&](const char* text) { return [&list, text] { Type(list, text); }; };
  const auto leave = [this] { PressIn(form, Qt::Key_Tab, {}, "\t"); };
  const auto clickBeside = [this] {
    MouseDown(WindowOf(form), {5, 500});
    EXPECT_EQ(form.log, "") << "a box must not come between press and release";
    MouseUp(WindowOf(form), {5, 500});
  };
  struct Step {
    std::function<void()> act;
    const char *shown, *chosen, *log;
  };
  for (const Step& step : {
           Step{type("26"), "COM26", "None", ""},
           Step{press(Qt::Key_Escape), "None", "None", ""},
           Step{type("Com3"), "COM3", "None", ""},
           Step{press(Qt::Key_Return), "COM3", "COM3", "later "},
           Step{press(Qt::Key_Down), "COM26", "COM3", ""},
           Step{press(Qt::Key_Up), "COM3", "COM3", ""},
           Step{leave, "COM3", "COM3", ""},
           Step{type("2"), "COM2", "COM3", ""},
           Step{leave, "COM2", "COM2", "later "},
           Step{press(Qt::Key_Home), "None", "COM2", ""},
           Step{clickBeside, "None", "None", "later form "},
           Step{press(Qt::Key_End), "COM26", "None", ""},
           Step{[this] { Click(form.AddCmd); }, "COM26", "COM26", "later add "},
           Step{[&] { list.showPopup(); }, "COM26", "COM26", ""},
           Step{[&] { Type(*list.view(), "2"); }, "COM26", "COM26", ""},
           Step{[&] { Press(*list.view(), Qt::Key_Return); }, "COM2", "COM2", "later "},
           Step{press(Qt::Key_Up), "None", "COM2", ""},
           Step{[this] { form.LaterCbo.Show("COM3"); }, "COM3", "COM3", ""},
       }) {
    SCOPED_TRACE(std::string(step.shown) + " " + step.chosen + " " + step.log);
    list.setFocus();
    step.act();
    Settle();
    EXPECT_EQ(list.currentText().toStdString(), step.shown);
    EXPECT_EQ(form.LaterCbo.Text.Value(), step.chosen);
    EXPECT_EQ(form.TakeLog(), step.log);
  }
}

TEST_F(WidgetsTest, TheWheelScrollsAndChangesNoClosedList) {
  const auto turn = [](QWidget& widget, QPointF at) {
    QWheelEvent event(at, widget.mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    event.setAccepted(true);
    QCoreApplication::sendEvent(&widget, &event);
    return event.isAccepted();
  };
  WidgetOf(form.PortCbo).setFocus();
  EXPECT_FALSE(turn(WidgetOf(form.PortCbo), {5, 5})) << "what lies around it is scrolled";
  EXPECT_EQ(form.PortCbo.Text.Value(), "COM2");
  turn(WindowOf(form), PlaceOnForm(form.SlotLbl[2]).center());
  Settle();
  EXPECT_EQ(form.RowsVScroll.Value.Value(), 1440) << "over a table it moves the rows";
  EXPECT_EQ(WidgetOf(form.RowsFrame).y(), -96);
  form.RowsVScroll.Max = 0;
  Settle();
  EXPECT_EQ(As<QScrollBar>(form.RowsVScroll).maximum(), 0);
  EXPECT_EQ(WidgetOf(form.RowsFrame).y(), 0);

  for (int line = 0; line < 40; ++line) form.Term.SetSelText(std::to_string(line) + "\r\n");
  Click(form.NextCmd);
  auto& terminal = As<TerminalWidget>(form.Term);
  const int first = 41 - terminal.VisibleRows();
  QWheelEvent up({5, 5}, {5, 5}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  for (const int top : {first - 3, first - 6, 0}) {
    if (top == 0) form.Term.Text = "0\r\n1";
    Settle();
    QCoreApplication::sendEvent(&terminal, &up);
    EXPECT_TRUE(terminal.VisibleText().startsWith(QString::number(top) + "\n")) << top;
  }
}

TEST_F(WidgetsTest, ChecksAndOptionsAreToggledByTheFormAlone) {
  Click(form.FlagChk);
  EXPECT_EQ(form.FlagChk.Value.Value(), 1);
  Click(form.TwoOpt);
  EXPECT_TRUE(form.TwoOpt.Value);
  EXPECT_FALSE(As<QAbstractButton>(form.OneOpt).isChecked());
  EXPECT_EQ(form.TakeLog(), "flag two ");
  form.FlagChk.OnClick = Handler([this] { form.FlagChk.Enabled = false; });
  As<QAbstractButton>(form.FlagChk).toggle();  // as assistive technology does
  EXPECT_EQ(form.FlagChk.Value.Value(), 0);
  Click(form.OffOpt);
  EXPECT_FALSE(form.OffOpt.Value);
}

TEST_F(WidgetsTest, ClicksAndMovesReachTheLabelThatWantsThemOrElseTheForm) {
  for (const Control* label : {&form.BareLbl, &form.SiteLbl, &form.NameLbl}) Click(*label);
  EXPECT_EQ(form.TakeLog(), "label down up site form ");
  for (const Control* control : std::initializer_list<const Control*>{&form.SiteLbl, &form.NameLbl, &form.NextCmd}) {
    MouseMove(WidgetOf(*control), {5, 5});
  }
  EXPECT_EQ(form.TakeLog(), "over move move ");
}

TEST_F(WidgetsTest, AButtonIsPressedByEveryMouseButtonButClickedByTheLeftOneInside) {
  QWidget& button = WidgetOf(form.NextCmd);
  const QImage raised = Picture(form.NextCmd);
  MouseDown(button, {5, 5}, Qt::RightButton);
  EXPECT_EQ(form.NextCmd.Picture.Value(), 112);
  EXPECT_NE(Picture(form.NextCmd), raised);
  MouseUp(button, {5, 5}, Qt::RightButton);
  EXPECT_EQ(form.NextCmd.Picture.Value(), 111);
  MouseDown(button, {5, 5});
  MouseUp(button, {-20, 5});
  EXPECT_EQ(Picture(form.NextCmd), raised) << "up restores wherever the pointer went";
  EXPECT_EQ(form.TakeLog(), "");
  Click(form.NextCmd);
  EXPECT_EQ(form.TakeLog(), "next ");
}

TEST_F(WidgetsTest, AButtonIsRaisedWhenTheMouseIsTakenFromIt) {
  MouseDown(WidgetOf(form.NextCmd), {5, 5});
  {
    const BoxWatcher boxes([this](MessageBox& box) {
      EXPECT_EQ(form.NextCmd.Picture.Value(), 111);
      Press(box, Qt::Key_Escape);
    });
    app.forms.dispatcher.Dispatch([this] { app.forms.MsgBox("A timer has something to say", MessageIcon::None); });
    EXPECT_EQ(boxes.Seen(), 1);
  }
  MouseUp(WidgetOf(form.NextCmd), {5, 5});
  EXPECT_EQ(form.TakeLog(), "") << "the click ended with the box";
  MouseDown(WidgetOf(form.NextCmd), {5, 5});
  form.NextCmd.Visible = false;
  Settle();
  EXPECT_EQ(form.NextCmd.Picture.Value(), 111);
}

TEST_F(WidgetsTest, AWidgetOutlivesTheHandlerThatUnloadsItsForm) {
  form.NextCmd.OnClick = Handler([this] {
    app.forms.Unload(form);
    Settle();  // as a wait inside the handler does
  });
  app.forms.Register("Other", [this] { return std::make_shared<Form>(app.forms, "Other", "", 900, 900); });
  Show("Other");
  const QPointer<FormWindow> window = &WindowOf(form);
  Click(form.NextCmd);
  EXPECT_FALSE(app.forms.Find("GalleryForm"));
  EXPECT_FALSE(window);
}

TEST_F(WidgetsTest, AWindowThatIsClosedAsksItsForm) {
  WindowOf(form).close();
  EXPECT_FALSE(app.forms.Find("GalleryForm"));
  EXPECT_TRUE(screen.Ended()) << "it was the last one";
}

TEST_F(WidgetsTest, TheTerminalWrapsFollowsTheEndAndSendsEveryKey) {
  Click(form.NextCmd);
  auto& terminal = As<TerminalWidget>(form.Term);
  EXPECT_GE(terminal.Columns(), 68);
  const std::string wide(static_cast<std::size_t>(terminal.Columns()), 'x');
  form.Term.Text = "\x01" + wide + "\r\nlast";
  Settle();
  EXPECT_EQ(terminal.VisibleText(), QStringLiteral("\u00B7") + QString(terminal.Columns() - 1, 'x') + "\nx\nlast");
  for (int line = 0; line < 40; ++line) form.Term.SetSelText("\r\n" + std::to_string(line));
  Settle();
  EXPECT_EQ(terminal.VisibleText().split('\n').size(), terminal.VisibleRows());
  EXPECT_TRUE(terminal.VisibleText().endsWith("\n39"));
  form.Term.Text = "short\r\nline";
  Settle();
  EXPECT_EQ(terminal.VisibleText(), "short\nline");

  std::string keys;
  form.Term.OnKeyPress = [&](char key) {
    keys += key;
    return false;
  };
  Press(terminal, Qt::Key_Return, {}, "\r");
  Press(terminal, Qt::Key_Escape, {}, "\x1B");
  Press(terminal, Qt::Key_A, {}, "a");
  Press(terminal, Qt::Key_Backspace, {}, "\b");
  EXPECT_TRUE(app.forms.Find("GalleryForm")) << "Escape belongs to the device";
  // What is selected goes through the clipboard, and back in as keys.
  constexpr auto Shortcut = Qt::ControlModifier | Qt::ShiftModifier;
  MouseMove(terminal, {300, 30});
  Press(terminal, Qt::Key_C, Shortcut);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "") << "nothing has been selected";
  MouseDown(terminal, {8, 8});
  MouseMove(terminal, {300, 30}, Qt::LeftButton);
  Press(terminal, Qt::Key_C, Shortcut);
  Press(terminal, Qt::Key_V, Shortcut);
  EXPECT_EQ(keys,
            "\r\x1B"
            "a\b"
            "short\rline");
}

}  // namespace
}  // namespace vk32
