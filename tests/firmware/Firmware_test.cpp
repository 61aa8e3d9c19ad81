// The firmware wizard and its exchange, byte by byte in virtual time.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

const Bytes Probe = "\x1B", Erase = FromHex("A5 FB"), Leave = FromHex("A5 A5"), AckByte = "\x06";
const Bytes Banner = "Offline Manager" + Bytes(325, '.');
const std::string Done = "Firmware has been successfully installed.";
const std::string Failed = "An error has occured while installing firmware.";

class FirmwareTest : public testing::Test {
 protected:
  FirmwareTest() {
    h.GoTo("VKRTXCmd");
    h.Do("click MainMenu.ABEthModbusModelCmd");
    h.driver.Plug("COM3", &device);
    h.Do("select ProductMenu.COMCbo COM3\nclick ProductMenu.UpgradeCmd");
    h.driver.written.clear();
  }
  /// Brings the wizard to the page that confirms a file of so many bytes.
  void Choose(std::size_t size) {
    content = ":" + Bytes(size - 1, 'x');
    file.Fill(content);
    h.Do("type Firmware.FirmFileTxt " + file.Path());
    h.Do("click Firmware.NextCmd");
  }
  std::string Next() { return h.Do("click Firmware.NextCmd"); }
  std::string Get(const std::string& path) { return h.Get("Firmware." + path); }

  ScriptedDevice device;
  TemporaryFile file{"new.rom"};
  Bytes content;
  Harness h;
};

TEST_F(FirmwareTest, ChecksTheFileInOrder) {
  TemporaryFile wrong("wrong.rom"), empty("empty.rom");
  wrong.Fill("x:");
  empty.Fill("");
  const std::string invalid =
      "box exclamation \"VK32\" \"The selected file is not a valid firmware file.\\r\\nSelect another file to "
      "continue.\" -> "
      "OK\n";
  EXPECT_EQ(Next(), "box information \"VK32\" \"Must select a firmware file to continue.\" -> OK\n");
  const std::pair<std::string, std::string> rows[] = {
      {file.Path(), "box information \"VK32\" \"File does not exist.  Select a Firmware file to continue.\" -> OK\n"},
      {wrong.Path(), invalid},
      {empty.Path(), invalid},
  };
  for (const auto& [path, box] : rows) {
    h.Do("type Firmware.FirmFileTxt " + path);
    EXPECT_EQ(Next(), box);
    EXPECT_EQ(Get("UpgradeFrame.Shown"), "True");
  }
  Choose(1);
  EXPECT_EQ(Get("ConfirmationFrame.Shown") + Get("ConfirmFirmLbl.ForeColor"), "True2368684");
  EXPECT_EQ(Get("FirmFileConTxt.Caption"), file.Path());

  // Back, and a dialog that is cancelled empties the box.
  h.Do("click Firmware.BackCmd\nfile cancel");
  EXPECT_EQ(h.Do("click Firmware.BrowseCmd"),
            "dialog open \"Select Firmware File\" \"VK-RTX Firmware Files (*.rom)|*.rom|All Files (*.*)|*.*\" -> "
            "cancelled\n");
  EXPECT_EQ(Get("FirmFileTxt.Text"), "");
  EXPECT_EQ(h.Do("click Firmware.CancelCmd\nforms"), "form ProductMenu visible\n");
}

TEST_F(FirmwareTest, TheProbeWantsTheWholeBannerInASecond) {
  const std::string box =
      "box information \"VK32\" \"Press the Configuration Button on the VK-RTX\\r\\nbefore attepmting to "
      "continue.\" -> OK\n";
  device.On(Probe)
      .On(Probe, {{10ms, Banner.substr(0, 339)}})
      .On(Probe, {{1001ms, Banner}})
      .On(Probe, {{0ms, Bytes(340, 'x')}});
  Choose(10);
  for (int attempt = 0; attempt < 4; ++attempt) {
    h.Elapsed();
    EXPECT_EQ(Next(), box);
    EXPECT_EQ(h.Elapsed(), attempt == 3 ? 0ms : 1000ms);
    EXPECT_EQ(Get("ConfirmationFrame.Shown"), "True");
  }
  EXPECT_EQ(h.driver.written, Bytes(4, '\x1B'));
}

TEST_F(FirmwareTest, ErasesAndStreamsInPieces) {
  for (const std::size_t size : {1u, 10240u, 10241u}) {
    SCOPED_TRACE(size);
    if (!h.app.forms.Find("Firmware")) h.Do("click ProductMenu.UpgradeCmd");
    h.driver.written.clear();
    h.driver.calls.clear();
    Choose(size);
    device.On(Probe, {{5ms, "OFFLINE MANAGER" + Bytes(325, ' ')}})
        .On(Erase, {{14999ms, "erasing.." + AckByte}, {17998ms, AckByte}})
        .On(content, {{5999ms, AckByte}})
        .On(Leave);
    h.Do(
        "after 3500 get Firmware.ProgressInfoLbl.Caption\nafter 3501 get Firmware.ProgressBar.Value\nafter 16000 get "
        "Firmware.NextCmd.Shown");
    h.Elapsed();
    EXPECT_EQ(Next(), "value \"Erasing flash memory...\"\nvalue \"201\"\nvalue \"False\"\n");
    EXPECT_EQ(h.Elapsed(), 5ms + 17998ms + 5999ms);
    EXPECT_TRUE(device.Done());
    EXPECT_EQ(std::count(h.driver.calls.begin(), h.driver.calls.end(), "Write 10240"), size >= 10240 ? 1 : 0);
    EXPECT_EQ(h.driver.calls.back(), "Close");
    EXPECT_EQ(Get("ProgressInfoLbl.Caption"), Done);
    EXPECT_EQ(Get("ProgressBar.Value") + Get("NextCmd.Picture") + Get("CancelCmd.Shown") + Get("BackCmd.Shown"),
              "1000117FalseFalse");
    Next();
  }
}

