// The line that tells what goes on with the device.
#include "shell/StatusLine.h"

#include <algorithm>

#include "forms/Form.h"

namespace vk32 {
namespace {

constexpr int MarkSize = 180, WordsBehindMark = 300;  // twips
constexpr int OneLine = 360, MarkInLine = 30;         // twips

/// Beside the first line.
Place MarkPlace(Place line) {
  const int below = line.height <= OneLine ? (line.height - MarkSize) / 2 : MarkInLine;
  return {line.left, line.top + below, MarkSize, MarkSize};
}

}  // namespace

StatusLine::StatusLine(Form& form, Place line, std::optional<Place> bar)
    : form_(form),
      line_(line),
      StatusMark(form, "StatusMark", MarkPlace(line), Symbol::Cross),
      StatusLbl(form, "StatusLbl", line, "", TextRole::Small) {
  if (bar) StatusBar.emplace(form, "StatusBar", *bar);
  Tell({});
}

void StatusLine::Tell(const std::string& words) { Show(words, SystemButtonText); }

void StatusLine::TellFailure(const std::string& words) { Show(words, FailureColor); }

void StatusLine::Show(const std::string& words, Color color) {
  const int indent = color == FailureColor ? WordsBehindMark : 0;
  StatusMark.Visible = color == FailureColor;
  StatusLbl.Left = line_.left + indent;
  StatusLbl.Width = line_.width - indent;
  StatusLbl.ForeColor = color;
  StatusLbl.Caption = words;
  form_.Busy = color == TextColor;
  if (StatusBar) StatusBar->Visible = color == TextColor;
}

void StatusLine::ExchangeGoesOn(const std::string& words, int done, int total) {
  Show(words, TextColor);
  if (!StatusBar) return;
  StatusBar->Value = 0;
  StatusBar->Max = std::max(total, 1);
  StatusBar->Value = std::min(done, total);
}

void StatusLine::ExchangeEnded(const std::string& words, bool good) {
  if (good) {
    Tell(words);
  } else {
    TellFailure(words);
  }
}

}  // namespace vk32
