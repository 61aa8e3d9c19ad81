// The wizards of the VK5300 and the RBCard: lists, image, block, transfer and file.
#include "models/WizardUser.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

const std::string Addresses = "to EthComFrame\ntype EthIPTxt 192.168.1.2\ntype EthSubTxt 255.255.255.0\n";
const std::string Dhcp = "to EthComFrame\nselect EthDHCPLst Enabled\n";
const std::string Highway = "to DhComFrame\nselect DhNetworkLst DH-485\n";
const std::string Card485 = "to HwyComFrame\nclick Dh485Opt\n", Df1 = "to Df1ComFrame\nselect ";

TEST(Highway, ChoicesGoDownAndComeBack) {
  const std::string vk5300 =
      "DhNetworkLst DhNodeLst DhNodeUnitLbl DhSpeedLst DhSpeedUnitLbl EthDHCPLst EthSpeedLst SocketTimeOutTxt";
  const std::string rbCard =
      "HwyParamsLbl HwyNodeLst HwyNodeUnitLbl HwySpeedLst HwySpeedUnitLbl Df1SpeedLst Df1ParityLst Df1DataBitsLst "
      "Df1StopBitsLst Df1ErrorChkLst Df1DupMsgLst Df1EmbeddedRespLst";
  const std::string dh = "DH+ Parameters|1|Octal|57.6|kBaud|";
  const struct {
    std::string product, acts, image, block, words;
  } rows[] = {
      // the image from byte 12 on
      {"VK5300", Addresses, "00 00 01 00 08 00 0B 00 08 00 00 00 00 00 00",
       "02 01 A8 C0 00 FF FF FF 00 00 00 00 04 00 1E 00 00 00 00 00 04",
       "DH+|1|Octal|57.6|kBaud|Disabled|Auto Detect|30"},
      {"VK5300",
       "to DhComFrame\nselect DhNodeLst 77\nselect DhSpeedLst 230.4\n" + Dhcp +
           "select EthSpeedLst 10 Mbps\ntype SocketTimeOutTxt 255",
       "00 00 3F 00 0A 00 0B 00 08 00 00 00 00 00 00", "00 00 00 00 00 00 00 00 00 00 00 00 01 01 FF 00 00 00 00 00 04",
       "DH+|77|Octal|230.4|kBaud|Enabled|10 Mbps|255"},
      {"VK5300", Highway + "to EthComFrame\ntype EthGateTxt 10.0.0.1\nselect EthSpeedLst 100 Mbps\n" + Dhcp,
       "00 01 01 00 09 00 0B 00 08 00 00 00 00 00 00", "00 00 00 00 00 00 00 00 01 00 00 0A 03 01 1E 00 00 00 00 00 04",
       "DH-485|1|Decimal|19200|Baud|Enabled|100 Mbps|30"},
      {"VK5300", Highway + "select DhNodeLst 31\nselect DhSpeedLst 4800\n" + Dhcp,
       "00 01 1F 00 07 00 0B 00 08 00 00 00 00 00 00", "", "DH-485|31|Decimal|4800|Baud|Enabled|Auto Detect|30"},
      {"VK5300", Highway + "select DhNodeLst 31\nselect DhNetworkLst DH+\n" + Dhcp,
       "00 00 01 00 08 00 0B 00 08 00 00 00 00 00 00", "", "DH+|1|Octal|57.6|kBaud|Enabled|Auto Detect|30"},
      {"RBCard", "", "00 00 01 00 08 00 08 00 08 00 08 00 00 00 01", "", dh + "9600|None|8|1|BCC|Ignore|None"},
      {"RBCard", Card485 + "click DhpOpt\nselect HwyNodeLst 10\nselect HwySpeedLst 115.2",
       "00 00 08 00 09 00 08 00 08 00 08 00 00 00 01", "",
       "DH+ Parameters|10|Octal|115.2|kBaud|9600|None|8|1|BCC|Ignore|None"},
      {"RBCard", Card485, "00 01 01 00 09 00 08 00 08 00 08 00 00 00 01", "",
       "DH485 Parameters|1|Decimal|19.2|kBaud|9600|None|8|1|BCC|Ignore|None"},
      {"RBCard", Card485 + "select HwySpeedLst 9600\nselect HwyNodeLst 31",
       "00 01 1F 00 08 00 08 00 08 00 08 00 00 00 01", "",
       "DH485 Parameters|31|Decimal|9600|Baud|9600|None|8|1|BCC|Ignore|None"},
      {"RBCard", Df1 + "Df1SpeedLst 115200\nselect Df1ParityLst Odd\nselect Df1DataBitsLst 7",
       "00 00 01 00 08 00 0C 12 08 00 08 00 00 00 01", "", dh + "115200|Odd|7|1|BCC|Ignore|None"},
      {"RBCard", Df1 + "Df1SpeedLst 300\nselect Df1ParityLst Even\nselect Df1DupMsgLst Accept",
       "00 00 01 00 08 00 03 06 08 00 08 00 00 02 01", "", dh + "300|Even|8|1|BCC|Accept|None"},
      {"RBCard", Df1 + "Df1ParityLst Even\nselect Df1ParityLst None\nselect Df1StopBitsLst 2",
       "00 00 01 00 08 00 08 0C 08 00 08 00 00 00 01", "", dh + "9600|None|8|2|BCC|Ignore|None"},
      {"RBCard", Df1 + "Df1ErrorChkLst CRC\nselect Df1EmbeddedRespLst Execute",
       "00 00 01 00 08 00 08 00 08 00 08 00 00 05 01", "", dh + "9600|None|8|1|CRC|Ignore|Execute"}};
  for (const auto& row : rows) {
    GatewayDevice device(row.product);
    TemporaryFile file("highway.cfg");
    WizardUser user(row.product, &device);
    const std::string look = "\nsee " + (row.product == "VK5300" ? vk5300 : rbCard);
    EXPECT_EQ(user.Use(row.acts + "\nfinish DownOpt"), "reminder\nsuccess\n");
    EXPECT_EQ(ToHex(device.gateway.Image().substr(0, 2) + device.gateway.Image().substr(12, 15)), "04 99 " + row.image);
    EXPECT_EQ(row.block.empty() ? "" : ToHex(device.gateway.BlocksInForce().at(3)), row.block);
    user.app.globals.ClearRegisters();
    EXPECT_EQ(user.Use("again\nclick UploadCmd" + look), "reminder\n" + row.words);
    user.Use("finish SaveOpt " + file.Path());
    user.app.globals.ClearRegisters();
    EXPECT_EQ(user.Use("again\nopen " + file.Path() + look), row.words) << file.Content();
  }
}

