// The windows are walked and used by keys alone.
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
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
  /// Presses keys where the focus is, one behind the other: "F4 Down", "Alt+P"; what is no key's name is typed. One
  /// with "~" behind it is still down from before.
  void PressKeys(const std::string& keys) {
    for (std::string token : Split(keys)) {
      const bool held = token.ends_with('~');
      if (held) token.pop_back();
      QWidget* list = QApplication::activePopupWidget();
      QWidget& focused = *(list ? list : &WindowOf(form))->focusWidget();
      const QKeyCombination key = QKeySequence(FromBytes(token))[0];
      if (token.size() == 1 || key.key() == Qt::Key_unknown) {
        Type(focused, FromBytes(token));
      } else if (held) {
        QKeyEvent event(QEvent::KeyPress, key.key(), key.keyboardModifiers(), QChar(key.key() & 0x1F), true);
        QCoreApplication::sendEvent(&focused, &event);
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
              {form.LaterCbo, "F4 26 Return", "later:COM26 LaterCbo COM26"},
              {form.NextCmd, "Space~ Return~", "NextCmd"},  // what is still down from before does nothing anew
              {form.NameTxt, "Return~ Escape~", "NameTxt abcd"},
              {form.NameTxt, "Alt+R~", "FlagChk abcd"},
              {form.NameTxt, "Alt+9 Alt+F5", "NameTxt abcd"},
              {form.SiteLbl, "Space Return~", "down up site SiteLbl"},
              {form.OneOpt, "Up Left", "two one OneOpt"},
              {form.TableFrame, "Home Down Return Return~ Delete Delete~", "edit2 delete2 TableFrame"},
              {form.TableFrame, "PgDown Return End Up Return PgUp Return",
               "scroll:960 edit7 scroll:1440 edit7 scroll:480 edit2 TableFrame"},
              {form.PortCbo, "c c Ctrl+N", "port:COM1 port:COM2 PortCbo COM2"},
              {form.PortCbo, "com3", "port:COM3 port:COM1 port:COM3 PortCbo COM3"},
              {form.RowsVScroll, "Down PgDown Home", "scroll:960 scroll:1440 scroll:0 RowsVScroll"},
              {form.FreeCbo, "Down Down Up", "free:9600 free:19200 free:9600 FreeCbo 9600"}};
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
  form.RowsVScroll.Max = 0;
  EXPECT_FALSE(TakesFocus(form.RowsVScroll)) << "there is nothing to scroll";
  // One that can't be changed is no begin.
  form.NameTxt.Locked = true;
  Click(form.BackCmd);
  EXPECT_EQ(Focused(), "GrayTxt");
}

TEST_F(KeysTest, ABlockGoesIntoATableByItsKeyAndByTheMenuAndComesBack) {
  StartProgram(app);
  SelectProduct(app.globals, "RB2000");
  Form& wizard = Show("Configuration_RB2000");
  for (int page = 0; page < 3; ++page) Click(*wizard.Find("NextCmd"));
  const auto cells = [&] {
    return wizard.Find("ModStartTxt", 2)->Words() + "|" + wizard.Find("ModEndTxt", 3)->Words();
  };
  QGuiApplication::clipboard()->setText("1\t2\n3\t4\n");
  QWidget& cell = WidgetOf(*wizard.Find("ModStartTxt", 2));
  cell.setFocus();
  Press(cell, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(cells(), "1|4");
  Press(cell, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(cells(), "|");
  QContextMenuEvent menu(QContextMenuEvent::Mouse, {5, 5}, cell.mapToGlobal(QPoint(5, 5)));
  QCoreApplication::sendEvent(&cell, &menu);
  for (QAction* action : QApplication::activePopupWidget()->actions()) {
    if (action->text().contains("Paste")) action->trigger();
  }
  EXPECT_EQ(cells(), "1|4");
  QApplication::activePopupWidget()->close();
  PressIn(wizard, Qt::Key_Down);
  EXPECT_TRUE(HasFocus(*wizard.Find("ModStartTxt", 3)));
}

TEST_F(KeysTest, NamesAndLettersComeFromTheWordsBesideAndAboveAndFromTheHeadsOfATable) {
  StartProgram(app);
  SelectProduct(app.globals, "RB2000");
  EXPECT_EQ(AccessibleName(*Show("Configuration_RB2000").Find("ABWordTxt", 2)), "Allan-Bradley Datafile Word 3");
  EXPECT_EQ(AccessibleName(form.BareChk), "Beside a bare box");
  EXPECT_EQ(AccessibleName(form.Term), "Terminal");
  EXPECT_EQ(WidgetOf(form.NameTxt).accessibleName(), "Name");
  const Mnemonics mnemonics = ChooseMnemonics(form);
  EXPECT_EQ(mnemonics.marks.size(), mnemonics.targets.size());
  for (const auto& [control, letter] : mnemonics.marks) {
    const QImage plain = Picture(*control);
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      SendKey(WidgetOf(form.NameTxt), type, Qt::Key_Alt, {}, {});
      Settle();
      EXPECT_EQ(Picture(*control) == plain, type == QEvent::KeyRelease) << control->Name() << ": its letter shows";
    }
  }
  std::string letters;
  for (const auto& [letter, control] : mnemonics.targets) {
    letters += QString(letter).toStdString() + ":" + control->FullName() + " ";
  }
  EXPECT_EQ(letters,
            "A:AddCmd B:BackCmd C:CancelCmd E:BareChk H:RowTxt(3) I:RowTxt(2) M:NameTxt N:NextCmd O:OneOpt P:PortCbo "
            "R:FlagChk T:TwoOpt X:RowTxt(4) ");
  PressIn(Show("MainMenu"), Qt::Key_Tab, {}, "\t");
  EXPECT_TRUE(HasFocus(*app.forms.Find("MainMenu")->Find("VK5300Cmd")));
  QHelpEvent help(QEvent::ToolTip, {5, 5}, WidgetOf(form.NextCmd).mapToGlobal(QPoint(5, 5)));
  QCoreApplication::sendEvent(&WidgetOf(form.NextCmd), &help);
  EXPECT_EQ(QToolTip::text(), "NEXT (Alt+N)");
  const BoxWatcher boxes([](MessageBox& box) {  // nothing opens the manual here
    EXPECT_TRUE(box.Text().Lines().join(' ').contains("It is in the file"))
        << box.Text().Lines().join(' ').toStdString();
    Press(box, Qt::Key_Escape);
  });
  PressIn(*app.forms.Find("MainMenu"), Qt::Key_F1);
  PressKeys("F1~ Ctrl+F1");
  EXPECT_EQ(boxes.Seen(), 1);
  PressIn(Show("About"), Qt::Key_Escape, {}, "\x1B");  // which presses its only button
  EXPECT_FALSE(app.forms.Find("About"));
}

}  // namespace
}  // namespace vk32
