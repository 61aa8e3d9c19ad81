// The wizard of the VK-RTX in both its models.
#pragma once

#include <string>
#include <vector>

#include "models/ethernet/EthernetPage.h"
#include "models/vkrtx/AsciiPages.h"
#include "models/vkrtx/MappingPage.h"
#include "models/vkrtx/NodeIpPage.h"
#include "models/vkrtx/PortPages.h"
#include "models/vkrtx/RoutingPage.h"
#include "models/wizard/WizardForm.h"

namespace vk32 {

class Configuration_VKRTX : public WizardForm {
 public:
  static constexpr const char* FormName = "Configuration_VKRTX";

  explicit Configuration_VKRTX(App& app);

  void RemoveData(const Bytes& reply) override;
  void Parameter_Setup_VK() override;
  void TakeSent(const SentParameters& sent) override;
  std::string ModelTag() const override { return app.globals.CurrentModel; }

 private:
  void Form_Load() override;
  void Form_Unload() override;
  std::vector<WizardPage> Pages() override;
  bool LeavePage() override;
  void PassPagesBack() override;
  bool Passes(int page) const override;
  std::vector<Foretold> Foretell() const override;
  void CellsRestored() override;
  Taken Upload(Conversation& conversation) override;
  void BuildParameters(bool sent) override;
  bool Download(Conversation& conversation) override;
  void Record(RecordFile& file, std::string& product, std::string& modelTag) override;

  // What differs between the models is decided by these two; a third one has neither branch.
  bool IsDf1Model() const { return app.globals.CurrentModel == "AB Ethernet, ASCII, DF1"; }
  bool IsModbusModel() const { return app.globals.CurrentModel == "AB Ethernet, Modbus"; }

  bool LeaveRouting();
  /// The tables that were cleared on their pages can't be brought back any more.
  void WithdrawUndo();
  void CollectTextFields();
  void FindConvNodes();

  void RecordSerial(RecordFile& file, int channel);
  void RecordEthernet(RecordFile& file);
  void RecordModbusModel(RecordFile& file);
  void RecordDf1Model(RecordFile& file);

 public:
  // clang-format off
  // Side menu
  Label        CommParamsLbl       {*this, "CommParamsLbl",       {240, 1980, 3480, 315}, "Communication Parameters", TextRole::Heading};
  Label        SerComSetLbl        {*this, "SerComSetLbl",        {240, 2340, 3480, 315}, "Serial Settings", TextRole::Step};
  Label        EthComSetLbl        {*this, "EthComSetLbl",        {240, 2700, 3480, 315}, "Ethernet Settings", TextRole::Step};
  Label        ProtoParamsLbl      {*this, "ProtoParamsLbl",      {240, 3240, 3480, 315}, "Protocol Parameters", TextRole::Heading};
  Label        SerProtSetLbl       {*this, "SerProtSetLbl",       {240, 3600, 3480, 315}, "Serial Protocol Settings", TextRole::Step};
  Label        EthProtSetLbl       {*this, "EthProtSetLbl",       {240, 3960, 3480, 315}, "Ethernet Protocol Settings", TextRole::Step};
  Label        RoutingParamsLbl    {*this, "RoutingParamsLbl",    {240, 4500, 3480, 315}, "Routing Parameters", TextRole::Heading};
  Label        RoutingSetLbl       {*this, "RoutingSetLbl",       {240, 4860, 3480, 315}, "Routing Table Setup", TextRole::Step};
  Label        ConversionParamsLbl {*this, "ConversionParamsLbl", {240, 5400, 3480, 315}, "Conversion Parameters", TextRole::Heading};
  Label        ConvSetLbl          {*this, "ConvSetLbl",          {240, 5760, 3480, 315}, "Protocol Conversion Settings", TextRole::Step};

  // Pages
  PortPages    ports    {*this, app.globals};
  EthernetPage ethernet {*this, app.globals, {Code("Auto Detect", 0), Code("10 Mbps", 10), Code("100 Mbps", 100)}};
  RoutingPage  routing  {*this, app};
  NodeIpPage   nodeIp   {*this, app};
  AsciiPages   ascii    {*this, app, routing};
  MappingPage  mapping  {*this, app};
  // clang-format on
};

/// The loaded wizard, for the editors of its routing table. Fault 5 if there is none.
Configuration_VKRTX& VKRTXWizard(App& app);

}  // namespace vk32
