// Tables as spreadsheets save them.
#include "cli/Csv.h"

#include <algorithm>
#include <string_view>

#include "cli/FileContent.h"

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

/// Takes a text apart from its front.
class Reader {
 public:
  Reader(const std::string& path, std::string_view text)
      : path_(path), text_(text), separator_(SeparatorOf(text.substr(0, text.find('\n')))) {}

  bool AtEnd() const { return text_.empty(); }
  CsvRow TakeRow() {
    CsvRow row{{}, line_};
    do {
      row.cells.push_back(TakeCell());
    } while (TakeIf(separator_));
    const bool ended = TakeIf('\r');
    if (TakeIf('\n') || ended) ++line_;
    return row;
  }

 private:
  bool TakeIf(char c) {
    if (!text_.starts_with(c)) return false;
    text_.remove_prefix(1);
    return true;
  }
  bool AtEndOfCell() const {
    return AtEnd() || text_.front() == separator_ || text_.front() == '\r' || text_.front() == '\n';
  }
  std::string TakeCell() {
    if (TakeIf('"')) return TakeQuoted();
    std::string cell;
    for (; !AtEndOfCell(); text_.remove_prefix(1)) cell += text_.front();
    return cell;
  }
  std::string TakeQuoted() {
    const std::size_t begin = line_;
    std::string cell;
    while (!AtEnd()) {
      if (TakeIf('"') && !text_.starts_with('"')) {
        if (AtEndOfCell()) return cell;
        break;
      }
      if (text_.front() == '\n') ++line_;
      cell += text_.front();
      text_.remove_prefix(1);
    }
    throw Failure(ExitStatus::FileRefused, path_ + ": a cell in line " + std::to_string(begin) +
                                               " opens with a quote and does not close with one.");
  }

  const std::string& path_;
  std::string_view text_;
  char separator_;
  std::size_t line_ = 1;
};

}  // namespace

std::vector<CsvRow> ReadCsv(const std::string& path) {
  const std::string content = ContentOf(path);
  std::string_view text = content;
  if (text.starts_with(ByteOrderMark)) text.remove_prefix(ByteOrderMark.size());
  std::vector<CsvRow> rows;
  for (Reader reader(path, text); !reader.AtEnd();) {
    CsvRow row = reader.TakeRow();
    if (!std::ranges::all_of(row.cells, &std::string::empty)) rows.push_back(std::move(row));
  }
  return rows;
}

std::string CsvLine(const CsvCells& cells) {
  std::string line;
  for (const std::string& cell : cells) {
    if (&cell != &cells.front()) line += ',';
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
