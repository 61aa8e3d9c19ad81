// The widget of a label.
#include "LabelWidget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "Navigation.h"
#include "Text.h"
#include "Theme.h"

namespace vk32 {
namespace {

/// Higher than this, a text begins at the top and wraps; else it is one line, centred beside its field or sign.
constexpr int OneLineHeight = 360;        // twips
constexpr int TwoSmallLinesHeight = 480;  // twips

bool MayWrap(const Label& label) {
  switch (label.role) {
    case TextRole::TableHead: return true;
    case TextRole::Body:
    case TextRole::BodyLink:
    case TextRole::Heading:
    case TextRole::HeadingLink:
    case TextRole::Muted:
    case TextRole::Step: return label.Height > OneLineHeight;
    case TextRole::Small: return label.Height >= TwoSmallLinesHeight;
    case TextRole::Title:
    case TextRole::Product:
    case TextRole::TableText:
    case TextRole::TablePath:
    case TextRole::TableName:
    case TextRole::MutedRight:
    case TextRole::SplashName:
    case TextRole::SplashSubtitle:
    case TextRole::BandName:
    case TextRole::BandText:
    case TextRole::BandSubtitle:
    case TextRole::Link: break;
  }
  return false;
}

Wrapping WrappingOf(const Label& label) {
  if (MayWrap(label)) return Wrapping::Words;
  return label.role == TextRole::TablePath ? Wrapping::NoneCutAtStart : Wrapping::None;
}

}  // namespace

LabelWidget::LabelWidget(Label& label, QWidget& parent, Theme& theme) : QLabel(&parent), label_(label), theme_(theme) {
  setTextFormat(Qt::PlainText);
  if (IsLink(label_)) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
  }
}

void LabelWidget::Sync() {
  const QString words = FromWords(label_.Caption.Value());
  const QColor color = TextColor();
  if (words == text() && color == color_) return;
  setText(words);
  color_ = color;
  block_.reset();
  update();
}

const TextBlock& LabelWidget::Block() const {
  if (!block_) block_.emplace(text(), theme_.Font(label_.role), width(), WrappingOf(label_));
  return *block_;
}

Qt::Alignment LabelWidget::Alignment() const {
  if (label_.role == TextRole::TableHead) return Qt::AlignLeft | Qt::AlignBottom;
  const bool right = label_.role == TextRole::Link || label_.role == TextRole::BandText;
  if (right || label_.role == TextRole::MutedRight) return Qt::AlignRight | Qt::AlignVCenter;
  return Qt::AlignLeft | (MayWrap(label_) ? Qt::AlignTop : Qt::AlignVCenter);
}

QColor LabelWidget::TextColor() const {
  if (theme_.highContrast && label_.role == TextRole::Step && label_.ForeColor == StepOther) {
    return colors::OtherStepOnContrast;
  }
  if (label_.ForeColor != SystemButtonText) return colors::FromForm(label_.ForeColor);
  return isEnabled() ? colors::OfRole(label_.role) : colors::Disabled;
}

ControlWidget::Ring LabelWidget::FocusRing() const {
  if (!IsLink(label_)) return {};
  return {LinePlace(), 2, label_.role == TextRole::Link};
}

QString LabelWidget::Tip() const { return Block().IsCut() ? text() : QString(); }

void LabelWidget::ShowMark(QChar mark) {
  if (mark == mark_) return;
  mark_ = mark;
  update();
}

void LabelWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const TextBlock& block = Block();
  block.Draw(painter, rect(), Alignment(), color_, mark_);
  if (!IsLink(label_)) return;
  const QRect line = LinePlace();
  const int baseline = static_cast<int>(height() / 2.0 + 0.36 * theme_.Font(label_.role).pixelSize());
  painter.fillRect(line.left(), baseline + 2, line.width(), 1, color_);
}

QRect LabelWidget::LinePlace() const {
  const int textWidth = Block().Width();
  return {Alignment() & Qt::AlignRight ? width() - textWidth : 0, 0, textWidth, height()};
}

void LabelWidget::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  block_.reset();
}

bool LabelWidget::TakesMouse() const {
  return IsAttached() && (label_.OnClick || label_.OnMouseDown || label_.OnMouseUp);
}

void LabelWidget::mousePressEvent(QMouseEvent* event) {
  if (!TakesMouse()) return event->ignore();
  if (held_ != Qt::NoButton) return;
  held_ = event->button();
  label_.Press();
}

void LabelWidget::mouseReleaseEvent(QMouseEvent* event) {
  if (!TakesMouse()) return event->ignore();
  if (event->button() != held_) return;
  LetGo();
  if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()) && IsAttached()) {
    label_.Click();
  }
}

void LabelWidget::mouseMoveEvent(QMouseEvent* event) {
  if (!label_.OnMouseMove) return event->ignore();
  label_.MouseMove();
}

void LabelWidget::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (!event->isAutoRepeat()) Activate();
  } else {
    QLabel::keyPressEvent(event);
  }
}

void LabelWidget::Activate() {
  if (IsAttached()) label_.Press();
  if (IsAttached()) label_.Release();
  if (IsAttached()) label_.Click();
}

void LabelWidget::LetGo() {
  if (held_ == Qt::NoButton || !IsAttached()) return;
  held_ = Qt::NoButton;
  label_.Release();
}

}  // namespace vk32
