// A table to read.
#include "listing/ListRows.h"

#include <algorithm>

namespace vk32 {

TextCell ValueCell(const std::optional<std::string>& value) {
  if (!value) return {"not there", true};
  return value->empty() ? TextCell{"empty", true} : TextCell{*value};
}

ListRows::ListRows(std::vector<const ControlArray<Label>*> columns, const ControlArray<Frame>& lines, VScrollBar& bar)
    : columns_(std::move(columns)), lines_(lines), bar_(bar) {}

void ListRows::Show(std::vector<std::vector<TextCell>> rows) {
  rows_ = std::move(rows);
  bar_.LargeChange = std::max(lines_.Last() - 1, 1);
  bar_.Max = std::max(static_cast<int>(rows_.size()) - lines_.Last(), 0);
  Draw();
}

void ListRows::Draw() {
  for (int line = 1; line <= lines_.Last(); ++line) {
    const auto row = static_cast<std::size_t>(bar_.Value + line - 1);
    const bool filled = row < rows_.size();
    lines_[line].Visible = filled;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const TextCell cell = filled ? rows_[row][i] : TextCell();
      Label& label = (*columns_[i])[line];
      label.Caption = cell.text;
      label.ForeColor = cell.muted ? MutedColor : SystemButtonText;
    }
  }
}

}  // namespace vk32
