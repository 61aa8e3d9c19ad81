// The small procedures that all forms share.
#include "shell/Subs.h"

#include <functional>
#include <vector>

#include "app/App.h"
#include "core/Convert.h"

namespace vk32 {
namespace {

constexpr int RaisedNext = 111, RaisedFinish = 117, RaisedBack = 113;

struct EthernetCheck {
  const char* field;
  bool mayBeEmpty;
  const char* message;
};
constexpr EthernetCheck EthernetChecks[] = {
    {"EthIPTxt", false, "An Invalid IP Address has been Entered."},
    {"EthSubTxt", false, "An Invalid Subnet Mask has been Entered."},
    {"EthGateTxt", true, "An Invalid Gateway IP Address has been Entered."},
};

/// Of the first address that is invalid, or nullptr.
const EthernetCheck* FindFailedCheck(const Form& form) {
  for (const EthernetCheck& check : EthernetChecks) {
    const std::string& text = form.Get<TextBox>(check.field).Text;
    const bool passes = check.mayBeEmpty && text.empty();
    if (!passes && ValidateIPAddress(text) != 0) return &check;
  }
  return nullptr;
}

bool AreFourBytes(const std::string& text, const std::function<double(std::string_view)>& toNumber) {
  const auto parts = SplitAddress(text);
  if (parts.size() < 4) return false;
  try {
    for (const auto& part : parts) {
      const double number = toNumber(part);
      if (!(number >= 0 && number <= 255)) return false;
    }
    return true;
  } catch (const RuntimeFault&) {
    return false;
  }
}

}  // namespace

void UpdateWizardButtons(Form& form, int page, int lastPage) {
  auto& next = form.Get<ImageButton>("NextCmd");
  auto& back = form.Get<ImageButton>("BackCmd");
  if (page == 0) {
    next.Picture = RaisedNext;
    back.Visible = false;
  } else {
    next.Picture = page == lastPage ? RaisedFinish : RaisedNext;
    back.Picture = RaisedBack;
    back.Visible = true;
  }
}

void ShowConfigureReminder(App& app) {
  app.forms.MsgBox("Press the Configure button on the " + app.globals.CurrentProduct + " before continuing.\r\n" +
                       "The LED's on the left should have the following pattern:\r\n\n" + app.globals.LEDPatternText,
                   MessageIcon::Critical);
}

int ValidateIPAddress(const std::string& text) { return AreFourBytes(text, CDbl) ? 0 : 1; }

bool IsIPAddress(const std::string& text) { return AreFourBytes(text, Val); }

int CheckEthernetFields(App& app, Form& form) {
  const EthernetCheck* failed = FindFailedCheck(form);
  if (failed) app.forms.MsgBox(failed->message, MessageIcon::Critical, "Error!");
  return failed ? 1 : 0;
}

const TextBox* InvalidEthernetField(const Form& form) {
  const EthernetCheck* failed = FindFailedCheck(form);
  return failed ? &form.Get<TextBox>(failed->field) : nullptr;
}

void OpenWebSite(App& app, const std::string& url) { app.forms.GetScreen().OpenWebSite(url); }

}  // namespace vk32
