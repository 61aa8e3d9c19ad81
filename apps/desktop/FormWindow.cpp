// The window of a form: its widgets, and how they follow the controls.
#include "FormWindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QToolTip>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>

#include "AreaWidgets.h"
#include "BarWidgets.h"
#include "Text.h"
#include "Theme.h"

namespace vk32 {
namespace {

constexpr auto RefreshIsDue = static_cast<QEvent::Type>(QEvent::User + 1);
constexpr int TitleBarHeight = 32;  // about, in pixels
const QString CurrentStep = QStringLiteral("current step");

}  // namespace

FormWindow::FormWindow(Form& form, Theme& theme) : form_(form), theme_(theme), ring_(*this), scroll_(*this) {
  if (form_.style == FormStyle::Modal) setWindowModality(Qt::ApplicationModal);
  const auto& controls = form_.Controls();
  setMouseTracking(std::any_of(controls.begin(), controls.end(),
                               [](const Control* control) { return static_cast<bool>(control->OnMouseMove); }));
  entries_.reserve(controls.size());
  Populate(nullptr, *this);
  ApplyForm();
  NameWidgets();
  form_.Observe(this);
}

FormWindow::~FormWindow() = default;

Qt::WindowFlags FormWindow::Flags(bool owned) const {
  if (form_.style == FormStyle::Splash) return Qt::SplashScreen | Qt::FramelessWindowHint;
  Qt::WindowFlags flags = Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
  // Windows would draw a frame to size it by.
  flags |= Qt::MSWindowsFixedSizeDialogHint;
  // X knows an owner of dialogs alone.
  flags |= owned ? Qt::Dialog : Qt::Window;
  if (!IsDialog()) flags |= Qt::WindowMinimizeButtonHint;
  if (form_.CloseEnabled) flags |= Qt::WindowCloseButtonHint;
  return flags;
}

void FormWindow::Populate(const Frame* frame, QWidget& parent) {
  for (Control* control : form_.Controls()) {
    if (control->Parent() == frame) AddWidget(*control, parent);
  }
}

void FormWindow::AddWidget(Control& control, QWidget& parent) {
  ControlWidget* widget = MakeWidget(control, parent, theme_);
  if (!widget) return;
  const std::size_t index = entries_.size();
  entries_.push_back({&control, widget});
  entryOf_[&control] = index;
  controlOf_[&widget->AsWidget()] = &control;
  widget->AsWidget().installEventFilter(this);
  // A frame that shows nothing of its own must not take the clicks of a field that reaches below its edge.
  const auto* frame = dynamic_cast<const Frame*>(&control);
  if (frame && frame->fill == Fill::None) widget->AsWidget().lower();
  // Else a move over it would not get through to the form.
  if (hasMouseTracking()) widget->AsWidget().setMouseTracking(true);
  namesDue_ = true;
  Apply(entries_[index]);
  PopulateIfVisible(entries_[index]);
}

void FormWindow::PopulateIfVisible(Entry& entry) {
  if (entry.populated || entry.control->GetKind() != Control::Kind::Frame || !entry.control->Visible) return;
  entry.populated = true;
  QWidget& parent = entry.widget->AsWidget();
  Populate(static_cast<const Frame*>(entry.control), parent);  // `entry` may have moved
}

void FormWindow::Apply(Entry& entry) {
  const Control& control = *entry.control;
  QWidget& widget = entry.widget->AsWidget();
  const QPoint corner(ToPixels(control.Left), ToPixels(control.Top));
  const QRect place(corner,
                    QPoint(ToPixels(control.Left + control.Width) - 1, ToPixels(control.Top + control.Height) - 1));
  widget.setGeometry(control.Parent() ? place : place.translated(-scroll_.Corner()));
  widget.setEnabled(control.Enabled);
  entry.widget->Sync();
  widget.setVisible(control.Visible);
}

void FormWindow::ApplyForm() {
  setWindowTitle(FromWords(form_.Caption.Value()));
  scroll_.Fit(QSize(ToPixels(form_.Width), ToPixels(form_.Height)), room_);
  ApplyCursor();
  QWindow* window = windowHandle();
  const bool canClose = window && window->flags().testFlag(Qt::WindowCloseButtonHint);
  // On the window itself: QWidget would hide it to change its flags.
  if (window && form_.style != FormStyle::Splash && canClose != form_.CloseEnabled) {
    window->setFlag(Qt::WindowCloseButtonHint, form_.CloseEnabled);
  }
}

void FormWindow::ApplyCursor() {
  if (form_.Busy && !blocked_) {
    setCursor(Qt::WaitCursor);
  } else {
    unsetCursor();
  }
}

void FormWindow::NameWidgets() {
  namesDue_ = false;
  QString current;
  for (const Entry& entry : entries_) {
    QWidget& widget = entry.widget->AsWidget();
    const Control::Kind kind = entry.control->GetKind();
    const bool isBar = kind == Control::Kind::VScrollBar || kind == Control::Kind::ProgressBar;
    if (isBar || TakesFocus(*entry.control)) entry.widget->Name(AccessibleName(*entry.control));
    const bool isCurrent = IsCurrentStep(*entry.control);
    if (isCurrent) current = FromWords(entry.control->Words());
    const QString& told = widget.accessibleDescription();
    if (isCurrent != (told == CurrentStep)) widget.setAccessibleDescription(isCurrent ? CurrentStep : QString());
  }
  if (accessibleDescription() != current) setAccessibleDescription(current);
}

void FormWindow::Open(QPoint middle, const QWidget* below) {
  if (!isVisible()) {
    const QScreen* screen = QGuiApplication::screenAt(middle);
    QRect room = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    room.setTop(room.top() + TitleBarHeight);
    room_ = room.size();
    formChanged_ = true;
    Refresh();
    QRect place(QPoint(), size());
    place.moveCenter(middle);
    place.moveLeft(std::max(room.left(), std::min(place.left(), room.right() + 1 - width())));
    place.moveTop(std::max(room.top(), std::min(place.top(), room.bottom() + 1 - height())));
    setWindowFlags(Flags(below != nullptr));  // moves it
    // Not moved there, which would be the place of the frame: window after window would sink by its title bar.
    setGeometry(place);
    FocusFirst({});
    create();
    windowHandle()->setTransientParent(below ? below->windowHandle() : nullptr);
    show();
  } else {
    raise();
  }
  activateWindow();
}

void FormWindow::Detach() {
  LetGoOfAll();
  form_.Observe(nullptr);
  attached_ = false;
  for (const Entry& entry : entries_) entry.widget->Detach();
  hide();
}

QWidget* FormWindow::WidgetOf(const Control& control) const {
  const auto at = entryOf_.find(&control);
  return at == entryOf_.end() ? nullptr : &entries_[at->second].widget->AsWidget();
}

const Control* FormWindow::ControlOf(const QWidget& widget) const {
  const auto at = controlOf_.find(&widget);
  return !attached_ || at == controlOf_.end() ? nullptr : at->second;
}

void FormWindow::FormChanged(const PropertyBase& property) {
  if (&property == &form_.ActiveControl) return;
  formChanged_ = true;
  ScheduleRefresh();
}

void FormWindow::ControlChanged(Control& control, const PropertyBase&) {
  if (!entryOf_.count(&control)) return;
  changed_.insert(&control);
  if (control.GetKind() == Control::Kind::Label) namesDue_ = true;
  ScheduleRefresh();
}

void FormWindow::FocusWanted(const Control& control) {
  wanted_ = &control;
  told_ = nullptr;
  ScheduleRefresh();
}

void FormWindow::ScheduleRefresh() {
  if (refreshDue_) return;
  refreshDue_ = true;
  QCoreApplication::postEvent(this, new QEvent(RefreshIsDue));
}

void FormWindow::Refresh() {
  refreshDue_ = false;
  if (!attached_) return;
  if (formChanged_) ApplyForm();
  formChanged_ = false;
  const Control* lost = FocusedControl();
  if (lost && IsReachable(*lost)) lost = nullptr;
  // Taken away first, so that Qt does not look for another place itself while the page is half changed.
  if (lost) setFocus(Qt::OtherFocusReason);
  std::vector<const Frame*> shownFrames;
  for (const Control* control : std::exchange(changed_, {})) {
    const std::size_t index = entryOf_[control];
    const bool appears = control->Visible && entries_[index].widget->AsWidget().isHidden();
    // What is only drawn, as the background of a row, is no page that takes the focus.
    if (const auto* frame = dynamic_cast<const Frame*>(control); appears && frame && frame->fill == Fill::None)
      shownFrames.push_back(frame);
    PopulateIfVisible(entries_[index]);
    Apply(entries_[index]);
  }
  if (namesDue_) NameWidgets();
  if (marksShown_) ShowMarks(true);
  scroll_.Raise();
  FocusAfterChange(lost, shownFrames);
  SettleFocus();
  UpdateRing();
}

void FormWindow::RefreshAll() {
  for (const Entry& entry : entries_) changed_.insert(entry.control);
  Refresh();
}

bool FormWindow::event(QEvent* event) {
  if (event->type() == RefreshIsDue) {
    Refresh();
    return true;
  }
  switch (event->type()) {
    case QEvent::WindowBlocked:
    case QEvent::WindowUnblocked:
      blocked_ = event->type() == QEvent::WindowBlocked;
      if (!attached_) break;
      LetGoOfAll();
      ApplyCursor();
      break;
    case QEvent::WindowDeactivate:
      LetGoOfAll();
      ShowMarks(false);
      break;
    default: break;
  }
  return QWidget::event(event);
}

void FormWindow::LetGoOfAll() {
  for (std::size_t i = 0; i < entries_.size() && attached_; ++i) entries_[i].widget->LetGo();
}

void FormWindow::LeaveFields(const QObject* clicked) {
  for (std::size_t i = 0; i < entries_.size() && attached_; ++i) {
    if (&entries_[i].widget->AsWidget() != clicked) entries_[i].widget->Leave();
  }
}

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (attached_) form_.UserCloses();
}

