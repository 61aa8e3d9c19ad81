// The wizard of the VK-RTX: its pages, how they follow each other, and its blocks.
#include "models/vkrtx/Configuration_VKRTX.h"

#include <algorithm>

#include "core/ConfigMod.h"
#include "core/Convert.h"
#include "core/DoesNotFit.h"
#include "link/Frames.h"
#include "models/vkrtx/ParameterBlocks.h"
#include "shell/Subs.h"

namespace vk32 {
namespace {

constexpr int TimeOutInterval = 3000;  // ms

/// Of both models; see Pages.
enum Page {
  Ethernet = 2,
  SerialProtocolA = 3,
  SerialProtocolB = 4,
  EthernetProtocol = 5,
  Routing = 6,
  Clients = 7,
  Conversion = 8
};

}  // namespace

Configuration_VKRTX& VKRTXWizard(App& app) {
  if (auto* wizard = dynamic_cast<Configuration_VKRTX*>(app.forms.Find(Configuration_VKRTX::FormName))) return *wizard;
  throw RuntimeFault(RuntimeFault::InvalidCall);
}

Configuration_VKRTX::Configuration_VKRTX(App& app_) : WizardForm(app_, FormName, TimeOutInterval, 6300, 6660) {}

std::vector<WizardPage> Configuration_VKRTX::Pages() {
  // The other model's frames stay hidden with a page.
  std::vector<WizardPage> pages{
      {&OpenConfigLbl, {&ConfigFrame}},
      {&SerComSetLbl, {&ports.SerComFrame}},
      {&EthComSetLbl, {&ethernet.EthComFrame}},
      {&SerProtSetLbl, {&ports.SerProtoFrame[0]}},
      {&SerProtSetLbl, {&ports.SerProtoFrame[1]}},
      {&EthProtSetLbl, {&ports.EthProtoFrame}},
  };
  if (IsDf1Model()) {
    pages.push_back({&RoutingSetLbl, {&routing.RoutingFrame}, {&nodeIp.NodeIpFrame}});
    pages.push_back({&RoutingSetLbl, {&ascii.EIPClientSetupFrame}, {&mapping.AbModMappingFrame}});
    pages.push_back({&ConvSetLbl, {&ascii.ConversionFrame}});
  } else {
    pages.push_back({&RoutingSetLbl, {&nodeIp.NodeIpFrame}, {&routing.RoutingFrame}});
    pages.push_back({&ConvSetLbl, {&mapping.AbModMappingFrame}, {&ascii.EIPClientSetupFrame, &ascii.ConversionFrame}});
  }
  pages.push_back({&ApplySetLbl, {&ApplyFrame}});
  return pages;
}

void Configuration_VKRTX::Form_Load() {
  Begin(IsDf1Model() ? 9 : 8);
  ModelLbl.Caption = app.globals.CurrentModel;
  if (app.globals.ComPortText == "None") SaveOpt.Value = true;
  ports.SetDefaults();
  ethernet.SetDefaults();
  if (IsDf1Model()) {
    ports.SetUpDf1Model();
    routing.SetUpDf1Model();
    ascii.SetUpDf1Model();
  }
  if (IsModbusModel()) {
    ports.SetUpModbusModel();
    mapping.SetUpModbusModel();
    nodeIp.SetUpModbusModel();
  }
  ports.ShowChannelBFields();
}

void Configuration_VKRTX::Form_Unload() {
  WizardForm::Form_Unload();
  // Their tables go with the wizard.
  for (const char* editor : {"Route", "DelRoute", "ABModMapping"}) app.forms.Unload(editor);
}

/// The steps run on the current page one after the other, so that a page that is passed still does its own.
bool Configuration_VKRTX::LeavePage() {
  std::int16_t& page = app.globals.CurrentPage;
  if (page == Ethernet && app.globals.DHCPEnabled == 0 && !EthernetFieldsAreValid()) return false;
  if (page == SerialProtocolA && Passes(SerialProtocolB)) ++page;
  if (page == EthernetProtocol && IsModbusModel() && Passes(Routing)) ++page;
  if (page == Routing && IsDf1Model()) {
    if (!LeaveRouting()) return false;
    if (app.globals.EIPClients[0].IPAddress.empty()) ++page;
  } else if (page == Routing && IsModbusModel()) {
    if (!nodeIp.CheckNodeIpTable()) return false;
  }
  if (page == Clients && IsDf1Model()) {
    ascii.FindConversionChannels();
    if (app.globals.ConvNeeded == FlagTrue) {
      ascii.ArrangeConversionPage();
    } else {
      ++page;
    }
  }
  WithdrawUndo();
  return true;
}

bool Configuration_VKRTX::Passes(int page) const {
  if (page == SerialProtocolB) return !ports.ChannelBIsEnabled();
  if (IsModbusModel()) return page == Routing && ports.ChannelAIsMaster();
  if (!IsDf1Model()) return false;
  if (page == Clients) return ascii.ClientsOfRoutes().empty();
  return page == Conversion && !ascii.Converts(0) && !ascii.Converts(1);
}

void Configuration_VKRTX::CellsRestored() {
  routing.NumberRows();
  routing.AdjustRouteVScrollBar();
  mapping.table.NumberRows();
  mapping.table.AdjustAbModMapVScrollBar();
}

std::vector<Foretold> Configuration_VKRTX::Foretell() const {
  return IsDf1Model() ? ascii.Foretell() : std::vector<Foretold>();
}

void Configuration_VKRTX::WithdrawUndo() {
  for (UndoClearButton* undo : {&routing.UndoClrTableCmd, &nodeIp.UndoNodeIpClrTablCmd, &mapping.UndoClrMapTableCmd}) {
    undo->Withdraw();
  }
}

bool Configuration_VKRTX::LeaveRouting() {
  if (!TakeOver([this] { routing.ReadRouteRows(routing.CountRowsInUse()); })) return false;
  ascii.BuildEIPClientList();
  return true;
}

void Configuration_VKRTX::PassPagesBack() {
  WithdrawUndo();
  std::int16_t& page = app.globals.CurrentPage;
  if (page == SerialProtocolB && Passes(page)) --page;
  if (page == Routing && IsModbusModel() && Passes(page)) --page;
  if (IsDf1Model()) {
    if (page == Conversion && app.globals.ConvNeeded == FlagFalse) page = Clients;
    if (page == Clients && app.globals.EIPClients[0].IPAddress.empty()) page = Routing;
  }
}

Taken Configuration_VKRTX::Upload(Conversation& conversation) { return UploadBlocks(conversation, *this); }

bool Configuration_VKRTX::Download(Conversation& conversation) { return DownloadBlocks(conversation); }

void Configuration_VKRTX::CollectTextFields() {
  routing.CollectMessageTimeout();
  ethernet.CollectTextFields();
  ascii.CollectTextFields();
  if (IsModbusModel()) ports.CollectRequestTimeout();
}

void Configuration_VKRTX::BuildParameters(bool sent) {
  CollectTextFields();
  Globals& globals = app.globals;
  auto blocks = globals.BlockTable;
  BuildPortBlocks(globals, blocks);
  if (IsModbusModel()) BuildModbusModelBlocks(globals, blocks);
  if (IsDf1Model()) {
    BuildClientBlocks(globals, blocks);
    globals.RouteCount = static_cast<std::int16_t>(routing.CountRowsInUse());
    routing.ReadRouteRows(globals.RouteCount);
    BuildRouteBlocks(globals, blocks);
    FindConvNodes();
    BuildConversionBlock(globals, blocks);
  }
  // Only the maps can outgrow their block. A file holds them all the same.
  const bool tooLong = std::any_of(blocks.begin(), blocks.end(),
                                   [](const Bytes& block) { return block.size() > BlockFrame::LongestData; });
  if (!tooLong) {
    globals.BlockTable = std::move(blocks);
  } else if (sent) {
    throw DoesNotFit({MappingPageTitle, "Mapping Table", "AbModMapTableFrame"},
                     "A download takes 19 maps at most: delete one, or choose Save Configuration.");
  }
}

void Configuration_VKRTX::FindConvNodes() {
  const auto find = [this](std::int16_t port, std::int16_t& node) {
    for (int i = 1; i <= app.globals.RouteCount; ++i) {
      const RouteRecord& route = app.globals.Routes[i];
      if (route.SourceProtocol != ASCIIProtocol || route.SourcePort != port) continue;
      node = route.DestLow;
      return;
    }
  };
  if (app.globals.ConvChannelA == 1) find(ChannelAPort, app.globals.ConvNode[0]);
  if (app.globals.ConvChannelB == 1) find(ChannelBPort, app.globals.ConvNode[1]);
}

void Configuration_VKRTX::RemoveData(const Bytes& reply) {
  DecodeBlock(app.globals.BlockNumber, Mid(reply, 2), app.globals);
}

void Configuration_VKRTX::TakeSent(const SentParameters& sent) {
  const std::vector<std::int16_t>& list = app.globals.BlockList;
  for (std::size_t i = 1; i < list.size(); ++i) {
    Bytes data = sent.blocks[static_cast<std::size_t>(list[i])];
    data.resize(std::max<std::size_t>(data.size(), BlockFrame::ReadLength));
    DecodeBlock(list[i], data, app.globals, TablesAs::Written);
  }
  Parameter_Setup_VK();
}

void Configuration_VKRTX::Parameter_Setup_VK() {
  WithdrawUndo();
  ports.SetupSerial();
  ethernet.Setup();
  ports.SetupProtocols();
  if (IsDf1Model()) {
    ascii.SetupClients();
    routing.Setup();
    ascii.SetupConversion();
  }
  if (IsModbusModel()) {
    nodeIp.Setup();
    mapping.table.UpdateAbModMapTableFromData();
  }
}

}  // namespace vk32
