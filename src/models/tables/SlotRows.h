// A table of numbered slots, shown as rows of labels that a scroll bar slides behind a window of five.
#pragma once

#include <string>
#include <vector>

#include "forms/Controls.h"

namespace vk32 {

/// Rows 1 to n are in use, with no gap.
class SlotRows {
 public:
  static constexpr int Rows = 20;

  virtual ~SlotRows() = default;

  virtual bool InUse(int row) const = 0;
  int CountRowsInUse() const;
  // Numbers of slots, for a list.
  std::vector<std::string> SlotsInUse() const;
  /// Those and the first free one, if there is one.
  std::vector<std::string> SlotsToAdd() const;

 protected:
  /// With the number of its new place. A place behind the last row faults.
  virtual void CopyRow(int from, int to) = 0;
  virtual void EmptyRow(int row) = 0;

  /// Moves the rows from `slot` on: mode 1 opens a gap at the slot, any other mode closes the row there.
  void MoveRows(int mode, int slot);
  /// A row a small step, five a large one.
  void AdjustScrollBar(VScrollBar& bar) const;
};

}  // namespace vk32
