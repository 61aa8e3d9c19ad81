// The device information of the VK5300 and the VK-RTX.
#include <gtest/gtest.h>

#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

const char* const Fields[] = {"SerialTxt",
                              "HardwareTxt",
                              "DistributorTxt",
                              "EMACTxt",
                              "IPAddrTxt",
                              "SubnetTxt",
                              "GatewayTxt",
                              "ProductModelTxt",
                              "ProductFirmwareVerTxt",
                              "ProductFirmwareDateTxt"};

std::string AllFields(Harness& h) {
  std::string texts;
  for (const char* field : Fields) texts += h.Get(std::string("DeviceInfo.") + field + ".Text") + "|";
  return texts;
}

/// Opens the form as the product menu does; the VK-RTX has no button for it.
std::string Open(Harness& h) {
  if (h.app.globals.CurrentProduct == "VK5300") return h.Do("click ProductMenu.DeviceInfoCmd");
  h.app.forms.dispatcher.Dispatch(
      [&] { h.app.forms.Load("DeviceInfo").Visible = h.app.globals.CommFailed == FlagFalse; });
  return h.Do("");
}

TEST(DeviceInfo, ShowsWhatAVk5300SaysOfItself) {
  GatewayDevice device("VK5300");
  Harness h;
  h.GoTo("VK5300Cmd", &device);
  EXPECT_EQ(Open(h), "");
  EXPECT_EQ(h.Get("DeviceInfo.Caption"), "Device Information");
  EXPECT_EQ(
      AllFields(h),
      "123456|2-300|Pellwood Controls Co|00-0A-1B-2C-3D-4E|192.168.1.100|255.255.255.0|192.168.1.1|VK5300 Ethernet to "
      "DH+|Version 2.14|March 3 2019|");
  EXPECT_EQ(ToHex(h.driver.written), "A5 DD DD DD DD DD");
  EXPECT_EQ(h.driver.calls.back(), "Close");
  h.Do("click DeviceInfo.CloseCmd");
  EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\n");
}

TEST(DeviceInfo, TextsEndByAPauseOf50MsAndMayHoldAnyByte) {
  const struct {
    Bytes model, version, date, shown;
  } rows[] = {
      {"", "", "", "||"},
      {Bytes("a\0b\r\n\xFF\"", 7), "v", "d", "a\\x00b\\r\\n\\xFF\\\"|v|d"},
      {Bytes(300, 'm'), "v", "d", std::string(256, 'm') + "|v|d"},  // what is left over goes into no field
      {"m", Bytes(16, 'v'), Bytes(32, 'd'), "m|" + std::string(16, 'v') + "|" + std::string(32, 'd')},
  };
  for (const auto& row : rows) {
    GatewayDevice device("VK5300");
    device.gateway.infoTexts = {row.model, row.version, row.date};
    Harness h;
    h.GoTo("VK5300Cmd", &device);
    Open(h);
    const auto text = [&](const char* field) {
      const std::string line = h.Do(std::string("get DeviceInfo.") + field + ".Text");
      return line.substr(7, line.size() - 9);
    };
    if (row.model.size() > 256) {
      EXPECT_EQ(text("ProductModelTxt"), std::string(256, 'm'));
    } else {
      EXPECT_EQ(text("ProductModelTxt") + "|" + text("ProductFirmwareVerTxt") + "|" + text("ProductFirmwareDateTxt"),
                row.shown);
    }
  }
  // On the true line at 19200 bit/s, 96 bytes take exactly the 50 ms: the last byte comes with the time-out.
  for (const auto& [sent, shown] : {std::pair(95u, 95u), {96u, 95u}, {200u, 95u}}) {
    GatewayDevice device("VK5300", {}, true);
    device.gateway.infoTexts = {Bytes(sent, 'm'), "", ""};
    Harness h;
    h.GoTo("VK5300Cmd", &device);
    Open(h);
    EXPECT_NEAR(static_cast<double>(h.Get("DeviceInfo.ProductModelTxt.Text").size()), shown, 1) << sent;
  }
}

TEST(DeviceInfo, PiecesThatDoNotCome) {
  sim::Misbehaviour twoPieces;
  twoPieces.infoPieces = 2;
  GatewayDevice device("VK5300", twoPieces);
  Harness h;
  h.GoTo("VK5300Cmd", &device);
  EXPECT_EQ(Open(h), "");
  EXPECT_EQ(h.Get("DeviceInfo.IPAddrTxt.Text") + h.Get("DeviceInfo.ProductModelTxt.Text"), "192.168.1.100");

  // The first two pieces have no such tolerance.
  sim::Misbehaviour onePiece;
  onePiece.infoPieces = 1;
  GatewayDevice broken("VK5300", onePiece);
  Harness other;
  other.GoTo("VK5300Cmd", &broken);
  EXPECT_EQ(Open(other),
            "box critical \"Error!\" \"A timeout or error has occured while communicating to the VK5300\" -> OK\n");
  EXPECT_EQ(other.driver.calls.back() + other.Do("forms"), "Closeform ProductMenu visible\n");
}

TEST(DeviceInfo, FailuresShowTheBoxAndNoForm) {
  const auto box = [](const std::string& product) {
    return "box critical \"Error!\" \"A timeout or error has occured while communicating to the " + product +
           "\" -> OK\n";
  };
  sim::Misbehaviour silent;
  silent.silent = true;
  GatewayDevice device("VK5300", silent);
  Harness h;
  h.GoTo("VK5300Cmd", &device);
  h.Elapsed();
  h.Do("after 1999 forms");
  EXPECT_EQ(Open(h), "form ProductMenu visible\nform DeviceInfo hidden\n" + box("VK5300"));
  EXPECT_EQ(h.Elapsed(), 2000ms);
  EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\n");

  sim::Misbehaviour bad, truncated;
  bad.badChecksum = true;
  truncated.shortBy = 1;
  for (const sim::Misbehaviour& misbehaviour : {bad, truncated}) {
    GatewayDevice rtx("VK-RTX-Modbus", misbehaviour);
    Harness other;
    other.GoTo("VKRTXCmd");
    other.Do("click MainMenu.ABEthModbusModelCmd");
    other.driver.Plug("COM3", &rtx);
    other.Do("select ProductMenu.COMCbo COM3");
    EXPECT_EQ(Open(other), "");
    EXPECT_EQ(other.app.globals.CommFailed, FlagTrue);
    EXPECT_EQ(ToHex(other.driver.written), "A5 DD");
  }
}

TEST(DeviceInfo, ShowsAVkRtxInItsOwnByteOrder) {
  GatewayDevice rtx("VK-RTX-Modbus");
  Harness h;
  h.GoTo("VKRTXCmd");
  h.Do("click MainMenu.ABEthModbusModelCmd");
  h.driver.Plug("COM3", &rtx);
  h.Do("select ProductMenu.COMCbo COM3");
  Open(h);
  EXPECT_EQ(AllFields(h),
            "123456|2-300|Pellwood Controls Co|00-0A-1B-2C-3D-4E|192.168.1.100|255.255.255.0|192.168.1.1||||");
  EXPECT_EQ(ToHex(h.driver.written), "A5 DD A5 A5");
}

}  // namespace
}  // namespace vk32
