// One conversation with one device: what happens when other things happen at once.
#include "link/Conversation.h"

#include "support/Harness.h"

namespace vk32 {
namespace {

const Bytes Banner = "Offline Manager" + Bytes(325, '.');
const std::string TimeOut = "box critical \"Error!\" \"A timeout or error has occured while communicating to the ";
const std::string Success = "box information \"Success!\"";

/// COM3 with a device, and COM4 with another; COM3 is chosen.
struct TwoPorts : Harness {
  TwoPorts(const std::string& product, FakeDevice& third, FakeDevice* fourth = nullptr)
      : wizard("Configuration_" + product) {
    driver.Plug("COM4", fourth);
    GoTo(product == "VKRTX" ? "VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd" : product + "Cmd", &third);
  }
  /// To the last page, FINISH not clicked yet.
  void ToApplyPage() {
    Do("click ProductMenu.ConfigureCmd");
    for (int page = 0; page < 9 && Get(wizard + ".ApplyFrame.Visible") != "True"; ++page) {
      for (const char* field : {"EthIPTxt", "EthSubTxt"}) Do("type " + wizard + "." + field + " 10.0.0.1");
      Do("click " + wizard + ".NextCmd");
    }
  }

  const std::string wizard;
};

/// Hears everything.
struct Device : SpeakingDevice {
  void FromHost(std::string_view bytes, Time) override { heard += bytes; }
  Bytes heard;
};

// What goes on, and how the box begins that refuses what would disturb it.
TEST(Conversation, ThereIsOneAndWhateverWouldDisturbItIsRefused) {
  const TemporaryFile firmware("new.rom", ":");
  const std::string probe = "click ProductMenu.UpgradeCmd\ntype Firmware.FirmFileTxt " + firmware.Path() +
                            "\nclick Firmware.NextCmd\nclick Firmware.NextCmd";
  const std::string upload = "click Configuration_RB2000.UploadCmd";
  const struct {
    std::string product, begins, what, advice;
  } rows[] = {
      {"RB2000", upload, "Reading the configuration of the RB2000",
       "Wait until it has ended, or end it by CANCEL in the wizard."},
      {"VK5300", "click ProductMenu.DeviceInfoCmd", "Reading the device information of the VK5300",
       "Wait until it has been read."},
      {"VKRTX", "click ProductMenu.OfflineCmd", "The Offline Manager of the VK-RTX",
       "End it by CLOSE in the window Offline Manager."},
      {"VKRTX", probe, "Upgrading the firmware of the VK-RTX", "End it by CANCEL in the window Upgrade Firmware."}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    Device third, fourth;
    TwoPorts h(row.product, third, &fourth);
    h.ToApplyPage();
    const std::string words = row.what + " on COM3 is under way.\\r\\n" + row.advice;
    const std::string refused = "box information \"VK32\" \"" + words + "\" -> OK\n";
    Bytes heard;
    h.loop.StartTimer(600ms, [&] {
      heard = third.heard;
      const bool info = row.product == "VK5300", tool = row.product == "VKRTX";
      const std::string port = "select ProductMenu.COMCbo ", wizard = "click " + h.wizard, menu = "click ProductMenu.";
      const std::string again = wizard + ".UploadCmd", next = wizard + ".NextCmd";
      for (const std::string& act : {port + "COM4", port + "None", port + "COM3", again, next,
                                     info ? menu + "DeviceInfoCmd" : next, tool ? next : menu + "OfflineCmd"}) {
        EXPECT_EQ(h.Do(act), refused) << act;
        EXPECT_EQ(h.Get("ProductMenu.COMCbo.Text"), "COM3");
      }
      // To the main menu and back: another product, or model, is refused there.
      const std::string other = tool ? "VKRTXCmd\nclick MainMenu.ABEthAsciiDf1ModelCmd" : "RB3000Cmd";
      // RETURN ends the reading of the device information: that is told.
      const std::string told = h.Do("click ProductMenu.ReturnCmd\nclick MainMenu." + other);
      EXPECT_EQ(told.find("is just ending") != std::string::npos, info) << told;
      EXPECT_EQ(told == refused, !info) << told;
    });
    h.Do(row.begins + "\nwait 700");
    EXPECT_NE(heard, "");
    EXPECT_EQ(third.heard + fourth.heard, heard);
  }
}

TEST(Conversation, EndsAtOnceWithItsFormAndClosesThePort) {
  for (const std::string product : {"RB2000", "VK5300", "VKRTX"}) {
    for (const std::string begins : {".UploadCmd", ".NextCmd"}) {
      SCOPED_TRACE(product + begins);
      const bool exits = product + begins == "VKRTX.UploadCmd";
      Device device;
      TwoPorts h(product, device);
      h.ToApplyPage();
      h.Elapsed();
      Bytes heard;
      h.loop.StartTimer(999ms, [&] { heard = device.heard; });
      h.Do("after 1000 click " + (exits ? "ProductMenu.ExitCmd" : h.wizard + ".CancelCmd"));
      const std::string told = h.Do("click " + h.wizard + begins);
      EXPECT_EQ(h.Elapsed(), 1s);
      EXPECT_TRUE(told.find("Error!") == told.find(Success)) << told;  // neither
      EXPECT_FALSE(h.app.comm.IsOpen(3));
      EXPECT_EQ(device.heard, heard);
      EXPECT_NE(heard, "");
    }
  }
}

// The ACK of a download comes after its time-out; the user has clicked FINISH again by then.
TEST(Conversation, ALateAnswerIsNotTakenForThatOfTheNextOne) {
  const std::string finish = "click Configuration_RBCard.NextCmd";
  // In ms behind the first time-out: what comes late, and when the line counts as quiet.
  const std::pair<std::vector<int>, int> rows[] = {{{}, 500}, {{300}, 800}, {{100, 550, 1049}, 1549}, {{501}, 500}};
  for (const auto& [late, dropped] : rows) {
    Device device;
    TwoPorts h("RBCard", device);
    h.ToApplyPage();
    for (const int ms : late) device.says[h.loop.Now() + 7s + ms * 1ms] = "\x06";
    EXPECT_NE(h.Do(finish).find(TimeOut), std::string::npos);
    h.Elapsed();
    const bool tooLate = !late.empty() && late.back() == 501;  // then it is one that nobody can tell
    EXPECT_EQ(h.Do(finish).find(Success) != std::string::npos, tooLate);
    EXPECT_EQ(h.Elapsed(), dropped * 1ms + (tooLate ? 1ms : 7s));
  }
  // A wait for silence that the user cuts short leaves it to the next one.
  Device late;
  TwoPorts cut("RBCard", late);
  cut.ToApplyPage();
  late.says[cut.loop.Now() + 7800ms] = "\x06";
  cut.Do(finish + "\nafter 300 click Configuration_RBCard.CancelCmd\n" + finish);
  cut.ToApplyPage();
  EXPECT_EQ(cut.Do(finish).find(Success), std::string::npos);
  // A device that never falls silent holds it for 3 s; what is still to come then is taken as ever.
  Device chatty;
  TwoPorts h("RBCard", chatty);
  h.ToApplyPage();
  h.Do(finish);
  for (int i = 0; i < 40; ++i) chatty.says[h.loop.Now() + i * 100ms] = "x";
  h.Elapsed();
  h.Do(finish);
  EXPECT_EQ(h.Elapsed(), 3s + 7s);
  h.Do(finish);
  EXPECT_EQ(h.Elapsed(), 500ms + 7s);
}

// One XOFF; the device is asked to do without the rest of its 10240 s.
TEST(Conversation, AHeldLineStopsNobody) {
  Device device;
  TwoPorts h("VKRTX", device);
  h.Do("click ProductMenu.OfflineCmd");
  device.says[h.loop.Now() + 100ms] = "\x13";
  h.Elapsed();
  const std::string keys = "after 20 keys OfflineMngr.Term cd\nkeys OfflineMngr.Term ab";
  h.Do("wait 200\nafter 500 click OfflineMngr.CloseCmd\n" + keys + "\nforms");
  EXPECT_EQ(h.Elapsed(), 700ms);
  EXPECT_EQ(device.heard, "\r");
  EXPECT_FALSE(h.app.comm.IsOpen(3));

  // Released, the keys leave as they were pressed: c and d in the wait for a.
  h.Do("click ProductMenu.OfflineCmd");
  device.says[h.loop.Now() + 100ms] = "\x13";
  device.says[h.loop.Now() + 900ms] = "\x11";
  h.Do("wait 200\n" + keys);
  EXPECT_EQ(device.heard, "\r\racdb");
  h.Do("click OfflineMngr.CloseCmd");

  // Firmware: the question comes in the middle of the held piece; Yes ends it, and the end is all that still leaves.
  const TemporaryFile firmware("new.rom", ":" + Bytes(30000, 'f'));
  device.heard.clear();
  h.Do("click ProductMenu.UpgradeCmd\ntype Firmware.FirmFileTxt " + firmware.Path() + "\nclick Firmware.NextCmd");
  device.says[h.loop.Now() + 1ms] = Banner;
  device.says[h.loop.Now() + 2ms] = "\x06";
  device.says[h.loop.Now() + 3ms] = "\x06\x13";
  h.Elapsed();
  const std::string sending = "value \"new.rom: 0 of 30 KB sent, 15 s left\"\n";
  const std::string told = h.Do(
      "answer yes\nafter 1500 get Firmware.DetailLbl.Caption\nafter 2000 click Firmware.CancelCmd\n"
      "click Firmware.NextCmd");
  EXPECT_TRUE(told.starts_with(sending)) << told;
  EXPECT_EQ(h.Elapsed(), 2s);
  EXPECT_EQ(ToHex(device.heard), "1B A5 FB A5 A5");
}

// A terminal whose transfer has failed has closed its port: it is idle, and goes with its product.
TEST(Conversation, IdleToolsCloseWithTheirProduct) {
  Device device;
  const TemporaryFile firmware("new.rom", ":");
  TwoPorts h("VK5300", device);
  h.Do("click ProductMenu.OfflineCmd\nanswer yes\nanswer yes\nfile " + firmware.Path());
  device.says[h.loop.Now() + 1ms] = "\x18";
  h.Do("click OfflineMngr.SendFirmwareCmd");
  const std::string to = "click ProductMenu.ReturnCmd\nclick MainMenu.", menu = "form ProductMenu visible\n";
  EXPECT_EQ(h.Do(to + "VK5300Cmd\nforms"), "form OfflineMngr visible\n" + menu);
  h.Do(to + "VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd");
  EXPECT_EQ(h.Do("click ProductMenu.UpgradeCmd\nforms"), menu + "form Firmware visible\n");
  EXPECT_EQ(h.Do(to + "RB2000Cmd\nforms"), menu);
}

}  // namespace
}  // namespace vk32