TEST(Highway, TheVk5300RestartsBetweenItsHalves) {
  const struct {
    std::string option;
    Time restart;
    bool image;
  } rows[] = {
      {"DownOpt", 499ms, true}, {"DownOpt", 520ms, false}, {"DownSaveOpt", 0ms, true}, {"DownSaveOpt", 300ms, false}};
  for (const auto& row : rows) {
    GatewayDevice device("VK5300");
    device.gateway.restartTime = row.restart;
    TemporaryFile file("highway.cfg");
    WizardUser user("VK5300", &device);
    const std::string printed = user.Use(Dhcp + "finish " + row.option + " " + file.Path());
    EXPECT_TRUE(printed.ends_with(row.image ? "success\n" : "time-out\n")) << row.option << printed;
    EXPECT_EQ(user.Use("page"), row.image ? "closed" : "ApplyFrame");
    EXPECT_EQ(static_cast<int>(device.gateway.BlocksInForce().at(3)[13]), 1);  // the Ethernet half stays written
    EXPECT_EQ(static_cast<int>(device.gateway.Image()[14]), row.image ? 1 : 2);
  }
  GatewayDevice deaf("VK5300", {.deafBlock = 3});
  WizardUser user("VK5300", &deaf);
  EXPECT_EQ(user.Use(Dhcp + "finish DownOpt"), "reminder\ntime-out\n");
  EXPECT_EQ(user.driver.written.find("s"), std::string::npos);
  EXPECT_EQ(user.Use("click UploadCmd\nsee EthIPTxt DhNodeLst"), "reminder\ntime-out\n|2");
}

TEST(Highway, FilesAreTheirOwn) {
  TemporaryFile ethernet("vk5300.cfg"), card("card.cfg");
  WizardUser vk5300("VK5300"), rbCard("RBCard");
  vk5300.Use(Addresses + "finish SaveOpt " + ethernet.Path());
  rbCard.Use(Card485 + "finish SaveOpt " + card.Path());
  EXPECT_EQ(ethernet.Content(),
            Lines("\"" + ProgramVersion() +
                  "\"\n\"VK5300\"\n\"DHP-ABEthernet\"\n0\n1\n8\n\"192.168.1.2\"\n\"255.255.255.0\"\n\"\"\n4\n0\n30\n"));
  EXPECT_EQ(card.Content(), Lines("\"RBCard\"\n\"DF1-DHP-DH485\"\n1\n1\n9\n8\n0\n0\n"));
  // Once a file was opened, the options of the card change nothing.
  EXPECT_EQ(rbCard.Use("again\nopen " + card.Path() + "\nclick DhpOpt\nsee HwyParamsLbl HwySpeedLst"),
            "DH485 Parameters|19.2");
  EXPECT_EQ(rbCard.app.globals.RegisterLow[6], 1);
}

}  // namespace
}  // namespace vk32
