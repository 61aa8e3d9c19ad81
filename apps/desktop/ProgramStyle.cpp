// How fields, lists and scroll bars are drawn.
#include "ProgramStyle.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>

#include "BarWidgets.h"
#include "Drawing.h"
#include "ListWidget.h"
#include "Theme.h"

namespace vk32 {
namespace {

constexpr int FieldTextLeft = 8;  // of a field's text, from its left edge
constexpr int ListButtonWidth = 24;
constexpr int LineEditMargin = 2;  // that QLineEdit adds by itself
constexpr int ScrollBarWidth = 20, ThumbMargin = 4, ArrowLength = 20, ShortestThumb = 24;
constexpr int EntryHeight = 22;

bool Has(const QStyleOption& option, QStyle::StateFlag flag) { return option.state & flag; }

void DrawField(QPainter& painter, const QStyleOption& option, bool focused) {
  const double thickness = focused ? 2 : 1;
  DrawBox(painter, option.rect, 3, focused ? colors::Text : option.palette.color(QPalette::Dark),
          option.palette.color(QPalette::Base), thickness, thickness);
}

void DrawList(QPainter& painter, const QStyleOptionComboBox& option, bool focused) {
  DrawField(painter, option, focused);
  if (!option.subControls.testFlag(QStyle::SC_ComboBoxArrow)) return;
  const QRect area = option.rect;
  const QColor color = Has(option, QStyle::State_Enabled) ? colors::Text : colors::Disabled;
  DrawChevron(painter, QPointF(area.right() + 1 - 14, area.top() + area.height() / 2.0), Direction::Down, color);
}

QRect Groove(const QStyleOptionSlider& bar) {
  return bar.orientation == Qt::Vertical ? bar.rect.adjusted(0, ArrowLength, 0, -ArrowLength)
                                         : bar.rect.adjusted(ArrowLength, 0, -ArrowLength, 0);
}

/// The thumb's start and length along the groove.
std::pair<int, int> Thumb(const QStyleOptionSlider& bar, int grooveLength) {
  const qint64 range = static_cast<qint64>(bar.maximum) - bar.minimum;
  if (range <= 0) return {0, grooveLength};
  const auto share = static_cast<int>(grooveLength * static_cast<qint64>(bar.pageStep) / (range + bar.pageStep));
  const int length = std::clamp(share, std::min(ShortestThumb, grooveLength), grooveLength);
  const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition, grooveLength - length,
                                                    bar.upsideDown);
  return {start, length};
}

QRect ScrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part) {
  const QRect groove = Groove(bar);
  const bool vertical = bar.orientation == Qt::Vertical;
  const int length = vertical ? groove.height() : groove.width();
  const auto [start, thumb] = Thumb(bar, length);
  const auto along = [&](int from, int size) {
    return vertical ? QRect(groove.left(), groove.top() + from, groove.width(), size)
                    : QRect(groove.left() + from, groove.top(), size, groove.height());
  };
  switch (part) {
    case QStyle::SC_ScrollBarGroove: return groove;
    case QStyle::SC_ScrollBarSlider: return along(start, thumb);
    case QStyle::SC_ScrollBarSubPage: return along(0, start);
    case QStyle::SC_ScrollBarAddPage: return along(start + thumb, length - start - thumb);
    case QStyle::SC_ScrollBarSubLine: return along(-ArrowLength, ArrowLength);
    case QStyle::SC_ScrollBarAddLine: return along(length, ArrowLength);
    default: return {};
  }
}

/// `onBand`: it lies on the dark area that it moves.
void DrawScrollBar(QPainter& painter, const QStyleOptionSlider& bar, bool onBand) {
  if (!onBand) painter.fillRect(bar.rect, colors::Track);
  const bool vertical = bar.orientation == Qt::Vertical;
  if (bar.maximum > bar.minimum) {
    const QRect slider = ScrollBarPart(bar, QStyle::SC_ScrollBarSlider);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(onBand ? colors::Border : colors::Thumb);
    painter.drawRoundedRect(
        vertical ? slider.adjusted(ThumbMargin, 0, -ThumbMargin, 0) : slider.adjusted(0, ThumbMargin, 0, -ThumbMargin),
        4, 4);
  }
  if (vertical) {
    const QRectF area = bar.rect;
    const QColor arrow = onBand ? colors::TerminalText : colors::Text;
    DrawChevron(painter, QPointF(area.center().x(), area.top() + 10), Direction::Up, arrow);
    DrawChevron(painter, QPointF(area.center().x(), area.bottom() - 10), Direction::Down, arrow);
  }
  if (Has(bar, QStyle::State_HasFocus)) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(onBand ? colors::OnBandStrong : colors::Text, 2));
    painter.drawRect(QRectF(bar.rect).adjusted(1, 1, -1, -1));
  }
}

}  // namespace

