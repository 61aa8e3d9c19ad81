// The moving of a whole parameter set to and from a device, byte by byte.
#include "core/ConfigMod.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/TestWizard.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

// Blocks 5 and 7 make up the parameter set of the VK-RTX.
const Bytes AckByte = "\x06", End = FromHex("A5 A5");
const Bytes Write5 = FromHex("A5 CE 09 FA 00 05 00 03 11 22 33 98"), Read5 = FromHex("A5 CE 06 F5 00 05 00 40 C6");
const Bytes Write7 = FromHex("A5 CE 08 FA 00 07 00 02 00 FF FE"), Read7 = FromHex("A5 CE 06 F5 00 07 00 40 C4");
const Bytes Block5(66, '\0'), Block7 = "\x01" + Bytes(64, '\x02') + "\x7F";

struct Message {
  Bytes bytes;
  std::vector<ScriptedDevice::Reply> replies = {};
};

std::string TimeOutBox(const std::string& product) {
  return "box critical \"Error!\" \"A timeout or error has occured while communicating to the " + product +
         "\" -> OK\n";
}

class ConfigModTest : public testing::Test {
 protected:
  /// The program with a parameter set, on a line to that device.
  static std::unique_ptr<WizardHarness> Start(const char* product, FakeDevice* device, const Bytes& image = {}) {
    auto h = std::make_unique<WizardHarness>(product, device);
    Globals& globals = h->app.globals;
    globals.BlockList = {2, 5, 7};
    globals.BlockTable[5] = "\x11\x22\x33";
    globals.BlockTable[7] = FromHex("00 FF");
    globals.CommFailed = FlagTrue;
    globals.LoadRegisters("wxyz", 0);
    globals.ConfigImage = image;
    h->wizard->TimeOutTmr.Interval = 1234;
    return h;
  }

  /// The device gets these messages and nothing else, and the program tells that.
  static void Check(const char* product, const char* button, const std::vector<Message>& messages,
                    const std::string& told, const Bytes& image = {}) {
    ScriptedDevice device;
    for (const Message& message : messages) device.On(message.bytes, message.replies);
    const auto h = Start(product, &device, image);
    EXPECT_EQ(h->Click(button), told) << product;
    EXPECT_TRUE(device.Done()) << ToHex(h->driver.written);
    EXPECT_FALSE(h->PortIsOpen());
    // At the open, by SetDeviceLink, and before the first message; the block read leaves that out.
    const auto purges = std::count(h->driver.calls.begin(), h->driver.calls.end(), "Purge 15");
    EXPECT_EQ(purges, button == std::string("ReadBlocksCmd") ? 2 : 3);
  }
};

TEST_F(ConfigModTest, BlocksAreSentOneByOneUntilOneIsNotAcknowledged) {
  const Message first{Write5, {{20ms, AckByte}}};
  Check("VK-RTX", "SendBlocksCmd", {first, {Write7, {{30ms, "\x15" + AckByte}}}, {End}}, "True\n100 ms");
  Check("VK-RTX", "SendBlocksCmd", {first, {Write7}}, TimeOutBox("VK-RTX") + "False\n1254 ms");
  Check("VK-RTX", "SendBlocksCmd", {first, {Write7, {{30ms, "\x15"}}}}, TimeOutBox("VK-RTX") + "False\n1254 ms");
  Check("VK-RTX", "SendBlocksCmd", {{Write5}}, TimeOutBox("VK-RTX") + "False\n1234 ms");
}

TEST_F(ConfigModTest, BlocksAreReadOneByOneUntilOneFails) {
  const Message first{Read5, {{10ms, AckByte}, {20ms, Block5}}};
  const std::string decoded = "block 5: 00 00 00 (port open)\n";
  Check("VK-RTX", "ReadBlocksCmd",
        {first, {Read7, {{2990ms, AckByte}, {4000ms, Mid(Block7, 1, 30)}, {5980ms, Mid(Block7, 31)}}}, {End}},
        decoded + "block 7: 01 02 02 (port open)\nsetup VK (port open)\nTrue\n6000 ms");
  const std::pair<std::vector<ScriptedDevice::Reply>, const char*> failures[] = {
      {{}, "3020 ms"},
      {{{100ms, AckByte}}, "3120 ms"},
      {{{100ms, AckByte + Block7.substr(1)}}, "3120 ms"},
      {{{100ms, AckByte + Mid(Block7, 1, 65) + "\x7E"}}, "120 ms"},
      {{{100ms, AckByte + "\x02" + Block7.substr(1)}}, "120 ms"}};
  for (const auto& [replies, time] : failures) {
    Check("VK-RTX", "ReadBlocksCmd", {first, {Read7, replies}}, decoded + TimeOutBox("VK-RTX") + "False\n" + time);
  }
}

