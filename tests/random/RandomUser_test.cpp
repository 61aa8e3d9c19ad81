// A user who does anything at any time, on ports that misbehave, in virtual time. VK32_RANDOM_SECONDS tells how long,
// VK32_RANDOM_SEED where to begin; a failure tells the seed that repeats it.
#include <cstdlib>
#include <map>
#include <random>
#include <set>

#include "core/Convert.h"
#include "forms/FieldNames.h"
#include "forms/Tables.h"
#include "link/Conversation.h"
#include "platform/SystemEventLoop.h"
#include "sim/GatewayKind.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

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
  void Remind() {
    // Before a written configuration is read back, the conversation that has written it asks again.
    if (app.conversation == nullptr || app.conversation->exchange.Done() == 0) stored = 0;
    gateway.PressConfigure();
  }
  bool Gone() const override { return pulled || GatewayDevice::Gone(); }

  const App& app;
  const int port;
  int stored = 0;  // configurations, since the reminder of the conversation
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
      for (unsigned n = Pick(3); n > 0; --n) h.loop.StartTimer(Pick(6000) * 1ms, [this] { Act(); });
      Act();
      Look();
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
  unsigned Pick(unsigned count) { return static_cast<unsigned>(random_() % count); }
  template <class T>
  T OneOf(const std::vector<T>& choices) {
    return choices[Pick(static_cast<unsigned>(choices.size()))];
  }
  bool Ended() const { return h.app.forms.dispatcher.Ended(); }

  void Act() {
    using User = RandomUser;
    static constexpr std::pair<unsigned, void (User::*)()> deeds[] = {
        {2, &User::Pull},        {4, &User::PlugSomewhere}, {50, &User::PressButton}, {25, &User::GoOn},
        {10, &User::TurnList},   {10, &User::Type},         {6, &User::Tick},         {10, &User::ChoosePort},
        {3, &User::CloseWindow}, {6, &User::UseTable}};
    unsigned at = Pick(126);
    const bool taken = Ended() || (at >= 6 && h.app.forms.IsAsking());  // by a box: all acts but those on the cables
    for (const auto& [weight, does] : deeds) {
      if (at < weight) return taken ? void() : (this->*does)();
      at -= weight;
    }
  }

  /// The part of a place that a frame shows.
  static Place In(const Place& frame, const Place& place) {
    const int left = std::max(frame.left, place.left), top = std::max(frame.top, place.top),
              right = std::min(frame.left + frame.width, place.left + place.width),
              bottom = std::min(frame.top + frame.height, place.top + place.height);
    return {left, top, std::max(right - left, 0), std::max(bottom - top, 0)};
  }
  /// Whatever goes on: nothing that can be used lies over another or leaves its form, and what scrolls does by pages.
  void Look() {
    for (const auto& form : h.app.forms.Loaded()) {
      std::vector<std::pair<Place, Control*>> seen;
      for (Control* control : form->Controls()) {
        using Kind = Control::Kind;
        static const std::set<Kind> used{Kind::TextBox,      Kind::ComboBox,    Kind::CheckBox,
                                         Kind::OptionButton, Kind::ImageButton, Kind::CommandButton};
        const auto* bar = dynamic_cast<const VScrollBar*>(control);
        EXPECT_TRUE(!bar || bar->Max == 0 || bar->LargeChange > bar->SmallChange) << Path(*control);
        if (!used.contains(control->GetKind()) || !control->Shown()) continue;
        Place place = PlaceOf(*control);
        EXPECT_EQ(place.left % 15 + place.top % 15, 0) << Path(*control);  // between two pixels
        for (const Frame* frame = control->Parent(); frame; frame = frame->Parent()) place = In(PlaceOf(*frame), place);
        if (place.width * place.height == 0) continue;
        const Place inForm = In({0, 0, form->Width, form->Height}, place);
        EXPECT_TRUE(inForm.width == place.width && inForm.height == place.height) << Path(*control);
        for (const auto& [other, what] : seen) {
          const Place both = In(other, place);
          EXPECT_EQ(both.width * both.height, 0) << Path(*control) << " lies over " << Path(*what);
        }
        seen.emplace_back(place, control);
      }
    }
  }

  /// A control of that kind that can be reached; nullptr if there is none.
  template <class Kind>
  Kind* Find() {
    std::vector<Kind*> found;
    for (const auto& form : h.app.forms.Loaded()) {
      for (Control* control : form->Controls()) {
        if (auto* kind = dynamic_cast<Kind*>(control); kind && kind->Shown()) found.push_back(kind);
      }
    }
    return found.empty() ? nullptr : OneOf(found);
  }
  static std::string Path(Control& control) { return control.OwnerForm().Name() + ("." + control.FullName()); }
  void Use(const std::string& name, const std::function<void()>& act) {
    under_.push_back(name);
    act();
    under_.pop_back();
  }
  void Press(Control* button) {
    // Leaving ends the story: seldom.
    if (!button || (button->Name() == std::string("ExitCmd") && Pick(20) != 0)) return;
    Use(Path(*button), [&] { button->Click(); });
  }

  void UseTable() {
    static const std::vector<TableKey> keys{TableKey::Down, TableKey::End, TableKey::Enter, TableKey::Delete};
    if (auto* table = Find<RowTable>()) Use(Path(*table), [&] { table->Navigate(OneOf(keys)); });
    if (auto* field = Find<TextBox>())
      Use(Path(*field), [&] { field->Paste(Pick(2) == 0 ? "1\t2\n" : "1\t1.1.1.1\n"); });
  }
  void PressButton() { Press(Pick(3) == 0 ? static_cast<Control*>(Find<CommandButton>()) : Find<ImageButton>()); }
  void GoOn() {
    for (const auto& form : h.app.forms.Loaded()) {
      if (auto* next = form->Find("NextCmd")) return Press(next);
    }
  }
  void TurnList() {
    auto* list = Find<ComboBox>();
    if (list && !list->Entries().empty()) Use(Path(*list), [&] { list->Pick(OneOf(list->Entries())); });
  }
  void Type() {
    auto* box = Find<TextBox>();
    if (!box) return;
    const std::string text =
        OneOf<std::string>({"10.0.0.1", "", "1", "255", "99999", "-5", "abc", "40001", firmware_.Path()});
    Use(Path(*box),
        [&] { box->lines == TextBox::Lines::Many ? box->Key(text.empty() ? '2' : text[0]) : box->Type(text); });
  }
  void Tick() { Press(Pick(2) == 0 ? static_cast<Control*>(Find<CheckBox>()) : Find<OptionButton>()); }
  void ChoosePort() {
    Form* menu = h.app.forms.Find("ProductMenu");
    if (!menu) return;
    auto& list = menu->Get<ComboBox>("COMCbo");
    Use(Path(list), [&] { list.Pick(OneOf<std::string>({"None", "COM1", "COM1", "COM2", "COM3", "COM9"})); });
  }
  void CloseWindow() {
    if (h.app.forms.Loaded().empty()) return;
    const auto form = OneOf(h.app.forms.Loaded());
    if (form->Name() == std::string("MainMenu") && Pick(10) != 0) return;
    Use(form->Name() + std::string(".close"), [&] { form->UserCloses(); });
  }
  void Pull() { lines_[1 + static_cast<int>(Pick(Ports))].back()->pulled = true; }
  void PlugSomewhere() { PlugIn(1 + static_cast<int>(Pick(Ports))); }

  void PlugIn(int port) {
    if (h.app.comm.IsOpen(port)) return;
    const auto count = [this](unsigned below) { return static_cast<int>(Pick(below)); };
    const auto how = Pick(5) == 0 ? sim::Misbehaviour()
                                  : OneOf<sim::Misbehaviour>({{.silent = true},
                                                              {.late = count(LatestAnswer) * 1ms},
                                                              {.junk = true},
                                                              {.badChecksum = true},
                                                              {.shortBy = count(70)},
                                                              {.hold = count(LatestAnswer) * 1ms},
                                                              {.deafBlock = count(44)},
                                                              {.infoPieces = count(5)},
                                                              {.unplugAfter = count(2000)},
                                                              {.holdForGood = true},
                                                              {.noReady = Pick(2) == 0, .noBurn = true}});
    const auto kinds = sim::GatewayKinds();
    const auto kind = kinds[Pick(static_cast<unsigned>(kinds.size()))].name;
    lines_[port].push_back(std::make_unique<Line>(h.app, port, kind, how, Pick(2) == 0));
    h.driver.Plug("COM" + Str(port), lines_[port].back().get());
  }

  void SeeBox(const MessageBoxRequest& box) {
    const Answer answers[] = {Answer::Yes, Answer::No, Answer::Save, Answer::Discard, Answer::Cancel};
    if (box.buttons == MessageButtons::YesNo) h.screen.QueueAnswer(answers[Pick(2)]);
    if (box.buttons == MessageButtons::SaveDiscardCancel) h.screen.QueueAnswer(answers[2 + Pick(3)]);
    if (box.text.starts_with("Press the Configure button")) {
      for (auto& [port, lines] : lines_) lines.back()->Remind();
    }
    if (box.title == "Success!") {
      const int port = h.app.globals.ComPortNumber;
      EXPECT_TRUE(lines_.contains(port) && lines_[port].back()->stored > 0) << box.text;
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
    for (int port = 1; port <= Ports; ++port) EXPECT_FALSE(port != but && h.app.comm.IsOpen(port)) << port;
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
  std::map<int, std::vector<std::unique_ptr<Line>>> lines_;  // by port; the last one is plugged in
  std::vector<std::string> under_;                           // the acts that are under way
};

TEST(RandomUser, FindsNoFault) {
  int seed = Setting("VK32_RANDOM_SEED", 1);
  const Time end = MonotonicNow() + std::chrono::seconds(Setting("VK32_RANDOM_SECONDS", 1));
  for (; MonotonicNow() < end && !HasFailure(); ++seed) {
    SCOPED_TRACE("VK32_RANDOM_SEED=" + std::to_string(seed));
    if (std::getenv("VK32_RANDOM_TRACE") != nullptr) std::cerr << seed << std::endl;  // one that never ends
    RandomUser(static_cast<unsigned>(seed)).Live();
  }
  std::cout << "the next seed is " << seed << "\n";
}

}  // namespace
}  // namespace vk32
