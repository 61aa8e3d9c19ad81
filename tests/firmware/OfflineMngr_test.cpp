// The recovery terminal and the Xmodem sender, in virtual time.
#include "script/Quoting.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

const std::string Menu =
    "\r\n\r\nMain Menu\r\n\r\n  1. Show Firmware Version\r\n  2. Write New Firmware\r\n  3. Restart\r\n\r\nSelection: ";
/// The terminal is open, on a line to that device.
struct Terminal : Harness {
  Terminal(const std::string& product, FakeDevice& device) {
    const bool rtx = product == "VK-RTX";
    GoTo(rtx ? "VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd" : product + "Cmd", &device);
    Do("click ProductMenu.OfflineCmd\nwait 200");
  }
  std::string Text() { return Get("OfflineMngr.Term.Text"); }
  std::string Send(const std::string& answers, const Bytes& content) {
    file.Fill(content);
    driver.calls.clear();
    driver.written.clear();
    Elapsed();
    return Do(answers + "\nfile " + file.Path() + "\nclick OfflineMngr.SendFirmwareCmd");
  }

  TemporaryFile file{"new.rom"};
};

TEST(OfflineMngr, ShowsWhatTheDeviceSays) {
  // What is read, with a bar between the reads, and what shows then.
  const Bytes any("\0\xFF=\0\xFF", 5), lines = "a\r\nb\n\rc\nd\re=a\r\nb\r\nc\r\nde";
  for (const Bytes& row :
       {Bytes("ab=ab"), Bytes("ab|\b=a"), Bytes("ab|\b \b=a"), Bytes("ab|\b| \b=a"), Bytes("ab|\b\bxy=xy"),
        Bytes("a\bb=b"), Bytes("ab|c\b\bd=ad"), Bytes("\b\b\b|a=a"), Bytes("a\n|\bb=ab"), lines, any}) {
    const Bytes reads = Split(row, '=')[0];
    ScriptedDevice device;
    std::vector<ScriptedDevice::Reply> replies;
    for (const Bytes& read : Split(reads, '|')) replies.push_back({20ms * replies.size(), read});
    device.On("\r", replies);
    EXPECT_EQ(Terminal("RB2000", device).Text(), Split(row, '=')[1]) << ToHex(reads);
  }
}

TEST(OfflineMngr, KeysGoToTheDeviceAndOnlyItsEchoShows) {
  const std::string question = "\r\nErase the system code? ", ask = "2" + question;
  const std::pair<Bytes, std::string> rows[] = {{"x\b\b", ""},
                                                {"\r", Menu},
                                                {"1\r\r", "1\r\nVersion 2.14" + Menu + Menu},
                                                {"2x\r", ask + "x" + question},
                                                {"2No\rx", ask + "N" + Menu + "x"},
                                                {"2YES\r", ask + "Y\r\nErasing "},
                                                {"3x", "3\r\nRestarting\r\n"},
                                                {"TEE", "TEE"}};
  for (const auto& [keys, shown] : rows) {
    GatewayDevice device("RB2000");
    Terminal h("RB2000", device);
    h.Do("keys OfflineMngr.Term " + Quote(keys) + "\nwait 100");
    EXPECT_EQ(h.driver.written, "\r" + keys);
    EXPECT_EQ(h.Text(), keys[0] == 'x' ? Menu.substr(0, Menu.size() - 1) : Menu + shown);
  }
}

