// The commands of the text front end.
#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "app/App.h"
#include "script/ScriptScreen.h"

namespace vk32 {

class ScriptSession {
 public:
  ScriptSession(App& app, ScriptScreen& screen) : app_(app), screen_(screen) {}

  /// Carries out one line and prints `ok` or `error MESSAGE` behind what happened; nothing for a blank line and a
  /// comment. False if the command failed, or was not carried out since something had failed before it.
  bool RunLine(std::string_view line);
  /// At the end of all lines. False, and printed, if something has failed since the last one, or a box that was
  /// expected has not come.
  bool RunEnd();
  /// No further command is to be run: by `quit`, or since the program has ended.
  bool Finished() const { return quit_ || app_.forms.dispatcher.Ended(); }
  /// A command that ran by `after` has failed.
  bool AfterFailed() const { return afterFailed_; }

 private:
  /// Why a command can't be carried out.
  struct Refused : std::runtime_error {
    using std::runtime_error::runtime_error;
  };
  /// What a command names: a form, or a control on it. The form stays a valid object as long as this.
  struct Target {
    std::shared_ptr<Form> form;
    Control* control = nullptr;
    std::string name;
  };
  using Command = void (ScriptSession::*)(std::string_view arguments);

  static Command FindCommand(std::string_view name);
  /// Empty if the command was carried out, else why it wasn't.
  std::string Run(std::string_view line);

  void Click(std::string_view arguments);
  void Down(std::string_view arguments);
  void Up(std::string_view arguments);
  void Select(std::string_view arguments);
  void Type(std::string_view arguments);
  void Keys(std::string_view arguments);
  void Press(std::string_view arguments);
  void Paste(std::string_view arguments);
  void Check(std::string_view arguments);
  void Scroll(std::string_view arguments);
  void Move(std::string_view arguments);
  void Help(std::string_view arguments);
  void Get(std::string_view arguments);
  void Items(std::string_view arguments);
  void ListForms(std::string_view arguments);
  void Controls(std::string_view arguments);
  void AnswerBox(std::string_view arguments);
  void Expect(std::string_view arguments);
  void Confirm(std::string_view arguments);
  void File(std::string_view arguments);
  void Wait(std::string_view arguments);
  void Until(std::string_view arguments);
  void After(std::string_view arguments);
  void Quit(std::string_view arguments);

  std::shared_ptr<Form> LoadedForm(std::string_view name) const;
  Target Resolve(std::string_view name) const;
  /// The same, and the user's focus goes there.
  Target TurnTo(std::string_view name) const;
  template <class T>
  T& ControlOf(const Target& target) const;
  std::string PropertyText(std::string_view path) const;
  /// Lets events run for that long, or until `done`.
  bool LetEventsRun(int milliseconds, const std::function<bool()>& done);

  static void Require(Act act, const Target& target);
  static int Milliseconds(std::string_view text);
  static std::string TextOf(std::string_view argument);

  App& app_;
  ScriptScreen& screen_;
  bool quit_ = false;
  bool underWay_ = false;  // a command
  bool afterFailed_ = false;
};

}  // namespace vk32
