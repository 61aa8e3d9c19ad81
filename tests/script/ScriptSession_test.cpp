// The commands of the text front end, on a form that has every kind of control.
#include "script/ScriptSession.h"

#include <gtest/gtest.h>

#include <sstream>

#include "forms/ControlArray.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

/// Notes in LogLbl what its controls were told.
class Panel : public Form {
 public:
  static constexpr const char* FormName = "Panel";

  explicit Panel(App& app) : Form(app.forms, FormName, "Panel of the test", 3000, 4500), app_(app) {}

 private:
  void Form_Load() override {
    HiddenFrame.Visible = false;
    DisabledFrame.Enabled = false;
    LockedTxt.Locked = true;
    Bar.Min = 2;
    Bar.Max = 9;
    Progress.Value = 30;
  }
  void Form_Click() override { Note("click"); }
  void Form_MouseMove() override { Note("move"); }

  void Note(const std::string& what) { LogLbl.Caption = LogLbl.Caption.Value() + what + ";"; }
  Handler Noting(const char* what) {
    return [this, what] { Note(what); };
  }
  void ArrayTxt_Change(int index) { Note(std::to_string(index) + "=" + ArrayTxt[index].Text.Value()); }

  App& app_;

  // clang-format off
  Label        LogLbl      {*this, "LogLbl",    {10, 20, 30, 40}, ""};
  Label        LinkLbl     {*this, "LinkLbl",   {}, "link", TextRole::Link, Noting("link"), {Noting("down"), Noting("up"), Noting("over")}};
  ImageButton  NextCmd     {*this, "NextCmd",   {}, Noting("next")};
  TextBox      NameTxt     {*this, "NameTxt",   {}, Handler([this] { Note(NameTxt.Text); })};
  TextBox      LockedTxt   {*this, "LockedTxt", {}, Noting("locked")};
  ComboBox     ChoiceLst   {*this, "ChoiceLst", {}, {"one", "two words", "\x80"}, Handler([this] { Note(ChoiceLst.Text); })};
  ComboBox     OpenCbo     {*this, "OpenCbo",   {}, {"one"}, Noting("open"), ComboBox::Style::WithTextPart};
  CheckBox     FlagChk     {*this, "FlagChk",   {}, "flag", Noting("flag")};
  OptionButton FirstOpt    {*this, "FirstOpt",  {}, "first", true};
  OptionButton SecondOpt   {*this, "SecondOpt", {}, "second", false, Noting("second")};
  VScrollBar   Bar         {*this, "Bar",       {}, Handler([this] { Note("bar " + std::to_string(Bar.Value)); })};
  ProgressBar  Progress    {*this, "Progress",  {}};
  Timer        SlowTmr     {*this, "SlowTmr", 5000, true, Noting("tick")};
  FileDialog   FileDlg     {*this, "FileDlg"};
  Frame        HiddenFrame {*this, "HiddenFrame", {}};
  CommandButton HiddenCmd  {HiddenFrame, "HiddenCmd", {}, "", Noting("hidden")};
  Frame        DisabledFrame {*this, "DisabledFrame", {}};
  TextBox      DisabledTxt {DisabledFrame, "DisabledTxt", {}};
  ControlArray<TextBox> ArrayTxt {"ArrayTxt", 1, 2, [this](ControlName element, int) {
      return std::make_unique<TextBox>(*this, element, Place{}, &Panel::ArrayTxt_Change);
  }};
  CommandButton AskCmd    {*this, "AskCmd",   {}, "", Handler([this] { Note(app_.forms.AskYesNo("Go\r\non?", false, "A \"title\"") ? "yes" : "no"); })};
  CommandButton AskLongCmd {*this, "AskLongCmd", {}, "", Handler([this] {
      app_.forms.AskYesNo("Go?", false);
      app_.forms.dispatcher.Idle(-1);
      app_.forms.dispatcher.DoEvents();
  })};
  CommandButton BoxesCmd  {*this, "BoxesCmd", {}, "", Handler([this] {
      for (const auto icon : {MessageIcon::None, MessageIcon::Critical, MessageIcon::Exclamation, MessageIcon::Information}) app_.forms.MsgBox("text", icon);
  })};
  CommandButton FileCmd   {*this, "FileCmd",  {}, "", Handler([this] {
      FileDlg.DialogTitle = "Pick";
      FileDlg.Filter = "All|*";
      FileDlg.ShowSave();
      FileDlg.ShowOpen();
      Note(FileDlg.FileName);
  })};
  CommandButton FaultCmd  {*this, "FaultCmd", {}, "", Handler([] { throw RuntimeFault(RuntimeFault::Overflow); })};
  // clang-format on
};

