// The simulated gateway and its line: what it takes for a message, what it answers, and when.
#include "sim/SimulatedLine.h"

#include <gtest/gtest.h>

#include "link/BuildFrame.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"
#include "sim/Device.h"
#include "support/Harness.h"

namespace vk32::sim {
namespace {

using namespace std::chrono_literals;

const GatewayKind& Kind() { return *FindGatewayKind("RB2000"); }

Bytes ImageFrameOf(const Bytes& image) {
  Globals globals;
  globals.ConfigImage = image;
  return BuildFrame(globals, "RB2000", ImageFrame::Code);
}

Bytes With(Bytes bytes, std::size_t offset, char byte) {
  bytes.at(offset) = byte;
  return bytes;
}

/// The gateway's answer to an image upload.
Bytes Reply() {
  const Bytes body = FromHex("00 01 00 00 00 00 00 00 00 00") + Kind().factoryImage;
  return "TR" + FromHex("CA 01") + body + Checksum16(body, static_cast<int>(body.size()));
}

const Bytes Ok(1, Ack);
const Bytes Image(448, '\x21');

TEST(Gateway, AnswersTheMessagesOfItsCatalogue) {
  Device device;
  EXPECT_EQ(FindGatewayKind("RB9999"), nullptr);
  EXPECT_EQ(ToHex(device.Hear("TEE")), ToHex(Reply()));
  EXPECT_EQ(device.Hear(Ok), "");
  EXPECT_EQ(device.Hear(ImageFrameOf(Image)), Ok);
  EXPECT_EQ(device.gateway.Image(), Image);
  EXPECT_EQ(device.stored, "448 bytes\n");
  EXPECT_EQ(device.Hear("TEE").substr(14, 448), Image);
  EXPECT_EQ(device.Hear(ImageFrameOf(Kind().factoryImage) + "TEE"), Ok + Reply());
}

TEST(Gateway, TakesMessagesInPiecesAndBehindGarbage) {
  for (const std::size_t size : {1u, 2u, 7u, 100u, 466u}) {
    Device device;
    const Bytes all = FromHex("00 FF 06 A5 A5") + "NETTEETNE" + ImageFrameOf(Image);
    Bytes said;
    for (std::size_t at = 0; at < all.size(); at += size) said += device.Hear(all.substr(at, size));
    EXPECT_EQ(said, Reply() + Ok) << size;
    EXPECT_EQ(device.gateway.Image(), Image) << size;
  }
}

TEST(Gateway, KeepsSilentAtABrokenFrame) {
  const Bytes good = ImageFrameOf(Image);
  const struct {
    const char* fault;
    Bytes frame;
  } rows[] = {
      {"first checksum byte", With(good, 465, '\x22')},
      {"second checksum byte", With(good, 466, '\x22')},
      {"a byte of the image", With(good, 100, '\x22')},
      {"a prefix byte", With(good, 8, '\x22')},
      {"image too short", ImageFrameOf(Bytes(446, '\x21'))},
      {"image too long", ImageFrameOf(Bytes(450, '\x21'))},
      {"no image", ImageFrameOf("")},
      {"not even a prefix", Bytes("NEE") + Bytes(6, '\0')},
  };
  for (const auto& row : rows) {
    Device device;
    EXPECT_EQ(device.Hear(row.frame), "") << row.fault;
    EXPECT_EQ(device.stored, "") << row.fault;
    EXPECT_EQ(device.gateway.Image(), Kind().factoryImage) << row.fault;
    EXPECT_EQ(device.Hear(good), Ok) << row.fault;
  }
}

TEST(Gateway, GivesABrokenFrameUpAfterTheGap) {
  const Bytes good = ImageFrameOf(Image);
  for (const Bytes& begun :
       {good.substr(0, 1), good.substr(0, 6), good.substr(0, 466), "NEE" + FromHex("FF FF 00 00")}) {
    Device device;
    EXPECT_EQ(device.Hear(begun, 1000ms), "");
    EXPECT_EQ(device.Hear("TEE", 1500ms + 1ns), Reply()) << begun.size();
  }
  Device slow;
  Time now{0};
  for (const char byte : good.substr(0, 466)) slow.Hear(Bytes(1, byte), now += 500ms);
  EXPECT_EQ(slow.Hear(good.substr(466), now), Ok);
}

TEST(Gateway, AnswersOnlyAfterItsButton) {
  Device device;
  device.gateway.StartInOperation();
  EXPECT_EQ(device.Hear("TEE"), "");
  EXPECT_EQ(device.Hear("TE"), "");
  device.gateway.PressConfigure();
  EXPECT_EQ(device.Hear("E"), "");
  EXPECT_EQ(device.Hear("TEE"), Reply());
}

TEST(Gateway, SpoilsWhatItSendsAndNotWhatItTakes) {
  Device device({.junk = true, .badChecksum = true, .shortBy = 1});
  const Bytes junk = FromHex("15 FF 00 3F");
  const Bytes spoiled = With(Reply(), 462, static_cast<char>(Reply()[462] ^ 0x55));
  EXPECT_EQ(ToHex(device.Hear("TEE")), ToHex(junk + spoiled.substr(0, 463)));
  EXPECT_EQ(ToHex(device.Hear(ImageFrameOf(Image))), ToHex(junk + Ok));
  EXPECT_EQ(device.stored, "448 bytes\n");
  EXPECT_EQ(Device({.shortBy = 1000}).Hear("TEE"), "");
}

TEST(Gateway, LateAnswersAndHoldsHaveTheirMoments) {
  Gateway gateway(Kind(), {.late = 70ms, .hold = 50ms});
  gateway.Receive("TE", 1000ms);
  gateway.Receive("E", 1010ms);
  for (const auto& [from, size] : {std::pair{1000ms, 1u}, {1050ms, 1u}, {1080ms, 464u}}) {
    const auto piece = gateway.NextPiece();
    ASSERT_TRUE(piece);
    EXPECT_EQ(piece->from, from);
    EXPECT_EQ(piece->bytes.size(), size);
  }
  EXPECT_FALSE(gateway.NextPiece());
}

TEST(SimulatedLine, CarriesTenBitsAByte) {
  EXPECT_EQ(SimulatedLine::ByteTime(9600), 1041666ns);
  EXPECT_EQ(SimulatedLine::ByteTime(19200), 520833ns);
  const Time byteTime = SimulatedLine::ByteTime(9600);
  Gateway gateway(Kind());
  SimulatedLine line(gateway, byteTime);
  EXPECT_FALSE(line.NextDue());
  Time start = 5s;
  for (int exchange = 0; exchange < 2; ++exchange, start += 10s) {
    line.FromHost("TE", start);
    line.FromHost("E", start + byteTime);  // while the first two are still on their way
    for (int count = 1; count <= 3; ++count) {
      ASSERT_EQ(line.NextDue(), start + count * byteTime);
      EXPECT_EQ(line.ToHost(start + count * byteTime - 1ns), "");
      EXPECT_EQ(line.ToHost(start + count * byteTime), "");
    }
    for (int count = 4; count <= 467; ++count) {
      ASSERT_EQ(line.NextDue(), start + count * byteTime);
      EXPECT_EQ(line.ToHost(start + count * byteTime - 1ns), "");
      EXPECT_EQ(line.ToHost(start + count * byteTime), Reply().substr(static_cast<std::size_t>(count) - 4, 1));
    }
    EXPECT_FALSE(line.NextDue());
  }
}

TEST(SimulatedLine, LateReaderGetsWhatTheLineHasCarried) {
  const Time byteTime = SimulatedLine::ByteTime(9600);
  Gateway gateway(Kind());
  SimulatedLine line(gateway, byteTime);
  line.FromHost("TEE", 0s);
  EXPECT_EQ(line.ToHost(13 * byteTime), Reply().substr(0, 10));
  EXPECT_EQ(line.ToHost(467 * byteTime), Reply().substr(10));
}

TEST(SimulatedLine, CarriesBothDirectionsAtOnce) {
  const Time byteTime = SimulatedLine::ByteTime(9600);
  Gateway gateway(Kind());
  SimulatedLine line(gateway, byteTime);
  line.FromHost("TEE", 0s);
  line.ToHost(3 * byteTime);
  line.FromHost("??", 3 * byteTime + 1ns);
  for (int count = 4; count <= 5; ++count) {
    EXPECT_EQ(line.NextDue(), count * byteTime);
    EXPECT_EQ(line.ToHost(count * byteTime).size(), 1u);
    EXPECT_EQ(line.NextDue(), count * byteTime + 1ns);
    EXPECT_EQ(line.ToHost(count * byteTime + 1ns), "");
  }
}

TEST(SimulatedLine, GoesAtTheByteThatIsOneTooMany) {
  for (const int count : {0, 1, 3, 4, 467, 468}) {
    Gateway gateway(Kind(), {.unplugAfter = count});
    SimulatedLine line(gateway, Time{0});
    line.FromHost("TEE", 0s);
    EXPECT_EQ(line.ToHost(0s), Reply().substr(0, static_cast<std::size_t>(std::max(0, count - 3)))) << count;
    EXPECT_EQ(line.Unplugged(), count < 467) << count;
    line.FromHost("??", 1s);
    EXPECT_EQ(line.ToHost(1s), "") << count;
    EXPECT_TRUE(line.Unplugged()) << count;
    EXPECT_FALSE(line.NextDue()) << count;
  }
}

}  // namespace
}  // namespace vk32::sim
