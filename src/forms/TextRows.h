// A text laid out in rows of a fixed width, as a terminal shows it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vk32 {

/// A part of the text, without its line end.
struct TextRow {
  std::size_t start, length;
};

/// Breaks at line ends (CR LF, LF) and where a row is full. There is always one row at least.
class TextRows {
 public:
  /// `columns`: characters in a row.
  explicit TextRows(std::size_t columns) : columns_(columns) {}

  /// Takes over what has changed from a position of the text on. Costs what the text costs from there on, however long
  /// it is.
  void Follow(const std::string& text, std::size_t from);

  int Count() const { return static_cast<int>(rows_.size()); }
  /// From 0.
  const TextRow& operator[](int index) const { return rows_[static_cast<std::size_t>(index)]; }
  /// The row in which a position stands.
  int RowOf(std::size_t position) const;

 private:
  std::size_t columns_;
  std::vector<TextRow> rows_{{0, 0}};
};

}  // namespace vk32
