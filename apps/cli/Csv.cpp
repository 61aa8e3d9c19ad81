// Tables as spreadsheets save them.
#include "cli/Csv.h"

#include <algorithm>

#include "platform/TextInput.h"

namespace vk32 {
namespace {

char SeparatorOf(std::string_view firstLine) {
  char most = ',';
  for (const char separator : {';', '\t'}) {
    if (std::ranges::count(firstLine, separator) > std::ranges::count(firstLine, most)) most = separator;
  }
  return most;
}

/// Takes one cell off, up to the separator or the end of the line.
std::string TakeCell(std::string_view& text, char separator) {
  std::string cell;
  bool quoted = !text.empty() && text.front() == '"';
  if (quoted) text.remove_prefix(1);
  while (!text.empty()) {
    const char c = text.front();
    if (!quoted && (c == separator || c == '\n' || c == '\r')) break;
    text.remove_prefix(1);
    const bool twice = quoted && c == '"' && text.starts_with('"');
    if (twice) text.remove_prefix(1);
    if (quoted && c == '"' && !twice) {
      quoted = false;
    } else {
      cell += c;
    }
  }
  return cell;
}

}  // namespace

std::vector<CsvRow> ParseCsv(std::string_view text) {
  if (text.starts_with(ByteOrderMark)) text.remove_prefix(ByteOrderMark.size());
  const char separator = SeparatorOf(text.substr(0, text.find('\n')));
  std::vector<CsvRow> rows;
  while (!text.empty()) {
    CsvRow row{TakeCell(text, separator)};
    while (text.starts_with(separator)) {
      text.remove_prefix(1);
      row.push_back(TakeCell(text, separator));
    }
    if (text.starts_with('\r')) text.remove_prefix(1);
    if (text.starts_with('\n')) text.remove_prefix(1);
    if (!std::ranges::all_of(row, &std::string::empty)) rows.push_back(std::move(row));
  }
  return rows;
}

std::string CsvLine(const CsvRow& row) {
  std::string line;
  for (const std::string& cell : row) {
    if (&cell != &row.front()) line += ',';
    if (cell.find_first_of(",;\t\"\r\n") == std::string::npos) {
      line += cell;
      continue;
    }
    line += '"';
    for (const char c : cell) line += c == '"' ? std::string(2, c) : std::string(1, c);
    line += '"';
  }
  return line + "\r\n";
}

}  // namespace vk32
