// The wizard of the RB2000: pages, registers, slots, transfer and file.
#include <gtest/gtest.h>

#include "core/ConfigurationForm.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

const std::string Reminder =
    "box critical \"VK32\" \"Press the Configure button on the RB2000 before continuing.\\r\\nThe LED's on the left "
    "should "
    "have the following pattern:\\r\\n\\n     CHA:  Red\\r\\n     CHB:  Green\\r\\n     CHC:  Red\\r\\n     Power:  "
    "Green\" -> "
    "OK\n";
const std::string Success = "box information \"Success!\" \"Configuration has been downloaded to the RB2000\" -> OK\n";
const std::string TimeOut =
    "box critical \"Error!\" \"A timeout or error has occured while communicating to the RB2000\" -> OK\n";

/// The wizard of an RB2000 on COM3, on its first page.
class Rb2000 : public testing::Test {
 protected:
  Rb2000() {
    h.GoTo("RB2000Cmd", &device);
    h.Do("click ProductMenu.ConfigureCmd");
  }

  std::string Do(const std::string& command, const std::string& control, const std::string& rest = {}) {
    return h.Do(command + " Configuration_RB2000." + control + (rest.empty() ? "" : " " + rest));
  }
  std::string Get(const std::string& path) { return h.Get("Configuration_RB2000." + path); }
  std::string Next(int times = 1) {
    std::string printed;
    while (times-- > 0) printed += Do("click", "NextCmd");
    return printed;
  }
  std::string Shown() {
    std::string frames;
    for (const char* frame : {"ConfigFrame", "SerialSettingsFrame", "ProtocolSettingsFrame", "MappingFrame(0)",
                              "MappingFrame(1)", "MappingFrame(2)", "ApplyFrame"}) {
      if (Get(std::string(frame) + ".Shown") == "True") frames += frame;
    }
    return frames;
  }
  std::string CurrentStep() {
    std::string steps;
    for (const char* step : {"OpenConfigLbl", "SerialSetLbl", "ProtoSetLbl", "ModAddrMapLbl", "ApplySetLbl"}) {
      if (Get(std::string(step) + ".ForeColor") == "2368684") steps += step;
      if (Get(std::string(step) + ".Top") == Get("StepMarkFrame.Top")) steps += "*";
    }
    return steps;
  }
  void Type(int slot, const std::string& start, const std::string& end, const std::string& file,
            const std::string& word) {
    const std::string index = "(" + std::to_string(slot) + ")";
    Do("type", "ModStartTxt" + index, start);
    Do("type", "ModEndTxt" + index, end);
    Do("type", "ABFileTxt" + index, file);
    Do("type", "ABWordTxt" + index, word);
  }
  /// Byte `offset` of the image as it stands.
  int ByteAt(int offset) {
    auto& parameters = h.app.globals;
    const auto r = static_cast<std::size_t>(offset / 2);
    return offset % 2 == 0 ? parameters.RegisterHigh[r] : parameters.RegisterLow[r];
  }
  void SetByte(int offset, int value) {
    auto& parameters = h.app.globals;
    const auto r = static_cast<std::size_t>(offset / 2);
    (offset % 2 == 0 ? parameters.RegisterHigh[r] : parameters.RegisterLow[r]) = value;
  }
  void Decode() { dynamic_cast<ConfigurationForm&>(*h.app.forms.Find("Configuration_RB2000")).Parameter_Setup_RB(); }

  GatewayDevice device{"RB2000"};
  Harness h;
};

