// The wizards of the RB2000 and the RB3000: pages, registers, slots, transfer and file.
#include "core/ConfigurationForm.h"
#include "models/WizardUser.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

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
  T& At(const char* control) {
    return Wizard().Get<T>(control);
  }
};

/// "start|end|file|word"
std::string Slot(int slot, const std::string& texts) {
  const auto parts = Split(texts, '|');
  std::string acts;
  for (std::size_t i = 0; const char* field : {"ModStartTxt(", "ModEndTxt(", "ABFileTxt(", "ABWordTxt("}) {
    acts += "type " + (field + Str(slot)) + ") " + (i < parts.size() ? parts[i] : "") + "\n";
    ++i;
  }
  return acts;
}

const std::string Rb2000Master = "to ProtocolSettingsFrame\nselect ChbModDeviceTypeLst Master\n",
                  Rb3000Master = "to ModSettingsFrame\nselect ModDeviceTypeLst Master\n";

TEST(Serial, WalksItsPages) {
  const std::string welcome = "ConfigFrame/OpenConfigLbl ", slots = "MappingFrame(0)/ModAddrMapLbl ",
                    apply = "ApplyFrame/ApplySetLbl", rb3000 = welcome + "ModSettingsFrame/ModProtoSetLbl ",
                    rb2000 = welcome + "SerialSettingsFrame/SerialSetLbl ProtocolSettingsFrame/ProtoSetLbl ";
  const struct {
    const char* product;
    std::string acts, pages;
  } rows[] = {
      {"RB2000", "", rb2000 + slots + apply},
      {"RB3000", "", rb3000 + slots + apply},
      // A master passes the slots, whatever they hold.
      {"RB2000", "to MappingFrame(0)\ntype ModStartTxt(0) 10000\nback ConfigFrame\n" + Rb2000Master, rb2000 + apply},
      {"RB3000", "to MappingFrame(0)\ntype ModStartTxt(0) 10000\nback ConfigFrame\n" + Rb3000Master, rb3000 + apply}};
  for (const auto& row : rows) {
    WizardUser user(row.product);
    EXPECT_EQ(user.Use(row.acts), "");
    user.Walk(row.pages);
  }
  // The mapping page always opens at slot 1.
  WizardUser user("RB3000");
  EXPECT_EQ(user.Use("to MappingFrame(0)\nclick NextMappingCmd(0)\npage"), "MappingFrame(1)");
  EXPECT_EQ(user.Use("click NextMappingCmd(1)\npage\nsee SlotNumLbl(39)"), "MappingFrame(2)40");
  EXPECT_EQ(user.Use("click BackMappingCmd(2)\npage\nclick BackCmd\nclick NextCmd\npage"),
            "MappingFrame(1)MappingFrame(0)");
}

