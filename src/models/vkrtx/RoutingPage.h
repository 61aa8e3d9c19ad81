// The routing table of the VK-RTX, on its page. The gateway takes the first route that matches, so their order counts.
#pragma once

#include "app/App.h"
#include "core/DoesNotFit.h"
#include "forms/ControlArray.h"
#include "models/tables/SlotRows.h"
#include "models/tables/UndoClear.h"
#include "models/wizard/WizardForm.h"

namespace vk32 {

constexpr const char* RoutingPageTitle = "Routing Table Setup";
constexpr const char* ChannelAText = "Channel A";
constexpr const char* ChannelBText = "Channel B";
constexpr const char* EthernetText = "Ethernet";

/// The rows are the working copy on which all editing acts; Routes is made from them by ReadRouteRows.
class RoutingPage : public SlotRows {
 public:
  RoutingPage(Form& form, App& app);

  void SetUpDf1Model();
  bool InUse(int row) const override { return RouteInUse[row] == FlagTrue; }
  std::vector<Label*> RowLabels(int row) const override {
    return {&RouteSlotLbl[row],    &RouteSrcPortLbl[row],         &RouteDstLowLbl[row],
            &RouteDstHighLbl[row], &RouteDestinationPortLbl[row], &RouteIPAddressLbl[row]};
  }
  /// Mode 1 opens a gap at the slot, any other mode closes the row there. A move beyond row 20 faults 9.
  void AdjustRouteTable(int mode, int slot) { MoveRows(mode, slot); }
  void AdjustRouteVScrollBar() { AdjustScrollBar(RoutesTableFrame); }
  void EditRow(int row) override;
  void DeleteRow(int row) override;
  /// The route of a row but for its range, which need not be a number yet.
  RouteRecord PortsOf(int row) const;
  /// Makes Routes, 1 to `count`, from the rows. DoesNotFit if an end of a range is no 16-bit number.
  void ReadRouteRows(int count);
  /// Takes the message time-out into the parameters. DoesNotFit if it is no 16-bit number.
  void CollectMessageTimeout();
  /// Fills the rows from Routes, 1 to RouteCount; the rows below stay.
  void Setup();

  Table<Flag, Rows> RouteInUse;

 private:
  void AddRouteCmd_Click();
  void EditRouteCmd_Click();
  void DelRouteCmd_Click();
  void ClrTableCmd_Click();
  void ClearTable();
  Form& OpenEditor(std::int16_t mode);
  bool Refused(bool refuse, const char* message);
  void MarkRow(int row, bool inUse) override { RouteInUse[row] = inUse ? FlagTrue : FlagFalse; }

  static int RowTop(int row) { return 120 + 480 * (row - 1); }
  static FieldPlace RowPlace(int row, const char* field, const Label& cell);
  RouteRecord& Route(int row) { return app_.globals.Routes[row]; }
  /// A text that names no port leaves both as they are.
  void ReadPort(const std::string& text, std::int16_t& code, std::int16_t& protocol) const;

  /// Element 0 is the head of the column.
  ControlArray<Label> Column(const char* name, int left, int width, const char* head, Place headPlace) {
    return {name, 0, Rows, [=, this](ControlName element, int row) {
              return row == 0 ? std::make_unique<Label>(RoutesHeadFrame, element, headPlace, head, TextRole::TableHead)
                              : std::make_unique<Label>(RoutesFrame, element, Place{left, RowTop(row), width, 240}, "");
            }};
  }

  Form& form_;
  App& app_;

