// What the configuration wizards of all products share: side menu, foot, welcome page, apply page, and the way to
// Finish.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/App.h"
#include "core/ConfigMod.h"
#include "core/ConfigurationForm.h"
#include "link/Conversation.h"
#include "listing/CompareForm.h"
#include "listing/Listing.h"
#include "models/wizard/ChangesPart.h"
#include "models/wizard/ComparePart.h"
#include "models/wizard/PageHint.h"
#include "models/wizard/ValueOrigin.h"
#include "shell/StatusLine.h"
#include "shell/WizardPages.h"

namespace vk32 {

/// The place of every page.
constexpr Place PagePlace{3840, 0, 9000, 7620};

class WizardForm : public ConfigurationForm {
 public:
  /// Colours the step label of the page and moves the mark to it. A number that is no page does nothing.
  void ShowWizardStep(int page);
  /// Shows the first frame of the page and hides all others. A number that is no page does nothing.
  void ShowWizardFrame(int page);
  /// Says something on the page that shows, until a value changes or another page comes.
  void ShowHint(const std::string& hint);
  /// After the user has been told that the value is refused: leads to it. Only a refused Finish or Save shows another
  /// page.
  void ShowRefused(const Control& value, const std::string& hint);
  /// All pages between the first and the last, those that are passed and fields that don't show included.
  Listing List();
  /// Asks for a file and opens it. False if that did not lead to an open file; the user has been told.
  bool OpenFileAskedFor();
  bool MayGo() override;
  /// What UPLOAD does behind its reminder, in a conversation of its own.
  Taken ReadDevice(ExchangeObserver& observer);
  /// Decodes a download's bytes into the pages, as if the device had given them back.
  virtual void TakeSent(const SentParameters& sent) = 0;
  /// What it shows, as one side of a comparison.
  ComparedSide ShownSide();

 protected:
  /// `timeOutInterval`: of TimeOutTmr at load, in ms; the tops: of the last two lines of the side menu.
  WizardForm(App& app, const char* name, int timeOutInterval, int finalizeTop, int applyTop);

  /// From page 0 to LastPage.
  virtual std::vector<WizardPage> Pages() = 0;

  /// What Next does before it goes on: checks the page, takes over what the later ones need, and counts CurrentPage up
  /// over pages that are passed. False if the page is not to be left.
  virtual bool LeavePage() { return true; }
  /// Counts CurrentPage, which is one less already, down over pages that are passed on the way back.
  virtual void PassPagesBack();
  /// The page is not shown on the way, by what the pages before it say now.
  virtual bool Passes(int) const { return false; }
  /// What controls will show when their page is reached, where they don't say so yet.
  virtual std::vector<Foretold> Foretell() const { return {}; }

  /// Behind the values of an earlier wizard, which have been entered into the fields and the cells of tables.
  virtual void CellsRestored() {}

  /// Reads the parameters from the device into the pages.
  virtual Taken Upload(Conversation& conversation) = 0;
  /// Makes what is saved, and `sent` as well, from the parameters. DoesNotFit if the device can't hold a value.
  virtual void BuildParameters(bool sent) = 0;
  /// Writes the parameters to the device. False on a failure; the user has been told.
  virtual bool Download(Conversation& conversation) = 0;

  /// At the load: shows the welcome page, and what the port allows.
  void Begin(std::int16_t lastPage);
  /// Runs a step that takes values from the pages. False if the device can't hold one: the user has been told, and the
  /// parameters are what they were.
  bool TakeOver(const std::function<void()>& step);

  /// True for three good addresses; else the user has been told, and led to the first that is not.
  bool EthernetFieldsAreValid();
  /// Of a hint's words, on the form: in two lines below the fields.
  virtual Place HintPlace() const { return {4500, 7035, 7980, 480}; }

  /// Ends what reads another configuration for the wizard.
  void Form_Unload() override { comparePart.Stop(); }
  /// A page has come.
  virtual void PageShown() {}

  App& app;

