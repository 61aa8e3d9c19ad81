// The forms: what assignments and acts do to controls, the timers, loading and unloading, and the door through which
// acts and ticks enter.
#include "forms/Forms.h"

#include <set>
#include <tuple>

#include "resources/Pictures.h"
#include "support/EveryControl.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

class ControlsTest : public testing::Test {
 protected:
  struct Step {
    std::function<void()> act;
    std::string outcome;  // the handlers that ran, or the fault; then the properties, each behind a bar
  };
  void Check(const std::vector<const PropertyBase*>& properties, const std::vector<Step>& steps) {
    for (const Step& step : steps) {
      const int fault = FaultOf(step.act);
      const std::string told = form.TakeLog() + (fault ? "fault " + std::to_string(fault) : "");
      EXPECT_EQ(told + Seen(properties), step.outcome) << "step " << &step - steps.data();
    }
  }

  Harness h;
  EveryControl& form = EveryControl::Open(h.app.forms);
};

TEST_F(ControlsTest, AListTakesItsEntriesAndRunsItsHandlerEachTime) {
  ComboBox &list = form.PortCbo, &open = form.FreeCbo;
  Check({&list.Text, &list.ListIndex},
        {{[&] { list.Text = "COM1", list.Text = "COM1"; }, "port:COM1 port:COM1 |COM1|1"},
         {[&] { list.Text = "com1"; }, "|COM1|1"},
         {[&] { list.Text = ""; }, "||-1"},
         {[&] { list.ListIndex = 0, list.ListIndex = 0; }, "port:None port:None |None|0"},
         {[&] { list.ListIndex = -1; }, "||-1"},
         {[&] { list.Show("COM2"), list.Show("COM4"); }, "|COM2|2"},
         {[&] { list.SetEntries({}); }, "||-1"},
         {[&] { list.SetEntries(std::vector<std::string>(2, "COM4")), list.Show("COM4"); }, "|COM4|0"},
         {[&] { list.ListIndex = 2; }, "fault 5|COM4|0"},
         {[&] { list.ListIndex = -2; }, "fault 5|COM4|0"}});
  // With a text part every text stands, and only an entry runs the handler.
  Check({&open.Text, &open.ListIndex},
        {{[&] { open.Text = "19200"; }, "free:19200 |19200|1"}, {[&] { open.Text = "192"; }, "|192|-1"}});
}

TEST_F(ControlsTest, ATextRunsItsHandlerAtEachAssignmentAndKey) {
  TextBox& text = form.NameTxt;
  const auto noX = [](char key) { return key != 'x'; };
  Check({&text.Text, &text.SelStart, &text.SelLength},
        {{[&] { text.Text = "abc", text.Text = "abcdef"; }, "name:abc name:abcdef |abcdef|6|0"},
         {[&] { text.Key('\b'), text.Key('g'), text.Key('\r'); }, "name:abcde name:abcdeg |abcdeg|6|0"},
         {[&] { text.SelStart = 1, text.SelLength = 99, text.SelStart = 2; }, "|abcdeg|2|4"},
         {[&] { text.SelStart = -1; }, "fault 5|abcdeg|2|4"},
         {[&] { text.SelLength = -1; }, "fault 5|abcdeg|2|4"},
         {[&] { text.OnKeyPress = noX, text.Key('x'), text.Key('y'); }, "name:aby |aby|3|0"},
         {[&] { text.SelStart = 1, text.Key('\b'), text.Key('\b'); }, "name:by name:by |by|0|0"},
         {[&] { text.SelLength = 2, text.Key('\b'); }, "name: ||0|0"},
         {[&] { text.SetSelText("abz"), text.SelStart = 9; }, "name:abz |abz|3|0"}});
  text.TakeChange();
  EXPECT_EQ(text.TakeChange(), 3u);
  text.Key('d'), text.SelStart = 1, text.Key('c');
  EXPECT_EQ(text.TakeChange(), 1u);
}

TEST(TimerQueue, WhatATickStartsWaitsForTheNextRoundAndHoldsUpNobody) {
  TimerQueue timers;
  std::string ran;
  timers.Start(0ms, [&] { ran += "a", timers.Start(0ms, [&] { ran += "c"; }); });
  timers.Start(1ms, [&] { ran += "b"; });
  timers.RunDue(1ms);
  EXPECT_EQ(ran, "ab");
  timers.RunDue(1ms);
  EXPECT_EQ(ran, "abc");
}

TEST(Pictures, EachShowsOneStateOfOneButton) {
  std::set<int> numbers;
  for (const PictureButtonRow& row : PictureTable()) {
    EXPECT_TRUE(numbers.insert(row.raised).second && numbers.insert(row.pressed).second) << row.name;
  }
}

TEST(TextRows, BreakAtLineEndsAndWhereTheyAreFullInWhateverPiecesTheTextCame) {
  const std::string text = "abcd\nabcde\r\n\rx\n\nab\r";
  for (std::size_t from = 0; from <= text.size(); ++from) {
    TextRows rows(4);
    rows.Follow(text.substr(0, from), 0), rows.Follow(text, from);
    std::string seen;
    for (int i = 0; i < rows.Count(); ++i) seen += text.substr(rows[i].start, rows[i].length) + "|";
    EXPECT_EQ(seen, "abcd|abcd|e|\rx||ab|") << from;
  }
}

