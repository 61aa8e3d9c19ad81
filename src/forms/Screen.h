// The seam to the eyes and hands outside: what a front end, or a test, does for the forms.
#pragma once

#include <optional>
#include <string>

#include "forms/Property.h"

namespace vk32 {

class Control;
class Form;
class TextBox;

enum class MessageIcon { None, Critical, Question, Exclamation, Information };
enum class MessageButtons { OK, YesNo, SaveDiscardCancel };
enum class Answer { OK, Yes, No, Save, Discard, Cancel };
/// What a box gives that is closed without a click on one of its buttons: nothing changes.
inline Answer Declining(MessageButtons buttons) {
  if (buttons == MessageButtons::OK) return Answer::OK;
  return buttons == MessageButtons::YesNo ? Answer::No : Answer::Cancel;
}

struct MessageBoxRequest {
  std::string text;  // lines parted by CR LF or LF, blanks as they stand
  MessageIcon icon = MessageIcon::None;
  std::string title;
  MessageButtons buttons = MessageButtons::OK;
  bool yesBreaksSomething = false;  // then No has the focus at first
  std::string details{};            // lines parted by LF: what is known of a failure; below the text, to be copied
};

struct FileDialogRequest {
  enum class Kind { Open, Save };

  Kind kind = Kind::Open;
  std::string title;
  std::string filter;  // description|pattern pairs, joined by |
};

/// Told of what changes on a loaded form, so that it can be drawn anew.
class FormObserver {
 public:
  virtual ~FormObserver() = default;
  virtual void FormChanged(const PropertyBase& property) = 0;
  virtual void ControlChanged(Control& control, const PropertyBase& property) = 0;
  /// The form wants the focus on the control, as soon as it can be reached.
  virtual void FocusWanted(const Control& control) = 0;
};

class Screen {
 public:
  virtual ~Screen() = default;

  /// The form exists and its load handler is about to run. Called once, before the others.
  virtual void FormLoaded(Form& form) = 0;
  virtual void FormShown(Form& form) = 0;
  virtual void FormHidden(Form& form) = 0;
  /// The form goes; it stays a valid object until this call has returned.
  virtual void FormUnloaded(Form& form) = 0;

  /// Shows a modal box and waits for its answer. Timers may tick meanwhile.
  virtual Answer Ask(const MessageBoxRequest& request) = 0;
  /// Shows a modal file dialog; nothing if the user cancelled it.
  virtual std::optional<std::string> AskFile(const FileDialogRequest& request) = 0;
  virtual void OpenWebSite(const std::string& url) = 0;
  /// Puts a text, with its line ends, into the clipboard of the user's desktop. A screen without one passes it over.
  virtual void CopyText(const std::string&) {}
  /// The bytes of a PDF file that shows an HTML text, in UTF-8, on paper. Nothing if this screen can't draw one.
  virtual std::optional<std::string> MakePdf(const std::string&) { return std::nullopt; }
  /// Opens the page of the manual that belongs to the form of that name. Empty, or why it can't be opened.
  virtual std::string OpenManual(const std::string& form) = 0;

  /// What draws, and where: "Qt 6.4.2 (xcb), 1920 x 1080 at 125 %". Empty if nothing does.
  virtual std::string Description() const { return {}; }

  /// A fault that nothing caught ends the program; ProgramEnded follows.
  virtual void ProgramFaulted(int number, const std::string& description) = 0;
  /// The program has ended itself: no act gets through to a form any more.
  virtual void ProgramEnded() = 0;
};

}  // namespace vk32
