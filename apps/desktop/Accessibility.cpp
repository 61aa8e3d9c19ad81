// What assistive technology is told of the widgets that Qt describes poorly or not at all.
#include "Accessibility.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QLineEdit>
#include <tuple>

#include "AreaWidgets.h"
#include "FormWindow.h"
#include "LabelWidget.h"
#include "ListWidget.h"
#include "TableDescription.h"
#include "TerminalWidget.h"

namespace vk32 {
namespace {

using Interface = QAccessibleInterface;

class WindowDescription : public QAccessibleWidget {
 public:
  explicit WindowDescription(FormWindow& window)
      : QAccessibleWidget(&window, window.IsDialog() ? QAccessible::Dialog : QAccessible::Window) {}
};

/// Only looks like something.
class DecorationDescription : public QAccessibleWidget {
 public:
  using QAccessibleWidget::QAccessibleWidget;

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.invisible = true;
    return state;
  }
};

class AreaDescription : public QAccessibleWidget {
 public:
  explicit AreaDescription(FrameWidget& frame)
      : QAccessibleWidget(&frame, frame.GetFill() == Fill::Hairline ? QAccessible::Separator : QAccessible::Pane),
        frame_(frame) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? frame_.Heading() : QAccessibleWidget::text(kind);
  }

 private:
  FrameWidget& frame_;
};

/// A text that is read here, but changed by the form alone.
class ReadText : public QAccessibleTextInterface {
 public:
  void selection(int, int* start, int* end) const override { *start = *end = 0; }
  int selectionCount() const override { return 0; }
  void addSelection(int start, int end) override { setSelection(0, start, end); }
  void removeSelection(int) override { setSelection(0, 0, 0); }
  void setSelection(int, int, int) override {}
  int cursorPosition() const override { return 0; }
  void setCursorPosition(int) override {}
  QRect characterRect(int) const override { return {}; }
  int offsetAtPoint(const QPoint&) const override { return -1; }
  void scrollToSubstring(int, int) override {}
  QString attributes(int, int* start, int* end) const override {
    *start = 0;
    *end = characterCount();
    return {};
  }
};

/// Named by its label; what is chosen is its text. Qt would make the choice its name.
class ListDescription : public QAccessibleWidget, public ReadText {
 public:
  explicit ListDescription(ListWidget& list) : QAccessibleWidget(&list, QAccessible::ComboBox), list_(list) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? list_.currentText() : QAccessibleWidget::text(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    const bool isOpen = list_.view()->isVisible();
    state.expandable = state.hasPopup = true;
    state.expanded = isOpen;
    state.collapsed = !isOpen;
    state.editable = list_.isEditable();
    return state;
  }
  int childCount() const override { return list_.isEditable() ? 2 : 1; }
  Interface* child(int index) const override {
    if (index == 0) return QAccessible::queryAccessibleInterface(list_.view());
    return index == 1 && list_.isEditable() ? QAccessible::queryAccessibleInterface(list_.lineEdit()) : nullptr;
  }
  int indexOfChild(const Interface* one) const override {
    if (one->object() == list_.view()) return 0;
    return list_.isEditable() && one->object() == list_.lineEdit() ? 1 : -1;
  }
  QStringList actionNames() const override { return {showMenuAction(), setFocusAction()}; }
  void doAction(const QString& action) override {
    if (action == showMenuAction()) return list_.showPopup();
    QAccessibleWidget::doAction(action);
  }

  QString text(int start, int end) const override { return list_.currentText().mid(start, end - start); }
  int characterCount() const override { return static_cast<int>(list_.currentText().size()); }

 private:
  ListWidget& list_;
};

class TerminalDescription : public QAccessibleWidget, public ReadText {
 public:
  explicit TerminalDescription(TerminalWidget& terminal)
      : QAccessibleWidget(&terminal, QAccessible::Terminal), terminal_(terminal) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? terminal_.VisibleText() : QAccessibleWidget::text(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiLine = state.selectableText = true;
    return state;
  }

  QString text(int start, int end) const override { return terminal_.Part(start, end); }
  int characterCount() const override { return terminal_.Length(); }
  int cursorPosition() const override { return terminal_.CursorPosition(); }
  int selectionCount() const override {
    const auto [from, to] = terminal_.Selection();
    return from < to ? 1 : 0;
  }
  void selection(int, int* start, int* end) const override { std::tie(*start, *end) = terminal_.Selection(); }
  void setSelection(int, int start, int end) override { terminal_.Select(start, end); }
  QRect characterRect(int position) const override {
    const QRect place = terminal_.CharacterPlace(position);
    return {terminal_.mapToGlobal(place.topLeft()), place.size()};
  }
  int offsetAtPoint(const QPoint& point) const override {
    return terminal_.PositionNear(terminal_.mapFromGlobal(point));
  }
  void scrollToSubstring(int start, int) override { terminal_.ShowPosition(start); }

 private:
  TerminalWidget& terminal_;
};

Interface* Describe(const QString&, QObject* object) {
  if (auto* window = dynamic_cast<FormWindow*>(object)) return new WindowDescription(*window);
  if (auto* ring = dynamic_cast<FocusRing*>(object)) return new DecorationDescription(ring);
  if (auto* frame = dynamic_cast<FrameWidget*>(object)) {
    if (frame->GetFill() == Fill::Accent) return new DecorationDescription(frame);  // the step itself is told
    if (frame->GetFill() == Fill::Table) return new TableDescription(*frame);
    return new AreaDescription(*frame);
  }
  if (auto* picture = dynamic_cast<PictureWidget*>(object)) return new QAccessibleWidget(picture, QAccessible::Graphic);
  if (auto* label = dynamic_cast<LabelWidget*>(object)) return DescribeLabel(*label);
  if (auto* list = dynamic_cast<ListWidget*>(object)) return new ListDescription(*list);
  if (auto* terminal = dynamic_cast<TerminalWidget*>(object)) return new TerminalDescription(*terminal);
  return nullptr;
}

}  // namespace

void InstallAccessibility() { QAccessible::installFactory(Describe); }

}  // namespace vk32
