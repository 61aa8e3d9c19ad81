// The simulated gateway and its line: what it takes for a message, what it keeps, what it says, and when.
#include <gtest/gtest.h>

#include <algorithm>

#include "core/Convert.h"
#include "link/BuildFrame.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"
#include "sim/Device.h"
#include "support/Harness.h"

namespace vk32::sim {
namespace {

using namespace std::chrono_literals;

const Bytes Ok(1, Ack), Image(448, '\x21');
const Time ByteTime = 1041666ns;  // ten bits at 9600 bit/s

Bytes ImageFrameOf(const Bytes& image) {
  Globals globals;
  globals.ConfigImage = image;
  return BuildFrame(globals, "RB2000", ImageFrame::Code);
}

Bytes With(Bytes bytes, std::size_t offset, char byte) {
  bytes.at(offset) = byte;
  return bytes;
}

/// A block frame with a good checksum, whatever else it says.
Bytes Frame(int command, int number, int length, const Bytes& data = {}, int high = 0, int ext = 0) {
  const Bytes body = Bytes{Chr(command), Chr(high), Chr(number), Chr(ext), Chr(length)} + data;
  const auto size = static_cast<int>(body.size());
  return BlockFrame::Start + Chr(size + 1) + body + Checksum8(body, size);
}

constexpr int Read = BlockFrame::Read, Write = BlockFrame::Write;
const Bytes NewA(11, '\x07'), NewB(3, '\x09');
const Bytes WriteA = Frame(Write, 1, 11, NewA), WriteB = Frame(Write, 2, 3, NewB);

TEST(Gateway, TakesWholeFramesAloneInPiecesAndBehindGarbage) {
  const Bytes good = ImageFrameOf(Image), reply = Device().Hear("TEE");
  for (const Bytes& bad :
       {With(good, 466, '\x22'), With(good, 8, '\x22'), ImageFrameOf(Bytes(446, '\x21')), "NEE" + Bytes(6, '\0')}) {
    Device device;
    EXPECT_EQ(device.Hear(bad) + device.stored, "");
    EXPECT_EQ(device.Hear(good), Ok);
  }
  for (const std::size_t size : {1u, 7u, 466u}) {
    Device device;
    const Bytes all = FromHex("00 FF 06 A5 A5") + "NETTEETNE" + good;
    Bytes said;
    for (std::size_t at = 0; at < all.size(); at += size) said += device.Hear(all.substr(at, size));
    EXPECT_EQ(said, reply + Ok) << size;
    EXPECT_EQ(device.gateway.Image(), Image);
  }
  for (const bool late : {false, true}) {  // what stands still for longer is given up
    Device device;
    device.gateway.StartInOperation();
    EXPECT_EQ(device.Hear("TEETE"), "");
    device.gateway.PressConfigure();
    EXPECT_EQ(device.Hear("E" + good.substr(0, 466), 1000ms), "");
    EXPECT_EQ(device.Hear(late ? "TEE" : good.substr(466), 1500ms + Time{late}), late ? reply : Ok);
  }
}

TEST(Gateway, RefusesBlocksInSilence) {
  for (const Bytes& bad :
       {With(WriteA, WriteA.size() - 1, '\x01'), Frame(Write, 24, 1, "a"), Frame(Read, 24, 64),
        Frame(Write, 1, 12, Bytes(12, 'a')), Frame(Write, 1, 2, "abc"), Frame(Write, 1, 3, "abc", 1),
        Frame(Write, 1, 3, "abc", 0, 1), Frame(Read, 1, 63), Frame(0xF6, 1, 64), BlockFrame::Start + Bytes(1, '\0')}) {
    Device device({}, "VK-RTX-DF1");
    EXPECT_EQ(device.Hear(bad + EndOfExchange), "") << ToHex(bad);
    EXPECT_EQ(device.Hear(WriteB + EndOfExchange, 1s), Ok) << ToHex(bad);
    EXPECT_EQ(device.stored, "1 block\n") << ToHex(bad);
    EXPECT_EQ(device.gateway.BlocksInForce().at(1), device.kind.factoryBlocks.at(1)) << ToHex(bad);
  }
}

TEST(Gateway, BlocksComeIntoForceTogetherOrNotAtAll) {
  const struct {
    Bytes meanwhile;
    bool stored = false;
    Time end = 1s;
  } rows[] = {{Frame(Write, 24, 1, "a"), true},
              {"", true, 3s},
              {"", false, 3s + 1ns},
              {WriteA.substr(0, 5)},
              {Frame(Read, 3, 64)},
              {InfoRequest},
              {RecoveryProbe + EndOfExchange}};
  for (const auto& row : rows) {
    Device device({}, "VK-RTX-DF1");
    EXPECT_EQ(device.Hear(WriteA + WriteB), Ok + Ok);
    device.Hear(row.meanwhile);
    EXPECT_EQ(device.gateway.BlocksInForce(), device.kind.factoryBlocks) << ToHex(row.meanwhile);
    device.Hear(EndOfExchange, row.end);
    Blocks expected = device.kind.factoryBlocks;
    if (row.stored) expected[1] = NewA, expected[2] = NewB;
    EXPECT_EQ(device.gateway.BlocksInForce(), expected) << ToHex(row.meanwhile);
  }
  Device restarts({}, "VK5300");
  const Bytes image = restarts.Hear(ImageRequest);
  EXPECT_EQ(restarts.Hear(Frame(Write, 3, 2, "ab") + EndOfExchange + Restart, 1s), Ok);
  EXPECT_EQ(restarts.Hear(ImageRequest, 1300ms - 1ns), "");
  EXPECT_EQ(restarts.Hear(ImageRequest, 1300ms), image);
}

TEST(SimulatedLine, CarriesTenBitsAByteBothWaysUntilItIsPulledOff) {
  for (const int count : {0, 3, 4, 467, 468}) {
    Gateway gateway(*FindGatewayKind("RB2000"), {.unplugAfter = count});
    SimulatedLine line(gateway, SimulatedLine::ByteTime(9600));
    line.FromHost("TEE", 5s);
    EXPECT_EQ(line.ToHost(5s + 4 * ByteTime - 1ns), "");
    EXPECT_EQ(line.ToHost(5s + 13 * ByteTime).size(), static_cast<std::size_t>(std::clamp(count - 3, 0, 10)));
    line.FromHost("?", 5s + 13 * ByteTime + 1ns);  // while its answer goes on
    EXPECT_EQ(line.NextDue(), count > 4 ? std::optional(5s + 14 * ByteTime) : std::nullopt);
    line.ToHost(10s);
    EXPECT_EQ(line.Unplugged(), count < 468);
    EXPECT_FALSE(line.NextDue());
  }
}

/// What a click on UPLOAD, or on FINISH, makes of a gateway, and how long it takes.
TEST(Misbehaviour, AsTheUserSeesIt) {
  const struct {
    Misbehaviour how;
    Time span;
    bool good, pace = false, down = false;
  } rows[] = {{{}, 467 * ByteTime, true, true},
              {{.silent = true}, 3000ms, false},
              {{.late = 2999ms}, 2999ms, true},
              {{.late = 3001ms}, 3000ms, false},
              {{.junk = true}, 0ms, false},
              {{.badChecksum = true}, 0ms, true},
              {{.hold = 500ms}, 0ms, false},
              {{.shortBy = 10}, 3000ms, true},  // what is missing costs three seconds for each read
              {{.shortBy = 461}, 3000ms, false},
              {{.unplugAfter = 7}, 7 * ByteTime + 6000ms, false, true},
              {{.unplugAfter = 466}, 17 * ByteTime + 3000ms, true, true},
              {{.late = 27399ms}, 27399ms, true, false, true},
              {{.late = 27401ms}, 27400ms, false, false, true},
              {{.junk = true, .hold = 500ms}, 0ms, true, false, true},
              {{.unplugAfter = 467}, 27400ms, false, true, true},
              {{.unplugAfter = 468}, 468 * ByteTime, true, true, true}};
  for (const auto& row : rows) {
    Harness h;
    GatewayDevice device("RB2000", row.how, row.pace);
    h.GoTo("RB2000Cmd", &device);
    h.Do("click ProductMenu.ConfigureCmd");
    for (int page = 0; row.down && page < 4; ++page) h.Do("click Configuration_RB2000.NextCmd");
    h.Elapsed();
    const std::string told =
        h.Do(row.down ? "click Configuration_RB2000.NextCmd" : "click Configuration_RB2000.UploadCmd");
    EXPECT_EQ(h.Elapsed().count(), row.span.count()) << &row - rows;
    const bool good = row.down ? told.find("Success!") != std::string::npos
                               : h.Get("Configuration_RB2000.ChaSpeedLst.Text") == "19200";
    EXPECT_EQ(good, row.good) << &row - rows << told;
  }
}

}  // namespace
}  // namespace vk32::sim
