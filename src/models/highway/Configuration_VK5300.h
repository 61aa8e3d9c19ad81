// The wizard of the VK5300: a Data Highway half that goes in an image, and an Ethernet half that goes in block 3.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "models/ethernet/EthernetPage.h"
#include "models/highway/HighwayImage.h"
#include "models/registers/ImageWizard.h"

namespace vk32 {

class Configuration_VK5300 : public ImageWizard {
 public:
  static constexpr const char* FormName = "Configuration_VK5300";

  explicit Configuration_VK5300(App& app);

  void RemoveData(const Bytes& reply) override;
  void Parameter_Setup_VK() override;
  void TakeSent(const SentParameters& sent) override;
  void Parameter_Setup_RB() override;
  std::string ModelTag() const override { return "DHP-ABEthernet"; }

 private:
  void Form_Load() override;
  std::vector<WizardPage> Pages() override;
  bool LeavePage() override;
  Taken Upload(Conversation& conversation) override;
  void BuildParameters(bool sent) override;
  bool Download(Conversation& conversation) override;
  std::span<const FixedByte> FixedBytes() const override;
  int RegisterCount() const override { return HighwayImage::Registers; }
  void Record(RecordFile& file, std::string& product, std::string& modelTag) override;

  void DhNetworkLst_Click();
  /// Lets events run for the time, in ms. The timer is left enabled with that interval.
  void WaitMilliseconds(Conversation& conversation, int time);

  Parameters& image = app.globals;

 public:
  // clang-format off
  // Side menu
  Label        CommParamsLbl  {*this, "CommParamsLbl", {240, 1980, 3480, 315}, "Communication Parameters", TextRole::Heading};
  Label        DhComSetLbl    {*this, "DhComSetLbl",   {240, 2340, 3480, 315}, "Data Highway Settings", TextRole::Step};
  Label        EthComSetLbl   {*this, "EthComSetLbl",  {240, 2700, 3480, 315}, "Ethernet Settings", TextRole::Step};

  // Data Highway Communication Settings
  Frame        DhComFrame     {*this, "DhComFrame", PagePlace};
  Label        DhComTitleLbl  {DhComFrame, "DhComTitleLbl",  { 360,  240, 8280, 480}, "Data Highway Communication Settings", TextRole::Title};
  Label        DhNetworkLbl   {DhComFrame, "DhNetworkLbl",   { 360, 1320, 1800, 315}, "Network Type"};
  ComboBox     DhNetworkLst   {DhComFrame, "DhNetworkLst",   {2280, 1320, 1680, 315}, {"DH+", "DH-485"}, &Configuration_VK5300::DhNetworkLst_Click};
  Label        DhNodeLbl      {DhComFrame, "DhNodeLbl",      { 360, 1680, 1800, 315}, "Node Address"};
  RegisterList DhNodeLst      {DhComFrame, "DhNodeLst",      {2280, 1680, 1680, 315}, image, HighwayImage::Node, HighwayImage::DhPlusNodes(), "1"};
  Label        DhNodeUnitLbl  {DhComFrame, "DhNodeUnitLbl",  {4080, 1680,  900, 315}, "", TextRole::Muted};
  Label        DhSpeedLbl     {DhComFrame, "DhSpeedLbl",     { 360, 2040, 1800, 315}, "Network Speed"};
  RegisterList DhSpeedLst     {DhComFrame, "DhSpeedLst",     {2280, 2040, 1680, 315}, image, HighwayImage::Speed, HighwayImage::DhPlusSpeeds(), "57.6"};
  Label        DhSpeedUnitLbl {DhComFrame, "DhSpeedUnitLbl", {4080, 2040,  900, 315}, "", TextRole::Muted};

  EthernetPage ethernet       {*this, app.globals, {Code("Auto Detect", 4), Code("10 Mbps", 1), Code("100 Mbps", 3)}};
  // clang-format on
};

}  // namespace vk32
