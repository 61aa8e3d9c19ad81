// Adds a route to the routing table, or edits one.
#pragma once

#include "app/App.h"
#include "models/vkrtx/RoutingPage.h"

namespace vk32 {

class Route : public Form {
 public:
  static constexpr const char* FormName = "Route";

  explicit Route(App& app) : Form(app.forms, FormName, "Add New Route", 5400, 5040, FormStyle::Dialog), app_(app) {}

 private:
  void Form_Load() override;
  void SlotLst_Click();
  void DestinationLst_Click();
  void PerformRouteCmd_Click();
  void CancelCmd_Click() { UnloadMe(); }

  void OfferPorts();
  /// The first entry that is needed and empty, or nullptr.
  const Control* MissingEntry() const;
  /// Why the route is not whole or not good, in a line; empty: it is.
  std::string WhatIsWrong() const;
  void ControlChanged(const Control& control, const PropertyBase& property) override;
  bool Adds() const { return app_.globals.RouteFormMode == 0; }

  App& app_;

 public:
  // clang-format off
  Label         RouteTitleLbl   {*this, "RouteTitleLbl",   { 240,  240, 4920, 480}, "", TextRole::Title};
  Label         SlotLbl         {*this, "SlotLbl",         { 240,  960, 1800, 315}, "Slot"};
  ComboBox      SlotLst         {*this, "SlotLst",         {2160,  960, 1080, 315}, {}, &Route::SlotLst_Click};
  Label         SourceLbl       {*this, "SourceLbl",       { 240, 1320, 1800, 315}, "Source Port"};
  ComboBox      SourceLst       {*this, "SourceLst",       {2160, 1320, 1680, 315}, {}, {}};
  Label         RemDstLbl       {*this, "RemDstLbl",       { 240, 1800, 4920, 315}, "Destination Range", TextRole::Heading};
  Label         RemDstLowLbl    {*this, "RemDstLowLbl",    { 240, 2160, 1800, 315}, "Low"};
  TextBox       RemDstLowTxt    {*this, "RemDstLowTxt",    {2160, 2160, 1080, 315}};
  Label         RemDstHighLbl   {*this, "RemDstHighLbl",   { 240, 2520, 1800, 315}, "High"};
  TextBox       RemDstHighTxt   {*this, "RemDstHighTxt",   {2160, 2520, 1080, 315}};
  Label         DestinationLbl  {*this, "DestinationLbl",  { 240, 3240, 1800, 315}, "Destination Port"};
  ComboBox      DestinationLst  {*this, "DestinationLst",  {2160, 3240, 1680, 315}, {}, &Route::DestinationLst_Click};
  Label         IPAddressLbl    {*this, "IPAddressLbl",    { 240, 3600, 1800, 315}, "IP Address"};
  TextBox       IPAddressTxt    {*this, "IPAddressTxt",    {2160, 3600, 2160, 315}};
  Label         HintLbl         {*this, "HintLbl",         { 240, 3990, 4920, 315}, "", TextRole::Small};
  CommandButton PerformRouteCmd {*this, "PerformRouteCmd", {2160, 4410, 1560, 390}, "", &Route::PerformRouteCmd_Click, WindowKey::Enter};
  CommandButton CancelCmd       {*this, "CancelCmd",       {3840, 4410, 1320, 390}, "Cancel", &Route::CancelCmd_Click, WindowKey::Escape};
  // clang-format on
};

}  // namespace vk32
