// What keys, clicks and pasted blocks do in tables.
#include "forms/Tables.h"

#include <algorithm>
#include <cctype>

#include "forms/Form.h"

namespace vk32 {
namespace {

constexpr int MarkWidth = 60;

using Block = std::vector<std::vector<std::string>>;

std::vector<std::string> SplitAt(char separator, const std::string& text) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

std::string WithoutBlanks(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Spreadsheets close the last row as well.
Block ParseBlock(std::string text) {
  std::erase(text, '\r');
  if (!text.empty() && text.back() == '\n') text.pop_back();
  Block block;
  for (const std::string& line : SplitAt('\n', text)) {
    block.push_back(SplitAt('\t', line));
    for (std::string& cell : block.back()) cell = WithoutBlanks(cell);
  }
  return block;
}

/// 1 or 0; -1 for a text that is neither.
int FlagOf(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  for (const char* off : {"", "0", "no", "false"}) {
    if (text == off) return 0;
  }
  for (const char* on : {"1", "yes", "true", "x"}) {
    if (text == on) return 1;
  }
  return -1;
}

std::string TextOf(const Control& cell) {
  if (const auto* check = dynamic_cast<const CheckBox*>(&cell)) return check->Value.AsText();
  return cell.Words();
}

void Enter(Control& cell, const std::string& text) {
  if (auto* check = dynamic_cast<CheckBox*>(&cell)) check->Value = FlagOf(text);
  if (auto* field = dynamic_cast<TextBox*>(&cell)) field->Text = text;
}

void ShowAtRow(Control& mark, int row, int first, int pitch) {
  if (row > 0) mark.Top = first + pitch * (row - 1);
  mark.Visible = row > 0;
}

std::string TooMany(std::size_t given, std::size_t there, const char* what) {
  return std::to_string(given) + " " + what + ", and only " + std::to_string(there) + " from here on";
}

}  // namespace

ControlTable::ControlTable(Form& form) : form_(form) { form_.tables_.push_back(this); }

ControlTable::~ControlTable() { std::erase(form_.tables_, this); }

int ControlTable::RowOf(const Control& control) const {
  for (int row = CountRows(); row > 0; --row) {
    const auto cells = Cells(row);
    if (std::find(cells.begin(), cells.end(), &control) != cells.end()) return row;
  }
  return 0;
}

RowFrame::RowFrame(const Container& container, const char* name, const char* markName, Place first, int pitch_)
    : Frame(container, name, first, Fill::ChosenRow),
      pitch(pitch_),
      first_(first.top),
      mark(*this, markName, {0, 0, MarkWidth, first.height}, Fill::ChosenMark) {
  Visible = false;
}

void RowFrame::Show(int row) { ShowAtRow(*this, row, first_, pitch); }

RowSign::RowSign(const Container& container, const char* name, Place first, int pitch)
    : Image(container, name, first, Symbol::Cross), first_(first.top), pitch_(pitch) {
  Visible = false;
}

void RowSign::Show(int row) { ShowAtRow(*this, row, first_, pitch_); }

RowTable::RowTable(const Container& container, ControlName name, Place place, RowSource& rows, RowFrame& chosen,
                   RowSign& sign, VScrollBar& bar_)
    : Frame(container, name, place, Fill::Table),
      ControlTable(container.OwnerForm()),
      Row(*this, "Row", 0),
      bar(bar_),
      rows_(rows),
      chosen_(chosen),
      sign_(sign) {}

std::vector<Control*> RowTable::Cells(int row) const {
  const auto labels = rows_.RowLabels(row);
  return {labels.begin(), labels.end()};
}

int RowTable::RowAt(int y) const { return (y + bar.Value) / chosen_.pitch + 1; }

Act RowTable::ClickRow(int row) {
  return Perform([&] {
    if (row <= CountRows()) Choose(row);
  });
}

Act RowTable::Open() { return Navigate(TableKey::Enter); }

Act RowTable::Navigate(TableKey key) {
  const int count = CountRows(), page = Height / chosen_.pitch, row = Row;
  const auto choose = [&](int wanted) { return Perform([&] { Choose(std::max(1, wanted)); }); };
  if (count == 0) return Act::NotThisKind;
  switch (key) {
    case TableKey::Up: return choose(row - 1);
    case TableKey::Down: return choose(row + 1);
    case TableKey::PageUp: return choose(row - page);
    case TableKey::PageDown: return choose(row + page);
    case TableKey::Home: return choose(1);
    case TableKey::End: return choose(count);
    case TableKey::Enter:
    case TableKey::Delete:
      if (row == 0 || row > count) return Act::NotThisKind;
      return Perform([&] { key == TableKey::Enter ? rows_.EditRow(row) : rows_.DeleteRow(row); });
    case TableKey::Undo: break;
  }
  return Act::NotThisKind;
}

void RowTable::Choose(int row) {
  Row = std::min(row, CountRows());
  chosen_.Show(Row);
  if (Row > 0) BringIntoSight();
}

void RowTable::FollowRows() {
  if (Row > CountRows()) Choose(CountRows());
}

void RowTable::BringIntoSight() {
  const int bottom = chosen_.pitch * Row, top = bottom - chosen_.pitch;
  const int value = std::clamp(std::clamp(bar.Value.Value(), bottom - Height, top), 0, bar.Max.Value());
  if (value != bar.Value) bar.Value = value;
}

RowTable* RowTableAround(const Control& control) {
  for (Frame* frame = control.Parent(); frame; frame = frame->Parent()) {
    if (auto* table = dynamic_cast<RowTable*>(frame)) return table;
  }
  return nullptr;
}

bool IsBlock(std::string_view text) { return text.find_first_of("\t\n") != std::string_view::npos; }

FieldTable* FieldTableOf(const Control& control) {
  for (ControlTable* table : control.OwnerForm().Tables()) {
    if (auto* fields = dynamic_cast<FieldTable*>(table); fields && fields->RowOf(control) > 0) return fields;
  }
  return nullptr;
}

Act FieldTable::Navigate(const Control& cell, TableKey key) {
  if (key == TableKey::Undo) return Undo();
  if (key != TableKey::Up && key != TableKey::Down) return Act::NotThisKind;
  const int row = RowOf(cell), next = key == TableKey::Up ? row - 1 : row + 1;
  if (next < 1 || next > CountRows()) return Act::Done;
  const auto cells = Cells(row);
  const auto column = static_cast<std::size_t>(std::find(cells.begin(), cells.end(), &cell) - cells.begin());
  Reveal(next);
  cell.OwnerForm().SetFocus(*Cells(next)[column]);
  return Act::Done;
}

Act FieldTable::Paste(Control& from, std::string_view text) {
  const Block block = ParseBlock(std::string(text));
  const int first = RowOf(from);
  const auto firstCells = Cells(first);
  const auto column =
      static_cast<std::size_t>(std::find(firstCells.begin(), firstCells.end(), &from) - firstCells.begin());
  if (const std::string fault = FaultOfBlock(block, first, column); !fault.empty()) {
    Refuse("Not pasted: " + fault);
    return Act::Refused;
  }
  Texts texts;
  beforePaste_.clear();
  for (std::size_t i = 0; i < block.size(); ++i) {
    const auto cells = Cells(first + static_cast<int>(i));
    for (std::size_t k = 0; k < block[i].size(); ++k) texts.emplace_back(cells[column + k], block[i][k]);
  }
  for (const auto& [cell, unused] : texts) beforePaste_.emplace_back(cell, TextOf(*cell));
  for (const auto& [cell, filled] : texts) Enter(*cell, filled);
  for (auto& [cell, filled] : texts) filled = TextOf(*cell);
  afterPaste_ = std::move(texts);
  return Act::Done;
}

std::string FieldTable::FaultOfBlock(const Block& block, int row, std::size_t column) const {
  const auto rows = static_cast<std::size_t>(CountRows() - row + 1);
  if (block.size() > rows) return TooMany(block.size(), rows, "rows");
  for (const auto& texts : block) {
    const auto cells = Cells(row);
    if (texts.size() > cells.size() - column) return TooMany(texts.size(), cells.size() - column, "columns");
    for (std::size_t k = 0; k < texts.size(); ++k) {
      const bool flag = cells[column + k]->GetKind() == Control::Kind::CheckBox;
      std::string fault = flag && FlagOf(texts[k]) < 0 ? "neither yes nor no" : "";
      if (!flag && !texts[k].empty()) fault = FaultOf(column + k, texts[k]);
      if (!fault.empty()) return CellName(row, column + k) + " is " + fault;
    }
    ++row;
  }
  return {};
}

Act FieldTable::Undo() {
  const bool untouched = std::all_of(afterPaste_.begin(), afterPaste_.end(),
                                     [](const auto& pasted) { return TextOf(*pasted.first) == pasted.second; });
  if (afterPaste_.empty() || !untouched) return Act::NotThisKind;
  afterPaste_.clear();
  for (const auto& [cell, text] : std::exchange(beforePaste_, {})) Enter(*cell, text);
  return Act::Done;
}

}  // namespace vk32
