// The wizard that replaces a gateway's firmware: pick a file, confirm it, watch the installation.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/App.h"
#include "firmware/SendProgress.h"
#include "link/Conversation.h"
#include "link/VKComSubs.h"
#include "shell/WizardPages.h"

namespace vk32 {

class Firmware : public Form {
 public:
  static constexpr const char* FormName = "Firmware";

  explicit Firmware(App& app) : Form(app.forms, FormName, "Upgrade Firmware", 10800, 5880), app_(app) {}

  /// Runs the exchange on the port that the probe left open, and closes it. True if the device has burnt the file.
  bool InstallFirmware(Conversation& conversation, const std::string& path);
  /// Reads a textual burn result. True if "Successful" came within 3000 ms. The timer is left enabled.
  static bool ReceiveFlashBurnResponse(Conversation& conversation);

 private:
  void Form_Load() override;
  void Form_Unload() override { conversation_.reset(); }
  /// The window's own close control asks what CANCEL asks.
  void Form_Close() override;
  void NextCmd_Click();
  void BackCmd_Click();
  void CancelCmd_Click();
  void BrowseCmd_Click() { SelectFirmwareFile(); }
  void TimeOutTmr_Timer() { SetTimeOutFlag(app_, *this); }
  void FirmEraseTmr_Timer();
  void DetailTmr_Timer();

  void ShowFirmwareStep(int page) { ShowPageStep(Pages(), page, StepMarkFrame); }
  void ShowFirmwareFrame(int page) { ShowPageFrame(Pages(), page); }
  void SelectFirmwareFile();
  void ShowCurrentPage();
  void CheckFile();
  void ProbeAndInstall();
  /// The one of this installation, begun with its first probe. nullptr if it can't begin; the user has been told.
  std::shared_ptr<Conversation> BeginProbe();
  bool EraseAndWaitUntilReady(Conversation& conversation);
  bool StreamAndWaitUntilBurnt(Conversation& conversation, const std::string& path);
  /// Says how the installation has ended, and after a failure what to do next.
  void ShowResult(bool installed, bool portGone);
  Time Now() const { return app_.forms.dispatcher.Loop().Now(); }
  std::vector<WizardPage> Pages();

  App& app_;
  bool FirmwareInstalling = false;
  std::uint64_t checkedLength_ = 0;             // of the file, in bytes, when it was checked
  std::shared_ptr<Conversation> conversation_;  // from the first probe to the end of the installation
  bool probing_ = false;
  enum class Step { Erase, GetReady, Read, Burn } step_ = Step::Erase;  // that the installation has come to
  SendProgress progress_;

  static constexpr Place PagePlace{2640, 0, 8160, 5100};

 public:
  // clang-format off
  Frame       SideFrame         {*this, "SideFrame",         {   0,    0, 2640, 5880}, Fill::Side};
  Frame       SideLineFrame     {*this, "SideLineFrame",     {2625,    0,   15, 5880}, Fill::Hairline};
  Frame       FootLineFrame     {*this, "FootLineFrame",     {2640, 5100, 8160,   15}, Fill::Hairline};
  Frame       StepMarkFrame     {*this, "StepMarkFrame",     {   0, 1440,   60,  315}, Fill::Accent};
  Label       DeviceLbl         {*this, "DeviceLbl",         { 240,  240, 2160,  480}, "", TextRole::Product};
  Label       FirwareUpgradeLbl {*this, "FirwareUpgradeLbl", { 240, 1080, 2280,  315}, "Upgrade Firmware", TextRole::Heading};
  Label       SelectFirmLbl     {*this, "SelectFirmLbl",     { 240, 1440, 2280,  315}, "Select Firmware", TextRole::Step};
  Label       ConfirmFirmLbl    {*this, "ConfirmFirmLbl",    { 240, 1800, 2280,  315}, "Confirmation", TextRole::Step};
  Label       InstallFirmLbl    {*this, "InstallFirmLbl",    { 240, 2160, 2280,  315}, "Installation", TextRole::Step};

