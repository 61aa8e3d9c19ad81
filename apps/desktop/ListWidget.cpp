// The widget of a drop-down list.
#include "ListWidget.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "FieldWidget.h"
#include "Text.h"
#include "Theme.h"

namespace vk32 {
namespace {

constexpr int VisibleEntries = 12;
constexpr int TypingPause = 1000;  // ms after which a letter begins anew
constexpr int NoteLeft = 64;       // px of a note, from the list's left edge
constexpr int NoteRole = Qt::UserRole;

/// The entry or the number in it is what was typed, or begins with it: "26" leads to "COM26".
bool Matches(const QString& entry, const QString& typed, bool whole) {
  const auto digit = std::find_if(entry.begin(), entry.end(), [](QChar character) { return character.isDigit(); });
  const QString words[] = {entry, entry.mid(digit - entry.begin())};
  return std::any_of(std::begin(words), std::end(words), [&](const QString& text) {
    return text.startsWith(typed, Qt::CaseInsensitive) && (!whole || text.size() == typed.size());
  });
}

/// Draws the notes behind the entries.
class EntryDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, option, index);
    const QRect area = option.rect.adjusted(NoteLeft, 0, 0, 0);
    const bool selected = option.state & QStyle::State_Selected;
    painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    const QString note = option.fontMetrics.elidedText(index.data(NoteRole).toString(), Qt::ElideRight, area.width());
    painter->drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, note);
  }
};

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
  const auto row = static_cast<std::size_t>(index.row());
  const std::string& entry = entries_[row];
  const auto& notes = list_.Notes.Value();
  if (role == NoteRole && row < notes.size()) return FromWords(notes[row].text);
  if (role == Qt::ForegroundRole && row < notes.size() && notes[row].muted) return colors::Muted;
  if (role == Qt::DisplayRole || role == Qt::EditRole) return FromBytes(entry);
  if (role == Qt::ToolTipRole && list_.EntryToolTip) return FromWords(list_.EntryToolTip(entry));
  return {};
}

ListWidget::ListWidget(ComboBox& list, QWidget& parent) : QComboBox(&parent), list_(list), model_(list) {
  setMaxVisibleItems(VisibleEntries);
  model_.Sync();
  setModel(&model_);
  setItemDelegate(new EntryDelegate(this));
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
  moved_ = false;
  model_.Sync();
  setCurrentIndex(list_.ListIndex);
  const QString shown = FromBytes(list_.Text.Value());
  if (isEditable()) lineEdit()->setReadOnly(list_.Locked);
  if (isEditable() && currentText() != shown) setEditText(shown);
  ColorField(*this, list_, list_.Locked);
  view()->viewport()->update();
}

void ListWidget::Name(const QString& name) {
  setAccessibleName(name);
  if (isEditable()) lineEdit()->setAccessibleName(name);
}

int ListWidget::ListWidth() const { return std::max(width(), ToPixels(list_.ListWidth)); }

QString ListWidget::Tip() const {
  return FromWords(list_.EntryToolTip ? list_.EntryToolTip(ToBytes(currentText())) : list_.ToolTip.Value());
}

void ListWidget::Picked(int index) {
  const bool waits = moving_ && list_.style == ComboBox::Style::ChoiceWhenDone && !list_.Locked;
  moved_ = waits && index != list_.ListIndex;
  if (!waits) Pick(index);
}

void ListWidget::Pick(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= list_.Entries().size()) return;
  const std::string entry = list_.Entries()[static_cast<std::size_t>(index)];
  list_.Pick(entry);
  // The handler may have chosen otherwise, or refused.
  if (IsAttached()) Sync();
}

bool ListWidget::Wants(const QKeyEvent& key) const {
  return moved_ && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_Escape);
}

void ListWidget::Leave() {
  if (IsAttached() && std::exchange(moved_, false)) Pick(currentIndex());
}

void ListWidget::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  // A press of the mouse must have got through before a handler may open a box: the window leaves the list at the
  // release.
  if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::MouseFocusReason) Leave();
}

void ListWidget::showPopup() {
  if (!IsAttached()) return;
  if (!moved_) Sync();
  if (list_.Locked) return;
  view()->installEventFilter(this);
  QComboBox::showPopup();
}

void ListWidget::keyPressEvent(QKeyEvent* event) {
  if (Wants(*event)) return event->key() == Qt::Key_Escape ? Sync() : Leave();
  if (!moved_) Sync();
  const int found = isEditable() ? -1 : Search(*event, currentIndex());
  const QScopedValueRollback moving(moving_, true);
  if (found < 0) return QComboBox::keyPressEvent(event);
  if (found == currentIndex()) return;
  setCurrentIndex(found);
  Picked(found);
}

bool ListWidget::eventFilter(QObject* watched, QEvent* event) {
  if (watched != view() || event->type() != QEvent::KeyPress) return QComboBox::eventFilter(watched, event);
  const int found = Search(static_cast<QKeyEvent&>(*event), view()->currentIndex().row());
  if (found >= 0) view()->setCurrentIndex(model_.index(found));
  return found >= 0;
}

int ListWidget::Search(const QKeyEvent& key, int from) {
  const QString letter = key.text();
  const bool later = !sinceTyped_.isValid() || sinceTyped_.hasExpired(TypingPause);
  if (letter.isEmpty() || !letter[0].isPrint() || (later && letter == " ") ||
      key.modifiers() & (Qt::ControlModifier | Qt::AltModifier))
    return -1;
  sinceTyped_.start();
  const auto find = [&](int first) {
    for (const bool whole : {true, false}) {
      for (int step = 0; step < count(); ++step) {
        const int at = (first + step) % count();
        if (Matches(itemText(at), typed_, whole)) return at;
      }
    }
    return -1;
  };
  typed_ = later ? letter : typed_ + letter;
  if (const int found = find(typed_.size() == 1 ? from + 1 : 0); found >= 0) return found;
  typed_ = letter;
  return find(from + 1);
}

void ListWidget::initStyleOption(QStyleOptionComboBox* option) const {
  QComboBox::initStyleOption(option);
  option->subControls.setFlag(QStyle::SC_ComboBoxArrow, !list_.Locked);
}

void ListWidget::wheelEvent(QWheelEvent* event) {
  // The page is scrolled, and a list that lies under the pointer must not change unseen.
  event->ignore();
}

}  // namespace vk32
