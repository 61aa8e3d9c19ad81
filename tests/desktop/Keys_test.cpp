// The windows are walked and used by keys alone.
#include <QHelpEvent>
#include <QKeySequence>
#include <QToolTip>

#include "DesktopTest.h"
#include "Text.h"
#include "shell/Products.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

class KeysTest : public EveryTest {
 protected:
  /// Presses keys where the focus is, one behind the other: "F4 Down", "Alt+P"; what is no key's name is typed.
  void PressKeys(const std::string& keys) {
    for (const std::string& token : Split(keys)) {
      QWidget* list = QApplication::activePopupWidget();
      QWidget& focused = *(list ? list : &WindowOf(form))->focusWidget();
      const QKeyCombination key = QKeySequence(FromBytes(token))[0];
      if (token.size() == 1 || key.key() == Qt::Key_unknown) {
        Type(focused, FromBytes(token));
      } else {
        Press(focused, key.key(), key.keyboardModifiers(), QChar(key.key() & 0x1F));
      }
      Settle();
    }
  }
  std::string Focused() {
    for (const Control* control : form.Controls()) {
      if (WindowOf(form).WidgetOf(*control) && HasFocus(*control)) return control->Name();
    }
    return {};
  }
};

TEST_F(KeysTest, KeysDoWhatIsExpectedOfThem) {
  const struct {
    const Control& first;
    const char* keys;
    std::string seen;  // the handlers that ran; where the focus is then; what the field shows
  } rows[] = {{form.NameTxt, "Return", "next Term "},
              {form.NextCmd, "Space Alt+B", "next back NameTxt"},
              {form.NameTxt, "Alt+N", "next Term "},
              {form.NameTxt, "Alt+P", "PortCbo "},
              {form.NameTxt, "Alt+R", "flag:1 FlagChk "},
              {form.NameTxt, "Alt+E", "bare:1 BareChk "},
              {form.NameTxt, "Escape", "CancelCmd "},
              {form.AddCmd, "Return", "add AddCmd"},
              {form.SiteLbl, "Return", "down up site SiteLbl"},
              {form.OneOpt, "Right", "two TwoOpt"},
              {form.TwoOpt, "Down", "one OneOpt"},  // the disabled one is passed over
              {form.OneOpt, "Tab", "TableFrame"},
              {form.SiteLbl, "Backtab Backtab", "NextCmd"},
              {form.NameTxt, "abd Left c", "name:a name:ab name:abd name:abcd NameTxt abcd"},
              {form.ReadTxt, "x", "ReadTxt read only"},
              {form.FreeCbo, "96", "FreeCbo 96"},  // a text part takes any text
              {form.PortCbo, "Down n", "port:COM3 port:None PortCbo None"},
              {form.LaterCbo, "26", "LaterCbo COM26"},  // the choice is made when it is done
              {form.LaterCbo, "Escape", "LaterCbo None"},
              {form.LaterCbo, "Com3", "LaterCbo COM3"},
              {form.LaterCbo, "Return", "later:COM3 LaterCbo COM3"},
              {form.LaterCbo, "Down Up Tab", "FlagChk COM3"},
              {form.LaterCbo, "2 Tab", "later:COM2 FlagChk COM2"},
              {form.LaterCbo, "F4 26 Return", "later:COM26 LaterCbo COM26"}};
  for (const auto& row : rows) {
    form.SecondFrame.Visible = false;
    form.FirstFrame.Visible = true;
    Settle();
    WidgetOf(row.first).setFocus();
    PressKeys(row.keys);
    const bool list = row.first.GetKind() == Control::Kind::ComboBox;
    const bool text = row.first.GetKind() == Control::Kind::TextBox;
    const QVariant shown = WidgetOf(row.first).property(list ? "currentText" : text ? "text" : "");
    EXPECT_EQ(form.TakeLog() + Focused() + (list || text ? " " + shown.toString().toStdString() : ""), row.seen)
        << row.first.Name() << " " << row.keys;
  }
}

TEST_F(KeysTest, APanelThatComesWithAChoiceLeavesTheFocusThereAndWhatLosesItHandsItOn) {
  form.PortCbo.OnClick = Handler([this] { form.SecondFrame.Visible = true; });
  WidgetOf(form.PortCbo).setFocus();
  PressKeys("Down");
  EXPECT_EQ(Focused(), "PortCbo");
  form.PortCbo.Enabled = false;
  Settle();
  EXPECT_EQ(Focused(), "FreeCbo");
  // To what stands in the very same place, wherever it comes in the order.
  form.NameTxt.Left = form.FreeCbo.Left, form.NameTxt.Top = form.FreeCbo.Top, form.NameTxt.Width = form.FreeCbo.Width;
  form.FreeCbo.Visible = false;
  Settle();
  EXPECT_EQ(Focused(), "NameTxt");
  // Without a field the page begins at the button of Enter.
  form.SecondFrame.Visible = form.Term.Visible = false;
  Settle();
  Click(form.NextCmd);
  EXPECT_EQ(Focused(), "NextCmd");
}

TEST_F(KeysTest, NamesAndLettersComeFromTheWordsBesideAndAboveAndFromTheHeadsOfATable) {
  StartProgram(app);
  SelectProduct(app.globals, "RB2000");
  EXPECT_EQ(AccessibleName(*Show("Configuration_RB2000").Find("ABWordTxt", 2)), "Allan-Bradley Datafile Word 3");
  EXPECT_EQ(AccessibleName(form.BareChk), "Beside a bare box");
  EXPECT_EQ(AccessibleName(form.Term), "Terminal");
  EXPECT_EQ(WidgetOf(form.NameTxt).accessibleName(), "Name");
  for (const Control* control : std::vector<const Control*>{&form.BareLbl, &form.NextCmd}) {
    const QImage plain = Picture(*control);
    SendKey(WidgetOf(form.NameTxt), QEvent::KeyPress, Qt::Key_Alt, {}, {});
    EXPECT_NE(Picture(*control), plain) << "its letter shows";
    SendKey(WidgetOf(form.NameTxt), QEvent::KeyRelease, Qt::Key_Alt, {}, {});
    EXPECT_EQ(Picture(*control), plain);
  }
  PressIn(Show("MainMenu"), Qt::Key_Tab, {}, "\t");
  EXPECT_TRUE(HasFocus(*app.forms.Find("MainMenu")->Find("VK5300Cmd")));
  QHelpEvent help(QEvent::ToolTip, {5, 5}, WidgetOf(form.NextCmd).mapToGlobal(QPoint(5, 5)));
  QCoreApplication::sendEvent(&WidgetOf(form.NextCmd), &help);
  EXPECT_EQ(QToolTip::text(), "NEXT (Alt+N)");
  PressIn(Show("About"), Qt::Key_Escape, {}, "\x1B");  // which presses its only button
  EXPECT_FALSE(app.forms.Find("About"));
}

}  // namespace
}  // namespace vk32
