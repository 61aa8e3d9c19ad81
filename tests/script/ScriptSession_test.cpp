// The commands of the text front end, on a form that has every kind of control, and the texts as it reads them.
#include "script/ScriptSession.h"

#include <new>
#include <stdexcept>
#include <tuple>

#include "script/Quoting.h"
#include "support/EveryControl.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

TEST(Quoting, BytesComeBackFromTheirQuotedFormAndMalformedOnesAreRefused) {
  const std::string bytes("\0 'a'\"b\\c\r\n\t\x1F ~\x7F\x80\xFF", 18);
  EXPECT_EQ(Quote(bytes), R"("\x00 'a'\"b\\c\r\n\t\x1F ~\x7F\x80\xFF")");
  EXPECT_EQ(Unquote(Quote(bytes)), bytes);
  for (const std::string text : {"", " a \"b\"", "\\n"}) EXPECT_EQ(Unquote(text), text);
  EXPECT_EQ(Unquote("\"\\x41\\x0d\\x0D\\x61b raw \t tab\""), "A\r\rab raw \t tab");
  for (const char* text : {R"(")", R"("a)", R"("a\")", R"("a" )", R"("a"b")", R"("\a")", R"("\x")", R"("\x4")",
                           R"("\x4g")", R"("\xg4")", R"("\x-1")", R"("\X41")", R"("\x41)"}) {
    EXPECT_FALSE(Unquote(text)) << text;
  }
}

struct ScriptSessionTest : testing::Test {
  /// Each row is a message and commands behind it, parted by semicolons: each command fails with the message, in which
  /// # is the command's second word.
  void ExpectRefused(const std::vector<std::string>& rows) {
    for (const std::string& row : rows) {
      const std::vector<std::string> parts = Split(row, ';');
      for (std::size_t i = 1; i < parts.size(); ++i) {
        std::string told = parts[0];
        if (const auto at = told.find('#'); at != std::string::npos) told.replace(at, 1, Split(parts[i]).at(1));
        EXPECT_EQ(h.Do(parts[i]), "error " + told + "\n") << parts[i];
      }
    }
    EXPECT_EQ(form.TakeLog(), "");
    EXPECT_EQ(h.Elapsed(), 0ms);
  }
  std::string ClickAdd(const std::function<void()>& act) {
    form.AddCmd.OnClick = Handler([act] { act(); });
    return h.Do("click Every.AddCmd");
  }

  Harness h;
  Forms& forms = h.app.forms;
  EveryControl& form = EveryControl::Open(forms);
};

TEST_F(ScriptSessionTest, ActsReachTheControls) {
  const std::pair<const char*, std::string> rows[] = {
      {"# click Every;\t;\r;click Every\r;move Every", "form move "},
      {"click Every.SiteLbl;down Every.SiteLbl;up Every.SiteLbl;move Every.SiteLbl", "down up site down up over "},
      {"click Every.AddCmd;click Every.TwoOpt;down Every.Bar;click Every.Bar", "add two "},
      {"click Every.FlagChk;check Every.FlagChk on;check Every.FlagChk off", "flag:1 flag:0 "},
      {"select Every.PortCbo COM1;select Every.FreeCbo \"a \\x80\"", "port:COM1 free:a \x80 "},
      {"type Every.FreeCbo other;type Every.FreeCbo 9600", "free:9600 "},
      {"type Every.NameTxt  a b ;type Every.NameTxt \"a\\r\\n\\\"\"", "name: a b  name:a\r\n\" "},
      {"type Every.NameTxt;keys Every.NameTxt \"ab\\x08\"", "name: name:a name:ab name:a "},
      {"type Every.RowTxt(2) x;scroll Every.RowsVScroll 1440;scroll Every.RowsVScroll 0",
       "row2:x scroll:1440 scroll:0 "},
      {"click Every.NextCmd;click Every.BackCmd", "next back "}};
  for (const auto& [commands, log] : rows) {
    for (const std::string& command : Split(commands, ';')) EXPECT_EQ(h.Do(command), "");
    EXPECT_EQ(form.TakeLog(), log);
  }
  EXPECT_EQ(h.Do("help Every"), "manual \"Every\"\n");
}

