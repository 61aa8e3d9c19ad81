// The wizard of the RB2000: serial gateway between DF1 on channel A and Modbus on channel B.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "models/serial/SerialWizard.h"

namespace vk32 {

class Configuration_RB2000 : public SerialWizard {
 public:
  static constexpr const char* FormName = "Configuration_RB2000";

  explicit Configuration_RB2000(App& app);

  void Parameter_Setup_RB() override;
  std::string ModelTag() const override { return "QRV"; }

 private:
  void Form_Load() override;
  std::vector<WizardPage> Pages() override;
  bool LeavePage() override;
  bool Passes(int page) const override;
  std::span<const FixedByte> FixedBytes() const override;

  void ChbModDeviceTypeLst_Click();
  void ChbModSlavePlcTypeLst_Click();
  void ChbModSlaveBroadcastEnableLst_Click();
  void ChbModSlaveSpecificAddrChk_Click();
  void ChbModMasterNXYYZOpt_Click() { SetDecoding(0); }
  void ChbModMasterNXYZZOpt_Click() { SetDecoding(1); }
  void ChbModMasterNYXZZOpt_Click() { SetDecoding(2); }

  /// All but the specific address, which follows its check box; in the order of their defaults and of their decoding.
  std::vector<RegisterList*> Lists();
  bool IsMaster() const { return ChbModDeviceTypeLst.Text.Value() == "Master"; }

  Parameters& image = app.globals;

 public:
  // clang-format off
  // Side menu
  Label        ModelParamsLbl {*this, "ModelParamsLbl", {240, 1980, 3480, 315}, "Configurable Parameters", TextRole::Heading};
  Label        SerialSetLbl   {*this, "SerialSetLbl",   {240, 2340, 3480, 315}, "Serial Settings", TextRole::Step};
  Label        ProtoSetLbl    {*this, "ProtoSetLbl",    {240, 2700, 3480, 315}, "Protocol Settings", TextRole::Step};
  Label        ModAddrMapLbl  {*this, "ModAddrMapLbl",  {240, 3060, 3480, 315}, "Address Mapping", TextRole::Step};

  // Serial Settings: a column for each channel
  Frame        SerialSettingsFrame   {*this, "SerialSettingsFrame", PagePlace};
  Label        SerialTitleLbl        {SerialSettingsFrame, "SerialTitleLbl",       { 360,  240, 8280, 480}, "Serial Settings", TextRole::Title};

  Label        ChaSerialSettingsLbl  {SerialSettingsFrame, "ChaSerialSettingsLbl", { 360, 1200, 3600, 315}, "CHA - DF1 Serial Settings", TextRole::Heading};
  Frame        ChaSerialLineFrame    {SerialSettingsFrame, "ChaSerialLineFrame",   { 360, 1560, 3600,  15}, Fill::Hairline};
  Label        ChaSpeedLbl           {SerialSettingsFrame, "ChaSpeedLbl",          { 360, 1680, 1800, 315}, "Speed"};
  RegisterList ChaSpeedLst           {SerialSettingsFrame, "ChaSpeedLst",          {2280, 1680, 1680, 315}, image, SerialImage::SpeedA,     SerialImage::Speed(),       "9600"};
  Label        ChaParityLbl          {SerialSettingsFrame, "ChaParityLbl",         { 360, 2040, 1800, 315}, "Parity"};
  RegisterList ChaParityLst          {SerialSettingsFrame, "ChaParityLst",         {2280, 2040, 1680, 315}, image, SerialImage::LineFlagsA, SerialImage::Parity(),      "None"};
  Label        ChaDataBitsLbl        {SerialSettingsFrame, "ChaDataBitsLbl",       { 360, 2400, 1800, 315}, "Data Bits"};
  RegisterList ChaDataBitsLst        {SerialSettingsFrame, "ChaDataBitsLst",       {2280, 2400, 1680, 315}, image, SerialImage::LineFlagsA, LineChoices::DataBits(),    "8"};
  Label        ChaStopBitsLbl        {SerialSettingsFrame, "ChaStopBitsLbl",       { 360, 2760, 1800, 315}, "Stop Bits"};
  RegisterList ChaStopBitsLst        {SerialSettingsFrame, "ChaStopBitsLst",       {2280, 2760, 1680, 315}, image, SerialImage::LineFlagsA, LineChoices::StopBits(),    "1"};
  Label        ChaHandshakingLbl     {SerialSettingsFrame, "ChaHandshakingLbl",    { 360, 3120, 1800, 315}, "Handshaking"};
  RegisterList ChaHandshakingLst     {SerialSettingsFrame, "ChaHandshakingLst",    {2280, 3120, 1680, 315}, image, SerialImage::LineFlagsA, SerialImage::Handshaking(), "None"};
  Label        ChaConnectionLbl      {SerialSettingsFrame, "ChaConnectionLbl",     { 360, 3480, 1800, 315}, "Connection"};
  RegisterList ChaConnectionLst      {SerialSettingsFrame, "ChaConnectionLst",     {2280, 3480, 1680, 315}, image, SerialImage::LineFlagsA, SerialImage::Connection(),  "RS-232"};

