// The wizards of the RB2000 and the RB3000: pages, registers, slots, transfer and file.
#include "core/ConfigurationForm.h"
#include "models/WizardUser.h"

namespace vk32 {
namespace {

struct Rb : WizardUser {
  using WizardUser::WizardUser;
  /// Byte `offset` of the image as it stands.
  std::int32_t& Byte(int offset) {
    auto& registers = offset % 2 == 0 ? app.globals.RegisterHigh : app.globals.RegisterLow;
    return registers[static_cast<std::size_t>(offset / 2)];
  }
  ConfigurationForm& Wizard() { return dynamic_cast<ConfigurationForm&>(*app.forms.Find(form)); }
  void Decode() { Wizard().Parameter_Setup_RB(); }
  template <class T>
  T& At(const std::string& control) {
    return Wizard().Get<T>(control.c_str());
  }
};

/// "start|end|file|word"
std::string Slot(int slot, const std::string& texts) {
  const auto parts = Split(texts + "||||", '|');
  const std::string at = "Txt(" + Str(slot) + ") ";
  return "type ModStart" + at + parts[0] + "\ntype ModEnd" + at + parts[1] + "\ntype ABFile" + at + parts[2] +
         "\ntype ABWord" + at + parts[3] + "\n";
}

const std::string Rb2000Master = "to ProtocolSettingsFrame\nselect ChbModDeviceTypeLst Master\n",
                  Rb3000Master = "to ModSettingsFrame\nselect ModDeviceTypeLst Master\n";

TEST(Serial, TheSpecificAddressShowsWhenItIsAsked) {
  EXPECT_EQ(WizardUser("RB2000").Use("to ProtocolSettingsFrame\nshown ChbModSlaveSpecificAddrLst"), "-");
}

TEST(Serial, WalksItsPages) {
  const std::string welcome = "ConfigFrame ", slots = "MappingFrame(0) ", apply = "ApplyFrame",
                    rb3000 = welcome + "ModSettingsFrame ",
                    rb2000 = welcome + "SerialSettingsFrame ProtocolSettingsFrame ",
                    used = "to MappingFrame(0)\ntype ModStartTxt(0) 10000\nback ConfigFrame\n";
  const std::array<std::string, 3> rows[] = {
      {"RB2000", "", rb2000 + slots + apply},
      {"RB3000", "", rb3000 + slots + apply},
      {"RB2000", used + Rb2000Master, rb2000 + apply},  // a master passes the slots, whatever they hold
      {"RB3000", used + Rb3000Master, rb3000 + apply}};
  for (const auto& [kind, acts, pages] : rows) {
    WizardUser user(kind);
    EXPECT_EQ(user.Use(acts), "");
    user.Walk(pages);
  }
  WizardUser user("RB3000");
  EXPECT_EQ(user.Use("to MappingFrame(0)\nclick NextMappingCmd(0)\nclick NextMappingCmd(1)\npage\nsee SlotNumLbl(39)"),
            "MappingFrame(2)40");
  EXPECT_EQ(user.Use("click BackMappingCmd(2)\npage\nclick BackCmd\nclick NextCmd\npage"),
            "MappingFrame(1)MappingFrame(0)");  // it always opens at slot 1
}

TEST(Serial, ThePageFollowsItsChoices) {
  const std::string
      mod = "select ChbMod",
      frames = "shown ModSlaveFrame ModMasterFrame",
      range2 = "get ChbModSlaveSpecificAddrChk.Top\nshown ChbModSlaveBroadcastStartLst ChbModSlaveBroadcastEndLst",
      range3 = "shown BroadStartLst BroadEndLst",
      floats = "to MappingFrame(0)\nshown FloatLbl(0) FloatChk(13)\nclick BackCmd",
      address = "check ChbModSlaveSpecificAddrChk ", list = "shown ChbModSlaveSpecificAddrLst",
      explained = "see DDTAExplanationFrm.DDTAExpLbl(2)\nclick DDTAExplanationFrm.CloseCmd";
  const std::tuple<bool, std::string, std::string, std::string> rows[] = {
      {false, mod + "SlaveBroadcastEnableLst Yes", range2, "value \"2280\"\n++"},
      {false, mod + "SlaveBroadcastEnableLst No", range2, "value \"1200\"\n--"},
      {false, address + "on", list, "+"},
      {false, address + "off", list, "-"},
      {false, mod + "DeviceTypeLst Master", frames, "-+"},
      {false, "click ChbModMasterDDTALbl", explained, "Click Here to download the Address Mapping software."},
      {false, mod + "DeviceTypeLst Slave", frames, "+-"},
      {false, mod + "SlavePlcTypeLst PLC-3", floats, "--"},
      {false, mod + "SlavePlcTypeLst PLC-5", floats, "++"},
      {true, "select BroadcastLst Yes", range3, "++"},
      {true, "select BroadcastLst No", range3, "--"},
      {true, "select ModDeviceTypeLst Master", frames, "-+"},
      {true, "click ModMasterDDTALbl", explained, "Click Here to download the Address Mapping software."},
      {true, "select ModDeviceTypeLst Slave", frames, "+-"},
      {true, "select PLCTypeLst PLC-3", floats, "--"},
      {true, "select PLCTypeLst SLC/MicroLogix/ControlLogix", floats, "++"}};
  WizardUser users[] = {WizardUser("RB2000"), WizardUser("RB3000")};
  for (WizardUser& user : users) user.Use("to MappingFrame(0)\ncheck FloatChk(5) on\nclick BackCmd");
  for (int time = 1; time <= 2; ++time) {
    for (const auto& [is3000, act, look, shown] : rows) EXPECT_EQ(users[is3000].Use(act + "\n" + look), shown) << act;
  }
  for (WizardUser& user : users) EXPECT_EQ(user.app.globals.RegisterHigh[53], 1);  // what was hidden stays
}

// Every list: what it writes, and that the same byte selects it again.
TEST(Serial, ListsWriteTheirBitsAndAreSelectedByThem) {
  // The list, its byte, texts with the byte before and after, bytes that no entry has: they leave the list, and stay.
  const std::tuple<std::string, int, std::string, std::string> rows[] = {
      {"ChaSpeedLst", 16,
       "300 8 3 600 8 4 1200 8 5 2400 8 6 4800 8 7 9600 9 8 19200 8 9 38400 8 10 57600 8 11 115200 8 12 230400 8 13",
       "0 14"},
      {"ChaParityLst", 17, "Odd 249 251 Even 0 6 None 255 253", ""},
      {"ChaDataBitsLst", 17, "7 0 16 8 255 239", ""},
      {"ChaStopBitsLst", 17, "2 0 8 1 255 247", ""},
      {"ChaHandshakingLst", 17, "Active 0 1 None 255 254", ""},
      {"ChaConnectionLst", 17, "RS-232 255 159 RS-422 223 191 RS-485 0 96", ""},
      {"ChaDf1StationAddrLst", 14, "255 1 255", ""},
      {"ChaDf1ErrorModeLst", 25, "CRC 240 241", ""},
      {"ChbModDeviceTypeLst ModDeviceTypeLst", 41, "Master 253 255", ""},
      {"ChbModProtocolLst", 41, "ASCII 4 5", ""},
      {"ChbModSlaveBroadcastEnableLst BroadcastLst", 41, "Yes 1 5 No 5 1", ""},
      {"ChbModSlaveBroadcastEnableLst", 41, "No 7 3", ""},
      {"ChbModSlavePlcTypeLst PLCTypeLst", 44, "PLC-3 0 1 SLC/MicroLogix/ControlLogix 0 2", "3"},
      {"ChbModSlaveBroadcastStartLst BroadStartLst", 42, "7 0 7 10 0 10", "64"},
      {"ChbModSlaveBroadcastEndLst BroadEndLst", 43, "0 7 0 6 0 6 10 0 10", "255"},
      {"ChbModSlaveSpecificAddrLst", 40, "247 1 247", "248"}};
  const auto check = [](const char* kind, const std::string& name, int offset, const std::string& all,
                        const std::string& others) {
    Rb user(kind);
    auto& list = user.At<ComboBox>(name);
    std::int32_t& byte = user.Byte(offset);
    const std::string before = list.Text.Value();
    for (const std::string& other : Split(others)) {
      byte = CLng(Val(other));
      user.Decode();
      EXPECT_EQ(list.Text.Value() + " " + Str(byte), before + " " + other) << name;
    }
    const auto picks = Split(all);
    for (auto pick = picks.begin(); pick != picks.end(); pick += 3) {
      byte = CLng(Val(pick[1]));
      list.Text = pick[0];
      EXPECT_EQ(Str(byte), pick[2]) << name << pick[0];
      list.SetEntries(list.Entries());  // forgets its selection
      user.Decode();
      // 10 is the octal text of a byte, read as decimal digits.
      EXPECT_EQ(list.Text.Value() + " " + Str(byte), pick[0] == "10" ? "12 12" : pick[0] + " " + pick[2]) << name;
    }
  };
  for (const auto& [names, offset, picks, others] : rows) {
    const auto name = Split(names);
    check("RB2000", name[0], offset, picks, others);
    if (offset < 18 && offset > 15) check("RB2000", "Chb" + names.substr(3), offset + 2, picks, others);
    if (name.size() > 1) check("RB3000", name[1], offset, picks, others);
  }
}

TEST(Serial, OptionsWriteTheirCodeAndAreSelectedByIt) {
  const std::string names[] = {"NXYYZOpt", "NXYZZOpt", "NYXZZOpt"};
  for (const auto& [kind, prefix] : {std::pair("RB2000", "ChbModMaster"), {"RB3000", ""}}) {
    Rb user(kind);
    const auto tab = [&](const char* control, int slot) { return user.Wizard().Find(control, slot)->TabIndex; };
    EXPECT_EQ(tab("ModStartTxt", 1) - tab("FloatChk", 0), tab("NextMappingCmd", 1) - tab("NextMappingCmd", 0));
    user.Byte(41) = 2;  // a master
    const auto option = [&, start = prefix ](int code) -> auto& {
      return user.At<OptionButton>(start + names[code % 3]);
    };
    for (const int code : {2, 1, 0}) {
      option(code).Value = true;
      EXPECT_EQ(user.Byte(45), code);
      option(code + 1).Value = true;
      user.Byte(45) = code;
      user.Decode();
      EXPECT_TRUE(option(code).Value) << kind << code;
    }
    user.Byte(45) = 3;  // of no option
    user.Decode();
    EXPECT_TRUE(option(0).Value && user.Byte(45) == 3);
  }
}

TEST(Serial, SlotsAreStoredLowByteFirstAndShownAgain) {
  Rb user("RB2000");
  const auto registers = [&](int first) { return ToHex(user.app.globals.RegistersToString(first, 5)); };
  user.Use("to MappingFrame(0)\n" + Slot(0, "40001|40020|7|0"));
  EXPECT_EQ(registers(24), "41 9C 54 9C 07 00 00 00 00 00");
  for (const auto& [text, value] : {std::pair("12.5 units", 12), {"99999999999", 12}, {"", 0}}) {
    user.Use("type ModStartTxt(0) " + std::string(text));  // halves to even; too large to convert
    EXPECT_EQ(user.Byte(48) + 256 * user.Byte(49), value);
  }
  user.Use("click NextMappingCmd(0)\nclick NextMappingCmd(1)\ntype ABWordTxt(39) 9999\ncheck FloatChk(39) on");
  EXPECT_EQ(registers(219), "00 00 00 00 00 00 0F 27 01 00");
  // A used slot shows its zeros, an unused one stays blank, and what the image does not have is not blanked.
  user.app.globals.ClearRegisters();
  user.Use("click BackMappingCmd(2)\nclick BackMappingCmd(1)\n" + Slot(2, "5|6|7|8"));
  for (int offset = 68; offset < 78; ++offset) user.Byte(offset) = 0;
  for (const auto& [offset, value] : {std::pair(48, 1), {62, 7}, {56, 9}}) user.Byte(offset) = value;
  user.Decode();
  EXPECT_EQ(user.Use("see ModStartTxt(0) ModEndTxt(0) ABFileTxt(0) ABWordTxt(0) ModStartTxt(1) ABFileTxt(1) "
                     "ABWordTxt(1) ModEndTxt(2)\nget FloatChk(0).Value"),
            "1|0|0|0||7||6value \"0\"\n");
  EXPECT_EQ(Str(user.Byte(56)) + Str(user.Byte(40)), "91");  // a flag that is none stays; no specific address is 1
}

TEST(Serial, ChecksTheSlots) {
  const std::pair<std::string, std::vector<const char*>> rows[] = {
      {"", {"", "1|9999|0|0", "10001|19999|999|9999", "30001|49999|1|1", "20|10|7|0", "|10|7|0", "1|10|x|y"}},
      {"Missing", {"1|10|7", "1||7|0", "10000||7|0", "||7"}},
      {"Invalid",
       {"0|10|7|0", "10000|10|7|0", "1|20000|7|0", "25000|10|7|0", "1|40000|7|0", "50000|10|7|0", "word|10|7|0",
        "1|1e99|7|0", "1|10|1000|0", "1|10|-1|0", "1|10|7|10000", "9999.4|10000.5|7|0"}}};  // rounded first
  const auto told = [](const std::string& word, const char* page) {                         // the pane is left as it is
    return "box critical \"Error!\" \"" + word + " Entry Detected\" -> OK\n" + page;
  };
  WizardUser user("RB2000"), rb3000("RB3000");
  user.Use("to MappingFrame(0)\n" + Slot(0, "1|2|3|4"));
  for (const auto& [word, slots] : rows) {
    for (const char* texts : slots) {
      EXPECT_EQ(user.Use("back MappingFrame(0)\n" + Slot(2, texts) + "click NextCmd\npage"),
                word.empty() ? "ApplyFrame" : told(word, "MappingFrame(0)"))
          << texts;
    }
  }
  const std::string next = "to MappingFrame(0)\nclick NextMappingCmd(0)\n";
  EXPECT_EQ(user.Use(next + "click NextCmd\npage"), told("Invalid", "MappingFrame(1)"));
  EXPECT_EQ(rb3000.Use(next + "click NextMappingCmd(1)\n" + Slot(39, "1|0|1|1") + "click NextCmd\npage"),
            told("Invalid", "MappingFrame(2)"));
}

TEST(Serial, MarksTheSlotsThatShowWhatWillNotBeSent) {
  Rb user("RB2000");
  user.Use("to MappingFrame(0)\n" + Slot(0, "1|2|3|4") + Slot(1, "1|2|3|4"));
  user.app.globals.ClearRegisters();
  user.Decode();
  const std::string look = "shown SlotMark(0) SlotMark(1) SlotMark(2)\nsee PageHintLbl",
                    hint = ": what is shown is not what will be sent. Type it again or empty it.";
  EXPECT_EQ(user.Use(look), "++-Slot 1" + hint);
  EXPECT_EQ(user.Use(Slot(0, "|||") + look), "-+-Slot 2" + hint);
  EXPECT_EQ(user.Use("click BackCmd\n" + look + "\nclick NextCmd\n" + look), "----+-Slot 2" + hint);
  EXPECT_EQ(user.Use(Slot(1, "1|2|3|4") + look), "---");
  EXPECT_EQ(user.Use("type ModStartTxt(2) 99999999999\n" + look), "--+Slot 3" + hint);
}

TEST(Serial, TakesAndGivesAWholeConfiguration) {
  const std::string zeros = ToHex(Bytes(408, '\0')).substr(2);
  for (const auto& [kind, tag, address] : {std::tuple("RB2000", "QRV", "01"), {"RB3000", "Modbus", "00"}}) {
    GatewayDevice device(kind), factory(kind);
    Rb user(kind, &device);
    EXPECT_EQ(user.Use("finish DownOpt\npage"), "reminder\nsuccess\nclosed");
    EXPECT_EQ(ToHex(device.gateway.Image()),
              "04 99 00 00 00 00 00 00 00 00 00 00 02 00 01 00 08 00 08 00 08 00 08 00 00 00 01 00 00 00 00 00 00 00 "
              "00 00 00 00 00 00 " +
                  (address + zeros));
    user.driver.Plug("COM3", &factory);
    EXPECT_EQ(user.Use("again\nclick UploadCmd\nfinish DownSaveOpt"), "reminder\nreminder\nsuccess\n");
    const Bytes image = GatewayDevice(kind).gateway.Image();
    EXPECT_EQ(ToHex(factory.gateway.Image()), ToHex(image));
    const std::string content = user.file.Content();
    EXPECT_TRUE(content.starts_with(Lines("\"" + std::string(kind) + "\"\n\"" + tag + "\"\n2,0\n")));
    EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), 215);
    // The file gives it back, but for the registers that are not in it. Byte 0 is the same in every image.
    user.Use("again");
    user.Byte(0) = user.Byte(2) = 77;
    EXPECT_EQ(user.Use("open\nfinish DownOpt"), "reminder\nsuccess\n");
    EXPECT_EQ(ToHex(factory.gateway.Image()), ToHex(Bytes(image).replace(2, 1, "M")));
  }
}