TEST(OfflineMngr, AFileGoesAsTextInThePiecesOfTheProductOrByXmodem) {
  Bytes varied;
  for (int i = 0; i < 33000; ++i) varied += static_cast<char>(i * 7 + i / 256);
  const Bytes text = ":" + Bytes(999, 'f'), block = FromHex("01 01 FE") + Bytes(128, 'a') + '\x80';
  const Bytes rest = FromHex("01 02 FD 61") + Bytes(127, '\0') + 'a';
  // The product, the answer to the question for Xmodem, the file, what is sent, and in which pieces.
  const std::tuple<std::string, std::string, Bytes, Bytes, std::string> rows[] = {
      {"RB2000", "", text, text, "Write 512|Write 488"},
      {"VK5300", "no", text, text, "Write 512|Write 488"},
      {"VK-RTX", "no", text, text, "Write 1000"},
      {"VK5300", "yes", "", "\4", "Write 1"},
      {"VK-RTX", "yes", Bytes(128, 'a'), block + "\4", "Write 132|Write 1"},
      {"VK5300", "yes", Bytes(129, 'a'), block + block + rest + rest + "\4", ""},  // each is refused once
      {"VK5300", "yes", varied, "", ""}};
  for (const auto& [product, answer, content, sent, writes] : rows) {
    SCOPED_TRACE(product + answer + writes);
    const bool xmodem = answer == "yes";
    GatewayDevice device(product == "VK-RTX" ? "VK-RTX-DF1" : product, {.naks = content.size() == 129 ? 1 : 0});
    Terminal h(product, device);
    h.Do("keys OfflineMngr.Term 2y\nwait 3100");
    const std::string told =
        h.Send("after 0 get OfflineMngr.ProgressBar.Visible\nanswer yes\nanswer " + answer, content);
    EXPECT_TRUE(content.empty() || told.ends_with("value \"True\"\n")) << told;
    EXPECT_EQ(told.find("Xmodem") == Bytes::npos, answer.empty());
    std::erase_if(h.driver.calls, [](const std::string& call) { return !call.starts_with("Write"); });
    EXPECT_TRUE(writes.empty() || h.driver.calls == Split(writes, '|'));
    EXPECT_TRUE(sent.empty() || h.driver.written == sent) << ToHex(h.driver.written);
    EXPECT_EQ(h.Get("OfflineMngr.ProgressBar.Visible"), "False");
    EXPECT_TRUE(h.app.comm.IsOpen(3) && h.driver.state.fOutX != xmodem);
    h.Do("wait 2500\nkeys OfflineMngr.Term \"\\x1B\"\nwait 9\nkeys OfflineMngr.Term 1\nwait 100");
    const Bytes stored = content + Bytes(xmodem ? (128 - content.size() % 128) % 128 : 0, '\0');
    EXPECT_EQ(device.gateway.Firmware(), stored);
    const std::string size = std::to_string(stored.size()) + " bytes",
                      holds = stored.empty() ? "No system code" : "System code of " + size;
    EXPECT_NE(h.Text().find("\r\nReceived " + size + Menu), Bytes::npos) << h.Text();
    EXPECT_TRUE(h.Text().ends_with("1\r\n" + holds + Menu)) << h.Text();
    const std::string value = "after 0 get OfflineMngr.ProgressBar.Value\nanswer yes\nanswer no";
    EXPECT_TRUE(!xmodem || h.Send(value, text).find("value \"0\"") != Bytes::npos) << "it begins anew";
    EXPECT_TRUE(h.driver.state.fOutX) << "text goes by flow control, whatever went before";
  }
}

TEST(OfflineMngr, WhatCameIsReadBackCopiedAndSaved) {
  std::string first;
  for (int line = 0; line < 40; ++line) first += std::to_string(line) + "\n";
  ScriptedDevice device;
  device.On("\r", {{0ms, first}, {500ms, "mord\b\be"}, {1000ms, "last"}});
  Terminal h("RB2000", device);
  const auto top = [&h] { return h.Get("OfflineMngr.Term.TopRow") + "/" + h.Get("OfflineMngr.TermVScroll.Max"); };
  EXPECT_EQ(top(), "17/17");
  EXPECT_EQ(h.Get("OfflineMngr.TermVScroll.LargeChange"), "23");
  h.Do("scroll OfflineMngr.TermVScroll 3\nwait 500");
  EXPECT_EQ(top(), "3/17") << "the user reads on where he is";
  h.Do("scroll OfflineMngr.TermVScroll 17");
  h.driver.input += "\n";
  h.Do("wait 100");
  EXPECT_EQ(top(), "18/18");
  EXPECT_EQ(h.Do("click OfflineMngr.CopyCmd"), "copied " + Quote(Lines(first + "moe\n")) + "\n");
  const auto save = [&](const std::string& path) { return h.Do("file " + path + "\nclick OfflineMngr.SaveLogCmd"); };
  save(h.file.Path());
  EXPECT_EQ(h.file.Content(), first + "mord\b\be\n");
  EXPECT_NE(save("/nowhere/x.log").find("The log was not saved as /nowhere/x.log."), Bytes::npos);
}