 private:
  void ControlChanged(const Control& control, const PropertyBase& property) override;
  /// The page that the control lies on, or -1.
  int PageOf(const Control& control);
  void BehindAct() override;
  void Form_Close() override;
  void NextCmd_Click();
  void BackCmd_Click();
  void UploadCmd_Click();
  /// Reads the device into the pages, and says so beside the foot.
  Taken TakeFrom(Conversation& conversation);
  void CancelCmd_Click();
  void TimeOutTmr_Timer();
  /// Shows CurrentPage, with its step and its buttons.
  void ShowCurrentPage();
  /// Without a port only the work on files is left.
  void AdaptToPort();
  /// Only what is downloaded can be read back.
  void AdaptToChoice();
  /// The buttons at the foot come behind all pages.
  void SetTabOrder();
  /// Carries out the selected option; unloads the form when it is done.
  void Finish();
  /// For the user who has the product's menu before him again.
  void TellInMenu(const std::string& words);
  /// Changes count from there.
  void Came(Origin from);
  /// The values that the pages show now come from there.
  void ValuesCome(const std::string& source, const std::string& since);
  bool HasChanged();
  /// Does what NEXT does on each page that is not passed. False if one is not to be left: it is shown.
  bool LeaveAllPages();
  bool SaveChanged();
  /// False if no file was written. `held`: in place of the present parameters.
  bool SaveAskedFor(const Parameters* held = nullptr);
  /// Of the save that has failed; empty if the user has cancelled it.
  std::string WhyUnsaved() const;
  /// The wizard stays as it does behind a cancelled dialog; its status says that this was none.
  void TellUnsaved();
  void BackupCmd_Click();
  void ReportCmd_Click();
  /// For the welcome page of the next wizard of this product and model.
  void Keep();
  std::string KeptName() const;
  void OfferKept();
  void Restore();
  /// Of the file that was picked last, without its folder.
  std::string FileName() const;
  /// What a hint says, in one line; empty: it has gone, and what was told before is back.
  void TellInStatus(const std::string& words);

  int shownPage_ = 0;
  bool leadsAnywhere_ = false;  // a refused value brings its page, whichever shows
  std::string hintInStatus_, statusBefore_;

  bool IsTalking() const { return app.conversation != nullptr && &app.conversation->form == this; }
  void OpenConfigChkLbl_Click();

  std::optional<Parameters> had_;  // the device, when it was read last
  bool stale_ = true;              // a page has changed since the changes were counted
  KeptNames names_;

 public:
  // clang-format off
  Frame       SideFrame      {*this, "SideFrame",      {   0,    0, 3840, 8400}, Fill::Side};
  Frame       SideLineFrame  {*this, "SideLineFrame",  {3825,    0,   15, 8400}, Fill::Hairline};
  Frame       FootLineFrame  {*this, "FootLineFrame",  {3840, 7620, 9000,   15}, Fill::Hairline};
  Frame       StepMarkFrame  {*this, "StepMarkFrame",  {   0, 1440,   60,  315}, Fill::Accent};
  Label       DeviceLbl      {*this, "DeviceLbl",      { 240,  240, 3360,  480}, "", TextRole::Product};
  Label       ModelLbl       {*this, "ModelLbl",       { 240,  660, 3360,  240}, "", TextRole::Small};
  Label       WelcomeLbl     {*this, "WelcomeLbl",     { 240, 1080, 3480,  315}, "Welcome Screen", TextRole::Heading};
  Label       OpenConfigLbl  {*this, "OpenConfigLbl",  { 240, 1440, 3480,  315}, "Welcome / Open Configuration", TextRole::Step};
  Label       FinalizeSetLbl;
  Label       ApplySetLbl;

  ValueOrigin origin         {*this};

  ImageButton UploadCmd      {*this, "UploadCmd",      { 4200, 7815, 2055, 390}, &WizardForm::UploadCmd_Click};
  ImageButton BackCmd        {*this, "BackCmd",        { 8760, 7815, 1050, 390}, &WizardForm::BackCmd_Click};
  ImageButton NextCmd        {*this, "NextCmd",        { 9930, 7815, 1050, 390}, &WizardForm::NextCmd_Click, WindowKey::Enter};
  ImageButton CancelCmd      {*this, "CancelCmd",      {11340, 7815, 1140, 390}, &WizardForm::CancelCmd_Click, WindowKey::EscapeMovesFocus};

  Frame       StatusFrame     {*this, "StatusFrame",     {   0, 8400, 12840, 360}, Fill::Side};
  Frame       StatusLineFrame {*this, "StatusLineFrame", {   0, 8400, 12840,  15}, Fill::Hairline};
  StatusLine  status          {*this, {240, 8415, 9450, 345}, Place{9930, 8520, 2550, 120}};
  PageHint    pageHint        {*this, [this](const std::string& words) { TellInStatus(words); }};

  Timer       TimeOutTmr;
  FileDialog  OpenSaveConfigDialog {*this, "OpenSaveConfigDialog"};
  FileDialog  ReportDialog   {*this, "ReportDialog"};

