// Loading, showing and unloading of forms, and the door through which acts and ticks enter.
#include "forms/Forms.h"

#include <gtest/gtest.h>

#include "forms/FaultOf.h"
#include "support/EveryControl.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

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
  EXPECT_EQ(&h.Show("A"), &a);
  h.Show("B");
  EXPECT_EQ(h.Do("forms"), "form A visible\nform B visible\n");
  EXPECT_EQ(h.Show("A").TakeLog(), "load ");
  EXPECT_EQ(h.Do("forms"), "form B visible\nform A visible\n");
  h.forms.Unload("A"), h.forms.Unload("A");
  EXPECT_EQ(h.Do("forms"), "form B visible\n");
  EXPECT_EQ(h.Show("A").TakeLog(), "load ");  // a new one
  std::string gone;
  h.screen.onUnload = [&](const Form& form) { gone += form.Name(); };
  h.forms.UnloadAll();
  EXPECT_EQ(gone, "AB");
}

TEST(Forms, AFormThatIsUnloadedInsideItsHandlerLivesUntilThatReturns) {
  TwoForms h;
  EveryControl& a = h.Show("A");
  const std::weak_ptr<Form> form = h.forms.Loaded().front();
  h.Click("A", [&] {
    h.forms.Unload(a);
    a.Visible = true;  // shows nothing any more
    h.Click("B", [] {});
    EXPECT_EQ(h.Do("forms"), "form B visible\n");
    EXPECT_FALSE(form.expired());  // the act within the act is over, this one isn't
  });
  EXPECT_TRUE(form.expired());
}

TEST(Forms, WhatIsNotThereFaults) {
  TwoForms h;
  EveryControl& form = h.Show("A");
  const std::pair<int, std::function<void()>> rows[] = {
      {5, [&] { h.forms.Load("Nowhere"); }},        {5, [&] { form.Get<TextBox>("Nothing"); }},
      {5, [&] { form.Get<Label>("NameTxt"); }},     {5, [&] { form.Get<TextBox>("RowTxt"); }},
      {5, [&] { form.Get<TextBox>("RowTxt", 5); }}, {9, [&] { form.RowTxt[1].Visible = true; }},
      {9, [&] { form.RowTxt[5].Visible = true; }}};
  for (const auto& [fault, look] : rows) EXPECT_EQ(FaultOf(look), fault);
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
      EXPECT_TRUE(printed.starts_with(told)) << &wait - waits << printed;
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
  // One that goes from window to window by itself.
  EXPECT_EQ(h.Click("A", [&] { h.Click("B", [&] { h.forms.UnloadAll(); }), h.Show("B"); }), "");
  EXPECT_EQ(h.Click("B", [&] { h.Show("B").Visible = false; }), "ended\n");
}

}  // namespace
}  // namespace vk32
