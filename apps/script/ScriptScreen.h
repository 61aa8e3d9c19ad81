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
  void ProgramFaulted(int number, const std::string& description) override;
  void ProgramEnded() override;

  void Print(const std::string& line) const { print_(line); }
  void QueueAnswer(Answer answer) { answers_.push_back(answer); }
  /// nullopt: the dialog is cancelled.
  void QueueFile(std::optional<std::string> path) { files_.push_back(std::move(path)); }
  /// Why the command under way fails; empty if nothing went wrong. The new value takes its place.
  std::string ExchangeFailure(std::string failure = {});
  bool Faulted() const { return faulted_; }

 private:
  std::function<void(const std::string&)> print_;
  std::deque<Answer> answers_;
  std::deque<std::optional<std::string>> files_;
  std::string failure_;
  bool faulted_ = false;
};

}  // namespace vk32
