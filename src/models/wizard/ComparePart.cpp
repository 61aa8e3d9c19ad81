// What the pages show, beside what a device or a file holds.
#include "models/wizard/ComparePart.h"

#include "core/Convert.h"
#include "listing/CompareForm.h"
#include "models/wizard/WizardForm.h"
#include "platform/Paths.h"
#include "shell/Subs.h"

namespace vk32 {
namespace {

constexpr Purpose Comparing{"The comparison with the configuration",
                            "Wait until it has ended, or end it by CANCEL in the wizard."};

}  // namespace

ComparePart::ComparePart(WizardForm& wizard, App& app, Frame& applyFrame)
    : wizard_(wizard), app_(app), page_(applyFrame), CompareDialog(wizard, "CompareDialog") {}

WizardKind ComparePart::Kind() const { return {app_.globals.CurrentProduct, app_.globals.CurrentModel}; }

void ComparePart::Stop() {
  if (const auto reading = reading_.lock()) reading->Stop();
}

std::optional<Listing> ComparePart::ReadDevice(const Conversation& conversation, const std::string& failure) {
  ShowConfigureReminder(app_);
  if (conversation.IsOver()) return std::nullopt;
  const std::shared_ptr<Elsewhere> elsewhere = app_.lookElsewhere();
  reading_ = elsewhere;
  auto read = elsewhere->ReadDevice("COM" + Str(conversation.port), Kind(), wizard_.status);
  if (conversation.IsOver()) return std::nullopt;
  if (!read) {
    const StatusLine& status = wizard_.status;
    const std::string cause = status.StatusMark.Visible ? status.StatusLbl.Caption.Value() : "";
    app_.forms.MsgBox(failure + "\r\n" + elsewhere->Why(), MessageIcon::Critical, "Error!", cause);
  }
  return read;
}

void ComparePart::CompareDeviceCmd_Click() {
  const auto conversation = Conversation::Begin(app_, wizard_, Comparing);
  if (!conversation) return;
  auto read = ReadDevice(*conversation, "The configuration of the " + conversation->product + " could not be read.");
  if (!read) return;
  const std::string time = app_.forms.dispatcher.Loop().TimeOfDay();
  CompareForm::Show(app_, wizard_.ShownSide(),
                    {"On COM" + Str(conversation->port), "read at " + time, std::move(*read)});
}

bool ComparePart::Verify(const Conversation& conversation, const SentParameters& sent) {
  const std::string acknowledged = "The " + conversation.product + " has acknowledged the configuration, but ",
                    written = "written at " + app_.forms.dispatcher.Loop().TimeOfDay();
  wizard_.status.Tell("Written to COM" + Str(conversation.port) + ". Now it is read back, to verify what is there");
  auto read = ReadDevice(conversation, acknowledged + "it could not be read back: it is not verified.");
  if (!read) return false;
  Listing shown = app_.lookElsewhere()->ShowSent(sent, Kind());
  const std::size_t differing = Compare(shown, *read).size();
  if (differing == 0) return true;
  const std::string time = app_.forms.dispatcher.Loop().TimeOfDay();
  app_.forms.MsgBox(acknowledged + "does not hold what was sent: " +
                        (differing == 1 ? "1 value differs." : std::to_string(differing) + " values differ."),
                    MessageIcon::Critical, "Error!");
  if (conversation.IsOver()) return false;
  CompareForm::Show(app_, {"What was sent", written, std::move(shown)},
                    {"On COM" + Str(conversation.port), "read at " + time, std::move(*read)});
  return false;
}

void ComparePart::CompareFileCmd_Click() {
  const std::string product = app_.globals.CurrentProduct;
  CompareDialog.Prepare("Select Configuration File",
                        product + " Configuration Files (*.cfg)|*.cfg|All Files (*.*)|*.*");
  CompareDialog.ShowOpen();
  const std::string path = CompareDialog.FileName;
  if (path.empty() || !wizard_.IsLoaded()) return;
  const auto elsewhere = app_.lookElsewhere();
  auto read = elsewhere->ReadFile(path, Kind());
  if (!read) {
    app_.forms.MsgBox(elsewhere->Why(), MessageIcon::Critical, "Error!");
    return;
  }
  CompareForm::Show(app_, wizard_.ShownSide(), {"In the file", FileNameOf(path), std::move(*read)});
}

}  // namespace vk32