TEST(OfflineMngr, ADeclinedQuestionAndACancelledDialogSendNothing) {
  ScriptedDevice device;
  Terminal h("RB2000", device);
  for (const std::string row : {"no=Has this been done?", "yes\nfile cancel=cancelled", "yes\nfile /x=can't be read"}) {
    const std::string told = h.Do("answer " + Split(row, '=')[0] + "\nclick OfflineMngr.SendFirmwareCmd");
    EXPECT_NE(told.find(Split(row, '=')[1]), Bytes::npos) << told;
  }
  EXPECT_EQ(h.driver.written, "\r");
  EXPECT_EQ(h.Get("OfflineMngr.tmrTime.Enabled"), "True");
}

TEST(OfflineMngr, LetsGoOfADeviceThatHasGone) {
  GatewayDevice device("RB2000", {.unplugAfter = 20}, true);
  Terminal h("RB2000", device);
  EXPECT_EQ(h.Text().substr(0, 13), Menu.substr(0, 13));
  EXPECT_TRUE(!h.app.comm.IsOpen(3) && h.app.conversation == nullptr);
}

TEST(OfflineMngr, XmodemFailures) {
  const Bytes block = "\1\1\xFEx" + Bytes(127, '\0') + "x";
  const std::string refused = "block 1 of 1 was refused", unasked = "the device did not ask for it",
                    endless = "its end was not confirmed";
  // What the device says 1 ms behind the click, the block and the end; how long it takes, whether it closes the port,
  // and what is told.
  const std::tuple<Bytes, Bytes, Bytes, Time, bool, std::string> rows[] = {
      {"", "", "", 60000ms, true, unasked},
      {"C", "", "", 1ms, true, unasked},
      {"\x15", "", "", 5001ms, true, "no answer to block 1 of 1"},
      {"\x15", "\x18", "", 2ms, true, refused},
      {"\x15", "\xFF", "", 2ms, true, refused},
      {"\x15", "\x06", "\x15", 3ms, false, endless},
      {"\x15", "\x06", "", 5002ms, false, endless}};
  for (const auto& [first, answer, end, lasts, closed, why] : rows) {
    ScriptedDevice device;
    device.On("\r").On(block, {{1ms, answer}}).On("\4", {{1ms, end}});
    Terminal h("VK5300", device);
    h.loop.StartTimer(1ms, [&h, &first] { h.driver.input += first; });
    h.Send("answer yes\nanswer yes", "x");
    EXPECT_EQ(h.Elapsed(), lasts);
    EXPECT_EQ(h.app.comm.IsOpen(3), !closed);
    EXPECT_EQ(h.Get("OfflineMngr.ProgressBar.Visible"), closed ? "True" : "False");
    EXPECT_EQ(h.Get("OfflineMngr.ResultLbl.Caption"), "Failed: " + why);
    EXPECT_EQ(h.Get("OfflineMngr.TermInfoLbl.Caption"), closed ? "COM3, 19200 baud, closed" : "COM3, 19200 baud, open");
  }
  ScriptedDevice silent;
  Terminal h("VK5300", silent);
  h.Do("after 500 click OfflineMngr.CloseCmd");
  h.Send("answer yes\nanswer yes", "x");
  EXPECT_EQ(h.Elapsed(), 500ms);
  EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\n");
}

}  // namespace
}  // namespace vk32