void FormWindow::paintEvent(QPaintEvent*) { DrawOutlines(*this); }

void FormWindow::mousePressEvent(QMouseEvent* event) { pressed_ = event->button() == Qt::LeftButton; }

void FormWindow::mouseReleaseEvent(QMouseEvent* event) {
  const bool clicked = pressed_ && event->button() == Qt::LeftButton &&
                       rect().contains(mapFromGlobal(event->globalPosition()).toPoint());
  pressed_ = false;
  LeaveFields(nullptr);
  if (clicked && attached_) form_.Click();
}

void FormWindow::mouseMoveEvent(QMouseEvent*) {
  if (attached_) form_.MouseMove();
}

void FormWindow::wheelEvent(QWheelEvent* event) {
  // Over a table, the wheel moves the scroll bar at its side.
  const QPoint at = event->position().toPoint();
  for (const Entry& entry : entries_) {
    auto* bar = dynamic_cast<ScrollBarWidget*>(entry.widget);
    if (!bar || !bar->isVisible()) continue;
    const QRect place(bar->mapTo(this, QPoint()), bar->size());
    if (at.y() >= place.top() && at.y() <= place.bottom() && at.x() < place.left()) {
      // Not sent, since what the bar leaves would come back here.
      static_cast<QObject*>(bar)->event(event);
      return;
    }
  }
  if (QScrollBar* bar = scroll_.Bar()) static_cast<QObject*>(bar)->event(event);
}

}  // namespace vk32
