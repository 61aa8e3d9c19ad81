// A table to read: rows of texts behind a window of labels, of which a scroll bar chooses the first that shows.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "forms/ControlArray.h"
#include "forms/Controls.h"

namespace vk32 {

constexpr int ListRowHeight = 300;  // twips, its line included

struct TextCell {
  std::string text;
  bool muted = false;
};
/// A value that is empty, or not there, says so.
TextCell ValueCell(const std::optional<std::string>& value);

class ListRows {
 public:
  /// The labels of each column have the indexes 1 to n, one for each line that shows; `lines`, with the same indexes,
  /// lie under them.
  ListRows(std::vector<const ControlArray<Label>*> columns, const ControlArray<Frame>& lines, VScrollBar& bar);

  /// A cell of each column in each row. What is scrolled to stays, as far as there are rows.
  void Show(std::vector<std::vector<TextCell>> rows);
  /// The scroll bar has moved.
  void Draw();

 private:
  std::vector<const ControlArray<Label>*> columns_;
  const ControlArray<Frame>& lines_;
  VScrollBar& bar_;
  std::vector<std::vector<TextCell>> rows_;
};

}  // namespace vk32