TEST(Serial, AFinishThatFailsLeavesEverythingForAnotherTry) {
  ScriptedDevice silent;
  GatewayDevice device("RB2000");
  Rb user("RB2000", &silent);
  user.Use("to SerialSettingsFrame\nselect ChaSpeedLst 300");
  user.Elapsed();
  EXPECT_EQ(user.Use("click UploadCmd\nsee ChaSpeedLst"), "reminder\n300");  // silently nothing
  EXPECT_EQ(user.Elapsed(), 3000ms);
  // A save that is cancelled, or that faults, downloads nothing; the old file stays whole.
  for (const auto& [path, status] :
       {std::pair("cancel", "COM3 did not answer "), {"/nowhere/plant.cfg", "plant.cfg could"}}) {
    EXPECT_EQ(user.Use(std::string("finish DownSaveOpt ") + path + "\npage"), "reminder\nApplyFrame");
    EXPECT_TRUE(user.Use("see StatusLbl").starts_with(status)) << path;
  }
  user.file.Fill("old");
  user.screen.onFileDialog = [&user] { user.Byte(401) = 256; };
  EXPECT_EQ(user.Use("finish DownSaveOpt\npage"), "reminder\nApplyFrame");
  EXPECT_EQ(user.file.Content() + user.driver.written, "oldTEE");
  user.screen.onFileDialog = {};
  user.Byte(401) = 0;
  user.Elapsed();
  const std::string bar = " get DownloadingMsg.ProgressBar.Value\nafter ";
  user.Do("after 1499" + bar + "1501" + bar + "27800" + bar + "1600 get DownloadingMsg.CloseEnabled");
  EXPECT_EQ(user.Use("finish DownSaveOpt\npage"),
            "reminder\nvalue \"0\"\nvalue \"1000\"\nvalue \"False\"\nvalue \"27000\"\ntime-out\nApplyFrame");
  EXPECT_EQ(user.Elapsed(), 500ms + 27400ms);  // the upload's answer could have come late
  EXPECT_EQ(user.Do("forms"), "form ProductMenu visible\nform Configuration_RB2000 visible\n");
  user.driver.Plug("COM3", &device);
  EXPECT_EQ(user.Use("finish DownOpt"), "reminder\nsuccess\n");
  EXPECT_EQ(static_cast<int>(device.gateway.Image()[16]), 3);
}

