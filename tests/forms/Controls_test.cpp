// The controls: what an assignment does, what an act of the user does and when it is refused, and the timers.
#include <gtest/gtest.h>

#include "forms/FaultOf.h"
#include "forms/TestForm.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

class ControlsTest : public testing::Test {
 protected:
  ControlsTest() {
    h.Do("click Splash");
    h.app.forms.Register("TestForm", [this] { return std::make_shared<TestForm>(h.app.forms); });
    form = &dynamic_cast<TestForm&>(h.app.forms.Show("TestForm"));
    form->TakeLog();
  }

  std::string Get(const std::string& property) { return h.Get("TestForm." + property); }
  /// The handlers that ran since the last look, and the property.
  std::string LogAnd(const std::string& property) { return form->TakeLog() + Get(property); }

  Harness h;
  TestForm* form;
};

TEST_F(ControlsTest, AListTakesItsEntriesAndRunsItsHandlerEachTime) {
  ComboBox& list = form->ChoiceLst;
  const struct {
    std::function<void()> assign;
    const char *log, *text, *index;
    int fault = 0;
  } rows[] = {
      {[&] { list.Text = "Two"; }, "list ", "Two", "1"},  {[&] { list.Text = "Two"; }, "list ", "Two", "1"},
      {[&] { list.Text = "two"; }, "", "Two", "1"},       {[&] { list.Text = ""; }, "", "", "-1"},
      {[&] { list.ListIndex = 0; }, "list ", "One", "0"}, {[&] { list.ListIndex = 0; }, "list ", "One", "0"},
      {[&] { list.ListIndex = 2; }, "", "One", "0", 5},   {[&] { list.ListIndex = -2; }, "", "One", "0", 5},
      {[&] { list.ListIndex = -1; }, "", "", "-1"},       {[&] { list.Show("Two"); }, "", "Two", "1"},
      {[&] { list.Show("Three"); }, "", "Two", "1"},      {[&] { list.SetEntries({"Two", "Three"}); }, "", "", "-1"},
      {[&] { list.Text = "Two"; }, "list ", "Two", "0"}};
  for (const auto& row : rows) {
    EXPECT_EQ(FaultOf(row.assign), row.fault) << &row - rows;
    EXPECT_EQ(LogAnd("ChoiceLst.Text"), std::string(row.log) + row.text) << &row - rows;
    EXPECT_EQ(Get("ChoiceLst.ListIndex"), row.index) << &row - rows;
  }
  EXPECT_EQ(h.Do("select TestForm.ChoiceLst One"), "error TestForm.ChoiceLst has no such entry\n");
  EXPECT_EQ(h.Do("type TestForm.ChoiceLst Two"), "error TestForm.ChoiceLst does not take this command\n");
  h.Do("select TestForm.ChoiceLst Three\nselect TestForm.ChoiceLst Three");
  EXPECT_EQ(LogAnd("ChoiceLst.Text"), "list list Three");

  // With a text part every text stands, and only an entry runs the handler.
  h.Do("type TestForm.TextCbo Two\ntype TestForm.TextCbo Twofold");
  EXPECT_EQ(LogAnd("TextCbo.Text"), "combo Twofold");
  EXPECT_EQ(Get("TextCbo.ListIndex"), "-1");
}

TEST_F(ControlsTest, ATextRunsItsHandlerAtEachAssignmentAndKey) {
  TextBox& text = form->KeyTxt;
  text.Text = "abc";
  text.Text = "abc";
  h.Do("type TestForm.KeyTxt abcdef");
  EXPECT_EQ(LogAnd("KeyTxt.Text"), "text text text abcdef");
  h.Do("keys TestForm.KeyTxt \"\\x08g\\r\"");  // a key that is no character changes nothing
  EXPECT_EQ(LogAnd("KeyTxt.Text"), "text text abcdeg");
  text.SelStart = 1;
  text.SelLength = 99;  // to the end of the text
  text.OnKeyPress = [](char key) { return key != 'x'; };
  h.Do("keys TestForm.KeyTxt xyz");  // in place of the selection
  EXPECT_EQ(Get("KeyTxt.Text") + Get("KeyTxt.SelStart"), "ayz3");
  EXPECT_EQ(FaultOf([&] { text.SelStart = -1; }), 5);
}