  Label        ChbSerialSettingsLbl  {SerialSettingsFrame, "ChbSerialSettingsLbl", {4680, 1200, 3600, 315}, "CHB - Modbus Serial Settings", TextRole::Heading};
  Frame        ChbSerialLineFrame    {SerialSettingsFrame, "ChbSerialLineFrame",   {4680, 1560, 3600,  15}, Fill::Hairline};
  Label        ChbSpeedLbl           {SerialSettingsFrame, "ChbSpeedLbl",          {4680, 1680, 1800, 315}, "Speed"};
  RegisterList ChbSpeedLst           {SerialSettingsFrame, "ChbSpeedLst",          {6600, 1680, 1680, 315}, image, SerialImage::SpeedB,     SerialImage::Speed(),       "9600"};
  Label        ChbParityLbl          {SerialSettingsFrame, "ChbParityLbl",         {4680, 2040, 1800, 315}, "Parity"};
  RegisterList ChbParityLst          {SerialSettingsFrame, "ChbParityLst",         {6600, 2040, 1680, 315}, image, SerialImage::LineFlagsB, SerialImage::Parity(),      "None"};
  Label        ChbDataBitsLbl        {SerialSettingsFrame, "ChbDataBitsLbl",       {4680, 2400, 1800, 315}, "Data Bits"};
  RegisterList ChbDataBitsLst        {SerialSettingsFrame, "ChbDataBitsLst",       {6600, 2400, 1680, 315}, image, SerialImage::LineFlagsB, LineChoices::DataBits(),    "8"};
  Label        ChbStopBitsLbl        {SerialSettingsFrame, "ChbStopBitsLbl",       {4680, 2760, 1800, 315}, "Stop Bits"};
  RegisterList ChbStopBitsLst        {SerialSettingsFrame, "ChbStopBitsLst",       {6600, 2760, 1680, 315}, image, SerialImage::LineFlagsB, LineChoices::StopBits(),    "1"};
  Label        ChbHandshakingLbl     {SerialSettingsFrame, "ChbHandshakingLbl",    {4680, 3120, 1800, 315}, "Handshaking"};
  RegisterList ChbHandshakingLst     {SerialSettingsFrame, "ChbHandshakingLst",    {6600, 3120, 1680, 315}, image, SerialImage::LineFlagsB, SerialImage::Handshaking(), "None"};
  Label        ChbConnectionLbl      {SerialSettingsFrame, "ChbConnectionLbl",     {4680, 3480, 1800, 315}, "Connection"};
  RegisterList ChbConnectionLst      {SerialSettingsFrame, "ChbConnectionLst",     {6600, 3480, 1680, 315}, image, SerialImage::LineFlagsB, SerialImage::Connection(),  "RS-232"};

  // Protocol Settings
  Frame        ProtocolSettingsFrame  {*this, "ProtocolSettingsFrame", PagePlace};
  Label        ProtoTitleLbl          {ProtocolSettingsFrame, "ProtoTitleLbl",          { 360,  240, 8280, 480}, "Protocol Settings", TextRole::Title};
  Label        ChaProtocolSettingsLbl {ProtocolSettingsFrame, "ChaProtocolSettingsLbl", { 360, 1200, 8280, 315}, "CHA - DF1 Protocol Settings", TextRole::Heading};
  Frame        ChaProtocolLineFrame   {ProtocolSettingsFrame, "ChaProtocolLineFrame",   { 360, 1560, 6120,  15}, Fill::Hairline};
  Label        ChaDf1StationAddrLbl   {ProtocolSettingsFrame, "ChaDf1StationAddrLbl",   { 360, 1680, 2640, 315}, "Station Address"};
  RegisterList ChaDf1StationAddrLst   {ProtocolSettingsFrame, "ChaDf1StationAddrLst",   {3120, 1680, 1680, 315}, image, SerialImage::StationAddress, Numbers(0, 255), "1"};
  Label        ChaDf1ErrorModeLbl     {ProtocolSettingsFrame, "ChaDf1ErrorModeLbl",     { 360, 2040, 2640, 315}, "Error Checking"};
  RegisterList ChaDf1ErrorModeLst     {ProtocolSettingsFrame, "ChaDf1ErrorModeLst",     {3120, 2040, 1680, 315}, image, SerialImage::Df1Flags, LineChoices::ErrorChecking(), "BCC"};
  Label        ChbProtocolSettingsLbl {ProtocolSettingsFrame, "ChbProtocolSettingsLbl", { 360, 2520, 8280, 315}, "CHB - Modbus Protocol Settings", TextRole::Heading};
  Frame        ChbProtocolLineFrame   {ProtocolSettingsFrame, "ChbProtocolLineFrame",   { 360, 2880, 6120,  15}, Fill::Hairline};
  Label        ChbModDeviceTypeLbl    {ProtocolSettingsFrame, "ChbModDeviceTypeLbl",    { 360, 3000, 2640, 315}, "Modbus Device Type"};
  RegisterList ChbModDeviceTypeLst    {ProtocolSettingsFrame, "ChbModDeviceTypeLst",    {3120, 3000, 1680, 315}, image, SerialImage::ModbusFlags, SerialImage::DeviceType(), "Slave",
                                       &Configuration_RB2000::ChbModDeviceTypeLst_Click};
  Label        ChbModProtocolLbl      {ProtocolSettingsFrame, "ChbModProtocolLbl",      { 360, 3360, 2640, 315}, "Modbus Protocol"};
  RegisterList ChbModProtocolLst      {ProtocolSettingsFrame, "ChbModProtocolLst",      {3120, 3360, 1680, 315}, image, SerialImage::ModbusFlags, SerialImage::Protocol(), "RTU"};