TEST(Serial, ThePageFollowsItsChoices) {
  const std::string
      to = "to ProtocolSettingsFrame\n",
      broadcast = "select ChbModSlaveBroadcastEnableLst ",
      tops = "\nget ChbModSlaveSpecificAddrChk.Top\nget ChbModSlaveSpecificAddrLst.Top",
      high = "value \"1200\"\nvalue \"1320\"\n", low = "value \"2280\"\nvalue \"2400\"\n",
      frames = "\nshown ModSlaveFrame ModMasterFrame", specific = "check ChbModSlaveSpecificAddrChk ",
      isShown = "\nshown ChbModSlaveSpecificAddrLst",
      six3 = "\nshown BroadStartLbl BroadStartLst BroadStartUnitsLbl BroadEndLbl BroadEndLst BroadSEndUnitsLbl";
  std::string six = "\nshown";
  for (const char* end : {"StartLbl", "StartLst", "StartUnitLbl", "EndLbl", "EndLst", "EndUnitLbl"})
    six += " ChbModSlaveBroadcast" + std::string(end);
  WizardUser rb2000("RB2000"), rb3000("RB3000");
  for (int time = 1; time <= 2; ++time) {
    EXPECT_EQ(rb2000.Use(to + broadcast + "Yes" + six + tops), "++++++" + low);
    EXPECT_EQ(rb2000.Use(broadcast + "No" + six + tops), "------" + high);
    EXPECT_EQ(rb2000.Use(specific + "on" + isShown + "\n" + specific + "off" + isShown), "+-");
    EXPECT_EQ(rb2000.Use(Rb2000Master + frames + "\nselect ChbModDeviceTypeLst Slave" + frames), "-++-");
    EXPECT_EQ(rb3000.Use("to ModSettingsFrame\nselect BroadcastLst Yes" + six3), "++++++");
    EXPECT_EQ(rb3000.Use("select BroadcastLst No" + six3), "------");
    EXPECT_EQ(rb3000.Use(Rb3000Master + frames + "\nselect ModDeviceTypeLst Slave" + frames), "-++-");
  }
  rb2000.Use("to MappingFrame(0)\ncheck FloatChk(5) on");
  rb3000.Use("to MappingFrame(0)\ncheck FloatChk(5) on");
  for (const auto& [type, shown] : {std::pair("PLC-3", "--"), {"PLC-5", "++"}, {"SLC/MicroLogix/ControlLogix", "++"}}) {
    const std::string look = std::string(type) + "\nto MappingFrame(0)\nshown FloatLbl(0) FloatChk(13)";
    EXPECT_EQ(rb2000.Use("click BackCmd\nselect ChbModSlavePlcTypeLst " + look), shown);
    EXPECT_EQ(rb3000.Use("click BackCmd\nselect PLCTypeLst " + look), shown);
  }
  EXPECT_EQ(rb2000.app.globals.RegisterHigh[53] + rb3000.app.globals.RegisterHigh[53], 2);  // what is hidden stays
}

// Every list and option: what it writes, and that the same byte selects it again.
TEST(Serial, ListsWriteTheirBitsAndAreSelectedByThem) {
  const struct {
    const char *product, *control, *text;
    int offset, before, after;
  } rows[] = {
      {"RB2000", "ChaSpeedLst", "300", 16, 8, 3},
      {"RB2000", "ChaSpeedLst", "230400", 16, 8, 13},
      {"RB2000", "ChbSpeedLst", "115200", 18, 8, 12},
      {"RB2000", "ChaParityLst", "Odd", 17, 0xF9, 0xFB},
      {"RB2000", "ChaParityLst", "Even", 17, 0, 6},
      {"RB2000", "ChbParityLst", "None", 19, 0xFF, 0xFD},
      {"RB2000", "ChaDataBitsLst", "7", 17, 0, 16},
      {"RB2000", "ChbDataBitsLst", "8", 19, 0xFF, 0xEF},
      {"RB2000", "ChaStopBitsLst", "2", 17, 0, 8},
      {"RB2000", "ChbStopBitsLst", "1", 19, 0xFF, 0xF7},
      {"RB2000", "ChaHandshakingLst", "Active", 17, 0, 1},
      {"RB2000", "ChbHandshakingLst", "None", 19, 0xFF, 0xFE},
      {"RB2000", "ChaConnectionLst", "RS-232", 17, 0xFF, 0x9F},
      {"RB2000", "ChaConnectionLst", "RS-422", 17, 0xDF, 0xBF},
      {"RB2000", "ChbConnectionLst", "RS-485", 19, 0, 96},
      {"RB2000", "ChaDf1StationAddrLst", "255", 14, 1, 255},
      {"RB2000", "ChaDf1ErrorModeLst", "CRC", 25, 0xF0, 0xF1},
      {"RB2000", "ChbModDeviceTypeLst", "Master", 41, 0, 2},
      {"RB2000", "ChbModProtocolLst", "ASCII", 41, 4, 5},
      {"RB2000", "ChbModSlaveBroadcastEnableLst", "Yes", 41, 0, 4},
      {"RB2000", "ChbModSlaveBroadcastEnableLst", "No", 41, 7, 3},
      {"RB2000", "ChbModSlavePlcTypeLst", "PLC-3", 44, 0, 1},
      {"RB2000", "ChbModSlavePlcTypeLst", "SLC/MicroLogix/ControlLogix", 44, 0, 2},
      {"RB2000", "ChbModSlaveBroadcastStartLst", "7", 42, 0, 7},
      {"RB2000", "ChbModSlaveBroadcastEndLst", "0", 43, 7, 0},
      {"RB2000", "ChbModSlaveSpecificAddrLst", "247", 40, 1, 247},
      {"RB3000", "ModDeviceTypeLst", "Master", 41, 0xFD, 0xFF},
      {"RB3000", "PLCTypeLst", "PLC-3", 44, 0, 1},
      {"RB3000", "BroadcastLst", "Yes", 41, 1, 5},
      {"RB3000", "BroadStartLst", "7", 42, 0, 7},
      {"RB3000", "BroadEndLst", "6", 43, 0, 6},
      // The octal text of a byte, read as decimal digits.
      {"RB2000", "ChbModSlaveBroadcastStartLst", "10", 42, 0, 10},
      {"RB3000", "BroadEndLst", "10", 43, 0, 10},
  };
  for (const auto& row : rows) {
    Rb user(row.product);
    auto& list = user.At<ComboBox>(row.control);
    user.Byte(row.offset) = row.before;
    list.Text = row.text;
    EXPECT_EQ(user.Byte(row.offset), row.after) << row.control << " " << row.text;
    list.SetEntries(list.Entries());  // forgets its selection
    user.Byte(row.offset) = row.after;
    user.Decode();
    const bool octal = row.after == 10;
    EXPECT_EQ(list.Text.Value(), octal ? "12" : row.text) << row.control;
    EXPECT_EQ(user.Byte(row.offset), octal ? 12 : row.after) << row.control << " " << row.text;
  }
  for (const auto& [product, names] :
       {std::pair("RB2000", "ChbModMasterNXYYZOpt ChbModMasterNXYZZOpt ChbModMasterNYXZZOpt"),
        {"RB3000", "NXYYZOpt NXYZZOpt NYXZZOpt"}}) {
    Rb user(product);
    user.Byte(41) = 2;  // a master
    const auto options = Split(names);
    for (int code : {2, 1, 0}) {
      user.At<OptionButton>(options[static_cast<std::size_t>(code)].c_str()).Value = true;
      EXPECT_EQ(user.Byte(45), code);
    }
    for (int code : {2, 1, 0, 3}) {
      user.Byte(45) = code;
      user.Decode();
      EXPECT_TRUE(user.At<OptionButton>(options[static_cast<std::size_t>(code % 3)].c_str()).Value) << product << code;
      EXPECT_EQ(user.Byte(45), code);
    }
  }
}

