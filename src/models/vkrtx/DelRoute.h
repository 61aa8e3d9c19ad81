// Deletes a route of the routing table.
#pragma once

#include "app/App.h"

namespace vk32 {

class DelRoute : public Form {
 public:
  static constexpr const char* FormName = "DelRoute";

  explicit DelRoute(App& app);

 private:
  void Form_Load() override;
  void SlotLst_Click();
  void DeleteRouteCmd_Click();
  void CancelCmd_Click() { UnloadMe(); }
  void ControlChanged(const Control&, const PropertyBase&) override { HintLbl.Visible = SlotLst.Text.Value().empty(); }

  App& app_;

 public:
  // clang-format off
  Label         RouteTitleLbl      {*this, "RouteTitleLbl",      { 240,  240, 4920, 480}, "Delete Route ", TextRole::Title};
  Label         Label1             {*this, "Label1",             { 240,  780, 4920, 315}, "Select the slot for the route that is to be deleted"};
  Label         SlotLbl            {*this, "SlotLbl",            { 240, 1260, 1800, 315}, "Slot"};
  ComboBox      SlotLst            {*this, "SlotLst",            {2160, 1260, 1080, 315}, {}, &DelRoute::SlotLst_Click};
  Label         HintLbl            {*this, "HintLbl",            {3360, 1260, 1800, 315}, "Choose a slot", TextRole::Small};
  Label         SourcePortLbl      {*this, "SourcePortLbl",      { 240, 1620, 1800, 315}, "Source Port"};
  TextBox       SourcePortTxt      {*this, "SourcePortTxt",      {2160, 1620, 1680, 315}};
  Label         RemDstLbl          {*this, "RemDstLbl",          { 240, 2100, 4920, 315}, "Destination Range", TextRole::Heading};
  Label         RemDstLowLbl       {*this, "RemDstLowLbl",       { 240, 2460, 1800, 315}, "Low"};
  TextBox       RemDstLowTxt       {*this, "RemDstLowTxt",       {2160, 2460, 1080, 315}};
  Label         RemDstHighLbl      {*this, "RemDstHighLbl",      { 240, 2820, 1800, 315}, "High"};
  TextBox       RemDstHighTxt      {*this, "RemDstHighTxt",      {2160, 2820, 1080, 315}};
  Label         DestinationPortLbl {*this, "DestinationPortLbl", { 240, 3540, 1800, 315}, "Destination Port"};
  TextBox       DestinationPortTxt {*this, "DestinationPortTxt", {2160, 3540, 1680, 315}};
  Label         IPAddressLbl       {*this, "IPAddressLbl",       { 240, 3900, 1800, 315}, "IP Address"};
  TextBox       IPAddressTxt       {*this, "IPAddressTxt",       {2160, 3900, 2160, 315}};
  CommandButton DeleteRouteCmd     {*this, "DeleteRouteCmd",     {1920, 4410, 1800, 390}, "Delete Route", &DelRoute::DeleteRouteCmd_Click, WindowKey::Enter};
  CommandButton CancelCmd          {*this, "CancelCmd",          {3840, 4410, 1320, 390}, "Cancel", &DelRoute::CancelCmd_Click, WindowKey::Escape};
  // clang-format on
};

}  // namespace vk32
