// The widget of a text box of one line.
#pragma once

#include <QLineEdit>

#include "ControlWidget.h"

namespace vk32 {

class FieldWidget : public QLineEdit, public ControlWidget {
 public:
  FieldWidget(TextBox& box, QWidget& parent);

  QWidget& AsWidget() override { return *this; }
  void Sync() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void Edited(const QString& text);
  void SyncSelection();

  TextBox& box_;
};

/// Fills the table that the control stands in from the clipboard, if that holds more than a word for one field. False:
/// it doesn't, or there is no table.
bool PasteBlock(Control& control);

/// Gives a field the colours of its state: disabled by its flag or by the back colour that code has set, or locked.
void ColorField(QWidget& field, const Control& control, bool locked);

}  // namespace vk32
