// Block 3 of the VK-RTX and the VK5300.
#include "models/ethernet/EthernetBlock.h"

namespace vk32 {
namespace {

constexpr int Size = 21;

}  // namespace

BlockFields EthernetFields(Parameters& p) {
  const auto field = [](const char* name, const char* control) { return FieldPlace{EthernetPageTitle, name, control}; };
  // A gateway that DHCP hides is sent all the same.
  const char* const gateway = p.DHCPEnabled == 0 ? "Default Gateway" : "Default Gateway (shown with DHCP Disabled)";
  return {
      {0, Format::AddressReversed, &p.EthernetIP, field("IP Address", "EthIPTxt")},
      {4, Format::AddressReversed, &p.EthernetSubnet, field("Subnet Mask", "EthSubTxt")},
      {8, Format::AddressReversed, &p.EthernetGateway, field(gateway, "EthGateTxt")},
      {12, Format::Code, p.EthernetSpeed, field("Speed", "EthSpeedLst")},
      {13, Format::Code, p.DHCPEnabled, field("DHCP", "EthDHCPLst")},
      {14, Format::Byte, p.SocketTimeout, field("Socket Timeout", "SocketTimeOutTxt")},
      {20, Format::Code, p.EthernetProtocol, {"Ethernet Protocol Settings", "Protocol", "EthProtoLst"}},
  };
}

Bytes MakeEthernetBlock(Parameters sent) {
  const std::string none = "0.0.0.0";
  if (sent.DHCPEnabled != 0) sent.EthernetIP = sent.EthernetSubnet = none;
  if (sent.EthernetGateway.empty()) sent.EthernetGateway = none;
  return MakeBlock(Size, EthernetFields(sent));
}

}  // namespace vk32