TEST_F(Rb2000, WalksItsPages) {
  const struct {
    const char *frame, *step;
  } pages[] = {{"ConfigFrame", "OpenConfigLbl*"},
               {"SerialSettingsFrame", "SerialSetLbl*"},
               {"ProtocolSettingsFrame", "ProtoSetLbl*"},
               {"MappingFrame(0)", "ModAddrMapLbl*"},
               {"ApplyFrame", "ApplySetLbl*"}};
  EXPECT_EQ(Get("Caption"), "Configure Online Parameters");
  EXPECT_EQ(Get("DeviceLbl.Caption"), "RB2000");
  for (std::size_t page = 0; page < std::size(pages); ++page) {
    EXPECT_EQ(Shown(), pages[page].frame);
    EXPECT_EQ(CurrentStep(), pages[page].step);
    if (page < 4) Next();
  }
  EXPECT_EQ(Get("NextCmd.Picture"), "117");
  for (std::size_t page = 4; page-- > 0;) {
    Do("click", "BackCmd");
    EXPECT_EQ(Shown(), pages[page].frame);
    EXPECT_EQ(CurrentStep(), pages[page].step);
  }
  EXPECT_EQ(Get("BackCmd.Shown"), "False");

  // The panes of the mapping page; it always opens at slot 1.
  Next(3);
  Do("click", "NextMappingCmd(0)");
  EXPECT_EQ(Shown(), "MappingFrame(1)");
  Do("click", "NextMappingCmd(1)");
  EXPECT_EQ(Shown(), "MappingFrame(2)");
  Do("click", "BackMappingCmd(2)");
  EXPECT_EQ(Shown(), "MappingFrame(1)");
  Do("click", "BackCmd");
  Next();
  EXPECT_EQ(Shown(), "MappingFrame(0)");
  EXPECT_EQ(Get("SlotNumLbl(39).Caption"), "40");
}

TEST_F(Rb2000, AMasterSkipsTheMappingPage) {
  Next(2);
  EXPECT_EQ(Get("ModSlaveFrame.Shown") + Get("ModMasterFrame.Shown"), "TrueFalse");
  Do("select", "ChbModDeviceTypeLst", "Master");
  EXPECT_EQ(Get("ModSlaveFrame.Shown") + Get("ModMasterFrame.Shown"), "FalseTrue");
  h.app.forms.Find("Configuration_RB2000")->Get<TextBox>("ModStartTxt", 0).Text =
      "10000";  // invalid, and not looked at
  EXPECT_EQ(Next(), "");
  EXPECT_EQ(Shown(), "ApplyFrame");
  Do("click", "BackCmd");
  EXPECT_EQ(Shown(), "ProtocolSettingsFrame");
}

TEST_F(Rb2000, ThePageFollowsItsChoices) {
  Next(2);
  EXPECT_EQ(Get("ChbModSlaveBroadcastStartLst.Shown") + Get("ChbModSlaveSpecificAddrChk.Top"), "False1200");
  Do("select", "ChbModSlaveBroadcastEnableLst", "Yes");
  for (const char* control : {"StartLbl", "StartLst", "StartUnitLbl", "EndLbl", "EndLst", "EndUnitLbl"}) {
    EXPECT_EQ(Get("ChbModSlaveBroadcast" + std::string(control) + ".Shown"), "True") << control;
  }
  EXPECT_EQ(Get("ChbModSlaveSpecificAddrChk.Top") + Get("ChbModSlaveSpecificAddrLst.Top"), "22802400");
  Do("select", "ChbModSlaveBroadcastStartLst", "12");
  Do("select", "ChbModSlaveBroadcastEnableLst", "No");
  EXPECT_EQ(Get("ChbModSlaveSpecificAddrChk.Top") + Get("ChbModSlaveSpecificAddrLst.Top"), "12001320");
  EXPECT_EQ(Get("ChbModSlaveBroadcastEndUnitLbl.Shown"), "False");
  EXPECT_EQ(ByteAt(42), 12);
  EXPECT_EQ(Get("ChbModSlaveSpecificAddrLst.Shown"), "False");
  Do("check", "ChbModSlaveSpecificAddrChk", "on");
  EXPECT_EQ(Get("ChbModSlaveSpecificAddrLst.Shown"), "True");

  Next();
  Do("check", "FloatChk(5)", "on");
  Do("click", "BackCmd");
  for (const auto& [type, shown] :
       {std::pair("PLC-3", "False"), {"PLC-5", "True"}, {"SLC/MicroLogix/ControlLogix", "True"}}) {
    Do("select", "ChbModSlavePlcTypeLst", type);
    Next();
    EXPECT_EQ(Get("FloatLbl(0).Shown") + Get("FloatChk(13).Shown"), std::string(shown) + shown) << type;
    Do("click", "BackCmd");
  }
  EXPECT_EQ(ByteAt(106), 1);  // a hidden check box keeps its value
}

