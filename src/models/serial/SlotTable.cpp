// The 40 mapping slots of the RB2000 and RB3000 as a table.
#include "models/serial/SlotTable.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/Convert.h"
#include "models/serial/SerialWizard.h"

namespace vk32 {
namespace {

constexpr std::size_t Fields = SlotTable::Fields;
constexpr const char* FieldNames[Fields] = {"start address", "end address", "file", "word"};
constexpr double LastFile = 999, LastWord = 9999, Huge = std::numeric_limits<double>::max();

/// The number that the text starts with, rounded; a number too large to hold is out of every range.
double WholeValue(const std::string& text) {
  try {
    return std::nearbyint(Val(text));
  } catch (const RuntimeFault&) {
    return std::numeric_limits<double>::infinity();
  }
}

/// 1 to 9999, 10001 to 19999, 30001 to 39999, 40001 to 49999.
bool IsModbusAddress(double value) {
  constexpr double ranges[][2] = {{0, 10000}, {10000, 20000}, {30000, 40000}, {40000, 50000}};
  for (const auto& [above, below] : ranges) {
    if (value > above && value < below) return true;
  }
  return false;
}

/// Typed, the text would become this number. An empty one stands for 0.
bool Holds(const std::string& text, std::int32_t number) {
  try {
    return CLng(Val(text)) == number;
  } catch (const RuntimeFault&) {
    return false;
  }
}

bool IsInRange(std::size_t field, const std::string& text) {
  const double value = WholeValue(text);
  if (field < 2) return text.empty() || IsModbusAddress(value);
  return value >= 0 && value <= (field == 2 ? LastFile : LastWord);
}

}  // namespace

SlotTable::SlotTable(SerialWizard& wizard) : FieldTable(wizard), wizard_(wizard) {}

int SlotTable::CountRows() const { return SerialImage::SlotCount; }

TextBox& SlotTable::FieldOf(int slot, std::size_t field) const {
  const ControlArray<TextBox>* const columns[Fields] = {&wizard_.ModStartTxt, &wizard_.ModEndTxt, &wizard_.ABFileTxt,
                                                        &wizard_.ABWordTxt};
  return (*columns[field])[slot];
}

std::vector<Control*> SlotTable::Cells(int row) const {
  std::vector<Control*> cells;
  for (std::size_t field = 0; field < Fields; ++field) cells.push_back(&FieldOf(row - 1, field));
  if (wizard_.FloatChk[row - 1].Visible) cells.push_back(&wizard_.FloatChk[row - 1]);
  return cells;
}

void SlotTable::MarkRow(int row) {
  refusedRow_ = row;
  for (int slot = 0; slot < SerialImage::SlotCount; ++slot) ShowMark(slot);
}

void SlotTable::ShowMark(int slot) {
  wizard_.SlotMark[slot].Visible = differs_[static_cast<std::size_t>(slot)] || slot == refusedRow_ - 1;
}

void SlotTable::Follow(int slot, const std::array<std::int32_t, Fields>& sent) {
  bool& differs = differs_[static_cast<std::size_t>(slot)];
  differs = false;
  for (std::size_t field = 0; field < Fields; ++field)
    differs = differs || !Holds(FieldOf(slot, field).Text, sent[field]);
  ShowMark(slot);
}

std::string SlotTable::WordsOfDifference() const {
  const auto first = std::find(differs_.begin(), differs_.end(), true);
  if (first == differs_.end()) return {};
  return "Slot " + Str(static_cast<std::int32_t>(first - differs_.begin()) + 1) +
         ": what is shown is not what will be sent. Type it again or empty it.";
}

std::optional<SlotTable::Fault> SlotTable::FindFault() const {
  for (int slot = 0; slot < SerialImage::SlotCount; ++slot) {
    if (const auto fault = FaultOfSlot(slot)) return fault;
  }
  return {};
}

std::optional<SlotTable::Fault> SlotTable::FaultOfSlot(int slot) const {
  // Looks forward only: an empty field is missing when one before it is filled.
  bool empty = true;
  for (std::size_t field = 0; field < Fields; ++field) {
    const bool filled = !FieldOf(slot, field).Text.Value().empty();
    if (!filled && !empty) return Fault{slot, field, true};
    if (filled) empty = false;
  }
  for (std::size_t field = 0; field < Fields; ++field) {
    if (!IsInRange(field, FieldOf(slot, field).Text)) return Fault{slot, field, false};
  }
  return {};
}

std::string SlotTable::WordsOf(const Fault& fault) const {
  const std::string wrong = fault.missing ? "missing" : FaultOf(fault.field, FieldOf(fault.slot, fault.field).Text);
  return SerialWizard::SlotWords(fault.slot) + "\nthe " + FieldNames[fault.field] + " is " + wrong;
}

std::string SlotTable::CellName(int row, std::size_t column) const {
  return "slot " + Str(row) + ", " + (column < Fields ? FieldNames[column] : "Floating Point");
}

std::string SlotTable::FaultOf(std::size_t column, const std::string& text) const {
  if (!IsNumberIn(text, -Huge, Huge)) return "not a number";
  if (IsInRange(column, text)) return {};
  return column < 2 ? "not a Modbus address" : "not from 0 to " + Str(column == 2 ? LastFile : LastWord);
}

void SlotTable::Refuse(const std::string& hint) { wizard_.ShowHint(hint); }

void SlotTable::Reveal(int row) { wizard_.ShowPaneOf(row - 1); }

}  // namespace vk32
