// The window of a form: a widget for each of its controls, kept as the controls are.
#pragma once

#include <QPoint>
#include <QWidget>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "ControlWidget.h"
#include "FocusRing.h"
#include "FormScroll.h"
#include "Navigation.h"
#include "forms/Form.h"

namespace vk32 {

class FormWindow : public QWidget, public FormObserver {
 public:
  FormWindow(Form& form, Theme& theme);
  ~FormWindow() override;

  /// Shows it on top of the others; if it isn't shown yet, with its middle at `middle`, and from then on above `below`,
  /// if that is the window it was opened from; else nullptr.
  void Open(QPoint middle, const QWidget* below);
  /// The form goes: from now on nothing leads to it.
  void Detach();

  bool IsDialog() const { return form_.style == FormStyle::Dialog || form_.style == FormStyle::Modal; }
  /// nullptr for a control that stands nowhere, or whose page has not been shown yet.
  QWidget* WidgetOf(const Control& control) const;
  /// nullptr for a widget that is no control's, and when the form has gone.
  const Control* ControlOf(const QWidget& widget) const;
  /// Brings the widgets up to date at once. Happens by itself before the next event of the user.
  void Refresh();
  /// The same for all widgets, since the theme has changed.
  void RefreshAll();

  void FormChanged(const PropertyBase& property) override;
  void ControlChanged(Control& control, const PropertyBase& property) override;
  void FocusWanted(const Control& control) override;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;

 private:
  struct Entry {
    Control* control;
    ControlWidget* widget;
    bool populated = false;  // a frame whose controls have widgets
  };

  // Widgets
  void Populate(const Frame* frame, QWidget& parent);
  void AddWidget(Control& control, QWidget& parent);
  void PopulateIfVisible(Entry& entry);
  void Apply(Entry& entry);
  void ApplyForm();
  void ApplyCursor();
  void ScheduleRefresh();
  void NameWidgets();
  void LetGoOfAll();
  /// Tells all but the one that the user has clicked.
  void LeaveFields(const QObject* clicked);
  /// `owned`: it stands above another window.
  Qt::WindowFlags Flags(bool owned) const;

  // Focus
  Control* FocusedControl() const;
  void Focus(const Control& control, Qt::FocusReason reason);
  void FocusFirst(const std::vector<const Frame*>& frames);
  /// `lost`: what had the focus and can't have it any more, or nullptr.
  void FocusAfterChange(const Control* lost, const std::vector<const Frame*>& shownFrames);
  void FocusNextAfter(const Control& control);
  /// Leads to where the form wants the focus, and tells it where the focus is.
  void SettleFocus();
  void UpdateRing();

  // Keys
  /// `focused` is nullptr if no control has the focus. True: the key has been used.
  bool KeyPressed(Control* focused, const QKeyEvent& key);
  bool TableKeyPressed(Control& focused, const QKeyEvent& key);
  /// Keys that do the same wherever the focus is.
  bool WindowKeyPressed(const QKeyEvent& key, Qt::KeyboardModifiers modifiers);
  bool MnemonicPressed(const QKeyEvent& key);
  void MoveInGroup(OptionButton& option, bool forward);
  bool PressButton(WindowKey key);
  void ShowMarks(bool show);
  QString TipOf(Control& control, const ControlWidget& widget) const;

  Form& form_;
  Theme& theme_;
  FocusRing ring_;
  FormScroll scroll_;
  QSize room_{QWIDGETSIZE_MAX, QWIDGETSIZE_MAX};  // on the screen where it was opened
  std::vector<Entry> entries_;
  std::unordered_map<const Control*, std::size_t> entryOf_;
  std::unordered_map<const QObject*, Control*> controlOf_;
  std::unordered_set<const Control*> changed_;
  const Control* wanted_ = nullptr;  // what the form wants the focus on
  const Control* told_ = nullptr;    // where it knows the focus
  bool formChanged_ = false;
  bool namesDue_ = false;
  bool refreshDue_ = false;
  bool attached_ = true;
  bool marksShown_ = false;
  bool blocked_ = false;  // by a box
  bool pressed_ = false;  // the left button went down on the form itself
};

}  // namespace vk32
