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
  PutInTabOrder({&EIPClientRoutingChk[0], &EIPClientSlotTxt[0], &EIPClientRoutingChk[1], &EIPClientSlotTxt[1]});
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

void AsciiPages::BuildEIPClientList() {
  Parameters& parameters = app_.globals;
  std::vector<Client> clients;
  for (int i = 1; i <= routing_.CountRowsInUse(); ++i) {
    const RouteRecord& route = parameters.Routes[i];
    if (StartsOnAsciiChannel(route) && route.DestPort == EthernetPort) clients.push_back({{route.IPAddress}});
  }
  clients.resize(Clients);  // the page has no room for more
  for (Client& client : clients) KeepUserSettings(client);
  for (int i = 0; i < Clients; ++i) {
    const Client& client = clients[static_cast<std::size_t>(i)];
    parameters.EIPClients[i] = client.record;
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
  for (Control* control :
       std::initializer_list<Control*>{&EIPClientIpAddrLbl[i], &EIPClientIpAddrValLbl[i], &EIPClientRoutingChk[i]}) {
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

void AsciiPages::FindConversionChannels() {
  Parameters& parameters = app_.globals;
  for (int i = 1; i <= routing_.CountRowsInUse(); ++i) {
    const RouteRecord& route = parameters.Routes[i];
    if (!StartsOnAsciiChannel(route)) continue;
    (route.SourcePort == ChannelAPort ? parameters.ConvChannelA : parameters.ConvChannelB) = 1;
  }
  parameters.ConvNeeded = parameters.ConvChannelA == 1 || parameters.ConvChannelB == 1 ? FlagTrue : FlagFalse;
}

void AsciiPages::ArrangeConversionPage() {
  const bool a = app_.globals.ConvChannelA == 1, b = app_.globals.ConvChannelB == 1;
  ASCIIPcccConvFrame[0].Visible = a;
  ASCIIPcccConvFrame[0].Top = OnlyPanelTop;
  ASCIIPcccConvFrame[1].Visible = b;
  ASCIIPcccConvFrame[1].Top = a ? SecondPanelTop : OnlyPanelTop;
}

void AsciiPages::CollectTextFields() {
  Parameters& parameters = app_.globals;
  for (int i = 0; i < Clients; ++i) {
    const std::string client = std::string(ClientPageTitle) + ", client " + Str(i + 1);
    const std::string panel = std::string(ConversionPageTitle) + OfChannel(i);
    parameters.EIPClients[i].IPAddress = EIPClientIpAddrValLbl[i].Caption;
    parameters.EIPClients[i].Slot = TextNumber(
        EIPClientSlotTxt[i].Text, CDbl, client + ", Controller Slot Number (shown with Routing Required)", EnterByte);
    parameters.ConvFile[i] = TextNumber(
        ASCIIPcccFileTxt[i].Text, Val, panel + ", File Number (shown with an ASCII route from the channel)", EnterWord);
    parameters.ConvElement[i] =
        TextNumber(ASCIIPcccWordTxt[i].Text, Val,
                   panel + ", Element Number (shown with an ASCII route from the channel)", EnterWord);
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
