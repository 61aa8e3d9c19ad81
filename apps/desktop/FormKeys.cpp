// The window of a form: where its focus goes, and what its keys do.
#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>
#include <algorithm>
#include <map>
#include <utility>

#include "FieldWidget.h"
#include "FormWindow.h"
#include "Text.h"

namespace vk32 {

Control* FormWindow::FocusedControl() const {
  const auto at = controlOf_.find(focusWidget());
  return at == controlOf_.end() ? nullptr : at->second;
}

void FormWindow::Focus(const Control& control, Qt::FocusReason reason) {
  if (QWidget* widget = WidgetOf(control)) widget->setFocus(reason);
}

void FormWindow::FocusFirst(const std::vector<const Frame*>& frames) {
  scroll_.BringIntoView(QRect());
  const Control* first = FirstField(form_, frames);
  if (!first) first = ButtonFor(form_, WindowKey::Enter);
  if (!first) first = ButtonFor(form_, WindowKey::Escape);
  if (first) {
    Focus(*first, Qt::OtherFocusReason);
  } else {
    setFocus(Qt::OtherFocusReason);
  }
}

void FormWindow::FocusAfterChange(const Control* lost, const std::vector<const Frame*>& shownFrames) {
  const Control* focused = FocusedControl();
  // A panel that comes with a choice in a field leaves the focus there; a button leads to another page.
  if (!shownFrames.empty() && (!focused || IsButton(*focused))) {
    FocusFirst(shownFrames);
  } else if (lost) {
    FocusNextAfter(*lost);
  }
}

void FormWindow::FocusNextAfter(const Control& control) {
  const auto stops = TabStops(form_);
  // What stands in its very place undoes what it did.
  auto next =
      std::find_if(stops.begin(), stops.end(), [&](auto* stop) { return PlaceOnForm(*stop) == PlaceOnForm(control); });
  if (next == stops.end()) {
    next = std::find_if(stops.begin(), stops.end(), [&](auto* stop) { return stop->TabIndex > control.TabIndex; });
  }
  if (!stops.empty()) Focus(next == stops.end() ? *stops.front() : **next, Qt::OtherFocusReason);
}

void FormWindow::SettleFocus() {
  const Control* wanted = std::exchange(wanted_, nullptr);
  if (wanted && IsReachable(*wanted)) Focus(*wanted, Qt::OtherFocusReason);
  const Control* focused = FocusedControl();
  if (focused != std::exchange(told_, focused)) form_.FocusMoved(focused);
}

bool FormWindow::focusNextPrevChild(bool next) {
  if (!attached_) return false;
  const auto stops = TabStops(form_);
  if (stops.empty()) return false;
  const std::size_t size = stops.size();
  const auto at = static_cast<std::size_t>(std::find(stops.begin(), stops.end(), FocusedControl()) - stops.begin());
  if (next) {
    Focus(*stops[at < size ? (at + 1) % size : 0], Qt::TabFocusReason);
  } else {
    Focus(*stops[at < size ? (at + size - 1) % size : size - 1], Qt::BacktabFocusReason);
  }
  return true;
}

void FormWindow::UpdateRing() {
  const Control* focused = FocusedControl();
  ControlWidget* widget = focused ? entries_[entryOf_[focused]].widget : nullptr;
  if (!focused || !widget->AsWidget().hasFocus()) return ring_.hide();
  const Label* companion = CompanionOf(*focused);
  ring_.Surround(*widget, companion ? WidgetOf(*companion) : nullptr);
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
  const auto at = controlOf_.find(watched);
  if (!attached_ || at == controlOf_.end()) return false;
  Control& control = *at->second;
  switch (event->type()) {
    case QEvent::FocusIn:
      // What the mouse has pressed must not move away from under it.
      if (static_cast<QFocusEvent*>(event)->reason() != Qt::MouseFocusReason) {
        scroll_.BringIntoView(PlaceOnForm(control));
      }
      ScheduleRefresh();
      break;
    case QEvent::FocusOut: ScheduleRefresh(); break;
    case QEvent::MouseButtonRelease:
      LeaveFields(watched);
      return !attached_;  // what a field did when it was left may have closed the form
    case QEvent::KeyPress: return KeyPressed(&control, static_cast<QKeyEvent&>(*event));
    case QEvent::KeyRelease:
      if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt) ShowMarks(false);
      break;
    case QEvent::ToolTip: {
      const QString tip = TipOf(control, *entries_[entryOf_[&control]].widget);
      QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, static_cast<QWidget*>(watched));
      return true;
    }
    default: break;
  }
  return false;
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
  if (attached_ && !FocusedControl() && KeyPressed(nullptr, *event)) return;
  event->ignore();
}

void FormWindow::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Alt) ShowMarks(false);
  event->ignore();
}

bool FormWindow::WindowKeyPressed(const QKeyEvent& key, Qt::KeyboardModifiers modifiers) {
  const bool up = key.key() == Qt::Key_PageUp;
  if (modifiers == Qt::ControlModifier && scroll_.Bar() && (up || key.key() == Qt::Key_PageDown)) {
    scroll_.Bar()->triggerAction(up ? QScrollBar::SliderPageStepSub : QScrollBar::SliderPageStepAdd);
    return true;
  }
  if (modifiers != Qt::NoModifier || key.key() != Qt::Key_F1) return false;
  if (!key.isAutoRepeat()) form_.Help();
  return true;
}

