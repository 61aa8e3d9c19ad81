// The simulated gateway: what it takes for a message, what it keeps, and what a user sees of its misbehaviours.

#include "link/BuildFrame.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"
#include "models/WizardUser.h"
#include "models/wizard/WizardForm.h"

namespace vk32::sim {
namespace {

const Bytes Ok(1, Ack);

/// What the gateway says to bytes that come at `now`.
Bytes Hear(GatewayDevice& device, const Bytes& bytes, Time now = {}) {
  device.FromHost(bytes, now);
  return device.ToHost(now);
}

/// A block frame with a good checksum, whatever else it says.
Bytes Frame(int command, int number, int length, const Bytes& data = {}, int high = 0, int ext = 0) {
  const Bytes body = Bytes{Chr(command), Chr(high), Chr(number), Chr(ext), Chr(length)} + data;
  const auto size = static_cast<int>(body.size());
  return BlockFrame::Start + Chr(size + 1) + body + Checksum8(body, size);
}

TEST(Gateway, TakesWholeFramesAloneBehindGarbage) {
  Globals globals;
  globals.ConfigImage = Bytes(446, '\x21');
  const Bytes shorter = BuildFrame(globals, "RB2000", ImageFrame::Code);
  globals.ConfigImage += "!!";
  const Bytes good = BuildFrame(globals, "RB2000", ImageFrame::Code), garbage = FromHex("00 FF 06 A5 A5") + "NETTEETNE";
  GatewayDevice device("RB2000");
  const Bytes reply = Hear(device, "TEE");
  Bytes wrongSum = good, said;
  ++wrongSum.back();
  for (const Bytes& bad : {wrongSum, shorter, "NEE" + Bytes(6, '\0')}) EXPECT_EQ(Hear(device, bad + "TEE"), reply);
  for (const char byte : garbage + good) said += Hear(device, Bytes(1, byte));
  EXPECT_EQ(said, reply + Ok);
  EXPECT_EQ(device.gateway.Image(), globals.ConfigImage);
  Hear(device, good.substr(0, 466), 1s);
  EXPECT_EQ(Hear(device, good.substr(466), 1500ms), Ok);
  Hear(device, good.substr(0, 466), 2s);
  EXPECT_NE(Hear(device, "TEE", 2500ms + 1ns), "");  // what stands still for longer is given up
}

TEST(Gateway, StoresWholeBlocksTogetherOrNotAtAll) {
  constexpr int Read = BlockFrame::Read, Write = BlockFrame::Write;
  const Bytes newA(11, '\x07'), writes = Frame(Write, 1, 11, newA) + Frame(Write, 2, 3, "new"), twelve(12, 'a');
  const auto check = [&](const Bytes& meanwhile, bool stored, Time end = 1s) {
    GatewayDevice device("VK-RTX-DF1");
    Blocks expected = device.gateway.BlocksInForce();
    EXPECT_EQ(Hear(device, writes), Ok + Ok);
    EXPECT_TRUE(Hear(device, meanwhile) == "" || !stored) << ToHex(meanwhile);
    EXPECT_EQ(device.gateway.BlocksInForce(), expected) << ToHex(meanwhile);
    Hear(device, EndOfExchange, end);
    if (stored) expected[1] = newA, expected[2] = "new";
    EXPECT_EQ(device.gateway.BlocksInForce(), expected) << ToHex(meanwhile);
  };
  const Bytes wrongSum = Frame(Write, 1, 1, "a").substr(0, 9) + "?";
  // What is refused is no harm to the rest.
  for (const Bytes& refused :
       {wrongSum, Frame(Write, 24, 1, "a"), Frame(Write, 1, 12, twelve), Frame(Write, 1, 2, "abc"),
        Frame(Write, 1, 3, "abc", 1), Frame(Write, 1, 3, "abc", 0, 1), Frame(Read, 1, 63), Frame(0xF6, 1, 64)}) {
    check(refused, true);
  }
  for (const Bytes& other : {writes.substr(0, 5), Frame(Read, 3, 64), InfoRequest, RecoveryProbe}) check(other, false);
  check("", true, 3s);
  check("", false, 3s + 1ns);
}

/// What the pages show behind an upload and did not before.
TEST(Gateway, ComesFromTheFactoryWithSettingsOfAPlant) {
  const std::pair<const char*, const char*> rows[] = {
      {"RB2000",
       "19200|Even|5|CRC|SLC/MicroLogix/ControlLogix|Yes|1 Octal|7 Octal|Yes|17|40001|40020|7|0|40101|40110|8|0|Yes"},
      {"RB3000", "PLC-3|Yes|2 Octal|5 Octal|1|64|3|0|30001|30010|10|5"},
      {"RBCard", ""},
      {"VK5300", "2 Octal|192.168.1.100|255.255.255.0|192.168.1.1|100 Mbps"},
      {"VK-RTX-DF1",
       "19200|True|7|Even|192.168.1.100|255.255.255.0|192.168.1.1|100 Mbps|45 s|CRC|ASCII|Ethernet|1|10|Channel A|"
       "Channel A|20|30|Ethernet|192.168.1.60|Channel B|40|40|Ethernet|192.168.1.50|8000 ms|192.168.1.50|Yes|2|0|0|"
       "Integer|7|10|Integer|Protected Typed Logical Write"},
      {"VK-RTX-Modbus",
       "57600|Even|192.168.1.100|255.255.255.0|192.168.1.1|10 Mbps|45 s|2500 ms|5|192.168.1.50|6|192.168.1.51|"
       "1 - 10|40001|7:0|Int|20|TypedRW|1 - 10|40101|8:0|Float|10|TypedRW|1 - 10|31001|9:5|Int|50|ProtTypedRW|"
       "11 - 20|10001|3:0|Bin|64|WordRangeRW|21 - 21|16|300:2|Bin|16|WordRangeRW"}};
  for (const auto& [kind, settings] : rows) {
    GatewayDevice device(kind);
    WizardUser user(kind, &device);
    const auto list = [&] { return dynamic_cast<WizardForm&>(*user.app.forms.Find(user.form)).List(); };
    const Listing before = list();
    EXPECT_EQ(user.Use("click UploadCmd"), "reminder\n");
    std::string shown;
    for (const auto& change : Compare(before, list())) shown += "|" + change.right.value_or("-");
    EXPECT_EQ(shown.substr(shown.empty() ? 0 : 1), settings) << kind;
  }
}

Misbehaviour Named(const std::string& names) {
  Misbehaviour how;
  for (const std::string& name : Split(names)) EXPECT_EQ(SetMisbehaviour(name, how), "");
  return how;
}

/// What a click on UPLOAD makes of it, and how long it takes.
TEST(Misbehaviour, AsTheUserSeesIt) {
  const Time byteTime = 1041666ns;  // ten bits at 9600 bit/s
  const auto check = [](const char* names, Time span, bool good, bool pace = false) {
    Harness h;
    GatewayDevice device("RB2000", Named(names), pace);
    h.GoTo("RB2000Cmd", &device);
    h.Do("click ProductMenu.ConfigureCmd");
    h.Elapsed();
    h.Do("click Configuration_RB2000.UploadCmd");
    EXPECT_EQ(h.Elapsed().count(), span.count());
    EXPECT_EQ(h.Get("Configuration_RB2000.ChaSpeedLst.Text") == "19200", good) << span.count();
  };
  check("late=2999", 2999ms, true);
  check("junk", 0ms, false);
  check("short=461", 3000ms, false);
  check("hold=500", 0ms, false);
  check("unplug=466", 467 * byteTime, true, true);
  // A paced line has a chip that stores 16 bytes.
  Gateway gateway(*FindGatewayKind("RB2000"), {});
  SimulatedLine bare(gateway, Time{0}), paced(gateway, byteTime);
  paced.FromHost(Bytes(10, 'x'), {});
  EXPECT_TRUE(bare.Room() == SIZE_MAX && paced.Room() == 6);
  paced.FromHost(Bytes(10, 'x'), {});
  EXPECT_EQ(paced.Room(), 0u);
  const Misbehaviour how =
      Named("silent bad-checksum deaf-block=7 info-pieces=2 banner=9 no-ready no-burn hold-for-good nak=4 cancel");
  EXPECT_TRUE(how.silent && how.badChecksum && how.noReady && how.noBurn && how.holdForGood && how.cancel);
  EXPECT_EQ(how.deafBlock * 1000 + how.infoPieces * 100 + *how.bannerLength * 10 + how.naks, 7294);
}

}  // namespace
}  // namespace vk32::sim
