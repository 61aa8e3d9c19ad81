// The page of the Ethernet port.
#include "models/ethernet/EthernetPage.h"

#include <tuple>

#include "core/Convert.h"
#include "core/DoesNotFit.h"
#include "core/RecordFile.h"

namespace vk32 {

EthernetPage::EthernetPage(Form& form, Parameters& parameters, ChoiceTable speeds)
    : form_(form), parameters_(parameters), speeds_(std::move(speeds)) {}

void EthernetPage::SetDefaults() {
  EthDHCPLst.SelectDefault();
  EthSpeedLst.SelectDefault();
  SocketTimeOutTxt.Text = "30";
}

void EthernetPage::ShowEthernetFields() {
  const bool dhcp = EthDHCPLst.Text.Value() == "Enabled";
  for (Control* control :
       std::initializer_list<Control*>{&EthIPLbl, &EthIPTxt, &EthSubLbl, &EthSubTxt, &EthGateLbl, &EthGateTxt}) {
    control->Visible = !dhcp;
  }
  for (Control* control : std::initializer_list<Control*>{&EthSpeedLbl, &EthSpeedLst}) {
    control->Top = dhcp ? 2040 : 3480;
  }
  for (Control* control : std::initializer_list<Control*>{&SocketTimeOutLbl, &SocketTimeOutTxt, &SocketUnitsLbl}) {
    control->Top = dhcp ? 2400 : 3840;
  }
}

void EthernetPage::CollectTextFields() {
  parameters_.SocketTimeout =
      TextNumber(SocketTimeOutTxt.Text, Val, {EthernetPageTitle, "Socket Timeout", "SocketTimeOutTxt"}, EnterByte);
  for (const auto& [box, label, text] : {std::tuple(&EthIPTxt, &EthIPLbl, &parameters_.EthernetIP),
                                         std::tuple(&EthSubTxt, &EthSubLbl, &parameters_.EthernetSubnet),
                                         std::tuple(&EthGateTxt, &EthGateLbl, &parameters_.EthernetGateway)}) {
    if (!RecordFile::CanHold(box->Text.Value())) {
      throw DoesNotFit({EthernetPageTitle, label->Words(), box->Name()}, "Enter an address, without quotes.");
    }
    *text = box->Text;
  }
}

void EthernetPage::Setup() {
  EthIPTxt.Text = parameters_.EthernetIP;
  EthSubTxt.Text = parameters_.EthernetSubnet;
  EthGateTxt.Text = parameters_.EthernetGateway;
  EthSpeedLst.Decode();
  EthDHCPLst.Decode();
  SocketTimeOutTxt.Text = Str(parameters_.SocketTimeout);
}

}  // namespace vk32
