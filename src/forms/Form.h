// A form: a set of named controls, and what it does when it is loaded.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "forms/Control.h"
#include "forms/Controls.h"
#include "forms/Screen.h"
#include "platform/Fault.h"

namespace vk32 {

class ControlTable;
class Forms;

/// Dialog: stands above the window from which it was opened. Modal: the other forms take no acts of the user while it
/// shows. Splash: a bare page without a title bar.
enum class FormStyle { Window, Dialog, Modal, Splash };

class Form : public Element, public Container {
 public:
  /// Size of the client area in twips.
  Form(Forms& forms, const char* name, std::string caption, int width, int height, FormStyle style = FormStyle::Window);
  ~Form() override;

  const char* Name() const { return name_; }
  Forms& Registry() const { return forms_; }
  /// In the order of their declaration: the first lies at the bottom.
  const std::vector<Control*>& Controls() const { return controls_; }
  const std::vector<ControlTable*>& Tables() const { return tables_; }

  /// nullptr if there is none.
  Control* Find(std::string_view name, std::optional<int> index = {}) const;
  /// Fault 5 that names the form and the control if there is none, or one of another kind.
  template <class T>
  T& Get(std::string_view name, std::optional<int> index = {}) const {
    if (auto* control = dynamic_cast<T*>(Find(name, index))) return *control;
    throw NoSuchControl(name);
  }

  /// True from the load to the unload; a form that was unloaded can outlive it while its handlers are on the stack.
  bool IsLoaded() const { return loaded_; }

  /// A modal form shows and takes all acts of the user.
  bool IsBlocked() const;

  /// Leads the user to a control of this form.
  void SetFocus(const Control& control);
  /// The user's focus has gone to a control, or away from all of them: nullptr.
  void FocusMoved(const Control* control);

  // Acts of the user on the form itself.
  Act Click();
  void MouseMove();
  /// The window's own close control.
  void UserCloses();
  /// Asks for the manual.
  Act Help();

 private:
  void AssignVisible(const bool& visible);

 public:
  Property<std::string> Caption;
  Property<int> Width, Height;
  ActiveProperty<bool, Form, &Form::AssignVisible> Visible;
  Property<bool> CloseEnabled;          // whether the window's own close control works
  Property<std::string> ActiveControl;  // the full name of what has the focus; empty: nothing has it
  Property<bool> Busy;                  // it waits for a device: the pointer says so where no box asks
  const FormStyle style;

 protected:
  virtual void Form_Load() {}
  /// Runs while the form is still loaded.
  virtual void Form_Unload() {}
  virtual void Form_Click() {}
  virtual void Form_MouseMove() {}
  /// The user closed the window by its own close control. Does what Escape does; without such a button the form
  /// unloads.
  virtual void Form_Close();
  /// A property of one of its controls has changed.
  virtual void ControlChanged(const Control&, const PropertyBase&) {}
  /// An act is over, whichever form it was on: brings up to date what is made from the controls.
  virtual void BehindAct() {}

  /// Unloads this form.
  void UnloadMe();

 private:
  friend class Control;
  friend class ControlTable;
  friend class Forms;

  void PropertyChanged(const PropertyBase& property) override;
  void Unloaded();
  RuntimeFault NoSuchControl(std::string_view name) const;

  Forms& forms_;
  const char* name_;
  FormObserver* observer_ = nullptr;
  std::vector<Control*> controls_;
  std::vector<ControlTable*> tables_;
  bool loaded_ = false;

 public:
  /// Who is told of changes; nullptr: nobody.
  void Observe(FormObserver* observer) { observer_ = observer; }
};

}  // namespace vk32
