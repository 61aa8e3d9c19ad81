// What a gateway says of itself: its load does the whole exchange with the device.
#pragma once

#include <array>
#include <string>

#include "app/App.h"
#include "link/VKComSubs.h"
#include "shell/ShellFrame.h"

namespace vk32 {

class DeviceInfo : public Form {
 public:
  static constexpr const char* FormName = "DeviceInfo";

  explicit DeviceInfo(App& app);

  /// The VK-RTX's five firmware texts, decoded and not displayed.
  std::array<std::string, 5> FirmwareTexts;

 private:
  void Form_Load() override;
  void TimeOutTmr_Timer() { SetTimeOutFlag(app_, *this); }
  void CloseCmd_Click() { UnloadMe(); }

  bool ReadVKRTX(Conversation& conversation);
  bool ReadVK5300(Conversation& conversation);
  void DecodeVKRTX(const Bytes& record);
  void DecodeVK5300(const std::array<Bytes, 5>& pieces);
  void DecodeFirmwareTexts(const Bytes& record);
  void ShowIdentity(std::int32_t serial, std::int32_t hardware, std::int32_t revision);
  void ShowDistributor();

  App& app_;
  std::int16_t DistributorCode = 0;

  static constexpr Place Field(int top) { return {3000, top, 4290, 315}; }
  static constexpr Place Caption_(int top) { return {240, top, 2640, 315}; }

 public:
  // clang-format off
  ShellFrame  shell {*this, 6600};
  Timer       TimeOutTmr                {*this, "TimeOutTmr", 0, true, &DeviceInfo::TimeOutTmr_Timer};

  Label       DeviceInfoLbl             {*this, "DeviceInfoLbl",             {240, 1560, 7050, 315}, "Device Information", TextRole::Heading};
  Frame       DeviceInfoLineFrame       {*this, "DeviceInfoLineFrame",       {240, 1875, 7050,  15}, Fill::Hairline};
  Label       SerialLbl                 {*this, "SerialLbl",                 Caption_(1950), "Serial Number"};
  TextBox     SerialTxt                 {*this, "SerialTxt",                 Field   (1950)};
  Label       HardwareLbl               {*this, "HardwareLbl",               Caption_(2310), "Hardware Model"};
  TextBox     HardwareTxt               {*this, "HardwareTxt",               Field   (2310)};
  Label       DistributorLbl            {*this, "DistributorLbl",            Caption_(2670), "Distributor"};
  TextBox     DistributorTxt            {*this, "DistributorTxt",            Field   (2670)};

  Label       EthernetInfoLbl           {*this, "EthernetInfoLbl",           {240, 3120, 7050, 315}, "Ethernet Information", TextRole::Heading};
  Frame       EthernetInfoLineFrame     {*this, "EthernetInfoLineFrame",     {240, 3435, 7050,  15}, Fill::Hairline};
  Label       EMACLbl                   {*this, "EMACLbl",                   Caption_(3510), "EMAC Address"};
  TextBox     EMACTxt                   {*this, "EMACTxt",                   Field   (3510)};
  Label       IPAddrLbl                 {*this, "IPAddrLbl",                 Caption_(3870), "IP Address"};
  TextBox     IPAddrTxt                 {*this, "IPAddrTxt",                 Field   (3870)};
  Label       SubnetLbl                 {*this, "SubnetLbl",                 Caption_(4230), "Subnet Mask"};
  TextBox     SubnetTxt                 {*this, "SubnetTxt",                 Field   (4230)};
  Label       GatewayLbl                {*this, "GatewayLbl",                Caption_(4590), "Gateway"};
  TextBox     GatewayTxt                {*this, "GatewayTxt",                Field   (4590)};

  Label       FirmwareInfoLbl           {*this, "FirmwareInfoLbl",           {240, 5040, 7050, 315}, "Firmware Information", TextRole::Heading};
  Frame       FirmwareInfoLineFrame     {*this, "FirmwareInfoLineFrame",     {240, 5355, 7050,  15}, Fill::Hairline};
  Label       ProductModelLbl           {*this, "ProductModelLbl",           Caption_(5430), "Product Model"};
  TextBox     ProductModelTxt           {*this, "ProductModelTxt",           Field   (5430)};
  Label       ProductFirmwareVerLbl     {*this, "ProductFirmwareVerLbl",     Caption_(5790), "Firmware Version"};
  TextBox     ProductFirmwareVerTxt     {*this, "ProductFirmwareVerTxt",     Field   (5790)};
  Label       ProductFirmwareDateLbl    {*this, "ProductFirmwareDateLbl",    Caption_(6150), "Firmware Date"};
  TextBox     ProductFirmwareDateTxt    {*this, "ProductFirmwareDateTxt",    Field   (6150)};

  ImageButton CloseCmd                  {*this, "CloseCmd",                  {5865, 6825, 1425, 450}, &DeviceInfo::CloseCmd_Click, WindowKey::Escape};
  // clang-format on
};

}  // namespace vk32
