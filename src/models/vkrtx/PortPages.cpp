// The pages that set up the ports of the VK-RTX.
#include "models/vkrtx/PortPages.h"

#include "core/Convert.h"
#include "core/DoesNotFit.h"
#include "models/blocks/BlockFields.h"

namespace vk32 {

PortPages::PortPages(Form& form, Parameters& parameters) : form_(form), parameters_(parameters) { SetTabOrder(); }

void PortPages::SetTabOrder() {
  PutInTabOrder({&SerBaudLst[0], &SerDataLst[0], &SerStopLst[0], &SerParityLst[0], &SerHandLst, &EnableCHBLst,
                 &SerBaudLst[1], &SerDataLst[1], &SerStopLst[1], &SerParityLst[1]});
}

void PortPages::SetDefaults() {
  for (int i = 0; i <= 1; ++i) {
    for (ChoiceList* list : {&SerBaudLst[i], &SerDataLst[i], &SerStopLst[i], &SerParityLst[i]}) list->SelectDefault();
    parameters_.DF1Flags[i] = 0;
  }
  SerHandLst.SelectDefault();
  EnableCHBLst.SelectDefault();
  EthProtoLst.SelectDefault();
}

void PortPages::SetUpDf1Model() {
  for (int i = 0; i <= 1; ++i) {
    SerProtoLst[i].SetEntries({"DF1", "ASCII"});
    SerProtoLst[i].Text = "DF1";
    Df1ModeLst[i].SelectDefault();
    Df1ErrorLst[i].SelectDefault();
  }
}

void PortPages::SetUpModbusModel() {
  for (Control* control :
       std::initializer_list<Control*>{&EnableCHBLst, &EnableCHBLbl, &CHBSerSettingsLbl, &CHBLineFrame}) {
    control->Visible = false;
  }
  for (const auto& list : SerProtoLst) list->SetEntries({"Modbus"});
  SerProtoLst[0].Text = "Modbus";
  parameters_.SerialProtocol[1] = 0;  // of a channel that is never used: not what an earlier wizard left
  for (int i = 0; i <= 1; ++i) {
    ModbusProtocolLst[i].SelectDefault();
    ModbusModeLst[i].SelectDefault();
    ModbusTimeoutTxt[i].Text = "3000";
  }
}

void PortPages::ShowChannelBFields() {
  for (Control* control :
       std::initializer_list<Control*>{&SerBaudLbl[1], &SerBaudLst[1], &SerDataLbl[1], &SerDataLst[1], &SerStopLbl[1],
                                       &SerStopLst[1], &SerParityLbl[1], &SerParityLst[1]}) {
    control->Visible = EnableCHBLst.Text.Value() != "False";
  }
}

void PortPages::ShowProtocol(int i) {
  const std::string& protocol = SerProtoLst[i].Text;
  Df1ParamFrame[i].Visible = protocol == "DF1";
  ASCIIParamFrame[i].Visible = protocol == "ASCII";
  ModbusParamFrame[i].Visible = protocol == "Modbus";
}

void PortPages::ShowRequestTimeout(int i) {
  for (Control* control :
       std::initializer_list<Control*>{&ModbusTimeoutLbl[i], &ModbusTimeoutTxt[i], &ModbusTimeoutUnitsLbl[i]}) {
    control->Visible = ModbusModeLst[i].Text.Value() == "Master";
  }
}

void PortPages::CollectRequestTimeout() {
  parameters_.ModbusConfig[0].RequestTimeout =
      TextNumber(ModbusTimeoutTxt[0].Text, CDbl, RequestTimeoutPlace(), EnterWord);
}

void PortPages::SetupSerial() {
  // The Modbus model, which hides the list, never opens the channel; a device that says it is enabled is not changed.
  if (EnableCHBLst.Visible || parameters_.ChannelBEnabled != 1) EnableCHBLst.Decode();
  ShowChannelBFields();
  for (int i = 0; i <= 1; ++i) {
    for (ChoiceList* list : {&SerBaudLst[i], &SerDataLst[i], &SerStopLst[i], &SerParityLst[i]}) list->Decode();
  }
  SerHandLst.Decode();
}

void PortPages::SetupProtocols() {
  SetupProtocol(0);
  if (parameters_.ChannelBEnabled == 1) SetupProtocol(1);
  if (parameters_.EthernetProtocol == ABEthernetProtocol) {
    EthProtoLst.Decode();
    ABEthernetParamFrame.Visible = true;
  }
}

void PortPages::SetupProtocol(int i) {
  switch (parameters_.SerialProtocol[i]) {
    case DF1Protocol:
      SerProtoLst[i].Decode();
      Df1ParamFrame[i].Visible = true;
      ASCIIParamFrame[i].Visible = false;
      // A device in half duplex: the list can't show it, and the bit stays until the list is used.
      if ((parameters_.DF1Flags[i] & 1) != 0) Df1ModeLst[i].Text = "";
      Df1ModeLst[i].Decode();
      Df1ErrorLst[i].Decode();
      break;
    case ASCIIProtocol:
      SerProtoLst[i].Decode();
      ASCIIParamFrame[i].Visible = true;
      Df1ParamFrame[i].Visible = false;
      break;
    case ModbusProtocol:
      ModbusProtocolLst[i].Decode();
      ModbusModeLst[i].Decode();
      ModbusTimeoutTxt[i].Text = Str(parameters_.ModbusConfig[i].RequestTimeout);
      break;
    default: break;
  }
}

}  // namespace vk32