 public:
  // clang-format off
  Frame RoutingFrame     {form_, "RoutingFrame", PagePlace};
  Label RoutingTitleLbl  {RoutingFrame, "RoutingTitleLbl",  {360,  240, 8280,  480}, RoutingPageTitle, TextRole::Title};
  Label RoutingLbl       {RoutingFrame, "RoutingLbl",       {360,  780, 8280, 1140},
                          "The routing table is used to define which port incomming message requests will be sent to.  When the gateway device is "
                          "searching the routing table, it will use the first entry that matches the defined criteria.  Therefore, the order in which "
                          "routing information is entered is important."};
  Frame RoutesHeadFrame  {RoutingFrame, "RoutesHeadFrame",  {360, 2100, 7980,  495}};
  Label RouteDstLbl      {RoutesHeadFrame, "RouteDstLbl",   {2280, 0, 1800, 255}, "Destination Range", TextRole::TableHead};
  RowTable RoutesTableFrame {RoutingFrame, "RoutesTableFrame", {360, 2640, 7980, 2400}, *this, RouteRowFrame, RouteMark, RouteVScroll};
  Frame RoutesFrame      {RoutesTableFrame, "RoutesFrame",  {  0,    0, 7980, 9600}};
  RowFrame RouteRowFrame {RoutesFrame, "RouteRowFrame", "RouteRowMarkFrame", {0, 0, 7980, 465}, 480};
  ControlArray<Label> RouteSlotLbl            = Column("RouteSlotLbl",             120,  600, "Slot",             { 120,   0,  600, 495});
  ControlArray<Label> RouteSrcPortLbl         = Column("RouteSrcPortLbl",          840, 1320, "Source Port",      { 840,   0, 1320, 495});
  ControlArray<Label> RouteDstLowLbl          = Column("RouteDstLowLbl",          2280,  840, "Low",              {2280, 255,  840, 240});
  ControlArray<Label> RouteDstHighLbl         = Column("RouteDstHighLbl",         3240,  840, "High",             {3240, 255,  840, 240});
  ControlArray<Label> RouteDestinationPortLbl = Column("RouteDestinationPortLbl", 4200, 1440, "Destination Port", {4200,   0, 1440, 495});
  ControlArray<Label> RouteIPAddressLbl       {"RouteIPAddressLbl", 1, Rows, [this](ControlName element, int row) {
    return std::make_unique<Label>(RoutesFrame, element, Place{5760, RowTop(row), 2160, 240}, "");
  }};
  RowSign       RouteMark          {RoutesFrame, "RouteMark", {540, 150, 180, 180}, 480};
  VScrollBar    RouteVScroll       {RoutingFrame, "RouteVScroll",       {8340, 2640,  300, 2400}, [this] { RoutesFrame.Top = -RouteVScroll.Value; }};
  CommandButton AddRouteCmd        {RoutingFrame, "AddRouteCmd",        { 360, 5280, 1560,  390}, "Add Route", [this] { AddRouteCmd_Click(); }};
  CommandButton EditRouteCmd       {RoutingFrame, "EditRouteCmd",       {2040, 5280, 1560,  390}, "Edit Route", [this] { EditRouteCmd_Click(); }};
  CommandButton DelRouteCmd        {RoutingFrame, "DelRouteCmd",        {3720, 5280, 1800,  390}, "Delete Route", [this] { DelRouteCmd_Click(); }};
  CommandButton ClrTableCmd        {RoutingFrame, "ClrTableCmd",        {6120, 5280, 2520,  390}, "Clear Routing Table", [this] { ClrTableCmd_Click(); }};
  UndoClearButton UndoClrTableCmd  {RoutingFrame, "UndoClrTableCmd", ClrTableCmd};
  Label         MsgTimeOutLbl      {RoutingFrame, "MsgTimeOutLbl",      { 360, 6000, 1800,  315}, "Message Timeout"};
  TextBox       MsgTimeOutTxt      {RoutingFrame, "MsgTimeOutTxt",      {2280, 6000, 1080,  315}};
  Label         MsgTimeOutUnitsLbl {RoutingFrame, "MsgTimeOutUnitsLbl", {3480, 6000,  600,  315}, "ms", TextRole::Muted};
  // clang-format on
};

}  // namespace vk32