TEST_F(Rb2000, DefaultsMakeTheImage) {
  Next(4);
  Next();
  const Bytes& image = h.app.globals.ConfigImage;
  ASSERT_EQ(image.size(), 448u);
  EXPECT_EQ(
      ToHex(image.substr(0, 48)),
      "04 99 00 00 00 00 00 00 00 00 00 00 02 00 01 00 08 00 08 00 08 00 08 00 00 00 01 00 00 00 00 00 00 00 00 00 "
      "00 00 00 00 01 00 00 00 00 00 00 00");
  EXPECT_EQ(image.substr(48), Bytes(400, '\0'));
}

// Every list and option: what it writes, and that the same byte selects it again.
TEST_F(Rb2000, ListsWriteTheirBitsAndAreSelectedByThem) {
  const struct {
    const char *control, *text;
    int offset, before, after;
  } rows[] = {
      {"ChaSpeedLst", "300", 16, 8, 3},
      {"ChaSpeedLst", "230400", 16, 8, 13},
      {"ChbSpeedLst", "115200", 18, 8, 12},
      {"ChaParityLst", "Odd", 17, 0xF9, 0xFB},
      {"ChaParityLst", "Even", 17, 0, 6},
      {"ChbParityLst", "None", 19, 0xFF, 0xFD},
      {"ChaDataBitsLst", "7", 17, 0, 16},
      {"ChbDataBitsLst", "8", 19, 0xFF, 0xEF},
      {"ChaStopBitsLst", "2", 17, 0, 8},
      {"ChbStopBitsLst", "1", 19, 0xFF, 0xF7},
      {"ChaHandshakingLst", "Active", 17, 0, 1},
      {"ChbHandshakingLst", "None", 19, 0xFF, 0xFE},
      {"ChaConnectionLst", "RS-232", 17, 0xFF, 0x9F},
      {"ChaConnectionLst", "RS-422", 17, 0xDF, 0xBF},
      {"ChbConnectionLst", "RS-485", 19, 0, 96},
      {"ChaDf1StationAddrLst", "255", 14, 1, 255},
      {"ChaDf1ErrorModeLst", "CRC", 25, 0xF0, 0xF1},
      {"ChbModDeviceTypeLst", "Master", 41, 0, 2},
      {"ChbModProtocolLst", "ASCII", 41, 4, 5},
      {"ChbModSlaveBroadcastEnableLst", "Yes", 41, 0, 4},
      {"ChbModSlaveBroadcastEnableLst", "No", 41, 7, 3},
      {"ChbModSlavePlcTypeLst", "PLC-3", 44, 0, 1},
      {"ChbModSlavePlcTypeLst", "SLC/MicroLogix/ControlLogix", 44, 0, 2},
      {"ChbModSlaveBroadcastStartLst", "7", 42, 0, 7},
      {"ChbModSlaveBroadcastEndLst", "0", 43, 7, 0},
      {"ChbModSlaveSpecificAddrLst", "247", 40, 1, 247},
  };
  auto& form = *h.app.forms.Find("Configuration_RB2000");
  for (const auto& row : rows) {
    SetByte(row.offset, row.before);
    form.Get<ComboBox>(row.control).Text = row.text;
    EXPECT_EQ(ByteAt(row.offset), row.after) << row.control << " " << row.text;
    form.Get<ComboBox>(row.control).SetEntries(form.Get<ComboBox>(row.control).Entries());  // forgets its selection
    SetByte(row.offset, row.after);
    Decode();
    EXPECT_EQ(Get(std::string(row.control) + ".Text"), row.text) << row.control;
    EXPECT_EQ(ByteAt(row.offset), row.after) << row.control << " " << row.text;
  }
  const char* const options[] = {"ChbModMasterNXYYZOpt", "ChbModMasterNXYZZOpt", "ChbModMasterNYXZZOpt"};
  for (int code = 2; code >= 0; --code) {
    form.Get<OptionButton>(options[code]).Value = true;
    EXPECT_EQ(ByteAt(45), code);
    SetByte(45, code);
    Decode();
    for (int other = 0; other < 3; ++other) {
      EXPECT_EQ(Get(std::string(options[other]) + ".Value"), other == code ? "True" : "False");
    }
  }
}

