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

 private:
  void Edited(const QString& text);
  void SyncSelection();

  TextBox& box_;
};

/// Gives a field the colours of its state: disabled by its flag, or by the back colour that code has set.
void ColorField(QWidget& field, const Control& control);

}  // namespace vk32
