// The widget of a line of a list to pick from.
#include "RowWidget.h"

#include <QPainter>

#include "Text.h"
#include "Theme.h"

namespace vk32 {
namespace {

constexpr int MarkWidth = 4;  // of a chosen row
constexpr int Gap = 4;        // between two columns

}  // namespace

void RowWidget::Sync() {
  LabelWidget::Sync();
  setAccessibleName(text().replace(u'\t', QStringLiteral(", ")));
  setAccessibleDescription(row_.Chosen ? QStringLiteral("chosen") : QString());
  update();
}

RowWidget::Cell RowWidget::CellOf(std::size_t column) const {
  const auto leftOf = [this](std::size_t of) {
    if (of == row_.columns.size()) return width() + Gap;
    const int left = ToPixels(row_.columns[of].left);
    return left < 0 ? width() + left : left;
  };
  const QRect place(leftOf(column), 0, leftOf(column + 1) - Gap - leftOf(column), height());
  const QString words = text().section(u'\t', static_cast<qsizetype>(column), static_cast<qsizetype>(column));
  return {place, TextBlock(words, theme_.Font(row_.columns[column].role), place.width(), Wrapping::None)};
}

QString RowWidget::Tip() const {
  for (std::size_t column = 0; column < row_.columns.size(); ++column) {
    if (CellOf(column).text.IsCut()) return accessibleName();
  }
  return {};
}

void RowWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (row_.Chosen) {
    painter.fillRect(rect(), colors::Track);
    painter.fillRect(0, 0, MarkWidth, height(), colors::Filled);
  }
  for (std::size_t column = 0; column < row_.columns.size(); ++column) {
    const Cell cell = CellOf(column);
    cell.text.Draw(painter, cell.place, Qt::AlignLeft | Qt::AlignVCenter, colors::OfRole(row_.columns[column].role));
  }
}

}  // namespace vk32