TEST_F(Rb2000, ABroadcastAddressChangesWhenItIsDecoded) {
  Next(2);
  Do("select", "ChbModSlaveBroadcastEnableLst", "Yes");
  Do("select", "ChbModSlaveBroadcastStartLst", "10");
  EXPECT_EQ(ByteAt(42), 10);
  Decode();
  EXPECT_EQ(Get("ChbModSlaveBroadcastStartLst.Text"), "12");
  EXPECT_EQ(ByteAt(42), 12);
}

TEST_F(Rb2000, BytesThatNoEntryHasLeaveListAndByte) {
  const struct {
    const char *control, *text;
    int offset, value;
  } rows[] = {{"ChaSpeedLst", "9600", 16, 0},
              {"ChaSpeedLst", "9600", 16, 14},
              {"ChbModSlavePlcTypeLst", "PLC-5", 44, 3},
              {"ChbModSlaveBroadcastStartLst", "0", 42, 64},
              {"ChbModSlaveBroadcastEndLst", "0", 43, 255},
              {"ChbModSlaveSpecificAddrLst", "1", 40, 248}};
  for (const auto& row : rows) {
    SetByte(row.offset, row.value);
    SetByte(48, 7);  // a slot behind it is decoded all the same
    Decode();
    EXPECT_EQ(Get(std::string(row.control) + ".Text"), row.text) << row.control;
    EXPECT_EQ(ByteAt(row.offset), row.value) << row.control;
    EXPECT_EQ(Get("ModStartTxt(0).Text"), "7");
  }
  SetByte(45, 3);
  SetByte(56, 9);
  SetByte(40, 0);
  Decode();
  EXPECT_EQ(Get("ChbModMasterNXYYZOpt.Value"), "True");
  EXPECT_EQ(Get("FloatChk(0).Value"), "0");
  EXPECT_EQ(ByteAt(56), 9);
  EXPECT_EQ(Get("ChbModSlaveSpecificAddrLst.Text"), "1");
  EXPECT_EQ(ByteAt(40), 1);
}

TEST_F(Rb2000, SlotsAreStoredLowByteFirstAndShownAgain) {
  Next(3);
  Type(0, "40001", "40020", "7", "0");
  EXPECT_EQ(ToHex(h.app.globals.RegistersToString(24, 5)), "41 9C 54 9C 07 00 00 00 00 00");
  Do("type", "ModStartTxt(0)", "12.5 units");
  EXPECT_EQ(ByteAt(48), 12);  // halves to even
  Do("type", "ModStartTxt(0)", "99999999999");
  EXPECT_EQ(ByteAt(48), 12);  // too large to convert
  Do("type", "ModStartTxt(0)");
  EXPECT_EQ(ByteAt(48) + ByteAt(49), 0);
  Do("click", "NextMappingCmd(0)");
  Do("click", "NextMappingCmd(1)");
  Do("type", "ABWordTxt(39)", "9999");
  Do("check", "FloatChk(39)", "on");
  EXPECT_EQ(ToHex(h.app.globals.RegistersToString(219, 5)), "00 00 00 00 00 00 0F 27 01 00");

  // A used slot shows its zeros, an unused one stays blank, and what the image does not have is not blanked.
  h.app.globals.ClearRegisters();
  SetByte(48, 1);
  SetByte(62, 7);  // slot 1: file alone
  Do("click", "BackMappingCmd(2)");
  Do("click", "BackMappingCmd(1)");
  Type(2, "5", "6", "7", "8");
  for (int offset = 68; offset < 78; ++offset) SetByte(offset, 0);
  Decode();
  EXPECT_EQ(Get("ModStartTxt(0).Text") + "," + Get("ModEndTxt(0).Text") + "," + Get("ABFileTxt(0).Text"), "1,0,0");
  EXPECT_EQ(Get("ModStartTxt(1).Text") + "," + Get("ABFileTxt(1).Text") + "," + Get("ABWordTxt(1).Text"), ",7,");
  EXPECT_EQ(Get("ModEndTxt(2).Text"), "6");
}

