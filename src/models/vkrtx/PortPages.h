// The pages that set up the ports of the VK-RTX: serial lines, serial protocols, Ethernet protocol.
#pragma once

#include "core/DoesNotFit.h"
#include "core/Parameters.h"
#include "forms/ControlArray.h"
#include "models/lists/ChoiceList.h"
#include "models/wizard/WizardForm.h"

namespace vk32 {

/// Page and field, for the user.
inline FieldPlace RequestTimeoutPlace() {
  return {"Serial Protocol Settings", "Request Timeout (shown with Modbus Mode Master)", {"ModbusTimeoutTxt", 0}};
}

/// Elements 0 of all arrays are Channel A's, elements 1 Channel B's.
class PortPages {
 public:
  PortPages(Form& form, Parameters& parameters);

  /// Defaults of both models. Channel B can't be reached on the Modbus model.
  void SetDefaults();
  void SetUpDf1Model();
  void SetUpModbusModel();
  /// Shows the column of Channel B while the channel is enabled.
  void ShowChannelBFields();
  bool ChannelBIsEnabled() const { return EnableCHBLst.Text.Value() == "True"; }
  bool ChannelAIsMaster() const { return ModbusModeLst[0].Text.Value() == "Master"; }
  /// Takes Channel A's request time-out into the parameters. DoesNotFit if it is no 16-bit number.
  void CollectRequestTimeout();

  // The parameters, onto the pages.
  void SetupSerial();
  void SetupProtocols();

 private:
  void ShowProtocol(int i);
  void ShowRequestTimeout(int i);
  void SetupProtocol(int i);
  void SetTabOrder();

  // Channel B begins with its Enabled list: its other rows stand one row lower.
  static int ColumnLeft(int i) { return i == 0 ? 360 : 4680; }
  static int RowTop(int i, int row) { return 1680 + 360 * (row + i); }

  static ChoiceTable BaudRates() {
    return {Code("2400", 2400),   Code("9600", 9600),   Code("19200", 19200),
            Code("38400", 38400), Code("57600", 57600), Code("115200", 115200)};
  }
  static ChoiceTable Parities() { return {Code("None", 2), Code("Even", 0), Code("Odd", 1)}; }
  static ChoiceTable Protocols() { return {Code("DF1", 0), Code("ASCII", 3), Code("Modbus", 1)}; }

  ControlArray<Label> ColumnLabels(const char* name, int row, const char* caption) {
    return {name, 0, 1, [=, this](ControlName element, int i) {
              return std::make_unique<Label>(SerComFrame, element, Place{ColumnLeft(i), RowTop(i, row), 1800, 315},
                                             caption);
            }};
  }
  template <class Field>
  ControlArray<ChoiceList> ColumnLists(const char* name, int row, Field SerialRecord::*field,
                                       const ChoiceTable& choices, const char* defaultText) {
    return {name, 0, 1, [=, this](ControlName element, int i) {
              return std::make_unique<ChoiceList>(SerComFrame, element,
                                                  Place{ColumnLeft(i) + 1920, RowTop(i, row), 1680, 315},
                                                  parameters_.SerialConfig[i].*field, choices, defaultText);
            }};
  }
  /// A control of each channel's frame, or panel.
  template <class T, class... Rest>
  ControlArray<T> PerChannel(const char* name, const ControlArray<Frame>& frames, Place place, Rest... rest) {
    return {name, 0, 1, [=, &frames](ControlName element, int i) {
              return std::make_unique<T>(frames[i], element, place, rest...);
            }};
  }
  template <class NumberOf>
  ControlArray<ChoiceList> ChannelLists(const char* name, const ControlArray<Frame>& frames, Place place,
                                        NumberOf numberOf, const ChoiceTable& choices, const char* defaultText,
                                        void (PortPages::*then)(int) = nullptr) {
    return {name, 0, 1, [=, this, &frames](ControlName element, int i) {
              return std::make_unique<ChoiceList>(frames[i], element, place, numberOf(i), choices, defaultText,
                                                  then ? Handler([this, then, i] { (this->*then)(i); }) : Handler());
            }};
  }
  ControlArray<Frame> Panels(const char* name) {
    return PerChannel<Frame>(name, SerProtoFrame, {360, 2160, 8280, 5160});
  }

  Form& form_;
  Parameters& parameters_;

