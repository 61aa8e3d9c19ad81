// Tables as spreadsheets save them.
#pragma once

#include <string>
#include <vector>

namespace vk32 {

using CsvCells = std::vector<std::string>;

struct CsvRow {
  CsvCells cells;
  std::size_t line;  // of the file, from 1, on which it begins
};

/// The rows of a file, without those that are empty. Cells are parted by commas, semicolons or tabs, whichever the
/// first line has most of; a cell in double quotes may hold them, ends of lines, and quotes that stand twice. A byte
/// order mark is passed over. Failure if the file can't be read, or if a cell does not end where its quotes do.
std::vector<CsvRow> ReadCsv(const std::string& path);
/// One line with its end, parted by commas.
std::string CsvLine(const CsvCells& cells);

}  // namespace vk32