TEST_F(Rb2000, ChecksTheSlots) {
  const struct {
    const char *start, *end, *file, *word, *words;
  } rows[] = {
      {"", "", "", "", ""},
      {"1", "9999", "0", "0", ""},
      {"10001", "19999", "999", "9999", ""},
      {"30001", "49999", "1", "1", ""},
      {"20", "10", "7", "0", ""},
      {"", "10", "7", "0", ""},
      {"1", "10", "x", "y", ""},
      {"1", "10", "7", "", "Missing"},
      {"1", "", "7", "0", "Missing"},
      {"10000", "", "7", "0", "Missing"},
      {"", "", "7", "", "Missing"},
      {"0", "10", "7", "0", "Invalid"},
      {"10000", "10", "7", "0", "Invalid"},
      {"1", "20000", "7", "0", "Invalid"},
      {"25000", "10", "7", "0", "Invalid"},
      {"1", "40000", "7", "0", "Invalid"},
      {"50000", "10", "7", "0", "Invalid"},
      {"word", "10", "7", "0", "Invalid"},
      {"1", "1e99", "7", "0", "Invalid"},
      {"1", "10", "1000", "0", "Invalid"},
      {"1", "10", "-1", "0", "Invalid"},
      {"1", "10", "7", "10000", "Invalid"},
      {"9999.4", "10000.5", "7", "0", "Invalid"},  // rounded first
  };
  Next(3);
  Type(0, "1", "2", "3", "4");
  for (const auto& row : rows) {
    Type(2, row.start, row.end, row.file, row.word);
    const std::string box =
        *row.words ? "box critical \"Error!\" \"" + std::string(row.words) + " Entry Detected\" -> OK\n" : "";
    EXPECT_EQ(Next(), box) << row.start << "|" << row.end << "|" << row.file << "|" << row.word;
    EXPECT_EQ(Shown(), *row.words ? "MappingFrame(0)" : "ApplyFrame");
    if (!*row.words) Do("click", "BackCmd");
  }
  Type(2, "10000", "10", "7", "0");
  Do("click", "NextMappingCmd(0)");
  Next();
  EXPECT_EQ(Shown(), "MappingFrame(1)");  // the pane is left as it is
}

TEST_F(Rb2000, UploadsOnWhateverPageAndDownloadsWhatItHolds) {
  Next(1);
  EXPECT_EQ(Do("click", "UploadCmd"), Reminder);
  EXPECT_EQ(Shown(), "SerialSettingsFrame");
  EXPECT_EQ(Get("ChaSpeedLst.Text") + Get("ChbParityLst.Text"), "19200Even");
  EXPECT_EQ(Get("ChbModSlavePlcTypeLst.Text") + Get("ModStartTxt(1).Text"), "SLC/MicroLogix/ControlLogix40101");
  EXPECT_EQ(h.driver.written, "TEE\x06");
  h.driver.written.clear();
  Do("select", "ChaStopBitsLst", "2");
  Next(3);
  EXPECT_EQ(Next(), Reminder + Success);
  EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\n");
  Bytes expected = sim::FindGatewayKind("RB2000")->factoryImage;
  expected[17] = 8;
  EXPECT_EQ(ToHex(device.gateway.Image()), ToHex(expected));
  EXPECT_EQ(h.driver.written.size(), 448u + 19);
  EXPECT_EQ(h.driver.calls.back(), "Close");
}

