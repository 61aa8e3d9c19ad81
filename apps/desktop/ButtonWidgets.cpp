// The widgets of the buttons.
#include "ButtonWidgets.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "Drawing.h"
#include "Text.h"
#include "TextBlock.h"
#include "Theme.h"
#include "resources/Pictures.h"

namespace vk32 {
namespace {

constexpr QSize KeyTipSize(15, 14);

bool Presses(const QKeyEvent& event) {
  return event.key() == Qt::Key_Space || event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace

PushWidget::PushWidget(QWidget& parent) : QAbstractButton(&parent) {
  setFocusPolicy(Qt::StrongFocus);
  // Comes from assistive technology alone: mouse and keys are handled here.
  connect(this, &QAbstractButton::clicked, this, [this] { Activate(); });
}

void PushWidget::Hold(HeldBy by) {
  heldBy_ = by;
  Press();
}

void PushWidget::Activate() {
  if (IsAttached()) Press();
  if (IsAttached()) Release();
  if (IsAttached()) Click();
}

void PushWidget::LetGo() {
  if (heldBy_ == HeldBy::Nobody || !IsAttached()) return;
  heldBy_ = HeldBy::Nobody;
  Release();
}

void PushWidget::mousePressEvent(QMouseEvent* event) {
  if (heldBy_ != HeldBy::Nobody) return;
  heldWith_ = event->button();
  Hold(HeldBy::Mouse);
}

void PushWidget::mouseMoveEvent(QMouseEvent* event) {
  if (heldBy_ != HeldBy::Mouse) event->ignore();
}

void PushWidget::mouseReleaseEvent(QMouseEvent* event) {
  if (heldBy_ != HeldBy::Mouse || static_cast<int>(event->button()) != heldWith_) return;
  LetGo();
  const bool inside = rect().contains(event->position().toPoint());
  if (event->button() == Qt::LeftButton && inside && IsAttached()) Click();
}

void PushWidget::keyPressEvent(QKeyEvent* event) {
  if (!Presses(*event)) return event->ignore();
  if (event->isAutoRepeat() || heldBy_ != HeldBy::Nobody) return;
  heldWith_ = event->key();
  Hold(HeldBy::Key);
}

void PushWidget::keyReleaseEvent(QKeyEvent* event) {
  if (!Presses(*event)) return event->ignore();
  if (event->isAutoRepeat() || heldBy_ != HeldBy::Key || event->key() != heldWith_) return;
  LetGo();
  if (IsAttached()) Click();
}

void PushWidget::focusOutEvent(QFocusEvent* event) {
  if (heldBy_ == HeldBy::Key) LetGo();
  QAbstractButton::focusOutEvent(event);
}

void PushWidget::hideEvent(QHideEvent* event) {
  LetGo();
  QAbstractButton::hideEvent(event);
}

PictureButtonWidget::PictureButtonWidget(ImageButton& button, QWidget& parent, Theme& theme)
    : PushWidget(parent), button_(button), theme_(theme) {}

void PictureButtonWidget::Sync() { update(); }

void PictureButtonWidget::ShowMark(QChar mark) {
  if (mark == mark_) return;
  mark_ = mark;
  update();
}

void PictureButtonWidget::paintEvent(QPaintEvent*) {
  const int picture = button_.Picture;
  if (!FindPicture(picture)) return;
  QPainter painter(this);
  painter.drawPixmap(0, 0, theme_.ButtonPicture(picture, size(), isEnabled(), devicePixelRatioF()));
  if (!mark_.isNull()) DrawKeyTip(painter);
}

void PictureButtonWidget::DrawKeyTip(QPainter& painter) const {
  // The words are a part of the picture, so that none of their letters can be underlined.
  const QRect place(QPoint(width() - KeyTipSize.width() - 1, 1), KeyTipSize);
  DrawBox(painter, place, 3, colors::Page, colors::Text);
  painter.setFont(theme_.Font(TextRole::TableText));
  painter.setPen(colors::Page);
  painter.drawText(place, Qt::AlignCenter, mark_);
}

void PictureButtonWidget::Press() { button_.Press(); }
void PictureButtonWidget::Release() { button_.Release(); }
void PictureButtonWidget::Click() { button_.Click(); }

CommandButtonWidget::CommandButtonWidget(CommandButton& button, QWidget& parent, Theme& theme)
    : PushWidget(parent), button_(button), theme_(theme) {}

void CommandButtonWidget::Sync() { update(); }

void CommandButtonWidget::ShowMark(QChar mark) {
  if (mark == mark_) return;
  mark_ = mark;
  update();
}

void CommandButtonWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DrawButtonFace(painter, rect(), pressed_, isEnabled());
  const TextBlock words(FromWords(button_.Caption.Value()), theme_.Font(TextRole::Body), width(), Wrapping::None);
  words.Draw(painter, rect().translated(0, pressed_ ? 1 : 0), Qt::AlignHCenter | Qt::AlignVCenter,
             isEnabled() ? colors::Text : colors::Disabled, mark_);
}

void CommandButtonWidget::Press() {
  pressed_ = true;
  update();
}

void CommandButtonWidget::Release() {
  pressed_ = false;
  update();
}

void CommandButtonWidget::Click() { button_.Click(); }

}  // namespace vk32
