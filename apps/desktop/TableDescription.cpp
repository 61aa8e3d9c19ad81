// Tables as assistive technology is told of them.
#include "TableDescription.h"

#include <algorithm>
#include <map>
#include <vector>

#include "FormWindow.h"
#include "Text.h"
#include "forms/Tables.h"

namespace vk32 {
namespace {

using Row = std::vector<const Control*>;  // a cell for each column; nullptr: none

/// Those that lie in the frame, also in the frame of rows that slides in it.
void AddLabels(const Frame& frame, std::map<int, std::map<int, const Control*>>& byPlace) {
  for (const Control* control : frame.Children()) {
    if (!control->Visible) continue;
    if (control->GetKind() == Control::Kind::Label) byPlace[control->Top][control->Left] = control;
    if (control->GetKind() == Control::Kind::Frame) AddLabels(static_cast<const Frame&>(*control), byPlace);
  }
}

std::vector<Row> RowsOf(const FrameWidget& table) {
  std::map<int, std::map<int, const Control*>> byPlace;
  if (const Frame* frame = table.GetFrame()) AddLabels(*frame, byPlace);
  std::erase_if(byPlace, [](const auto& row) {
    return std::all_of(row.second.begin(), row.second.end(),
                       [](const auto& cell) { return cell.second->Words().empty(); });
  });
  std::map<int, std::size_t> columns;
  for (const auto& [top, cells] : byPlace) {
    for (const auto& [left, cell] : cells) columns[left] = 0;
  }
  std::size_t count = 0;
  for (auto& [left, column] : columns) column = count++;
  std::vector<Row> rows;
  for (const auto& [top, cells] : byPlace) {
    rows.emplace_back(count);
    for (const auto& [left, cell] : cells) rows.back()[columns[left]] = cell;
  }
  return rows;
}

QAccessibleInterface* InterfaceOf(const QWidget& beside, const Control* control) {
  const auto* window = dynamic_cast<const FormWindow*>(beside.window());
  QWidget* widget = window && control ? window->WidgetOf(*control) : nullptr;
  return widget ? QAccessible::queryAccessibleInterface(widget) : nullptr;
}

const RowTable* AsRowTable(const FrameWidget& table) { return dynamic_cast<const RowTable*>(table.GetFrame()); }

class LabelDescription : public QAccessibleWidget {
 public:
  LabelDescription(LabelWidget& label, QAccessible::Role role) : QAccessibleWidget(&label, role), label_(label) {}

  QString text(QAccessible::Text kind) const override {
    const QString told = QAccessibleWidget::text(kind);
    return kind == QAccessible::Name && told.isEmpty() ? label_.text() : told;
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    // Nothing is there to be told.
    if (label_.text().isEmpty()) state.invisible = true;
    return state;
  }
  QStringList actionNames() const override {
    return label_.TakesMouse() ? QStringList{pressAction()} : QAccessibleWidget::actionNames();
  }
  void doAction(const QString& action) override {
    if (action == pressAction()) return label_.Activate();
    QAccessibleWidget::doAction(action);
  }

 protected:
  LabelWidget& label_;
};

class CellDescription : public LabelDescription, public QAccessibleTableCellInterface {
 public:
  CellDescription(LabelWidget& label, FrameWidget& table) : LabelDescription(label, QAccessible::Cell), table_(table) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TableCellInterface) return static_cast<QAccessibleTableCellInterface*>(this);
    return LabelDescription::interface_cast(type);
  }
  QAccessibleInterface* parent() const override { return table(); }
  QAccessible::State state() const override {
    QAccessible::State state = LabelDescription::state();
    state.selectable = state.focusable = AsRowTable(table_) != nullptr;
    state.selected = isSelected();
    state.focused = state.selected && table_.hasFocus() && columnIndex() == 0;
    return state;
  }

  bool isSelected() const override { return table()->tableInterface()->isRowSelected(rowIndex()); }
  QList<QAccessibleInterface*> columnHeaderCells() const override {
    QList<QAccessibleInterface*> heads;
    if (const Control* cell = ThisCell()) {
      for (const Label* head : HeadsOf(*cell)) heads += InterfaceOf(label_, head);
    }
    return heads;
  }
  QList<QAccessibleInterface*> rowHeaderCells() const override {
    return {table()->tableInterface()->cellAt(rowIndex(), 0)};
  }
  int columnIndex() const override { return Place().second; }
  int rowIndex() const override { return Place().first; }
  int columnExtent() const override { return 1; }
  int rowExtent() const override { return 1; }
  QAccessibleInterface* table() const override { return QAccessible::queryAccessibleInterface(&table_); }

