// The widget of a drop-down list.
#include "ListWidget.h"

#include <QLineEdit>
#include <QListView>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "FieldWidget.h"
#include "Text.h"

namespace vk32 {
namespace {

constexpr int VisibleEntries = 12;

}  // namespace

bool EntryModel::Sync() {
  if (entries_ == list_.Entries()) return false;
  beginResetModel();
  entries_ = list_.Entries();
  endResetModel();
  return true;
}

int EntryModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

QVariant EntryModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const std::string& entry = entries_[static_cast<std::size_t>(index.row())];
  if (role == Qt::DisplayRole || role == Qt::EditRole) return FromBytes(entry);
  if (role == Qt::ToolTipRole && list_.EntryToolTip) return FromWords(list_.EntryToolTip(entry));
  return {};
}

ListWidget::ListWidget(ComboBox& list, QWidget& parent) : QComboBox(&parent), list_(list), model_(list) {
  setMaxVisibleItems(VisibleEntries);
  model_.Sync();
  setModel(&model_);
  if (list_.style == ComboBox::Style::WithTextPart) {
    setEditable(true);
    setCompleter(nullptr);
    setInsertPolicy(QComboBox::NoInsert);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) { list_.Type(ToBytes(text)); });
  }
  connect(this, &QComboBox::activated, this, [this](int index) { Picked(index); });
}

void ListWidget::Sync() {
  const QSignalBlocker blocker(this);
  model_.Sync();
  setCurrentIndex(list_.ListIndex);
  const QString shown = FromBytes(list_.Text.Value());
  if (isEditable()) lineEdit()->setReadOnly(list_.Locked);
  if (isEditable() && currentText() != shown) setEditText(shown);
  ColorField(*this, list_);
  update();
}

QString ListWidget::Tip() const {
  return FromWords(list_.EntryToolTip ? list_.EntryToolTip(list_.Text.Value()) : list_.ToolTip.Value());
}

void ListWidget::Picked(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= list_.Entries().size()) return;
  const std::string entry = list_.Entries()[static_cast<std::size_t>(index)];
  list_.Pick(entry);
  // The handler may have chosen otherwise, or refused.
  if (IsAttached()) Sync();
}

void ListWidget::showPopup() {
  Sync();
  if (!list_.Locked) QComboBox::showPopup();
}

void ListWidget::keyPressEvent(QKeyEvent* event) {
  Sync();
  QComboBox::keyPressEvent(event);
}

void ListWidget::wheelEvent(QWheelEvent* event) {
  // A list that only lies under the pointer must not change while the page is scrolled.
  if (hasFocus()) {
    QComboBox::wheelEvent(event);
  } else {
    event->ignore();
  }
}

}  // namespace vk32