TEST_F(ConfigModTest, AnImageIsSentInTheTimeThatItTakes) {
  const struct {
    const char *product, *frameStart;
    std::size_t length;
    int allowed;
    bool progress;
  } rows[] = {{"RB2000", "4E 45 45 CA 01 00 00 00 01", 448, 27400, true},
              {"RB3000", "4E 45 45 CA 01 00 00 00 01", 448, 27400, true},
              {"RBCard", "4E 45 45 32 00 00 00 00 01", 40, 7000, false},
              {"VK5300", "4E 45 45 32 00 00 00 00 01", 40, 7000, false}};
  for (const auto& row : rows) {
    const Bytes image(row.length, '\0'), frame = FromHex(row.frameStart) + Bytes(8, '\0') + image + FromHex("01 00");
    const std::string begins = row.progress ? "progress 27400 (port open)\n" : "";
    const std::string gone = row.progress ? "progress gone (port open)\n" : "";
    const Time allowed = row.allowed * 1ms;
    Check(row.product, "SendImageCmd", {{frame, {{allowed - 1ms, AckByte}}}},
          begins + gone + "True\n" + Str(row.allowed - 1) + " ms", image);
    Check(row.product, "SendImageCmd", {{frame, {{allowed + 1ms, AckByte}}}},
          begins + TimeOutBox(row.product) + gone + "False\n" + Str(row.allowed) + " ms", image);
  }
  Check("RB2000", "SendImageCmd", {},
        "box critical \"Error!\" \"The configuration can't be sent: the bytes of an image message may add up to 32767 "
        "at most, and these add up to more.\\r\\nUse fewer mapping slots or smaller numbers, and click FINISH again.\" "
        "-> OK\nFalse\n0 ms",
        Bytes(448, '\xFF'));
}

/// What a device says to a request for its image: "TR", length, header, image, checksum.
Bytes ImageReply(int headerLength, const Bytes& image) {
  const auto length = static_cast<int>(image.size()) + headerLength;
  return "TR" + Bytes{Chr(length & 255), Chr(length >> 8)} + Bytes(static_cast<std::size_t>(headerLength), 'h') +
         image + "\x55\x55";
}

TEST_F(ConfigModTest, AnImageIsReadAsItComes) {
  const std::string taken = "setup RB (port open)\nregisters 01 02 03 04\nTrue\n",
                    left = "registers 77 78 79 7A\nTrue\n";
  const std::pair<const char*, int> products[] = {{"RB2000", 10}, {"RB3000", 10}, {"RBCard", 12}, {"VK5300", 12}};
  for (const auto& [product, header] : products) {
    const Bytes reply = ImageReply(header, "\1\2\3\4");
    Check(product, "ReadImageCmd",
          {{"TEE", {{2990ms, Mid(reply, 1, 5)}, {5980ms, Mid(reply, 6, header)}, {8970ms, Mid(reply, 6 + header)}}},
           {AckByte}},
          taken + "8970 ms");
  }
  const Bytes good = ImageReply(10, "\1\2\3\4");
  const std::pair<Bytes, std::string> refused[] = {
      {"", "3000 ms"}, {"TR\x0E", "3000 ms"}, {"XR" + good.substr(2), "0 ms"}, {"Tr" + good.substr(2), "0 ms"}};
  for (const auto& [reply, time] : refused) {
    Check("RB2000", "ReadImageCmd", {{"TEE", {{0ms, reply}}}}, left + time);
  }
  const std::pair<Bytes, std::string> acknowledged[] = {
      {Mid(good, 1, 18), "setup RB (port open)\nregisters 01 02 79 7A\nTrue\n3000 ms"},  // two of the six bytes lack
      {Mid(good, 1, 9), "setup RB (port open)\n" + left + "6000 ms"},
      {ImageReply(10, "\1\2\3\4" + Bytes(510, '\1')), taken + "0 ms"},  // as many registers as there are
      {ImageReply(10, Bytes(516, '\1')), TimeOutBox("RB2000") + left + "0 ms"}};
  for (const auto& [reply, told] : acknowledged) {
    Check("RB2000", "ReadImageCmd", {{"TEE", {{0ms, reply}}}, {AckByte}}, told);
  }
}

