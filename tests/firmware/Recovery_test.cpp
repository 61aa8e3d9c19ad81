// The recovery mode of the simulated gateways: menu, both ways of a file, and the exchange, each with its moments.
#include <gtest/gtest.h>

#include "sim/SimulatedLine.h"
#include "support/Harness.h"

namespace vk32::sim {
namespace {

using namespace std::chrono_literals;

const std::string Menu =
    "\r\n\r\nMain Menu\r\n\r\n  1. Show Firmware Version\r\n  2. Write New Firmware\r\n  3. Restart\r\n\r\nSelection: ";
const std::string Question = "\r\nErase the system code? ";
const Bytes Ok("\x06"), Refused("\x15"), Cancelled("\x18"), Xoff("\x13"), Xon("\x11"), Escape("\x1B");

/// A gateway, and what it says at which moment.
struct Device {
  explicit Device(std::string_view product = "VK-RTX-DF1", Misbehaviour how = {})
      : gateway(*FindGatewayKind(product), how) {
    gateway.OnFirmware = [this] { ++files; };
  }
  using Said = std::vector<std::pair<Time, Bytes>>;

  void Hear(const Bytes& bytes, Time at) { gateway.Receive(bytes, at); }
  /// All that was said up to that moment, and not told yet.
  Said Until(Time moment) {
    gateway.RunDue(moment);
    Said said;
    while (const auto piece = gateway.NextPiece()) {
      if (said.empty() || said.back().first != piece->from) said.emplace_back(piece->from, "");
      said.back().second += piece->bytes;
    }
    return said;
  }
  /// What it says at once.
  Bytes Answer(const Bytes& bytes, Time at = 0s) {
    Hear(bytes, at);
    Bytes said;
    while (const auto piece = gateway.NextPiece()) said += piece->bytes;
    return said;
  }
  /// From the banner to the moment, 3 s later, at which it is ready to receive.
  void Erase() {
    Answer(Escape + "2y");
    EXPECT_EQ(Until(3s).back(), std::pair(Time(3s), Bytes(".\r\nReady to receive\r\n")));
  }

