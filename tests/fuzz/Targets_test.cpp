// What comes from outside, as targets for random bytes: whatever they are, the program answers and comes to an end. As
// tests, with their seeds as they stand, cut short and with a byte changed; and as the entry of libFuzzer.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "models/WizardUser.h"

namespace vk32 {
namespace {

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

void ExpectAlive(const Harness& h) {
  if (h.app.forms.dispatcher.Ended()) std::abort();
}

/// What was taken over is walked through, and sent and kept.
void WalkOn(WizardUser& user) {
  for (int page = 0; page < 10; ++page) user.Use("click NextCmd");
  ExpectAlive(user);
}

void ConfigurationFile(std::string_view data) {
  for (const TestedModel& model : TestedModels) {
    WizardUser user(model.kind);
    user.file.Fill(data);
    const bool refused = !user.Use("open\ncheck OpenConfigChk off").empty();
    refused ? ExpectAlive(user) : WalkOn(user);  // what a refused one leaves behind is seen elsewhere
  }
}

void UploadReply(std::string_view data) {
  for (const TestedModel& model : TestedModels) {
    RandomDevice device(data);
    WizardUser user(model.kind, &device);
    user.Use("click UploadCmd");
    WalkOn(user);
  }
}

void InformationRecord(std::string_view data) {
  // A piece that is too short for its fields ends the program by its fault.
  for (const char* const clicks : {"VK5300Cmd", "VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd"}) {
    RandomDevice device(data);
    Harness h;
    h.GoTo(clicks, &device);
    h.app.forms.dispatcher.Dispatch([&] { h.app.forms.Show("DeviceInfo"); });
    h.Do("controls DeviceInfo");
  }
}

void TerminalData(std::string_view data) {
  RandomDevice device(data);
  Harness h;
  h.GoTo("RB2000Cmd", &device);
  h.Do("click ProductMenu.OfflineCmd\nwait 200\nkeys OfflineMngr.Term \\x1B2y\nwait 200\nget OfflineMngr.Term.Text");
  ExpectAlive(h);
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

struct {
  std::string name;  // also of the folder of its seeds
  void (*run)(std::string_view data);
} const Targets[] = {{"configuration-file", ConfigurationFile},
                     {"upload-reply", UploadReply},
                     {"script-lines", ScriptLines},
                     {"information-record", InformationRecord},
                     {"terminal-data", TerminalData}};

TEST(FuzzTargets, TheirSeedsComeToAnEnd) {
  for (const auto& target : Targets) {
    int seeds = 0;
    for (const auto& entry : std::filesystem::directory_iterator(VK32_SEEDS "/" + target.name)) {
      std::ifstream file(entry.path(), std::ios::binary);
      std::string seed{std::istreambuf_iterator<char>(file), {}};
      target.run(seed);
      target.run(seed.substr(0, seed.size() / 2));
      if (!seed.empty()) seed[seed.size() / 3] = static_cast<char>(seed[seed.size() / 3] ^ 0x5A);
      target.run(seed);
      ++seeds;
    }
    EXPECT_GT(seeds, 0) << target.name;
  }
}

}  // namespace
}  // namespace vk32

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  const char* const name = std::getenv("VK32_FUZZ_TARGET");
  for (const auto& target : vk32::Targets) {
    if (name && target.name == name) return target.run({data, size}), 0;
  }
  std::fputs("Set VK32_FUZZ_TARGET to the name of a folder in tests/fuzz/seeds\n", stderr);
  std::exit(2);
}
