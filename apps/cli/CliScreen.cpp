// The screen of vk32-cli.
#include "cli/CliScreen.h"

#include "forms/Form.h"

namespace vk32 {
namespace {

/// How far a wizard is stands in words in its status line; the installation of firmware has a bar beside its words.
constexpr const char* StatusWords = "StatusLbl";
constexpr const char* InstallationWords = "ProgressInfoLbl";

std::string Percent(const ProgressBar& bar) {
  return bar.Max > 0 ? " " + std::to_string(bar.Value * 100 / bar.Max) + " %" : "";
}

}  // namespace

void CliScreen::FormLoaded(Form& form) {
  if (talks && world_.console.showsProgress) form.Observe(this);
}

Answer CliScreen::Ask(const MessageBoxRequest& request) {
  // The one question of the jobs: whether an installation is to be cancelled.
  if (request.buttons != MessageButtons::OK) {
    const bool cancels = world_.stopped && request.buttons == MessageButtons::YesNo;
    return cancels ? Answer::Yes : Declining(request.buttons);
  }
  EndProgress();
  const std::string text = ForUser(request.text);
  if (!expected_.empty() && request.text.starts_with(expected_.front().beginning)) {
    const auto then = std::move(expected_.front().then);
    expected_.pop_front();
    then(text);
  } else if (told_.empty()) {
    told_ = text + (request.details.empty() ? "" : "\n" + ForUser(request.details));
  }
  return Answer::OK;
}

std::string CliScreen::ForUser(std::string text) const {
  std::erase(text, '\r');
  if (portName.empty()) return text;
  const std::string device = " (" + portGiven + ")";
  for (std::size_t at = 0; (at = text.find(portName, at)) != std::string::npos;) {
    std::size_t end = at + portName.size();
    // COM2 is no COM21, and a link's path is more than its name.
    if (text.find_first_of("0123456789", end) == end || (at > 0 && text[at - 1] == '/')) {
      at = end;
      continue;
    }
    if (text.compare(end, device.size(), device) == 0) end += device.size();
    text.replace(at, end - at, portGiven);
    at += portGiven.size();
  }
  return text;
}

std::size_t CliScreen::TakeMissing() { return std::exchange(expected_, {}).size(); }

void CliScreen::EndProgress() {
  if (!std::exchange(progress_, {}).empty()) world_.console.err << "\r\033[K" << std::flush;
}

void CliScreen::ControlChanged(Control& control, const PropertyBase&) {
  const auto* bar = dynamic_cast<const ProgressBar*>(&control);
  const auto* label = dynamic_cast<const Label*>(control.OwnerForm().Find(bar ? InstallationWords : control.Name()));
  const bool tells = label && (bar || label->Name() == std::string_view(StatusWords) ||
                               label->Name() == std::string_view(InstallationWords));
  if (!tells || label->Words().empty()) return;
  const std::string progress = ForUser(label->Words()) + (bar ? Percent(*bar) : "");
  if (progress == progress_) return;
  progress_ = progress;
  world_.console.err << "\r\033[K" << progress << std::flush;
}

}  // namespace vk32
