// One conversation with one device: what happens when other things happen at once.
#include "link/Conversation.h"

#include <gtest/gtest.h>

#include <map>

#include "link/Frames.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

const Bytes Banner = "Offline Manager" + Bytes(325, '.');
const std::string TimeOut = "box critical \"Error!\" \"A timeout or error has occured while communicating to the ";
const std::string Success = "box information \"Success!\"";

/// COM3 and COM4 with a device each; COM3 is chosen.
struct TwoPorts : Harness {
  TwoPorts(const std::string& productButton, FakeDevice* third, FakeDevice* fourth) {
    driver.Plug("COM3", third);
    driver.Plug("COM4", fourth);
    GoTo(productButton);
    if (productButton == "VKRTXCmd") Do("click MainMenu.ABEthModbusModelCmd");
    Do("select ProductMenu.COMCbo COM3");
  }
  /// To the last page, FINISH not clicked yet.
  void ToApplyPage(const std::string& wizard) {
    Do("click ProductMenu.ConfigureCmd");
    for (int page = 0; page < 9 && Get(wizard + ".ApplyFrame.Visible") != "True"; ++page) {
      for (const char* field : {"EthIPTxt", "EthSubTxt"}) Do("type " + wizard + "." + field + " 10.0.0.1");
      Do("click " + wizard + ".NextCmd");
    }
  }
};

/// Hears everything, and says at its own times what it has to say.
struct Device : FakeDevice {
  void FromHost(std::string_view bytes, Time) override { heard += bytes; }
  Bytes ToHost(Time now) override {
    Bytes bytes;
    for (; !says.empty() && says.begin()->first <= now; says.erase(says.begin())) bytes += says.begin()->second;
    return bytes;
  }
  std::optional<Time> NextDue() const override {
    return says.empty() ? std::nullopt : std::optional(says.begin()->first);
  }
  int Count(const Bytes& message) const {
    int count = 0;
    for (std::size_t at = 0; (at = heard.find(message, at)) != Bytes::npos; ++at) ++count;
    return count;
  }

  std::map<Time, Bytes> says;
  Bytes heard;
};

// What goes on, and how the box begins that refuses what would disturb it.
TEST(Conversation, ThereIsOneAndWhateverWouldDisturbItIsRefused) {
  TemporaryFile firmware("new.rom");
  firmware.Fill(":");
  const std::string probe = "click ProductMenu.UpgradeCmd\ntype Firmware.FirmFileTxt " + firmware.Path() +
                            "\nclick Firmware.NextCmd\nclick Firmware.NextCmd";
  const struct {
    std::string product, wizard, begins, words;
  } rows[] = {
      {"RB2000Cmd", "Configuration_RB2000", "click Configuration_RB2000.UploadCmd",
       "Reading the configuration of the RB2000 on COM3 is under way.\\r\\nWait until it has ended, or end it by "
       "CANCEL in the wizard."},
      {"VK5300Cmd", "Configuration_VK5300", "click ProductMenu.DeviceInfoCmd",
       "Reading the device information of the VK5300 on COM3 is under way.\\r\\nWait until it has been read."},
      {"VKRTXCmd", "Configuration_VKRTX", "click ProductMenu.OfflineCmd",
       "The Offline Manager of the VK-RTX on COM3 is under way.\\r\\nEnd it by CLOSE in the window Offline Manager."},
      {"VKRTXCmd", "Configuration_VKRTX", probe,
       "Upgrading the firmware of the VK-RTX on COM3 is under way.\\r\\nEnd it by CANCEL in the window Upgrade "
       "Firmware."}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.words);
    Device third, fourth;
    TwoPorts h(row.product, &third, &fourth);
    h.ToApplyPage(row.wizard);
    const std::string refused = "box information \"VK32\" \"" + row.words + "\" -> OK\n";
    Bytes heard;
    h.loop.StartTimer(600ms, [&] {
      heard = third.heard;
      std::vector<std::string> acts{"select ProductMenu.COMCbo COM4", "select ProductMenu.COMCbo None",
                                    "select ProductMenu.COMCbo COM3", "click " + row.wizard + ".UploadCmd",
                                    "click " + row.wizard + ".NextCmd"};
      const bool info = row.product == "VK5300Cmd", tool = row.product == "VKRTXCmd";
      if (info) acts.emplace_back("click ProductMenu.DeviceInfoCmd");
      if (!tool) acts.emplace_back("click ProductMenu.OfflineCmd");
      for (const std::string& act : acts) {
        EXPECT_EQ(h.Do(act), refused) << act;
        EXPECT_EQ(h.Get("ProductMenu.COMCbo.Text"), "COM3");
      }
      // To the main menu and back: another product, or model, is refused there.
      const std::string other = tool ? "VKRTXCmd\nclick MainMenu.ABEthAsciiDf1ModelCmd" : "RB3000Cmd";
      EXPECT_EQ(h.Do("click ProductMenu.ReturnCmd\nclick MainMenu." + other), refused);
    });
    h.Do(row.begins + "\nwait 700");
    EXPECT_NE(heard, "");
    EXPECT_EQ(third.heard + fourth.heard, heard);
  }
}

