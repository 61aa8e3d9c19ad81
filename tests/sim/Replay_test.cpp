// The trace that is always on, and the device that plays it.
#include "sim/Replay.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "models/WizardUser.h"
#include "trace/MessageNames.h"

namespace vk32::sim {
namespace {

using namespace std::chrono_literals;

/// Uploads of an RB2000.
struct Uploads : Harness {
  explicit Uploads(FakeDevice& device, int count = 1) {
    GoTo("RB2000Cmd", &device);
    Do("click ProductMenu.ConfigureCmd");
    for (int i = 0; i < count; ++i) Do("click Configuration_RB2000.UploadCmd\nwait 70");
  }
};

TEST(Replay, AnswersAsThenAndTellsWhatElseIsAsked) {
  GatewayDevice gateway("RB2000", {.late = 40ms}, true);
  const Uploads traced(gateway, 2);
  const std::string trace = traced.app.trace.Text(), support = traced.app.supportText();
  Replay replay(support);
  std::vector<std::string> told;
  replay.Tell = [&](const std::string& words) { told.push_back(words); };
  Uploads h(replay);
  EXPECT_FALSE(replay.AsTraced());
  h.Do("click Configuration_RB2000.UploadCmd\nwait 70");
  EXPECT_EQ(h.app.trace.Text(), trace);
  EXPECT_TRUE(replay.AsTraced());
  for (int page = 0; page < 5; ++page) h.Do("click Configuration_RB2000.NextCmd");
  EXPECT_FALSE(replay.AsTraced());
  const std::vector<std::string> expected{
      "The trace is at its end, and begins anew.",
      "Something else than line " +
          std::to_string(1 + std::ranges::count(support.substr(0, support.size() - trace.size()), '\n')) +
          ", image upload: from byte 1 on 54 45 45 was awaited and 4E 45 45 CA 01 00 00 00 ... "
          "has come. It gets no answer."};
  EXPECT_EQ(told, expected);
  Replay two("1.5 > 41 42\r\n 2 < 61\n9 > 43  \n9.5 < 62 63  name\n11 < 64");
  two.Tell = replay.Tell;
  two.FromHost("C", 1s);
  EXPECT_EQ(two.ToHost(1s + 500us), "bc");
  EXPECT_EQ(two.ToHost(1s + 2ms), "d");
  two.FromHost("A", 1s);
  EXPECT_EQ(two.NextDue(), 1s + 500ms);
  EXPECT_EQ(two.ToHost(1s + 500ms), "");
  EXPECT_EQ(told.back().substr(0, 54), "Something else than line 1: from byte 2 on 42 was awai");
}

TEST(Trace, NamesWhatPasses) {
  const std::pair<const char*, std::set<std::string>> rows[] = {
      {"RB2000", {"acknowledge", "image download", "image upload"}},
      {"VK5300",
       {"acknowledge", "block read", "block read reply", "block write", "end of exchange", "image download",
        "image upload", "restart"}}};
  for (const auto& [kind, names] : rows) {
    GatewayDevice device(kind);
    WizardUser user(kind, &device);
    user.Use("click UploadCmd\nfinish DownOpt");
    std::set<std::string> seen;
    for (const std::string& line : Split(user.app.trace.Text(), '\n')) {
      const std::size_t at = line.rfind("  ");
      if (at > 8 && at != std::string::npos) seen.insert(line.substr(at + 2));
    }
    EXPECT_EQ(seen, names) << user.app.trace.Text();
  }
}

TEST(Trace, KnowsAMessageByAllOfItsBytes) {
  const std::pair<Bytes, std::string> rows[] = {{FromHex("A5 DD"), "device information"},
                                                {FromHex("DD"), "continue device information"},
                                                {FromHex("A5 FB"), "firmware mode"},
                                                {"\x1B", "recovery probe"},
                                                {"\r", "recovery newline"},
                                                {FromHex("A5 CE 06 F5 00 05 00 40 C6"), "block read"},
                                                {FromHex("A5 CE 08 FA 00 07 00 02 00 FF FE"), "block write"},
                                                {'\1' + Bytes(64, '\2') + '\x7F', "block read reply"},
                                                {"\6\1" + Bytes(64, '\2') + '\x7F', "acknowledge, block read reply"},
                                                {"NEE" + FromHex("0D 01") + Bytes(273, '\0'), "image download"},
                                                {"TR" + FromHex("03 01") + Bytes(261, '\0'), "image upload reply"},
                                                {'\1' + Bytes(131, 'x'), "Xmodem block"}};
  for (const auto& [bytes, name] : rows) {
    EXPECT_EQ(MessageName(bytes), name);
    EXPECT_EQ(MessageName(bytes + '\3'), "") << name;
    EXPECT_EQ(MessageName(bytes.size() == 1 ? "?" : bytes.substr(0, bytes.size() - 1)), "") << name;
  }
}

TEST(Trace, KeepsTheLatestAndIsReadStrictly) {
  TraceRing ring(1s, 1000);
  for (int i = 0; i < 100; ++i) ring.Passed(std::chrono::seconds(i + 1), '<', Bytes(10, static_cast<char>(i)));
  const auto lines = Split(ring.Text(), '\n');
  EXPECT_TRUE(lines.size() >= 19 && lines.size() <= 38) << lines.size();  // of 26 bytes each
  EXPECT_EQ(lines.back(), "   99000.000 < 63 63 63 63 63 63 63 63 63 63");
  for (const char* other : {"", "1.5", "1.5 = 41", "nan > 41", "-1 > 41", "1e99 > 41", "a 1 > 41"}) {
    EXPECT_FALSE(ReadTraceLine(other)) << other;
  }
  for (const char* broken : {"1 > ", "1 > 4", "1 > 41 4", "1 > 41 4G", "1 > 41,", "1 > 4142"}) {
    EXPECT_THROW(ReadTraceLine(broken), std::runtime_error) << broken;
  }
  EXPECT_THROW(Replay("1 < 41"), std::runtime_error);
}

}  // namespace
}  // namespace vk32::sim