TEST_F(Rb2000, ASilentDeviceLeavesEverythingForAnotherTry) {
  ScriptedDevice silent;
  h.driver.Plug("COM3", &silent);
  Next(1);
  Do("select", "ChaSpeedLst", "300");
  h.Elapsed();
  EXPECT_EQ(Do("click", "UploadCmd"), Reminder);  // silently nothing
  EXPECT_EQ(h.Elapsed(), 3000ms);
  EXPECT_EQ(Get("ChaSpeedLst.Text"), "300");
  Next(3);
  h.Elapsed();
  EXPECT_EQ(Next(), Reminder + TimeOut);
  EXPECT_EQ(h.Elapsed(), 27400ms);
  EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\nform Configuration_RB2000 visible\n");
  EXPECT_EQ(Shown(), "ApplyFrame");
  h.driver.Plug("COM3", &device);
  EXPECT_EQ(Next(), Reminder + Success);
  EXPECT_EQ(static_cast<int>(device.gateway.Image()[16]), 3);
}

TEST_F(Rb2000, WithoutAPortOnlyFilesAreLeft) {
  h.Do("click Configuration_RB2000.CancelCmd\nselect ProductMenu.COMCbo None\nclick ProductMenu.ConfigureCmd");
  EXPECT_EQ(Get("UploadCmd.Visible") + Get("DownOpt.Enabled") + Get("DownSaveOptLbl.Enabled") + Get("SaveOpt.Enabled"),
            "FalseFalseFalseTrue");
  EXPECT_EQ(Get("DownOpt.Value"), "True");
  // No port was ever chosen: ends as with a silent device, at once.
  h.app.globals.ComPortNumber = 0;
  Next(4);
  h.Elapsed();
  EXPECT_EQ(Next(), Reminder + TimeOut);
  EXPECT_EQ(h.Elapsed(), 0ms);
}

TEST_F(Rb2000, SavesAndOpensItsFile) {
  TemporaryFile file("plant.cfg");
  Next(3);
  Type(0, "40001", "40020", "7", "0");
  Next();
  Do("click", "SaveOptLbl");
  h.Do("file cancel");
  EXPECT_EQ(Next(),
            "dialog save \"Save Configuration File\" \"RB2000 Configuration Files (*.cfg)|*.cfg\" -> cancelled\n");
  EXPECT_EQ(Shown(), "ApplyFrame");
  h.Do("file " + file.Path());
  Next();
  EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\n");
  const std::string content = file.Content();
  EXPECT_EQ(content.substr(0, 32), "\"RB2000\"\r\n\"QRV\"\r\n2,0\r\n1,0\r\n8,0\r\n");
  EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), 215);
  EXPECT_EQ(h.driver.written, "");

  h.Do("click ProductMenu.ConfigureCmd");
  SetByte(2, 77);  // not in the file: keeps its value
  Do("click", "OpenConfigChkLbl");
  h.Do("file " + file.Path());
  EXPECT_EQ(Next(),
            "dialog open \"Select Configuration File\" \"RB2000 Configuration Files (*.cfg)|*.cfg|All Files "
            "(*.*)|*.*\" -> \"" +
                file.Path() + "\"\n");
  EXPECT_EQ(Shown(), "SerialSettingsFrame");
  EXPECT_EQ(Get("ModEndTxt(0).Text"), "40020");
  EXPECT_EQ(ByteAt(2), 77);

  // Back and Next asks again; a cancelled dialog stays.
  Do("click", "BackCmd");
  h.Do("file cancel");
  Next();
  EXPECT_EQ(Shown(), "ConfigFrame");

  // A file that breaks off, or is a sister product's, leaves the registers as they were.
  const Bytes before = h.app.globals.RegistersToString(0, 224);
  const std::string broken[] = {content.substr(0, content.size() / 2),
                                "\"RB3000\"\r\n\"Modbus\"\r\n" + content.substr(17),
                                content.substr(0, 40) + "x" + content.substr(41), "\"RB2000\"\r\n\"QRV\"\r\n300,0\r\n"};
  for (const std::string& text : broken) {
    file.Fill(text);
    h.Do("file " + file.Path());
    EXPECT_NE(Next().find("\"Error!\""), std::string::npos);
    EXPECT_EQ(ToHex(h.app.globals.RegistersToString(0, 224)), ToHex(before));
    EXPECT_EQ(Shown(), "ConfigFrame");
  }
}

