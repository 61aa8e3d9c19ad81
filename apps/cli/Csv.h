// Tables as spreadsheets save them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vk32 {

using CsvRow = std::vector<std::string>;

/// The rows of a table, without those that are empty. Cells are parted by commas, semicolons or tabs, whichever the
/// first line has most of; a cell in double quotes may hold them, ends of lines, and quotes that stand twice. A byte
/// order mark is passed over.
std::vector<CsvRow> ParseCsv(std::string_view text);
/// One line with its end, parted by commas.
std::string CsvLine(const CsvRow& row);

}  // namespace vk32
