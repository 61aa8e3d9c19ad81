// The widgets of frames and of pictures.
#include "AreaWidgets.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QPainter>
#include <map>
#include <utility>

#include "BarWidgets.h"
#include "Drawing.h"
#include "FormWindow.h"
#include "Navigation.h"
#include "Text.h"
#include "Theme.h"

namespace vk32 {
namespace {

constexpr int RowHeight = 32;  // of a table, its hairline included

QColor FillColor(Fill fill) {
  switch (fill) {
    case Fill::Side: return colors::Side;
    case Fill::Band: return colors::Band;
    case Fill::Hairline: return colors::Hairline;
    case Fill::Accent: return colors::Accent;
    case Fill::Table:
    case Fill::List: return colors::Page;
    case Fill::ChosenRow: return colors::Track;
    case Fill::ChosenMark: return colors::Filled;
    case Fill::None: break;
  }
  return Qt::transparent;
}

bool IsOutlined(const QObject& child) {
  if (const auto* frame = dynamic_cast<const FrameWidget*>(&child)) return frame->IsOutlined();
  const auto* bar = dynamic_cast<const ScrollBarWidget*>(&child);
  return bar && bar->Ground() == Fill::Table;
}

}  // namespace

FrameWidget::FrameWidget(Frame& frame, QWidget& parent) : QWidget(&parent), frame_(frame) {}

void FrameWidget::paintEvent(QPaintEvent*) {
  if (frame_.fill != Fill::None) QPainter(this).fillRect(rect(), FillColor(frame_.fill));
  if (frame_.fill == Fill::Table) DrawRowLines();
  DrawOutlines(*this);
}

void FrameWidget::DrawRowLines() {
  // The rows lie in an inner frame that slides.
  int top = 0;
  for (const QObject* child : children()) {
    if (const auto* inner = dynamic_cast<const FrameWidget*>(child)) top = inner->y() % RowHeight;
  }
  QPainter painter(this);
  for (int bottom = top + RowHeight; bottom < height(); bottom += RowHeight) {
    painter.fillRect(0, bottom - 1, width(), 1, colors::Hairline);
  }
}

QString FrameWidget::Heading() const {
  if (!IsAttached()) return {};
  const Control& area = frame_;
  for (const Control* control : area.OwnerForm().Controls()) {
    if (control->Parent() == &frame_ && IsHeading(*control)) return FromWords(control->Words());
  }
  return {};
}

void FrameWidget::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (IsOutlined()) parentWidget()->update();
}

void FrameWidget::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (IsOutlined()) parentWidget()->update();
}

RowTableWidget::RowTableWidget(RowTable& table, QWidget& parent) : FrameWidget(table, parent), table_(table) {
  setFocusPolicy(Qt::StrongFocus);
}

void RowTableWidget::Sync() {
  const int row = table_.Row;
  if (row == std::exchange(told_, row) || row == 0 || !hasFocus()) return;
  const auto* window = dynamic_cast<const FormWindow*>(this->window());
  QWidget* cell = window ? window->WidgetOf(*table_.Cells(row).front()) : nullptr;
  if (!cell) return;
  QAccessibleEvent chosen(cell, QAccessible::Focus);
  QAccessible::updateAccessibility(&chosen);
}

ControlWidget::Ring RowTableWidget::FocusRing() const {
  const int right = ToPixels(table_.bar.Left + table_.bar.Width - table_.Left);
  return {{0, 0, right, height()}, 0, false, 1};
}

void RowTableWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) table_.ClickRow(table_.RowAt(ToTwips(event->position().toPoint().y())));
}

void RowTableWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
  const bool onRow = IsAttached() && table_.RowAt(ToTwips(event->position().toPoint().y())) == table_.Row;
  opens_ = onRow && event->button() == Qt::LeftButton;
}

void RowTableWidget::mouseReleaseEvent(QMouseEvent*) {
  // An editor must not open under a button that is still down.
  if (std::exchange(opens_, false) && IsAttached()) table_.Open();
}

void DrawOutlines(QWidget& parent) {
  for (const QObject* child : parent.children()) {
    if (!IsOutlined(*child)) continue;
    const auto& widget = static_cast<const QWidget&>(*child);
    if (!widget.isHidden()) QPainter(&parent).fillRect(widget.geometry().adjusted(-1, -1, 1, 1), colors::Hairline);
  }
}

void PictureWidget::Sync() {
  static const std::map<Symbol, QString> names{{Symbol::Icon, QStringLiteral("VK32")},
                                               {Symbol::Tick, QStringLiteral("Done")},
                                               {Symbol::Cross, QStringLiteral("Failed")}};
  setAccessibleName(names.at(image_.Picture));
  update();
}

void PictureWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (image_.Picture != Symbol::Icon) return DrawSign(painter, rect(), image_.Picture == Symbol::Tick);
  const qreal scale = devicePixelRatioF();
  if (icon_.size() != size() * scale) icon_ = theme_.Icon(size(), scale);
  painter.drawPixmap(0, 0, icon_);
}

}  // namespace vk32
