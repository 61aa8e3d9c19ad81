// The targets for random bytes.
#include "fuzz/Targets.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>

#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

/// Says the same bytes in answer to whatever it is sent, all at once or in pieces.
class RandomDevice : public FakeDevice {
 public:
  explicit RandomDevice(std::string_view data) : data_(data) {}

  void FromHost(std::string_view, Time now) override { due_ = now + 1ms; }
  Bytes ToHost(Time now) override {
    if (!due_ || *due_ > now) return {};
    due_.reset();
    // The first byte of a piece tells the length of the piece and whether the device waits to be asked for the next.
    if (data_.empty()) return {};
    const auto length = static_cast<unsigned char>(data_[0]);
    const Bytes piece(data_.substr(1, length));
    data_.remove_prefix(std::min(data_.size(), piece.size() + 1));
    if (length % 2 == 0) due_ = now + 5ms;
    return piece;
  }
  std::optional<Time> NextDue() const override { return due_; }

 private:
  std::string_view data_;
  std::optional<Time> due_;
};

/// A product with a wizard, or a model of it: how it is reached from the main menu, and its form.
struct Wizard {
  const char *clicks, *form;
};
constexpr Wizard Wizards[] = {
    {"RB2000Cmd", "Configuration_RB2000"},
    {"RB3000Cmd", "Configuration_RB3000"},
    {"RBCardCmd", "Configuration_RBCard"},
    {"VK5300Cmd", "Configuration_VK5300"},
    {"VKRTXCmd\nclick MainMenu.ABEthAsciiDf1ModelCmd", "Configuration_VKRTX"},
    {"VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd", "Configuration_VKRTX"},
};

void ConfigurationFile(std::string_view data) {
  static const TemporaryFile file("random.cfg");
  file.Fill(data);
  for (const Wizard& wizard : Wizards) {
    Harness h;
    h.GoTo(wizard.clicks);
    const std::string form = wizard.form;
    h.Do("click ProductMenu.ConfigureCmd\ncheck " + form + ".OpenConfigChk on\nfile " + file.Path() + "\nclick " +
         form + ".NextCmd");
    if (h.app.forms.dispatcher.Ended()) std::abort();
  }
}

void UploadReply(std::string_view data) {
  for (const Wizard& wizard : Wizards) {
    RandomDevice device(data);
    Harness h;
    h.GoTo(wizard.clicks, &device);
    const std::string form = wizard.form;
    h.Do("click ProductMenu.ConfigureCmd\nclick " + form + ".UploadCmd");
    if (h.app.forms.dispatcher.Ended()) std::abort();
    // What was read is walked through, and sent and kept.
    for (int page = 0; page < 10; ++page) h.Do("click " + form + ".NextCmd");
    if (h.app.forms.dispatcher.Ended()) std::abort();
  }
}

void InformationRecord(std::string_view data) {
  // A piece that is too short for its fields ends the program by its fault.
  for (const char* const clicks :
       {"click MainMenu.VK5300Cmd", "click MainMenu.VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd"}) {
    RandomDevice device(data);
    Harness h;
    h.Do("click Splash");
    h.Do(clicks);
    h.driver.Plug("COM3", &device);
    h.Do("select ProductMenu.COMCbo COM3");
    h.app.forms.dispatcher.Dispatch([&] { h.app.forms.Show("DeviceInfo"); });
    h.Do("controls DeviceInfo");
  }
}

void SettingsString(std::string_view data) {
  DeviceControlBlock dcb;
  if (ParseSettings(data, dcb) && (dcb.BaudRate <= 0 || dcb.ByteSize < 5 || dcb.ByteSize > 8)) std::abort();
}

void TerminalData(std::string_view data) {
  RandomDevice device(data);
  Harness h;
  h.GoTo("RB2000Cmd", &device);
  h.Do("click ProductMenu.OfflineCmd\nwait 200\nkeys OfflineMngr.Term \\x1B2y\nwait 200\nget OfflineMngr.Term.Text");
  if (h.app.forms.dispatcher.Ended()) std::abort();
}

void SimulatorInput(std::string_view data) {
  for (const sim::GatewayKind& kind : sim::GatewayKinds()) {
    GatewayDevice device(kind.name);
    Time now{0};
    for (const char byte : data) {
      now += 1ms;
      device.FromHost(std::string_view(&byte, 1), now);
      device.ToHost(now);
    }
    for (int step = 0; step < 1000 && device.NextDue(); ++step) device.ToHost(*device.NextDue());
  }
}

void ScriptLines(std::string_view data) {
  GatewayDevice device("RB2000");
  Harness h;
  h.GoTo("RB2000Cmd", &device);
  std::istringstream lines{std::string(data.substr(0, 4096))};
  for (std::string line; std::getline(lines, line) && !h.session.Finished();) {
    // Not onto the disk, and not for hours.
    const bool writes = line.starts_with("file");
    const bool waits = line.starts_with("wait") || line.starts_with("until") || line.starts_with("after");
    if (!writes && !(waits && line.size() > 40)) h.session.RunLine(line);
  }
}

}  // namespace

std::span<const FuzzTarget> FuzzTargets() {
  static constexpr FuzzTarget targets[] = {
      {"configuration-file", ConfigurationFile},
      {"upload-reply", UploadReply},
      {"information-record", InformationRecord},
      {"settings-string", SettingsString},
      {"terminal-data", TerminalData},
      {"simulator-input", SimulatorInput},
      {"script-lines", ScriptLines},
  };
  return targets;
}

}  // namespace vk32
