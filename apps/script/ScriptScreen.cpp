// The screen of the text front end.
#include "script/ScriptScreen.h"

#include <sstream>
#include <utility>

#include "platform/Files.h"
#include "script/Quoting.h"

namespace vk32 {
namespace {

const char* IconName(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::None: return "none";
    case MessageIcon::Critical: return "critical";
    case MessageIcon::Question: return "question";
    case MessageIcon::Exclamation: return "exclamation";
    case MessageIcon::Information: return "information";
  }
  return "none";
}

const char* ButtonName(Answer answer) {
  switch (answer) {
    case Answer::OK: return "OK";
    case Answer::Yes: return "Yes";
    case Answer::No: return "No";
    case Answer::Save: return "Save";
    case Answer::Discard: return "Discard";
    case Answer::Cancel: return "Cancel";
  }
  return "OK";
}

}  // namespace

Answer ScriptScreen::Ask(const MessageBoxRequest& request) {
  const Answer answer = NextAnswer(request.buttons);
  print_(std::string("box ") + IconName(request.icon) + " " + Quote(request.title) + " " + Quote(request.text) +
         " -> " + ButtonName(answer));
  std::istringstream details(request.details);
  for (std::string line; std::getline(details, line);) print_("detail " + Quote(line));
  Judge(request);
  if (confirms_ > 0) {
    --confirms_;
    if (!WaitForEnter(request.text + "\nPress Enter to go on.\n")) failure_ = "Enter was not pressed";
  }
  return answer;
}

Answer ScriptScreen::NextAnswer(MessageButtons buttons) {
  if (buttons == MessageButtons::OK) return Answer::OK;
  const Answer answer = answers_.empty() ? Answer::OK : answers_.front();
  const bool yesNo = answer == Answer::Yes || answer == Answer::No;
  if (answer == Answer::OK || yesNo != (buttons == MessageButtons::YesNo)) {
    failure_ = answers_.empty() ? "no answer was waiting for a question" : "the answer that was waiting is none here";
    return Declining(buttons);
  }
  answers_.pop_front();
  return answer;
}

void ScriptScreen::Judge(const MessageBoxRequest& request) {
  if (expected_.empty()) {
    if (strict && request.icon == MessageIcon::Critical) failure_ = "a critical box came that was not expected";
    return;
  }
  if (!request.text.starts_with(expected_.front())) failure_ = "a box was expected with " + Quote(expected_.front());
  expected_.pop_front();
}

std::optional<std::string> ScriptScreen::AskFile(const FileDialogRequest& request) {
  std::optional<std::string> path;
  if (files_.empty()) {
    failure_ = "no path was waiting for a file dialog";
  } else {
    path = std::move(files_.front());
    files_.pop_front();
  }
  const bool saves = request.kind == FileDialogRequest::Kind::Save;
  const char* const kind = saves ? "save" : "open";
  print_(std::string("dialog ") + kind + " " + Quote(request.title) + " " + Quote(request.filter) + " -> " +
         (path ? Quote(*path) : "cancelled"));
  if (strict && saves && path && failure_.empty()) failure_ = WhyNotWritable(*path);
  return path;
}

void ScriptScreen::OpenWebSite(const std::string& url) { print_("web " + Quote(url)); }

void ScriptScreen::CopyText(const std::string& text) { print_("copied " + Quote(text)); }

std::string ScriptScreen::OpenManual(const std::string& form) {
  print_("manual " + Quote(form));
  return {};
}

void ScriptScreen::ProgramFaulted(int number, const std::string& description) {
  faulted_ = true;
  print_("fault " + std::to_string(number) + " " + Quote(description));
}

void ScriptScreen::ProgramEnded() {
  if (!faulted_) print_("ended");
}

std::string ScriptScreen::ExchangeFailure(std::string failure) { return std::exchange(failure_, std::move(failure)); }

}  // namespace vk32
