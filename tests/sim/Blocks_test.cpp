// The blocks of simulated gateways: what is taken, when it comes into force, what is told.
#include <gtest/gtest.h>

#include "core/TestWizard.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"
#include "sim/Device.h"

namespace vk32::sim {
namespace {

using namespace std::chrono_literals;

const Bytes Ok(1, Ack);
constexpr int Read = BlockFrame::Read, Write = BlockFrame::Write;

/// A frame with a good checksum, whatever else it says.
Bytes Frame(int command, int number, int length, const Bytes& data = {}, int high = 0, int ext = 0) {
  const Bytes body = Bytes{Chr(command), Chr(high), Chr(number), Chr(ext), Chr(length)} + data;
  const auto size = static_cast<int>(body.size());
  return BlockFrame::Start + Chr(size + 1) + body + Checksum8(body, size);
}

const Bytes NewA(11, '\x07'), NewB(3, '\x09');
const Bytes WriteA = Frame(Write, 1, 11, NewA), WriteB = Frame(Write, 2, 3, NewB);

TEST(Blocks, AreThoseOfTheModel) {
  const std::pair<const char*, const char*> rows[] = {
      {"VK-RTX-DF1", "click MainMenu.VKRTXCmd\nclick MainMenu.ABEthAsciiDf1ModelCmd"},
      {"VK-RTX-Modbus", "click MainMenu.VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd"},
      {"VK5300", "click MainMenu.VK5300Cmd"}};
  for (const auto& [name, clicks] : rows) {
    Harness h;
    h.Do(std::string("click Splash\n") + clicks);
    const GatewayKind& kind = *FindGatewayKind(name);
    EXPECT_EQ(h.app.globals.CurrentProduct, kind.product);
    EXPECT_EQ(h.app.globals.CurrentModel, kind.model);
    std::vector<std::int16_t> list(1, CInt(static_cast<double>(kind.factoryBlocks.size())));
    for (const auto& [number, data] : kind.factoryBlocks) list.push_back(CInt(number));
    EXPECT_EQ(h.app.globals.BlockList, list) << name;
  }
}

TEST(Blocks, RefusesInSilence) {
  const std::pair<const char*, Bytes> rows[] = {
      {"a wrong checksum", WriteA.substr(0, WriteA.size() - 1) + '\x01'},
      {"a write of the other model's block", Frame(Write, 24, 1, "a")},
      {"a read of the other model's block", Frame(Read, 24, 64)},
      {"more than the block holds", Frame(Write, 1, 12, Bytes(12, 'a'))},
      {"a length that is too small", Frame(Write, 1, 2, "abc")},
      {"a high address", Frame(Write, 1, 3, "abc", 1)},
      {"an address extension", Frame(Write, 1, 3, "abc", 0, 1)},
      {"a read of another length", Frame(Read, 1, 63)},
      {"an unknown command", Frame(0xF6, 1, 64)},
      {"no command", BlockFrame::Start + Bytes(1, '\0')},
  };
  for (const auto& [fault, frame] : rows) {
    Device device({}, "VK-RTX-DF1");
    EXPECT_EQ(ToHex(device.Hear(frame + EndOfExchange)), "") << fault;
    EXPECT_EQ(device.Hear(WriteB + EndOfExchange, 1s), Ok) << fault;
    EXPECT_EQ(device.stored, "1 block\n") << fault;
    EXPECT_EQ(device.gateway.BlocksInForce().at(1), device.kind.factoryBlocks.at(1)) << fault;
  }
}

TEST(Blocks, ComeIntoForceTogetherOrNotAtAll) {
  const struct {
    const char* meanwhile;
    bool stored;
    std::function<void(Device& device)> act;
    Time end = 1s;
  } rows[] = {
      {"a refused frame", true, [](Device& device) { device.Hear(Frame(Write, 24, 1, "a")); }},
      {"a pause", true, [](Device&) {}, 3s},
      {"a long pause", false, [](Device&) {}, 3s + 1ns},
      {"a message that stops", false, [](Device& device) { device.Hear(WriteA.substr(0, 5)); }},
      {"a read", false, [](Device& device) { device.Hear(Frame(Read, 3, 64)); }},
      {"device information", false, [](Device& device) { device.Hear(InfoRequest); }},
      {"the button", false, [](Device& device) { device.gateway.PressConfigure(); }},
      {"the recovery menu", false, [](Device& device) { device.Hear(RecoveryProbe + EndOfExchange); }},
  };
  for (const auto& row : rows) {
    Device device({}, "VK-RTX-DF1");
    EXPECT_EQ(device.Hear(WriteA + WriteB), Ok + Ok);
    row.act(device);
    EXPECT_EQ(device.gateway.BlocksInForce(), device.kind.factoryBlocks) << row.meanwhile;
    EXPECT_EQ(device.Hear(EndOfExchange, row.end), "");
    Blocks expected = device.kind.factoryBlocks;
    if (row.stored) expected[1] = NewA, expected[2] = NewB;
    EXPECT_EQ(device.gateway.BlocksInForce(), expected) << row.meanwhile;
    EXPECT_EQ(device.Hear(WriteB + EndOfExchange, 4s), Ok);
    EXPECT_EQ(device.stored, row.stored ? "2 blocks\n1 block\n" : "1 block\n") << row.meanwhile;
  }
}

TEST(Blocks, AreToldIn64Bytes) {
  Device device({}, "VK-RTX-Modbus");
  EXPECT_EQ(device.Hear(Frame(Read, 4, 64)), Ok + FromHex("04 01 01 C4 09") + Bytes(60, '\0') + "\x2D");
  device.Hear(Frame(Write, 4, 0) + Frame(Write, 30, 248, Bytes(63, '\0') + Bytes(185, '\x01')) + EndOfExchange);
  EXPECT_EQ(device.Hear(Frame(Read, 4, 64)), Ok + "\x04" + Bytes(64, '\0') + "\xFC");
  // Of 19 maps each block tells four.
  EXPECT_EQ(device.Hear(Frame(Read, 30, 64)), Ok + "\x1E" + Bytes(64, '\0') + "\xE2");
  EXPECT_EQ(device.Hear(Frame(Read, 31, 64)),
            Ok + "\x1F" + Bytes(11, '\0') + Bytes(42, '\x01') + Bytes(11, '\0') + Chr(256 - 31 - 42));
}

TEST(Blocks, AHangUpInAnyOfThemLeavesTheOldOnes) {
  WizardHarness h("VK-RTX");
  h.Do("click Splash\nclick MainMenu.VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd");
  std::vector<std::int16_t> deaf = h.app.globals.BlockList;
  deaf[0] = -1;
  for (const std::int16_t number : deaf) {
    GatewayDevice device("VK-RTX-Modbus", {.late = 2900ms, .deafBlock = number});
    h.driver.Plug("COM3", &device);
    for (const bool writes : {false, true}) {
      const std::string told = h.Click(writes ? "SendBlocksCmd" : "ReadBlocksCmd");
      EXPECT_EQ(told.find("True") != std::string::npos, number < 0) << number << told;
      EXPECT_EQ(device.gateway.BlocksInForce().at(1).empty(), writes && number < 0) << number;
    }
  }
}

TEST(Blocks, OfTheVk5300StandApartFromItsImageAndArriveBeforeARestart) {
  Device device({}, "VK5300");
  const Bytes image = device.Hear(ImageRequest);
  EXPECT_EQ(device.Hear(Frame(Write, 3, 2, "ab") + EndOfExchange + Restart, 1s), Ok);
  EXPECT_EQ(device.Hear(ImageRequest + Frame(Read, 3, 64) + "TE", 1300ms - 1ns), "");
  EXPECT_EQ(device.Hear(ImageRequest, 1300ms), image);
  EXPECT_EQ(device.Hear(Frame(Read, 3, 64), 1300ms).substr(0, 5), Ok + "\x03" + "ab" + Bytes(1, '\0'));
  EXPECT_EQ(Device({}, "VK-RTX-DF1").Hear(Restart + WriteA), Ok);  // the VK-RTX knows no such message
}

}  // namespace
}  // namespace vk32::sim
