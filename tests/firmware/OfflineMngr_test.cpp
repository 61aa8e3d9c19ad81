// The recovery terminal and the Xmodem sender, in virtual time.
#include <gtest/gtest.h>

#include "firmware/Xmodem.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

const std::string HasThisBeenDone =
    "box question \"VK32\" \"Before continuing, you must select the \\\"Write New Firmware\\\" option\\r\\nfrom the "
    "Main Menu "
    "and then choose \\\"Yes\\\" to erase the system code.\\r\\n\\nHas this been done?\" -> ";
const std::string XmodemOrText =
    "box question \"VK32\" \"Click Yes to transfer the firmware file using the Xmodem protocol.\\r\\nClick No to "
    "transfer the "
    "firmware file as text.\" -> ";

class OfflineTest : public testing::Test {
 protected:
  void Open(const std::string& button, FakeDevice* device) {
    h.GoTo(button, device);
    h.Do("click ProductMenu.OfflineCmd");
  }
  std::string Text() { return h.Get("OfflineMngr.Term.Text"); }
  std::string Send(const std::string& answers) {
    h.driver.written.clear();
    h.Do(answers + "\nfile " + file.Path());
    return h.Do("click OfflineMngr.SendFirmwareCmd");
  }

  TemporaryFile file{"new.rom"};
  Harness h;
};

TEST_F(OfflineTest, ShowsWhatTheDeviceSays) {
  const struct {
    std::vector<Bytes> reads;
    const char* text;
  } rows[] = {
      {{"ab"}, "ab"},
      {{"ab", "\b"}, "a"},
      {{"ab", "\b \b"}, "a"},
      {{"ab", "\b", " \b"}, "a"},
      {{"ab", "\b\bxy"}, "xy"},
      {{"a\bb"}, "b"},
      {{"ab", "c\b\bd"}, "ad"},
      {{"\b\b\b", "a"}, "a"},
      {{"a\r\nb\n\rc\nd\re"}, "a\r\nb\r\nc\r\nde"},
      {{"a\n", "\bb"}, "ab"},
      {{Bytes("\0\xFF", 2)}, nullptr},
  };
  for (const auto& row : rows) {
    Harness other;
    ScriptedDevice device;
    std::vector<ScriptedDevice::Reply> replies;
    for (std::size_t i = 0; i < row.reads.size(); ++i) replies.push_back({20ms * static_cast<int>(i), row.reads[i]});
    device.On("\r", replies);
    other.GoTo("RB2000Cmd", &device);
    other.Do("click ProductMenu.OfflineCmd\nwait 200");
    EXPECT_EQ(other.Get("OfflineMngr.Term.Text"), row.text ? std::string(row.text) : row.reads[0])
        << ToHex(row.reads[0]);
  }
}

TEST_F(OfflineTest, KeysGoToTheDeviceAndOnlyItsEchoShows) {
  GatewayDevice device("RB2000");
  Open("RB2000Cmd", &device);
  h.Do("wait 100");
  EXPECT_NE(Text().find("2. Write New Firmware"), std::string::npos);
  const std::string menu = Text();
  h.driver.written.clear();
  h.Do("keys OfflineMngr.Term 2");
  EXPECT_EQ(h.driver.written, "2");
  h.Do("wait 100");
  EXPECT_EQ(Text(), menu + "2\r\nErase the system code? ");
  h.Do("click OfflineMngr.CloseCmd");
  EXPECT_EQ(h.driver.calls.back(), "Close");
}

TEST_F(OfflineTest, TextGoesInThePiecesOfTheProduct) {
  file.Fill(Bytes(1000, 'f'));
  const struct {
    const char *product, *answers, *boxes;
    std::vector<std::string> writes;
  } rows[] = {
      {"RB2000Cmd", "answer yes", "Yes\n", {"Write 512", "Write 488"}},
      {"VK5300Cmd", "answer yes\nanswer no", "Yes\n", {"Write 512", "Write 488"}},
      {"VKRTXCmd", "answer yes\nanswer no", "Yes\n", {"Write 1000"}},
  };
  for (const auto& row : rows) {
    Harness other;
    ScriptedDevice device;
    other.Do("click Splash");
    other.Do(std::string("click MainMenu.") + row.product);
    other.Do("click MainMenu.ABEthModbusModelCmd");
    other.driver.Plug("COM3", &device);
    other.Do("select ProductMenu.COMCbo COM3\nclick ProductMenu.OfflineCmd");
    other.driver.calls.clear();
    other.Do(std::string(row.answers) + "\nfile " + file.Path());
    const std::string printed = other.Do("click OfflineMngr.SendFirmwareCmd");
    EXPECT_EQ(printed.substr(0, HasThisBeenDone.size() + 4), HasThisBeenDone + row.boxes);
    EXPECT_EQ(printed.find(XmodemOrText) != std::string::npos, std::string(row.product) != "RB2000Cmd");
    std::vector<std::string> writes;
    for (const std::string& call : other.driver.calls) {
      if (call.starts_with("Write")) writes.push_back(call);
    }
    EXPECT_EQ(writes, row.writes) << row.product;
    EXPECT_TRUE(other.driver.state.fOutX);
    EXPECT_EQ(other.Get("OfflineMngr.ProgressBar.Visible"), "False");
  }
}