TEST_F(ControlsTest, AnOptionClearsTheOthersOfItsContainer) {
  Check({&form.OneOpt.Value, &form.TwoOpt.Value, &form.OffOpt.Value, &form.OtherOpt.Value},
        {{[&] { form.TwoOpt.Value = true, form.TwoOpt.Value = true; }, "two two |False|True|False|True"},
         {[&] { form.OffOpt.Value = true; }, "off |False|False|True|True"},
         {[&] { form.OffOpt.Value = false; }, "|False|False|False|True"},
         {[&] { form.OtherOpt.Value = true; }, "other |False|False|False|True"}});
}

TEST_F(ControlsTest, NumbersStayInTheirRanges) {
  Check({&form.FlagChk.Value, &form.RowsVScroll.Value, &form.Bar.Value},
        {{[&] { form.FlagChk.Value = 1, form.FlagChk.Value = 1; }, "flag:1 flag:1 |1|0|38"},
         {[&] { form.FlagChk.Value = 2; }, "fault 5|1|0|38"},
         {[&] { form.FlagChk.Value = -1; }, "fault 5|1|0|38"},
         {[&] { form.RowsVScroll.Scroll(9999); }, "scroll:1440 |1|1440|38"},
         {[&] { form.RowsVScroll.Max = 480, form.RowsVScroll.Max = 480; }, "scroll:480 |1|480|38"},  // takes it along
         {[&] { form.RowsVScroll.Value = 481; }, "fault 5|1|480|38"},
         {[&] { form.RowsVScroll.Scroll(-1); }, "scroll:0 |1|0|38"},
         {[&] { form.RowsVScroll.Value = -1; }, "fault 5|1|0|38"},
         {[&] { form.Bar.Value = 101; }, "fault 5|1|0|38"},
         {[&] { form.Bar.Value = 100, form.Bar.Value = 0; }, "|1|0|0"},
         {[&] { form.Bar.Value = -1; }, "fault 5|1|0|0"}});
}

TEST_F(ControlsTest, APictureButtonIsPressedWhileItIsHeld) {
  ImageButton& next = form.NextCmd;
  Check({&next.Picture}, {{[&] { next.Press(), next.Press(); }, "|112"},
                          {[&] { next.Visible = false, next.Release(); }, "|111"},  // restores all the same
                          {[&] { next.Release(), next.Press(), next.Click(); }, "|111"},
                          {[&] { next.Picture = 117, next.Visible = true, next.Press(); }, "|118"},
                          {[&] { next.Picture = 9999, next.Press(), next.Release(); }, "|9999"}});  // not in the table
}

TEST_F(ControlsTest, ATimerTicksAtFullIntervalsFromTheMomentItWasEnabled) {
  Timer& timer = form.TickTmr;
  std::function<void()> onTick;
  std::string ticks;
  timer.OnTimer = Handler([&, start = h.loop.Now()] {
    ticks += std::to_string((h.loop.Now() - start) / 1ms) + " ";
    if (const auto act = std::exchange(onTick, {})) act();
  });
  // A long write holds back what is due.
  const auto busy = [&](Time span) { h.loop.Freeze(h.loop.Now() + span); };
  const std::tuple<std::function<void()>, int, const char*> steps[] = {
      {[&] { timer.Enabled = true; }, 350, "100 200 300 "},  // a tick leaves it enabled
      {[&] { timer.Enabled = true; }, 110, "450 "},          // anew, though it runs
      {[&] { timer.Interval = 40; }, 100, "500 540 "},
      {[&] { timer.Interval = 0, timer.Enabled = true; }, 1000, ""},
      {[&] { timer.Interval = 100; }, 100, "1660 "},
      {[&] { timer.Enabled = false; }, 340, ""},
      {[&] { timer.Enabled = true, busy(1030ms); }, 170, "3030 3100 3200 "},  // in its raster, none made up for
      {[&] { onTick = [&] { busy(30ms), timer.Enabled = true; }; }, 230, "3300 3430 "},
      {[&] { onTick = [&] { h.Do("wait 250"), form.UserCloses(); }; }, 1000, "3530 3630 3730 "}};
  for (const auto& [act, wait, expected] : steps) {
    act();
    h.Do("wait " + std::to_string(wait));
    EXPECT_EQ(std::exchange(ticks, {}), expected);
  }
}

/// Forms A and B, and no others.
struct TwoForms : Harness {
  TwoForms() {
    for (const char* name : {"A", "B"}) {
      forms.Register(name, [this, name] { return std::make_shared<EveryControl>(forms, name); });
    }
    forms.UnloadAll();
  }
  EveryControl& Show(const char* name) { return dynamic_cast<EveryControl&>(forms.Show(name)); }
  /// Shows the form and clicks a button that does this. Returns what was printed.
  std::string Click(const char* name, std::function<void()> act) {
    Show(name).AddCmd.OnClick = Handler([act = std::move(act)] { act(); });
    return Do(std::string("click ") + name + ".AddCmd");
  }

