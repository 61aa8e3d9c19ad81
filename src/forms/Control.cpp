// What all controls do.
#include "forms/Control.h"

#include <algorithm>

#include "forms/Forms.h"
#include "forms/Tables.h"

namespace vk32 {

Control::Control(Kind kind, const Container& container, ControlName name, Place place)
    : Left(*this, "Left", place.left),
      Top(*this, "Top", place.top),
      Width(*this, "Width", place.width),
      Height(*this, "Height", place.height),
      Visible(*this, "Visible", true),
      Enabled(*this, "Enabled", true),
      ToolTip(*this, "ToolTip", {}),
      ForeColor(*this, "ForeColor", SystemButtonText),
      BackColor(*this, "BackColor", SystemButtonFace),
      kind_(kind),
      form_(container.OwnerForm()),
      parent_(container.AsFrame()),
      name_(name) {
  auto& controls = OwnerForm().controls_;
  TabIndex = static_cast<int>(controls.size());
  controls.push_back(this);
  Surroundings().children_.push_back(this);
}

Control::~Control() {
  std::erase(Surroundings().children_, this);
  std::erase(OwnerForm().controls_, this);
}

Container& Control::Surroundings() const { return parent_ ? static_cast<Container&>(*parent_) : form_; }

const std::vector<Control*>& Control::Siblings() const { return Surroundings().Children(); }

std::string_view Control::KindName() const {
  switch (kind_) {
    case Kind::Label: return "Label";
    case Kind::TextBox: return "TextBox";
    case Kind::ComboBox: return "ComboBox";
    case Kind::CheckBox: return "CheckBox";
    case Kind::OptionButton: return "OptionButton";
    case Kind::ImageButton: return "ImageButton";
    case Kind::CommandButton: return "CommandButton";
    case Kind::Image: return "Image";
    case Kind::Frame: return "Frame";
    case Kind::VScrollBar: return "VScrollBar";
    case Kind::ProgressBar: return "ProgressBar";
    case Kind::Timer: return "Timer";
    case Kind::FileDialog: return "FileDialog";
  }
  return {};
}

std::string Control::FullName() const {
  std::string name = name_.name;
  if (name_.index) name += "(" + std::to_string(*name_.index) + ")";
  return name;
}

bool Control::Shown() const {
  if (kind_ == Kind::Timer || kind_ == Kind::FileDialog) return false;
  return Visible && (Parent() ? Parent()->Shown() : OwnerForm().Visible.Value());
}

Act Control::Reachable() const {
  if (!Shown()) return Act::Hidden;
  if (OwnerForm().IsBlocked()) return Act::Disabled;
  for (const Control* control = this; control; control = control->Parent()) {
    if (!control->Enabled) return Act::Disabled;
  }
  return Act::Done;
}

Act Control::Press() { return Reachable(); }

Act Control::Release() { return Reachable(); }

Act Control::Click() { return Reachable(); }

void Control::MouseMove() {
  Perform([this] { Raise(OnMouseMove); });
}

Act Control::Navigate(TableKey key) {
  FieldTable* table = FieldTableOf(*this);
  Act did = Act::NotThisKind;
  if (!table) return did;
  const Act reached = Perform([&] { did = table->Navigate(*this, key); });
  return reached == Act::Done ? did : reached;
}

Act Control::PasteBlock(std::string_view block) {
  FieldTable* table = FieldTableOf(*this);
  Act did = Act::NotThisKind;
  if (!table) return did;
  const Act reached = Perform([&] { did = table->Paste(*this, block); });
  return reached == Act::Done ? did : reached;
}

void PutInTabOrder(const std::vector<Control*>& controls) {
  std::vector<int> places;
  places.reserve(controls.size());
  for (const Control* control : controls) places.push_back(control->TabIndex);
  std::sort(places.begin(), places.end());
  for (std::size_t i = 0; i < controls.size(); ++i) controls[i]->TabIndex = places[i];
}

void Control::Dispatch(const std::function<void()>& act) { OwnerForm().Registry().dispatcher.Dispatch(act); }

void Control::PropertyChanged(const PropertyBase& property) {
  if (OwnerForm().IsLoaded()) OwnerForm().ControlChanged(*this, property);
  if (FormObserver* observer = OwnerForm().observer_) observer->ControlChanged(*this, property);
}

}  // namespace vk32
