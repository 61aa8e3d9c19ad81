// What every form does.
#include "forms/Form.h"

#include <algorithm>

#include "forms/Forms.h"
#include "forms/Tables.h"

namespace vk32 {

Form::Form(Forms& forms, const char* name, std::string caption, int width, int height, FormStyle style_)
    : Container(*this, nullptr),
      Caption(*this, "Caption", std::move(caption)),
      Width(*this, "Width", width),
      Height(*this, "Height", height),
      Visible(*this, "Visible", false),
      CloseEnabled(*this, "CloseEnabled", true),
      ActiveControl(*this, "ActiveControl", {}),
      Busy(*this, "Busy", false),
      style(style_),
      forms_(forms),
      name_(name) {}

Form::~Form() = default;

Control* Form::Find(std::string_view name, std::optional<int> index) const {
  for (Control* control : controls_) {
    if (name == control->Name() && index == control->Index()) return control;
  }
  return nullptr;
}

RuntimeFault Form::NoSuchControl(std::string_view name) const {
  return {RuntimeFault::InvalidCall, std::string(name_) + " has no such control: " + std::string(name)};
}

void Form::AssignVisible(const bool& visible) {
  Visible.Set(visible);
  forms_.VisibleChanged(*this);
}

bool Form::IsBlocked() const {
  const auto& loaded = forms_.Loaded();
  return std::any_of(loaded.begin(), loaded.end(), [this](const auto& other) {
    return other.get() != this && other->style == FormStyle::Modal && other->Visible;
  });
}

void Form::SetFocus(const Control& control) {
  FocusMoved(&control);
  if (observer_) observer_->FocusWanted(control);
}

void Form::FocusMoved(const Control* control) {
  ActiveControl = control ? control->FullName() : "";
  for (ControlTable* table : tables_) table->FocusMoved(control);
}

Act Form::Click() {
  if (!Visible) return Act::Hidden;
  if (IsBlocked()) return Act::Disabled;
  forms_.dispatcher.Dispatch([this] { Form_Click(); });
  return Act::Done;
}

void Form::MouseMove() {
  if (Visible && !IsBlocked()) forms_.dispatcher.Dispatch([this] { Form_MouseMove(); });
}

void Form::UserCloses() {
  if (!Visible || !CloseEnabled || IsBlocked()) return;
  forms_.dispatcher.Dispatch([this] { Form_Close(); });
}

Act Form::Help() {
  if (!Visible) return Act::Hidden;
  if (IsBlocked()) return Act::Disabled;
  forms_.dispatcher.Dispatch([this] {
    const std::string reason = forms_.GetScreen().OpenManual(name_);
    if (!reason.empty()) forms_.MsgBox(reason, MessageIcon::Exclamation);
  });
  return Act::Done;
}

void Form::Form_Close() {
  for (Control* control : controls_) {
    if (auto* button = dynamic_cast<ImageButton*>(control); button && button->key == WindowKey::Escape) {
      button->Click();
      return;
    }
  }
  UnloadMe();
}

void Form::Unloaded() {
  loaded_ = false;
  Visible.Set(false);
}

void Form::UnloadMe() { forms_.Unload(*this); }

void Form::PropertyChanged(const PropertyBase& property) {
  if (observer_) observer_->FormChanged(property);
}

}  // namespace vk32
