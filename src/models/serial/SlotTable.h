// The 40 mapping slots of the RB2000 and RB3000 as a table: what their fields take, and what is wrong with them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "forms/Tables.h"
#include "models/serial/SerialImage.h"

namespace vk32 {

class SerialWizard;

/// Row 1 is slot 0 of the control arrays.
class SlotTable : public FieldTable {
 public:
  static constexpr std::size_t Fields = 4;  // of a slot, its check box aside

  explicit SlotTable(SerialWizard& wizard);

  /// A slot that a slave can't be left with.
  struct Fault {
    int slot;           // 0 to 39
    std::size_t field;  // 0 to 3: start, end, file, word
    bool missing;       // else the field's value is invalid
  };
  /// The first one, or nothing.
  std::optional<Fault> FindFault() const;
  /// In two lines: "Slot 16 (slots 15 to 28):", "the end address is missing".
  std::string WordsOf(const Fault& fault) const;
  TextBox& FieldOf(int slot, std::size_t field) const;

  /// The slot's fields have changed, or what the device will be sent in their place: marks the slot if they differ.
  /// They do where a field kept its text while another configuration came.
  void Follow(int slot, const std::array<std::int32_t, Fields>& sent);
  /// About the first slot that differs; empty: none does.
  std::string WordsOfDifference() const;

  int CountRows() const override;
  std::vector<Control*> Cells(int row) const override;
  void MarkRow(int row) override;

 private:
  std::optional<Fault> FaultOfSlot(int slot) const;
  std::string CellName(int row, std::size_t column) const override;
  std::string FaultOf(std::size_t column, const std::string& text) const override;
  void Refuse(const std::string& hint) override;
  void Reveal(int row) override;

  void ShowMark(int slot);

  SerialWizard& wizard_;
  int refusedRow_ = 0;
  std::array<bool, SerialImage::SlotCount> differs_{};
};

}  // namespace vk32
