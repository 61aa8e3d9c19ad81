// The simulated gateway: what it takes for a message, what it keeps, and what a user sees of its misbehaviours.

#include "core/Convert.h"
#include "link/BuildFrame.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"
#include "support/Harness.h"

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

/// What a click on UPLOAD makes of it, and how long it takes.
TEST(Misbehaviour, AsTheUserSeesIt) {
  const Time byteTime = 1041666ns;  // ten bits at 9600 bit/s
  const auto check = [](Misbehaviour how, Time span, bool good, bool pace = false) {
    Harness h;
    GatewayDevice device("RB2000", how, pace);
    h.GoTo("RB2000Cmd", &device);
    h.Do("click ProductMenu.ConfigureCmd");
    h.Elapsed();
    h.Do("click Configuration_RB2000.UploadCmd");
    EXPECT_EQ(h.Elapsed().count(), span.count());
    EXPECT_EQ(h.Get("Configuration_RB2000.ChaSpeedLst.Text") == "19200", good) << span.count();
  };
  check({.late = 2999ms}, 2999ms, true);
  check({.junk = true}, 0ms, false);
  check({.shortBy = 461}, 3000ms, false);
  check({.hold = 500ms}, 0ms, false);
  check({.unplugAfter = 466}, 467 * byteTime, true, true);
}

}  // namespace
}  // namespace vk32::sim