bool FormWindow::KeyPressed(Control* focused, const QKeyEvent& key) {
  if (key.key() == Qt::Key_Alt) ShowMarks(true);
  const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
  if (modifiers == Qt::AltModifier) return MnemonicPressed(key);
  if (WindowKeyPressed(key, modifiers)) return true;
  if (focused && TableKeyPressed(*focused, key)) return true;
  const bool isTerminal = focused && focused->GetKind() == Control::Kind::TextBox &&
                          static_cast<TextBox*>(focused)->lines == TextBox::Lines::Many;
  if (modifiers != Qt::NoModifier || isTerminal) return false;
  if (focused && entries_[entryOf_[focused]].widget->Wants(key)) return false;
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      // These take the key themselves.
      if (focused && (IsButton(*focused) || focused->GetKind() == Control::Kind::Label)) return false;
      if (!key.isAutoRepeat()) PressButton(WindowKey::Enter);
      return true;
    case Qt::Key_Escape:
      if (key.isAutoRepeat() || PressButton(WindowKey::Escape)) return true;
      if (const Control* button = ButtonFor(form_, WindowKey::EscapeMovesFocus))
        Focus(*button, Qt::ShortcutFocusReason);
      return true;
    case Qt::Key_Up:
    case Qt::Key_Left:
    case Qt::Key_Down:
    case Qt::Key_Right:
      if (!focused || focused->GetKind() != Control::Kind::OptionButton) return false;
      MoveInGroup(static_cast<OptionButton&>(*focused), key.key() == Qt::Key_Down || key.key() == Qt::Key_Right);
      return true;
    default: return false;
  }
}

bool FormWindow::TableKeyPressed(Control& focused, const QKeyEvent& key) {
  if (key.matches(QKeySequence::Paste)) return PasteBlock(focused);
  if (key.matches(QKeySequence::Undo)) return focused.Navigate(TableKey::Undo) != Act::NotThisKind;
  static const std::map<int, TableKey> keys{{Qt::Key_Up, TableKey::Up},         {Qt::Key_Down, TableKey::Down},
                                            {Qt::Key_PageUp, TableKey::PageUp}, {Qt::Key_PageDown, TableKey::PageDown},
                                            {Qt::Key_Home, TableKey::Home},     {Qt::Key_End, TableKey::End},
                                            {Qt::Key_Return, TableKey::Enter},  {Qt::Key_Enter, TableKey::Enter},
                                            {Qt::Key_Delete, TableKey::Delete}};
  const auto at = keys.find(key.key());
  if (at == keys.end() || (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
  const bool opens = at->second == TableKey::Enter || at->second == TableKey::Delete;
  if (opens && key.isAutoRepeat()) return focused.GetKind() == Control::Kind::Frame;
  return focused.Navigate(at->second) != Act::NotThisKind;
}

void FormWindow::MoveInGroup(OptionButton& option, bool forward) {
  const auto group = OptionGroup(option);
  const auto at = std::find(group.begin(), group.end(), &option);
  if (at == group.end()) return;
  const std::size_t size = group.size();
  const std::size_t from = static_cast<std::size_t>(at - group.begin());
  OptionButton& next = *group[(from + (forward ? 1 : size - 1)) % size];
  Focus(next, Qt::TabFocusReason);
  next.Click();
}

bool FormWindow::PressButton(WindowKey key) {
  const Control* button = ButtonFor(form_, key);
  if (!button) return false;
  entries_[entryOf_[button]].widget->Activate();
  return true;
}

bool FormWindow::MnemonicPressed(const QKeyEvent& key) {
  if (key.key() > Qt::Key_Z) return false;
  const Mnemonics mnemonics = ChooseMnemonics(form_);
  const auto at = mnemonics.targets.find(QChar(key.key()));
  if (at == mnemonics.targets.end()) return false;
  Focus(*at->second, Qt::ShortcutFocusReason);
  if (!key.isAutoRepeat()) entries_[entryOf_[at->second]].widget->Activate();
  return true;
}

void FormWindow::ShowMarks(bool show) {
  if (!attached_ || (!show && !marksShown_)) return;
  marksShown_ = show;
  const Mnemonics mnemonics = show ? ChooseMnemonics(form_) : Mnemonics();
  for (const Entry& entry : entries_) {
    const auto mark = mnemonics.marks.find(entry.control);
    entry.widget->ShowMark(mark == mnemonics.marks.end() ? QChar() : mark->second);
  }
}

QString FormWindow::TipOf(Control& control, const ControlWidget& widget) const {
  QString tip = control.ToolTip.Value().empty() ? widget.Tip() : FromWords(control.ToolTip.Value());
  if (control.GetKind() != Control::Kind::ImageButton) return tip;
  for (const auto& [letter, target] : ChooseMnemonics(form_).targets) {
    if (target == &control) return (tip.isEmpty() ? FromWords(control.Words()) : tip) + " (Alt+" + letter + ")";
  }
  return tip;
}

}  // namespace vk32
