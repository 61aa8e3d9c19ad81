// The wizard of the RB3000: Modbus gateway, as a slave with a mapping table or as a master.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "models/serial/SerialWizard.h"

namespace vk32 {

class Configuration_RB3000 : public SerialWizard {
 public:
  static constexpr const char* FormName = "Configuration_RB3000";

  explicit Configuration_RB3000(App& app);

  void Parameter_Setup_RB() override;
  std::string ModelTag() const override { return "Modbus"; }

 private:
  void Form_Load() override;
  std::vector<WizardPage> Pages() override;
  bool LeavePage() override;
  bool Passes(int page) const override;
  std::span<const FixedByte> FixedBytes() const override;

  void ModDeviceTypeLst_Click();
  void PLCTypeLst_Click();
  void BroadcastLst_Click();
  void NXYYZOpt_Click() { SetDecoding(0); }
  void NXYZZOpt_Click() { SetDecoding(1); }
  void NYXZZOpt_Click() { SetDecoding(2); }

  bool IsMaster() const { return ModDeviceTypeLst.Text.Value() == "Master"; }

  Parameters& image = app.globals;

 public:
  // clang-format off
  // Side menu
  Label        ModbusParamsLbl  {*this, "ModbusParamsLbl", {240, 1980, 3480, 315}, "Modbus Parameters", TextRole::Heading};
  Label        ModProtoSetLbl   {*this, "ModProtoSetLbl",  {240, 2340, 3480, 315}, "Protocol Settings", TextRole::Step};
  Label        ModAddrMapLbl    {*this, "ModAddrMapLbl",   {240, 2700, 3480, 315}, "Address Mapping", TextRole::Step};

  // Modbus Settings
  Frame        ModSettingsFrame {*this, "ModSettingsFrame", PagePlace};
  Label        Label4           {ModSettingsFrame, "Label4",           { 360,  240, 8280, 480}, "Modbus Settings", TextRole::Title};
  Label        Label1           {ModSettingsFrame, "Label1",           { 360,  780, 8280, 810},
                                 "The following settings are used to determine the type of Allan-Bradley processor messages will be sent to and "
                                 "f broadcast messages are to be sent to the Allan-Bradley network."};
  Label        ModDeviceTypeLbl {ModSettingsFrame, "ModDeviceTypeLbl", { 360, 1680, 2640, 315}, "Modbus Device Type"};
  RegisterList ModDeviceTypeLst {ModSettingsFrame, "ModDeviceTypeLst", {3120, 1680, 1680, 315}, image, SerialImage::ModbusFlags, SerialImage::DeviceType(), "Slave",
                                 &Configuration_RB3000::ModDeviceTypeLst_Click};

  // ... of a slave
  Frame        ModSlaveFrame      {ModSettingsFrame, "ModSlaveFrame", {360, 1800, 8280, 4020}};
  Label        PLCTypeLbl         {ModSlaveFrame, "PLCTypeLbl",         {   0,  240, 2640, 315}, "Allen Bradley PLC Type"};
  RegisterList PLCTypeLst         {ModSlaveFrame, "PLCTypeLst",         {2760,  240, 3360, 315}, image, SerialImage::PlcType, SerialImage::PlcTypes(), "PLC-5",
                                   &Configuration_RB3000::PLCTypeLst_Click};
  Label        BroadcastLbl       {ModSlaveFrame, "BroadcastLbl",       {   0,  600, 2640, 315}, "Broadcast Messages"};
  RegisterList BroadcastLst       {ModSlaveFrame, "BroadcastLst",       {2760,  600, 1680, 315}, image, SerialImage::ModbusFlags, SerialImage::Broadcast(), "No",
                                   &Configuration_RB3000::BroadcastLst_Click};
  Label        BroadStartLbl      {ModSlaveFrame, "BroadStartLbl",      {   0, 1320, 2640, 315}, "Start Address"};
  RegisterList BroadStartLst      {ModSlaveFrame, "BroadStartLst",      {2760, 1320, 1680, 315}, image, SerialImage::BroadcastStart, SerialImage::BroadcastAddresses(), "0"};
  Label        BroadStartUnitsLbl {ModSlaveFrame, "BroadStartUnitsLbl", {4560, 1320,  900, 315}, "Octal", TextRole::Muted};
  Label        BroadEndLbl        {ModSlaveFrame, "BroadEndLbl",        {   0, 1680, 2640, 315}, "End Address"};
  RegisterList BroadEndLst        {ModSlaveFrame, "BroadEndLst",        {2760, 1680, 1680, 315}, image, SerialImage::BroadcastEnd, SerialImage::BroadcastAddresses(), "0"};
  Label        BroadSEndUnitsLbl  {ModSlaveFrame, "BroadSEndUnitsLbl",  {4560, 1680,  900, 315}, "Octal", TextRole::Muted};

  // ... of a master
  Frame        ModMasterFrame   {ModSettingsFrame, "ModMasterFrame", {360, 1800, 8280, 4020}};
  Label        ModMasterDDTALbl {ModMasterFrame, "ModMasterDDTALbl", {0,  240, 6000, 315}, "Destination Data Table Address Decoding", TextRole::HeadingLink,
                                 &Configuration_RB3000::ExplainDecoding};
  OptionButton NXYYZOpt         {ModMasterFrame, "NXYYZOpt",         {0,  600, 6000, 315}, "SLC/PLC - NXYY:Z",    true,  &Configuration_RB3000::NXYYZOpt_Click};
  OptionButton NXYZZOpt         {ModMasterFrame, "NXYZZOpt",         {0,  960, 6000, 315}, "SLC/PLC - NXYZ:Z",    false, &Configuration_RB3000::NXYZZOpt_Click};
  OptionButton NYXZZOpt         {ModMasterFrame, "NYXZZOpt",         {0, 1320, 6000, 315}, "Micrologix - NYXZ:Z", false, &Configuration_RB3000::NYXZZOpt_Click};
  // clang-format on
};

}  // namespace vk32
