// What the maker needs to see what has happened in the field.
#include "app/SupportFile.h"

#include "listing/Report.h"
#include "models/wizard/WizardForm.h"
#include "platform/SystemName.h"

namespace vk32 {
namespace {

std::string Line(const std::string& name, const std::string& value) {
  return value.empty() ? "" : name + ": " + value + "\n";
}

std::string Ports(const App& app) {
  std::string lines;
  for (const FoundPort& port : app.ports.FindAll()) lines += Line("  " + port.name, port.device.Description());
  return "\nPorts found\n" + (lines.empty() ? "  none\n" : lines);
}

std::string Configuration(WizardForm& wizard) {
  std::string product = wizard.DeviceLbl.Caption.Value();
  if (const std::string model = wizard.ModelLbl.Caption.Value(); !model.empty()) product += ", " + model;
  return "\nConfiguration of the " + product + "\n" + Line("  Values", wizard.origin.SourceLbl.Caption.Value()) +
         Line("  Changed", wizard.origin.ChangedLbl.Caption.Value()) + TextReport(wizard.List());
}

}  // namespace

std::string SupportText(App& app) {
  const Globals& globals = app.globals;
  std::string text = "VK32 support file\n" + Line("Date", app.forms.dispatcher.Loop().DateAndTime()) +
                     Line("Program", "VK32 " + ProgramVersion()) + Line("System", SystemName()) +
                     Line("Screen", app.forms.GetScreen().Description()) + Line("Product", globals.CurrentProduct) +
                     Line("Port", globals.ComPortText) + Ports(app);
  for (const auto& form : app.forms.Loaded()) {
    if (auto* wizard = dynamic_cast<WizardForm*>(form.get())) text += Configuration(*wizard);
  }
  const std::string trace = app.trace.Text();
  return text + "\nLast exchanges (ms since the start of the program, > sent, < came)\n" +
         (trace.empty() ? "  none\n" : trace);
}

}  // namespace vk32
