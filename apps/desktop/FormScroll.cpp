// A form that is larger than the room on its screen.
#include "FormScroll.h"

#include <QStyle>
#include <algorithm>

namespace vk32 {
namespace {

constexpr int Line = 24;    // that an arrow of a bar moves
constexpr int Margin = 24;  // around what is brought into view

void SetUp(QScrollBar& bar, int all, int shown) {
  bar.setRange(0, all - shown);
  bar.setPageStep(shown);
  bar.setSingleStep(Line);
  bar.setVisible(all > shown);
}

/// The nearest position at which all from `first` to `last` shows.
void Reach(QScrollBar& bar, int first, int last) {
  bar.setValue(std::min(std::max(bar.value(), last + 1 + Margin - bar.pageStep()), first - Margin));
}

}  // namespace

FormScroll::FormScroll(QWidget& window) : window_(window), across_(Qt::Horizontal, &window), down_(&window) {
  for (QScrollBar* bar : {&across_, &down_}) {
    bar->hide();
    QObject::connect(bar, &QScrollBar::valueChanged, &window, [this] { Move(); });
  }
}

void FormScroll::Fit(QSize form, QSize room) {
  const int width = window_.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  const bool tooWide = form.width() > room.width();
  const bool tooHigh = form.height() + (tooWide ? width : 0) > room.height();
  const QSize bars(tooHigh ? width : 0, tooWide ? width : 0);
  const QSize shown = form.boundedTo(room - bars);
  window_.setFixedSize(shown + bars);
  across_.setGeometry(0, shown.height(), shown.width() + bars.width(), width);  // the corner, too
  down_.setGeometry(shown.width(), 0, width, shown.height());
  SetUp(across_, form.width(), shown.width());
  SetUp(down_, form.height(), shown.height());
}

void FormScroll::BringIntoView(const QRect& place) {
  Reach(across_, place.left(), place.right());
  Reach(down_, place.top(), place.bottom());
}

void FormScroll::Raise() {
  across_.raise();
  down_.raise();
}

void FormScroll::Move() {
  const QPoint corner(across_.value(), down_.value());
  for (QObject* child : window_.children()) {
    auto* widget = qobject_cast<QWidget*>(child);
    if (widget && widget != &across_ && widget != &down_) widget->move(widget->pos() + corner_ - corner);
  }
  corner_ = corner;
}

}  // namespace vk32
