// The Slave/IP mapping of the VK-RTX as a Modbus slave: which Modbus slave is reached at which IP address.
#pragma once

#include "app/App.h"
#include "core/Convert.h"
#include "forms/ControlArray.h"
#include "forms/Tables.h"
#include "models/tables/UndoClear.h"
#include "models/wizard/WizardForm.h"

namespace vk32 {

constexpr const char* NodeIpPageTitle = "Slave/IP Address Mapping";

/// The fields are the working copy; NodeIpTable and NodeIpPorts are made from them when the page is left.
class NodeIpPage : public FieldTable {
 public:
  static constexpr int Rows = 10;

  NodeIpPage(WizardForm& form, App& app) : FieldTable(form), form_(form), app_(app) {}

  void SetUpModbusModel();
  /// Takes the rows over, up to the first empty one. False if one is invalid, after telling the user; the counts then
  /// stand at the rows that passed.
  bool CheckNodeIpTable();
  /// Shows NodeIpTable, 1 to NodeIpCount; the rows below stay.
  void Setup();

  int CountRows() const override { return Rows; }
  std::vector<Control*> Cells(int row) const override { return {&NodeIpNodeTxt[row], &NodeIpIpAddrTxt[row]}; }
  void MarkRow(int row) override { NodeIpMark.Show(row); }
  void FocusMoved(const Control* control) override { NodeIpRowFrame.Show(control ? RowOf(*control) : 0); }

 private:
  std::string CellName(int row, std::size_t column) const override;
  std::string FaultOf(std::size_t column, const std::string& text) const override;
  void Refuse(const std::string& hint) override { form_.ShowHint(hint); }
  bool RowIsValid(const std::string& node, const std::string& address) const;
  void NodeIpClrTablCmd_Click();
  /// Row by row, the Slave ID first.
  std::vector<TextBox*> Fields() const;

  static int RowTop(int row) { return 2340 + 360 * (row - 1); }
  ControlArray<TextBox> Column(const char* name, int left, int width) {
    return {name, 1, Rows, [=, this](ControlName element, int row) {
              return std::make_unique<TextBox>(NodeIpFrame, element, Place{left, RowTop(row), width, 315},
                                               [this] { UndoNodeIpClrTablCmd.Withdraw(); });
            }};
  }

  WizardForm& form_;
  App& app_;

 public:
  // clang-format off
  Frame               NodeIpFrame      {form_, "NodeIpFrame", PagePlace};
  Label               NodeIpTitleLbl   {NodeIpFrame, "NodeIpTitleLbl", { 360,  240, 8280,  480}, NodeIpPageTitle, TextRole::Title};
  Label               NodeIpLbl        {NodeIpFrame, "NodeIpLbl",      { 360,  780, 8280, 1080},
                                        "The Slave/IP mapping table is used when the VK-RTX is configured as a Modbus Slave.  Use the table below to map slave "
                                        "addresses to an IP address so that messages addressed to the specified slave will be forwarded to the device at the that "
                                        "IP address."};
  RowFrame            NodeIpRowFrame   {NodeIpFrame, "NodeIpRowFrame", "NodeIpRowMarkFrame", {240, 2325, 4680, 345}, 360};
  Label               NodeIpNodeLbl    {NodeIpFrame, "NodeIpNodeLbl",   {1200, 1980, 1080, 315}, "Slave ID", TextRole::TableHead};
  Label               NodeIpIpAddrLbl  {NodeIpFrame, "NodeIpIpAddrLbl", {2640, 1980, 2160, 315}, "IP Address", TextRole::TableHead};
  ControlArray<Label> NodeIpSlotLbl    {"NodeIpSlotLbl", 0, Rows, [this](ControlName element, int row) {  // element 0 is the head
    return row == 0 ? std::make_unique<Label>(NodeIpFrame, element, Place{360, 1980, 720, 315}, "Slot", TextRole::TableHead)
                    : std::make_unique<Label>(NodeIpFrame, element, Place{360, RowTop(row), 720, 315}, Str(row));
  }};
  RowSign             NodeIpMark       {NodeIpFrame, "NodeIpMark", {900, 2407, 180, 180}, 360};
  ControlArray<TextBox> NodeIpNodeTxt   = Column("NodeIpNodeTxt",   1200, 1080);
  ControlArray<TextBox> NodeIpIpAddrTxt = Column("NodeIpIpAddrTxt", 2640, 2160);
  CommandButton       NodeIpClrTablCmd {NodeIpFrame, "NodeIpClrTablCmd", {6120, 6240, 2520, 390}, "Clear Mapping Table", [this] { NodeIpClrTablCmd_Click(); }};
  UndoClearButton     UndoNodeIpClrTablCmd {NodeIpFrame, "UndoNodeIpClrTablCmd", NodeIpClrTablCmd};
  // clang-format on
};

}  // namespace vk32
