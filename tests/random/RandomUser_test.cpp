// A user who does anything at any time, on ports that misbehave, in virtual time. VK32_RANDOM_SECONDS tells how long,
// VK32_RANDOM_SEED where to begin; a failure tells the seed that repeats it.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <random>

#include "core/Convert.h"
#include "link/Conversation.h"
#include "platform/PosixEventLoop.h"
#include "sim/GatewayKind.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

int Setting(const char* name, int otherwise) {
  const char* text = std::getenv(name);
  return text != nullptr ? std::atoi(text) : otherwise;
}

/// A gateway on a port, of which it is known what has come to it.
struct Line : GatewayDevice {
  Line(const App& app_, int port_, std::string_view kind, sim::Misbehaviour how, bool pace)
      : GatewayDevice(kind, how, pace), app(app_), port(port_) {
    gateway.OnStored = [this](const std::string&) { ++stored; };
  }
  void FromHost(std::string_view bytes, Time now) override {
    EXPECT_TRUE(app.conversation != nullptr && app.conversation->port == port) << "bytes that are no one's";
    EXPECT_EQ(app.globals.ComPortText, "COM" + Str(port)) << "bytes for a port that does not show";
    GatewayDevice::FromHost(bytes, now);
  }
  bool Gone() const override { return pulled || GatewayDevice::Gone(); }

  const App& app;
  const int port;
  int stored = 0;  // configurations, since the last reminder
  bool pulled = false;
};

class RandomUser {
 public:
  explicit RandomUser(unsigned seed) : random_(seed) {
    firmware_.Fill(":" + Bytes(Pick(25000), 'f'));
    h.screen.onBox = [this](const MessageBoxRequest& box) { SeeBox(box); };
    h.screen.onFileDialog = [this] {
      h.screen.QueueFile(OneOf<std::optional<std::string>>({{}, firmware_.Path(), file_.Path(), "/nowhere/x.cfg"}));
    };
    h.screen.onUnload = [this](const Form& form) { SeeUnload(form); };
    for (int port = 1; port <= Ports; ++port) PlugIn(port);
    h.Do("click Splash");
  }

  void Live() {
    for (int i = 0; i < 60 && !Ended(); ++i) {
      for (unsigned n = Pick(3); n > 0; --n) {
        h.loop.StartTimer(Pick(6000) * 1ms, [this] { Act(); });
      }
      Act();
      if (Pick(3) == 0) Wait(Pick(8000) * 1ms);
    }
    Wait(100s);
    ExpectPortsClosed(h.app.conversation != nullptr ? h.app.conversation->port : 0);
    if (!Ended()) h.app.forms.dispatcher.Dispatch([this] { h.app.forms.dispatcher.End(); });
    ExpectPortsClosed(0);
    EXPECT_FALSE(h.screen.Faulted());
  }

 private:
  static constexpr int Ports = 3;
  static constexpr unsigned LatestAnswer = 2400;  // ms; one that comes later can't be told from the next one's
  struct Deed {
    const char* words;
    unsigned weight;
    void (RandomUser::*does)();
  };
  unsigned Pick(unsigned count) { return static_cast<unsigned>(random_() % count); }
  template <class T>
  T OneOf(const std::vector<T>& choices) {
    return choices[Pick(static_cast<unsigned>(choices.size()))];
  }
  bool Ended() const { return h.app.forms.dispatcher.Ended(); }

  void Act() {
    static constexpr Deed deeds[] = {{"presses a button", 50, &RandomUser::PressButton},
                                     {"goes on", 25, &RandomUser::GoOn},
                                     {"turns a list", 10, &RandomUser::TurnList},
                                     {"types", 10, &RandomUser::Type},
                                     {"ticks", 6, &RandomUser::Tick},
                                     {"chooses a port", 10, &RandomUser::ChoosePort},
                                     {"closes a window", 3, &RandomUser::CloseWindow},
                                     {"pulls a plug", 2, &RandomUser::Pull},
                                     {"plugs in", 4, &RandomUser::PlugSomewhere}};
    unsigned at = Pick(120);
    for (const Deed& deed : deeds) {
      if (at < deed.weight) return Do(deed);
      at -= deed.weight;
    }
  }
  void Do(const Deed& deed) {
    // A box takes all acts but those on the cables.
    const bool cable = deed.does == &RandomUser::Pull || deed.does == &RandomUser::PlugSomewhere;
    if (!Ended() && (cable || !h.app.forms.IsAsking())) (this->*deed.does)();
  }

  /// A control of that kind that can be reached; nullptr if there is none.
  template <class Kind>
  Kind* Find() {
    std::vector<Kind*> found;
    for (const auto& form : h.app.forms.Loaded()) {
      for (Control* control : form->Controls()) {
        auto* kind = dynamic_cast<Kind*>(control);
        if (kind && control->Shown()) found.push_back(kind);
      }
    }
    return found.empty() ? nullptr : OneOf(found);
  }
  void Use(Control& control, const std::function<void()>& act) {
    under_.push_back(std::string(control.OwnerForm().Name()) + "." + control.FullName());
    act();
    under_.pop_back();
  }
  void Press(Control& button) {
    // Leaving ends the story: seldom.
    if (button.Name() == std::string("ExitCmd") && Pick(20) != 0) return;
    Use(button, [&] { button.Click(); });
  }

