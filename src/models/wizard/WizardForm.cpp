// What the configuration wizards of all products share.
#include "models/wizard/WizardForm.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "core/Convert.h"
#include "core/DoesNotFit.h"
#include "core/OpenSave.h"
#include "forms/FieldNames.h"
#include "forms/Tables.h"
#include "link/VKComSubs.h"
#include "listing/SaveReport.h"
#include "platform/Paths.h"
#include "shell/ProductMenu.h"
#include "shell/Subs.h"

namespace vk32 {
namespace {

constexpr int FootTabIndex = 20000;  // behind all controls of the pages
constexpr const char* HowToEnd = "Wait until it has ended, or end it by CANCEL in the wizard.";
constexpr Purpose ReadingConfiguration{"Reading the configuration", HowToEnd};
constexpr Purpose WritingConfiguration{"Writing the configuration", HowToEnd};

/// The title says all that the step says: "Serial Communication Settings" of "Serial Settings".
bool SaysAllOf(const std::string& title, const std::string& step) {
  std::istringstream titleWords(title), stepWords(step);
  for (std::string wanted, word; stepWords >> wanted;) {
    while (word != wanted && titleWords >> word) continue;
    if (word != wanted) return false;
    word.clear();
  }
  return true;
}

/// The shorter name of the two, where the step leads to no other page.
std::string PageName(const WizardPage& page) {
  std::string title;
  for (const Control* control : page.panes.front()->Children()) {
    const auto* label = dynamic_cast<const Label*>(control);
    if (label && label->role == TextRole::Title) title = label->Caption;
  }
  return SaysAllOf(title, page.step->Caption) ? page.step->Caption : title;
}

/// Without "(shown with ...)", which a user who sees the field need not know.
std::string WithoutCondition(std::string hint) {
  const std::size_t start = hint.find(" (shown with"), end = hint.find(')', start);
  if (end != std::string::npos) hint.erase(start, end - start + 1);
  return hint;
}

}  // namespace

WizardForm::WizardForm(App& app_, const char* name, int timeOutInterval, int finalizeTop, int applyTop)
    : ConfigurationForm(app_.forms, name, "Configure Online Parameters", 12840, 8760),
      app(app_),
      FinalizeSetLbl(*this, "FinalizeSetLbl", {240, finalizeTop, 3480, 315}, "Finalize Settings", TextRole::Heading),
      ApplySetLbl(*this, "ApplySetLbl", {240, applyTop, 3480, 315}, "Apply Settings", TextRole::Step),
      TimeOutTmr(*this, "TimeOutTmr", timeOutInterval, true, &WizardForm::TimeOutTmr_Timer) {}

void WizardForm::ShowWizardStep(int page) { ShowPageStep(Pages(), page, StepMarkFrame); }

void WizardForm::ShowWizardFrame(int page) { ShowPageFrame(Pages(), page); }

void WizardForm::Begin(std::int16_t lastPage) {
  app.globals.CurrentPage = 0;
  app.globals.LastPage = lastPage;
  ShowCurrentPage();
  DeviceLbl.Caption = app.globals.CurrentProduct;
  AdaptToPort();
  OfferKept();
  BackupCmd.Visible = false;
  SetTabOrder();
}

void WizardForm::ShowCurrentPage() {
  shownPage_ = app.globals.CurrentPage;
  pageHint.Hide();
  ShowWizardStep(app.globals.CurrentPage);
  ShowWizardFrame(app.globals.CurrentPage);
  UpdateWizardButtons(*this, app.globals.CurrentPage, app.globals.LastPage);
  PageShown();
}

void WizardForm::AdaptToPort() {
  const bool port = app.globals.ComPortText != "None";
  DownOpt.Enabled = port;
  DownSaveOpt.Enabled = port;
  DownOptLbl.Enabled = port;
  DownSaveOptLbl.Enabled = port;
  UploadCmd.Visible = port;
  comparePart.AdaptToPort(port);
  AdaptToChoice();
  if (!port) {
    status.Tell("No port is chosen");
    ApplyHintLbl.Caption =
        "No port is chosen: the configuration can only be saved. To download it, choose a port in the " +
        app.globals.CurrentProduct + " Main Menu.";
  }
}

void WizardForm::AdaptToChoice() {
  const bool downloads = app.globals.ComPortText != "None" && !SaveOpt.Value;
  VerifyChk.Enabled = downloads;
  VerifyChkLbl.Enabled = downloads;
}

void WizardForm::SetTabOrder() {
  int index = FootTabIndex;
  for (Control* control : {&UploadCmd, &BackCmd, &NextCmd, &CancelCmd}) control->TabIndex = index++;
}

void WizardForm::NextCmd_Click() {
  std::int16_t& page = app.globals.CurrentPage;
  const std::int16_t shown = page;
  const bool opens = page == 0 && OpenConfigChk.Value == 1;
  if (page == 0 && RestoreChk.Visible && RestoreChk.Value == 1) Restore();
  if ((opens && !OpenFileAskedFor()) || !LeavePage()) {
    page = shown;
    return;
  }
  if (page == app.globals.LastPage) return Finish();
  while (page < app.globals.LastPage) {
    if (!Passes(++page)) break;
  }
  ShowCurrentPage();
}

void WizardForm::BackCmd_Click() {
  std::int16_t& page = app.globals.CurrentPage;
  if (page > 0) {
    --page;
    PassPagesBack();
  }
  ShowCurrentPage();
}

void WizardForm::PassPagesBack() {
  while (Passes(app.globals.CurrentPage)) --app.globals.CurrentPage;
}

bool WizardForm::HasChanged() {
  if (std::exchange(stale_, false)) {
    origin.Count(List());
    changes.Show(origin);
    stale_ = false;  // what says so has changed, and no value
  }
  return !origin.Changed().empty();
}

bool WizardForm::OpenFileAskedFor() {
  if (!OpenConfigFile(app, *this, app.globals.CurrentProduct, ModelTag())) return false;
  const std::string file = FileName();
  ValuesCome("Opened " + file, "since " + file + " was opened");
  return true;
}

void WizardForm::UploadCmd_Click() {
  const auto conversation = Conversation::Begin(app, *this, ReadingConfiguration, &status);
  if (!conversation) return;
  ShowConfigureReminder(app);
  TakeFrom(*conversation);
}

Taken WizardForm::ReadDevice(ExchangeObserver& observer) {
  const auto conversation = Conversation::Begin(app, *this, ReadingConfiguration, &observer);
  return conversation ? TakeFrom(*conversation) : Taken::Nothing;
}

Taken WizardForm::TakeFrom(Conversation& conversation) {
  const Taken taken = Upload(conversation);
  if (taken == Taken::Nothing || !IsLoaded()) return Taken::Nothing;
  const std::string port = "COM" + Str(conversation.port), time = app.forms.dispatcher.Loop().TimeOfDay();
  if (taken == Taken::All) {
    had_ = app.globals;
    BackupCmd.Visible = true;
    ValuesCome("Read from " + port + ", " + time, "since it was read from " + port + " at " + time);
  } else {
    origin.SetPart("Partly read from " + port + ", " + time);
  }
  return taken;
}

void WizardForm::ReportCmd_Click() {
  // Made before the user is asked: an upload may go on while he looks for a place.
  const std::string changed = origin.Changed().empty() ? "" : "; " + origin.ChangedLbl.Caption.Value();
  const std::string html = HtmlReport(ReportHeadOf(app, origin.SourceLbl.Caption.Value() + changed), List());
  const std::string file = SaveReport(ReportDialog, html);
  if (!file.empty() && !Busy && IsLoaded()) status.Tell("The report has been saved as " + file);
}

void WizardForm::BackupCmd_Click() {
  if (SaveAskedFor(&*had_) && !Busy && IsLoaded()) status.Tell("What the device had has been saved as " + FileName());
}

void WizardForm::Came(Origin from) {
  origin.Set(std::move(from));
  stale_ = true;
}

void WizardForm::ValuesCome(const std::string& source, const std::string& since) { Came({source, since, List()}); }

void WizardForm::ControlChanged(const Control& control, const PropertyBase& property) {
  // What stands on no page, or on the first or the last, shows no value.
  const Frame* page = control.Parent();
  if (page && page != &ConfigFrame && page != &ApplyFrame) {
    stale_ = true;
    names_.Follow(control, property);
  }
  pageHint.Follow(control);
}

void WizardForm::BehindAct() {
  if (!origin.IsKnown()) ValuesCome("Factory values", "from the factory values");
  HasChanged();
}

ComparedSide WizardForm::ShownSide() {
  const std::string state = origin.Changed().empty() ? origin.SourceLbl.Caption : origin.ChangedLbl.Caption;
  return {"In the wizard", state, Shown(List())};
}

std::string WizardForm::FileName() const { return FileNameOf(OpenSaveConfigDialog.FileName.Value()); }

Listing WizardForm::List() {
  std::vector<ListedPage> listed;
  const std::vector<WizardPage> pages = Pages();
  for (int page = 1; page < static_cast<int>(pages.size()) - 1; ++page) {
    const WizardPage& shown = pages[static_cast<std::size_t>(page)];
    listed.push_back({PageName(shown), shown.panes, Passes(page)});
  }
  return ListPages(listed, Foretell(), names_);
}

void WizardForm::Finish() {
  const bool downloads = DownOpt.Value || DownSaveOpt.Value, saves = SaveOpt.Value || DownSaveOpt.Value;
  const bool verifies = downloads && VerifyChk.Value == 1;
  std::shared_ptr<Conversation> conversation;
  if (downloads) conversation = Conversation::Begin(app, *this, WritingConfiguration, &status);
  if (downloads && !conversation) return;
  // The wizard closes at the end, and its conversation with it.
  if (!downloads && IsTalking() && RefusedByConversation(app)) return;
  if (!TakeOver([&] { BuildParameters(downloads); })) return;
  const Listing taken = List();
  const SentParameters sent{app.globals.ConfigImage, app.globals.BlockTable};
  if (downloads) ShowConfigureReminder(app);
  if (saves && !SaveConfigFile(app, *this, app.globals.CurrentProduct, ModelTag())) return TellUnsaved();
  if (saves) Came({"Saved as " + FileName(), "since it was saved as " + FileName(), taken});
  std::string done = saves ? "Saved as " + FileName() : "";
  if (downloads) {
    if (!Download(*conversation) || !IsLoaded()) return;
    const std::string product = conversation->product, port = "COM" + Str(conversation->port);
    const std::string time = app.forms.dispatcher.Loop().TimeOfDay();
    Came({"Written to " + port + ", " + time, "since it was written to " + port + " at " + time, taken});
    if (verifies && !comparePart.Verify(*conversation, sent)) return;
    conversation.reset();
    if (verifies) status.Tell("Written to " + port + " and verified: the " + product + " holds what was sent");
    app.forms.MsgBox("Configuration has been downloaded to the " + product, MessageIcon::Information, "Success!");
    done = origin.SourceLbl.Caption.Value() + (verifies ? ", and verified" : "") + (saves ? "\r\n" + done : "");
  }
  TellInMenu(done);
  if (HasChanged()) Keep();  // what was entered while the others went to the device
  UnloadMe();
}

void WizardForm::TellUnsaved() {
  const std::string why = WhyUnsaved();
  if (!why.empty() && IsLoaded()) status.TellFailure(why);
}

void WizardForm::TellInMenu(const std::string& words) {
  auto* const menu = static_cast<ProductMenu*>(app.forms.Find(ProductMenu::FormName));
  if (menu && !menu->Busy) menu->status.Tell(words);
}

bool WizardForm::TakeOver(const std::function<void()>& step) {
  Parameters& parameters = app.globals;
  const Parameters before = parameters;
  try {
    step();
    return true;
  } catch (const DoesNotFit& misfit) {
    parameters = before;
    app.forms.MsgBox(misfit.Description(), MessageIcon::Critical, "Error!");
    if (const Control* value = Find(misfit.Where().name, misfit.Where().index)) ShowRefused(*value, misfit.Hint());
    return false;
  }
}

void WizardForm::ShowHint(const std::string& hint) { pageHint.Show(hint, HintPlace(), nullptr); }

void WizardForm::ShowRefused(const Control& value, const std::string& hint) {
  if (!IsLoaded()) return;
  const int page = PageOf(value);
  if (page >= 0 && page != shownPage_) {
    if (shownPage_ != app.globals.LastPage && !leadsAnywhere_)
      return ShowHint(Pages()[static_cast<std::size_t>(page)].step->Caption.Value() + ": " + hint);
    app.globals.CurrentPage = static_cast<std::int16_t>(page);
    ShowCurrentPage();
    if (FieldTable* table = FieldTableOf(value)) table->Reveal(table->RowOf(value));
  }
  pageHint.Show(value.Shown() ? WithoutCondition(hint) : hint, HintPlace(), &value);
  RowTable* const rows = RowTableAround(value);
  if (rows) rows->Choose(rows->RowOf(value));
  const Control& led = rows ? *rows : value;
  if (led.Shown()) SetFocus(led);
}

void WizardForm::TellInStatus(const std::string& words) {
  const bool stands = !hintInStatus_.empty() && status.StatusLbl.Caption.Value() == hintInStatus_;
  // What an exchange tells goes before.
  if (Busy || (words.empty() && !stands)) return;
  if (!stands) statusBefore_ = status.StatusMark.Visible ? "" : status.StatusLbl.Caption.Value();
  hintInStatus_ = words;
  if (words.empty()) return status.Tell(statusBefore_);
  std::replace(hintInStatus_.begin(), hintInStatus_.end(), '\n', ' ');
  status.TellFailure(hintInStatus_);
}

bool WizardForm::EthernetFieldsAreValid() {
  const Control* const invalid = InvalidEthernetField(*this);
  if (CheckEthernetFields(app, *this) == 0) return true;
  if (invalid) ShowRefused(*invalid, NameOf(*invalid) + ": enter four numbers from 0 to 255, parted by points");
  return false;
}

int WizardForm::PageOf(const Control& control) {
  const auto pages = Pages();
  for (int page = 0; page < static_cast<int>(pages.size()); ++page) {
    for (const Control* inner = &control; inner; inner = inner->Parent()) {
      const auto& panes = pages[static_cast<std::size_t>(page)].panes;
      if (std::find(panes.begin(), panes.end(), inner) != panes.end()) return page;
    }
  }
  return -1;
}

void WizardForm::CancelCmd_Click() {
  if (HasChanged()) Keep();
  UnloadMe();
}

void WizardForm::Form_Close() {
  if (MayGo()) UnloadMe();
}

bool WizardForm::MayGo() {
  if (!HasChanged()) return true;
  const std::string question = "The configuration of the " + app.globals.CurrentProduct + " has changed " +
                               origin.Get().since + ": " + origin.ChangedLbl.Caption.Value() +
                               ".\r\nDo you want to save it in a file?";
  const Answer answer = app.forms.AskToSave(question);
  return answer == Answer::Discard || (answer == Answer::Save && SaveChanged());
}

bool WizardForm::SaveChanged() {
  // What is made for the file must not get between the blocks of an exchange.
  if (IsTalking() && RefusedByConversation(app)) return false;
  leadsAnywhere_ = true;
  const bool saved = LeaveAllPages() && TakeOver([this] { BuildParameters(false); }) && SaveAskedFor();
  leadsAnywhere_ = false;
  if (saved) TellInMenu("Saved as " + FileName());
  return saved;
}

bool WizardForm::LeaveAllPages() {
  std::int16_t& page = app.globals.CurrentPage;
  const std::int16_t shown = page;
  for (std::int16_t next = 1; next < app.globals.LastPage; ++next) {
    page = next;
    if (Passes(next) || LeavePage()) continue;
    page = static_cast<std::int16_t>(shownPage_);
    return false;
  }
  page = shown;
  return true;
}

bool WizardForm::SaveAskedFor(const Parameters* held) {
  if (SaveConfigFile(app, *this, app.globals.CurrentProduct, ModelTag(), held)) return true;
  if (const std::string why = WhyUnsaved(); !why.empty()) app.forms.MsgBox(why, MessageIcon::Critical, "Error!");
  return false;
}

std::string WizardForm::WhyUnsaved() const {
  const std::string file = FileName();
  return file.empty() ? "" : file + " could not be written. Choose another folder, or make room in this one.";
}

std::string WizardForm::KeptName() const { return app.globals.CurrentProduct + " " + ModelTag(); }

void WizardForm::Keep() {
  const std::string time = app.forms.dispatcher.Loop().TimeOfDay();
  app.kept[KeptName()] = std::make_shared<KeptValues>(KeptValues{app.globals, List(), origin.Get(), time});
}

void WizardForm::OfferKept() {
  const auto kept = app.kept.find(KeptName());
  const bool offers = kept != app.kept.end();
  RestoreChk.Visible = offers;
  RestoreChkLbl.Visible = offers;
  RestoreChk.Value = 0;
  if (!offers) return;
  RestoreChkLbl.Caption = "Restore the values of " + kept->second->time;
  RestoreChk.Caption = RestoreChkLbl.Caption.Value();
}

void WizardForm::Restore() {
  const auto kept = app.kept.at(KeptName());
  Parameters& parameters = app.globals;
  parameters = kept->parameters;
  const Listing fields = List();
  for (std::size_t i = 0; i < fields.size() && fields[i].key == kept->values[i].key; ++i) {
    SetValue(*fields[i].control, kept->values[i].value);
  }
  parameters = kept->parameters;  // what no field shows, and what the handlers did on the way
  CellsRestored();
  Came(kept->origin);
  app.kept.erase(KeptName());
  OfferKept();
}

void WizardForm::TimeOutTmr_Timer() { SetTimeOutFlag(app, *this); }

void WizardForm::OpenConfigChkLbl_Click() { OpenConfigChk.Value = 1 - OpenConfigChk.Value; }

}  // namespace vk32
