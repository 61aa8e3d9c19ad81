// Adds, edits or deletes a slot of the mapping table.
#include "models/mapping/ABModMapping.h"

#include <algorithm>

#include "core/Convert.h"
#include "forms/FieldNames.h"

namespace vk32 {
namespace {

using enum MappingTable::Mode;

constexpr int ReferenceBase = 10000;  // a reference code is the digit in front of a four-digit address

/// Code 0, base 0 and an empty text for a text that is none of the choices.
MappingCode CodeOfListText(const MappingCodes& codes, const std::string& text) {
  for (const MappingCode& code : codes) {
    if (text == code.listText) return code;
  }
  return {0, "", ""};
}

void SelectByRowText(ComboBox& list, const MappingCodes& codes, const std::string& rowText) {
  for (const MappingCode& code : codes) {
    if (rowText == code.rowText) list.Text = code.listText;
  }
}

/// What stands before and behind the first `separator`.
std::pair<std::string, std::string> SplitAt(const std::string& text, std::string_view separator) {
  const std::size_t at = text.find(separator);
  if (at == std::string::npos) return {text, ""};
  return {text.substr(0, at), text.substr(at + separator.size())};
}

std::int16_t Word(const TextBox& field) { return CInt(CDbl(field.Text.Value())); }

}  // namespace

MappingTable ABModMapping::OwnersTable() const {
  if (Form* owner = app_.forms.Find(app_.globals.OwnerForm)) return {app_, *owner};
  throw RuntimeFault(RuntimeFault::InvalidCall);
}

void ABModMapping::Form_Load() {
  struct Words {
    const char *title, *command;
  };
  constexpr Words words[] = {{"Enter New Allen-Bradley/Modbus Map", "Add Map"},
                             {"Edit an Allen-Bradley/Modbus Map", "Edit Map"},
                             {"Delete an Allen-Bradley/Modbus Map", "Delete Map"}};
  const int mode = app_.globals.AbModMapMode;
  MappingTitleLbl.Caption = words[mode].title;
  MapCmd.Caption = words[mode].command;
  if (mode == Delete) LockFields();
  OfferSlots(mode == Add ? OwnersTable().SlotsToAdd() : OwnersTable().SlotsInUse());
}

std::string ABModMapping::WhatIsWrong() const {
  for (const ComboBox* list : {&SlotLst, &ABFncLst, &ModRefLst, &DataTypeLst}) {
    if (list->Text.Value().empty()) return NameOf(*list) + " is missing";
    if (list->ListIndex < 0) return NameOf(*list) + ": choose an entry of the list";
  }
  struct Range {
    const TextBox& field;
    int first, last;
  };
  for (const auto& [field, first, last] :
       {Range{ABFileTxt, 0, 32767}, Range{ABWordTxt, 0, 32767}, Range{ModStartTxt, 1, ReferenceBase - 1},
        Range{DataPointsTxt, 0, 32767}, Range{LowAddrLst, 0, 255}, Range{HighAddrLst, 0, 255}}) {
    if (field.Text.Value().empty()) return NameOf(field) + " is missing";
    if (!IsNumberIn(field.Text.Value(), first, last)) {
      return NameOf(field) + ": enter a number from " + Str(first) + " to " + Str(last);
    }
  }
  return Val(LowAddrLst.Text.Value()) > Val(HighAddrLst.Text.Value()) ? "Low Address is above High Address" : "";
}

void ABModMapping::ControlChanged(const Control& control, const PropertyBase&) {
  if (&control != &HintLbl && app_.globals.AbModMapMode != Delete) HintLbl.Caption = WhatIsWrong();
}

void ABModMapping::LockFields() {
  for (TextBox* field : {&ABFileTxt, &ABWordTxt, &ModStartTxt, &DataPointsTxt, &LowAddrLst, &HighAddrLst}) {
    field->Locked = true;
  }
  for (ComboBox* list : {&ABFncLst, &ModRefLst, &DataTypeLst}) list->Locked = true;
}

void ABModMapping::OfferSlots(const std::vector<std::string>& slots) {
  SlotLst.SetEntries(slots);
  if (app_.globals.AbModMapMode == Add) {
    SlotLst.Text = slots.back();
    return;
  }
  // From the last to the first: a code that no list holds shows as the slot behind it had it.
  for (auto slot = slots.rbegin(); slot != slots.rend(); ++slot) SlotLst.Text = *slot;
}

void ABModMapping::SlotLst_Click() {
  if (app_.globals.AbModMapMode == Add) return;
  const int s = CInt(Val(SlotLst.Text.Value()));
  const MappingTable table = OwnersTable();
  const auto text = [&](const char* column) -> const std::string& { return table.Cell(column, s).Caption; };
  const auto [low, high] = SplitAt(text("AbModMapAddrLbl"), " - ");
  const auto [file, word] = SplitAt(text("AbModMapAbDataFiletLbl"), ":");
  const std::int32_t start = CLng(Val(text("AbModMapModStartLbl")));
  LowAddrLst.Text = Str(Val(low));
  HighAddrLst.Text = Str(Val(high));
  for (const MappingCode& reference : ModbusReferences()) {
    if (reference.code == start / ReferenceBase) ModRefLst.Text = reference.listText;
  }
  ModStartTxt.Text = Str(start % ReferenceBase);
  ABFileTxt.Text = file;
  ABWordTxt.Text = word;
  DataPointsTxt.Text = text("AbModMapDataPointsLbl");
  SelectByRowText(ABFncLst, ABFunctions(), text("AbModMapAbFncLbl"));
  SelectByRowText(DataTypeLst, DataTypes(), text("AbModMapDataTypeLbl"));
}

void ABModMapping::MapCmd_Click() {
  try {
    CommitMap();
  } catch (const RuntimeFault&) {
    // The form stays open for the field to be mended, and what was done so far stands: an added slot's gap, too.
  }
}

void ABModMapping::CommitMap() {
  const int mode = app_.globals.AbModMapMode;
  const int s = CInt(CDbl(SlotLst.Text.Value()));
  MappingTable table = OwnersTable();
  if (mode == Delete) {
    table.AdjustAbModMappingTable(0, s);
    table.AdjustAbModMapData(0, s);
    table.AdjustAbModMapVScrollBar();
    UnloadMe();
    // The rows can be more than the maps: those of an earlier configuration stay in sight.
    if (app_.globals.AbModMapCount > 0) --app_.globals.AbModMapCount;
    return;
  }
  if (mode == Add) {
    table.AdjustAbModMappingTable(1, s);
    table.AdjustAbModMapData(1, s);
  }
  WriteRecord(s);
  WriteRow(s);
  table.AdjustAbModMapVScrollBar();
  if (table.RowsTable().Row > 0) table.RowsTable().Choose(s);
  table.WithdrawUndo();
  UnloadMe();
  if (mode == Add) ++app_.globals.AbModMapCount;
}

void ABModMapping::WriteRecord(int slot) {
  AbModMapRecord& record = app_.globals.AbModMapTable[slot];
  const auto code = [](const MappingCodes& codes, const ComboBox& list) {
    return static_cast<std::int16_t>(CodeOfListText(codes, list.Text).code);
  };
  record.LowAddress = Word(LowAddrLst);
  record.HighAddress = Word(HighAddrLst);
  record.ModbusReference = code(ModbusReferences(), ModRefLst);
  record.ModbusStart = CInt(CDbl(ModStartTxt.Text.Value()) - 1.0);
  record.ABFile = Word(ABFileTxt);
  record.ABWord = Word(ABWordTxt);
  record.ABFunction = code(ABFunctions(), ABFncLst);
  record.DataPoints = Word(DataPointsTxt);
  record.DataType = code(DataTypes(), DataTypeLst);
}

void ABModMapping::WriteRow(int slot) {
  const MappingTable table = OwnersTable();
  const double start = CodeOfListText(ModbusReferences(), ModRefLst.Text).base + Val(ModStartTxt.Text.Value());
  table.Cell("AbModMapSlotLbl", slot).Caption = SlotLst.Text;
  table.Cell("AbModMapAddrLbl", slot).Caption = LowAddrLst.Text.Value() + " - " + HighAddrLst.Text.Value();
  table.Cell("AbModMapModStartLbl", slot).Caption = Str(start);
  table.Cell("AbModMapAbDataFiletLbl", slot).Caption = ABFileTxt.Text.Value() + ":" + ABWordTxt.Text.Value();
  table.Cell("AbModMapDataTypeLbl", slot).Caption = CodeOfListText(DataTypes(), DataTypeLst.Text).rowText;
  table.Cell("AbModMapDataPointsLbl", slot).Caption = DataPointsTxt.Text;
  table.Cell("AbModMapAbFncLbl", slot).Caption = CodeOfListText(ABFunctions(), ABFncLst.Text).rowText;
}

}  // namespace vk32
