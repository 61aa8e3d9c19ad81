// What all controls have in common: a name, a place, flags, and the way from an act or an assignment to a handler.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "forms/Look.h"
#include "forms/Property.h"

namespace vk32 {

class Control;
class Form;
class Frame;

/// What came of an act of the user.
enum class Act { Done, Hidden, Disabled, Locked, NoSuchEntry, NotThisKind, Refused };

/// A key that has a meaning of its own in a table.
enum class TableKey { Up, Down, PageUp, PageDown, Home, End, Enter, Delete, Undo };

/// What an event runs: a method of the form, with the index of the element for a control array, or a piece of code.
class Handler {
 public:
  Handler() = default;
  template <class F>
  Handler(void (F::*method)()) : run_([method](Form& form, int) { (static_cast<F&>(form).*method)(); }) {}
  template <class F>
  Handler(void (F::*method)(int index))
      : run_([method](Form& form, int index) { (static_cast<F&>(form).*method)(index); }) {}
  template <class Code, class = std::enable_if_t<std::is_invocable_v<Code>>>
  Handler(Code code) : run_([code = std::move(code)](Form&, int) { code(); }) {}

  explicit operator bool() const { return static_cast<bool>(run_); }
  void Run(Form& form, int index) const {
    if (run_) run_(form, index);
  }

 private:
  std::function<void(Form&, int)> run_;
};

/// A name, with an index for an element of a control array.
struct ControlName {
  ControlName(const char* plain) : name(plain) {}
  ControlName(const char* array, int element) : name(array), index(element) {}

  const char* name;
  std::optional<int> index;
};

/// A form or a frame: what controls lie in.
class Container {
 public:
  Container(Form& form, Frame* frame) : form_(form), frame_(frame) {}

  Form& OwnerForm() const { return form_; }
  /// nullptr: the form itself.
  Frame* AsFrame() const { return frame_; }
  /// What lies in it directly, in the order of its declaration.
  const std::vector<Control*>& Children() const { return children_; }

 private:
  friend class Control;

  Form& form_;
  Frame* frame_;
  std::vector<Control*> children_;
};

class Control : public Element {
 public:
  enum class Kind {
    Label,
    TextBox,
    ComboBox,
    CheckBox,
    OptionButton,
    ImageButton,
    CommandButton,
    Image,
    Frame,
    VScrollBar,
    ProgressBar,
    Timer,
    FileDialog,
  };

  ~Control() override;

  Kind GetKind() const { return kind_; }
  std::string_view KindName() const;
  const char* Name() const { return name_.name; }
  std::optional<int> Index() const { return name_.index; }
  /// "ModStartTxt(3)", or the plain name.
  std::string FullName() const;
  Form& OwnerForm() const { return form_; }
  /// The frame that it lies in, or nullptr.
  Frame* Parent() const { return parent_; }
  /// What lies in the same frame, or on the form itself, this control among it.
  const std::vector<Control*>& Siblings() const;
  /// It, its frames and its form are visible. Timers and file dialogs stand nowhere on a form.
  bool Shown() const;
  /// The text or the caption, whichever the kind has.
  virtual std::string Words() const { return {}; }

  // Acts of the user. Kinds that have no use for one take it without effect.
  virtual Act Press();    // mouse down, whichever button
  virtual Act Release();  // mouse up, wherever the pointer went
  virtual Act Click();
  void MouseMove();
  /// A key that has its meaning by the table that the control is, or stands in. NotThisKind: it has none there now.
  virtual Act Navigate(TableKey key);
  /// A block of cells, from this one on. NotThisKind: the control is no cell of a table of fields.
  Act PasteBlock(std::string_view block);

  Property<int> Left, Top, Width, Height;  // twips, from the container's corner
  Property<bool> Visible;                  // its own flag
  Property<bool> Enabled;
  Property<std::string> ToolTip;
  Property<Color> ForeColor;  // SystemButtonText: as its role has it
  Property<Color> BackColor;  // SystemButtonFace: as its kind has it

  Handler OnMouseMove;
  /// The place in the tab order; the order of declaration unless the form sets another.
  int TabIndex = 0;
  /// What it is called where no words that stand by it say so.
  std::string SpokenName;

 protected:
  Control(Kind kind, const Container& container, ControlName name, Place place);

  /// Runs a handler for code that assigned a property: faults go to that code.
  void Raise(const Handler& handler) { handler.Run(OwnerForm(), name_.index.value_or(0)); }
  /// Runs an act of the user, if the control can be reached by one: faults go to the dispatcher.
  template <class Do>
  Act Perform(Do act);

 private:
  void PropertyChanged(const PropertyBase& property) override;
  Act Reachable() const;
  void Dispatch(const std::function<void()>& act);

  Container& Surroundings() const;

  Kind kind_;
  Form& form_;
  Frame* parent_;
  ControlName name_;
};

/// Gives the controls, among themselves, the tab order in which they stand here.
void PutInTabOrder(const std::vector<Control*>& controls);

template <class Do>
Act Control::Perform(Do act) {
  const Act reachable = Reachable();
  if (reachable == Act::Done) Dispatch(act);
  return reachable;
}

}  // namespace vk32