TEST_F(FirmwareTest, EveryFailureLeavesTheDeviceAndClosesThePort) {
  const struct {
    const char* name;
    Time erased, ready, burnt;  // -1: never
    Time lasts;
    bool streamed;
  } rows[] = {{"no erase", -1ms, -1ms, -1ms, 15000ms, false},
              {"not ready", 100ms, -1ms, -1ms, 3600ms, false},  // the line of the failure before has to be quiet first
              {"late", 15001ms, -1ms, -1ms, 15500ms, false},
              {"no burn", 100ms, 200ms, -1ms, 6700ms, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    if (!h.app.forms.Find("Firmware")) h.Do("click ProductMenu.UpgradeCmd");
    ScriptedDevice broken;
    h.driver.Plug("COM3", &broken);
    Choose(100);
    std::vector<ScriptedDevice::Reply> replies;
    for (const Time moment : {row.erased, row.ready}) {
      if (moment >= 0ms) replies.push_back({moment, AckByte});
    }
    broken.On(Probe, {{0ms, Banner}}).On(Erase, replies);
    h.driver.written.clear();
    h.Elapsed();
    Next();
    EXPECT_EQ(h.Elapsed(), row.lasts);
    EXPECT_EQ(h.driver.written, Probe + Erase + (row.streamed ? content : Bytes()) + Leave);
    EXPECT_EQ(h.driver.calls.back(), "Close");
    EXPECT_EQ(Get("ProgressInfoLbl.Caption") + Get("ProgressBar.Value"), Failed + "1000");
    Next();
  }
}

TEST_F(FirmwareTest, AFileThatVanishesOrShrinksFails) {
  for (const bool vanishes : {true, false}) {
    SCOPED_TRACE(vanishes);
    if (!h.app.forms.Find("Firmware")) h.Do("click ProductMenu.UpgradeCmd");
    Choose(30000);
    ScriptedDevice other;
    other.On(Probe, {{0ms, Banner}}).On(Erase, {{10ms, AckByte}, {20ms, AckByte}}).On(Leave);
    h.driver.Plug("COM3", &other);
    h.loop.StartTimer(15ms, [&] {
      if (vanishes) {
        std::filesystem::remove(file.Path());
      } else {
        file.Fill(":short");
      }
    });
    Next();
    EXPECT_TRUE(other.Done());
    EXPECT_EQ(Get("ProgressInfoLbl.Caption"), Failed);
    EXPECT_EQ(h.driver.calls.back(), "Close");
    Next();
  }
}

TEST_F(FirmwareTest, CancelAsksWhileItInstalls) {
  const std::string question =
      "box question \"VK32\" \"Are you sure you want cancel the firmware upgrade?\\r\\r\\nCancelling will cause the "
      "firmware "
      "in the VK-RTX to become corrupt. The\\r\\nfirmware will need to be resent before the VK-RTX will operate.\" -> ";
  Choose(30000);
  device.On(Probe, {{0ms, Banner}})
      .On(Erase, {{100ms, AckByte}, {200ms, AckByte}})
      .On(content, {{1ms, AckByte}})
      .On(Leave);
  h.Do("answer no\nafter 50 click Firmware.CancelCmd");
  EXPECT_EQ(Next(), question + "No\n");
  EXPECT_EQ(Get("ProgressInfoLbl.Caption"), Done);
  Next();

  // Yes stops the stream at the next piece; the device still gets the end.
  h.Do("click ProductMenu.UpgradeCmd");
  Choose(30000);
  device.On(Probe, {{0ms, Banner}}).On(Erase, {{100ms, AckByte}, {200ms, AckByte}});
  h.driver.written.clear();
  h.Do("answer yes\nafter 200 click Firmware.CancelCmd");
  EXPECT_EQ(Next(), question + "Yes\n");
  EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\n");
  EXPECT_EQ(h.driver.written.substr(h.driver.written.size() - 2), Leave);
  EXPECT_LT(h.driver.written.size(), content.size());
  EXPECT_EQ(h.driver.calls.back(), "Close");
}

TEST_F(FirmwareTest, NothingIsErasedOnceTheProbeWasLeft) {
  for (const char* const click :
       {"click Firmware.CancelCmd", "click Firmware.BackCmd\nafter 300 click Firmware.NextCmd"}) {
    if (!h.app.forms.Find("Firmware")) h.Do("click ProductMenu.UpgradeCmd");
    Choose(100);
    device.On(Probe, {{900ms, Banner}});
    h.driver.written.clear();
    h.Do(std::string("after 700 ") + click);
    Next();
    EXPECT_EQ(h.driver.written.find_first_not_of(Probe), Bytes::npos);
    EXPECT_EQ(h.driver.calls.back(), "Close");
    h.Do("click Firmware.CancelCmd");
  }
}

TEST_F(FirmwareTest, AWholeInstallationOnASimulatedGateway) {
  GatewayDevice gateway("VK-RTX-DF1", {}, true);
  h.driver.Plug("COM3", &gateway);
  Choose(5000);
  Next();
  EXPECT_EQ(Get("ProgressInfoLbl.Caption"), Done);
  EXPECT_EQ(gateway.gateway.Firmware(), content);
}

}  // namespace
}  // namespace vk32