TEST_F(ScriptSessionTest, WhatAUserCanNotDoIsRefused) {
  const std::string acts =
      "type Every.NameTxt 1;keys Every.NameTxt 1;select Every.PortCbo COM1;type Every.FreeCbo 1;click Every.FlagChk;"
      "check Every.FlagChk on;scroll Every.RowsVScroll 0;click Every.TwoOpt;keys Every.RowTxt(2) 1;click Every.AddCmd;"
      "click Every.BareLbl;up Every.BareLbl;click Every.Bar;down Every.Bar;up Every.Bar";
  forms.Register("Box", [&] { return std::make_shared<EveryControl>(forms, "Box", FormStyle::Modal); });
  form.FlagChk.OnMouseMove = form.AddCmd.OnClick;
  const std::pair<std::function<void()>, std::string> rows[] = {
      {[&] { form.Visible = false; }, "# can't be seen;click Every;"},
      {[&] { form.Visible = true, form.FirstFrame.Visible = false; }, "# can't be seen;"},
      {[&] { form.FirstFrame.Visible = true, form.FirstFrame.Enabled = false; }, "# is disabled;"},
      {[&] { form.FirstFrame.Enabled = true, forms.Show("Box"), form.MouseMove(); }, "# is disabled;click Every;"}};
  for (const auto& [hide, row] : rows) {
    hide();
    h.Do("move Every.FlagChk");
    ExpectRefused({row + acts});
  }
  form.UserCloses();
  forms.Unload("Box");
  form.PortCbo.Locked = true;
  ExpectRefused({"# can't be seen;click MainMenu;down MainMenu.AboutCmd;click Every.TickTmr;click Every.FileDlg",
                 "# is disabled;type Every.OffTxt x;keys Every.OffTxt x",
                 "# is locked;type Every.ReadTxt x;keys Every.ReadTxt x;select Every.PortCbo COM1",
                 "# has no such entry;select Every.FreeCbo 960;select Every.FreeCbo",
                 "# does not take this command;up Every;select Every.NameTxt x;type Every.LogLbl x;"
                 "type Every.PortCbo COM1;keys Every.FreeCbo x;check Every.OneOpt on;scroll Every.Bar 1;"
                 "items Every.NameTxt"});
}

TEST_F(ScriptSessionTest, WhatIsNotThereIsRefused) {
  ExpectRefused({"no form Nothing is loaded;click Nothing;controls Nothing;get Nothing.Caption;type Nothing.X x",
                 "no form  is loaded;click;click .NextCmd",
                 "there is no control #;click Every.Nothing;click Every.nextcmd;click Every.;type Every.RowTxt x;"
                 "type Every.RowTxt(5) x;type Every.NameTxt(0) x",
                 "there is no control Every.Nothing;get Every.Nothing.Text", "no number in #;type Every.RowTxt(x) x",
                 "no property in Every;get Every", "Every has no property NameTxt;get Every.NameTxt",
                 "Every.NameTxt has no property Caption;get Every.NameTxt.Caption",
                 "the text in double quotes is malformed;type Every.NameTxt \"x;select Every.PortCbo \"COM1\" ",
                 "check takes on or off;check Every.FlagChk;check Every.FlagChk On",
                 "scroll takes a number from Min to Max;scroll Every.RowsVScroll 1x;scroll Every.RowsVScroll;"
                 "scroll Every.RowsVScroll 1441;scroll Every.RowsVScroll -1",
                 "answer takes yes, no, save, discard or cancel;answer maybe;answer",
                 "expect takes the text of a box, or its beginning;expect",
                 "there is no terminal at which Enter could be pressed;confirm",
                 "a number of milliseconds is missing;wait;wait -1;until Every.Caption x y;after x quit",
                 "unknown command push;push Every.NextCmd"});
}

