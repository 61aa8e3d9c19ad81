// The wizard of the RB3000, where it differs from the RB2000's, and the explanation of the decodings.
#include <gtest/gtest.h>

#include "core/ConfigurationForm.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

class Rb3000 : public testing::Test {
 protected:
  Rb3000() {
    h.GoTo("RB3000Cmd", &device);
    h.Do("click ProductMenu.ConfigureCmd");
  }
  std::string Do(const std::string& command, const std::string& control, const std::string& rest = {}) {
    return h.Do(command + " Configuration_RB3000." + control + (rest.empty() ? "" : " " + rest));
  }
  std::string Get(const std::string& path) { return h.Get("Configuration_RB3000." + path); }
  std::string Next() { return Do("click", "NextCmd"); }
  std::string Shown() {
    std::string frames;
    for (const char* frame : {"ConfigFrame", "ModSettingsFrame", "MappingFrame(0)", "ApplyFrame"}) {
      if (Get(std::string(frame) + ".Shown") == "True") frames += frame;
    }
    return frames;
  }

  GatewayDevice device{"RB3000"};
  Harness h;
};

TEST_F(Rb3000, WalksItsPagesAsSlaveAndAsMaster) {
  for (const char* frame : {"ConfigFrame", "ModSettingsFrame", "MappingFrame(0)", "ApplyFrame"}) {
    EXPECT_EQ(Shown(), frame);
    if (Shown() != "ApplyFrame") Next();
  }
  EXPECT_EQ(Get("NextCmd.Picture") + Get("ApplySetLbl.ForeColor"), "1172368684");
  Do("click", "BackCmd");
  EXPECT_EQ(Shown(), "MappingFrame(0)");
  Do("type", "ModStartTxt(0)", "10000");
  EXPECT_EQ(Next(), "box critical \"Error!\" \"Missing Entry Detected\" -> OK\n");
  Do("click", "BackCmd");
  Do("select", "ModDeviceTypeLst", "Master");
  EXPECT_EQ(Get("ModSlaveFrame.Shown") + Get("ModMasterFrame.Shown"), "FalseTrue");
  EXPECT_EQ(Next(), "");
  EXPECT_EQ(Shown(), "ApplyFrame");
  Do("click", "BackCmd");
  EXPECT_EQ(Shown(), "ModSettingsFrame");
}

TEST_F(Rb3000, DefaultsMakeTheImage) {
  Do("click", "NextCmd");
  EXPECT_EQ(Get("BroadStartLst.Shown") + Get("BroadSEndUnitsLbl.Shown"), "FalseFalse");
  Do("select", "BroadcastLst", "Yes");
  EXPECT_EQ(Get("BroadStartLst.Shown") + Get("BroadSEndUnitsLbl.Shown"), "TrueTrue");
  Do("select", "BroadcastLst", "No");
  Next();
  Next();
  Next();
  EXPECT_EQ(
      ToHex(device.gateway.Image().substr(0, 48)),
      "04 99 00 00 00 00 00 00 00 00 00 00 02 00 01 00 08 00 08 00 08 00 08 00 00 00 01 00 00 00 00 00 00 00 00 00 "
      "00 00 00 00 00 00 00 00 00 00 00 00");
}

TEST_F(Rb3000, ReadsASlaveAndAMaster) {
  Do("click", "UploadCmd");
  EXPECT_EQ(Get("ModDeviceTypeLst.Text") + Get("PLCTypeLst.Text") + Get("BroadcastLst.Text") + Get("BroadEndLst.Text"),
            "SlavePLC-3Yes5");
  EXPECT_EQ(Get("ModStartTxt(1).Text") + "," + Get("ABWordTxt(1).Text") + "," + Get("FloatChk(0).Visible"),
            "30001,5,False");

  // A master's slots stay in the registers as they came and are sent unchanged; registers 7 to 11 are the wizard's.
  auto& globals = h.app.globals;
  globals.RegisterLow[20] = 6;
  globals.RegisterLow[22] = 2;
  globals.RegisterHigh[24] = 9;
  globals.RegisterHigh[7] = 77;
  globals.RegisterLow[12] = 5;
  dynamic_cast<ConfigurationForm&>(*h.app.forms.Find("Configuration_RB3000")).Parameter_Setup_RB();
  EXPECT_EQ(Get("ModDeviceTypeLst.Text") + Get("NYXZZOpt.Value"), "MasterTrue");
  EXPECT_EQ(Get("ModStartTxt(0).Text"), "1");
  Next();
  Next();
  Next();
  const Bytes& image = device.gateway.Image();
  EXPECT_EQ(ToHex(image.substr(14, 2) + image.substr(24, 2) + image.substr(44, 6)), "01 00 00 05 01 02 00 00 09 00");
}

TEST_F(Rb3000, ItsFileIsItsOwn) {
  TemporaryFile file("gateway.cfg");
  for (int page = 0; page < 3; ++page) Next();
  Do("click", "SaveOpt");
  h.Do("file " + file.Path());
  Next();
  EXPECT_EQ(file.Content().substr(0, 22), "\"RB3000\"\r\n\"Modbus\"\r\n2,");
  h.Do(
      "click ProductMenu.ReturnCmd\nclick MainMenu.RB2000Cmd\nclick ProductMenu.ConfigureCmd\n"
      "check Configuration_RB2000.OpenConfigChk on\nfile " +
      file.Path());
  const std::string printed = h.Do("click Configuration_RB2000.NextCmd");
  EXPECT_NE(printed.find("box exclamation \"Error!\" \"The selected configuration file is not for the RB2000.\" -> OK"),
            std::string::npos)
      << printed;
}

TEST_F(Rb3000, TheHeadingOfTheDecodingsExplainsThem) {
  Next();
  Do("select", "ModDeviceTypeLst", "Master");
  Do("click", "ModMasterDDTALbl");
  EXPECT_EQ(h.Get("DDTAExplanationFrm.Caption"), "Destination Data Table Address Decoding Explanation");
  EXPECT_EQ(h.Get("DDTAExplanationFrm.DDTAExpLbl(2).Caption"), "Click Here to download the Address Mapping software.");
  h.Do("move DDTAExplanationFrm.DDTAExpLbl(2)");
  EXPECT_EQ(h.Get("DDTAExplanationFrm.DDTAExpLbl(2).ForeColor"), "16711680");
  h.Do("move DDTAExplanationFrm.DDTAExpLbl(7)");
  EXPECT_EQ(h.Get("DDTAExplanationFrm.DDTAExpLbl(2).ForeColor"), "-2147483630");
  h.Do("move DDTAExplanationFrm.DDTAExpLbl(2)\nmove DDTAExplanationFrm");
  EXPECT_EQ(h.Get("DDTAExplanationFrm.DDTAExpLbl(2).ForeColor"), "-2147483630");
  EXPECT_EQ(h.Do("click DDTAExplanationFrm.DDTAExpLbl(32)").substr(0, 5), "web \"");
  h.Do("click DDTAExplanationFrm.CloseCmd");
  EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\nform Configuration_RB3000 visible\n");
}

}  // namespace
}  // namespace vk32
