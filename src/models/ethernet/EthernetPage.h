// The page of the Ethernet port, for the wizards of the VK-RTX and the VK5300.
#pragma once

#include "core/Parameters.h"
#include "models/ethernet/EthernetBlock.h"
#include "models/lists/ChoiceList.h"
#include "models/wizard/WizardForm.h"

namespace vk32 {

class EthernetPage {
 public:
  /// `speeds`: the product's codes of the three speeds.
  EthernetPage(Form& form, Parameters& parameters, ChoiceTable speeds);

  void SetDefaults();
  /// Without DHCP the addresses are shown; with it the rows below close up.
  void ShowEthernetFields();
  /// Takes the text boxes into the parameters. DoesNotFit if the socket time-out is too large.
  void CollectTextFields();
  /// Shows the parameters.
  void Setup();

 private:
  Form& form_;
  Parameters& parameters_;
  const ChoiceTable speeds_;

 public:
  // clang-format off
  Frame      EthComFrame      {form_, "EthComFrame", PagePlace};
  Label      EthComTitleLbl   {EthComFrame, "EthComTitleLbl",   { 360,  240, 8280, 480}, EthernetPageTitle, TextRole::Title};
  Label      EthDHCPLbl       {EthComFrame, "EthDHCPLbl",       { 360, 1320, 1800, 315}, "DHCP"};
  ChoiceList EthDHCPLst       {EthComFrame, "EthDHCPLst",       {2280, 1320, 2160, 315}, parameters_.DHCPEnabled, {Otherwise("Enabled", 1), Code("Disabled", 0)}, "Disabled",
                               [this] { ShowEthernetFields(); }};
  Label      EthIPLbl         {EthComFrame, "EthIPLbl",         { 360, 2040, 1800, 315}, "IP Address"};
  TextBox    EthIPTxt         {EthComFrame, "EthIPTxt",         {2280, 2040, 2160, 315}};
  Label      EthSubLbl        {EthComFrame, "EthSubLbl",        { 360, 2400, 1800, 315}, "Subnet Mask"};
  TextBox    EthSubTxt        {EthComFrame, "EthSubTxt",        {2280, 2400, 2160, 315}};
  Label      EthGateLbl       {EthComFrame, "EthGateLbl",       { 360, 2760, 1800, 315}, "Default Gateway"};
  TextBox    EthGateTxt       {EthComFrame, "EthGateTxt",       {2280, 2760, 2160, 315}};
  Label      EthSpeedLbl      {EthComFrame, "EthSpeedLbl",      { 360, 3480, 1800, 315}, "Speed"};
  ChoiceList EthSpeedLst      {EthComFrame, "EthSpeedLst",      {2280, 3480, 2160, 315}, parameters_.EthernetSpeed, speeds_, "Auto Detect"};
  Label      SocketTimeOutLbl {EthComFrame, "SocketTimeOutLbl", { 360, 3840, 1800, 315}, "Socket Timeout"};
  TextBox    SocketTimeOutTxt {EthComFrame, "SocketTimeOutTxt", {2280, 3840, 1080, 315}};
  Label      SocketUnitsLbl   {EthComFrame, "SocketUnitsLbl",   {3480, 3840,  600, 315}, "s", TextRole::Muted};
  // clang-format on
};

}  // namespace vk32
