// The wizards of the VK5300 and the RBCard: lists, image, block, transfer and file.
#include "models/WizardUser.h"

namespace vk32 {
namespace {

const std::string Addresses = "to EthComFrame\ntype EthIPTxt 192.168.1.2\ntype EthSubTxt 255.255.255.0\n",
                  Dh = "to DhComFrame\nselect DhN", Dh485 = Dh + "etworkLst DH-485\n",
                  Card485 = "to HwyComFrame\nclick Dh485Opt\n", Df1 = "to Df1ComFrame\nselect Df1";

TEST(Highway, ChoicesGoDownAndComeBack) {
  const std::string vk5300 =
                        "DhNetworkLst DhNodeLst DhNodeUnitLbl DhSpeedLst DhSpeedUnitLbl EthSpeedLst SocketTimeOutTxt",
                    rbCard =
                        "HwyNodeLst HwyNodeUnitLbl HwySpeedLst HwySpeedUnitLbl Df1SpeedLst Df1ParityLst "
                        "Df1DataBitsLst Df1StopBitsLst Df1ErrorChkLst Df1DupMsgLst Df1EmbeddedRespLst",
                    card = "9600|None|8|1|BCC|Ignore|None", dhPlus = "1|Octal|57.6|kBaud|";
  // The image from byte 13.
  const std::tuple<std::string, std::string, std::string, std::string, std::string> rows[] = {
      {"VK5300", Addresses, "00 01 00 08 00 0B 00 08 00 00 00 00 00 00", "DH+|" + dhPlus + "Auto Detect|30",
       "02 01 A8 C0 00 FF FF FF 00 00 00 00 04 00 1E 00 00 00 00 00 04"},
      {"VK5300",
       Dh + "odeLst 77\nselect DhSpeedLst 230.4\n" + Dhcp + "select EthSpeedLst 10 Mbps\ntype SocketTimeOutTxt 255",
       "00 3F 00 0A 00 0B 00 08 00 00 00 00 00 00", "DH+|77|Octal|230.4|kBaud|10 Mbps|255",
       "00 00 00 00 00 00 00 00 00 00 00 00 01 01 FF 00 00 00 00 00 04"},
      {"VK5300", Dh485 + "select DhNodeLst 31\nselect DhSpeedLst 4800\n" + Dhcp + "select EthSpeedLst 100 Mbps",
       "01 1F 00 07 00 0B 00 08 00 00 00 00 00 00", "DH-485|31|Decimal|4800|Baud|100 Mbps|30", ""},
      {"VK5300", Dh485 + "select DhNodeLst 31\n" + Dh + "etworkLst DH+\n" + Dhcp,
       "00 01 00 08 00 0B 00 08 00 00 00 00 00 00", "DH+|" + dhPlus + "Auto Detect|30", ""},
      {"RBCard", Card485 + "click DhpOpt", "00 01 00 08 00 08 00 08 00 08 00 00 00 01", dhPlus + card, ""},
      {"RBCard", Card485 + "click DhpOpt\nselect HwyNodeLst 77\nselect HwySpeedLst 115.2",
       "00 3F 00 09 00 08 00 08 00 08 00 00 00 01", "77|Octal|115.2|kBaud|" + card, ""},
      {"RBCard", Card485 + "select HwySpeedLst 9600\nselect HwyNodeLst 31", "01 1F 00 08 00 08 00 08 00 08 00 00 00 01",
       "31|Decimal|9600|Baud|" + card, ""},
      {"RBCard", Df1 + "SpeedLst 115200\nselect Df1ParityLst Odd\nselect Df1DataBitsLst 7\nselect Df1ErrorChkLst CRC",
       "00 01 00 08 00 0C 12 08 00 08 00 00 01 01", dhPlus + "115200|Odd|7|1|CRC|Ignore|None", ""},
      {"RBCard", Df1 + "ParityLst Even\nselect Df1ParityLst None\nselect Df1StopBitsLst 2\nselect Df1DupMsgLst Accept",
       "00 01 00 08 00 08 0C 08 00 08 00 00 02 01", dhPlus + "9600|None|8|2|BCC|Accept|None", ""},
      {"RBCard", Df1 + "SpeedLst 300\nselect Df1ParityLst Even\nselect Df1EmbeddedRespLst Execute",
       "00 01 00 08 00 03 06 08 00 08 00 00 04 01", dhPlus + "300|Even|8|1|BCC|Ignore|Execute", ""}};
  for (const auto& [kind, acts, image, words, block] : rows) {
    GatewayDevice device(kind);
    WizardUser user(kind, &device);
    const bool isCard = kind == "RBCard";
    const std::string look = "\nsee " + (isCard ? rbCard + "\nget DhpOpt.Value" : vk5300),
                      seen = words + (!isCard           ? ""
                                      : image[1] == '0' ? "value \"True\"\n"
                                                        : "value \"False\"\n");
    EXPECT_EQ(isCard ? user.Use("get DhpOpt.Value") : "", isCard ? "value \"True\"\n" : "");
    EXPECT_EQ(user.Use(acts + "\nfinish DownOpt"), "reminder\nsuccess\n");
    EXPECT_EQ(ToHex(device.gateway.Image().substr(0, 2) + device.gateway.Image().substr(13, 14)), "04 99 " + image);
    EXPECT_EQ(block.empty() ? "" : ToHex(device.gateway.BlocksInForce().at(3)), block);
    user.app.globals.ClearRegisters();
    EXPECT_EQ(user.Use("again\nclick UploadCmd" + look), "reminder\n" + seen);
    EXPECT_EQ(user.driver.written.ends_with("sTEE\x06"), !isCard);  // its halves, parted by a restart
    user.Use("finish SaveOpt");
    user.app.globals.ClearRegisters();
    EXPECT_EQ(user.Use("again\nopen" + look), seen) << user.file.Content();
  }
}

TEST(Highway, TheVk5300RestartsBetweenItsHalves) {
  for (const auto& [restart, gone] : {std::pair(0ms, false), {500ms, false}, {520ms, true}}) {
    GatewayDevice device("VK5300");
    device.gateway.restartTime = restart;
    WizardUser user("VK5300", &device);
    EXPECT_EQ(user.Use(Dhcp + "finish DownOpt\npage"),
              gone ? "reminder\ntime-out\nApplyFrame" : "reminder\nsuccess\nclosed");
    EXPECT_EQ(static_cast<int>(device.gateway.BlocksInForce().at(3)[13]), 1);  // the Ethernet half stays written
    EXPECT_EQ(static_cast<int>(device.gateway.Image()[14]), gone ? 2 : 1);
  }
  GatewayDevice deaf("VK5300", {.deafBlock = 3});
  WizardUser user("VK5300", &deaf);
  EXPECT_EQ(user.Use(Dhcp + "finish DownOpt"), "reminder\ntime-out\n");
  EXPECT_EQ(user.driver.written.find("s"), std::string::npos);
  EXPECT_EQ(user.Use("click UploadCmd\nsee EthIPTxt DhNodeLst"), "reminder\ntime-out\n|2");
}

TEST(Highway, FilesAreTheirOwn) {
  WizardUser vk5300("VK5300"), rbCard("RBCard");
  EXPECT_EQ(vk5300.Use(Dh485 + Addresses + "see EthDHCPLst\nfinish SaveOpt"), "Disabled");
  EXPECT_EQ(vk5300.app.globals.FileVersionText, ProgramVersion());
  rbCard.Use(Card485 + "finish SaveOpt");
  EXPECT_EQ(vk5300.file.Content(),
            Lines("\"" + ProgramVersion() +
                  "\"\n\"VK5300\"\n\"DHP-ABEthernet\"\n1\n1\n9\n\"192.168.1.2\"\n\"255.255.255.0\"\n\"\"\n4\n0\n30\n"));
  EXPECT_EQ(rbCard.file.Content(), Lines("\"RBCard\"\n\"DF1-DHP-DH485\"\n1\n1\n9\n8\n0\n0\n"));
  // Once a file was opened, the options of the card change nothing.
  EXPECT_EQ(rbCard.Use("again\nopen\nclick DhpOpt\nsee HwyParamsLbl HwySpeedLst"), "DH485 Parameters|19.2");
  EXPECT_EQ(rbCard.app.globals.RegisterLow[6], 1);
}

}  // namespace
}  // namespace vk32
