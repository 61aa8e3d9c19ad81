// The widget of a drop-down list.
#pragma once

#include <QAbstractListModel>
#include <QComboBox>
#include <QElapsedTimer>
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
  void Name(const QString& name) override;
  QString Tip() const override;
  bool Wants(const QKeyEvent& key) const override;
  void Leave() override;
  void showPopup() override;

  /// Of the opened list, in pixels.
  int ListWidth() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void initStyleOption(QStyleOptionComboBox* option) const override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void Picked(int index);
  void Pick(int index);
  /// The entry that the letters lead to, with what was typed shortly before; -1: none, or the key is no letter.
  int Search(const QKeyEvent& key, int from);

  ComboBox& list_;
  EntryModel model_;
  QString typed_;
  QElapsedTimer sinceTyped_;
  bool moving_ = false;  // a key of the closed list is at work
  bool moved_ = false;   // the entry that shows has not been chosen yet
};

}  // namespace vk32