TEST(Conversation, EndsAtOnceWithItsFormAndClosesThePort) {
  const struct {
    std::string product, wizard, begins, ends;
  } rows[] = {{"RB2000Cmd", "Configuration_RB2000", "UploadCmd", "click Configuration_RB2000.CancelCmd"},
              {"RB2000Cmd", "Configuration_RB2000", "NextCmd", "click Configuration_RB2000.CancelCmd"},
              {"VK5300Cmd", "Configuration_VK5300", "UploadCmd", "click Configuration_VK5300.CancelCmd"},
              {"VK5300Cmd", "Configuration_VK5300", "NextCmd", "click Configuration_VK5300.CancelCmd"},
              {"VKRTXCmd", "Configuration_VKRTX", "UploadCmd", "click ProductMenu.ExitCmd"},
              {"VKRTXCmd", "Configuration_VKRTX", "NextCmd", "click Configuration_VKRTX.CancelCmd"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.product + row.begins);
    Device device;
    TwoPorts h(row.product, &device, nullptr);
    h.ToApplyPage(row.wizard);
    h.Elapsed();
    h.Do("after 1000 " + row.ends);
    const std::string told = h.Do("click " + row.wizard + "." + row.begins);
    EXPECT_EQ(h.Elapsed(), 1s);
    EXPECT_EQ(told.find("Error!"), std::string::npos) << told;
    EXPECT_EQ(told.find(Success), std::string::npos) << told;
    EXPECT_FALSE(h.app.comm.IsOpen(3));
    EXPECT_EQ(device.Count("NEE") + device.Count("TEE") + device.Count(BlockFrame::Start), 1);
    EXPECT_EQ(device.heard.find(EndOfExchange), Bytes::npos);
  }
}

// The ACK of a download comes after its time-out; the user has clicked FINISH again by then.
TEST(Conversation, ALateAnswerIsNotTakenForThatOfTheNextOne) {
  const struct {
    std::vector<int> late;  // ms behind the first time-out
    int dropped;            // ms until the line counts as quiet
  } rows[] = {{{}, 500}, {{300}, 800}, {{100, 550, 1049}, 1549}, {{501}, 500}};
  for (const auto& row : rows) {
    Device device;
    TwoPorts h("RBCardCmd", &device, nullptr);
    h.ToApplyPage("Configuration_RBCard");
    for (const int late : row.late) device.says[h.loop.Now() + 7s + late * 1ms] = "\x06";
    EXPECT_NE(h.Do("click Configuration_RBCard.NextCmd").find(TimeOut), std::string::npos);
    h.Elapsed();
    const bool tooLate = !row.late.empty() && row.late.back() == 501;  // then it is one that nobody can tell
    EXPECT_EQ(h.Do("click Configuration_RBCard.NextCmd").find(Success) != std::string::npos, tooLate);
    EXPECT_EQ(h.Elapsed(), row.dropped * 1ms + (tooLate ? 1ms : 7s));
  }
  // A device that never falls silent holds it for 3 s; what is still to come then is taken as ever.
  Device chatty;
  TwoPorts h("RBCardCmd", &chatty, nullptr);
  h.ToApplyPage("Configuration_RBCard");
  h.Do("click Configuration_RBCard.NextCmd");
  for (int i = 0; i < 40; ++i) chatty.says[h.loop.Now() + i * 100ms] = "x";
  h.Elapsed();
  h.Do("click Configuration_RBCard.NextCmd");
  EXPECT_EQ(h.Elapsed(), 3s + 7s);
}

