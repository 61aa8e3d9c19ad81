// The widget of a line of a list to pick from.
#pragma once

#include "LabelWidget.h"

namespace vk32 {

class RowWidget : public LabelWidget {
 public:
  RowWidget(RowLabel& row, QWidget& parent, Theme& theme) : LabelWidget(row, parent, theme), row_(row), theme_(theme) {}

  void Sync() override;
  QString Tip() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Cell {
    QRect place;
    TextBlock text;
  };
  Cell CellOf(std::size_t column) const;

  RowLabel& row_;
  Theme& theme_;
};

}  // namespace vk32
