// Loading, showing and unloading of forms, and the door through which acts and ticks enter.
#include "forms/Forms.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "forms/FaultOf.h"
#include "support/EveryControl.h"
#include "support/VirtualEventLoop.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

/// Notes what the screen is told.
class RecordingScreen : public Screen {
 public:
  void FormLoaded(Form& form) override {
    Note("loaded ", form.Name() + dynamic_cast<EveryControl&>(form).TakeLog());  // before its load handler has run
  }
  void FormShown(Form& form) override { Note("shown ", form.Name()); }
  void FormHidden(Form& form) override { Note("hidden ", form.Name()); }
  void FormUnloaded(Form& form) override { Note("unloaded ", form.Name()); }
  Answer Ask(const MessageBoxRequest&) override { return whileAsking(), Answer::OK; }
  std::optional<std::string> AskFile(const FileDialogRequest&) override { return whileAsking(), std::nullopt; }
  void OpenWebSite(const std::string&) override {}
  void ProgramFaulted(int number, const std::string& words) override {
    Note("fault ", std::to_string(number) + " " + words);
  }
  void ProgramEnded() override { Note("ended", ""); }

  void Note(const std::string& what, const std::string& name) { log += what + name + "\n"; }
  std::string TakeLog() { return std::exchange(log, {}); }

  std::string log;
  std::function<void()> whileAsking;
};

/// Forms A and B on a screen of their own.
class Program {
 public:
  Program() {
    for (const char* name : {"A", "B"}) {
      forms.Register(name, [this, name] { return std::make_shared<EveryControl>(forms, name); });
    }
    forms.dispatcher.AtEnd([this] { screen.Note("ports closed", ""); });
  }

  EveryControl& Show(const char* name) { return dynamic_cast<EveryControl&>(forms.Show(name)); }
  /// Shows a form with a button that does this, and clicks it. Returns what the screen is told of it.
  std::string Click(const char* name, const std::function<void()>& act) {
    EveryControl& form = Show(name);
    form.NextCmd.OnClick = Handler([&] { act(); });
    screen.TakeLog();
    form.NextCmd.Click();
    return screen.TakeLog();
  }

  VirtualEventLoop loop;
  RecordingScreen screen;
  Forms forms{loop, screen};
};

TEST(Forms, AFormIsLoadedOnceAndShownOnTop) {
  Program p;
  Form& a = p.forms.Load("A");
  EXPECT_FALSE(a.Visible);
  EXPECT_EQ(p.screen.TakeLog(), "loaded A\n");
  EXPECT_EQ(&p.Show("A"), &a);
  p.Show("B");
  EXPECT_EQ(p.screen.TakeLog(), "shown A\nloaded B\nshown B\n");
  EXPECT_STREQ(p.forms.Loaded().back()->Name(), "B");
  EXPECT_EQ(p.Show("A").TakeLog(), "load ");
  EXPECT_STREQ(p.forms.Loaded().back()->Name(), "A");
  a.Visible = false;
  p.forms.Unload("A");
  p.forms.Unload("A");
  EXPECT_EQ(p.screen.TakeLog(), "shown A\nhidden A\nunloaded A\n");
  EXPECT_EQ(p.forms.Find("A"), nullptr);
  EXPECT_EQ(p.Show("A").TakeLog(), "load ");  // a new one
}

TEST(Forms, AFormThatIsUnloadedInsideItsHandlerLivesUntilThatReturns) {
  Program p;
  p.Show("A");
  const std::weak_ptr<Form> form = p.forms.Loaded().front();
  const std::string told = p.Click("A", [&] {
    Form& self = *form.lock();
    p.forms.Unload(self), p.forms.Unload(self);
    self.Visible = true;  // shows nothing any more
    EXPECT_EQ(p.screen.TakeLog(), "unloaded A\n");
    EXPECT_EQ(p.forms.Find("A"), nullptr);
    EXPECT_FALSE(self.IsLoaded());
    p.Click("B", [] {});
    EXPECT_FALSE(form.expired());  // the act within the act is over, this one isn't
  });
  EXPECT_EQ(told, "");
  EXPECT_TRUE(form.expired());
}

TEST(Forms, AtTheEndTheTopmostGoesFirst) {
  VirtualEventLoop loop;
  RecordingScreen screen;
  auto forms = std::make_unique<Forms>(loop, screen);
  for (const char* name : {"A", "B"}) {
    forms->Register(name, [&forms, name] { return std::make_shared<EveryControl>(*forms, name); });
    forms->Load(name);
  }
  screen.TakeLog();
  forms.reset();
  EXPECT_EQ(screen.log, "unloaded B\nunloaded A\n");
}