  Gateway gateway;
  int files = 0;
};

Bytes Block(int number, const Bytes& data) {
  int sum = 0;
  for (const char byte : data) sum += static_cast<unsigned char>(byte);
  return Bytes{1, static_cast<char>(number), static_cast<char>(255 - number)} + data + static_cast<char>(sum);
}

const Bytes DataA(128, 'a'), DataB(128, '\xFE'), Eot("\x04");
const std::string Received256 = "\r\nReceived 256 bytes" + Menu;

TEST(Recovery, BannerHoldsMoreThanTheProbeReads) {
  for (const char* product : {"RB2000", "RB3000", "RBCard", "VK5300", "VK-RTX-DF1", "VK-RTX-Modbus"}) {
    const Bytes banner = Device(product).Answer(Escape);
    EXPECT_GT(banner.size(), 340u) << product;
    EXPECT_LT(banner.size(), 500u) << product;  // at 9600 bit/s it must fit into the second
    EXPECT_LT(banner.find("Offline Manager"), 340u) << product;
    EXPECT_TRUE(banner.ends_with(Menu.substr(2))) << product;
    for (std::size_t at = banner.find('\n'); at != Bytes::npos; at = banner.find('\n', at + 1)) {
      EXPECT_EQ(banner[at - 1], '\r') << product;
    }
  }
  for (const int length : {0, 1, 339, 340}) {
    EXPECT_EQ(Device("RB2000", {.bannerLength = length}).Answer(Escape).size(), static_cast<std::size_t>(length));
  }
  Device running;
  running.gateway.StartInOperation();
  EXPECT_EQ(running.Answer(Escape + "\r" + FromHex("A5 FB")), "");
  EXPECT_FALSE(running.gateway.NextDue());
}

TEST(Recovery, MenuEchoesAndChooses) {
  const Bytes banner = Device().Answer(Escape);
  const struct {
    Bytes keys, answer;
  } rows[] = {
      {"", ""},
      {"x", "x"},
      {"Ab\x06\x11\n", "Ab\x06\x11\n"},
      {"x\b", "x\b \b"},
      {"\b\b", "\b \b\b \b"},
      {"\r", Menu},
      {Escape, banner},
      {"1", "1\r\nVersion 2.14" + Menu},
      {"1\r", "1\r\nVersion 2.14" + Menu},
      {"1\r\r", "1\r\nVersion 2.14" + Menu + Menu},
      {"2", "2" + Question},
      {"2\r", "2" + Question},
      {"2x\r", "2" + Question + "x" + Question},
      {"2" + Escape, "2" + Question + banner},
      {"2n", "2" + Question + "n" + Menu},
      {"2\rNo\rx", "2" + Question + "N" + Menu + "x"},
      {"2nx", "2" + Question + "n" + Menu + "x"},
      {"2y", "2" + Question + "y\r\nErasing "},
      {"2YES\r", "2" + Question + "Y\r\nErasing "},
      {"3x", "3\r\nRestarting\r\n"},
      {FromHex("A5 41 A5 DD"), FromHex("A5 41 A5 DD")},
      {"TEE", "TEE"},
      {FromHex("A5 A5"), ""},
  };
  for (const auto& row : rows) {
    Device device;
    device.Answer(Escape);
    EXPECT_EQ(device.Answer(row.keys), row.answer);
  }
  Device device;
  EXPECT_EQ(device.Answer("\r"), Menu);
  device.Answer("1");
  EXPECT_EQ(device.Answer("\r", 1s), Menu) << "too late to belong to the 1";
}

TEST(Recovery, WaysOutOfTheMenu) {
  const Bytes record = Device().Answer(FromHex("A5 DD"));
  ASSERT_EQ(record.size(), 285u);
  const struct {
    const char* name;
    Bytes keys;
    bool button;
    Time after;
    bool left;
  } rows[] = {
      {"not yet", "", false, 8999ms, false},  // since the call at 1 s
      {"10 s", "", false, 9001ms, true},
      {"10 s at the question", "2", false, 10001ms, true},
      {"restart", "3", false, 1001ms, true},
      {"while it restarts", "3", false, 999ms, false},
      {"end of exchange", FromHex("A5 A5"), false, 0ms, true},
      {"button", "", true, 0ms, true},
      {"button while it erases", "2y", true, 0ms, true},
      {"button while it waits for a file", "2y", true, 4s, true},
  };
  for (const auto& row : rows) {
    Device device;
    device.Answer(Escape, 1s);
    device.Answer(row.keys, 2s);
    device.Until(2s + row.after);
    if (row.button) device.gateway.PressConfigure();
    EXPECT_EQ(device.Answer(FromHex("A5 DD"), 2s + row.after) == record, row.left) << row.name;
  }
}

TEST(Recovery, ErasesAndAsksForTheFile) {
  for (const bool xmodem : {true, false}) {
    Device device(xmodem ? "VK5300" : "RB2000");
    device.Answer(Escape + "2y");
    EXPECT_EQ(device.Until(2999ms), Device::Said({{500ms, "."}, {1s, "."}, {1500ms, "."}, {2s, "."}, {2500ms, "."}}));
    EXPECT_EQ(device.Until(5999ms), Device::Said({{3s, ".\r\nReady to receive\r\n"}}));
    Device::Said asked;
    for (int i = 2; i <= 21 && xmodem; ++i) asked.emplace_back(i * 3s, Refused);
    asked.emplace_back(66s, "\r\nBroken off after 0 bytes" + Menu);
    EXPECT_EQ(device.Until(66s), asked) << xmodem;
    EXPECT_EQ(device.Answer("1", 66s), "1\r\nNo system code" + Menu);
    EXPECT_EQ(device.files, 0);
  }
}

TEST(Recovery, TakesAPlainStream) {
  const struct {
    const char* product;
    Bytes file;
  } rows[] = {
      {"RB2000", ":"},
      {"RB2000", Block(1, DataA)},  // it knows no Xmodem
      {"RBCard", ":10\r\n" + FromHex("00 A5 A5 FB 0D 08 11 13 FF")},
      {"VK-RTX-Modbus", Bytes(":") + Bytes(20000, '\x01')},
      {"VK5300", FromHex("A5 3A A5 A5")},
  };
  for (const auto& row : rows) {
    Device device(row.product);
    device.Erase();
    device.Hear(row.file.substr(0, 1), 4s);
    device.Hear(row.file.substr(1), row.file.size() == 1 ? 4s : 5999ms);
    const Time end = row.file.size() == 1 ? 6s : 7999ms;
    EXPECT_EQ(device.Until(end),
              Device::Said({{end, "\r\nReceived " + std::to_string(row.file.size()) + " bytes" + Menu}}));
    EXPECT_EQ(device.gateway.Firmware(), row.file);
    EXPECT_EQ(device.files, 1);
    EXPECT_EQ(device.Answer("1", end), "1\r\nSystem code of " + std::to_string(row.file.size()) + " bytes" + Menu);
  }
  Device left;
  left.Erase();
  EXPECT_EQ(left.Answer(FromHex("A5 A5"), 4s), "");
  EXPECT_FALSE(left.gateway.NextDue());
  EXPECT_EQ(left.gateway.Firmware(), "");
}

TEST(Recovery, TakesXmodem) {
  const Bytes a = Block(1, DataA), b = Block(2, DataB);
  Bytes badSum = a, badComplement = a;
  badSum[131] = 'x';
  badComplement[2] = 'x';
  const Bytes sumOfFour = Block(1, Bytes(127, '\0') + Eot);  // its last byte is no end of the transfer
  const struct {
    const char* name;
    Bytes sent, answers;
    int size;
    Misbehaviour how = {};
  } rows[] = {
      {"nothing", Eot, Ok, 0},
      {"two blocks", a + b + Eot, Ok + Ok + Ok, 256},
      {"duplicate block", a + a + b + b + Eot, Ok + Ok + Ok + Ok + Ok, 256},
      {"bad sum", badSum + a + Eot, Refused + Ok + Ok, 128},
      {"bad complement", badComplement + a + Eot, Refused + Ok + Ok, 128},
      {"noise between blocks", a + "noise" + b + Eot, Ok + Ok + Ok, 256},
      {"sum of 4", sumOfFour + Eot, Ok + Ok, 128},
      {"nak", a + a + a + b + b + b + Eot, Refused + Refused + Ok + Refused + Refused + Ok + Ok, 256, {.naks = 2}},
      {"block left out", a + Block(3, DataB), Ok + Cancelled, -128},
      {"cancel", a, Cancelled, 0, {.cancel = true}},
  };
  for (const auto& row : rows) {
    Device device("VK5300", row.how);
    device.Erase();
    const bool broken = row.answers.ends_with(Cancelled);
    const std::string words = (broken ? "\r\nBroken off after " : "\r\nReceived ") + std::to_string(std::abs(row.size));
    EXPECT_EQ(device.Answer(row.sent, 5s), row.answers + words + " bytes" + Menu) << row.name;
    EXPECT_EQ(device.files, broken ? 0 : 1) << row.name;
    if (row.size == 256) {
      EXPECT_EQ(device.gateway.Firmware(), DataA + DataB) << row.name;
    }
  }
  Device slow;
  slow.Erase();
  EXPECT_EQ(slow.Answer(a + b.substr(0, 131), 4s), Ok);
  EXPECT_EQ(slow.Until(14s), Device::Said({{14s, "\r\nBroken off after 128 bytes" + Menu}}));
}

TEST(Recovery, BlockNumbersWrap) {
  Device device;
  device.Erase();
  Bytes file;
  for (int block = 1; block <= 513; ++block) {
    file += Bytes(128, static_cast<char>(block / 3));
    EXPECT_EQ(device.Answer(Block(block & 255, file.substr(file.size() - 128)), 4s), Ok) << block;
  }
  EXPECT_EQ(device.Answer(Eot, 4s), Ok + "\r\nReceived 65664 bytes" + Menu);
  EXPECT_EQ(device.gateway.Firmware(), file);
}

TEST(Recovery, ExchangeHasItsMoments) {
  const Device::Said ready{{3s, Ok}, {3500ms, Ok}};
  const struct {
    const char* name;
    int size;  // of a stream that arrives whole at 4 s
    Device::Said then;
    Misbehaviour how = {};
  } rows[] = {
      {"one byte", 1, {{5s, Ok}}},
      {"one byte less than a part", 4095, {{5s, Ok}}},
      {"a part", 4096, {{4s, Xoff}, {4200ms, Xon}, {5200ms, Ok}}},
      {"a part and a byte", 4097, {{4s, Xoff}, {4200ms, Xon}, {5200ms, Ok}}},
      {"two parts", 8192, {{4s, Xoff}, {4400ms, Xon}, {5400ms, Ok}}},
      {"no burn", 4097, {{4s, Xoff}, {4200ms, Xon}}, {.noBurn = true}},
      {"held for good", 9000, {{4s, Xoff}}, {.holdForGood = true}},
      {"late", 1, {{5100ms, Ok}}, {.late = 100ms}},
      {"junk", 1, {{5s, FromHex("15 FF 00 3F 06")}}, {.junk = true}},
      {"silent", 1, {}, {.silent = true}},
  };
  for (const auto& row : rows) {
    Device device("RB2000", row.how);
    device.Answer(FromHex("A5 FB"));
    const Device::Said begin = device.Until(3600ms);
    if (row.how.late == 0ms && !row.how.junk && !row.how.silent) {
      EXPECT_EQ(begin, ready) << row.name;
    }
    const Bytes file = ":" + Bytes(static_cast<std::size_t>(row.size - 1), '\xA5');
    device.Hear(file, 4s);
    EXPECT_EQ(device.Until(9s), row.then) << row.name;
    EXPECT_EQ(device.files, row.how.holdForGood ? 0 : 1) << row.name;
    EXPECT_EQ(device.gateway.Firmware(), row.how.holdForGood ? file.substr(0, 4096) : file) << row.name;
    EXPECT_EQ(device.Answer(FromHex("A5 A5"), 9s), "") << row.name;
    EXPECT_EQ(device.Answer("TEE", 9s).empty(), row.how.holdForGood || row.how.silent) << row.name;
  }
}

TEST(Recovery, ExchangeHoldsTheLineForEachPart) {
  Device device;
  device.Answer(Escape);
  device.Answer(FromHex("A5 FB"), 1s);
  device.Until(5s);
  device.Hear(Bytes(4096, ':'), 5s);
  device.Hear(":", 5100ms);  // was on its way already
  EXPECT_EQ(device.Until(6s), Device::Said({{5s, Xoff}, {5200ms, Xon}}));
  device.Hear(Bytes(4094, ':'), 6199ms);  // within the second behind XON
  EXPECT_EQ(device.Until(6500ms), Device::Said());
  device.Hear(Bytes(2, ':'), 6500ms);
  EXPECT_EQ(device.Until(8s), Device::Said({{6500ms, Xoff}, {6700ms, Xon}, {7700ms, Ok}}));
  EXPECT_EQ(device.gateway.Firmware(), Bytes(8193, ':'));
}

TEST(Recovery, EndOfExchangeEndsEachStage) {
  const struct {
    const char* stage;
    Time moment;
    Misbehaviour how = {};
  } rows[] = {{"erasing", 2s}, {"erased", 3200ms}, {"ready", 4s}, {"never ready", 6s, {.noReady = true}}};
  for (const auto& row : rows) {
    Device device("RB2000", row.how);
    device.Hear(FromHex("A5 FB"), 0s);
    device.Until(row.moment);
    EXPECT_EQ(device.Answer(FromHex("A5 A5"), row.moment), "") << row.stage;
    EXPECT_FALSE(device.gateway.NextDue()) << row.stage;
    EXPECT_EQ(device.gateway.Firmware(), "") << row.stage;
    EXPECT_EQ(device.Answer("TEE", row.moment).size(), 464u) << row.stage;
  }
  // Without it, 10 s end the exchange as well.
  Device never("RB2000", {.noReady = true});
  never.Hear(FromHex("A5 FB"), 0s);
  EXPECT_EQ(never.Until(20s), Device::Said({{3s, Ok}}));
  EXPECT_EQ(never.Answer("TEE", 20s).size(), 464u);
}

TEST(Recovery, LineCarriesWhatIsSaidLater) {
  const Time byteTime = SimulatedLine::ByteTime(9600);
  Gateway gateway(*FindGatewayKind("RB2000"));
  gateway.Flash() = {7s, 300ms, 100ms};
  SimulatedLine line(gateway, byteTime);
  line.FromHost(FromHex("A5 FB"), 0s);
  EXPECT_EQ(line.ToHost(1s), "");
  for (const Time said : {Time(7s), Time(7300ms)}) {
    ASSERT_EQ(line.NextDue(), 2 * byteTime + said);
    EXPECT_EQ(line.ToHost(2 * byteTime + said), "");
    ASSERT_EQ(line.NextDue(), 3 * byteTime + said);
    EXPECT_EQ(line.ToHost(3 * byteTime + said), Ok);
  }
  // Nobody looks at the line for a minute: all the same, each thing happens at its moment.
  line.FromHost(":", 10s);
  line.FromHost("TEE", 60s);
  const Bytes said = line.ToHost(70s);
  EXPECT_EQ(said.substr(0, 1), Ok);
  EXPECT_EQ(said.size(), 465u);
}

TEST(SimulatedLine, HasTheRoomOfAPort) {
  Gateway gateway(*FindGatewayKind("RB2000"));
  EXPECT_EQ(SimulatedLine(gateway, 0ms).Room(), SIZE_MAX);
  SimulatedLine line(gateway, 1ms);
  EXPECT_EQ(line.Room(), 16u);
  line.FromHost(Bytes(10, 'x'), 0s);
  EXPECT_EQ(line.Room(), 6u);
  line.FromHost(Bytes(10, 'x'), 0s);
  EXPECT_EQ(line.Room(), 0u);
  line.ToHost(5ms);
  EXPECT_EQ(line.Room(), 1u);
}

}  // namespace
}  // namespace vk32::sim
