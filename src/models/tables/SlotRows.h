// A table of numbered slots, shown as rows of labels that a scroll bar slides behind a window of five.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "forms/Tables.h"

namespace vk32 {

/// Rows 1 to n are in use, with no gap.
class SlotRows : public RowSource {
 public:
  static constexpr int Rows = 20;

  virtual bool InUse(int row) const = 0;
  int CountRowsInUse() const override;
  // Numbers of slots, for a list.
  std::vector<std::string> SlotsInUse() const;
  /// Those and the first free one, if there is one.
  std::vector<std::string> SlotsToAdd() const;

  /// Takes the rows for in use whose cells hold words, and numbers them.
  void NumberRows();

  // RowLabels begins with the slot's number. A row behind the last faults.

 protected:
  /// Where it takes more than the labels to be in use.
  virtual void MarkRow(int row, bool inUse) = 0;
  void EmptyRow(int row);
  /// Row by row, where the columns were declared one by one.
  void PutInOrder() const;
  /// What brings the labels and the scroll bar back as they are now.
  std::function<void()> KeepRows(VScrollBar& bar) const;

  /// Moves the rows from `slot` on: mode 1 opens a gap at the slot, any other mode closes the row there.
  void MoveRows(int mode, int slot);
  /// A row a small step, five a large one.
  void AdjustScrollBar(RowTable& table) const;

 private:
  /// With the number of its new place.
  void CopyRow(int from, int to);
};

}  // namespace vk32
