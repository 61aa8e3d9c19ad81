// Adds a route to the routing table, or edits one.
#include "models/vkrtx/Route.h"

#include "core/Convert.h"
#include "forms/FieldNames.h"
#include "models/vkrtx/Configuration_VKRTX.h"
#include "shell/Subs.h"

namespace vk32 {
namespace {

constexpr Color White = 0xFFFFFF, Gray = 0xE0E0E0;

}  // namespace

void Route::Form_Load() {
  const RoutingPage& routing = VKRTXWizard(app_).routing;
  OfferPorts();
  DestinationLst_Click();
  RouteTitleLbl.Caption = Adds() ? "Enter New Route" : "Edit Existing Route";
  PerformRouteCmd.Caption = Adds() ? "Add Route" : "Edit Route";
  const std::vector<std::string> slots = Adds() ? routing.SlotsToAdd() : routing.SlotsInUse();
  SlotLst.SetEntries(slots);
  if (!slots.empty()) SlotLst.Text = Adds() ? slots.back() : slots.front();
}

void Route::OfferPorts() {
  const bool channelB = VKRTXWizard(app_).ports.ChannelBIsEnabled();
  for (ComboBox* list : {&SourceLst, &DestinationLst}) {
    list->SetEntries(channelB ? std::vector<std::string>{ChannelAText, ChannelBText, EthernetText}
                              : std::vector<std::string>{ChannelAText, EthernetText});
  }
}

void Route::SlotLst_Click() {
  if (Adds()) return;
  const int slot = CInt(Val(SlotLst.Text.Value()));
  const RoutingPage& routing = VKRTXWizard(app_).routing;
  // A port that has left the lists shows as empty, and not as what another slot had.
  SourceLst.Text = "";
  DestinationLst.Text = "";
  SourceLst.Text = routing.RouteSrcPortLbl[slot].Caption;
  RemDstLowTxt.Text = routing.RouteDstLowLbl[slot].Caption.Value();
  RemDstHighTxt.Text = routing.RouteDstHighLbl[slot].Caption.Value();
  DestinationLst.Text = routing.RouteDestinationPortLbl[slot].Caption;
  DestinationLst_Click();
  IPAddressTxt.Text = routing.RouteIPAddressLbl[slot].Caption.Value();
}

void Route::DestinationLst_Click() {
  const bool ethernet = DestinationLst.Text.Value() == EthernetText;
  IPAddressLbl.Enabled = ethernet;
  IPAddressTxt.Enabled = ethernet;
  IPAddressTxt.BackColor = ethernet ? White : Gray;
}

const Control* Route::MissingEntry() const {
  for (const Control* entry : std::initializer_list<const Control*>{&SlotLst, &SourceLst, &RemDstLowTxt, &RemDstHighTxt,
                                                                    &DestinationLst, &IPAddressTxt}) {
    if (entry->Enabled && entry->Words().empty()) return entry;
  }
  return nullptr;
}

std::string Route::WhatIsWrong() const {
  if (const Control* missing = MissingEntry()) return NameOf(*missing) + " is missing";
  for (const TextBox* end : {&RemDstLowTxt, &RemDstHighTxt}) {
    if (!IsNumberIn(end->Text.Value(), 0, 255)) return NameOf(*end) + ": enter a number from 0 to 255";
  }
  if (Val(RemDstLowTxt.Text.Value()) > Val(RemDstHighTxt.Text.Value())) return "Low is above High";
  if (!IPAddressTxt.Enabled || IsIPAddress(IPAddressTxt.Text)) return {};
  return NameOf(IPAddressTxt) + ": enter four numbers from 0 to 255, parted by points";
}

void Route::ControlChanged(const Control& control, const PropertyBase&) {
  if (&control != &HintLbl) HintLbl.Caption = WhatIsWrong();
}

void Route::PerformRouteCmd_Click() {
  if (MissingEntry()) return;
  try {
    const int slot = CInt(Val(SlotLst.Text.Value()));
    RoutingPage& routing = VKRTXWizard(app_).routing;
    // The table may have shrunk meanwhile: a gap must not come into it, and a route that went must not come back.
    if (slot > routing.CountRowsInUse() + (Adds() ? 1 : 0)) return;
    if (Adds()) routing.AdjustRouteTable(1, slot);
    routing.RouteSlotLbl[slot].Caption = SlotLst.Text;
    routing.RouteSrcPortLbl[slot].Caption = SourceLst.Text;
    routing.RouteDstLowLbl[slot].Caption = RemDstLowTxt.Text;
    routing.RouteDstHighLbl[slot].Caption = RemDstHighTxt.Text;
    routing.RouteDestinationPortLbl[slot].Caption = DestinationLst.Text;
    routing.RouteIPAddressLbl[slot].Caption = DestinationLst.Text.Value() == EthernetText ? IPAddressTxt.Words() : "";
    routing.RouteInUse[slot] = FlagTrue;
    routing.AdjustRouteVScrollBar();
    if (routing.RoutesTableFrame.Row > 0) routing.RoutesTableFrame.Choose(slot);
    routing.UndoClrTableCmd.Withdraw();
    UnloadMe();
  } catch (const RuntimeFault&) {
    // The form stays open.
  }
}

}  // namespace vk32