TEST(Serial, WithoutAPortOnlyFilesAreLeft) {
  WizardUser user("RB2000");
  EXPECT_EQ(user.Use("shown UploadCmd\nget DownOpt.Enabled\nget DownSaveOptLbl.Enabled\nget DownSaveOpt.Enabled\n"
                     "get SaveOpt.Enabled"),
            "-value \"False\"\nvalue \"False\"\nvalue \"False\"\nvalue \"True\"\n");
  EXPECT_EQ(user.Use("to ApplyFrame\nclick NextCmd\npage"), "reminder\ntime-out\nApplyFrame");
}

TEST(Serial, FinishRefusesWhatTheImageCannotHold) {
  const std::string words =
      "\"Address Mapping, slot 5, File (shown with Modbus Device Type Slave): the device can't hold";
  for (const auto& [kind, master] : {std::pair("RB2000", Rb2000Master), {"RB3000", Rb3000Master}}) {
    GatewayDevice device(kind);
    Rb user(kind, &device);
    user.Use("to MappingFrame(0)\ntype ABFileTxt(4) 70000\nback ConfigFrame\n" + master);
    EXPECT_TRUE(user.Use("finish DownOpt").starts_with("box critical \"Error!\" " + words));
    EXPECT_EQ(user.Use("page") + user.driver.written, "MappingFrame(0)");
    // What adds up to more than its message can tell goes into a file alone.
    user.Use("again");
    for (int offset = 100; offset < 230; ++offset) user.Byte(offset) = 255;
    EXPECT_TRUE(user.Use("finish DownOpt").starts_with("box critical \"Error!\" \"The configuration can't be sent"));
    EXPECT_EQ(user.driver.written + user.Use("page\nfinish SaveOpt\npage"), "ApplyFrameclosed");
  }
}

}  // namespace
}  // namespace vk32
