// What assistive technology is told of the widgets, and what it may do to them.
#include <QAccessible>

#include "DesktopTest.h"
#include "TerminalWidget.h"

namespace vk32 {
namespace {

class ReaderTest : public EveryTest {
 protected:
  QAccessibleInterface& Of(const Control& control) const {
    return *QAccessible::queryAccessibleInterface(&WidgetOf(control));
  }
};

TEST_F(ReaderTest, ControlsAreToldByRoleNameStateAndText) {
  form.SecondFrame.Visible = true;
  Settle();
  using enum QAccessible::Role;
  const std::tuple<const Control&, QAccessible::Role, const char*, const char*> rows[] = {
      {form.NameLbl, StaticText, "Name", ""},
      {form.SiteLbl, Link, "www.norvanta.example", ""},
      {form.LogLbl, StaticText, "", ""},
      {form.LineLbl, StaticText, "COM3, /dev/ttyS2, free", ""},
      {form.SlotLbl[1], Cell, "7", ""},
      {form.IconImg, Graphic, "VK32", ""},
      {form.MarkFrame, Client, "", ""},
      {form.FirstFrame, Pane, "", ""},
      {form.SecondFrame, Pane, "Terminal", ""},
      {form.TableFrame, Table, "Every control", ""},
      {form.PortCbo, ComboBox, "Port", "COM2"},
      {form.FreeCbo, ComboBox, "Port", ""},
      {form.OneOpt, RadioButton, "Option one", ""},
      {form.FlagChk, CheckBox, "Respond to Specific Address", ""},
      {form.AddCmd, Button, "Add Route", ""},
      {form.Term, Terminal, "Terminal", ""}};
  for (const auto& [control, role, name, value] : rows) {
    const QAccessibleInterface& told = Of(control);
    EXPECT_EQ(told.role(), role) << control.Name();
    EXPECT_EQ(told.text(QAccessible::Name).toStdString(), name) << control.Name();
    EXPECT_EQ(told.text(QAccessible::Value).toStdString(), value) << control.Name();
    EXPECT_EQ(told.state().invisible, &control == &form.LogLbl || &control == &form.MarkFrame) << control.Name();
  }
}

TEST_F(ReaderTest, SignsAndLinesSayHowTheyStand) {
  form.IconImg.Picture = Symbol::Tick;
  form.LineLbl.Chosen = true;
  Settle();
  EXPECT_EQ(Of(form.IconImg).text(QAccessible::Name), "Done");
  EXPECT_EQ(Of(form.LineLbl).text(QAccessible::Description), "chosen");
}

TEST_F(ReaderTest, ListsAreOpenedAndLinksPressed) {
  for (const auto* list : {&form.PortCbo, &form.FreeCbo}) {
    QAccessibleInterface& told = Of(*list);
    const bool editable = list == &form.FreeCbo;
    EXPECT_EQ(told.childCount(), editable ? 2 : 1);
    for (int i = 0; i < told.childCount(); ++i) EXPECT_EQ(told.indexOfChild(told.child(i)), i);
    EXPECT_FALSE(told.child(told.childCount()));
    EXPECT_EQ(told.state().editable, editable);
    EXPECT_TRUE(told.state().collapsed && !told.state().expanded && told.state().hasPopup && told.state().expandable);
    told.actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    EXPECT_TRUE(!told.state().collapsed && told.state().expanded);
    QApplication::activePopupWidget()->close();
  }
  const QAccessibleTextInterface& text = *Of(form.PortCbo).textInterface();
  EXPECT_EQ(text.text(1, 3) + QString::number(text.characterCount()), "OM4");
  Of(form.SiteLbl).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(form.TakeLog(), "down up site ");
  EXPECT_EQ(Of(form.NameLbl).actionInterface()->actionNames().size(), 0);
}

TEST_F(ReaderTest, TablesHaveRowsColumnsAndAChoice) {
  QAccessibleInterface& told = Of(form.TableFrame);
  QAccessibleTableInterface& table = *told.tableInterface();
  EXPECT_EQ(table.rowCount() * 100 + table.columnCount() * 10 + told.childCount(), 8 * 100 + 2 * 10 + 16);
  for (int i = 0; i < 16; ++i) {
    QAccessibleInterface* cell = table.cellAt(i / 2, i % 2);
    EXPECT_EQ(cell, &Of(i % 2 == 0 ? form.SlotLbl[i / 2 + 1] : form.AreaLbl[i / 2 + 1]));
    EXPECT_EQ(told.child(i), cell);
    EXPECT_EQ(told.indexOfChild(cell), i);
    EXPECT_EQ(cell->parent(), &told);
    const QAccessibleTableCellInterface& place = *cell->tableCellInterface();
    EXPECT_EQ(place.rowIndex() * 2 + place.columnIndex(), i);
    EXPECT_EQ(place.rowHeaderCells(), QList{table.cellAt(i / 2, 0)});
  }
  form.AreaLbl[8].Visible = false;
  EXPECT_FALSE(table.cellAt(7, 1));
  for (const auto& [row, column] : {std::pair(-1, 0), {8, 0}, {0, -1}, {0, 2}}) EXPECT_FALSE(table.cellAt(row, column));
  WidgetOf(form.TableFrame).setFocus();
  EXPECT_TRUE(table.selectRow(2));
  EXPECT_FALSE(table.selectColumn(0) || table.unselectRow(2) || table.unselectColumn(0) || table.isColumnSelected(0));
  table.selectRow(8);  // there is none
  Settle();
  EXPECT_EQ(form.TableFrame.Row, 3);
  EXPECT_EQ(table.selectedRows(), QList{2});
  EXPECT_EQ(table.selectedCells(), (QList{table.cellAt(2, 0), table.cellAt(2, 1)}));
  EXPECT_TRUE(table.cellAt(2, 0)->state().focused && table.cellAt(2, 1)->state().selected);
  EXPECT_FALSE(table.cellAt(2, 1)->state().focused || table.cellAt(1, 0)->state().selected);
}

TEST_F(ReaderTest, TheTerminalsTextIsReadAndSelectedByPosition) {
  for (int line = 0; line < 40; ++line) form.Term.SetSelText("line " + std::to_string(line) + "\r\n");
  form.SecondFrame.Visible = true;
  Settle();
  QAccessibleTextInterface& text = *Of(form.Term).textInterface();
  EXPECT_EQ(text.text(0, 5) + QString::number(text.characterCount()), "line 350");
  EXPECT_EQ(text.text(2, 4) + text.text(348, 999), "ne\r\n");
  EXPECT_EQ(text.cursorPosition(), 350);
  EXPECT_EQ(text.selectionCount(), 0);
  text.setSelection(0, 0, 13);
  int from = 0, to = 0;
  text.selection(0, &from, &to);
  EXPECT_EQ(from * 100 + to, 13);
  EXPECT_EQ(text.selectionCount(), 1);
  text.attributes(9, &from, &to);
  EXPECT_EQ(from * 1000 + to, 350);
  for (const int position : {0, 9, 345}) {
    text.scrollToSubstring(position, position + 1);
    Settle();
    const QRect place = text.characterRect(position);
    EXPECT_EQ(text.offsetAtPoint(place.topLeft()), position);
    EXPECT_EQ(text.offsetAtPoint(place.topRight()), position + 1);
    EXPECT_TRUE(WidgetOf(form.Term).rect().contains(WidgetOf(form.Term).mapFromGlobal(place.center()))) << position;
  }
}

}  // namespace
}  // namespace vk32