TEST(Serial, BytesThatNoEntryHasLeaveListAndByte) {
  const struct {
    const char *product, *control, *text;
    int offset, value;
  } rows[] = {{"RB2000", "ChaSpeedLst", "9600", 16, 0},
              {"RB2000", "ChaSpeedLst", "9600", 16, 14},
              {"RB2000", "ChbModSlavePlcTypeLst", "PLC-5", 44, 3},
              {"RB2000", "ChbModSlaveBroadcastStartLst", "0", 42, 64},
              {"RB2000", "ChbModSlaveBroadcastEndLst", "0", 43, 255},
              {"RB2000", "ChbModSlaveSpecificAddrLst", "1", 40, 248},
              {"RB3000", "PLCTypeLst", "PLC-5", 44, 3}};
  for (const auto& row : rows) {
    Rb user(row.product);
    user.Byte(row.offset) = row.value;
    user.Byte(48) = 7;  // a slot behind it is decoded all the same
    user.Byte(56) = 9;  // a flag that is none
    user.Decode();
    EXPECT_EQ(user.At<ComboBox>(row.control).Text.Value(), row.text);
    EXPECT_EQ(user.Byte(row.offset), row.value) << row.control;
    EXPECT_EQ(user.Use("to MappingFrame(0)\nsee ModStartTxt(0)\nget FloatChk(0).Value"), "7value \"0\"\n");
    EXPECT_EQ(user.Byte(56), 9);
  }
  Rb user("RB2000");
  user.Byte(40) = 0;  // no specific address
  user.Decode();
  EXPECT_EQ(user.Byte(40), 1);
}

