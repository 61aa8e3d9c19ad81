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
constexpr const char *AnswerYes = "6", *AnswerNo = "7";

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
  ShowCurrentPage();
  DeviceLbl.Caption = app_.globals.CurrentProduct;
}

void Firmware::ShowCurrentPage() {
  ShowFirmwareStep(app_.globals.FirmwarePage);
  ShowFirmwareFrame(app_.globals.FirmwarePage);
  UpdateWizardButtons(*this, app_.globals.FirmwarePage, app_.globals.FirmwareLastPage);
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

void Firmware::ProbeAndInstall() {
  if (probing_) return;
  probing_ = true;
  probeStopped_ = false;
  const bool found = DetectOfflineManager(app_, TimeOutTmr);
  probing_ = false;
  // Cancel and Back were live during the probe: after either of them nothing may be erased.
  if (!IsLoaded() || probeStopped_) return;
  if (!found) {
    app_.forms.MsgBox(
        "Press the Configuration Button on the " + app_.globals.CurrentProduct + "\r\nbefore attepmting to continue.",
        MessageIcon::Information);
    return;
  }
  ++app_.globals.FirmwarePage;
  ShowCurrentPage();
  NextCmd.Visible = false;
  BackCmd.Visible = false;
  FirmwareInstalling = true;
  const bool installed = InstallFirmware(FirmFileTxt.Text);
  ProgressInfoLbl.Caption =
      installed ? "Firmware has been successfully installed." : "An error has occured while installing firmware.";
  Progress.Value = Progress.Max;
  NextCmd.Visible = true;
  BackCmd.Visible = false;
  CancelCmd.Visible = false;
}

void Firmware::BackCmd_Click() {
  probeStopped_ = true;
  if (app_.globals.FirmwarePage >= 1) {
    --app_.globals.FirmwarePage;
    ShowFirmwareStep(app_.globals.FirmwarePage);
    ShowFirmwareFrame(app_.globals.FirmwarePage);
  }
  UpdateWizardButtons(*this, app_.globals.FirmwarePage, app_.globals.FirmwareLastPage);
}

void Firmware::CancelCmd_Click() {
  if (!FirmwareInstalling) {
    UnloadMe();
    return;
  }
  const std::string& product = app_.globals.CurrentProduct;
  // While the question stands nobody reads the port: the wait's clock must not run out over it.
  const bool waiting = TimeOutTmr.Enabled;
  TimeOutTmr.Enabled = false;
  const bool yes = app_.forms.AskYesNo(
      "Are you sure you want cancel the firmware upgrade?\r\r\nCancelling will cause the firmware in the " + product +
          " to become corrupt. The\r\nfirmware will need to be resent before the " + product + " will operate.",
      true);
  TimeOutTmr.Enabled = waiting;
  CancelAnswer = yes ? AnswerYes : AnswerNo;
  if (yes) UnloadMe();
}

void Firmware::Form_Close() {
  if (CancelCmd.Visible) {
    CancelCmd_Click();
  } else {
    UnloadMe();
  }
}

bool Firmware::InstallFirmware(const std::string& path) {
  const std::int32_t port = app_.globals.ComPortNumber;
  const std::string settings = LinkSettings(app_.globals);  // another product may be chosen during the waits
  CancelAnswer = AnswerNo;
  Progress.Value = 0;
  Progress.Max = FullBar;
  app_.comm.CommSet(port, settings);
  bool installed = false;
  const auto cancelled = [&] { return CancelAnswer == AnswerYes; };
  if (EraseAndWaitUntilReady() && StreamFile(app_, path, PieceLength, Progress, checkedLength_, cancelled)) {
    SetTimeOut(*this, BurnLimit);
    installed = WaitForAck(app_, *this) != FlagTrue;
    app_.comm.CommSetNOXON(port, settings);
  }
  Send(app_, EndOfExchange);
  app_.comm.CommClose(port);
  return installed;
}

bool Firmware::EraseAndWaitUntilReady() {
  Send(app_, FirmwareMode);
  ProgressInfoLbl.Caption = "Erasing flash memory...";
  Progress.Value = 0;
  FirmEraseTmr.Enabled = false;
  FirmEraseTmr.Interval = EraseTick;
  FirmEraseTmr.Enabled = true;
  SetTimeOut(*this, EraseLimit);
  const bool erased = WaitForAck(app_, *this) != FlagTrue;
  FirmEraseTmr.Enabled = false;
  if (!erased) return false;
  ProgressInfoLbl.Caption = "Firmware is being installed...";
  Progress.Value = 0;
  SetTimeOut(*this, ReadyLimit);
  return WaitForAck(app_, *this) != FlagTrue;
}

void Firmware::FirmEraseTmr_Timer() {
  const int step = CLng(static_cast<double>(EraseTick) / EraseLimit * FullBar);
  Progress.Value = std::min(Progress.Value + step, Progress.Max.Value());
  if (Progress.Value == Progress.Max) FirmEraseTmr.Enabled = false;
}

bool Firmware::ReceiveFlashBurnResponse(Timer& timer) {
  constexpr int ResponseLimit = 3000, ChunkLength = 35;
  Bytes buffer;
  timer.Interval = ResponseLimit;
  const Wait wait(app_.globals, timer);
  timer.Enabled = true;
  const auto has = [&](const char* word) { return buffer.find(word) != Bytes::npos; };
  const auto over = [&] {
    return has("Failed") || has("Successful") || app_.globals.TimeOutFlag == FlagTrue || !timer.Enabled;
  };
  while (!over()) {
    Bytes chunk;
    PollPort(app_, chunk, ChunkLength, over);
    buffer += chunk;
  }
  return has("Successful") && app_.globals.TimeOutFlag == FlagFalse;
}

}  // namespace vk32