 private:
  const Control* ThisCell() const {
    const auto* window = dynamic_cast<const FormWindow*>(label_.window());
    return window ? window->ControlOf(label_) : nullptr;
  }
  /// Row and column; -1: it is in none.
  std::pair<int, int> Place() const {
    const std::vector<Row> rows = RowsOf(table_);
    for (std::size_t row = 0; row < rows.size(); ++row) {
      const auto at = std::find(rows[row].begin(), rows[row].end(), ThisCell());
      if (at != rows[row].end()) return {static_cast<int>(row), static_cast<int>(at - rows[row].begin())};
    }
    return {-1, -1};
  }

  FrameWidget& table_;
};

}  // namespace

void* TableDescription::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

QString TableDescription::text(QAccessible::Text kind) const {
  if (kind != QAccessible::Name || !table_.GetFrame()) return QAccessibleWidget::text(kind);
  return AccessibleName(*table_.GetFrame());
}

QAccessibleInterface* TableDescription::child(int index) const {
  const int columns = columnCount();
  return columns == 0 ? nullptr : cellAt(index / columns, index % columns);
}

int TableDescription::indexOfChild(const QAccessibleInterface* cell) const {
  for (int index = 0; index < childCount(); ++index) {
    if (child(index) == cell) return index;
  }
  return -1;
}

QAccessibleInterface* TableDescription::cellAt(int row, int column) const {
  if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount()) return nullptr;
  return InterfaceOf(table_, RowsOf(table_)[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)]);
}

QString TableDescription::columnDescription(int column) const {
  const std::vector<Row> rows = RowsOf(table_);
  if (rows.empty() || column < 0 || column >= static_cast<int>(rows.front().size())) return {};
  const Control* cell = rows.front()[static_cast<std::size_t>(column)];
  return cell ? FromWords(ColumnHeads(*cell)) : QString();
}

QString TableDescription::rowDescription(int row) const {
  const std::vector<Row> rows = RowsOf(table_);
  if (row < 0 || row >= static_cast<int>(rows.size())) return {};
  const Control* cell = rows[static_cast<std::size_t>(row)].front();
  return cell ? FromWords(RowName(*cell)) : QString();
}

int TableDescription::rowCount() const { return static_cast<int>(RowsOf(table_).size()); }

int TableDescription::columnCount() const {
  const std::vector<Row> rows = RowsOf(table_);
  return rows.empty() ? 0 : static_cast<int>(rows.front().size());
}

QList<QAccessibleInterface*> TableDescription::selectedCells() const {
  QList<QAccessibleInterface*> cells;
  for (const int row : selectedRows()) {
    for (int column = 0; column < columnCount(); ++column) cells += cellAt(row, column);
  }
  return cells;
}

QList<int> TableDescription::selectedRows() const {
  const RowTable* rows = AsRowTable(table_);
  return rows && rows->Row > 0 ? QList<int>{rows->Row - 1} : QList<int>();
}

bool TableDescription::selectRow(int row) {
  auto* rows = dynamic_cast<RowTable*>(table_.GetFrame());
  return rows && rows->ClickRow(row + 1) == Act::Done;
}

QAccessibleInterface* DescribeLabel(LabelWidget& label) {
  for (QWidget* around = label.parentWidget(); around; around = around->parentWidget()) {
    auto* table = dynamic_cast<FrameWidget*>(around);
    if (table && table->GetFill() == Fill::Table) return new CellDescription(label, *table);
  }
  const auto* window = dynamic_cast<const FormWindow*>(label.window());
  const Control* control = window ? window->ControlOf(label) : nullptr;
  const bool heads = control && static_cast<const Label*>(control)->role == TextRole::TableHead;
  const bool leads = label.focusPolicy() != Qt::NoFocus;
  return new LabelDescription(label, leads   ? QAccessible::Link
                                     : heads ? QAccessible::ColumnHeader
                                             : QAccessible::StaticText);
}

}  // namespace vk32
