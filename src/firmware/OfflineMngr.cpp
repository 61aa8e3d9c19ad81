// The recovery terminal.
#include "firmware/OfflineMngr.h"

#include "core/Convert.h"
#include "firmware/FirmwareFile.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"
#include "platform/Files.h"

namespace vk32 {
namespace {

constexpr int PollLength = 100;                      // bytes a tick
constexpr std::uint64_t LongestByXmodem = 16 << 20;  // bytes: it is held whole
constexpr std::size_t LongestLog = 16 << 20;         // bytes: some hours of a device that never falls silent
constexpr Purpose Recovering{"The Offline Manager", "End it by CLOSE in the window Offline Manager."};

}  // namespace

OfflineMngr::OfflineMngr(App& app) : Form(app.forms, FormName, "Offline Manager", 10320, 8190), app_(app) {
  Term.OnKeyPress = [this](char key) { return Term_KeyPress(key); };
  Term.MovedBy(TermVScroll);
}

void OfflineMngr::Form_Load() {
  ShowProgress(false);
  HideResult();
  const auto conversation = Begin();
  if (!conversation) return ShowInfo();
  tmrTime.Enabled = false;  // what is still to come from an earlier conversation is not for the terminal
  conversation->CommOpen();
  conversation->CommSet();
  conversation->CommFlush();
  Send(*conversation, RecoveryNewline);
  tmrTime.Enabled = true;
  LetGoOfClosedPort();
}

std::shared_ptr<Conversation> OfflineMngr::Begin() {
  const Globals& chosen = app_.globals;
  const bool none = PortNames::Number(chosen.ComPortText) == 0;
  line_ = none ? "" : chosen.ComPortText + ", " + chosen.BaudRate + " baud, ";
  return conversation_ = Conversation::Begin(app_, *this, Recovering);
}

void OfflineMngr::LetGoOfClosedPort() {
  if (conversation_ && !conversation_->IsOpen()) conversation_.reset();
  ShowInfo();
}

void OfflineMngr::ShowInfo() {
  TermInfoLbl.Caption = line_.empty() ? "No port is chosen" : line_ + (conversation_ ? "open" : "closed");
}

void OfflineMngr::ShowResult(const std::string& failure) {
  ResultMark.Picture = failure.empty() ? Symbol::Tick : Symbol::Cross;
  ResultMark.Visible = true;
  ResultLbl.ForeColor = failure.empty() ? TextColor : FailureColor;
  ResultLbl.Caption = failure.empty() ? "The file has been sent" : "Failed: " + failure;
}

void OfflineMngr::HideResult() {
  ResultMark.Visible = false;
  ResultLbl.Caption = "";
}

void OfflineMngr::KeepInLog(std::string_view data) {
  log_ += data;
  if (log_.size() > 2 * LongestLog) log_.erase(0, log_.size() - LongestLog);
}

void OfflineMngr::tmrTime_Timer() {
  const auto conversation = conversation_;
  Bytes data;
  if (conversation) conversation->CommRead(data, PollLength);
  if (!IsLoaded()) return;
  if (data.empty() && conversation && conversation->HasGone()) {
    conversation->CommClose();
    LetGoOfClosedPort();
    app_.forms.MsgBox("The device on COM" + Str(conversation->port) +
                          " has gone.\r\nPlug it in again, close this window, and open it anew.",
                      MessageIcon::Critical, "Error!");
  } else if (data.empty()) {
    // A silent line wakes nobody.
    tmrTime.SleepUntilReadable(conversation ? conversation->WaitHandle() : -1);
  } else {
    KeepInLog(data);
    TermShowData(Term, data);
  }
}

/// The device alone shows what was typed, by its echo. A key must not get into the middle of a file, nor into the write
/// of the key before it, for which the device may take its time.
bool OfflineMngr::Term_KeyPress(char key) {
  if (sending_) return false;
  typed_ += key;
  if (typing_) return false;
  typing_ = true;
  const auto conversation = conversation_;
  for (; !typed_.empty(); typed_.erase(0, 1)) {
    if (conversation) Send(*conversation, typed_.substr(0, 1));
  }
  typing_ = false;
  return false;
}

void OfflineMngr::TermShowData(TextBox& box, std::string_view data) {
  const std::string& shown = box.Text;
  const int length = static_cast<int>(shown.size());
  int erased = 0;    // characters of the box that leading backspaces have selected
  std::string text;  // what takes their place
  for (const char c : data) {
    if (c == '\b' && !text.empty()) {
      const bool lineEnd = text.back() == '\n';
      text.resize(text.size() - (lineEnd ? 2 : 1));
    } else if (c == '\b') {
      if (erased < length) ++erased;
      const std::size_t start = shown.size() - static_cast<std::size_t>(erased);
      if (start > 0 && shown[start] == '\n' && shown[start - 1] == '\r') ++erased;  // a line end goes as one
    } else if (c == '\n') {
      text += "\r\n";
    } else if (c != '\r') {
      text += c;
    }
  }
  box.SelStart = length - erased;
  box.SelLength = erased;
  box.SetSelText(text);
}

void OfflineMngr::SendFirmwareCmd_Click() {
  if (sending_) return;
  const bool done = app_.forms.AskYesNo(
      "Before continuing, you must select the \"Write New Firmware\" option\r\nfrom the Main Menu and then choose "
      "\"Yes\" to "
      "erase the system code.\r\n\nHas this been done?",
      false);
  if (!done) return;
  // A failed transfer has closed the port and ended the conversation.
  if (!conversation_) Begin();
  const auto conversation = conversation_;
  if (!conversation) return;
  const std::string& product = conversation->product;
  const bool xmodem = (product == "VK-RTX" || product == "VK5300") &&
                      app_.forms.AskYesNo(
                          "Click Yes to transfer the firmware file using the Xmodem protocol.\r\nClick No to "
                          "transfer the firmware file as text.",
                          false);
  // The terminal must not take the answers out of the port.
  sending_ = true;
  tmrTime.Enabled = false;
  HideResult();
  if (xmodem) {
    SendFirmwareByXmodem(*conversation);
  } else {
    SendFirmwareAsText(*conversation);
  }
  tmrTime.Enabled = true;
  sending_ = false;
  LetGoOfClosedPort();
  SetFocus(Term);
}

void OfflineMngr::CopyCmd_Click() {
  Term.Copy();
  SetFocus(Term);
}

void OfflineMngr::SaveLogCmd_Click() {
  LogDialog.Prepare("Save Log", "Log Files (*.log)|*.log|All Files (*.*)|*.*");
  LogDialog.ShowSave();
  const std::string& path = LogDialog.FileName;
  try {
    if (path.empty()) return;
    OutputFile file(path);
    file.Write(log_);
    file.Commit();
    SetFocus(Term);
  } catch (const RuntimeFault& fault) {
    app_.forms.MsgBox("The log was not saved as " + path + ".\r\n" + fault.Description(), MessageIcon::Critical,
                      "Error!");
  }
}

void OfflineMngr::AskForFile(const Conversation& conversation) {
  OfflineDialog.Prepare("Select Firmware File", FirmwareFilter(conversation.product));
  OfflineDialog.ShowOpen();
}

void OfflineMngr::TellUnsent(const std::string& why) {
  app_.forms.MsgBox("The firmware file " + OfflineDialog.FileName.Value() + " " + why, MessageIcon::Critical, "Error!");
}

void OfflineMngr::TellUnreadable() {
  TellUnsent("can't be read to its end.\r\nSelect a file that you may read, and send it again.");
}

void OfflineMngr::SendFirmwareByXmodem(Conversation& conversation) {
  AskForFile(conversation);
  if (OfflineDialog.FileName.Value().empty()) return;
  Bytes data;
  try {
    InputFile file(OfflineDialog.FileName);
    if (file.Size() > LongestByXmodem) {
      TellUnsent("has more than 16 MB: no gateway holds so much.\r\nSelect the firmware file of the " +
                 conversation.product + ", and send it again.");
      return;
    }
    data = file.Read(static_cast<std::size_t>(file.Size()));
  } catch (const RuntimeFault&) {
    TellUnreadable();
    return;
  }
  Xmodem transfer(conversation, *this);
  transfer.XmodemSend(data);
  ShowResult(transfer.WhyFailed());
}

void OfflineMngr::SendFirmwareAsText(Conversation& conversation) {
  const std::size_t pieceLength = conversation.product == "VK-RTX" ? 10240 : 512;
  Progress.Value = 0;
  Progress.Max = FullBar;
  conversation.CommSet();
  AskForFile(conversation);
  ShowProgress(true);
  const std::string& path = OfflineDialog.FileName;
  if (!path.empty()) {
    bool whole = false;
    const auto pieceSent = [&](std::uint64_t sent, std::uint64_t total) {
      Progress.Value = BarValue(sent, total);
      whole = sent == total;
    };
    if (!StreamFile(conversation, path, pieceLength, pieceSent)) TellUnreadable();
    ShowResult(whole ? "" : "the file has not left whole");
  }
  ShowProgress(false);
}

void OfflineMngr::CloseCmd_Click() {
  if (conversation_) conversation_->CommClose();
  UnloadMe();
}

void OfflineMngr::StartOfflineProgressBar() {
  Progress.Value = 0;
  Progress.Max = FullBar;
  ShowProgress(true);
}

void OfflineMngr::UpdateOfflineProgressBar(std::size_t done, std::size_t total) {
  if (Progress.Value == 0) ShowInfo();  // a port that an earlier failure had closed is open again
  Progress.Value = BarValue(done, total);
}

void OfflineMngr::FinishOfflineProgressBar() { ShowProgress(false); }

void OfflineMngr::ShowProgress(bool visible) {
  Progress.Visible = visible;
  ProgressTxt.Visible = visible;
  ProgressLbl.Visible = visible;
}

}  // namespace vk32
