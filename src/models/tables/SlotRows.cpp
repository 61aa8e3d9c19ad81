// A table of numbered slots.
#include "models/tables/SlotRows.h"

#include <algorithm>
#include <utility>

#include "core/Convert.h"

namespace vk32 {
namespace {

constexpr int RowHeight = 480;
constexpr int VisibleRows = 5;

}  // namespace

int SlotRows::CountRowsInUse() const { return static_cast<int>(SlotsInUse().size()); }

std::vector<std::string> SlotRows::SlotsInUse() const {
  std::vector<std::string> slots;
  for (int row = 1; row <= Rows; ++row) {
    if (InUse(row)) slots.push_back(Str(row));
  }
  return slots;
}

std::vector<std::string> SlotRows::SlotsToAdd() const {
  std::vector<std::string> slots;
  for (int row = 1; row <= Rows; ++row) {
    slots.push_back(Str(row));
    if (!InUse(row)) break;
  }
  return slots;
}

void SlotRows::EmptyRow(int row) {
  for (Label* label : RowLabels(row)) label->Caption = "";
  MarkRow(row, false);
}

void SlotRows::NumberRows() {
  for (int row = 1; row <= Rows; ++row) {
    const std::vector<Label*> labels = RowLabels(row);
    const bool used =
        std::any_of(labels.begin() + 1, labels.end(), [](auto* label) { return !label->Words().empty(); });
    labels.front()->Caption = used ? Str(row) : "";
    MarkRow(row, used);
  }
}

void SlotRows::PutInOrder() const {
  std::vector<Control*> cells;
  for (int row = 1; row <= Rows; ++row) {
    for (Label* label : RowLabels(row)) cells.push_back(label);
  }
  PutInTabOrder(cells);
}

void SlotRows::CopyRow(int from, int to) {
  const auto source = RowLabels(from), target = RowLabels(to);
  target[0]->Caption = Str(to);
  for (std::size_t i = 1; i < source.size(); ++i) target[i]->Caption = source[i]->Caption.Value();
  MarkRow(to, true);
}

std::function<void()> SlotRows::KeepRows(VScrollBar& bar) const {
  std::vector<std::pair<Label*, std::string>> captions;
  for (int row = 1; row <= Rows; ++row) {
    for (Label* label : RowLabels(row)) captions.emplace_back(label, label->Caption);
  }
  return [captions, &bar, max = bar.Max.Value(), value = bar.Value.Value()] {
    for (const auto& [label, caption] : captions) label->Caption = caption;
    bar.Max = max;
    bar.Value = value;
  };
}

void SlotRows::MoveRows(int mode, int slot) {
  int last = Rows;
  while (last > 0 && !InUse(last)) --last;
  if (mode == 1) {
    for (int i = last; i >= slot; --i) CopyRow(i, i + 1);
    return;
  }
  for (int i = slot; i < last; ++i) CopyRow(i + 1, i);
  if (last > 0) EmptyRow(last);
}

void SlotRows::AdjustScrollBar(RowTable& table) const {
  VScrollBar& bar = table.bar;
  bar.SmallChange = RowHeight;
  bar.LargeChange = VisibleRows * RowHeight;
  bar.Max = std::max(0, CountRowsInUse() - VisibleRows) * RowHeight;
  table.FollowRows();
}

}  // namespace vk32
