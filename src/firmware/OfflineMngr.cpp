// The recovery terminal.
#include "firmware/OfflineMngr.h"

#include "firmware/FirmwareFile.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"
#include "platform/Files.h"

namespace vk32 {
namespace {

constexpr int PollLength = 100;  // bytes a tick

}  // namespace

OfflineMngr::OfflineMngr(App& app) : Form(app.forms, FormName, "Offline Manager", 10320, 8190), app_(app) {
  Term.OnKeyPress = [this](char key) { return Term_KeyPress(key); };
}

void OfflineMngr::Form_Load() {
  ShowProgress(false);
  port_ = app_.globals.ComPortNumber;
  OpenLink(app_);
  app_.comm.CommSet(port_, LinkSettings(app_.globals));
  app_.comm.CommFlush(port_);
  Send(app_, RecoveryNewline);
}

void OfflineMngr::tmrTime_Timer() {
  // A terminal that was closed inside of another form's wait must not take its bytes.
  if (!IsLoaded()) return;
  Bytes data;
  app_.comm.CommRead(port_, data, PollLength);
  if (!data.empty()) TermShowData(Term, data);
}

/// The device alone shows what was typed, by its echo. A key must not get into the middle of a file.
bool OfflineMngr::Term_KeyPress(char key) {
  if (!sending_) Send(app_, Bytes(1, key));
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
  const std::string& product = app_.globals.CurrentProduct;
  const bool xmodem = (product == "VK-RTX" || product == "VK5300") &&
                      app_.forms.AskYesNo(
                          "Click Yes to transfer the firmware file using the Xmodem protocol.\r\nClick No to "
                          "transfer the firmware file as text.",
                          false);
  // The terminal must not take the answers out of the port.
  sending_ = true;
  tmrTime.Enabled = false;
  if (xmodem) {
    SendFirmwareByXmodem();
  } else {
    SendFirmwareAsText();
  }
  tmrTime.Enabled = true;
  sending_ = false;
}

void OfflineMngr::AskForFile() {
  OfflineDialog.Prepare("Select Firmware File", FirmwareFilter(app_.globals.CurrentProduct));
  OfflineDialog.ShowOpen();
}

void OfflineMngr::TellUnreadable() {
  app_.forms.MsgBox("The firmware file " + OfflineDialog.FileName.Value() +
                        " can't be read to its end.\r\nSelect a file that you may read, and send it again.",
                    MessageIcon::Critical, "Error!");
}

void OfflineMngr::SendFirmwareByXmodem() {
  AskForFile();
  if (OfflineDialog.FileName.Value().empty()) return;
  Bytes data;
  try {
    InputFile file(OfflineDialog.FileName);
    data = file.Read(static_cast<std::size_t>(file.Size()));
  } catch (const RuntimeFault&) {
    TellUnreadable();
    return;
  }
  Xmodem(app_, *this).XmodemSend(data);
}

void OfflineMngr::SendFirmwareAsText() {
  const std::size_t pieceLength = app_.globals.CurrentProduct == "VK-RTX" ? 10240 : 512;
  Progress.Value = 0;
  Progress.Max = FullBar;
  app_.comm.CommSet(app_.globals.ComPortNumber, LinkSettings(app_.globals));
  AskForFile();
  ShowProgress(true);
  const std::string& path = OfflineDialog.FileName;
  const auto closed = [this] { return !IsLoaded(); };
  if (!path.empty() && !StreamFile(app_, path, pieceLength, Progress, 0, closed)) TellUnreadable();
  ShowProgress(false);
}

void OfflineMngr::CloseCmd_Click() {
  app_.comm.CommClose(port_);
  UnloadMe();
}

void OfflineMngr::StartOfflineProgressBar() {
  Progress.Value = 0;
  Progress.Max = FullBar;
  ShowProgress(true);
}

void OfflineMngr::UpdateOfflineProgressBar(std::size_t done, std::size_t total) {
  Progress.Value = BarValue(done, total);
}

void OfflineMngr::FinishOfflineProgressBar() { ShowProgress(false); }

void OfflineMngr::ShowProgress(bool visible) {
  Progress.Visible = visible;
  ProgressTxt.Visible = visible;
  ProgressLbl.Visible = visible;
}

}  // namespace vk32