TEST_F(ControlsTest, AnOptionClearsTheOthersOfItsContainer) {
  const auto values = [this] {
    return LogAnd("AOpt.Value") + Get("BOpt.Value") + Get("COpt.Value") + Get("DOpt.Value");
  };
  h.Do("click TestForm.BOpt");
  EXPECT_EQ(values(), "b FalseTrueTrueTrue");
  form->BOpt.Value = true;
  form->COpt.Value = false;  // clearing one runs nothing
  EXPECT_EQ(values(), "b FalseTrueFalseTrue");
  form->AOpt.Value = true;
  EXPECT_EQ(values(), "a TrueFalseFalseTrue");
}

TEST_F(ControlsTest, NumbersStayInTheirRanges) {
  h.Do("click TestForm.FlagChk\ncheck TestForm.FlagChk on");  // it is on already: no second click
  EXPECT_EQ(LogAnd("FlagChk.Value"), "check 1");
  form->FlagChk.Value = 1;
  EXPECT_EQ(FaultOf([this] { form->FlagChk.Value = 2; }), 5);
  EXPECT_EQ(FaultOf([this] { form->FlagChk.Value = -1; }), 5);
  EXPECT_EQ(LogAnd("FlagChk.Value"), "check 1");

  VScrollBar& bar = form->RowsVScroll;
  bar.Max = 7200;
  bar.Scroll(9999);
  EXPECT_EQ(LogAnd("RowsVScroll.Value"), "scroll 7200");
  bar.Max = 480;  // takes the value along
  EXPECT_EQ(LogAnd("RowsVScroll.Value"), "scroll 480");
  bar.Max = 480;
  EXPECT_EQ(FaultOf([&] { bar.Value = 481; }), 5);
  EXPECT_EQ(FaultOf([&] { bar.Value = -1; }), 5);
  EXPECT_EQ(LogAnd("RowsVScroll.Value"), "480");
  bar.Scroll(-1);
  EXPECT_EQ(LogAnd("RowsVScroll.Value"), "scroll 0");
}

TEST_F(ControlsTest, WhatCannotBeReachedTakesNoAct) {
  const std::function<Act()> acts[] = {
      [this] { return form->NextCmd.Press(); },       [this] { return form->NextCmd.Click(); },
      [this] { return form->KeyTxt.Type("1"); },      [this] { return form->KeyTxt.Key('1'); },
      [this] { return form->ChoiceLst.Pick("Two"); }, [this] { return form->TextCbo.Type("1"); },
      [this] { return form->FlagChk.Click(); },       [this] { return form->RowsVScroll.Scroll(0); },
      [this] { return form->BOpt.Click(); }};
  const auto expect = [&](Act outcome) {
    for (const auto& act : acts) EXPECT_EQ(act(), outcome) << &act - acts;
  };
  form->Visible = false;
  expect(Act::Hidden);
  form->Visible = true;
  form->OuterFrame.Visible = false;
  expect(Act::Hidden);
  form->OuterFrame.Visible = true;
  form->OuterFrame.Enabled = false;
  expect(Act::Disabled);
  form->OuterFrame.Enabled = true;
  form->NextCmd.Visible = false;
  EXPECT_EQ(h.Do("click TestForm.NextCmd"), "error TestForm.NextCmd can't be seen\n");
  form->FlagChk.Enabled = false;
  EXPECT_EQ(h.Do("click TestForm.FlagChk"), "error TestForm.FlagChk is disabled\n");
  form->KeyTxt.Locked = true;
  EXPECT_EQ(h.Do("type TestForm.KeyTxt 1"), "error TestForm.KeyTxt is locked\n");
  EXPECT_EQ(h.Do("keys TestForm.KeyTxt 1"), "error TestForm.KeyTxt is locked\n");
  EXPECT_EQ(LogAnd("KeyTxt.Text"), "");
  form->KeyTxt.Text = "locked against the user alone";
  EXPECT_EQ(form->TakeLog(), "text ");
}

