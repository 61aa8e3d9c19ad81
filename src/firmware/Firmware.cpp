// The wizard that replaces a gateway's firmware, and the erase-and-stream exchange.
#include "firmware/Firmware.h"

#include <algorithm>

#include "core/Convert.h"
#include "firmware/FirmwareFile.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"
#include "shell/Subs.h"

namespace vk32 {
namespace {

constexpr int EraseLimit = 15000, ReadyLimit = 3000, BurnLimit = 6000;  // ms
constexpr int EraseTick = 1000;                                         // ms
constexpr std::size_t PieceLength = 10240;                              // bytes: the unit of progress
constexpr const char* NoFirmware = "The gateway has no firmware now.";
constexpr Purpose UpgradingFirmware{"Upgrading the firmware", "End it by CANCEL in the window Upgrade Firmware."};

}  // namespace

std::vector<WizardPage> Firmware::Pages() {
  return {
      {&SelectFirmLbl, {&UpgradeFrame}}, {&ConfirmFirmLbl, {&ConfirmationFrame}}, {&InstallFirmLbl, {&InstallFrame}}};
}

void Firmware::Form_Load() {
  FirmwareInstalling = false;
  app_.globals.FirmwarePage = 0;
  app_.globals.FirmwareLastPage = 2;
  CancelCmd.Visible = true;
  ResultMark.Visible = false;
  ShowCurrentPage();
  DeviceLbl.Caption = app_.globals.CurrentProduct;
}

void Firmware::ShowCurrentPage() {
  ShowFirmwareStep(app_.globals.FirmwarePage);
  ShowFirmwareFrame(app_.globals.FirmwarePage);
  UpdateWizardButtons(*this, app_.globals.FirmwarePage, app_.globals.FirmwareLastPage);
  // Here NEXT erases: Enter presses it only for who has gone to it.
  const bool erases = app_.globals.FirmwarePage == 1;
  NextCmd.key = erases ? WindowKey::None : WindowKey::Enter;
  if (erases) SetFocus(BackCmd);
}

void Firmware::SelectFirmwareFile() {
  FirmwareDialog.Prepare("Select Firmware File", FirmwareFilter(app_.globals.CurrentProduct));
  FirmwareDialog.ShowOpen();
  FirmFileTxt.Text = FirmwareDialog.FileName.Value();
}

void Firmware::NextCmd_Click() {
  switch (app_.globals.FirmwarePage) {
    case 0: CheckFile(); break;
    case 1: ProbeAndInstall(); break;
    default: UnloadMe();
  }
}

void Firmware::CheckFile() {
  const std::string& path = FirmFileTxt.Text;
  if (path.empty()) {
    app_.forms.MsgBox("Must select a firmware file to continue.", MessageIcon::Information);
  } else if (!FirmwareFileExists(path)) {
    app_.forms.MsgBox("File does not exist.  Select a Firmware file to continue.", MessageIcon::Information);
  } else if (!IsFirmwareFile(path)) {
    app_.forms.MsgBox("The selected file is not a valid firmware file.\r\nSelect another file to continue.",
                      MessageIcon::Exclamation);
  } else {
    ++app_.globals.FirmwarePage;
    checkedLength_ = FirmwareFileLength(path);
    FirmFileConTxt.Caption = path;
    ShowCurrentPage();
  }
}

std::shared_ptr<Conversation> Firmware::BeginProbe() {
  // After a failed probe it is there already, with its port open.
  if (!conversation_ || probing_) {
    const auto begun = Conversation::Begin(app_, *this, UpgradingFirmware);
    if (!begun) return nullptr;
    conversation_ = begun;
  }
  return conversation_;
}

void Firmware::ProbeAndInstall() {
  const auto conversation = BeginProbe();
  if (!conversation) return;
  Busy = probing_ = true;
  const bool found = DetectOfflineManager(*conversation);
  Busy = probing_ = false;
  if (conversation->IsOver()) return;
  if (!found) {
    // A port that has gone can only come back by a new open.
    if (conversation->WaitHandle() < 0) conversation_.reset();
    app_.forms.MsgBox(
        "Press the Configuration Button on the " + conversation->product + "\r\nbefore attepmting to continue.",
        MessageIcon::Information, "VK32", conversation->exchange.Details());
    SetFocus(BackCmd);
    return;
  }
  ++app_.globals.FirmwarePage;
  ShowCurrentPage();
  NextCmd.Visible = false;
  BackCmd.Visible = false;
  FirmwareInstalling = true;
  Busy = true;
  const bool installed = InstallFirmware(*conversation, FirmFileTxt.Text);
  Busy = false;
  conversation_.reset();
  ProgressInfoLbl.Caption =
      installed ? "Firmware has been successfully installed." : "An error has occured while installing firmware.";
  Progress.Value = Progress.Max;
  NextCmd.Visible = true;
  BackCmd.Visible = false;
  CancelCmd.Visible = false;
  SetFocus(NextCmd);
}

void Firmware::BackCmd_Click() {
  if (probing_) {
    // Nothing may be erased any more, whatever the device still answers.
    conversation_->End();
    conversation_.reset();
  }
  if (app_.globals.FirmwarePage >= 1) --app_.globals.FirmwarePage;
  ShowCurrentPage();
}

void Firmware::CancelCmd_Click() {
  if (!FirmwareInstalling) {
    UnloadMe();
    return;
  }
  const std::string& product = conversation_->product;
  const bool yes = app_.forms.AskYesNo(
      "Are you sure you want cancel the firmware upgrade?\r\r\nCancelling will cause the firmware in the " + product +
          " to become corrupt. The\r\nfirmware will need to be resent before the " + product + " will operate.",
      true);
  if (yes) UnloadMe();
}

void Firmware::Form_Close() {
  if (CancelCmd.Visible) {
    CancelCmd_Click();
  } else {
    UnloadMe();
  }
}

bool Firmware::InstallFirmware(Conversation& conversation, const std::string& path) {
  Progress.Value = 0;
  Progress.Max = FullBar;
  progress_ = SendProgress(path, checkedLength_, Val(app_.globals.BaudRate));
  DetailTmr_Timer();
  DetailTmr.Enabled = true;
  conversation.CommSet();
  const bool installed = EraseAndWaitUntilReady(conversation) && StreamAndWaitUntilBurnt(conversation, path);
  DetailTmr.Enabled = false;
  ShowResult(installed, conversation.WaitHandle() < 0);
  conversation.CommWriteLast(EndOfExchange);
  conversation.CommClose();
  return installed;
}

bool Firmware::StreamAndWaitUntilBurnt(Conversation& conversation, const std::string& path) {
  step_ = Step::Read;
  progress_.Begin(Now());
  const auto pieceSent = [this](std::uint64_t sent, std::uint64_t total) {
    Progress.Value = BarValue(sent, total);
    progress_.Sent(sent, total, Now());
    DetailTmr_Timer();
  };
  if (!StreamFile(conversation, path, PieceLength, pieceSent, checkedLength_)) return false;
  step_ = Step::Burn;
  SetTimeOut(conversation, BurnLimit);
  const bool burnt = WaitForAck(conversation) != FlagTrue;
  conversation.CommSetNOXON();
  return burnt;
}

void Firmware::DetailTmr_Timer() { DetailLbl.Caption = progress_.Words() + progress_.Left(Now()); }

void Firmware::ShowResult(bool installed, bool portGone) {
  const struct {
    const char *detail, *state;
  } failures[] = {{", then nothing came within 15 s", "The gateway may have no firmware now."},
                  {", then nothing came within 3 s", NoFirmware},
                  {", then the file could not be read to its end", NoFirmware},
                  {", then nothing came within 6 s",
                   progress_.IsWhole() ? "The gateway did not confirm its new firmware." : NoFirmware}};
  const auto& failure = failures[static_cast<int>(step_)];
  if (installed) {
    DetailLbl.Caption = progress_.Words() + " in " + Str(progress_.Seconds(Now())) + " s";
  } else {
    DetailLbl.Caption = progress_.Words() + (portGone ? ", then the port was gone" : failure.detail);
    NextStepLbl.Caption = std::string(failure.state) +
                          " Leave its power on, click FINISH and upgrade once more, or use the Offline Manager.";
  }
  ResultMark.Picture = installed ? Symbol::Tick : Symbol::Cross;
  ResultMark.Visible = true;
  ResultLbl.Caption = installed ? "The firmware is installed" : "The firmware is not installed";
}

bool Firmware::EraseAndWaitUntilReady(Conversation& conversation) {
  step_ = Step::Erase;
  Send(conversation, FirmwareMode);
  ProgressInfoLbl.Caption = "Erasing flash memory...";
  Progress.Value = 0;
  FirmEraseTmr.Enabled = false;
  FirmEraseTmr.Interval = EraseTick;
  FirmEraseTmr.Enabled = true;
  SetTimeOut(conversation, EraseLimit);
  const bool erased = WaitForAck(conversation) != FlagTrue;
  FirmEraseTmr.Enabled = false;
  if (!erased) return false;
  step_ = Step::GetReady;
  ProgressInfoLbl.Caption = "Firmware is being installed...";
  Progress.Value = 0;
  SetTimeOut(conversation, ReadyLimit);
  return WaitForAck(conversation) != FlagTrue;
}

void Firmware::FirmEraseTmr_Timer() {
  const int step = CLng(static_cast<double>(EraseTick) / EraseLimit * FullBar);
  Progress.Value = std::min(Progress.Value + step, Progress.Max.Value());
  if (Progress.Value == Progress.Max) FirmEraseTmr.Enabled = false;
}

bool Firmware::ReceiveFlashBurnResponse(Conversation& conversation) {
  constexpr int ResponseLimit = 3000, ChunkLength = 35;
  const Globals& globals = conversation.app.globals;
  Bytes buffer;
  conversation.TimeOutTmr().Interval = ResponseLimit;
  conversation.app.globals.TimeOutFlag = FlagFalse;
  conversation.TimeOutTmr().Enabled = true;
  const auto has = [&](const char* word) { return buffer.find(word) != Bytes::npos; };
  const auto over = [&] {
    return has("Failed") || has("Successful") || globals.TimeOutFlag == FlagTrue || conversation.IsOver();
  };
  while (!over()) {
    Bytes chunk;
    PollPort(conversation, chunk, ChunkLength);
    buffer += chunk;
  }
  return has("Successful") && globals.TimeOutFlag == FlagFalse;
}

}  // namespace vk32
