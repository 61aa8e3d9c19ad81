// The controls: what an assignment and an act of the user do, and the timers.
#include <gtest/gtest.h>

#include "forms/FaultOf.h"
#include "support/EveryControl.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

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
         {[&] { text.SelStart = 1, text.SelLength = 99; }, "|abcdeg|1|5"},
         {[&] { text.SelStart = -1; }, "fault 5|abcdeg|1|5"},
         {[&] { text.SelLength = -1; }, "fault 5|abcdeg|1|5"},
         {[&] { text.OnKeyPress = noX, text.Key('x'), text.Key('y'); }, "name:ay |ay|2|0"},
         {[&] { text.SelStart = 1, text.Key('\b'), text.Key('\b'); }, "name:y name:y |y|0|0"},
         {[&] { text.SelLength = 1, text.Key('\b'); }, "name: ||0|0"},
         {[&] { text.SetSelText("abz"), text.SelStart = 9; }, "name:abz |abz|3|0"}});
  text.TakeChange();
  EXPECT_EQ(text.TakeChange(), 3u);
  text.Key('d'), text.SelStart = 1, text.Key('c');
  EXPECT_EQ(text.TakeChange(), 1u);
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
  const struct {
    std::function<void()> act;
    int wait;  // ms
    const char* ticks;
  } steps[] = {
      {[&] { timer.Enabled = true; }, 350, "100 200 300 "},  // a tick leaves it enabled
      {[&] { timer.Enabled = true; }, 110, "450 "},          // anew, though it runs
      {[&] { timer.Interval = 40; }, 100, "500 540 "},
      {[&] { timer.Interval = 0, timer.Enabled = true; }, 1000, ""},
      {[&] { timer.Interval = 100; }, 100, "1660 "},
      {[&] { timer.Enabled = false; }, 340, ""},
      {[&] { timer.Enabled = true, busy(1030ms); }, 170, "3030 3100 3200 "},  // in its raster, none made up for
      {[&] { onTick = [&] { busy(30ms), timer.Enabled = true; }; }, 230, "3300 3430 "},
      {[&] { onTick = [&] { h.Do("wait 250"), form.UserCloses(); }; }, 1000, "3530 3630 3730 "}};
  for (const auto& step : steps) {
    step.act();
    h.Do("wait " + std::to_string(step.wait));
    EXPECT_EQ(std::exchange(ticks, {}), step.ticks) << &step - steps;
  }
}

}  // namespace
}  // namespace vk32