TEST(Serial, SlotsAreStoredLowByteFirstAndShownAgain) {
  Rb user("RB2000");
  const auto registers = [&](int first) { return ToHex(user.app.globals.RegistersToString(first, 5)); };
  user.Use("to MappingFrame(0)\n" + Slot(0, "40001|40020|7|0"));
  EXPECT_EQ(registers(24), "41 9C 54 9C 07 00 00 00 00 00");
  const struct {
    const char* text;
    int value;
  } starts[] = {{"12.5 units", 12}, {"99999999999", 12}, {"", 0}};  // halves to even; too large to convert
  for (const auto& start : starts) {
    user.Use("type ModStartTxt(0) " + std::string(start.text));
    EXPECT_EQ(user.Byte(48) + 256 * user.Byte(49), start.value);
  }
  user.Use("click NextMappingCmd(0)\nclick NextMappingCmd(1)\ntype ABWordTxt(39) 9999\ncheck FloatChk(39) on");
  EXPECT_EQ(registers(219), "00 00 00 00 00 00 0F 27 01 00");
  // A used slot shows its zeros, an unused one stays blank, and what the image does not have is not blanked.
  user.app.globals.ClearRegisters();
  user.Use("click BackMappingCmd(2)\nclick BackMappingCmd(1)\n" + Slot(2, "5|6|7|8"));
  for (int offset = 68; offset < 78; ++offset) user.Byte(offset) = 0;
  user.Byte(48) = 1;
  user.Byte(62) = 7;  // slot 2: file alone
  user.Decode();
  EXPECT_EQ(user.Use("see ModStartTxt(0) ModEndTxt(0) ABFileTxt(0) ABWordTxt(0) ModStartTxt(1) ABFileTxt(1) "
                     "ABWordTxt(1) ModEndTxt(2)"),
            "1|0|0|0||7||6");
}

TEST(Serial, ChecksTheSlots) {
  const struct {
    const char *texts, *words;
  } rows[] = {
      {"", ""},
      {"1|9999|0|0", ""},
      {"10001|19999|999|9999", ""},
      {"30001|49999|1|1", ""},
      {"20|10|7|0", ""},
      {"|10|7|0", ""},
      {"1|10|x|y", ""},
      {"1|10|7", "Missing"},
      {"1||7|0", "Missing"},
      {"10000||7|0", "Missing"},
      {"||7", "Missing"},
      {"0|10|7|0", "Invalid"},
      {"10000|10|7|0", "Invalid"},
      {"1|20000|7|0", "Invalid"},
      {"25000|10|7|0", "Invalid"},
      {"1|40000|7|0", "Invalid"},
      {"50000|10|7|0", "Invalid"},
      {"word|10|7|0", "Invalid"},
      {"1|1e99|7|0", "Invalid"},
      {"1|10|1000|0", "Invalid"},
      {"1|10|-1|0", "Invalid"},
      {"1|10|7|10000", "Invalid"},
      {"9999.4|10000.5|7|0", "Invalid"},  // rounded first
  };
  const auto box = [](const std::string& word) {
    return "box critical \"Error!\" \"" + word + " Entry Detected\" -> OK\n";
  };
  WizardUser user("RB2000"), rb3000("RB3000");
  user.Use("to MappingFrame(0)\n" + Slot(0, "1|2|3|4"));
  for (const auto& row : rows) {
    EXPECT_EQ(user.Use("back MappingFrame(0)\n" + Slot(2, row.texts) + "click NextCmd\npage"),
              *row.words ? box(row.words) + "MappingFrame(0)" : "ApplyFrame")
        << row.texts;
  }
  // The pane is left as it is.
  EXPECT_EQ(user.Use("click NextMappingCmd(0)\nclick NextCmd\npage"), box("Invalid") + "MappingFrame(1)");
  EXPECT_EQ(rb3000.Use("to MappingFrame(0)\nclick NextMappingCmd(0)\nclick NextMappingCmd(1)\n" + Slot(39, "1|0|1|1") +
                       "click NextCmd\npage"),
            box("Invalid") + "MappingFrame(2)");
}

