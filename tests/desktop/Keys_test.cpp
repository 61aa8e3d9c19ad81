// The windows are walked and used by keys alone.
#include "DesktopTest.h"
#include "shell/Products.h"

namespace vk32 {
namespace {

class KeysTest : public DesktopTest {
 protected:
  EveryControl& form = ShowEvery();
};

TEST_F(KeysTest, EachPageBeginsAtItsFirstFieldOrAtTheButtonOfEnter) {
  form.Term.Visible = false;
  EXPECT_TRUE(HasFocus(form.NameTxt));
  Click(form.NextCmd);
  EXPECT_TRUE(HasFocus(form.NextCmd));
  Click(form.BackCmd);
  EXPECT_TRUE(HasFocus(form.NameTxt));
}

TEST_F(KeysTest, APanelThatComesWithAChoiceLeavesTheFocusThereAndWhatLosesItHandsItOn) {
  form.PortCbo.OnClick = Handler([this] { form.SecondFrame.Visible = true; });
  WidgetOf(form.PortCbo).setFocus();
  PressIn(form, Qt::Key_Down);
  EXPECT_TRUE(HasFocus(form.PortCbo));
  form.PortCbo.Enabled = false;
  Settle();
  EXPECT_TRUE(HasFocus(form.FreeCbo));
  // To what stands in the very same place, wherever it comes in the order.
  form.NameTxt.Left = form.FreeCbo.Left, form.NameTxt.Top = form.FreeCbo.Top, form.NameTxt.Width = form.FreeCbo.Width;
  form.FreeCbo.Visible = false;
  Settle();
  EXPECT_TRUE(HasFocus(form.NameTxt));
}

TEST_F(KeysTest, KeysDoWhatIsExpectedOfThem) {
  struct Row {
    const Control& focused;
    int key;
    Qt::KeyboardModifiers modifiers;
    const char* log;
    const Control& then;
  } rows[] = {{form.NameTxt, Qt::Key_Return, {}, "next ", form.Term},
              {form.AddCmd, Qt::Key_Return, {}, "add ", form.AddCmd},
              {form.SiteLbl, Qt::Key_Return, {}, "down up site ", form.SiteLbl},
              {form.NextCmd, Qt::Key_Space, {}, "next ", form.Term},
              {form.NameTxt, Qt::Key_Escape, {}, "", form.CancelCmd},
              {form.OneOpt, Qt::Key_Right, {}, "two ", form.TwoOpt},
              {form.TwoOpt, Qt::Key_Down, {}, "one ", form.OneOpt},  // the disabled one is passed over
              {form.OneOpt, Qt::Key_Tab, {}, "", form.RowsVScroll},
              {form.NameTxt, Qt::Key_P, Qt::AltModifier, "", form.PortCbo},
              {form.NameTxt, Qt::Key_R, Qt::AltModifier, "flag:1 ", form.FlagChk},
              {form.NameTxt, Qt::Key_N, Qt::AltModifier, "next ", form.Term}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.focused.FullName() + " " + std::to_string(row.key));
    form.SecondFrame.Visible = false;
    form.FirstFrame.Visible = true;
    Settle();
    WidgetOf(row.focused).setFocus();
    PressIn(form, row.key, row.modifiers, QString(QChar(row.key & 0x1F)));
    EXPECT_EQ(form.TakeLog(), row.log);
    EXPECT_TRUE(HasFocus(row.then));
  }
}

TEST_F(KeysTest, LettersAreUnderlinedWhileAltIsDown) {
  const QImage plain = Picture(form.PortLbl);
  SendKey(WidgetOf(form.NameTxt), QEvent::KeyPress, Qt::Key_Alt);
  EXPECT_NE(Picture(form.PortLbl), plain);
  SendKey(WidgetOf(form.NameTxt), QEvent::KeyRelease, Qt::Key_Alt);
  EXPECT_EQ(Picture(form.PortLbl), plain);
}

TEST_F(KeysTest, NamesAndLettersComeFromTheWordsBesideAndAboveAndFromTheHeadsOfATable) {
  StartProgram(app);
  SelectProduct(app.globals, "RB2000");
  const Control* word = Show("Configuration_RB2000").Find("ABWordTxt", 2);
  const std::pair<const Control*, const char*> rows[] = {{&form.NextCmd, "NEXT"},
                                                         {&form.NameTxt, "Name"},
                                                         {&form.BareChk, "Beside a bare box"},
                                                         {&form.Term, "Terminal"},
                                                         {word, "Allan-Bradley Datafile Word 3"}};
  for (const auto& [control, name] : rows) EXPECT_EQ(AccessibleName(*control), name);
  const Mnemonics mnemonics = ChooseMnemonics(form);
  EXPECT_EQ(mnemonics.targets.at(mnemonics.marks.at(&form.BareLbl)), &form.BareChk);
  PressIn(Show("About"), Qt::Key_Escape, {}, "\x1B");  // which presses its only button
  EXPECT_FALSE(app.forms.Find("About"));
}

}  // namespace
}  // namespace vk32