TEST_F(ScriptSessionTest, WhatIsThereIsTold) {
  h.Do("type Every.RowTxt(3) \"a\\tb\"");
  for (const std::string& row :
       Split("Shown=True Width=12840 Height=8400 Term.Visible=True Term.Shown=False LogLbl.Left=240 LogLbl.Width=3480 "
             "LogLbl.ForeColor=-2147483630 LogLbl.BackColor=-2147483633 LogLbl.ToolTip= RowTxt(3).Text=a\\tb "
             "ReadTxt.Locked=True RowsVScroll.Min=0 RowsVScroll.SmallChange=480 RowsVScroll.LargeChange=2400")) {
    const std::size_t equals = row.find('=');
    EXPECT_EQ(h.Do("get Every." + row.substr(0, equals)), "value \"" + row.substr(equals + 1) + "\"\n");
  }
  EXPECT_EQ(h.Do("forms"), "form MainMenu hidden\nform Every visible\n");
  EXPECT_EQ(h.Do("items Every.FreeCbo"), "item \"9600\"\nitem \"19200\"\nitem \"a \\x80\"\n");
  const std::string controls = h.Do("controls Every");
  const char* part = "control RowTxt(3) TextBox \"a\\tb\" shown\ncontrol RowTxt(4) TextBox \"\" shown\n";
  EXPECT_NE(controls.find(part), std::string::npos) << controls;
  EXPECT_NE(controls.find("control SecondFrame Frame \"\" hidden\n"), std::string::npos) << controls;
}

TEST_F(ScriptSessionTest, DialogsTakeThePathsInTheirOrder) {
  h.Do("file /a b\nfile \"/c\\x22\"\nfile cancel");
  form.FileDlg.Prepare("Pick", "All|*");
  const auto pick = [&] { form.FileDlg.ShowSave(), form.FileDlg.ShowOpen(); };
  const std::string save = "dialog save \"Pick\" \"All|*\" -> ", open = "dialog open \"Pick\" \"All|*\" -> ";
  EXPECT_EQ(ClickAdd(pick), save + "\"/a b\"\n" + open + "\"/c\\\"\"\n");
  EXPECT_EQ(ClickAdd(pick), save + "cancelled\n" + open + "cancelled\nerror no path was waiting for a file dialog\n");
  EXPECT_EQ(form.FileDlg.FileName.Value(), "/c\"");
  h.screen.strict = true;
  h.Do("file /nowhere/x\nfile /c");
  EXPECT_TRUE(ClickAdd(pick).find("\nerror The folder \"/nowhere\" does not exist") != std::string::npos);
}

TEST_F(ScriptSessionTest, BoxesAreTheExpectedOnesAndWaitForEnter) {
  const std::string box = "box critical \"Job\" \"Lost it\" -> OK\n";
  std::string asked;
  h.screen.WaitForEnter = [&](const std::string& text) { return asked = text, true; };
  const auto act = [&] { forms.MsgBox("Lost it", MessageIcon::Critical, "Job"); };
  const std::tuple<bool, const char*, std::string> rows[] = {
      {false, "quit", ""},
      {true, "quit", "error a critical box came that was not expected\n"},
      {true, "expect Lost", ""},
      {false, "expect Done", "error a box was expected with \"Done\"\n"},
      {false, "expect \"Lost it\"\nexpect Lost\nconfirm", ""}};
  for (const auto& [strict, commands, failure] : rows) {
    h.screen.strict = strict;
    h.Do(commands);
    EXPECT_EQ(ClickAdd(act), box + failure) << commands;
  }
  EXPECT_EQ(asked, "Lost it\nPress Enter to go on.\n");
  EXPECT_FALSE(h.session.RunEnd());
  h.Do("confirm");
  h.screen.WaitForEnter = [](const std::string&) { return false; };
  EXPECT_EQ(ClickAdd(act), box + "error Enter was not pressed\n");
  EXPECT_TRUE(h.session.RunEnd());
  // Between two commands.
  h.screen.strict = true;
  for (const char* command : {"click Every.AddCmd", "quit", "click Every.AddCmd"}) {
    act();
    EXPECT_EQ(h.Do(command),
              *command == 'q' ? "" : "error not carried out: a critical box came that was not expected\n");
    EXPECT_EQ(h.session.RunEnd(), *command != 'q');
  }
}