  // ... of a slave
  Frame        ModSlaveFrame                    {ProtocolSettingsFrame, "ModSlaveFrame", {360, 3480, 8280, 4020}};
  Label        ChbModSlavePlcTypeLbl            {ModSlaveFrame, "ChbModSlavePlcTypeLbl",            {   0,  240, 2640, 315}, "Allen Bradley PLC Type"};
  RegisterList ChbModSlavePlcTypeLst            {ModSlaveFrame, "ChbModSlavePlcTypeLst",            {2760,  240, 3360, 315}, image, SerialImage::PlcType, SerialImage::PlcTypes(), "PLC-5",
                                                 &Configuration_RB2000::ChbModSlavePlcTypeLst_Click};
  Label        ChbModSlaveBroadcastEnableLbl    {ModSlaveFrame, "ChbModSlaveBroadcastEnableLbl",    {   0,  600, 2640, 315}, "Broadcast Messages"};
  RegisterList ChbModSlaveBroadcastEnableLst    {ModSlaveFrame, "ChbModSlaveBroadcastEnableLst",    {2760,  600, 1680, 315}, image, SerialImage::ModbusFlags, SerialImage::Broadcast(), "No",
                                                 &Configuration_RB2000::ChbModSlaveBroadcastEnableLst_Click};
  Label        ChbModSlaveBroadcastStartLbl     {ModSlaveFrame, "ChbModSlaveBroadcastStartLbl",     {   0, 1320, 2640, 315}, "Start Address"};
  RegisterList ChbModSlaveBroadcastStartLst     {ModSlaveFrame, "ChbModSlaveBroadcastStartLst",     {2760, 1320, 1680, 315}, image, SerialImage::BroadcastStart, SerialImage::BroadcastAddresses(), "0"};
  Label        ChbModSlaveBroadcastStartUnitLbl {ModSlaveFrame, "ChbModSlaveBroadcastStartUnitLbl", {4560, 1320,  900, 315}, "Octal", TextRole::Muted};
  Label        ChbModSlaveBroadcastEndLbl       {ModSlaveFrame, "ChbModSlaveBroadcastEndLbl",       {   0, 1680, 2640, 315}, "End Address"};
  RegisterList ChbModSlaveBroadcastEndLst       {ModSlaveFrame, "ChbModSlaveBroadcastEndLst",       {2760, 1680, 1680, 315}, image, SerialImage::BroadcastEnd, SerialImage::BroadcastAddresses(), "0"};
  Label        ChbModSlaveBroadcastEndUnitLbl   {ModSlaveFrame, "ChbModSlaveBroadcastEndUnitLbl",   {4560, 1680,  900, 315}, "Octal", TextRole::Muted};
  CheckBox     ChbModSlaveSpecificAddrChk       {ModSlaveFrame, "ChbModSlaveSpecificAddrChk",       {   0, 2280, 2640, 555}, "Respond to Specific Address",
                                                 &Configuration_RB2000::ChbModSlaveSpecificAddrChk_Click};
  RegisterList ChbModSlaveSpecificAddrLst       {ModSlaveFrame, "ChbModSlaveSpecificAddrLst",       {2760, 2400, 1680, 315}, image, SerialImage::SpecificAddress, SerialImage::SpecificAddresses(), "1"};

  // ... of a master
  Frame        ModMasterFrame       {ProtocolSettingsFrame, "ModMasterFrame", {360, 3480, 8280, 4020}};
  Label        ChbModMasterDDTALbl  {ModMasterFrame, "ChbModMasterDDTALbl",  {0,  240, 6000, 315}, "Destination Data Table Address Decoding", TextRole::HeadingLink,
                                     &Configuration_RB2000::ExplainDecoding};
  OptionButton ChbModMasterNXYYZOpt {ModMasterFrame, "ChbModMasterNXYYZOpt", {0,  600, 6000, 315}, "SLC/PLC - NXYY:Z", true,  &Configuration_RB2000::ChbModMasterNXYYZOpt_Click};
  OptionButton ChbModMasterNXYZZOpt {ModMasterFrame, "ChbModMasterNXYZZOpt", {0,  960, 6000, 315}, "SLC/PLC - NXYZ:Z", false, &Configuration_RB2000::ChbModMasterNXYZZOpt_Click};
  OptionButton ChbModMasterNYXZZOpt {ModMasterFrame, "ChbModMasterNYXZZOpt", {0, 1320, 6000, 315}, "Micrologix - NYXZ:Z", false, &Configuration_RB2000::ChbModMasterNYXZZOpt_Click};
  // clang-format on
};

}  // namespace vk32
