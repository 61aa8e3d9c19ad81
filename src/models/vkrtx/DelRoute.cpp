// Deletes a route of the routing table.
#include "models/vkrtx/DelRoute.h"

#include "core/Convert.h"
#include "models/vkrtx/Configuration_VKRTX.h"

namespace vk32 {

DelRoute::DelRoute(App& app) : Form(app.forms, FormName, "Delete Route", 5400, 5040, FormStyle::Dialog), app_(app) {
  for (TextBox* field : {&SourcePortTxt, &RemDstLowTxt, &RemDstHighTxt, &DestinationPortTxt, &IPAddressTxt}) {
    field->Locked = true;
  }
}

void DelRoute::Form_Load() { SlotLst.SetEntries(VKRTXWizard(app_).routing.SlotsInUse()); }

void DelRoute::SlotLst_Click() {
  const int slot = CInt(Val(SlotLst.Text.Value()));
  const auto labels = VKRTXWizard(app_).routing.RowLabels(slot);
  TextBox* const fields[] = {&SourcePortTxt, &RemDstLowTxt, &RemDstHighTxt, &DestinationPortTxt, &IPAddressTxt};
  for (std::size_t i = 0; i < std::size(fields); ++i) fields[i]->Text = labels[i + 1]->Caption.Value();
}

void DelRoute::DeleteRouteCmd_Click() {
  const int slot = CInt(Val(SlotLst.Text.Value()));
  RoutingPage& routing = VKRTXWizard(app_).routing;
  // No slot chosen, or one that has left the table meanwhile: another route must not go in its place.
  if (slot < 1 || slot > routing.CountRowsInUse()) return;
  routing.AdjustRouteTable(0, slot);
  routing.AdjustRouteVScrollBar();
  UnloadMe();
}

}  // namespace vk32
