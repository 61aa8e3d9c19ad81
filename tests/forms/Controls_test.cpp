// The controls: what an assignment does, what an act of the user does and when it is refused, and the timers.
#include <gtest/gtest.h>

#include "forms/FaultOf.h"
#include "support/EveryControl.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

class ControlsTest : public testing::Test {
 protected:
  ControlsTest() { h.Do("click Splash"); }

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

  /// None of the values is taken, and no handler runs.
  template <class Property>
  void CheckRefuses(Property& property, const std::vector<int>& values) {
    const std::string before = property.AsText();
    for (const int value : values) EXPECT_EQ(FaultOf([&] { property = value; }), 5) << value;
    EXPECT_EQ(form.TakeLog() + property.AsText(), before);
  }

  Harness h;
  EveryControl& form = EveryControl::Open(h.app.forms);
};

TEST_F(ControlsTest, AListTakesItsEntriesAndRunsItsHandlerEachTime) {
  ComboBox &list = form.PortCbo, &open = form.FreeCbo;
  Check({&list.Text, &list.ListIndex},
        {{[&] { list.Text = "COM1"; }, "port:COM1 |COM1|1"},
         {[&] { list.Text = "COM1", list.Text = "COM1"; }, "port:COM1 port:COM1 |COM1|1"},
         {[&] { list.Text = "com1"; }, "|COM1|1"},
         {[&] { list.Text = ""; }, "||-1"},
         {[&] { list.ListIndex = 0, list.ListIndex = 0; }, "port:None port:None |None|0"},
         {[&] { list.ListIndex = -1; }, "||-1"},
         {[&] { list.Show("COM2"); }, "|COM2|2"},
         {[&] { list.Show("COM4"); }, "|COM2|2"},
         {[&] { list.SetEntries(std::vector<std::string>(2, "COM4")), list.Show("COM4"); }, "|COM4|0"},
         {[&] { list.SetEntries(std::vector<std::string>(1, "COM4")); }, "||-1"},
         {[&] { list.Pick("COM4"), list.Pick("COM4"); }, "port:COM4 port:COM4 |COM4|0"}});
  CheckRefuses(list.ListIndex, {1, -2});
  // With a text part every text stands, and only an entry runs the handler.
  Check({&open.Text, &open.ListIndex},
        {{[&] { open.Type("19200"); }, "free:19200 |19200|1"}, {[&] { open.Type("192"); }, "|192|-1"}});
}

TEST_F(ControlsTest, ATextRunsItsHandlerAtEachAssignmentAndKey) {
  TextBox& text = form.NameTxt;
  Check({&text.Text, &text.SelStart, &text.SelLength},
        {{[] {}, "||0|0"},
         {[&] { text.Text = "abc", text.Text = "abc"; }, "name:abc name:abc |abc|3|0"},
         {[&] { text.Type("abcdef"); }, "name:abcdef |abcdef|6|0"},
         {[&] { text.Key('\b'), text.Key('g'), text.Key('\r'); }, "name:abcde name:abcdeg |abcdeg|6|0"},
         {[&] { text.SelStart = 1, text.SelLength = 99; }, "|abcdeg|1|5"},
         {[&] { text.OnKeyPress = [](char key) { return key != 'x'; }; }, "|abcdeg|1|5"},
         {[&] { text.Key('x'), text.Key('y'), text.Key('z'); }, "name:ay name:ayz |ayz|3|0"},
         {[&] { text.SelStart = 2, text.Key('\b'); }, "name:az |az|1|0"},
         {[&] { text.SelStart = 0, text.SelLength = 1, text.Key('\b'); }, "name:z |z|0|0"},
         {[&] { text.SetSelText("ab"), text.SelStart = 9; }, "name:abz |abz|3|0"}});
  CheckRefuses(text.SelStart, {-1});
  CheckRefuses(text.SelLength, {-1});
  text.TakeChange();
  EXPECT_EQ(text.TakeChange(), 3u);
  text.Key('d'), text.SelStart = 1, text.Key('c');
  EXPECT_EQ(text.TakeChange(), 1u);
}

TEST_F(ControlsTest, AnOptionClearsTheOthersOfItsContainer) {
  Check({&form.OneOpt.Value, &form.TwoOpt.Value, &form.OffOpt.Value, &form.OtherOpt.Value},
        {{[&] { form.TwoOpt.Click(), form.TwoOpt.Click(); }, "two two |False|True|False|True"},
         {[&] { form.OffOpt.Value = true; }, "off |False|False|True|True"},
         {[&] { form.OffOpt.Value = false; }, "|False|False|False|True"},
         {[&] { form.OtherOpt.Value = true; }, "other |False|False|False|True"}});
}

TEST_F(ControlsTest, NumbersStayInTheirRanges) {
  CheckBox& box = form.FlagChk;
  Check({&box.Value}, {{[&] { box.Click(), box.Value = 1; }, "flag:1 flag:1 |1"}, {[&] { box.Click(); }, "flag:0 |0"}});
  CheckRefuses(box.Value, {2, -1});
  VScrollBar& bar = form.RowsVScroll;
  Check({&bar.Value}, {{[&] { bar.Scroll(9999); }, "scroll:1440 |1440"},
                       {[&] { bar.Max = 480, bar.Max = 480; }, "scroll:480 |480"},  // takes the value along
                       {[&] { bar.Scroll(-1); }, "scroll:0 |0"}});
  CheckRefuses(bar.Value, {481, -1});
  Check({&form.Bar.Value}, {{[&] { form.Bar.Value = 100; }, "|100"}, {[&] { form.Bar.Value = 0; }, "|0"}});
  CheckRefuses(form.Bar.Value, {101, -1});
}