// One XOFF; the device is asked to do without the rest of its 10240 s.
TEST(Conversation, AHeldLineStopsNobody) {
  Device device;
  TwoPorts h("VKRTXCmd", &device, nullptr);
  h.Do("click ProductMenu.OfflineCmd");
  device.says[h.loop.Now() + 100ms] = "\x13";
  h.Elapsed();
  h.Do(
      "wait 200\nafter 500 click OfflineMngr.CloseCmd\nafter 20 keys OfflineMngr.Term cd\nkeys OfflineMngr.Term "
      "ab\nforms");
  EXPECT_EQ(h.Elapsed(), 700ms);
  EXPECT_EQ(device.heard, "\r");
  EXPECT_FALSE(h.app.comm.IsOpen(3));

  // Released, the keys leave as they were pressed: c and d in the wait for a.
  h.Do("click ProductMenu.OfflineCmd");
  device.says[h.loop.Now() + 100ms] = "\x13";
  device.says[h.loop.Now() + 900ms] = "\x11";
  h.Do("wait 200\nafter 20 keys OfflineMngr.Term cd\nkeys OfflineMngr.Term ab");
  EXPECT_EQ(device.heard, "\r\racdb");
  h.Do("click OfflineMngr.CloseCmd");

  // Firmware: the question comes in the middle of the held piece; Yes ends it, and the end is all that still leaves.
  TemporaryFile firmware("new.rom");
  firmware.Fill(":" + Bytes(30000, 'f'));
  device.heard.clear();
  h.Do("click ProductMenu.UpgradeCmd\ntype Firmware.FirmFileTxt " + firmware.Path() + "\nclick Firmware.NextCmd");
  device.says[h.loop.Now() + 1ms] = Banner;
  device.says[h.loop.Now() + 2ms] = "\x06";
  device.says[h.loop.Now() + 3ms] = "\x06\x13";
  h.Elapsed();
  h.Do("answer yes\nafter 1000 click Firmware.CancelCmd\nclick Firmware.NextCmd\nforms");
  EXPECT_EQ(h.Elapsed(), 1s);
  EXPECT_EQ(ToHex(device.heard), "1B A5 FB A5 A5");
}

// A terminal whose transfer has failed has closed its port: it is idle, and goes with its product.
TEST(Conversation, IdleToolsCloseWithTheirProduct) {
  Device device;
  TemporaryFile firmware("new.rom");
  firmware.Fill(":");
  TwoPorts h("VK5300Cmd", &device, nullptr);
  h.Do("click ProductMenu.OfflineCmd\nanswer yes\nanswer yes\nfile " + firmware.Path());
  device.says[h.loop.Now() + 1ms] = "\x18";
  h.Do("click OfflineMngr.SendFirmwareCmd");
  EXPECT_EQ(h.Do("click ProductMenu.ReturnCmd\nclick MainMenu.VK5300Cmd\nforms"),
            "form OfflineMngr visible\nform ProductMenu visible\n");
  EXPECT_EQ(h.Do("click ProductMenu.ReturnCmd\nclick MainMenu.VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd\nclick "
                 "ProductMenu.UpgradeCmd\nforms"),
            "form ProductMenu visible\nform Firmware visible\n");
  EXPECT_EQ(h.Do("click ProductMenu.ReturnCmd\nclick MainMenu.RB2000Cmd\nforms"), "form ProductMenu visible\n");
}

}  // namespace
}  // namespace vk32