  // Welcome page
  Frame       ConfigFrame      {*this, "ConfigFrame", PagePlace};
  Label       ConfigTitleLbl   {ConfigFrame, "ConfigTitleLbl",  {360,  240, 8280,  480},
                                "Welcome to the Norvanta Gateway Configuration Screen", TextRole::Title};
  Label       ConfigTitleLbl1  {ConfigFrame, "ConfigTitleLbl1", {360,  780, 8280, 1350},
                                "To begin configuring your Norvanta Gateway device, click NEXT or choose one of the options from the menu on "
                                "the left.  You can upload the current configuration from your Gateway device by clicking the UPLOAD CONFIGURATION "
                                "button.  To open a previously saved configuration file, click on the OPEN CONFIGURATION button."};
  Label       Label2           {ConfigFrame, "Label2",          {360, 2280, 8280,  540},
                                "To open a previously saved configuration file, put a checkmark in the Open a Saved Configuration File option "
                                "below and click NEXT."};
  CheckBox    OpenConfigChk    {ConfigFrame, "OpenConfigChk",    {360, 3000,  315, 315}, "Open a Saved Configuration File",
                                [this] { if (OpenConfigChk.Value == 1) RestoreChk.Value = 0; }};
  Label       OpenConfigChkLbl {ConfigFrame, "OpenConfigChkLbl", {720, 3000, 4200, 315}, "Open a Saved Configuration File",
                                TextRole::Body, &WizardForm::OpenConfigChkLbl_Click};
  CheckBox    RestoreChk       {ConfigFrame, "RestoreChk",       {360, 3360,  315, 315}, "",
                                [this] { if (RestoreChk.Value == 1) OpenConfigChk.Value = 0; }};
  Label       RestoreChkLbl    {ConfigFrame, "RestoreChkLbl",    {720, 3360, 4200, 315}, "", TextRole::Body,
                                [this] { RestoreChk.Value = 1 - RestoreChk.Value; }};

  // Apply page
  Frame        ApplyFrame     {*this, "ApplyFrame", PagePlace};
  Label        ApplyTitleLbl  {ApplyFrame, "ApplyTitleLbl",  {360,  240, 8280,  480}, "Apply Configuration Settings", TextRole::Title};
  Label        ApplyLbl       {ApplyFrame, "ApplyLbl",       {360,  780, 8280, 1080},
                               "To download the configuration settings to the gateway device, select the Download Configuration option and click "
                               "the FINISH button.  You may also save your configuration settings by selecting one of the other options available."};
  OptionButton DownOpt        {ApplyFrame, "DownOpt",        {360, 2040,  315,  315}, "Download Configuration", true, &WizardForm::AdaptToChoice};
  Label        DownOptLbl     {ApplyFrame, "DownOptLbl",     {720, 2040, 4200,  315}, "Download Configuration",
                               TextRole::Body, [this] { DownOpt.Value = true; }};
  OptionButton SaveOpt        {ApplyFrame, "SaveOpt",        {360, 2400,  315,  315}, "Save Configuration", false, &WizardForm::AdaptToChoice};
  Label        SaveOptLbl     {ApplyFrame, "SaveOptLbl",     {720, 2400, 4200,  315}, "Save Configuration",
                               TextRole::Body, [this] { SaveOpt.Value = true; }};
  OptionButton DownSaveOpt    {ApplyFrame, "DownSaveOpt",    {360, 2760,  315,  315}, "Download and Save Configuration", false, &WizardForm::AdaptToChoice};
  Label        DownSaveOptLbl {ApplyFrame, "DownSaveOptLbl", {720, 2760, 4200,  315}, "Download and Save Configuration",
                               TextRole::Body, [this] { DownSaveOpt.Value = true; }};
  CheckBox     VerifyChk      {ApplyFrame, "VerifyChk",      {360, 3240,  315,  315}, "Read back and compare after the download"};
  Label        VerifyChkLbl   {ApplyFrame, "VerifyChkLbl",   {720, 3240, 6000,  315}, "Read back and compare after the download",
                               TextRole::Body, [this] { VerifyChk.Value = 1 - VerifyChk.Value; }};
  Label        ApplyHintLbl   {ApplyFrame, "ApplyHintLbl",   {5040, 2040, 3600, 960}, "", TextRole::Small};
  CommandButton BackupCmd     {ApplyFrame, "BackupCmd",      {5160, 2730, 3480,  390}, "Save what the device had...", &WizardForm::BackupCmd_Click};
  ChangesPart  changes        {ApplyFrame};
  ComparePart  comparePart    {*this, app, ApplyFrame};
  CommandButton ReportCmd     {ApplyFrame, "ReportCmd",      {6360, 7080, 1560,  390}, "Report...", &WizardForm::ReportCmd_Click};
  // clang-format on
};

}  // namespace vk32
