// The widgets of check boxes and options.
#include "MarkWidgets.h"

#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>

#include "Drawing.h"
#include "Navigation.h"
#include "Text.h"
#include "Theme.h"

namespace vk32 {
namespace {

constexpr int BoxSize = 15, WordsLeft = ToPixels(BareMarkWidth);

QRect BoxPlace(const QWidget& widget) { return {0, (widget.height() - BoxSize) / 2, BoxSize, BoxSize}; }

bool IsOn(const CheckBox& box) { return box.Value == 1; }
bool IsOn(const OptionButton& option) { return option.Value; }

struct MarkColors {
  QColor border, face, mark;
};

MarkColors ColorsOf(const QAbstractButton& button) {
  const QColor strong = button.isEnabled() ? colors::Text : colors::Disabled;
  const QColor border = button.isEnabled() ? colors::Border : colors::Hairline;
  return button.isChecked() ? MarkColors{strong, strong, colors::Page} : MarkColors{border, colors::Page, strong};
}

}  // namespace

template <class Button, class MarkControl>
MarkWidget<Button, MarkControl>::MarkWidget(MarkControl& control, QWidget& parent, Theme& theme)
    : Button(&parent), control_(control), theme_(theme) {
  this->setFocusPolicy(Qt::StrongFocus);
  QObject::connect(this, &QAbstractButton::clicked, this, [this] { Clicked(); });
  // The box is only toggled from outside by assistive technology: that is a click as well.
  QObject::connect(this, &QAbstractButton::toggled, this, [this] { Clicked(); });
}

template <class Button, class MarkControl>
void MarkWidget<Button, MarkControl>::Clicked() {
  if (IsAttached()) control_.Click();
  if (IsAttached()) Sync();
}

template <class Button, class MarkControl>
void MarkWidget<Button, MarkControl>::Sync() {
  const QSignalBlocker blocker(this);
  this->setChecked(IsOn(control_));
  this->update();
}

template <class Button, class MarkControl>
bool MarkWidget<Button, MarkControl>::ShowsWords() const {
  return this->width() > ToPixels(BareMarkWidth);
}

template <class Button, class MarkControl>
TextBlock MarkWidget<Button, MarkControl>::Words() const {
  return {FromWords(control_.Caption.Value()), theme_.Font(TextRole::Body), this->width() - WordsLeft,
          control_.Height > 315 ? Wrapping::Words : Wrapping::None};
}

template <class Button, class MarkControl>
ControlWidget::Ring MarkWidget<Button, MarkControl>::FocusRing() const {
  QRect area = BoxPlace(*this);
  if (ShowsWords() && !control_.Caption.Value().empty()) {
    const TextBlock words = Words();
    const int height = std::min(std::max(words.Height(), BoxSize), this->height());
    area = QRect(0, (this->height() - height) / 2, WordsLeft + words.Width(), height);
  }
  return {area, 2, false};
}

template <class Button, class MarkControl>
void MarkWidget<Button, MarkControl>::ShowMark(QChar mark) {
  if (mark == mark_) return;
  mark_ = mark;
  this->update();
}

template <class Button, class MarkControl>
QString MarkWidget<Button, MarkControl>::Tip() const {
  return ShowsWords() && Words().IsCut() ? FromWords(control_.Caption.Value()) : QString();
}

template <class Button, class MarkControl>
void MarkWidget<Button, MarkControl>::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DrawMark(painter, BoxPlace(*this));
  if (!ShowsWords()) return;
  QColor color = this->isEnabled() ? colors::Text : colors::Disabled;
  if (control_.ForeColor != SystemButtonText) color = colors::FromForm(control_.ForeColor);
  Words().Draw(painter, this->rect().adjusted(WordsLeft, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, color, mark_);
}

void CheckWidget::DrawMark(QPainter& painter, const QRectF& box) const {
  const MarkColors look = ColorsOf(*this);
  DrawBox(painter, box, 3, look.border, look.face);
  if (!isChecked()) return;
  const QPointF points[] = {box.topLeft() + QPointF(3.5, 7.5), box.topLeft() + QPointF(6.5, 10.5),
                            box.topLeft() + QPointF(11.5, 4.5)};
  painter.setPen(QPen(look.mark, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(points, 3);
}

OptionWidget::OptionWidget(OptionButton& option, QWidget& parent, Theme& theme) : MarkWidget(option, parent, theme) {
  // The form clears the others, not Qt; yet only what is exclusive is told to be a radio button.
  alone_.setExclusive(false);
  alone_.addButton(this);
}

void OptionWidget::DrawMark(QPainter& painter, const QRectF& box) const {
  const MarkColors look = ColorsOf(*this);
  DrawBox(painter, box, BoxSize / 2.0, look.border, look.face);
  if (!isChecked()) return;
  painter.setPen(Qt::NoPen);
  painter.setBrush(look.mark);
  painter.drawEllipse(box.center(), 3, 3);
}

template class MarkWidget<QCheckBox, CheckBox>;
template class MarkWidget<QRadioButton, OptionButton>;

}  // namespace vk32