TEST_F(OfflineTest, ADeclinedQuestionAndACancelledDialogSendNothing) {
  ScriptedDevice device;
  Open("RB2000Cmd", &device);
  h.driver.written.clear();
  EXPECT_EQ(h.Do("answer no\nclick OfflineMngr.SendFirmwareCmd"), HasThisBeenDone + "No\n");
  h.Do("answer yes\nfile cancel\nclick OfflineMngr.SendFirmwareCmd");
  EXPECT_EQ(h.driver.written, "");
  EXPECT_EQ(h.Get("OfflineMngr.tmrTime.Enabled"), "True");
  EXPECT_NE(Send("answer yes").find("can't be read"), std::string::npos);  // the file was never made
}

Bytes Block(int number, const Bytes& data) {
  Bytes block = data;
  block.resize(128);
  return Bytes{1, static_cast<char>(number), static_cast<char>(255 - number)} + block +
         static_cast<char>(Xmodem::XmodemChecksum(block));
}

TEST_F(OfflineTest, XmodemSendsBlocksAndTheEnd) {
  for (const std::size_t size : {0u, 1u, 127u, 128u, 129u, 33000u}) {
    SCOPED_TRACE(size);
    Bytes content;
    for (std::size_t i = 0; i < size; ++i) content += static_cast<char>(i * 7 + i / 256);
    file.Fill(content);
    Harness other;
    ScriptedDevice device;
    device.On("\r");
    for (std::size_t i = 0; i < size; i += 128) {
      const Bytes block = Block(static_cast<int>((i / 128 + 1) & 255), content.substr(i, 128));
      if (i == 128) device.On(block, {{1ms, "\x15"}}).On(block, {{1ms, "\x15"}});  // asked for twice again
      device.On(block, {{4999ms, "\x06"}});
    }
    device.On("\x04", {{4999ms, "\x06"}});
    other.GoTo("VK5300Cmd", &device);
    other.Do("click ProductMenu.OfflineCmd");
    other.loop.StartTimer(59s, [&] { other.driver.input += "\x15"; });
    other.Do("answer yes\nanswer yes\nfile " + file.Path());
    other.Do("click OfflineMngr.SendFirmwareCmd");
    EXPECT_TRUE(device.Done());
    EXPECT_EQ(other.Get("OfflineMngr.ProgressBar.Visible"), "False");
    EXPECT_NE(other.driver.calls.back(), "Close");
    EXPECT_FALSE(other.driver.state.fOutX);
  }
}

TEST_F(OfflineTest, XmodemFailures) {
  file.Fill("x");
  const Bytes block = Block(1, "x");
  const struct {
    const char* name;
    Bytes first, answer, end;
    Time lasts;
    bool closed;
  } rows[] = {{"no NAK", "", "", "", 60000ms, true},
              {"not a NAK", "C", "", "", 1ms, true},
              {"silence", "\x15", "", "", 5001ms, true},
              {"CAN", "\x15", "\x18", "", 2ms, true},
              {"FF", "\x15", "\xFF", "", 2ms, true},
              {"NAK on the end", "\x15", "\x06", "\x15", 3ms, false},
              {"silent end", "\x15", "\x06", "", 5002ms, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Harness other;
    ScriptedDevice device;
    device.On("\r");
    if (!row.first.empty()) device.On(block, {{1ms, row.answer}}).On("\x04", {{1ms, row.end}});
    other.GoTo("VK5300Cmd", &device);
    other.Do("click ProductMenu.OfflineCmd\nanswer yes\nanswer yes\nfile " + file.Path());
    if (!row.first.empty()) other.loop.StartTimer(1ms, [&] { other.driver.input += row.first; });
    other.Elapsed();
    other.Do("click OfflineMngr.SendFirmwareCmd");
    EXPECT_EQ(other.Elapsed(), row.lasts);
    EXPECT_EQ(other.driver.calls.back() == "Close", row.closed);
    EXPECT_EQ(other.Get("OfflineMngr.ProgressBar.Visible"), row.closed ? "True" : "False");
  }
}

TEST_F(OfflineTest, ClosingTheTerminalEndsTheTransfer) {
  file.Fill("x");
  ScriptedDevice device;
  Open("VK5300Cmd", &device);
  h.Do("after 500 click OfflineMngr.CloseCmd");
  h.Elapsed();
  Send("answer yes\nanswer yes");
  EXPECT_EQ(h.Elapsed(), 500ms);
  EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\n");
}

}  // namespace
}  // namespace vk32