TEST_F(Rb2000, DownloadAndSaveAsksForTheFileFirst) {
  TemporaryFile file("plant.cfg");
  Next(4);
  Do("click", "DownSaveOptLbl");
  h.Do("file cancel");
  Next();
  EXPECT_EQ(h.driver.written, "");
  EXPECT_EQ(Shown(), "ApplyFrame");
  h.Do("file " + file.Path());
  const std::string printed = Next();
  EXPECT_EQ(printed.substr(0, Reminder.size()), Reminder);
  EXPECT_NE(printed.find(Success), std::string::npos);
  EXPECT_FALSE(file.Content().empty());
}

TEST_F(Rb2000, FinishRefusesWhatTheImageCannotHold) {
  Next(2);
  Do("select", "ChbModDeviceTypeLst", "Master");
  auto& form = *h.app.forms.Find("Configuration_RB2000");
  form.Get<TextBox>("ABFileTxt", 4).Text = "70000";  // a master's slots are not checked
  Next();
  EXPECT_EQ(Next(),
            "box critical \"Error!\" \"Address Mapping, slot 5, File (shown with Modbus Device Type Slave): the device "
            "can't hold this value.\\r\\nEnter a number from 0 to 65535.\" -> OK\n");
  EXPECT_EQ(Shown(), "ApplyFrame");
  form.Get<TextBox>("ABFileTxt", 4).Text = "0";
  for (int slot = 0; slot < 40; ++slot) {
    for (const char* field : {"ModStartTxt", "ModEndTxt", "ABFileTxt", "ABWordTxt"})
      form.Get<TextBox>(field, slot).Text = "65535";
  }
  const std::string printed = Next();
  EXPECT_NE(printed.find("add up to 32767"), std::string::npos) << printed;
  EXPECT_EQ(h.driver.written, "");
  EXPECT_EQ(h.driver.calls.back(), "Close");
  EXPECT_EQ(Get("ABFileTxt(4).Text"), "65535");
}

TEST_F(Rb2000, TheProgressMessageCountsTheTime) {
  ScriptedDevice silent;
  h.driver.Plug("COM3", &silent);
  Next(4);
  h.Do(
      "after 999 get DownloadingMsg.ProgressBar.Value\nafter 1001 get DownloadingMsg.ProgressBar.Value\n"
      "after 27300 get DownloadingMsg.ProgressBar.Value\nafter 1500 get DownloadingMsg.CloseEnabled\n"
      "after 1600 get DownloadingMsg.ProgressBar.Max");
  EXPECT_EQ(Next(),
            Reminder + "value \"0\"\nvalue \"1000\"\nvalue \"False\"\nvalue \"27400\"\nvalue \"27000\"\n" + TimeOut);
  EXPECT_EQ(h.Do("forms").find("DownloadingMsg"), std::string::npos);
}

TEST_F(Rb2000, CancelInTheMiddleOfAnUploadTakesNothingOver) {
  sim::Misbehaviour slow;
  slow.late = 500ms;
  GatewayDevice late("RB2000", slow);
  h.driver.Plug("COM3", &late);
  h.Do("after 100 click Configuration_RB2000.CancelCmd");
  const Bytes before = h.app.globals.RegistersToString(0, 224);
  Do("click", "UploadCmd");
  EXPECT_EQ(ToHex(h.app.globals.RegistersToString(0, 224)), ToHex(before));
  EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\n");
  EXPECT_EQ(h.driver.calls.back(), "Close");
}

}  // namespace
}  // namespace vk32
