// A text laid out in rows of a fixed width.
#include "forms/TextRows.h"

#include <algorithm>

namespace vk32 {

void TextRows::Follow(const std::string& text, std::size_t from) {
  const int row = RowOf(from);
  std::size_t start = rows_[static_cast<std::size_t>(row)].start, length = 0;
  rows_.resize(static_cast<std::size_t>(row));
  for (std::size_t at = start; at < text.size(); ++at) {
    if (text[at] == '\n') {
      rows_.push_back({start, length});
      start = at + 1;
      length = 0;
    } else if (text[at] == '\r' && (at + 1 == text.size() || text[at + 1] == '\n')) {
      continue;  // a part of the line end
    } else if (length == columns_) {
      rows_.push_back({start, length});
      start = at;
      length = 1;
    } else {
      ++length;
    }
  }
  rows_.push_back({start, length});
}

int TextRows::RowOf(std::size_t position) const {
  const auto after = std::upper_bound(rows_.begin(), rows_.end(), position,
                                      [](std::size_t at, const TextRow& row) { return at < row.start; });
  return static_cast<int>(after - rows_.begin()) - 1;
}

}  // namespace vk32
