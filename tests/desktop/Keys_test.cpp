// The windows are walked and used by keys alone.
#include "DesktopTest.h"
#include "shell/Products.h"

namespace vk32 {
namespace {

class KeysTest : public DesktopTest {
 protected:
  GalleryForm& form = ShowGallery();
};

TEST_F(KeysTest, EachPageBeginsAtItsFirstFieldOrAtTheButtonOfEnter) {
  EXPECT_TRUE(HasFocus(form.NameTxt));
  Click(form.NextCmd);
  EXPECT_TRUE(HasFocus(form.Term));
  Click(form.BackCmd);
  EXPECT_TRUE(HasFocus(form.NameTxt));
  form.Term.Visible = false;
  Click(form.NextCmd);
  EXPECT_TRUE(HasFocus(form.NextCmd));
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
  form.NameTxt.Left = form.FreeCbo.Left.Value();
  form.NameTxt.Top = form.FreeCbo.Top.Value();
  form.NameTxt.Width = form.FreeCbo.Width.Value();
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
  };
  for (const Row& row : {
           Row{form.NameTxt, Qt::Key_Return, {}, "next ", form.Term},
           Row{form.AddCmd, Qt::Key_Return, {}, "add ", form.AddCmd},
           Row{form.SiteLbl, Qt::Key_Return, {}, "down up site ", form.SiteLbl},
           Row{form.NextCmd, Qt::Key_Space, {}, "next ", form.Term},
           Row{form.NameTxt, Qt::Key_Escape, {}, "", form.CancelCmd},
           Row{form.OneOpt, Qt::Key_Right, {}, "two ", form.TwoOpt},
           Row{form.TwoOpt, Qt::Key_Down, {}, "one ", form.OneOpt},  // the disabled one is passed over
           Row{form.OneOpt, Qt::Key_Tab, {}, "", form.RowsVScroll},
           Row{form.NameTxt, Qt::Key_P, Qt::AltModifier, "", form.PortCbo},
           Row{form.NameTxt, Qt::Key_R, Qt::AltModifier, "flag ", form.FlagChk},
           Row{form.NameTxt, Qt::Key_N, Qt::AltModifier, "next ", form.Term},
       }) {
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

TEST_F(KeysTest, EscapePressesTheButtonThatClosesADialog) {
  StartProgram(app);
  Form& about = Show("About");
  PressIn(about, Qt::Key_Escape, {}, "\x1B");
  EXPECT_FALSE(app.forms.Find("About"));
}

TEST_F(KeysTest, LettersStandInTheWordsBesideAFieldAndAreUnderlinedWhileAltIsDown) {
  const Mnemonics mnemonics = ChooseMnemonics(form);
  EXPECT_EQ(mnemonics.marks.at(&form.PortLbl), u'P');
  EXPECT_EQ(mnemonics.targets.at(mnemonics.marks.at(&form.BareLbl)), &form.BareChk);
  const QImage plain = WidgetOf(form.PortLbl).grab().toImage();
  KeyDown(WidgetOf(form.NameTxt), Qt::Key_Alt);
  EXPECT_NE(WidgetOf(form.PortLbl).grab().toImage(), plain);
  KeyUp(WidgetOf(form.NameTxt), Qt::Key_Alt);
  EXPECT_EQ(WidgetOf(form.PortLbl).grab().toImage(), plain);
}

TEST_F(KeysTest, NamesComeFromTheWordsBesideAndAboveAndFromTheHeadsOfATable) {
  StartProgram(app);
  SelectProduct(app.globals, "RB2000");
  const Form& wizard = Show("Configuration_RB2000");
  const std::pair<const Control*, const char*> rows[] = {
      {&form.NextCmd, "NEXT"},
      {&form.NameTxt, "Name"},
      {&form.FlagChk, "Respond to Specific Address"},
      {&form.BareChk, "Beside a bare box"},
      {&form.Term, "Terminal"},
      {wizard.Find("ModStartTxt", 0), "Modbus Start Address 1"},
      {wizard.Find("ABWordTxt", 2), "Allan-Bradley Datafile Word 3"},
  };
  for (const auto& [control, name] : rows) EXPECT_EQ(AccessibleName(*control), name);
  EXPECT_EQ(WidgetOf(form.NameTxt).accessibleName(), "Name");
}

}  // namespace
}  // namespace vk32
