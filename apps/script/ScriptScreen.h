// The screen of the text front end: prints what happens, a line each, and answers from what the script has prepared.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "forms/Screen.h"

namespace vk32 {

class ScriptScreen : public Screen {
 public:
  /// `print` gets each line, without its end.
  explicit ScriptScreen(std::function<void(const std::string&)> print) : print_(std::move(print)) {}

  void FormLoaded(Form&) override {}
  void FormShown(Form&) override {}
  void FormHidden(Form&) override {}
  void FormUnloaded(Form&) override {}
  Answer Ask(const MessageBoxRequest& request) override;
  std::optional<std::string> AskFile(const FileDialogRequest& request) override;
  void OpenWebSite(const std::string& url) override;
  void CopyText(const std::string& text) override;
  std::string OpenManual(const std::string& form) override;
  void ProgramFaulted(int number, const std::string& description) override;
  void ProgramEnded() override;

  void Print(const std::string& line) const { print_(line); }
  void QueueAnswer(Answer answer) { answers_.push_back(answer); }
  /// nullopt: the dialog is cancelled.
  void QueueFile(std::optional<std::string> path) { files_.push_back(std::move(path)); }
  /// The next box must be one whose text begins like this: another one fails the command under way.
  void QueueExpected(std::string text) { expected_.push_back(std::move(text)); }
  /// The text of the first box that was expected and has not come.
  std::optional<std::string> Missing() const { return expected_.empty() ? std::nullopt : std::optional(expected_[0]); }
  /// The next box waits for the user at the terminal.
  void QueueConfirm() { ++confirms_; }
  /// Shows a text at the terminal and waits for Enter, while events run; false if it can't come any more. Empty: there
  /// is no terminal.
  std::function<bool(const std::string& text)> WaitForEnter;
  /// A critical box that is not expected fails the command under way, and so does a place where nothing can be saved.
  bool strict = false;
  /// Why the command under way, or the next one, fails; empty if nothing went wrong. The new value takes its place.
  std::string ExchangeFailure(std::string failure = {});
  bool Faulted() const { return faulted_; }

 private:
  Answer NextAnswer(MessageButtons buttons);
  void Judge(const MessageBoxRequest& request);

  std::function<void(const std::string&)> print_;
  std::deque<Answer> answers_;
  std::deque<std::string> expected_;
  int confirms_ = 0;
  std::deque<std::optional<std::string>> files_;
  std::string failure_;
  bool faulted_ = false;
};

}  // namespace vk32