TEST(Forms, WhatIsNotThereFaults) {
  Program p;
  EveryControl& form = p.Show("A");
  const std::pair<int, std::vector<std::function<void()>>> rows[] = {
      {5,
       {[&] { p.forms.Load("Nowhere"); }, [&] { form.Get<TextBox>("Nothing"); }, [&] { form.Get<Label>("NameTxt"); },
        [&] { form.Get<TextBox>("RowTxt"); }, [&] { form.Get<TextBox>("RowTxt", 5); }}},
      {9, {[&] { form.RowTxt[1].Visible = true; }, [&] { form.RowTxt[5].Visible = true; }}}};
  for (const auto& [fault, looks] : rows) {
    for (const auto& look : looks) EXPECT_EQ(FaultOf(look), fault) << &look - &looks[0];
  }
  EXPECT_EQ(&form.Get<TextBox>("RowTxt", 4), &form.RowTxt[4]);
  EXPECT_EQ(form.RowTxt[2].FullName(), "RowTxt(2)");
}

TEST(Dispatcher, AFaultThatNobodyCaughtIsToldAndEndsTheProgram) {
  const std::pair<std::function<void()>, std::string> rows[] = {
      {[] { throw RuntimeFault(RuntimeFault::Overflow); }, "fault 6 Overflow\n"},
      {[] { throw RuntimeFault(RuntimeFault::InvalidCall, "Why."); }, "fault 5 Why.\n"},
      {[] { throw std::bad_alloc(); }, "fault 7 Out of memory\n"},
      {[] { throw std::runtime_error("Surprise."); }, "fault 5 Surprise.\n"}};
  for (const auto& [act, told] : rows) {
    Program p;
    EveryControl& form = p.Show("A");
    form.TickTmr.Enabled = true;
    EXPECT_EQ(p.Click("A", act), "ports closed\n" + told + "ended\n");
    form.TakeLog();
    form.AddCmd.Click();  // nothing gets through any more, no tick either
    p.loop.Wait(-1);
    p.loop.RunDue();
    EXPECT_EQ(form.TakeLog() + p.screen.log, "") << told;
  }
}

TEST(Dispatcher, TheEndUnwindsWhateverWaitsAndNoTrapHoldsItUp) {
  using Act = std::function<void(Program&)>;
  const Act waits[] = {[](Program& p) { p.forms.dispatcher.Idle(-1), p.forms.dispatcher.DoEvents(); },
                       [](Program& p) { p.screen.whileAsking(), p.forms.dispatcher.Idle(-1); },
                       [](Program& p) { p.forms.MsgBox("", MessageIcon::None); },
                       [](Program& p) { p.forms.AskYesNo("", false); }, [](Program& p) { p.forms.AskFile({}); }};
  const std::pair<Act, std::string> ends[] = {{[](Program& p) { p.forms.dispatcher.End(); }, "ports closed\nended\n"},
                                              {[](Program&) { throw RuntimeFault(RuntimeFault::DeviceIOError); },
                                               "ports closed\nfault 57 Device I/O error\nended\n"}};
  for (const Act& wait : waits) {
    for (const auto& [end, told] : ends) {
      Program p;
      EveryControl& b = p.Show("B");
      b.NextCmd.OnClick = Handler([&p, &act = end] { act(p); });
      p.screen.whileAsking = [&] { b.NextCmd.Click(); };
      p.loop.StartTimer(100ms, p.screen.whileAsking);
      bool unwound = false;
      const auto waiting = [&] {
        const std::shared_ptr<void> guard(nullptr, [&](void*) { unwound = true; });
        try {
          wait(p);
          ADD_FAILURE() << "went on";
        } catch (const std::exception&) {
          ADD_FAILURE() << "held up";
        }
      };
      EXPECT_EQ(p.Click("A", waiting), told) << &wait - waits;
      EXPECT_TRUE(unwound);
    }
  }
}

TEST(Dispatcher, TheProgramEndsWhenTheLastWindowHasGone) {
  Program p;
  EveryControl& a = p.Show("A");
  p.Show("B");
  p.screen.TakeLog();
  a.CloseEnabled = false;
  a.UserCloses();
  EXPECT_EQ(p.screen.TakeLog(), "");
  a.CloseEnabled = true;
  a.UserCloses();
  EXPECT_EQ(p.screen.TakeLog(), "unloaded A\n");
  p.forms.Load("A").UserCloses();  // it does not show
  p.forms.Find("B")->UserCloses();
  EXPECT_EQ(p.screen.TakeLog(), "loaded A\nunloaded B\nports closed\nended\n");

  Program other;  // one that goes from window to window by itself
  const auto goOn = [&] {
    other.Click("B", [&] { other.forms.Unload("A"), other.forms.Unload("B"); });
    other.Show("B");
  };
  EXPECT_EQ(other.Click("A", goOn), "loaded B\nshown B\n");
  EXPECT_EQ(other.Click("B", [&] { other.Show("B").Visible = false; }), "shown B\nhidden B\nports closed\nended\n");
}

}  // namespace
}  // namespace vk32
