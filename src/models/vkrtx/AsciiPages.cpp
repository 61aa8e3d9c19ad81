// The EtherNet/IP clients and the protocol conversion of the VK-RTX.
#include "models/vkrtx/AsciiPages.h"

#include <vector>

#include "core/Convert.h"
#include "core/DoesNotFit.h"
#include "models/blocks/BlockFields.h"

namespace vk32 {
namespace {

constexpr int Clients = 2;
constexpr int OnlyPanelTop = 1080, SecondPanelTop = 4200;

}  // namespace

AsciiPages::AsciiPages(Form& form, App& app, const RoutingPage& routing) : form_(form), app_(app), routing_(routing) {
  for (int i = 0; i < Clients; ++i) {
    EIPClientSlotTxt[i].Text = "0";
    ASCIIPcccFncLst[i].ToolTip =
        "Typed Write  -  PLC-5, SLC 5/03 and newer, ControlLogix.  Prototected Typed Logical Write  -  MicroLogix, SLC "
        "5/02 and older.";
  }
  PutInTabOrder({&EIPClientIpAddrValLbl[0], &EIPClientRoutingChk[0], &EIPClientSlotTxt[0], &EIPClientIpAddrValLbl[1],
                 &EIPClientRoutingChk[1], &EIPClientSlotTxt[1]});
  PutInTabOrder({&ASCIIPcccFileTxt[0], &ASCIIPcccWordTxt[0], &ASCIIPcccTypeLst[0], &ASCIIPcccFncLst[0],
                 &ASCIIPcccFileTxt[1], &ASCIIPcccWordTxt[1], &ASCIIPcccTypeLst[1], &ASCIIPcccFncLst[1]});
}

void AsciiPages::SetUpDf1Model() {
  app_.globals.ConvNeeded = FlagFalse;
  for (int i = 0; i < Clients; ++i) {
    ASCIIPcccTypeLst[i].SelectDefault();
    ASCIIPcccFncLst[i].SelectDefault();
  }
}

std::vector<AsciiPages::Client> AsciiPages::ClientsOfRoutes() const {
  std::vector<Client> clients;
  for (int row = 1; row <= routing_.CountRowsInUse(); ++row) {
    const RouteRecord route = routing_.PortsOf(row);
    if (StartsOnAsciiChannel(route) && route.DestPort == EthernetPort) clients.push_back({{route.IPAddress}});
  }
  if (clients.size() > Clients) clients.resize(Clients);  // the page has no room for more
  for (Client& client : clients) KeepUserSettings(client);
  return clients;
}

void AsciiPages::BuildEIPClientList() {
  std::vector<Client> clients = ClientsOfRoutes();
  clients.resize(Clients);
  for (int i = 0; i < Clients; ++i) {
    const Client& client = clients[static_cast<std::size_t>(i)];
    app_.globals.EIPClients[i] = client.record;
    ShowClient(i, client);
  }
}

void AsciiPages::KeepUserSettings(Client& client) const {
  for (int block = 0; block < Clients; ++block) {
    if (EIPClientIpAddrValLbl[block].Caption.Value() != client.record.IPAddress) continue;
    client.record.Routing = static_cast<std::int16_t>(EIPClientRoutingChk[block].Value);
    client.slotText = EIPClientSlotTxt[block].Text;
    try {
      client.record.Slot = CInt(CDbl(client.slotText));
      client.slotText = Str(client.record.Slot);
    } catch (const RuntimeFault&) {
      // Not a number: Finish will say so, and what was typed stays to be mended.
    }
    return;
  }
}

void AsciiPages::ShowClient(int i, const Client& client) {
  const bool used = !client.record.IPAddress.empty();
  for (Control* control : std::initializer_list<Control*>{&EIPClientHeadLbl[i], &EIPClientIpAddrLbl[i],
                                                          &EIPClientIpAddrValLbl[i], &EIPClientRoutingChk[i]}) {
    control->Visible = used;
  }
  EIPClientIpAddrValLbl[i].Caption = client.record.IPAddress;
  EIPClientRoutingChk[i].Value = used ? client.record.Routing : 0;
  EIPClientSlotTxt[i].Text = used ? client.slotText : "0";
}

void AsciiPages::EIPClientRoutingChk_Click(int i) {
  const int checked = EIPClientRoutingChk[i].Value;
  EIPClientSlotLbl[i].Visible = checked == 1;
  EIPClientSlotTxt[i].Visible = checked == 1;
  app_.globals.EIPClients[i].Routing = static_cast<std::int16_t>(checked);
}

bool AsciiPages::Converts(int channel) const {
  for (int row = 1; row <= routing_.CountRowsInUse(); ++row) {
    const RouteRecord route = routing_.PortsOf(row);
    if (StartsOnAsciiChannel(route) && route.SourcePort == (channel == 0 ? ChannelAPort : ChannelBPort)) return true;
  }
  return false;
}

std::vector<Foretold> AsciiPages::Foretell() const {
  std::vector<Foretold> foretold;
  std::vector<Client> clients = ClientsOfRoutes();
  clients.resize(Clients);
  for (int i = 0; i < Clients; ++i) {
    const auto& [record, slotText] = clients[static_cast<std::size_t>(i)];
    const bool used = !record.IPAddress.empty(), routed = record.Routing == 1;
    foretold.push_back({&EIPClientIpAddrValLbl[i], used, record.IPAddress});
    foretold.push_back({&EIPClientRoutingChk[i], used, routed ? "Yes" : "No"});
    foretold.push_back({&EIPClientSlotTxt[i], used && routed, slotText});
    foretold.push_back({&ASCIIPcccConvFrame[i], Converts(i), {}});
  }
  return foretold;
}

void AsciiPages::FindConversionChannels() {
  Parameters& parameters = app_.globals;
  parameters.ConvChannelA = Converts(0) ? 1 : 0;
  parameters.ConvChannelB = Converts(1) ? 1 : 0;
  parameters.ConvNeeded = parameters.ConvChannelA == 1 || parameters.ConvChannelB == 1 ? FlagTrue : FlagFalse;
}

void AsciiPages::ArrangeConversionPage() {
  const bool a = app_.globals.ConvChannelA == 1, b = app_.globals.ConvChannelB == 1;
  ASCIIPcccConvFrame[0].Visible = a;
  ASCIIPcccConvFrame[1].Visible = b;
  ASCIIPcccConvFrame[1].Top = a ? SecondPanelTop : OnlyPanelTop;
}

void AsciiPages::CollectTextFields() {
  Parameters& parameters = app_.globals;
  for (int i = 0; i < Clients; ++i) {
    const std::string client = "client " + Str(i + 1), panel = ConversionPageTitle + OfChannel(i);
    const auto shownWithRoute = [&](const char* field, const TextBox& box) {
      return FieldPlace{panel, std::string(field) + " (shown with an ASCII route from the channel)", {box.Name(), i}};
    };
    parameters.EIPClients[i].IPAddress = EIPClientIpAddrValLbl[i].Caption;
    parameters.EIPClients[i].Slot = TextNumber(
        EIPClientSlotTxt[i].Text, CDbl,
        {ClientPageTitle, client + ", Controller Slot Number (shown with Routing Required)", {"EIPClientSlotTxt", i}},
        EnterByte);
    parameters.ConvFile[i] =
        TextNumber(ASCIIPcccFileTxt[i].Text, Val, shownWithRoute("File Number", ASCIIPcccFileTxt[i]), EnterWord);
    parameters.ConvElement[i] =
        TextNumber(ASCIIPcccWordTxt[i].Text, Val, shownWithRoute("Element Number", ASCIIPcccWordTxt[i]), EnterWord);
  }
}

void AsciiPages::SetupClients() {
  for (int i = 0; i < Clients; ++i) {
    const EIPClientRecord client = app_.globals.EIPClients[i];  // the box's handler writes to it
    if (client.IPAddress <= "0.0.0.0") continue;
    EIPClientIpAddrValLbl[i].Caption = client.IPAddress;
    EIPClientRoutingChk[i].Value = client.Routing == 1 ? 1 : 0;
    EIPClientSlotTxt[i].Text = client.Routing == 1 ? Str(client.Slot) : "0";
  }
}

void AsciiPages::SetupConversion() {
  const Parameters& parameters = app_.globals;
  for (int i = 0; i < Clients; ++i) {
    ASCIIPcccFileTxt[i].Text = Str(parameters.ConvFile[i]);
    ASCIIPcccWordTxt[i].Text = Str(parameters.ConvElement[i]);
    ASCIIPcccTypeLst[i].Decode();
    ASCIIPcccFncLst[i].Decode();
  }
}

}  // namespace vk32