TEST(Serial, TakesAndGivesAWholeConfiguration) {
  const struct {
    const char *product, *tag;
    std::string page, look, words, act, changed;
    int offset, value;
    std::string defaults;
  } rows[] = {{"RB2000", "QRV", "SerialSettingsFrame",
               "ChaSpeedLst ChbParityLst ChaDf1StationAddrLst ChaDf1ErrorModeLst ChbModSlavePlcTypeLst "
               "ChbModSlaveBroadcastEndLst ChbModSlaveSpecificAddrLst ModStartTxt(1) ChaStopBitsLst",
               "19200|Even|5|CRC|SLC/MicroLogix/ControlLogix|7|17|40101|", "select ChaStopBitsLst 2", "2", 17, 8, "01"},
              {"RB3000", "Modbus", "ModSettingsFrame",
               "ModDeviceTypeLst PLCTypeLst BroadcastLst BroadStartLst ModStartTxt(1) ABWordTxt(1) BroadEndLst",
               "Slave|PLC-3|Yes|2|30001|5|", "select BroadEndLst 7", "7", 43, 7, "00"}};
  for (const auto& row : rows) {
    GatewayDevice device(row.product);
    TemporaryFile file("plant.cfg");
    Rb user(row.product, &device);
    Bytes expected = device.gateway.Image();
    EXPECT_EQ(user.Use("finish DownOpt\npage"), "reminder\nsuccess\nclosed");
    EXPECT_EQ(ToHex(device.gateway.Image()),
              "04 99 00 00 00 00 00 00 00 00 00 00 02 00 01 00 08 00 08 00 08 00 08 00 00 00 01 00 00 00 00 00 00 00 "
              "00 00 00 00 00 00 " +
                  row.defaults + ToHex(Bytes(408, '\0')).substr(2));
    GatewayDevice factory(row.product);
    user.driver.Plug("COM3", &factory);
    user.driver.written.clear();
    EXPECT_EQ(user.Use("again\nto " + row.page + "\nclick UploadCmd\npage"), "reminder\n" + row.page);
    EXPECT_EQ(user.driver.written, "TEE\x06");
    const std::string seen = user.Use("see " + row.look);
    EXPECT_EQ(seen.substr(0, row.words.size()), row.words);
    EXPECT_EQ(user.Use(row.act + "\nfinish DownSaveOpt " + file.Path()), "reminder\nsuccess\n");
    expected[static_cast<std::size_t>(row.offset)] = static_cast<char>(row.value);
    EXPECT_EQ(ToHex(factory.gateway.Image()), ToHex(expected));
    const std::string content = file.Content();
    EXPECT_TRUE(content.starts_with(Lines("\"" + std::string(row.product) + "\"\n\"" + row.tag + "\"\n2,0\n")));
    EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), 215);
    // The file gives it back, but for the registers that are not in it.
    EXPECT_EQ(user.Use("again\nopen " + file.Path() + "\npage\nsee " + row.look), row.page + row.words + row.changed);
    user.Byte(2) = 77;
    EXPECT_EQ(user.Use("open " + file.Path() + "\nfinish DownOpt"), "reminder\nsuccess\n");
    expected[2] = 77;
    EXPECT_EQ(ToHex(factory.gateway.Image()), ToHex(expected));
  }
}

TEST(Serial, ARb3000MasterKeepsItsSlotsAndSendsItsConstants) {
  GatewayDevice device("RB3000");
  Rb user("RB3000", &device);
  for (const auto& [offset, value] : {std::pair(41, 6), {45, 2}, {48, 9}, {14, 77}, {25, 5}}) user.Byte(offset) = value;
  user.Decode();
  EXPECT_EQ(user.Use("see ModDeviceTypeLst ModStartTxt(0)\nto ModSettingsFrame\nget NYXZZOpt.Value\nfinish DownOpt"),
            "Master|value \"True\"\nreminder\nsuccess\n");
  const Bytes& image = device.gateway.Image();
  EXPECT_EQ(ToHex(image.substr(14, 2) + image.substr(24, 2) + image.substr(44, 6)), "01 00 00 05 00 02 00 00 09 00");
}

