// The recovery mode of the simulated gateways, where the program's own tools don't go.
#include "sim/Device.h"
#include "support/Harness.h"

namespace vk32::sim {
namespace {

using namespace std::chrono_literals;

const std::string Menu =
    "\r\n\r\nMain Menu\r\n\r\n  1. Show Firmware Version\r\n  2. Write New Firmware\r\n  3. Restart\r\n\r\nSelection: ";
const Bytes Escape("\x1B"), Leave = FromHex("A5 A5");

/// What it says up to that moment, each piece behind its own in ms.
std::string Until(Device& device, Time moment) {
  device.gateway.RunDue(moment);
  std::string said;
  while (const auto piece = device.gateway.NextPiece()) said += std::to_string(piece->from / 1ms) + piece->bytes + "|";
  return said;
}

TEST(Recovery, WaysOut) {
  // The keys, 1 s after the call; whether the button is pressed and the device answers as ever, so long after the keys.
  // The last two are of the exchange, once it was ready.
  const Bytes begun = Leave + FromHex("A5 FB");
  const std::tuple<Bytes, bool, bool, Time> rows[] = {{"", false, false, 8999ms},     {"", false, true, 9001ms},
                                                      {"2", false, true, 10001ms},    {"3", false, false, 999ms},
                                                      {"3", false, true, 1001ms},     {Leave, false, true, 0ms},
                                                      {"", true, true, 0ms},          {"2y", true, true, 4s},
                                                      {begun, false, false, 13499ms}, {begun, false, true, 13501ms}};
  for (const auto& [keys, button, left, after] : rows) {
    Device device({}, "VK-RTX-DF1");
    device.Hear(Escape, 1s);
    device.Hear(keys, 2s);
    Until(device, 2s + after);
    if (button) device.gateway.PressConfigure();
    EXPECT_EQ(device.Hear(FromHex("A5 DD"), 2s + after).size() == 285, left) << ToHex(keys) << after / 1ms;
  }
}

TEST(Recovery, ErasesAndAsksForTheFile) {
  Device device({}, "VK5300");
  device.Hear(Escape + "2y");
  std::string said = "500.|1000.|1500.|2000.|2500.|3000.\r\nReady to receive\r\n|";
  for (int s = 6; s <= 63; s += 3) said += std::to_string(s) + "000\x15|";
  EXPECT_EQ(Until(device, 70s), said + "66000\r\nBroken off after 0 bytes" + Menu + "|");
  EXPECT_EQ(device.Hear("1", 70s), "1\r\nNo system code" + Menu);
}

TEST(Recovery, TakesAFile) {
  const Bytes a = FromHex("01 01 FE") + Bytes(128, 'a') + '\x80', b = FromHex("01 02 FD") + Bytes(128, '\xFE') + '\0';
  const Bytes badSum = a.substr(0, 131) + 'x', badComplement = FromHex("01 01 FF") + a.substr(3),
              c = "\1\3\xFC" + a.substr(3);
  const Bytes sumOfFour = FromHex("01 01 FE") + Bytes(127, '\0') + "\4\4";  // its last byte is no end of the transfer
  const Bytes hostile = ":\r\n" + FromHex("00 A5 A5 FB 0D 08 11 13 FF");
  const std::tuple<const char*, Bytes, Bytes, Bytes, Time> rows[] = {
      {"VK5300", a + a + b + b + "\4", "\6\6\6\6\6", "Received 256", 5s},
      {"VK5300", badSum + a + "\4", "\x15\6\6", "Received 128", 5s},
      {"VK5300", badComplement + a + "\4", "\x15\6\6", "Received 128", 5s},
      {"VK5300", a + "noise" + b + "\4", "\6\6\6", "Received 256", 5s},
      {"VK5300", sumOfFour + "\4", "\6\6", "Received 128", 5s},
      {"VK5300", a + c, "\6\x18", "Broken off after 128", 5s},
      {"VK5300", a + b.substr(0, 131), "\6", "Broken off after 128", 15s},
      {"RB2000", a, "", "Received 132", 7s},  // it knows no Xmodem
      {"RBCard", hostile, "", "Received 12", 7s}};
  for (const auto& [product, sent, answers, told, at] : rows) {
    Device device({}, product);
    device.Hear(Escape + "2y");
    Until(device, 4s);
    const std::string end = "\r\n" + told + " bytes" + Menu;
    Bytes said = device.Hear(sent, 5s);
    said += Until(device, at);
    EXPECT_EQ(said, answers + (at == 5s ? end : std::to_string(at / 1ms) + end + "|"));
  }
}

}  // namespace
}  // namespace vk32::sim
