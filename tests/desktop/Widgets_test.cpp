// The widgets follow their controls, and the user's hands on them reach the handlers.
#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QScrollBar>
#include <QWheelEvent>

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
}

TEST_F(WidgetsTest, ControlsOfAHiddenPageGetTheirWidgetsWhenItIsShown) {
  EXPECT_FALSE(WindowOf(form).WidgetOf(form.Term));
  form.TitleLbl.Caption = "Changed while hidden";
  form.SecondFrame.Visible = true;
  Settle();
  EXPECT_EQ(As<QLabel>(form.TitleLbl).text(), "Changed while hidden");
}

TEST_F(WidgetsTest, ADisabledFieldAndOneMarkedByItsBackColorLookAlike) {
  for (const TextBox* box : {&form.OffTxt, &form.GrayTxt}) {
    EXPECT_EQ(Picture(*box).pixelColor(100, 5), QColor(0xE0, 0xE0, 0xE0));
  }
  EXPECT_EQ(Picture(form.NameTxt).pixelColor(100, 5), QColor(Qt::white));
}

TEST_F(WidgetsTest, TypingReachesTheFormAndKeepsTheCursor) {
  QWidget& field = WidgetOf(form.NameTxt);
  Type(field, "abd");
  Press(field, Qt::Key_Left);
  Type(field, "c");
  Settle();
  EXPECT_EQ(form.NameTxt.Text.Value(), "abcd");
  EXPECT_EQ(As<QLineEdit>(form.NameTxt).cursorPosition(), 3);
  EXPECT_EQ(form.TakeLog(), "name name name name ");
}

TEST_F(WidgetsTest, ACharacterThatIsNoByteIsLeftOut) {
  Type(WidgetOf(form.NameTxt), QStringLiteral("a\u20AC\u00E9"));
  EXPECT_EQ(form.NameTxt.Text.Value(), "a\xE9");
  EXPECT_EQ(As<QLineEdit>(form.NameTxt).text(), QStringLiteral("a\u00E9"));
}

TEST_F(WidgetsTest, TheKeyFilterSeesEachKeyFirst) {
  form.NameTxt.OnKeyPress = [](char key) { return key >= '0' && key <= '9'; };
  Type(WidgetOf(form.NameTxt), "1x2");
  EXPECT_EQ(form.NameTxt.Text.Value(), "12");
  EXPECT_EQ(As<QLineEdit>(form.NameTxt).text(), "12");
}

TEST_F(WidgetsTest, ALockedFieldTakesNoKey) {
  Type(WidgetOf(form.ReadTxt), "x");
  EXPECT_EQ(form.ReadTxt.Text.Value(), "read only");
}

TEST_F(WidgetsTest, AnEntryIsPickedByKeysAndTheFormMayChooseOtherwise) {
  Press(WidgetOf(form.PortCbo), Qt::Key_Down);
  EXPECT_EQ(form.PortCbo.Text.Value(), "COM3");
  EXPECT_EQ(form.TakeLog(), "port ");
  form.PortCbo.OnClick = Handler([this] { form.PortCbo.Show("None"); });
  Press(WidgetOf(form.PortCbo), Qt::Key_Up);
  EXPECT_EQ(As<QComboBox>(form.PortCbo).currentText(), "None");
}

TEST_F(WidgetsTest, NewEntriesAreThereWhenTheListIsUsed) {
  form.PortCbo.SetEntries({"A", "B"});
  As<QComboBox>(form.PortCbo).showPopup();
  EXPECT_EQ(As<QComboBox>(form.PortCbo).itemText(1), "B");
  EXPECT_EQ(As<QComboBox>(form.PortCbo).itemData(1, Qt::ToolTipRole), "behind B");
  As<QComboBox>(form.PortCbo).hidePopup();
}

TEST_F(WidgetsTest, ATextPartTakesAnyText) {
  form.FreeCbo.Text = "96";
  Settle();
  EXPECT_EQ(As<QComboBox>(form.FreeCbo).currentText(), "96");
  Type(*As<QComboBox>(form.FreeCbo).lineEdit(), "0");
  EXPECT_EQ(form.FreeCbo.Text.Value(), "960");
}

TEST_F(WidgetsTest, TheWheelChangesAListOnlyIfItHasTheFocus) {
  const auto turn = [](QWidget& widget, QPointF at = {5, 5}) {
    QWheelEvent event(at, widget.mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&widget, &event);
  };
  turn(WidgetOf(form.PortCbo));
  EXPECT_EQ(form.PortCbo.Text.Value(), "COM2");
  WidgetOf(form.PortCbo).setFocus();
  turn(WidgetOf(form.PortCbo));
  EXPECT_EQ(form.PortCbo.Text.Value(), "COM3");
  turn(WindowOf(form), PlaceOnForm(form.SlotLbl[2]).center());
  Settle();
  EXPECT_EQ(form.RowsVScroll.Value.Value(), 1440) << "over a table it moves the rows";
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

TEST_F(WidgetsTest, LabelsThatCanBeClickedAreAndOthersLetTheFormHaveIt) {
  Click(form.BareLbl);
  Click(form.SiteLbl);
  Click(form.NameLbl);
  EXPECT_EQ(form.TakeLog(), "label down up site form ");
}

TEST_F(WidgetsTest, MovesReachTheLabelThatWantsThemOrElseTheForm) {
  MouseMove(WidgetOf(form.SiteLbl), {5, 5});
  MouseMove(WidgetOf(form.NameLbl), {5, 5});
  MouseMove(WidgetOf(form.NextCmd), {5, 5});
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
  EXPECT_EQ(form.NextCmd.Picture.Value(), 111) << "up restores wherever the pointer went";
  EXPECT_EQ(Picture(form.NextCmd), raised);
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

TEST_F(WidgetsTest, TheScrollBarMovesTheRowsAndIsMovedByCode) {
  As<QScrollBar>(form.RowsVScroll).triggerAction(QAbstractSlider::SliderSingleStepAdd);
  Settle();
  EXPECT_EQ(form.RowsVScroll.Value.Value(), 480);
  EXPECT_EQ(WidgetOf(form.RowsFrame).y(), -32);
  form.RowsVScroll.Max = 0;
  Settle();
  EXPECT_EQ(As<QScrollBar>(form.RowsVScroll).maximum(), 0);
  EXPECT_EQ(WidgetOf(form.RowsFrame).y(), 0);
}

TEST_F(WidgetsTest, ATextTooWideForItsCellEndsInAnEllipsisAndHasATip) {
  const auto& cell = As<LabelWidget>(form.AreaLbl[1]);
  EXPECT_TRUE(cell.Block().IsCut());
  EXPECT_EQ(cell.Tip(), "a text that its cell can't hold");
  EXPECT_EQ(As<LabelWidget>(form.SlotLbl[1]).Tip(), "");
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
  form.Term.Text = "short";
  Settle();
  EXPECT_EQ(terminal.VisibleText(), "short");

  std::string keys;
  form.Term.OnKeyPress = [&](char key) {
    keys += key;
    return false;
  };
  Press(terminal, Qt::Key_Return, {}, "\r");
  Press(terminal, Qt::Key_Escape, {}, "\x1B");
  Press(terminal, Qt::Key_A, {}, "a");
  Press(terminal, Qt::Key_Backspace, {}, "\b");
  EXPECT_EQ(keys,
            "\r\x1B"
            "a\b");
  EXPECT_TRUE(app.forms.Find("GalleryForm")) << "Escape belongs to the device";
}

}  // namespace
}  // namespace vk32