  Forms& forms = app.forms;
};

TEST(Forms, AFormIsLoadedOnceAndShownOnTop) {
  TwoForms h;
  Form& a = h.forms.Load("A");
  EXPECT_EQ(h.Do("forms"), "form A hidden\n");
  h.Show("B");
  EXPECT_EQ(&h.Show("A"), &a);
  EXPECT_EQ(h.Do("forms"), "form B visible\nform A visible\n");
  h.forms.Unload("A"), h.forms.Unload("A");
  EXPECT_EQ(h.Show("A").TakeLog(), "load ");  // a new one
  std::string gone;
  h.screen.onUnload = [&](const Form& form) { gone += form.Name(); };
  h.Show("B");
  h.forms.UnloadAll();
  EXPECT_EQ(gone, "BA");
}

TEST(Forms, AFormThatIsUnloadedInsideItsHandlerLivesUntilThatReturns) {
  TwoForms h;
  EveryControl& a = h.Show("A");
  const std::weak_ptr<Form> form = h.forms.Loaded().front();
  a.AddCmd.OnClick = Handler([&] {
    h.forms.Unload(a);
    a.Visible = true;  // shows nothing any more
    h.Click("B", [] {});
    EXPECT_EQ(h.Do("forms"), "form B visible\n");
    EXPECT_FALSE(form.expired());  // the act within the act is over, this one isn't
  });
  a.AddCmd.Click();
  EXPECT_TRUE(form.expired());
}

TEST(Forms, WhatIsNotThereFaults) {
  TwoForms h;
  EveryControl& form = h.Show("A");
  EXPECT_EQ(FaultOf([&] { h.forms.Load("Nowhere"); }), 5);
  EXPECT_EQ(FaultOf([&] { form.Get<Label>("NameTxt"); }), 5);
  for (const int row : {1, 5}) {
    EXPECT_EQ(FaultOf([&] { form.Get<TextBox>("RowTxt", row); }), 5);
    EXPECT_EQ(FaultOf([&] { form.RowTxt[row].Visible = true; }), 9);
  }
}

TEST(Dispatcher, TheEndUnwindsWhateverWaitsAndNoTrapHoldsItUp) {
  using Code = std::function<void(TwoForms&)>;
  const Code waits[] = {[](TwoForms& h) { h.forms.dispatcher.Idle(-1), h.forms.dispatcher.DoEvents(); },
                        [](TwoForms& h) { h.screen.onFileDialog(), h.forms.dispatcher.Idle(-1); },
                        [](TwoForms& h) { h.forms.MsgBox("", MessageIcon::None); },
                        [](TwoForms& h) { h.forms.AskYesNo("", false); }, [](TwoForms& h) { h.forms.AskFile({}); }};
  const std::pair<Code, std::string> ends[] = {
      {[](TwoForms& h) { h.forms.dispatcher.End(); }, "ended\n"},
      {[](TwoForms&) { throw RuntimeFault(RuntimeFault::DeviceIOError); }, "fault 57 \"Device I/O error\"\n"}};
  for (const Code& wait : waits) {
    for (const auto& [end, told] : ends) {
      TwoForms h;
      h.forms.dispatcher.AtEnd([&] { h.screen.Print("ports closed"); });
      EveryControl& b = h.Show("B");
      b.NextCmd.OnClick = Handler([&, act = end] { act(h); });
      h.screen.onFileDialog = [&] { b.NextCmd.Click(); };
      h.screen.onBox = [&](const auto&) { b.NextCmd.Click(); };
      h.loop.StartTimer(100ms, h.screen.onFileDialog);
      const std::string printed = h.Click("A", [&] {
        try {
          wait(h);
          ADD_FAILURE() << "went on";
        } catch (const std::exception&) {
          ADD_FAILURE() << "held up";
        }
      });
      EXPECT_TRUE(printed.starts_with("ports closed\n" + told)) << &wait - waits << printed;
    }
  }
}

TEST(Dispatcher, TheProgramEndsWhenTheLastWindowHasGone) {
  TwoForms h;
  EveryControl& a = h.Show("A");
  h.Show("B");
  a.CloseEnabled = false;
  a.UserCloses();
  EXPECT_TRUE(a.IsLoaded());
  a.CloseEnabled = true;
  a.UserCloses();
  EXPECT_EQ(h.Do("forms"), "form B visible\n");
  h.forms.Load("A").UserCloses();  // it does not show
  EXPECT_EQ(h.forms.Load("A").Help(), Act::Hidden);
  // One that goes from window to window by itself.
  EXPECT_EQ(h.Click("A", [&] { h.Click("B", [&] { h.forms.UnloadAll(); }), h.Show("B"); }), "");
  EXPECT_EQ(h.Click("B", [&] { h.Show("B").Visible = false; }), "ended\n");
}

}  // namespace
}  // namespace vk32