TEST_F(ControlsTest, APictureButtonIsPressedWhileItIsHeld) {
  h.Do("down TestForm.NextCmd");
  EXPECT_EQ(Get("NextCmd.Picture"), "112");
  form->OuterFrame.Visible = false;
  h.Do("up TestForm.NextCmd");  // restores all the same
  EXPECT_EQ(Get("NextCmd.Picture"), "111");
  h.Do("down TestForm.NextCmd");
  EXPECT_EQ(Get("NextCmd.Picture"), "111");
  form->OuterFrame.Visible = true;
  form->onNext = [this] { form->NextCmd.Picture = 117; };  // the face changes in the click
  h.Do("click TestForm.NextCmd\ndown TestForm.NextCmd");
  EXPECT_EQ(LogAnd("NextCmd.Picture"), "next 118");
  form->NextCmd.Picture = 9999;  // no picture of the table
  h.Do("down TestForm.NextCmd\nup TestForm.NextCmd");
  EXPECT_EQ(LogAnd("NextCmd.Picture"), "9999");
}

class TimerTest : public ControlsTest {
 protected:
  TimerTest() {
    form->onTick = [this] { ticks += std::to_string((h.loop.Now() - start) / 1ms) + " "; };
  }

  /// The moments of the ticks within that many milliseconds, counted from the start of the test.
  std::string TicksWithin(int milliseconds) {
    ticks.clear();
    h.Do("wait " + std::to_string(milliseconds));
    return ticks;
  }

  Time start = h.loop.Now();
  std::string ticks;
};

TEST_F(TimerTest, TicksAtFullIntervalsFromTheMomentItWasEnabled) {
  EXPECT_EQ(TicksWithin(1000), "");
  form->TickTmr.Enabled = true;
  EXPECT_EQ(TicksWithin(350), "1100 1200 1300 ");  // a tick leaves it enabled
  form->TickTmr.Enabled = true;                    // anew, though it runs
  EXPECT_EQ(TicksWithin(110), "1450 ");
  form->TickTmr.Interval = 40;
  EXPECT_EQ(TicksWithin(100), "1500 1540 ");
  form->TickTmr.Interval = 0;
  form->TickTmr.Enabled = true;
  EXPECT_EQ(TicksWithin(1000) + Get("TickTmr.Enabled"), "True");
  form->TickTmr.Interval = 100;
  EXPECT_EQ(TicksWithin(100), "2660 ");
  form->TickTmr.Enabled = false;
  EXPECT_EQ(TicksWithin(1000), "");
  EXPECT_EQ(FaultOf([this] { form->TickTmr.Interval = -1; }), 5);
}

TEST_F(TimerTest, KeepsItsRasterAndDoesNotMakeUpForMissedTicks) {
  form->TickTmr.Enabled = true;
  h.Do("wait 150");
  h.loop.Freeze(start + 230ms);
  EXPECT_EQ(TicksWithin(100), "230 300 ");
  h.loop.Freeze(start + 2050ms);
  EXPECT_LE(TicksWithin(30).size(), std::string("2050 2050 ").size()) << ticks;
  h.Do("wait 100");
  EXPECT_EQ(TicksWithin(1000).size(), 10 * std::string("3000 ").size()) << ticks;
}

TEST_F(TimerTest, ItsHandlerMayUnloadItsForm) {
  form->onTick = [this] {
    h.app.forms.Unload(*form);
    ticks += form->Name();  // still a valid object
  };
  form->TickTmr.Enabled = true;
  EXPECT_EQ(TicksWithin(1000), "TestForm");
}

}  // namespace
}  // namespace vk32
