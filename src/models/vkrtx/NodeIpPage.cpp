// The Slave/IP mapping of the VK-RTX.
#include "models/vkrtx/NodeIpPage.h"

#include <algorithm>
#include <utility>

#include "shell/Subs.h"

namespace vk32 {
namespace {

constexpr std::int16_t EtherNetIPPort = 2222;  // of every entry
constexpr std::size_t LongestAddress = 15;

}  // namespace

void NodeIpPage::SetUpModbusModel() {
  const std::vector<TextBox*> fields = Fields();
  PutInTabOrder({fields.begin(), fields.end()});
  app_.globals.NodeIpCount = 0;
  app_.globals.NodeIpPortCount = 0;
}

std::string NodeIpPage::CellName(int row, std::size_t column) const {
  return "slot " + Str(row) + ", " + (column == 0 ? NodeIpNodeLbl : NodeIpIpAddrLbl).Caption.Value();
}

std::string NodeIpPage::FaultOf(std::size_t column, const std::string& text) const {
  if (column == 1) return IsIPAddress(text) && text.size() <= LongestAddress ? "" : "not an IP address";
  return IsNumberIn(text, 0, 255) ? "" : "not a number from 0 to 255";
}

bool NodeIpPage::RowIsValid(const std::string& node, const std::string& address) const {
  if (node.empty() || address.empty()) return node.empty() && address.empty();
  return FaultOf(0, node).empty() && IsIPAddress(address);
}

bool NodeIpPage::CheckNodeIpTable() {
  Parameters& parameters = app_.globals;
  parameters.NodeIpCount = 0;
  parameters.NodeIpPortCount = 0;
  for (int row = 1; row <= Rows; ++row) {
    const std::string& node = NodeIpNodeTxt[row].Text;
    const std::string& address = NodeIpIpAddrTxt[row].Text;
    if (!RowIsValid(node, address)) {
      const std::size_t column = node.empty() || !FaultOf(0, node).empty() ? 0 : 1;
      const std::string& text = column == 0 ? node : address;
      const std::string hint = CellName(row, column) + " is " + (text.empty() ? "missing" : FaultOf(column, text));
      app_.forms.MsgBox("One or more Mapping slots contain invalid entries.", MessageIcon::Critical);
      form_.ShowRefused(*Cells(row)[column], "S" + hint.substr(1));
      return false;
    }
    if (node.empty()) return true;  // the end of the table
    ++parameters.NodeIpCount;
    parameters.NodeIpTable[row] = {CInt(Val(node)), address};
    ++parameters.NodeIpPortCount;
    parameters.NodeIpPorts[row] = {address, EtherNetIPPort};
  }
  return true;
}

std::vector<TextBox*> NodeIpPage::Fields() const {
  std::vector<TextBox*> fields;
  for (int row = 1; row <= Rows; ++row) fields.insert(fields.end(), {&NodeIpNodeTxt[row], &NodeIpIpAddrTxt[row]});
  return fields;
}

void NodeIpPage::NodeIpClrTablCmd_Click() {
  std::vector<std::pair<TextBox*, std::string>> texts;
  for (TextBox* field : Fields()) texts.emplace_back(field, field->Text);
  for (TextBox* field : Fields()) field->Text = "";
  UndoNodeIpClrTablCmd.Offer([texts] {
    for (const auto& [field, text] : texts) field->Text = text;
  });
}

void NodeIpPage::Setup() {
  const Parameters& parameters = app_.globals;
  // A device may count more rows than there are.
  for (int r = 1; r <= std::min<int>(parameters.NodeIpCount, Rows); ++r) {
    NodeIpNodeTxt[r].Text = Str(parameters.NodeIpTable[r].Node);
    NodeIpIpAddrTxt[r].Text = parameters.NodeIpTable[r].IPAddress;
  }
}

}  // namespace vk32