 public:
  // clang-format off
  // Serial Communication Settings
  Frame                    SerComFrame       {form_, "SerComFrame", PagePlace};
  Label                    SerComTitleLbl    {SerComFrame, "SerComTitleLbl",    { 360,  240, 8280, 480}, "Serial Communication Settings", TextRole::Title};
  Label                    CHASerSettingsLbl {SerComFrame, "CHASerSettingsLbl", { 360, 1200, 3600, 315}, "Channel A", TextRole::Heading};
  Frame                    CHALineFrame      {SerComFrame, "CHALineFrame",      { 360, 1560, 3600,  15}, Fill::Hairline};
  Label                    CHBSerSettingsLbl {SerComFrame, "CHBSerSettingsLbl", {4680, 1200, 3600, 315}, "Channel B", TextRole::Heading};
  Frame                    CHBLineFrame      {SerComFrame, "CHBLineFrame",      {4680, 1560, 3600,  15}, Fill::Hairline};
  Label                    EnableCHBLbl      {SerComFrame, "EnableCHBLbl",      {4680, 1680, 1800, 315}, "Enabled"};
  ChoiceList               EnableCHBLst      {SerComFrame, "EnableCHBLst",      {6600, 1680, 1680, 315}, parameters_.ChannelBEnabled, {Otherwise("False", 0), Code("True", 1)}, "False",
                                              [this] { ShowChannelBFields(); }};
  ControlArray<Label>      SerBaudLbl   = ColumnLabels("SerBaudLbl",   0, "Baud Rate");
  ControlArray<ChoiceList> SerBaudLst   = ColumnLists ("SerBaudLst",   0, &SerialRecord::Baud, BaudRates(), "9600");
  ControlArray<Label>      SerDataLbl   = ColumnLabels("SerDataLbl",   1, "Data Bits");
  ControlArray<ChoiceList> SerDataLst   = ColumnLists ("SerDataLst",   1, &SerialRecord::DataBits, Numbers(7, 8), "8");
  ControlArray<Label>      SerStopLbl   = ColumnLabels("SerStopLbl",   2, "Stop Bits");
  ControlArray<ChoiceList> SerStopLst   = ColumnLists ("SerStopLst",   2, &SerialRecord::StopBits, Numbers(1, 2), "1");
  ControlArray<Label>      SerParityLbl = ColumnLabels("SerParityLbl", 3, "Parity");
  ControlArray<ChoiceList> SerParityLst = ColumnLists ("SerParityLst", 3, &SerialRecord::Parity, Parities(), "None");
  Label                    SerHandLbl        {SerComFrame, "SerHandLbl",        { 360, 3120, 1800, 315}, "Handshaking"};
  ChoiceList               SerHandLst        {SerComFrame, "SerHandLst",        {2280, 3120, 1680, 315}, parameters_.SerialConfig[0].Handshake, {Otherwise("Yes", 1), Code("No", 0)}, "No"};

