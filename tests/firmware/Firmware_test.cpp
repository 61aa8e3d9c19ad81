// The firmware wizard and its exchange, in virtual time.
#include <filesystem>

#include "support/Harness.h"

namespace vk32 {
namespace {

const Bytes Probe = "\x1B", Erase = FromHex("A5 FB"), Leave = FromHex("A5 A5");
const std::string Failed = "An error has occured while installing firmware.";

/// The wizard is open, on a line to that device.
struct Wizard : Harness {
  explicit Wizard(FakeDevice& device) {
    GoTo("VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd", &device);
    Do("click ProductMenu.UpgradeCmd");
  }
  /// To the page that confirms a file of so many bytes.
  void Choose(std::size_t size) {
    file.Fill(content = ":" + Bytes(size - 1, 'x'));
    Do("type Firmware.FirmFileTxt " + file.Path() + "\nclick Firmware.NextCmd");
    Elapsed();
  }
  std::string Next() { return Do("click Firmware.NextCmd"); }

  TemporaryFile file{"new.rom"};
  Bytes content;
};

TEST(Firmware, ChecksTheFileInOrder) {
  GatewayDevice device("VK-RTX-Modbus");
  Wizard h(device);
  EXPECT_EQ(h.Get("Firmware.BackCmd.Shown") + h.Get("Firmware.InstallFrame.Shown"), "FalseFalse");
  const TemporaryFile wrong("wrong.rom", "x:");
  const std::pair<std::string, std::string> rows[] = {
      {"", "box information \"VK32\" \"Must select a firmware file to continue."},
      {h.file.Path(), "box information \"VK32\" \"File does not exist."},
      {wrong.Path(), "box exclamation \"VK32\" \"The selected file is not a valid firmware file."}};
  for (const auto& [path, box] : rows) {
    h.Do("type Firmware.FirmFileTxt " + path);
    EXPECT_TRUE(h.Next().starts_with(box)) << path;
    EXPECT_EQ(h.Get("Firmware.UpgradeFrame.Shown"), "True");
  }
  h.Choose(1);
  EXPECT_EQ(h.Get("Firmware.ConfirmationFrame.Shown") + h.Get("Firmware.FirmFileConTxt.Caption"),
            "True" + h.file.Path());
  h.Do("click Firmware.BackCmd\nfile cancel");  // the dialog; that empties the box
  EXPECT_NE(h.Do("click Firmware.BrowseCmd").find("VK-RTX Firmware Files (*.rom)|*.rom|All"), Bytes::npos);
  EXPECT_EQ(h.Get("Firmware.FirmFileTxt.Text"), "");
}

TEST(Firmware, TheProbeWantsTheWholeBannerInASecondAndErasesNothingOnceItWasLeft) {
  const Bytes banner = "OFFLINE MANAGER" + Bytes(325, ' ');
  const std::tuple<ScriptedDevice::Reply, Time, std::string> rows[] = {
      {{10ms, banner.substr(1)}, 1000ms, ""},
      {{1001ms, banner}, 1000ms, ""},
      {{0ms, Bytes(340, 'x')}, 0ms, ""},
      {{900ms, banner}, 700ms, "after 700 click Firmware.CancelCmd"},
      {{900ms, banner}, 700ms, "after 700 click Firmware.BackCmd"}};
  for (const auto& [reply, lasts, meanwhile] : rows) {
    ScriptedDevice device;
    device.On(Probe, {reply});
    Wizard h(device);
    h.Choose(10);
    h.Do(meanwhile);
    EXPECT_EQ(h.Next().find("Press the Configuration Button on the VK-RTX") == Bytes::npos, !meanwhile.empty());
    EXPECT_EQ(h.driver.written, Probe);
    EXPECT_TRUE(meanwhile.empty() || !h.app.comm.IsOpen(3));
    EXPECT_EQ(h.Elapsed(), lasts);
    if (reply.bytes[0] != 'x') continue;
    EXPECT_TRUE(h.details.ends_with("what came is not from the Offline Manager.\nSent last: 1B\nCame then: " +
                                    Split(h.details, ':').back().substr(1)));
    h.driver.Fail("Write", 13);
    h.Next();
    h.Next();  // of a device that says nothing any more
    EXPECT_TRUE(
        h.details.ends_with("nothing came within 1 s after the question for the Offline Manager.\nSent last: 1B\n"));
  }
}

TEST(Firmware, ErasesAndStreamsInPieces) {
  const struct {
    std::size_t size;  // of the file
    sim::FlashTimes times;
    sim::Misbehaviour how;
    Time lasts;
    std::string detail;
    bool streamed = true;
    std::string state{};  // of the device, after a failure
  } rows[] = {
      {1, {}, {}, 4500ms, "1 of 1 bytes sent in 1 s"},
      {4096, {}, {}, 4700ms, "4 of 4 KB sent in 1 s"},  // held while it burns a part
      {10240, {}, {}, 4900ms, "10 of 10 KB sent in 1 s"},
      {10241, {}, {}, 4900ms, "10 of 10 KB sent in 1 s"},
      {1, {14999ms, 2999ms, 0ms}, {}, 18998ms, "1 of 1 bytes sent in 1 s"},
      {1, {15001ms}, {}, 15000ms, "0 of 1 bytes sent, then nothing came within 15 s", false, "may have no"},
      {1, {3000ms, 3001ms}, {}, 6000ms, "0 of 1 bytes sent, then nothing came within 3 s", false, "has no"},
      {1, {}, {.noReady = true}, 6000ms, "0 of 1 bytes sent, then nothing came within 3 s", false, "has no"},
      {1, {}, {.noBurn = true}, 9500ms, "1 of 1 bytes sent, then nothing came within 6 s", true, "did not con"},
      {4096, {}, {.holdForGood = true}, 9500ms, "4 of 4 KB sent, then nothing came within 6 s", true, "did not"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    GatewayDevice device("VK-RTX-Modbus", row.how);
    device.gateway.Flash() = row.times;
    Wizard h(device);
    h.Choose(row.size);
    h.Do("after 2500 get Firmware.ProgressInfoLbl.Caption\nafter 2500 get Firmware.ProgressBar.Value");
    EXPECT_EQ(h.Next(), "value \"Erasing flash memory...\"\nvalue \"134\"\n");
    EXPECT_EQ(h.Elapsed(), row.lasts);
    EXPECT_EQ(h.driver.written, Probe + Erase + (row.streamed ? h.content : "") + Leave);
    EXPECT_EQ(std::count(h.driver.calls.begin(), h.driver.calls.end(), "Write 10240"), row.size / 10240);
    EXPECT_FALSE(h.app.comm.IsOpen(3) || device.gateway.NextDue() || h.app.forms.Find("Firmware")->Busy);
    h.Do("wait 2000");  // nothing ticks on
    EXPECT_EQ(device.gateway.Firmware(), row.streamed ? h.content : "");
    const bool installed = row.state.empty();
    EXPECT_EQ(h.Get("Firmware.ProgressInfoLbl.Caption"),
              installed ? "Firmware has been successfully installed." : Failed);
    EXPECT_EQ(h.Get("Firmware.DetailLbl.Caption"), "new.rom: " + row.detail);
    h.Do("click ProductMenu.UpgradeCmd");  // comes in front as it is
    EXPECT_EQ(h.Get("Firmware.NextCmd.Picture"), "117");
    EXPECT_EQ(h.Get("Firmware.ResultMark.Picture"), installed ? "Tick" : "Cross");
    EXPECT_TRUE(h.Get("Firmware.NextStepLbl.Caption").starts_with(installed ? "" : "The gateway " + row.state));
    EXPECT_EQ(h.Get("Firmware.ProgressBar.Value") + h.Get("Firmware.CancelCmd.Shown"), "1000False");
  }
}

TEST(Firmware, TellsHowMuchIsLeft) {
  GatewayDevice device("VK-RTX-Modbus");
  device.gateway.Flash().burn = 5000ms;
  Wizard h(device);
  h.Choose(46080);
  for (const std::string at : {"2000", "4000", "9500", "10500"}) {
    h.Do("after " + at + " get Firmware.DetailLbl.Caption");
  }
  h.Do("after 3300 get Firmware.ProgressInfoLbl.Caption\nafter 3300 get Firmware.ProgressBar.Value");
  EXPECT_EQ(h.Next(),
            "value \"new.rom: 0 of 45 KB sent\"\n"
            "value \"Firmware is being installed...\"\nvalue \"0\"\n"
            "value \"new.rom: 10 of 45 KB sent, 19 s left\"\n"
            "value \"new.rom: 10 of 45 KB sent, 13 s left\"\n"
            "value \"new.rom: 10 of 45 KB sent, 12 s left\"\n");
}

TEST(Firmware, WhatBreaksItOffLeavesTheDeviceAllTheSame) {
  // Cancelled, with "No" at first, at each of its stages; or the file vanishes, or shrinks, before it is sent.
  const std::string box = "box question \"VK32\" \"Are you sure you want cancel the firmware upgrade?";
  for (const std::string how : {"50 no", "2000 yes", "3200 yes", "3700 yes", "vanishes", "shrinks"}) {
    SCOPED_TRACE(how);
    GatewayDevice device("VK-RTX-Modbus");
    Wizard h(device);
    h.Choose(30000);
    const auto words = Split(how);
    if (words.size() == 2) h.Do("answer " + words[1] + "\nafter " + words[0] + " click Firmware.CancelCmd");
    if (how == "vanishes") h.loop.StartTimer(15ms, [&] { std::filesystem::remove(h.file.Path()); });
    if (how == "shrinks") h.loop.StartTimer(15ms, [&] { h.file.Fill(":short"); });
    EXPECT_EQ(h.Next().starts_with(box), words.size() == 2);
    EXPECT_TRUE(h.driver.written.ends_with(Leave));
    EXPECT_EQ(device.gateway.Firmware() == h.content, how == "50 no");
    EXPECT_EQ(device.gateway.NextDue().has_value(), how == "3700 yes");  // in a file it is taken for more of it
    EXPECT_FALSE(h.app.comm.IsOpen(3));
    EXPECT_EQ(!h.app.forms.Find("Firmware"), how.ends_with("yes"));
    EXPECT_TRUE(words.size() == 2 || h.Get("Firmware.ProgressInfoLbl.Caption") == Failed);
  }
}

}  // namespace
}  // namespace vk32