TEST_F(ConfigModTest, ARestartWaitsForNothing) { Check("VK5300", "RebootCmd", {{"s"}}, "True\n0 ms"); }

TEST_F(ConfigModTest, AWizardThatIsClosedMeanwhileEndsItAtOnceWithoutAWord) {
  const struct {
    const char *product, *button, *told;
    Bytes sent;
  } rows[] = {{"RB2000", "ReadImageCmd", "registers 77 78 79 7A\n", "TEE"},
              {"RB2000", "SendImageCmd", "progress 5000 (port open)\nprogress gone (port open)\n", {}},
              {"VK-RTX", "ReadBlocksCmd", "block 5: 00 00 00 (port open)\n", Read5 + Read7},
              {"VK-RTX", "SendBlocksCmd", "", Write5 + Write7}};
  for (const auto& row : rows) {
    ScriptedDevice device;
    device.On(Read5, {{5ms, AckByte + Block5}}).On(Read7);
    ScriptedDevice writes;
    writes.On(Write5, {{5ms, AckByte}}).On(Write7);
    auto h = Start(row.product, row.sent.starts_with(Write5) ? &writes : &device);
    h->Do("after 10 click TestWizard.LeaveCmd");
    EXPECT_EQ(h->Click(row.button), row.told + std::string(row.told[0] == 'r' ? "True" : "False") + "\n10 ms");
    EXPECT_EQ(row.sent.empty() ? "" : ToHex(h->driver.written), ToHex(row.sent));
    EXPECT_FALSE(h->PortIsOpen());
  }
}

/// It was pulled off the line.
struct GoneDevice : ScriptedDevice {
  bool Gone() const override { return true; }
};

TEST_F(ConfigModTest, WithoutAPortEndsAsWithASilentDevice) {
  const struct {
    const char* button;
    std::string told, silence;
  } rows[] = {{"SendImageCmd", TimeOutBox("VK-RTX") + "False\n", "5000 ms"},
              {"SendBlocksCmd", TimeOutBox("VK-RTX") + "False\n", "1234 ms"},
              {"ReadImageCmd", "registers 77 78 79 7A\nTrue\n", "3000 ms"},
              {"ReadBlocksCmd", TimeOutBox("VK-RTX") + "False\n", "3000 ms"},
              {"RebootCmd", "False\n", "0 ms"}};
  for (const auto& row : rows) {
    GoneDevice gone;
    auto h = Start("VK-RTX", &gone);
    EXPECT_EQ(h->Click(row.button), row.told + row.silence) << row.button;
    EXPECT_LE(h->loop.Sleeps(), 1) << row.button;
    h = Start("VK-RTX", nullptr);
    h->app.globals.ComPortText = "None";  // taken at once, whatever was chosen before
    EXPECT_EQ(h->Click(row.button), row.told + "0 ms") << row.button;
    EXPECT_TRUE(h->driver.calls.empty());
  }
}

TEST_F(ConfigModTest, WhatTheDeviceStoresByIsPartOfTheDownload) {
  ScriptedDevice device;
  device.On(Write5, {{1ms, AckByte}}).On(Write7, {{1ms, AckByte}});
  auto h = Start("VK-RTX", &device);
  h->driver.Fail("Write", 5, 2);  // the end of exchange
  EXPECT_EQ(h->Click("SendBlocksCmd"), TimeOutBox("VK-RTX") + "False\n2 ms");
}

}  // namespace
}  // namespace vk32
