// Tables: controls that stand together in rows and columns. Rows are chosen, opened, walked by keys and filled from a
// pasted block.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "forms/Controls.h"

namespace vk32 {

/// Rows are counted from 1, columns from 0.
class ControlTable {
 public:
  explicit ControlTable(Form& form);
  virtual ~ControlTable();
  ControlTable(const ControlTable&) = delete;
  ControlTable& operator=(const ControlTable&) = delete;

  /// How many rows are in use: 1 to that.
  virtual int CountRows() const = 0;
  /// Its cells from left to right, without those that are hidden.
  virtual std::vector<Control*> Cells(int row) const = 0;
  /// 0: it is no cell of a row in use.
  int RowOf(const Control& control) const;
  /// The user's focus has come to the control, or left all of them: nullptr.
  virtual void FocusMoved(const Control*) {}
  /// Marks the row, alone, as the one with a value that is refused. 0: none.
  virtual void MarkRow(int row) = 0;

 private:
  Form& form_;
};

/// What lies behind the chosen row of a table: a fill, with a mark at its left.
class RowFrame : public Frame {
 public:
  /// `first`: its place behind row 1; `pitch`: from row to row, in twips.
  RowFrame(const Container& container, const char* name, const char* markName, Place first, int pitch);

  /// 0: behind none.
  void Show(int row);

  const int pitch;

 private:
  const int first_;

 public:
  Frame mark;
};

/// The sign at the row that holds a value which is refused.
class RowSign : public Image {
 public:
  /// As of a RowFrame; of the sign itself.
  RowSign(const Container& container, const char* name, Place first, int pitch);

  /// 0: at none.
  void Show(int row);

 private:
  const int first_, pitch_;
};

/// What a table of labels shows, and what its rows lead to.
class RowSource {
 public:
  virtual ~RowSource() = default;

  virtual int CountRowsInUse() const = 0;
  virtual std::vector<Label*> RowLabels(int row) const = 0;
  /// Opens the editor on the row.
  virtual void EditRow(int row) = 0;
  /// Opens the editor that deletes, on the row. Deletes nothing by itself.
  virtual void DeleteRow(int row) = 0;
};

/// A table of labels. It has the focus as a whole, and one of its rows may be chosen: by a click, or by keys.
class RowTable : public Frame, public ControlTable {
 public:
  /// `chosen` and `sign` lie in the frame of the rows, which `bar` slides behind this one.
  RowTable(const Container& container, ControlName name, Place place, RowSource& rows, RowFrame& chosen, RowSign& sign,
           VScrollBar& bar);

  int CountRows() const override { return rows_.CountRowsInUse(); }
  std::vector<Control*> Cells(int row) const override;
  void MarkRow(int row) override { sign_.Show(row); }
  /// The row at a height in this frame, in twips, as it is scrolled now. It may be one behind the last.
  int RowAt(int y) const;

  // Acts of the user.
  Act ClickRow(int row);  // a row behind the last: chooses nothing new
  Act Open();             // edits the chosen row, as a double click does
  Act Navigate(TableKey key) override;

  /// Chooses the row and brings it into sight. 0: none; beyond the rows in use: the last.
  void Choose(int row);
  /// The rows in use have changed: a choice that has gone goes to the last.
  void FollowRows();

  Property<int> Row;  // the chosen one; 0: none
  VScrollBar& bar;

 private:
  void BringIntoSight();

  RowSource& rows_;
  RowFrame& chosen_;
  RowSign& sign_;
};

/// The table of labels that the control lies in, or nullptr.
RowTable* RowTableAround(const Control& control);

/// Is it more than a word for one field: cells parted by tabs, rows by ends of lines?
bool IsBlock(std::string_view text);

/// A table whose cells are fields and check boxes.
class FieldTable : public ControlTable {
 public:
  using ControlTable::ControlTable;

  /// Up and Down lead to the same column of the row above and below. Undo takes the last paste back, unless the cells
  /// have changed since.
  Act Navigate(const Control& cell, TableKey key);
  /// Fills the cells from `from` on, to the right and down. A block that does not fit changes nothing: Refuse tells
  /// why, and the act is refused.
  Act Paste(Control& from, std::string_view block);
  /// Brings the row into sight.
  virtual void Reveal(int /*row*/) {}

 protected:
  /// "slot 3, Slave ID"
  virtual std::string CellName(int row, std::size_t column) const = 0;
  /// What a text for a field of the column is that it must not be: "not a number"; empty: nothing.
  virtual std::string FaultOf(std::size_t column, const std::string& text) const = 0;
  /// Tells that nothing was pasted.
  virtual void Refuse(const std::string& hint) = 0;

 private:
  using Texts = std::vector<std::pair<Control*, std::string>>;

  std::string FaultOfBlock(const std::vector<std::vector<std::string>>& block, int row, std::size_t column) const;
  Act Undo();

  Texts beforePaste_, afterPaste_;
};

/// The table of fields that the control is a cell of, or nullptr.
FieldTable* FieldTableOf(const Control& control);

}  // namespace vk32