struct ScriptSessionTest : testing::Test {
  ScriptSessionTest() {
    RegisterForm<Panel>(h.app);
    h.Do("click Splash");
    h.app.forms.Find("MainMenu")->Visible = false;
    h.app.forms.Show("Panel");
    h.Elapsed();
  }

  /// What the controls were told since the last call.
  std::string Log() {
    const std::string log = h.Get("Panel.LogLbl.Caption");
    h.app.forms.Find("Panel")->Get<Label>("LogLbl").Caption = "";
    return log;
  }

  Harness h;
};

TEST_F(ScriptSessionTest, ActsReachTheControls) {
  for (const std::string row : {"click Panel|click;",
                                "move Panel|move;",
                                "click Panel.LinkLbl|down;up;link;",
                                "down Panel.LinkLbl|down;",
                                "up Panel.LinkLbl|up;",
                                "move Panel.LinkLbl|over;",
                                "click Panel.NextCmd|next;",
                                "click Panel.NameTxt|",
                                "down Panel.Progress|",
                                "click Panel.FlagChk|flag;",
                                "check Panel.FlagChk on|",
                                "check Panel.FlagChk off|flag;",
                                "check Panel.FlagChk off|",
                                "click Panel.SecondOpt|second;",
                                "select Panel.ChoiceLst two words|two words;",
                                "select Panel.ChoiceLst \"\\x80\"|\x80;",
                                "select Panel.OpenCbo one|open;",
                                "type Panel.OpenCbo other|",
                                "type Panel.NameTxt  a b | a b ;",
                                "type Panel.NameTxt \"a\\r\\nb\\\"\"|a\r\nb\";",
                                "type Panel.NameTxt|;",
                                "keys Panel.NameTxt ab|a;ab;",
                                "keys Panel.NameTxt \"\\x08c\"|a;ac;",
                                "type Panel.ArrayTxt(2) x|2=x;",
                                "scroll Panel.Bar 7|bar 7;",
                                "scroll Panel.Bar 9|bar 9;",
                                "scroll Panel.Bar 2|bar 2;",
                                "wait 4999|",
                                "wait 1|tick;"}) {
    EXPECT_EQ(h.Do(row.substr(0, row.find('|'))), "") << row;
    EXPECT_EQ(Log(), row.substr(row.find('|') + 1)) << row;
  }
}

TEST_F(ScriptSessionTest, WhatAUserCanNotDoIsRefused) {
  // The words, and the commands, whose second word names the target.
  for (const std::string row :
       {" can't be seen;click Panel.HiddenCmd;click MainMenu;click MainMenu.AboutCmd;down MainMenu.AboutCmd",
        " is disabled;type Panel.DisabledTxt x;keys Panel.DisabledTxt x",
        " is locked;type Panel.LockedTxt x;keys Panel.LockedTxt x",
        " has no such entry;select Panel.ChoiceLst two;select Panel.ChoiceLst",
        " does not take this command;up Panel;select Panel.NameTxt x;type Panel.LogLbl x;type Panel.ChoiceLst one;"
        "keys Panel.OpenCbo x;check Panel.FirstOpt on;scroll Panel.Progress 1;items Panel.NameTxt"}) {
    const std::vector<std::string> parts = Split(row, ';');
    for (std::size_t i = 1; i < parts.size(); ++i) {
      EXPECT_EQ(h.Do(parts[i]), "error " + Split(parts[i]).at(1) + parts[0] + "\n");
    }
  }
  EXPECT_EQ(Log(), "");
}

TEST_F(ScriptSessionTest, WhatIsNotThereIsRefused) {
  for (const std::string row :
       {"no form Nothing is loaded;click Nothing;controls Nothing;get Nothing.Caption;type Nothing.X x",
        "no form  is loaded;click;click .NextCmd",
        "there is no control Panel.Nothing;click Panel.Nothing;get Panel.Nothing.Text",
        "there is no control Panel.nextcmd;click Panel.nextcmd", "there is no control Panel.;click Panel.",
        "there is no control Panel.ArrayTxt;type Panel.ArrayTxt x",
        "there is no control Panel.ArrayTxt(3);type Panel.ArrayTxt(3) x",
        "there is no control Panel.NameTxt(0);type Panel.NameTxt(0) x",
        "no number in Panel.ArrayTxt(x);type Panel.ArrayTxt(x) x", "no property in Panel;get Panel",
        "Panel has no property NameTxt;get Panel.NameTxt",
        "Panel.NameTxt has no property Caption;get Panel.NameTxt.Caption",
        "the text in double quotes is malformed;type Panel.NameTxt \"x;select Panel.ChoiceLst \"one\" ",
        "check takes on or off;check Panel.FlagChk;check Panel.FlagChk On",
        "scroll takes a number from Min to Max;scroll Panel.Bar 1x;scroll Panel.Bar;scroll Panel.Bar 10;"
        "scroll Panel.Bar 1",
        "answer takes yes or no;answer maybe;answer",
        "a number of milliseconds is missing;wait;wait -1;until Panel.Caption x y;after x quit",
        "unknown command push;push Panel.NextCmd"}) {
    const std::vector<std::string> parts = Split(row, ';');
    for (std::size_t i = 1; i < parts.size(); ++i) EXPECT_EQ(h.Do(parts[i]), "error " + parts[0] + "\n") << parts[i];
  }
  EXPECT_EQ(h.Elapsed(), 0ms);
}

