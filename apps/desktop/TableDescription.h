// Tables as assistive technology is told of them, worked out from the labels that lie in a table's frame.
#pragma once

#include <QAccessibleWidget>

#include "AreaWidgets.h"
#include "LabelWidget.h"

namespace vk32 {

/// Rows and columns are counted from 0. A row without words is none.
class TableDescription : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit TableDescription(FrameWidget& table) : QAccessibleWidget(&table, QAccessible::Table), table_(table) {}

  void* interface_cast(QAccessible::InterfaceType type) override;
  QString text(QAccessible::Text kind) const override;
  int childCount() const override { return rowCount() * columnCount(); }
  QAccessibleInterface* child(int index) const override;
  int indexOfChild(const QAccessibleInterface* cell) const override;

  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override;
  QString columnDescription(int column) const override;
  QString rowDescription(int row) const override;
  int rowCount() const override;
  int columnCount() const override;
  int selectedCellCount() const override { return selectedRowCount() * columnCount(); }
  QList<QAccessibleInterface*> selectedCells() const override;
  int selectedColumnCount() const override { return 0; }
  int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
  QList<int> selectedColumns() const override { return {}; }
  QList<int> selectedRows() const override;
  bool isColumnSelected(int) const override { return false; }
  bool isRowSelected(int row) const override { return selectedRows().contains(row); }
  bool selectRow(int row) override;
  bool selectColumn(int) override { return false; }
  bool unselectRow(int) override { return false; }
  bool unselectColumn(int) override { return false; }
  void modelChange(QAccessibleTableModelChangeEvent*) override {}

 private:
  FrameWidget& table_;
};

/// A label; as a cell, if it lies in a table's frame.
QAccessibleInterface* DescribeLabel(LabelWidget& label);

}  // namespace vk32