ProgramStyle::ProgramStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

QStyle* ProgramStyle::Make() { return new ProgramStyle; }

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
  if (element == PE_PanelLineEdit) {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (frame && frame->lineWidth > 0) {
      painter->save();
      DrawField(*painter, *option, Has(*option, State_HasFocus));
      painter->restore();
    }
    return;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void ProgramStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  if (element == CE_ComboBoxLabel) {
    const auto* list = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (!list || list->editable) return;
    const QRect area = subControlRect(CC_ComboBox, list, SC_ComboBoxEditField, widget);
    const QString text = list->fontMetrics.elidedText(list->currentText, Qt::ElideRight, area.width());
    painter->setPen(list->palette.color(QPalette::Text));
    painter->drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
    return;
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

void ProgramStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                      const QWidget* widget) const {
  painter->save();
  if (const auto* list = qstyleoption_cast<const QStyleOptionComboBox*>(option); control == CC_ComboBox && list) {
    DrawList(*painter, *list, widget && widget->hasFocus());
  } else if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option); control == CC_ScrollBar && bar) {
    QStyleOptionSlider shown = *bar;
    shown.state.setFlag(State_HasFocus, widget && widget->hasFocus());
    const auto* own = dynamic_cast<const ScrollBarWidget*>(widget);
    DrawScrollBar(*painter, shown, own && own->Ground() == Fill::Band);
  } else {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
  }
  painter->restore();
}

QRect ProgramStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
  if (element == SE_LineEditContents) {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    const int side = frame && frame->lineWidth > 0 ? FieldTextLeft - LineEditMargin : 0;
    return option->rect.adjusted(side, 0, -side, 0);
  }
  return QProxyStyle::subElementRect(element, option, widget);
}

QRect ProgramStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                   const QWidget* widget) const {
  if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option); control == CC_ScrollBar && bar) {
    return ScrollBarPart(*bar, part);
  }
  if (const auto* list = qstyleoption_cast<const QStyleOptionComboBox*>(option); control == CC_ComboBox && list) {
    const QRect area = list->rect;
    const int left = list->editable ? FieldTextLeft - LineEditMargin : FieldTextLeft;
    if (part == SC_ComboBoxEditField) return area.adjusted(left, 0, -ListButtonWidth, 0);
    if (part == SC_ComboBoxArrow) return area.adjusted(area.width() - ListButtonWidth, 0, 0, 0);
    if (part == SC_ComboBoxFrame) return area;
    const auto* field = dynamic_cast<const ListWidget*>(widget);
    return area.adjusted(field ? area.width() - field->ListWidth() : 0, 1, 0, 1);
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize ProgramStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                     const QWidget* widget) const {
  QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
  if (type == CT_ItemViewItem) result.setHeight(std::max(result.height(), EntryHeight));
  return result;
}

int ProgramStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_ScrollBarExtent: return ScrollBarWidth;
    case PM_ScrollBarSliderMin: return ShortestThumb;
    case PM_ScrollView_ScrollBarSpacing: return 0;
    case PM_FocusFrameHMargin:
      // The entries of a list stand below its text.
      if (widget && widget->inherits("QComboBoxListView")) return FieldTextLeft - 2;
      return QProxyStyle::pixelMetric(metric, option, widget);
    default: return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int ProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* result) const {
  switch (hint) {
    case SH_ComboBox_Popup: return 0;  // a list below the field, not a menu over it
    case SH_DitherDisabledText: return 0;
    case SH_DialogButtonBox_ButtonsHaveIcons: return 0;
    default: return QProxyStyle::styleHint(hint, option, widget, result);
  }
}

}  // namespace vk32