TEST_F(ScriptSessionTest, PropertiesAreToldByName) {
  h.Do("type Panel.ArrayTxt(1) \"a\\tb\"\ncheck Panel.FlagChk on\nselect Panel.ChoiceLst two words");
  std::istringstream rows(R"(
      Panel.Visible=True Panel.Shown=True Panel.Width=3000 Panel.Height=4500 Panel.HiddenCmd.Visible=True
      Panel.HiddenCmd.Shown=False MainMenu.Shown=False MainMenu.RB2000Cmd.Visible=True MainMenu.RB2000Cmd.Shown=False
      Panel.DisabledTxt.Enabled=True Panel.DisabledFrame.Enabled=False Panel.LogLbl.Left=10 Panel.LogLbl.Top=20
      Panel.LogLbl.Width=30 Panel.LogLbl.Height=40 Panel.LogLbl.ForeColor=-2147483630 Panel.LogLbl.ToolTip=
      Panel.LogLbl.BackColor=-2147483633 Panel.LinkLbl.Caption=link Panel.ArrayTxt(1).Text=a\tb
      Panel.LockedTxt.Locked=True Panel.FlagChk.Value=1 Panel.FirstOpt.Value=True Panel.SecondOpt.Value=False
      Panel.Bar.Min=2 Panel.Bar.Max=9 Panel.Bar.SmallChange=1 Panel.Bar.LargeChange=1 Panel.Progress.Value=30
      Panel.SlowTmr.Interval=5000 Panel.SlowTmr.Enabled=True Panel.ChoiceLst.ListIndex=1 Panel.OpenCbo.ListIndex=-1)");
  for (std::string row; rows >> row;) {
    const std::size_t equals = row.find('=');
    EXPECT_EQ(h.Do("get " + row.substr(0, equals)), "value \"" + row.substr(equals + 1) + "\"\n");
  }
}

TEST_F(ScriptSessionTest, ListsOfWhatIsThere) {
  h.Do("type Panel.NameTxt \"\\xFF\"");
  Log();
  h.app.forms.Find("MainMenu")->Visible = true;
  EXPECT_EQ(h.Do("forms"), "form Panel visible\nform MainMenu visible\n");
  h.app.forms.Find("MainMenu")->Visible = false;
  EXPECT_EQ(h.Do("forms"), "form Panel visible\nform MainMenu hidden\n");
  EXPECT_EQ(h.Do("items Panel.ChoiceLst"), "item \"one\"\nitem \"two words\"\nitem \"\\x80\"\n");
  const std::string controls = h.Do("controls Panel");
  for (const char* part : {"control LogLbl Label \"\" shown\ncontrol LinkLbl Label \"link\" shown\n"
                           "control NextCmd ImageButton \"NEXT\" shown\ncontrol NameTxt TextBox \"\\xFF\" shown\n",
                           "control HiddenFrame Frame \"\" hidden\ncontrol HiddenCmd CommandButton \"\" hidden\n",
                           "control ArrayTxt(1) TextBox \"\" shown\ncontrol ArrayTxt(2) TextBox \"\" shown\n"}) {
    EXPECT_NE(controls.find(part), std::string::npos) << part << controls;
  }
}