  void PressButton() {
    if (Pick(3) == 0) {
      if (auto* button = Find<CommandButton>()) Press(*button);
    } else if (auto* button = Find<ImageButton>()) {
      Press(*button);
    }
  }
  void GoOn() {
    for (const auto& form : h.app.forms.Loaded()) {
      if (auto* next = form->Find("NextCmd")) return Press(*next);
    }
  }
  void TurnList() {
    auto* list = Find<ComboBox>();
    if (list && !list->Entries().empty()) Use(*list, [&] { list->Pick(OneOf(list->Entries())); });
  }
  void Type() {
    auto* box = Find<TextBox>();
    if (!box) return;
    const std::string text =
        OneOf<std::string>({"10.0.0.1", "", "1", "255", "99999", "-5", "abc", "40001", firmware_.Path()});
    Use(*box, [&] { box->lines == TextBox::Lines::Many ? box->Key(text.empty() ? '2' : text[0]) : box->Type(text); });
  }
  void Tick() {
    if (Pick(2) == 0) {
      if (auto* check = Find<CheckBox>()) Use(*check, [&] { check->Click(); });
    } else if (auto* option = Find<OptionButton>()) {
      Use(*option, [&] { option->Click(); });
    }
  }
  void ChoosePort() {
    Form* menu = h.app.forms.Find("ProductMenu");
    if (!menu) return;
    auto& list = menu->Get<ComboBox>("COMCbo");
    Use(list, [&] { list.Pick(OneOf<std::string>({"None", "COM1", "COM1", "COM2", "COM3", "COM9"})); });
  }
  void CloseWindow() {
    if (h.app.forms.Loaded().empty()) return;
    const auto form = OneOf(h.app.forms.Loaded());
    if (form->Name() == std::string("MainMenu") && Pick(10) != 0) return;
    under_.push_back(form->Name() + std::string(".close"));
    form->UserCloses();
    under_.pop_back();
  }
  void Pull() { lines_[Pick(Ports)].back()->pulled = true; }
  void PlugSomewhere() { PlugIn(1 + static_cast<int>(Pick(Ports))); }

  void PlugIn(int port) {
    if (h.app.comm.IsOpen(port)) return;
    sim::Misbehaviour how;
    switch (Pick(14)) {
      case 0: how.silent = true; break;
      case 1: how.late = Pick(LatestAnswer) * 1ms; break;
      case 2: how.junk = true; break;
      case 3: how.badChecksum = true; break;
      case 4: how.shortBy = static_cast<int>(Pick(70)); break;
      case 5: how.hold = Pick(LatestAnswer) * 1ms; break;
      case 6: how.deafBlock = static_cast<int>(Pick(44)); break;
      case 7: how.infoPieces = static_cast<int>(Pick(5)); break;
      case 8: how.unplugAfter = static_cast<int>(Pick(2000)); break;
      case 9: how.holdForGood = true; break;
      case 10: how.noReady = Pick(2) == 0, how.noBurn = true; break;
      default: break;
    }
    const auto kinds = sim::GatewayKinds();
    auto& lines = lines_[static_cast<std::size_t>(port - 1)];
    lines.push_back(
        std::make_unique<Line>(h.app, port, kinds[Pick(static_cast<unsigned>(kinds.size()))].name, how, Pick(2) == 0));
    h.driver.Plug("COM" + Str(port), lines.back().get());
  }

  void SeeBox(const MessageBoxRequest& box) {
    if (box.buttons == MessageButtons::YesNo) h.screen.QueueAnswer(Pick(2) == 0 ? Answer::Yes : Answer::No);
    if (box.text.starts_with("Press the Configure button")) {
      for (auto& lines : lines_) {
        lines.back()->stored = 0;
        lines.back()->gateway.PressConfigure();
      }
    }
    if (box.title == "Success!") {
      const int port = h.app.globals.ComPortNumber;
      ASSERT_TRUE(port >= 1 && port <= Ports);
      const Line& line = *lines_[static_cast<std::size_t>(port - 1)].back();
      EXPECT_GT(line.stored, 0) << box.text;
    }
    if (Pick(6) == 0) Wait(Pick(5000) * 1ms);
  }
  void SeeUnload(const Form& form) {
    const std::string name = form.Name();
    if (!name.starts_with("Configuration_") || Ended()) return;
    const bool meant = std::any_of(under_.begin(), under_.end(), [&](const std::string& act) {
      return act == name + ".CancelCmd" || act == name + ".close" || act == name + ".NextCmd" ||
             act.starts_with("MainMenu.");
    });
    EXPECT_TRUE(meant) << name << " went by itself";
  }
  void ExpectPortsClosed(int but) {
    for (int port = 1; port <= Ports; ++port) {
      EXPECT_FALSE(port != but && h.app.comm.IsOpen(port)) << port;
    }
  }
  void Wait(Time span) {
    bool over = false;
    const Alarm alarm(h.loop, span, [&] { over = true; });
    while (!over && !Ended()) {
      h.loop.Wait(-1);
      h.loop.RunDue();
    }
  }

  std::mt19937 random_;
  TemporaryFile firmware_{"new.rom"}, file_{"plant.cfg"};
  Harness h;
  std::array<std::vector<std::unique_ptr<Line>>, Ports> lines_;
  std::vector<std::string> under_;  // the acts that are under way
};

TEST(RandomUser, FindsNoFault) {
  auto seed = static_cast<unsigned>(Setting("VK32_RANDOM_SEED", 1));
  const Time end = MonotonicNow() + std::chrono::seconds(Setting("VK32_RANDOM_SECONDS", 1));
  unsigned lives = 0;
  for (; MonotonicNow() < end && !HasFailure(); ++seed, ++lives) {
    SCOPED_TRACE("VK32_RANDOM_SEED=" + std::to_string(seed));
    if (std::getenv("VK32_RANDOM_TRACE") != nullptr) std::cerr << seed << std::endl;  // one that never ends
    RandomUser(seed).Live();
  }
  std::cout << lives << " lives\n";
}

}  // namespace
}  // namespace vk32
