// The table of Allen-Bradley/Modbus maps: the records that are sent and kept, and the rows of labels on the wizard that
// owns it, which the editor reads back.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/App.h"
#include "models/tables/SlotRows.h"
#include "models/tables/UndoClear.h"

namespace vk32 {

/// A code of the table under its three faces. `base`: of a reference code, added to the start address in a row.
struct MappingCode {
  int code;
  const char* listText;  // in the editor
  const char* rowText;   // on the wizard; of a reference: unused
  int base = 0;
};
using MappingCodes = std::vector<MappingCode>;

const MappingCodes& ABFunctions();
const MappingCodes& DataTypes();
const MappingCodes& ModbusReferences();
std::vector<std::string> ListTexts(const MappingCodes& codes);

/// Reaches the rows by name: AbModMapSlotLbl and the six others, elements 1 to 20, AbModMapTableFrame and
/// UndoClrMapTableCmd. A row is in use when its AbModMapAddrLbl is not empty.
class MappingTable : public SlotRows {
 public:
  /// What the editor does: AbModMapMode.
  enum Mode : std::int16_t { Add, Edit, Delete };

  MappingTable(App& app, Form& owner) : app_(app), owner_(owner) {}

  // The commands of the wizard's page.
  void ProcessAddMapCmd();
  void ProcessEditMapCmd();
  void ProcessDelMapCmd();
  /// Empties rows, records and count, without a question; UndoClrMapTableCmd brings them back.
  void ProcessClrMapTableCmd();
  using SlotRows::PutInOrder;
  void WithdrawUndo() { UndoButton().Withdraw(); }

  // Mode 1 opens a gap at the slot, any other mode closes the slot. A slot beyond the table faults.
  void AdjustAbModMapData(int mode, int slot);
  void AdjustAbModMappingTable(int mode, int slot) { MoveRows(mode, slot); }
  void AdjustAbModMapVScrollBar() { AdjustScrollBar(RowsTable()); }
  /// Rewrites rows 1 to AbModMapCount from the records; the rows below stay, and so does the scroll bar.
  void UpdateAbModMapTableFromData();

  bool InUse(int row) const override { return !Cell("AbModMapAddrLbl", row).Caption.Value().empty(); }
  std::vector<Label*> RowLabels(int row) const override;
  Label& Cell(const char* column, int row) const { return owner_.Get<Label>(column, row); }
  void EditRow(int row) override { OpenEditor(Edit, row); }
  void DeleteRow(int row) override { OpenEditor(Delete, row); }
  RowTable& RowsTable() const { return owner_.Get<RowTable>("AbModMapTableFrame"); }

 private:
  void OpenEditorUnless(int refusedCount, const char* message, Mode mode);
  /// Row 0: on the slot that the editor begins with.
  void OpenEditor(Mode mode, int row);
  void ClearAbModMapRecord(int slot);
  void MarkRow(int, bool) override {}
  UndoClearButton& UndoButton() const { return owner_.Get<UndoClearButton>("UndoClrMapTableCmd"); }

  App& app_;
  Form& owner_;
};

}  // namespace vk32