  // Serial Protocol Settings
  ControlArray<Frame>      SerProtoFrame {"SerProtoFrame", 0, 1, [this](ControlName element, int) { return std::make_unique<Frame>(form_, element, PagePlace); }};
  ControlArray<Label>      SerProtoTitleLbl     = PerChannel<Label>("SerProtoTitleLbl", SerProtoFrame, {360,  240, 8280, 480}, "Serial Protocol Settings", TextRole::Title);
  Label                    CHAProtoSettingsLbl  {SerProtoFrame[0], "CHAProtoSettingsLbl", {360, 1200, 8280, 315}, "Channel A", TextRole::Heading};
  Label                    CHBProtoSettingsLbl  {SerProtoFrame[1], "CHBProtoSettingsLbl", {360, 1200, 8280, 315}, "Channel B", TextRole::Heading};
  ControlArray<Frame>      SerProtoLineFrame    = PerChannel<Frame>("SerProtoLineFrame", SerProtoFrame, {360, 1560, 6120, 15}, Fill::Hairline);
  ControlArray<Label>      SerProtoLbl          = PerChannel<Label>("SerProtoLbl", SerProtoFrame, { 360, 1680, 2640, 315}, "Protocol");
  ControlArray<ChoiceList> SerProtoLst          = ChannelLists("SerProtoLst", SerProtoFrame, {3120, 1680, 1680, 315}, [this](int i) -> NumberRef { return parameters_.SerialProtocol[i]; },
                                                               Protocols(), "", &PortPages::ShowProtocol);
  // ... of DF1
  ControlArray<Frame>      Df1ParamFrame        = Panels("Df1ParamFrame");
  ControlArray<Label>      Df1TitleLbl          = PerChannel<Label>("Df1TitleLbl",     Df1ParamFrame, {0,   0, 6120, 315}, "DF1 Settings", TextRole::Heading);
  ControlArray<Frame>      Df1LineFrame         = PerChannel<Frame>("Df1LineFrame",    Df1ParamFrame, {0, 360, 6120,  15}, Fill::Hairline);
  ControlArray<Label>      Df1ModeLbl           = PerChannel<Label>("Df1ModeLbl",      Df1ParamFrame, {0, 480, 2640, 315}, "Communication Mode");
  ControlArray<ChoiceList> Df1ModeLst           = ChannelLists("Df1ModeLst", Df1ParamFrame, {2760, 480, 1680, 315}, [this](int i) -> NumberRef { return parameters_.DF1Flags[i]; },
                                                               {{"Full Duplex", 1, 0, 1}}, "Full Duplex");
  ControlArray<Label>      Df1ErrorLbl          = PerChannel<Label>("Df1ErrorLbl",     Df1ParamFrame, {0, 840, 2640, 315}, "Error Checking");
  ControlArray<ChoiceList> Df1ErrorLst          = ChannelLists("Df1ErrorLst", Df1ParamFrame, {2760, 840, 1680, 315}, [this](int i) -> NumberRef { return parameters_.DF1Flags[i]; },
                                                               {{"BCC", 2, 0, 2}, {"CRC", 2, 2, 2}}, "BCC");
  // ... of ASCII
  ControlArray<Frame>      ASCIIParamFrame      = Panels("ASCIIParamFrame");
  ControlArray<Label>      ASCIITitleLbl        = PerChannel<Label>("ASCIITitleLbl",   ASCIIParamFrame, {0,   0, 6120, 315}, "ASCII Settings", TextRole::Heading);
  ControlArray<Frame>      ASCIILineFrame       = PerChannel<Frame>("ASCIILineFrame",  ASCIIParamFrame, {0, 360, 6120,  15}, Fill::Hairline);
  ControlArray<Label>      ASCIINoneLbl         = PerChannel<Label>("ASCIINoneLbl",    ASCIIParamFrame, {0, 480, 6120, 315}, "Currently No Configuration Needed");
  // ... of Modbus
  ControlArray<Frame>      ModbusParamFrame     = Panels("ModbusParamFrame");
  ControlArray<Label>      ModbusTitleLbl       = PerChannel<Label>("ModbusTitleLbl",  ModbusParamFrame, {0,   0, 6120, 315}, "Modbus Settings", TextRole::Heading);
  ControlArray<Frame>      ModbusLineFrame      = PerChannel<Frame>("ModbusLineFrame", ModbusParamFrame, {0, 360, 6120,  15}, Fill::Hairline);
  ControlArray<Label>      ModbusProtocolLbl    = PerChannel<Label>("ModbusProtocolLbl", ModbusParamFrame, {0, 480, 2640, 315}, "Modbus Protocol");
  ControlArray<ChoiceList> ModbusProtocolLst    = ChannelLists("ModbusProtocolLst", ModbusParamFrame, {2760, 480, 1680, 315}, [this](int i) -> NumberRef { return parameters_.ModbusConfig[i].Protocol; },
                                                               {Code("RTU", 1), Otherwise("ASCII", 2)}, "RTU");
  ControlArray<Label>      ModbusModeLbl        = PerChannel<Label>("ModbusModeLbl",   ModbusParamFrame, {0, 840, 2640, 315}, "Modbus Mode");
  ControlArray<ChoiceList> ModbusModeLst        = ChannelLists("ModbusModeLst", ModbusParamFrame, {2760, 840, 1680, 315}, [this](int i) -> NumberRef { return parameters_.ModbusConfig[i].Mode; },
                                                               {Otherwise("Slave", 1), Code("Master", 0)}, "Slave", &PortPages::ShowRequestTimeout);
  ControlArray<Label>      ModbusTimeoutLbl      = PerChannel<Label>  ("ModbusTimeoutLbl",      ModbusParamFrame, {   0, 1200, 2640, 315}, "Request Timeout");
  ControlArray<TextBox>    ModbusTimeoutTxt      = PerChannel<TextBox>("ModbusTimeoutTxt",      ModbusParamFrame, {2760, 1200, 1080, 315});
  ControlArray<Label>      ModbusTimeoutUnitsLbl = PerChannel<Label>  ("ModbusTimeoutUnitsLbl", ModbusParamFrame, {3960, 1200,  600, 315}, "ms", TextRole::Muted);

  // Ethernet Protocol Settings
  Frame                    EthProtoFrame        {form_, "EthProtoFrame", PagePlace};
  Label                    EthProtoTitleLbl     {EthProtoFrame, "EthProtoTitleLbl", { 360,  240, 8280, 480}, "Ethernet Protocol Settings", TextRole::Title};
  Label                    EthProtoLbl          {EthProtoFrame, "EthProtoLbl",      { 360, 1320, 1800, 315}, "Protocol"};
  ChoiceList               EthProtoLst          {EthProtoFrame, "EthProtoLst",      {2280, 1320, 1680, 315}, parameters_.EthernetProtocol, {Code("AB Ethernet", 4)}, "AB Ethernet"};
  Frame                    ABEthernetParamFrame {EthProtoFrame, "ABEthernetParamFrame", {360, 1800, 8280, 5520}};
  Label                    ABEthernetTitleLbl   {ABEthernetParamFrame, "ABEthernetTitleLbl", {0,   0, 6120, 315}, "AB Ethernet Settings", TextRole::Heading};
  Frame                    ABEthernetLineFrame  {ABEthernetParamFrame, "ABEthernetLineFrame", {0, 360, 6120, 15}, Fill::Hairline};
  Label                    ABEthernetNoneLbl    {ABEthernetParamFrame, "ABEthernetNoneLbl",  {0, 480, 6120, 315}, "Currently No Configuration Needed"};
  // clang-format on
};

}  // namespace vk32
