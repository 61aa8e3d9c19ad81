// The registry of forms: one instance per form, reached by name.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "forms/Dispatcher.h"
#include "forms/Form.h"
#include "forms/Screen.h"

namespace vk32 {

class Forms {
 public:
  using Factory = std::function<std::shared_ptr<Form>()>;

  Forms(EventLoop& loop, Screen& screen);
  ~Forms() { UnloadAll(); }

  void Register(const std::string& name, Factory factory);
  std::vector<std::string> Names() const;

  /// Runs the load handler, unless the form is loaded already. Fault 5 for a name that nobody registered.
  Form& Load(std::string_view name);
  /// Loads it and makes it visible, on top of the others.
  Form& Show(std::string_view name);
  /// The object lives on until the handlers that are on the stack have returned.
  void Unload(Form& form);
  void Unload(std::string_view name);
  /// The topmost first, as they stand on each other.
  void UnloadAll();
  /// The loaded form of that name, or nullptr.
  Form* Find(std::string_view name) const;
  /// The loaded forms, topmost last.
  const std::vector<std::shared_ptr<Form>>& Loaded() const { return loaded_; }

  Answer MsgBox(const std::string& text, MessageIcon icon, const std::string& title = "VK32",
                const std::string& details = {});
  /// A Yes/No question; true for Yes.
  bool AskYesNo(const std::string& text, bool yesBreaksSomething, const std::string& title = "VK32");
  /// Asks what is to become of changes: Save, Discard or Cancel.
  Answer AskToSave(const std::string& text, const std::string& title = "VK32");
  std::optional<std::string> AskFile(const FileDialogRequest& request);
  /// A box or a file dialog waits for the user: whoever called it has to wait as well.
  bool IsAsking() const { return asking_ > 0; }

  Screen& GetScreen() const { return screen_; }

  Dispatcher dispatcher;

 private:
  friend class Form;
  void VisibleChanged(Form& form);
  /// The program ends when the last window has gone.
  void EndIfNothingShows();

  /// Asks the screen.
  template <class Ask>
  auto WaitForUser(Ask ask);

  Screen& screen_;
  std::map<std::string, Factory, std::less<>> factories_;
  std::vector<std::shared_ptr<Form>> loaded_;
  int asking_ = 0;
  bool somethingWent_ = false;  // a form was unloaded or hidden in the act under way
};

}  // namespace vk32
