// The table of Allen-Bradley/Modbus maps.
#include "models/mapping/MappingTable.h"

#include <algorithm>

#include "core/Convert.h"

namespace vk32 {
namespace {

constexpr const char* Columns[] = {"AbModMapSlotLbl",        "AbModMapAddrLbl",     "AbModMapModStartLbl",
                                   "AbModMapAbDataFiletLbl", "AbModMapDataTypeLbl", "AbModMapDataPointsLbl",
                                   "AbModMapAbFncLbl"};

const MappingCode* FindCode(const MappingCodes& codes, int code) {
  const auto found = std::find_if(codes.begin(), codes.end(), [&](const auto& row) { return row.code == code; });
  return found == codes.end() ? nullptr : &*found;
}

}  // namespace

// The order is that of the editor's lists.

const MappingCodes& ABFunctions() {
  static const MappingCodes codes{
      {1, "Typed R/W", "TypedRW"}, {0, "Prot Typed R/W", "ProtTypedRW"}, {2, "Word Range R/W", "WordRangeRW"}};
  return codes;
}

const MappingCodes& DataTypes() {
  static const MappingCodes codes{{0, "Integer", "Int"}, {1, "Binary", "Bin"}, {3, "Floating Pt", "Float"}};
  return codes;
}

const MappingCodes& ModbusReferences() {
  static const MappingCodes codes{{0, "0X", "", 0}, {1, "1X", "", 10000}, {3, "3X", "", 30000}, {4, "4X", "", 40000}};
  return codes;
}

std::vector<std::string> ListTexts(const MappingCodes& codes) {
  std::vector<std::string> texts;
  for (const MappingCode& code : codes) texts.emplace_back(code.listText);
  return texts;
}

void MappingTable::ProcessAddMapCmd() {
  OpenEditorUnless(Rows, "There is no more slots available in the Mapping Table.", Add);
}

void MappingTable::ProcessEditMapCmd() {
  OpenEditorUnless(0, "There is no entries in the Mapping Table to edit.", Edit);
}

void MappingTable::ProcessDelMapCmd() {
  OpenEditorUnless(0, "There is no entries in the Mapping Table to delete.", Delete);
}

void MappingTable::OpenEditorUnless(int refusedCount, const char* message, Mode mode) {
  if (CountRowsInUse() == refusedCount) {
    app_.forms.MsgBox(message, MessageIcon::Critical);
    return;
  }
  OpenEditor(mode, mode == Add ? 0 : RowsTable().Row);
}

void MappingTable::OpenEditor(Mode mode, int row) {
  app_.globals.AbModMapMode = mode;
  Form& editor = app_.forms.Load("ABModMapping");
  if (row > 0) editor.Get<ComboBox>("SlotLst").Text = Str(row);
  editor.Visible = true;
}

void MappingTable::ProcessClrMapTableCmd() {
  Globals& globals = app_.globals;
  const auto restore = [&globals, rows = KeepRows(RowsTable().bar), records = globals.AbModMapTable,
                        count = globals.AbModMapCount] {
    rows();
    globals.AbModMapTable = records;
    globals.AbModMapCount = count;
  };
  for (int i = 1; i <= Rows; ++i) {
    EmptyRow(i);
    ClearAbModMapRecord(i);
  }
  AdjustAbModMapVScrollBar();
  app_.globals.AbModMapCount = 0;
  UndoButton().Offer(restore);
}

void MappingTable::ClearAbModMapRecord(int slot) { app_.globals.AbModMapTable[slot] = {}; }

void MappingTable::AdjustAbModMapData(int mode, int slot) {
  auto& records = app_.globals.AbModMapTable;
  const int count = app_.globals.AbModMapCount;
  if (mode == 1) {
    if (slot > count) return;
    for (int i = count + 1; i >= slot; --i) records[i] = records[i - 1];
    return;
  }
  for (int i = slot; i < count; ++i) records[i] = records[i + 1];
  ClearAbModMapRecord(count);
}

std::vector<Label*> MappingTable::RowLabels(int row) const {
  std::vector<Label*> labels;
  for (const char* column : Columns) labels.push_back(&Cell(column, row));
  return labels;
}

void MappingTable::UpdateAbModMapTableFromData() {
  // A code that is none leaves base or text as the row before had it.
  int base = 0;
  std::string dataType, function;
  const int count = std::min<int>(app_.globals.AbModMapCount, Rows);
  for (int i = 1; i <= count; ++i) {
    const AbModMapRecord& record = app_.globals.AbModMapTable[i];
    if (const auto* code = FindCode(ModbusReferences(), record.ModbusReference)) base = code->base;
    if (const auto* code = FindCode(DataTypes(), record.DataType)) dataType = code->rowText;
    if (const auto* code = FindCode(ABFunctions(), record.ABFunction)) function = code->rowText;
    Cell("AbModMapSlotLbl", i).Caption = Str(i);
    Cell("AbModMapAddrLbl", i).Caption = Str(record.LowAddress) + " - " + Str(record.HighAddress);
    Cell("AbModMapModStartLbl", i).Caption = Str(base + record.ModbusStart + 1);
    Cell("AbModMapAbDataFiletLbl", i).Caption = Str(record.ABFile) + ":" + Str(record.ABWord);
    Cell("AbModMapDataTypeLbl", i).Caption = dataType;
    Cell("AbModMapDataPointsLbl", i).Caption = Str(record.DataPoints);
    Cell("AbModMapAbFncLbl", i).Caption = function;
  }
}

}  // namespace vk32
