// The moving of a whole parameter set to and from a device, byte by byte.
#include "core/ConfigMod.h"

#include <algorithm>

#include "core/TestWizard.h"

namespace vk32 {
namespace {

// Blocks 5 and 7 make up the parameter set of the VK-RTX.
const Bytes AckByte = "\x06", End = FromHex("A5 A5");
const Bytes Write5 = FromHex("A5 CE 09 FA 00 05 00 03 11 22 33 98"), Read5 = FromHex("A5 CE 06 F5 00 05 00 40 C6");
const Bytes Write7 = FromHex("A5 CE 08 FA 00 07 00 02 00 FF FE"), Read7 = FromHex("A5 CE 06 F5 00 07 00 40 C4");
const Bytes Block5(66, '\0'), Block7 = "\x01" + Bytes(64, '\x02') + "\x7F";

using Operation = TestWizard::Operation;
const Operation SendImage = [](Conversation& c, TestWizard&) { return DownloadImage(c); };
const Operation SendBlocks = [](Conversation& c, TestWizard&) { return DownloadBlocks(c); };
const Operation Reboot = [](Conversation& c, TestWizard&) { return SendReboot(c); };
const Operation ReadBlocks = [](Conversation& c, TestWizard& wizard) {
  UploadBlocks(c, wizard);
  return c.app.globals.CommFailed == FlagFalse;
};
const Operation ReadImage = [](Conversation& c, TestWizard& wizard) {
  UploadImage(c, wizard);
  wizard.Note("registers " + ToHex(c.app.globals.RegistersToString(0, 2)));
  return true;
};
const std::string Left = "registers 77 78 79 7A\nTrue\n";  // as they were

std::string TimeOutBox(const std::string& product) {
  return "box critical \"Error!\" \"A timeout or error has occured while communicating to the " + product +
         "\" -> OK\n";
}

using Message = std::pair<Bytes, std::vector<ScriptedDevice::Reply>>;

/// The device gets these messages and nothing else, and the program tells that.
void Check(const char* product, Operation operation, const std::vector<Message>& messages, const std::string& told,
           const Bytes& image = {}) {
  ScriptedDevice device;
  for (const Message& message : messages) device.On(message.first, message.second);
  WizardHarness h(product, &device, image);
  EXPECT_EQ(h.Run(operation), told) << product;
  EXPECT_TRUE(device.Done()) << ToHex(h.driver.written);
  EXPECT_FALSE(h.app.comm.IsOpen(3));
  // At the open, by SetDeviceLink, and before the first message; the block read leaves that out.
  EXPECT_EQ(std::count(h.driver.calls.begin(), h.driver.calls.end(), "Purge 15"), operation == ReadBlocks ? 2 : 3);
}

TEST(ConfigMod, BlocksAreSentAndReadOneByOneUntilOneFails) {
  const Message sent{Write5, {{20ms, AckByte}}}, read{Read5, {{10ms, AckByte}, {20ms, Block5}}};
  Check("VK-RTX", SendBlocks, {sent, {Write7, {{30ms, "\x15" + AckByte}}}, {End, {}}}, "True\n100 ms");
  Check("VK-RTX", SendBlocks, {sent, {Write7, {{30ms, "\x15"}}}}, TimeOutBox("VK-RTX") + "False\n1254 ms");
  const std::string decoded = "block 5: 00 00 00 (port open)\n", failed = decoded + TimeOutBox("VK-RTX") + "False\n";
  Check("VK-RTX", ReadBlocks,
        {read, {Read7, {{2990ms, AckByte}, {4000ms, Mid(Block7, 1, 30)}, {5980ms, Mid(Block7, 31)}}}, {End, {}}},
        decoded + "block 7: 01 02 02 (port open)\nsetup VK (port open)\nTrue\n6000 ms");
  Check("VK-RTX", ReadBlocks, {read, {Read7, {}}}, failed + "3020 ms");
  Check("VK-RTX", ReadBlocks, {read, {Read7, {{100ms, AckByte + Mid(Block7, 1, 65)}}}}, failed + "3120 ms");
  Check("VK-RTX", ReadBlocks, {read, {Read7, {{100ms, AckByte + Mid(Block7, 1, 65) + "\x7E"}}}}, failed + "120 ms");

  // The end is what the device stores by: without it nothing has changed.
  ScriptedDevice device;
  device.On(Write5, {{1ms, AckByte}}).On(Write7, {{1ms, AckByte}});
  WizardHarness h("VK-RTX", &device);
  h.driver.Fail("Write", 5, 2);
  EXPECT_EQ(h.Run(SendBlocks), TimeOutBox("VK-RTX") + "False\n2 ms");
}

/// What a device says to a request for its image: "TR", length, header, image, checksum.
Bytes ImageReply(std::size_t headerLength, const Bytes& image) {
  const auto length = static_cast<int>(image.size() + headerLength);
  return "TR" + Bytes{Chr(length & 255), Chr(length >> 8)} + Bytes(headerLength, 'h') + image + "\x55\x55";
}

TEST(ConfigMod, AnImageIsReadAsItComes) {
  const std::string taken = "setup RB (port open)\nregisters 01 02 03 04\nTrue\n";
  const Bytes good = ImageReply(10, "\1\2\3\4");
  // Each of the three reads has its own time.
  const Message request{"TEE", {{2990ms, Mid(good, 1, 5)}, {5980ms, Mid(good, 6, 10)}, {8970ms, Mid(good, 16)}}};
  Check("RB2000", ReadImage, {request, {AckByte, {}}}, taken + "8970 ms");
  const std::tuple<Bytes, bool, std::string> rows[] = {
      {"XR" + good.substr(2), false, Left + "0 ms"},
      {"Tr" + good.substr(2), false, Left + "0 ms"},
      {Mid(good, 1, 18), true, "setup RB (port open)\nregisters 01 02 79 7A\nTrue\n3000 ms"},  // two bytes lack
      {Mid(good, 1, 9), true, "setup RB (port open)\n" + Left + "6000 ms"},
      {ImageReply(10, "\1\2\3\4" + Bytes(510, '\1')), true, taken + "0 ms"},  // all registers that there are
      {ImageReply(10, Bytes(516, '\1')), true, TimeOutBox("RB2000") + Left + "0 ms"}};
  for (const auto& [reply, acknowledged, told] : rows) {
    const Message asked{"TEE", {{0ms, reply}}};
    Check("RB2000", ReadImage, acknowledged ? std::vector{asked, {AckByte, {}}} : std::vector{asked}, told);
  }
}

TEST(ConfigMod, WhatCanNotBeSentEndsAtOnce) {
  const std::string failed = TimeOutBox("VK5300") + "False\n";
  const std::pair<Operation, std::string> rows[] = {
      {SendImage, failed}, {SendBlocks, failed}, {ReadImage, Left}, {ReadBlocks, failed}, {Reboot, "False\n"}};
  for (const auto& [operation, told] : rows) {
    WizardHarness h("VK5300");
    h.app.globals.ComPortText = "None";  // whatever was chosen before
    EXPECT_EQ(h.Run(operation), told + "0 ms");
    EXPECT_TRUE(h.driver.calls.empty());
  }
  Check("VK5300", Reboot, {{"s", {}}}, "True\n0 ms");  // waits for nothing
}

}  // namespace
}  // namespace vk32
