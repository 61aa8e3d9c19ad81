// The routing table of the VK-RTX.
#include "models/vkrtx/RoutingPage.h"

#include <algorithm>

#include "core/Convert.h"
#include "core/DoesNotFit.h"
#include "models/blocks/BlockFields.h"

namespace vk32 {
namespace {

constexpr struct Port {
  const char* text;
  std::int16_t code;
} Ports[] = {{ChannelAText, ChannelAPort}, {ChannelBText, ChannelBPort}, {EthernetText, EthernetPort}};

/// A code that is no port leaves the label.
void ShowPort(Label& label, int code) {
  for (const Port& port : Ports) {
    if (port.code == code) label.Caption = port.text;
  }
}

std::int16_t ProtocolOf(const Port& port, const Parameters& parameters) {
  if (port.code == EthernetPort) return parameters.EthernetProtocol;
  return parameters.SerialProtocol[port.code == ChannelAPort ? 0 : 1];
}

}  // namespace

RoutingPage::RoutingPage(Form& form, App& app) : form_(form), app_(app) {
  PutInOrder();
  for (int row = 1; row <= Rows; ++row) {
    RouteIPAddressLbl[row].SpokenName = "IP Address";  // its column has no head
  }
}

void RoutingPage::SetUpDf1Model() {
  ClearTable();
  MsgTimeOutTxt.Text = "10000";
}

bool RoutingPage::Refused(bool refuse, const char* message) {
  if (refuse) app_.forms.MsgBox(message, MessageIcon::Critical);
  return refuse;
}

void RoutingPage::AddRouteCmd_Click() {
  if (Refused(CountRowsInUse() == Rows, "There is no more slot available in the Routing Table.")) return;
  OpenEditor(0);
}

void RoutingPage::EditRouteCmd_Click() {
  if (Refused(CountRowsInUse() == 0, "There is no entries in the Routing Table to edit.")) return;
  if (RoutesTableFrame.Row > 0) return EditRow(RoutesTableFrame.Row);
  OpenEditor(1);
}

Form& RoutingPage::OpenEditor(std::int16_t mode) {
  // An editor that is open keeps its mode, and what was typed into it.
  if (!app_.forms.Find("Route")) app_.globals.RouteFormMode = mode;
  return app_.forms.Show("Route");
}

void RoutingPage::EditRow(int row) {
  const bool isOpen = app_.forms.Find("Route") != nullptr;
  Form& editor = OpenEditor(1);
  if (!isOpen) editor.Get<ComboBox>("SlotLst").Text = Str(row);
}

void RoutingPage::DeleteRow(int row) { app_.forms.Show("DelRoute").Get<ComboBox>("SlotLst").Text = Str(row); }

void RoutingPage::DelRouteCmd_Click() {
  if (Refused(CountRowsInUse() == 0, "There is no entries in the Routing Table to delete.")) return;
  if (RoutesTableFrame.Row > 0) return DeleteRow(RoutesTableFrame.Row);
  app_.forms.Show("DelRoute");
}

void RoutingPage::ClrTableCmd_Click() {
  const auto restore = [this, rows = KeepRows(RouteVScroll), inUse = RouteInUse] {
    RouteInUse = inUse;
    rows();
  };
  ClearTable();
  UndoClrTableCmd.Offer(restore);
}

void RoutingPage::ClearTable() {
  for (int row = 1; row <= Rows; ++row) EmptyRow(row);
  AdjustRouteVScrollBar();
}

FieldPlace RoutingPage::RowPlace(int row, const char* field, const Label& cell) {
  return {RoutingPageTitle, "slot " + Str(row) + ", " + field, {cell.Name(), row}};
}

void RoutingPage::ReadRouteRows(int count) {
  for (int i = 1; i <= count; ++i) {
    RouteRecord route = PortsOf(i);
    route.DestLow = TextNumber(RouteDstLowLbl[i].Caption, Val, RowPlace(i, "Low", RouteDstLowLbl[i]), EnterByte);
    route.DestHigh = TextNumber(RouteDstHighLbl[i].Caption, Val, RowPlace(i, "High", RouteDstHighLbl[i]), EnterByte);
    Route(i) = route;
  }
}

RouteRecord RoutingPage::PortsOf(int row) const {
  RouteRecord route = app_.globals.Routes[row];
  const std::string& destination = RouteDestinationPortLbl[row].Caption;
  ReadPort(RouteSrcPortLbl[row].Caption, route.SourcePort, route.SourceProtocol);
  ReadPort(destination, route.DestPort, route.DestProtocol);
  // A channel that speaks ASCII reaches the Ethernet port as an EtherNet/IP client.
  if (destination == EthernetText && StartsOnAsciiChannel(route)) route.DestProtocol = EthernetIPProtocol;
  route.IPAddress = RouteIPAddressLbl[row].Caption;
  return route;
}

void RoutingPage::ReadPort(const std::string& text, std::int16_t& code, std::int16_t& protocol) const {
  for (const Port& port : Ports) {
    if (text != port.text) continue;
    code = port.code;
    protocol = ProtocolOf(port, app_.globals);
  }
}

void RoutingPage::CollectMessageTimeout() {
  app_.globals.MessageTimeout =
      TextNumber(MsgTimeOutTxt.Text, Val, {RoutingPageTitle, "Message Timeout", "MsgTimeOutTxt"}, EnterWord);
}

void RoutingPage::Setup() {
  // A device may count more routes than there are.
  const int count = std::min<int>(app_.globals.RouteCount, Rows);
  for (int r = 1; r <= count; ++r) {
    const RouteRecord& route = Route(r);
    RouteSlotLbl[r].Caption = Str(r);
    ShowPort(RouteSrcPortLbl[r], route.SourcePort);
    RouteDstLowLbl[r].Caption = Str(route.DestLow);
    RouteDstHighLbl[r].Caption = Str(route.DestHigh);
    ShowPort(RouteDestinationPortLbl[r], route.DestPort);
    RouteIPAddressLbl[r].Caption = route.DestPort == EthernetPort ? route.IPAddress : "";
    RouteInUse[r] = FlagTrue;
  }
  AdjustRouteVScrollBar();
  MsgTimeOutTxt.Text = Str(app_.globals.MessageTimeout);
}

}  // namespace vk32
