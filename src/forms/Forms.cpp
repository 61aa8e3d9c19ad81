// Loading, showing and unloading of forms.
#include "forms/Forms.h"

#include <algorithm>

#include "platform/Fault.h"

namespace vk32 {

Forms::Forms(EventLoop& loop, Screen& screen) : dispatcher(loop, screen), screen_(screen) {
  dispatcher.BehindEachAct([this](bool outermost) {
    for (const auto& form : loaded_) form->BehindAct();
    if (outermost) EndIfNothingShows();
  });
}

void Forms::Register(const std::string& name, Factory factory) { factories_[name] = std::move(factory); }

std::vector<std::string> Forms::Names() const {
  std::vector<std::string> names;
  for (const auto& [name, factory] : factories_) names.push_back(name);
  return names;
}

Form& Forms::Load(std::string_view name) {
  if (Form* form = Find(name)) return *form;
  const auto factory = factories_.find(name);
  if (factory == factories_.end()) {
    throw RuntimeFault(RuntimeFault::InvalidCall, "There is no form " + std::string(name));
  }
  const std::shared_ptr<Form> form = factory->second();
  loaded_.push_back(form);
  form->loaded_ = true;
  screen_.FormLoaded(*form);
  form->Form_Load();
  return *form;
}

Form& Forms::Show(std::string_view name) {
  Form& form = Load(name);
  form.Visible = true;
  return form;
}

void Forms::Unload(std::string_view name) {
  if (Form* form = Find(name)) Unload(*form);
}

void Forms::Unload(Form& form) {
  if (!form.IsLoaded()) return;
  form.Form_Unload();
  const auto at =
      std::find_if(loaded_.begin(), loaded_.end(), [&](const auto& loaded) { return loaded.get() == &form; });
  if (at == loaded_.end()) return;
  const std::shared_ptr<Form> going = *at;
  loaded_.erase(at);
  going->Unloaded();
  screen_.FormUnloaded(*going);
  going->Observe(nullptr);
  dispatcher.KeepWhileActing(going);
  somethingWent_ = true;
}

void Forms::UnloadAll() {
  while (!loaded_.empty()) Unload(*loaded_.back());
}

Form* Forms::Find(std::string_view name) const {
  for (const auto& form : loaded_) {
    if (name == form->Name()) return form.get();
  }
  return nullptr;
}

void Forms::VisibleChanged(Form& form) {
  const auto at =
      std::find_if(loaded_.begin(), loaded_.end(), [&](const auto& loaded) { return loaded.get() == &form; });
  if (at == loaded_.end()) return;  // it has been unloaded meanwhile: nothing of it is on the screen
  if (form.Visible) {
    std::rotate(at, at + 1, loaded_.end());
    screen_.FormShown(form);
  } else {
    screen_.FormHidden(form);
    somethingWent_ = true;
  }
}

void Forms::EndIfNothingShows() {
  if (!somethingWent_) return;
  somethingWent_ = false;
  const bool shows =
      std::any_of(loaded_.begin(), loaded_.end(), [](const auto& form) { return form->Visible.Value(); });
  if (!shows) dispatcher.End();
}

template <class Ask>
auto Forms::WaitForUser(Ask ask) {
  struct Asking {
    explicit Asking(int& depth) : depth_(depth) { ++depth_; }
    ~Asking() { --depth_; }
    int& depth_;
  };
  auto answer = (Asking(asking_), ask());
  dispatcher.LeaveIfEnded();
  return answer;
}

Answer Forms::MsgBox(const std::string& text, MessageIcon icon, const std::string& title, const std::string& details) {
  return WaitForUser([&] { return screen_.Ask({text, icon, title, MessageButtons::OK, false, details}); });
}

bool Forms::AskYesNo(const std::string& text, bool yesBreaksSomething, const std::string& title) {
  const MessageBoxRequest question{text, MessageIcon::Question, title, MessageButtons::YesNo, yesBreaksSomething, {}};
  return WaitForUser([&] { return screen_.Ask(question); }) == Answer::Yes;
}

Answer Forms::AskToSave(const std::string& text, const std::string& title) {
  const MessageBoxRequest question{text, MessageIcon::Question, title, MessageButtons::SaveDiscardCancel, false};
  return WaitForUser([&] { return screen_.Ask(question); });
}

std::optional<std::string> Forms::AskFile(const FileDialogRequest& request) {
  return WaitForUser([&] { return screen_.AskFile(request); });
}

}  // namespace vk32
