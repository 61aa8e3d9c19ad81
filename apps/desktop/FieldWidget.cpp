// The widget of a text box of one line.
#include "FieldWidget.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <algorithm>

#include "Text.h"
#include "Theme.h"
#include "forms/Tables.h"

namespace vk32 {

FieldWidget::FieldWidget(TextBox& box, QWidget& parent) : QLineEdit(&parent), box_(box) {
  connect(this, &QLineEdit::textEdited, this, [this](const QString& text) { Edited(text); });
}

void FieldWidget::Sync() {
  const QString shown = FromBytes(box_.Text.Value());
  if (shown != text()) {
    const int cursor = cursorPosition();
    setText(shown);
    if (hasFocus()) setCursorPosition(std::min(cursor, static_cast<int>(shown.size())));
  }
  setReadOnly(box_.Locked);
  ColorField(*this, box_, box_.Locked);
  SyncSelection();
}

void FieldWidget::SyncSelection() {
  if (box_.SelLength > 0 && !hasSelectedText()) setSelection(box_.SelStart, box_.SelLength);
}

void FieldWidget::Edited(const QString& text) {
  const std::string bytes = ToBytes(text);
  box_.Type(bytes);
  if (IsAttached() && static_cast<std::size_t>(text.size()) != bytes.size()) Sync();
}

void FieldWidget::keyPressEvent(QKeyEvent* event) {
  const std::string typed = ToBytes(event->text());
  const bool isCharacter = typed.size() == 1 && static_cast<unsigned char>(typed[0]) >= ' ' && typed[0] != '\x7F' &&
                           !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
  if (!box_.OnKeyPress || !isCharacter || isReadOnly()) return QLineEdit::keyPressEvent(event);
  // The filter sees the key before it gets into the text.
  box_.SelStart = hasSelectedText() ? selectionStart() : cursorPosition();
  box_.SelLength = static_cast<int>(selectedText().size());
  box_.Key(typed[0]);
  if (!IsAttached()) return;
  setText(FromBytes(box_.Text.Value()));
  setCursorPosition(box_.SelStart);
}

void FieldWidget::contextMenuEvent(QContextMenuEvent* event) {
  QMenu* menu = createStandardContextMenu();
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const QString pasteKey = QKeySequence(QKeySequence::Paste).toString(QKeySequence::NativeText);
  for (QAction* action : menu->actions()) {
    if (!action->text().endsWith(pasteKey)) continue;  // Qt 6.4 gives the actions no names
    disconnect(action, nullptr, this, nullptr);
    connect(action, &QAction::triggered, this, [this] {
      if (IsAttached() && !PasteBlock(box_)) QLineEdit::paste();
    });
  }
  menu->popup(event->globalPos());
}

bool PasteBlock(Control& control) {
  const std::string text = ToBytes(QGuiApplication::clipboard()->text());
  return IsBlock(text) && control.PasteBlock(text) != Act::NotThisKind;
}

void ColorField(QWidget& field, const Control& control, bool locked) {
  const bool disabled = !field.isEnabled() || control.BackColor == colors::DisabledFieldBack;
  const QColor back = disabled ? colors::DisabledField : locked ? colors::Side : colors::Page;
  const QColor border = locked ? colors::Hairline : colors::Border;
  QColor text = disabled ? colors::DisabledFieldText : colors::Text;
  if (control.ForeColor != SystemButtonText) text = colors::FromForm(control.ForeColor);
  QPalette palette = field.palette();
  if (palette.color(QPalette::Base) == back && palette.color(QPalette::Text) == text) return;
  palette.setColor(QPalette::Base, back);
  palette.setColor(QPalette::Dark, border);
  palette.setColor(QPalette::Text, text);
  field.setPalette(palette);
}

}  // namespace vk32