TEST_F(ScriptSessionTest, BoxesAndDialogsTakeTheAnswersInTheirOrder) {
  h.Do("answer no\nanswer yes\nfile /a b\nfile \"/c\\x22\"\nfile cancel");
  const std::string box = R"(box question "A \"title\"" "Go\r\non?" -> )";
  EXPECT_EQ(h.Do("click Panel.AskCmd"), box + "No\n");
  EXPECT_EQ(h.Do("click Panel.AskCmd"), box + "Yes\n");
  EXPECT_EQ(h.Do("click Panel.AskCmd"), box + "No\nerror no answer was waiting for a question\n");
  EXPECT_EQ(h.Do("click Panel.BoxesCmd"),
            "box none \"VK32\" \"text\" -> OK\nbox critical \"VK32\" \"text\" -> OK\n"
            "box exclamation \"VK32\" \"text\" -> OK\nbox information \"VK32\" \"text\" -> OK\n");
  const std::string save = "dialog save \"Pick\" \"All|*\" -> ", open = "dialog open \"Pick\" \"All|*\" -> ";
  EXPECT_EQ(h.Do("click Panel.FileCmd"), save + "\"/a b\"\n" + open + "\"/c\\\"\"\n");
  EXPECT_EQ(h.Do("click Panel.FileCmd"),
            save + "cancelled\n" + open + "cancelled\nerror no path was waiting for a file dialog\n");
  EXPECT_EQ(Log(), "no;yes;no;/c\";/c\";");
  h.app.forms.Show("MainMenu");
  EXPECT_EQ(h.Do("click MainMenu.WebsiteLbl").substr(0, 9), "web \"http");
}

TEST_F(ScriptSessionTest, BlankLinesAndCommentsArePassedOver) {
  for (const char* line : {"", "  \t", "\r", "# click Nothing", "#", "get Panel.Caption\r"}) {
    EXPECT_TRUE(h.session.RunLine(line)) << line;
  }
  EXPECT_FALSE(h.session.RunLine("click Nothing\r"));
}

TEST_F(ScriptSessionTest, UntilEndsAtTheText) {
  const struct {
    const char *commands, *printed;
    Time span;
  } rows[] = {
      {"until Panel.LogLbl.Caption 5001 tick;", "", 5000ms},
      {"until Panel.LogLbl.Caption 0 \"tick;\"\nuntil Panel.LogLbl.Caption 70 tick;", "", 0ms},
      {"until Panel.LogLbl.Caption 70 none", "error Panel.LogLbl.Caption did not become \"none\": \"tick;\"\n", 70ms},
      {"after 30 click MainMenu.AboutCmd\nuntil About.Visible 40 True",
       "after-error MainMenu.AboutCmd can't be seen\n"
       "error About.Visible did not become \"True\": no form About is loaded\n",
       40ms}};
  for (const auto& row : rows) {
    EXPECT_EQ(h.Do(row.commands), row.printed);
    EXPECT_EQ(h.Elapsed(), row.span) << row.commands;
  }
}

TEST_F(ScriptSessionTest, AfterRunsInsideWhateverGoesOnAndNeitherTakesNorGivesBlame) {
  EXPECT_EQ(h.Do("after 10 get Panel.Caption\nclick Panel.AskLongCmd"),
            "box question \"VK32\" \"Go?\" -> No\nvalue \"Panel of the test\"\n"
            "error no answer was waiting for a question\n");
  EXPECT_FALSE(h.session.AfterFailed());
  EXPECT_EQ(h.Do("after 20 get Panel.LogLbl.Caption\nafter 10 click Panel.NextCmd\nafter 30 click Panel.AskCmd"), "");
  EXPECT_EQ(h.Elapsed(), 10ms);
  EXPECT_EQ(h.Do("wait 100"),
            "value \"next;\"\nbox question \"A \\\"title\\\"\" \"Go\\r\\non?\" -> No\n"
            "after-error no answer was waiting for a question\n");
  EXPECT_TRUE(h.session.AfterFailed());
  EXPECT_EQ(h.Do("after 10 after 10 click Nothing\nwait 30"), "after-error no form Nothing is loaded\n");
}

TEST_F(ScriptSessionTest, ScriptEndsByQuitAndWithTheProgram) {
  const struct {
    const char *commands, *printed;
    bool ended, faulted;
  } rows[] = {{"quit", "", false, false},
              {"click MainMenu.ExitCmd", "ended\n", true, false},
              {"after 10 click Panel.NextCmd\nclick Panel.FaultCmd",
               "fault 6 \"Overflow\"\nerror the program ended by a fault\n", true, true},
              {"after 10 click Panel.FaultCmd\nwait 1000",
               "fault 6 \"Overflow\"\nafter-error the program ended by a fault\n"
               "error the program ended by a fault\n",
               true, true}};
  for (const auto& row : rows) {
    Harness fresh;
    RegisterForm<Panel>(fresh.app);
    fresh.Do("click Splash");
    fresh.app.forms.Show("Panel");
    fresh.Elapsed();
    EXPECT_EQ(fresh.Do(row.commands), row.printed);
    EXPECT_TRUE(fresh.session.Finished()) << row.commands;
    EXPECT_EQ(fresh.app.forms.dispatcher.Ended(), row.ended) << row.commands;
    EXPECT_EQ(fresh.screen.Faulted(), row.faulted) << row.commands;
    EXPECT_LE(fresh.Elapsed(), 10ms) << row.commands;
  }
}

}  // namespace
}  // namespace vk32