TEST_F(ControlsTest, WhatCannotBeReachedTakesNoAct) {
  h.app.forms.Register("Box", [this] { return std::make_shared<EveryControl>(h.app.forms, "Box", FormStyle::Modal); });
  const std::function<Act()> acts[] = {
      [this] { return form.NameTxt.Type("1"); },    [this] { return form.NameTxt.Key('1'); },
      [this] { return form.PortCbo.Pick("COM1"); }, [this] { return form.FreeCbo.Type("1"); },
      [this] { return form.FlagChk.Click(); },      [this] { return form.RowsVScroll.Scroll(0); },
      [this] { return form.TwoOpt.Click(); },       [this] { return form.RowTxt[2].Key('1'); },
      [this] { return form.AddCmd.Click(); },       [this] { return form.BareLbl.Click(); },
      [this] { return form.Bar.Click(); },          [this] { return form.Bar.Press(); },
      [this] { return form.Bar.Release(); }};
  const std::pair<std::function<void()>, Act> rows[] = {
      {[this] { form.Visible = false; }, Act::Hidden},
      {[this] { form.Visible = true, form.FirstFrame.Visible = false; }, Act::Hidden},
      {[this] { form.FirstFrame.Visible = true, form.FirstFrame.Enabled = false; }, Act::Disabled},
      {[this] { form.FirstFrame.Enabled = true, h.app.forms.Show("Box"); }, Act::Disabled}};
  for (const auto& [hide, outcome] : rows) {
    hide();
    for (const auto& act : acts) EXPECT_EQ(act(), outcome) << &act - acts;
    form.BareLbl.MouseMove();
  }
  EXPECT_EQ(form.Click(), Act::Disabled);
  form.MouseMove(), form.UserCloses();
  h.app.forms.Unload("Box");
  form.PortCbo.Locked = true;
  const std::pair<Act, Act> others[] = {
      {form.OffTxt.Key('1'), Act::Disabled},    {form.OtherOpt.Click(), Act::Hidden},
      {form.ReadTxt.Type("1"), Act::Locked},    {form.ReadTxt.Key('1'), Act::Locked},
      {form.PortCbo.Pick("COM1"), Act::Locked}, {form.PortCbo.Type("COM1"), Act::NotThisKind},
      {form.TickTmr.Click(), Act::Hidden},      {form.FileDlg.Click(), Act::Hidden},
      {form.BandLbl.Click(), Act::Done},        {form.Bar.Click(), Act::Done}};
  for (const auto& [act, outcome] : others) EXPECT_EQ(act, outcome) << "by user";
  form.PortCbo.Locked = false;
  EXPECT_EQ(form.PortCbo.Pick("COM4"), Act::NoSuchEntry);
  EXPECT_EQ(form.TakeLog(), "");
}

TEST_F(ControlsTest, APictureButtonIsPressedWhileItIsHeld) {
  ImageButton& next = form.NextCmd;
  Check({&next.Picture}, {{[&] { next.Press(), next.Press(); }, "|112"},
                          {[&] { next.Visible = false, next.Release(); }, "|111"},  // restores all the same
                          {[&] { next.Release(), next.Press(); }, "|111"},
                          {[&] { next.OnClick = Handler([&] { next.Picture = 117; }); }, "|111"},
                          {[&] { next.Visible = true, next.Press(), next.Release(), next.Click(); }, "|117"},
                          {[&] { next.Press(); }, "|118"},
                          {[&] { next.Picture = 9999, next.Press(), next.Release(); }, "|9999"}});  // not in the table
}

TEST_F(ControlsTest, ATimerTicksAtFullIntervalsFromTheMomentItWasEnabled) {
  Timer& timer = form.TickTmr;
  const Time start = h.loop.Now();
  std::string ticks;
  std::function<void()> onTick;
  timer.OnTimer = Handler([&] {
    ticks += std::to_string((h.loop.Now() - start) / 1ms) + " ";
    if (const auto act = std::exchange(onTick, {})) act();
  });
  const auto busy = [&](Time span) { h.loop.Freeze(h.loop.Now() + span); };  // a long write holds back what is due
  const struct {
    std::function<void()> act;
    int wait;  // ms
    const char* ticks;
  } steps[] = {{[] {}, 1000, ""},
               {[&] { timer.Enabled = true; }, 350, "1100 1200 1300 "},  // a tick leaves it enabled
               {[&] { timer.Enabled = true; }, 110, "1450 "},            // anew, though it runs
               {[&] { timer.Interval = 40; }, 100, "1500 1540 "},
               {[&] { timer.Interval = 0, timer.Enabled = true; }, 1000, ""},
               {[&] { timer.Interval = 100; }, 100, "2660 "},
               {[&] { timer.Enabled = false; }, 340, ""},
               {[&] { timer.Enabled = true, busy(230ms); }, 130, "3230 3300 "},  // in its raster
               {[&] { busy(1000ms); }, 100, "4360 4400 "},                       // without those that were missed
               {[&] { onTick = [&] { busy(30ms), timer.Enabled = true; }; }, 200, "4500 4630 "},
               {[&] { onTick = [&] { h.Do("wait 250"), timer.Enabled = false; }; }, 1000, "4730 4830 4930 "},
               {[&] { timer.Enabled = true, onTick = [&] { h.app.forms.Unload(form), ticks += form.Name(); }; }, 1000,
                "5760 Every"}};
  for (const auto& step : steps) {
    step.act();
    h.Do("wait " + std::to_string(step.wait));
    EXPECT_EQ(std::exchange(ticks, {}), step.ticks) << &step - steps;
  }
}

}  // namespace
}  // namespace vk32
