// The widget of a drop-down list.
#pragma once

#include <QAbstractListModel>
#include <QComboBox>
#include <string>
#include <vector>

#include "ControlWidget.h"

namespace vk32 {

/// The entries of a list, as they were when it was last looked at.
class EntryModel : public QAbstractListModel {
 public:
  explicit EntryModel(const ComboBox& list) : list_(list) {}

  /// Takes new entries over. False: there are none.
  bool Sync();

  int rowCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  const ComboBox& list_;
  std::vector<std::string> entries_;
};

class ListWidget : public QComboBox, public ControlWidget {
 public:
  ListWidget(ComboBox& list, QWidget& parent);

  QWidget& AsWidget() override { return *this; }
  void Sync() override;
  QString Tip() const override;

 protected:
  void showPopup() override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void Picked(int index);

  ComboBox& list_;
  EntryModel model_;
};

}  // namespace vk32
