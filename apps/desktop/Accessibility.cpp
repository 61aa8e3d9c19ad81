// What assistive technology is told of the widgets that Qt has no description for.
#include "Accessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "LabelWidget.h"
#include "TerminalWidget.h"

namespace vk32 {
namespace {

class TerminalDescription : public QAccessibleWidget {
 public:
  explicit TerminalDescription(TerminalWidget& terminal)
      : QAccessibleWidget(&terminal, QAccessible::Terminal), terminal_(terminal) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? terminal_.VisibleText() : QAccessibleWidget::text(kind);
  }

 private:
  TerminalWidget& terminal_;
};

class LinkDescription : public QAccessibleWidget {
 public:
  explicit LinkDescription(LabelWidget& link) : QAccessibleWidget(&link, QAccessible::Link), link_(link) {}

  QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& action) override {
    if (action == pressAction()) link_.Activate();
  }

 private:
  LabelWidget& link_;
};

QAccessibleInterface* Describe(const QString&, QObject* object) {
  if (auto* terminal = dynamic_cast<TerminalWidget*>(object)) return new TerminalDescription(*terminal);
  if (auto* label = dynamic_cast<LabelWidget*>(object); label && label->focusPolicy() != Qt::NoFocus)
    return new LinkDescription(*label);
  return nullptr;
}

}  // namespace

void InstallAccessibility() { QAccessible::installFactory(Describe); }

}  // namespace vk32
