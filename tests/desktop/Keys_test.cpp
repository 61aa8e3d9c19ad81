// The windows are walked and used by keys alone.
#include "DesktopTest.h"
#include "shell/Products.h"

namespace vk32 {
namespace {

class KeysTest : public DesktopTest {
 protected:
  GalleryForm& form = ShowGallery();
};

TEST_F(KeysTest, TheFirstFieldHasTheFocusAtFirstAndOnEachPage) {
  EXPECT_TRUE(HasFocus(form.NameTxt));
  Click(form.NextCmd);
  EXPECT_TRUE(HasFocus(form.Term));
  Click(form.BackCmd);
  EXPECT_TRUE(HasFocus(form.NameTxt));
}

TEST_F(KeysTest, APageWithoutAFieldBeginsAtTheButtonOfEnter) {
  form.Term.Visible = false;
  Click(form.NextCmd);
  EXPECT_TRUE(HasFocus(form.NextCmd));
}

TEST_F(KeysTest, APanelThatComesWithAChoiceLeavesTheFocusInTheList) {
  form.PortCbo.OnClick = Handler([this] { form.SecondFrame.Visible = true; });
  WidgetOf(form.PortCbo).setFocus();
  PressIn(form, Qt::Key_Down);
  EXPECT_TRUE(HasFocus(form.PortCbo));
}

TEST_F(KeysTest, WhatLosesTheFocusHandsItOn) {
  WidgetOf(form.PortCbo).setFocus();
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

TEST_F(KeysTest, EnterPressesItsButtonExceptWhereItPressesAnother) {
  PressIn(form, Qt::Key_Return, {}, "\r");
  EXPECT_EQ(form.TakeLog(), "next ");
  Click(form.BackCmd);
  WidgetOf(form.AddCmd).setFocus();
  form.TakeLog();
  PressIn(form, Qt::Key_Return, {}, "\r");
  EXPECT_EQ(form.TakeLog(), "add ");
  WidgetOf(form.SiteLbl).setFocus();
  PressIn(form, Qt::Key_Return, {}, "\r");
  EXPECT_EQ(form.TakeLog(), "down up site ");
}

TEST_F(KeysTest, SpaceSwapsThePictureForAsLongAsItIsDown) {
  QWidget& button = WidgetOf(form.NextCmd);
  button.setFocus();
  KeyDown(button, Qt::Key_Space, {}, " ");
  EXPECT_EQ(form.NextCmd.Picture.Value(), 112);
  KeyUp(button, Qt::Key_Space);
  EXPECT_EQ(form.NextCmd.Picture.Value(), 111);
  EXPECT_EQ(form.TakeLog(), "next ");
}

TEST_F(KeysTest, EscapeOnlyLeadsToTheButtonThatClosesWithoutAQuestion) {
  PressIn(form, Qt::Key_Escape, {}, "\x1B");
  EXPECT_TRUE(HasFocus(form.CancelCmd));
  EXPECT_TRUE(app.forms.Find("GalleryForm"));
}

TEST_F(KeysTest, EscapePressesTheButtonThatClosesADialog) {
  StartProgram(app);
  Form& about = Show("About");
  PressIn(about, Qt::Key_Escape, {}, "\x1B");
  EXPECT_FALSE(app.forms.Find("About"));
}

TEST_F(KeysTest, ArrowsMoveWithinAGroupOfOptionsAndTabLeavesIt) {
  WidgetOf(form.OneOpt).setFocus();
  PressIn(form, Qt::Key_Right);
  EXPECT_TRUE(form.TwoOpt.Value);
  EXPECT_TRUE(HasFocus(form.TwoOpt));
  PressIn(form, Qt::Key_Down);
  EXPECT_TRUE(form.OneOpt.Value) << "the disabled one is passed over";
  PressIn(form, Qt::Key_Tab, {}, "\t");
  EXPECT_TRUE(HasFocus(form.RowsVScroll));
}

TEST_F(KeysTest, AltAndALetterLeadToAFieldAndPressABox) {
  const Mnemonics mnemonics = ChooseMnemonics(form);
  EXPECT_EQ(mnemonics.targets.at('N'), &form.NextCmd);
  EXPECT_EQ(mnemonics.targets.at('P'), &form.PortCbo);
  EXPECT_EQ(mnemonics.marks.at(&form.PortLbl), u'P');
  EXPECT_EQ(mnemonics.targets.at(mnemonics.marks.at(&form.BareLbl)), &form.BareChk);
  PressIn(form, Qt::Key_P, Qt::AltModifier, "p");
  EXPECT_TRUE(HasFocus(form.PortCbo));
  PressIn(form, Qt::Key_R, Qt::AltModifier, "r");
  EXPECT_EQ(form.FlagChk.Value.Value(), 1);
  PressIn(form, Qt::Key_N, Qt::AltModifier, "n");
  EXPECT_EQ(form.TakeLog(), "flag next ");
}

TEST_F(KeysTest, TheLettersAreUnderlinedWhileAltIsDown) {
  const QImage plain = WidgetOf(form.PortLbl).grab().toImage();
  KeyDown(WidgetOf(form.NameTxt), Qt::Key_Alt);
  EXPECT_NE(WidgetOf(form.PortLbl).grab().toImage(), plain);
  KeyUp(WidgetOf(form.NameTxt), Qt::Key_Alt);
  EXPECT_EQ(WidgetOf(form.PortLbl).grab().toImage(), plain);
}

TEST_F(KeysTest, NamesComeFromTheWordsBesideAndAbove) {
  EXPECT_EQ(AccessibleName(form.NextCmd), "NEXT");
  EXPECT_EQ(AccessibleName(form.NameTxt), "Name");
  EXPECT_EQ(AccessibleName(form.FlagChk), "Respond to Specific Address");
  EXPECT_EQ(AccessibleName(form.BareChk), "Beside a bare box");
  EXPECT_EQ(AccessibleName(form.Term), "Terminal");
  EXPECT_EQ(WidgetOf(form.NameTxt).accessibleName(), "Name");
}

TEST_F(KeysTest, NamesInATableHaveTheColumnAndTheRow) {
  StartProgram(app);
  SelectProduct(app.globals, "RB2000");
  const Form& wizard = Show("Configuration_RB2000");
  EXPECT_EQ(AccessibleName(*wizard.Find("ModStartTxt", 0)), "Modbus Start Address 1");
  EXPECT_EQ(AccessibleName(*wizard.Find("ABWordTxt", 2)), "Allan-Bradley Datafile Word 3");
}

}  // namespace
}  // namespace vk32