TEST_F(ScriptSessionTest, UntilEndsAtTheText) {
  form.TickTmr.Enabled = true;
  const std::tuple<std::string, const char*, Time> rows[] = {
      {"101 \"tick \"", "", 100ms},
      {"0 \"tick \"\nuntil Every.LogLbl.Caption 70 \"tick \"", "", 0ms},
      {"70 none", "error Every.LogLbl.Caption did not become \"none\": \"tick \"\n", 70ms},
      {"0 \"tick \"\nuntil X.Y 40 1", "error X.Y did not become \"1\": no form X is loaded\n", 40ms}};
  for (const auto& [command, printed, span] : rows) {
    EXPECT_EQ(h.Do("until Every.LogLbl.Caption " + command), printed);
    EXPECT_EQ(h.Elapsed(), span) << command;
  }
}

TEST_F(ScriptSessionTest, AfterRunsInsideWhateverGoesOnAndNeitherTakesNorGivesBlame) {
  const std::string box = "box question \"VK32\" \"Go?\" -> No\n";
  const std::string blame = "error no answer was waiting for a question\n";
  const auto ask = [&] { forms.AskYesNo("Go?", false); };
  h.Do("after 10 get Every.Width");
  EXPECT_EQ(ClickAdd([&] { ask(), forms.dispatcher.Idle(-1), forms.dispatcher.DoEvents(); }),
            box + "value \"12840\"\n" + blame);
  EXPECT_FALSE(h.session.AfterFailed());
  EXPECT_EQ(h.Do("after 20 get Every.LogLbl.Caption\nafter 10 click Every.FlagChk\nafter 30 click Every.AddCmd"), "");
  EXPECT_EQ(h.Elapsed(), 10ms);
  form.AddCmd.OnClick = Handler(ask);
  EXPECT_EQ(h.Do("wait 100"), "value \"flag:1 \"\n" + box + "after-" + blame);
  EXPECT_TRUE(h.session.AfterFailed());
  EXPECT_EQ(h.Do("after 10 after 10 click Nothing\nwait 30"), "after-error no form Nothing is loaded\n");
}

TEST(ScriptSession, AScriptEndsByQuitAndWithTheProgramAndNothingGetsThroughBehindThat) {
  const std::string told = "error the program ended by a fault\n";
  const std::tuple<const char*, std::string, std::function<void()>> rows[] = {
      {"quit", "", {}},
      {"click Every.CancelCmd", "ended\n", {}},
      {"click Every.AddCmd", "fault 7 \"Out of memory\"\n" + told, [] { throw std::bad_alloc(); }},
      {"click Every.AddCmd", "fault 5 \"Why.\"\n" + told, [] { throw std::runtime_error("Why."); }},
      {"after 10 click Every.AddCmd\nwait 1000", "fault 6 \"Overflow\"\nafter-" + told + told,
       [] { throw RuntimeFault(RuntimeFault::Overflow); }}};
  for (const auto& [commands, printed, act] : rows) {
    Harness h;
    EveryControl& form = EveryControl::Open(h.app.forms);
    form.AddCmd.OnClick = Handler(act);
    EXPECT_EQ(h.Do(commands), printed);
    EXPECT_TRUE(h.session.Finished()) << commands;
    EXPECT_EQ(h.screen.Faulted(), static_cast<bool>(act)) << commands;
    EXPECT_LE(h.Elapsed(), 10ms) << commands;
    if (!act) continue;
    h.Do("click Every.FlagChk");
    EXPECT_EQ(form.TakeLog(), "");
  }
}

}  // namespace
}  // namespace vk32