  // Select Firmware
  Frame         UpgradeFrame    {*this, "UpgradeFrame", PagePlace};
  Label         UpgradeTitleLbl {UpgradeFrame, "UpgradeTitleLbl", { 360,  240, 7440, 480}, "Upgrade Firmware", TextRole::Title};
  Label         UpgradeLbl      {UpgradeFrame, "UpgradeLbl",      { 360,  780, 7440, 540},
                                 "This wizard will help upgrade the firmware in your gateway device.  To begin, select the firmware file to be burned below."};
  Label         FirmFileLbl     {UpgradeFrame, "FirmFileLbl",     { 360, 1560, 5880, 315}, "Firmware File:"};
  TextBox       FirmFileTxt     {UpgradeFrame, "FirmFileTxt",     { 360, 1920, 5880, 315}};
  CommandButton BrowseCmd       {UpgradeFrame, "BrowseCmd",       {6360, 1890, 1440, 390}, "Browse", &Firmware::BrowseCmd_Click};

  // Confirmation
  Frame       ConfirmationFrame    {*this, "ConfirmationFrame", PagePlace};
  Label       ConfirmationTitleLbl {ConfirmationFrame, "ConfirmationTitleLbl", {360,  240, 7440,  480}, "Confirmation", TextRole::Title};
  Label       ConfirmationLbl      {ConfirmationFrame, "ConfirmationLbl",      {360,  780, 7440, 1080},
                                    "Below is firmware file to be installed to the gateway device.  If this is correct, press Next to continue and install "
                                    "the firmware.  If the file shown is not correct press Back to select a different file or press Cancel to quit the "
                                    "installation process."};
  Label       FirmFileConLbl       {ConfirmationFrame, "FirmFileConLbl",       {360, 2040, 7440,  315}, "Firmware File:"};
  Label       FirmFileConTxt       {ConfirmationFrame, "FirmFileConTxt",       {360, 2355, 7440,  810}, ""};
  Label       Label1               {ConfirmationFrame, "Label1",               {360, 3480, 7440,  540},
                                    "Selecting Next will erase the current firmware in the gateway device.", TextRole::Heading};
  Label       Label2               {ConfirmationFrame, "Label2",               {360, 4200, 7440,  540},
                                    "Before Continuing, press the Configure Button on your gateway device.", TextRole::Heading};

  // Installation
  Frame       InstallFrame    {*this, "InstallFrame", PagePlace};
  Label       InstallFrm      {InstallFrame, "InstallFrm",      {360,  240, 7440, 480}, "Install Firmware", TextRole::Title};
  Label       InstallLbl      {InstallFrame, "InstallLbl",      {360,  780, 7200, 540},
                               "Do not disconnect the power or any cables while firmware is being installed. ", TextRole::Heading};
  Label       ProgressLbl     {InstallFrame, "ProgressLbl",     {360, 1560, 7440, 315}, "Progress:"};
  ProgressBar Progress        {InstallFrame, "ProgressBar",     {360, 1920, 7440, 315}};
  Label       ProgressInfoLbl {InstallFrame, "ProgressInfoLbl", {360, 2280, 7440, 315}, "Firmware is being installed..."};
  Label       DetailLbl       {InstallFrame, "DetailLbl",       {360, 2640, 7440, 315}, "", TextRole::Muted};
  Image       ResultMark      {InstallFrame, "ResultMark",      {360, 3360,  360, 360}, Symbol::Tick};
  Label       ResultLbl       {InstallFrame, "ResultLbl",       {840, 3360, 6960, 360}, "", TextRole::Heading};
  Label       NextStepLbl     {InstallFrame, "NextStepLbl",     {840, 3780, 6960, 810}, ""};

  ImageButton BackCmd         {*this, "BackCmd",   {6720, 5295, 1050, 390}, &Firmware::BackCmd_Click};
  ImageButton NextCmd         {*this, "NextCmd",   {7890, 5295, 1050, 390}, &Firmware::NextCmd_Click, WindowKey::Enter};
  ImageButton CancelCmd       {*this, "CancelCmd", {9300, 5295, 1140, 390}, &Firmware::CancelCmd_Click, WindowKey::EscapeMovesFocus};

  Timer       TimeOutTmr      {*this, "TimeOutTmr",   0,    true,  &Firmware::TimeOutTmr_Timer};
  Timer       FirmEraseTmr    {*this, "FirmEraseTmr", 1000, false, &Firmware::FirmEraseTmr_Timer};
  Timer       DetailTmr       {*this, "DetailTmr",    1000, false, &Firmware::DetailTmr_Timer};
  FileDialog  FirmwareDialog  {*this, "FirmwareDialog"};
  // clang-format on
};

}  // namespace vk32
