// The device information of the VK5300 and the VK-RTX.
#include "deviceinfo/DeviceInfo.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

/// Opens the form as the product menu does. The fields that it shows, each with a bar behind it, and the texts that it
/// keeps to itself; or the box.
std::string Open(Harness& h) {
  h.app.forms.Find("ProductMenu")->Get<ImageButton>("DeviceInfoCmd").Visible = true;  // the VK-RTX hides it
  std::string seen = h.Do("click ProductMenu.DeviceInfoCmd");
  auto* const form = dynamic_cast<DeviceInfo*>(h.app.forms.Find("DeviceInfo"));
  if (!form) return seen;
  EXPECT_TRUE(form->Visible);
  for (Control* control : form->Controls()) {
    if (auto* field = dynamic_cast<TextBox*>(control)) seen += field->Text.Value() + "|";
  }
  for (const std::string& text : form->FirmwareTexts) seen += text;
  return seen;
}

TEST(DeviceInfo, ShowsWhatTheDeviceSaysOfItself) {
  const std::string identity =
      "123456|2-300|Pellwood Controls Co|00-0A-1B-2C-3D-4E|192.168.1.100|255.255.255.0|192.168.1.1|";
  const std::string box = "box critical \"Error!\" \"A timeout or error has occured while communicating to the ";
  const std::string all = "A5 DD DD DD DD DD";
  // A text ends by a pause of 50 ms, or when it is as long as can be; it may hold any byte.
  const sim::InfoTexts factory, odd{Bytes("a\0b\r\n\xFF", 6), "", "d"},
      full{Bytes(256, 'm'), Bytes(16, 'v'), Bytes(32, 'd')};
  const std::tuple<std::string, sim::Misbehaviour, sim::InfoTexts, std::string, std::string, Time> rows[] = {
      {"VK5300", {}, factory, identity + "VK5300 Ethernet to DH+|Version 2.14|March 3 2019|", all, 150ms},
      {"VK5300", {}, odd, identity + odd.model + "||d|", all, 150ms},
      {"VK5300", {}, full, identity + full.model + "|" + full.version + "|" + full.date + "|", all, 0ms},
      {"VK5300", {.infoPieces = 2}, factory, identity + "|||", all, 150ms},
      {"VK5300", {.infoPieces = 1}, factory, box + "VK5300\" -> OK\n", all, 200ms},
      {"VK5300", {.silent = true}, factory, box + "VK5300\" -> OK\n", "A5 DD", 2000ms},
      {"RTX", {}, factory, identity + "|||Ethernet firmware 3.2 DF1 1.4 Modbus 1.1   ", "A5 DD A5 A5", 0ms},
      {"RTX", {.badChecksum = true}, factory, box + "VK-RTX\" -> OK\n", "A5 DD", 0ms},
      {"RTX", {.shortBy = 1}, factory, box + "VK-RTX\" -> OK\n", "A5 DD", 2000ms}};
  for (const auto& [kind, how, texts, seen, sent, lasts] : rows) {
    const bool rtx = kind == "RTX";
    GatewayDevice device(rtx ? "VK-RTX-Modbus" : kind, how);
    device.gateway.infoTexts = texts;
    Harness h;
    h.GoTo(rtx ? "VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd" : "VK5300Cmd", &device);
    h.Elapsed();
    EXPECT_EQ(Open(h), seen);
    EXPECT_EQ(h.Elapsed(), lasts) << seen;
    EXPECT_EQ(ToHex(h.driver.written), sent);
    EXPECT_FALSE(h.app.comm.IsOpen(3));
    EXPECT_EQ(std::count(h.driver.calls.begin(), h.driver.calls.end(), "SetState 19200 XON"), 1);
    h.Do("click DeviceInfo.CloseCmd");
    EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\n");
  }
}

}  // namespace
}  // namespace vk32
