// Rows of the tables that are made in an editor of their own.
#include "cli/TableEditor.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <vector>

#include "cli/Edit.h"
#include "forms/Tables.h"
#include "models/mapping/MappingTable.h"
#include "script/Quoting.h"

namespace vk32 {
namespace {

struct EditorText {
  const char* field;
  std::string text;
};

struct Cell {
  const char* label;
  const char *field, *second;                // that the editor has for it; second: for what stands behind `separator`
  std::string_view separator = {};           // in the label
  const MappingCodes& (*codes)() = nullptr;  // whose row texts the label shows
};

struct Editor {
  const char *form, *add, *edit, *button;  // the editor, the buttons that open it, its own
  std::span<const Cell> cells;             // in the order in which they are filled
};

constexpr const char* StartAddress = "AbModMapModStartLbl";

constexpr Cell RouteCells[] = {{"RouteSrcPortLbl", "SourceLst", nullptr},
                               {"RouteDstLowLbl", "RemDstLowTxt", nullptr},
                               {"RouteDstHighLbl", "RemDstHighTxt", nullptr},
                               {"RouteDestinationPortLbl", "DestinationLst", nullptr},
                               {"RouteIPAddressLbl", "IPAddressTxt", nullptr}};
constexpr Cell MapCells[] = {{"AbModMapAddrLbl", "LowAddrLst", "HighAddrLst", " - "},
                             {StartAddress, "ModRefLst", "ModStartTxt"},
                             {"AbModMapAbDataFiletLbl", "ABFileTxt", "ABWordTxt", ":"},
                             {"AbModMapDataTypeLbl", "DataTypeLst", nullptr, {}, DataTypes},
                             {"AbModMapDataPointsLbl", "DataPointsTxt", nullptr},
                             {"AbModMapAbFncLbl", "ABFncLst", nullptr, {}, ABFunctions}};
constexpr Editor Editors[] = {{"Route", "AddRouteCmd", "EditRouteCmd", "PerformRouteCmd", RouteCells},
                              {"ABModMapping", "AddMapCmd", "EditMapCmd", "MapCmd", MapCells}};

const Editor* EditorOf(const Control& cell) {
  for (const Editor& editor : Editors) {
    if (std::ranges::any_of(editor.cells,
                            [&](const Cell& row) { return cell.Name() == std::string_view(row.label); })) {
      return &editor;
    }
  }
  return nullptr;
}

/// "40201" is 201 of the reference 4X.
std::vector<EditorText> AddressTexts(const Cell& cell, const std::string& value) {
  int address = 0;
  std::from_chars(value.data(), value.data() + value.size(), address);
  for (const MappingCode& reference : ModbusReferences()) {
    if (reference.base == address / 10000 * 10000) {
      return {{cell.field, reference.listText}, {cell.second, std::to_string(address % 10000)}};
    }
  }
  return {{cell.second, value}};
}

std::vector<EditorText> TextsFor(const Cell& cell, const RowCell& wanted) {
  const std::string& value = wanted.value;
  if (cell.label == std::string_view(StartAddress)) return AddressTexts(cell, value);
  if (cell.codes != nullptr) {
    std::vector<std::string> texts;
    for (const MappingCode& code : cell.codes()) texts.emplace_back(code.rowText);
    return {{cell.field, cell.codes()[FindEntry(wanted.row, texts, value)].listText}};
  }
  const std::size_t at = cell.separator.empty() ? std::string::npos : value.find(cell.separator);
  if (at == std::string::npos) return {{cell.field, value}};
  return {{cell.field, value.substr(0, at)}, {cell.second, value.substr(at + cell.separator.size())}};
}

/// `row`: of the cell that it is for.
void FillIn(Program& program, const Editor& editor, const ListedValue& row, const EditorText& text) {
  const std::string target = std::string(editor.form) + "." + text.field + " ";
  std::string command = "type " + target + Quote(text.text);
  if (const auto* list = dynamic_cast<const ComboBox*>(program.FormOf(editor.form).Find(text.field))) {
    command = "select " + target + Quote(list->Entries()[FindEntry(row, list->Entries(), text.text)]);
  }
  program.Do(command, ExitStatus::DoesNotFit);
}

}  // namespace

bool HasEditor(const Control& cell) { return EditorOf(cell) != nullptr; }

void EditRow(Program& program, const Control& cell, const RowCells& cells) {
  const Editor& editor = *EditorOf(cell);
  const int row = cell.Index().value_or(0), used = RowTableAround(cell)->CountRows();
  const std::string slot = "Slot " + std::to_string(row);
  if (row > used + 1) {
    throw Failure(ExitStatus::DoesNotFit,
                  slot + " can't be filled while slot " + std::to_string(used + 1) + " is empty.");
  }
  Form& wizard = program.Wizard();
  program.Act([&] { wizard.Get<CommandButton>(row > used ? editor.add : editor.edit).OnClick.Run(wizard, 0); },
              ExitStatus::DoesNotFit);
  program.Do("select " + std::string(editor.form) + ".SlotLst " + std::to_string(row), ExitStatus::DoesNotFit);
  for (const Cell& part : editor.cells) {
    const auto value = cells.find(part.label);
    if (value == cells.end()) continue;
    for (const EditorText& text : TextsFor(part, value->second)) FillIn(program, editor, value->second.row, text);
  }
  program.Do("click " + std::string(editor.form) + "." + editor.button, ExitStatus::DoesNotFit);
  if (!program.IsLoaded(editor.form)) return;
  throw Failure(ExitStatus::DoesNotFit, slot + " is not taken: a cell is missing, or a number does not fit.");
}

}  // namespace vk32