TEST(Serial, AFinishThatFailsLeavesEverythingForAnotherTry) {
  ScriptedDevice silent;
  GatewayDevice device("RB2000");
  TemporaryFile file("plant.cfg");
  WizardUser user("RB2000", &silent);
  user.Use("to SerialSettingsFrame\nselect ChaSpeedLst 300");
  user.Elapsed();
  EXPECT_EQ(user.Use("click UploadCmd\nsee ChaSpeedLst"), "reminder\n300");  // silently nothing
  EXPECT_EQ(user.Elapsed(), 3000ms);
  // A save that is cancelled downloads nothing.
  EXPECT_EQ(user.Use("finish DownSaveOpt cancel\npage"), "reminder\nApplyFrame");
  EXPECT_EQ(user.driver.written, "TEE");
  user.Elapsed();
  user.Do(
      "after 1499 get DownloadingMsg.ProgressBar.Value\nafter 1501 get DownloadingMsg.ProgressBar.Value\n"
      "after 27800 get DownloadingMsg.ProgressBar.Value\nafter 1600 get DownloadingMsg.CloseEnabled\n"
      "after 1600 get DownloadingMsg.ProgressBar.Max");
  EXPECT_EQ(user.Use("finish DownSaveOpt " + file.Path() + "\npage"),
            "reminder\nvalue \"0\"\nvalue \"1000\"\nvalue \"False\"\nvalue \"27400\"\nvalue \"27000\"\n"
            "time-out\nApplyFrame");
  EXPECT_EQ(user.Elapsed(), 500ms + 27400ms);  // the upload's answer could have come late
  EXPECT_EQ(user.Do("forms"), "form ProductMenu visible\nform Configuration_RB2000 visible\n");
  EXPECT_FALSE(file.Content().empty());
  user.driver.Plug("COM3", &device);
  EXPECT_EQ(user.Use("finish DownOpt"), "reminder\nsuccess\n");
  EXPECT_EQ(static_cast<int>(device.gateway.Image()[16]), 3);
}

TEST(Serial, WithoutAPortOnlyFilesAreLeft) {
  WizardUser user("RB2000");
  EXPECT_EQ(user.Use("shown UploadCmd\nget DownOpt.Enabled\nget DownSaveOptLbl.Enabled\nget SaveOpt.Enabled"),
            "-value \"False\"\nvalue \"False\"\nvalue \"True\"\n");
  EXPECT_EQ(user.Use("get DownOpt.Value"), "value \"True\"\n");
  EXPECT_EQ(user.Use("to ApplyFrame\nclick NextCmd\npage"), "reminder\ntime-out\nApplyFrame");
}

TEST(Serial, FinishRefusesWhatTheImageCannotHold) {
  for (const auto& [product, master] : {std::pair("RB2000", Rb2000Master), {"RB3000", Rb3000Master}}) {
    GatewayDevice device(product);
    Rb user(product, &device);
    user.Use("to MappingFrame(0)\ntype ABFileTxt(4) 70000\nback ConfigFrame\n" + master);
    EXPECT_EQ(
        user.Use("finish DownOpt\npage"),
        "box critical \"Error!\" \"Address Mapping, slot 5, File (shown with Modbus Device Type Slave): the device "
        "can't hold this value.\\r\\nEnter a number from 0 to 65535.\" -> OK\nApplyFrame");
    EXPECT_EQ(user.driver.written, "");
  }
}

TEST(Serial, TheHeadingOfTheDecodingsExplainsThem) {
  const std::string link = "DDTAExplanationFrm.DDTAExpLbl(2)", color = "\nget " + link + ".ForeColor";
  for (const auto& [product, heading] : {std::pair("RB2000", Rb2000Master + "click ChbModMasterDDTALbl"),
                                         {"RB3000", Rb3000Master + "click ModMasterDDTALbl"}}) {
    WizardUser user(product);
    user.Use(heading);
    EXPECT_EQ(user.Use("see " + link), "Click Here to download the Address Mapping software.");
    for (const char* other : {"DDTAExplanationFrm.DDTAExpLbl(7)", "DDTAExplanationFrm"}) {
      EXPECT_EQ(user.Do("move " + link + color), "value \"16711680\"\n");
      EXPECT_EQ(user.Do("move " + std::string(other) + color), "value \"-2147483630\"\n");
    }
    EXPECT_EQ(user.Do("click DDTAExplanationFrm.DDTAExpLbl(32)").substr(0, 5), "web \"");
    user.Do("click DDTAExplanationFrm.CloseCmd");
    EXPECT_FALSE(user.app.forms.Find("DDTAExplanationFrm"));
  }
}

}  // namespace
}  // namespace vk32
