// The recovery route: a terminal on the menu of the device's own Offline Manager, and a button that sends a firmware
// file.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "app/App.h"
#include "firmware/Xmodem.h"
#include "link/VKComSubs.h"

namespace vk32 {

class OfflineMngr : public Form, public XmodemProgress {
 public:
  static constexpr const char* FormName = "OfflineMngr";

  explicit OfflineMngr(App& app);

  void StartOfflineProgressBar() override;
  void UpdateOfflineProgressBar(std::size_t done, std::size_t total) override;
  void FinishOfflineProgressBar() override;

 private:
  void Form_Load() override;
  void Form_Unload() override { conversation_.reset(); }
  void tmrTime_Timer();
  void TimeOutTmr_Timer() { SetTimeOutFlag(app_, *this); }
  void SendFirmwareCmd_Click();
  void CopyCmd_Click();
  void SaveLogCmd_Click();
  void CloseCmd_Click();
  bool Term_KeyPress(char key);

  /// Puts what the device has sent into the terminal. Ends whatever arrives.
  static void TermShowData(TextBox& box, std::string_view data);
  void SendFirmwareByXmodem(Conversation& conversation);
  void SendFirmwareAsText(Conversation& conversation);
  void AskForFile(const Conversation& conversation);
  /// `why`: the rest of a sentence that begins with the file.
  void TellUnsent(const std::string& why);
  void TellUnreadable();
  /// Without an open port there is nothing left to talk to.
  void LetGoOfClosedPort();
  void ShowProgress(bool visible);
  /// Takes the port that is chosen now. nullptr, after telling the user, while another conversation is under way.
  std::shared_ptr<Conversation> Begin();
  /// Says which port it is, and what has become of it.
  void ShowInfo();
  /// Says how a transfer has ended; with words for its failure, if it has failed.
  void ShowResult(const std::string& failure);
  void HideResult();
  void KeepInLog(std::string_view data);

  App& app_;
  // As long as its port is open. Whoever lets events run holds one of its own: the form may be closed meanwhile.
  std::shared_ptr<Conversation> conversation_;
  bool sending_ = false;  // a file is on its way
  bool typing_ = false;   // a key is
  std::string typed_;     // that key and those behind it
  std::string line_;      // "COM29, 19200 baud"
  std::string log_;       // the bytes that came, and if they are too many those that came last

 public:
  // clang-format off
  Label       OfflineLbl      {*this, "OfflineLbl",      { 240,  180, 9840,  480}, "Offline Manager", TextRole::Title};
  TextBox     Term            {*this, "Term",            { 240,  720, 9840, 5970}, {}, TextBox::Lines::Many};
  VScrollBar  TermVScroll     {*this, "TermVScroll",     {9780,  720,  300, 5970}, {}, Fill::Band};
  Image       ResultMark      {*this, "ResultMark",      {2760,  330,  180,  180}, Symbol::Tick};
  Label       ResultLbl       {*this, "ResultLbl",       {3060,  262, 4080,  315}, "", TextRole::Small};
  Label       TermInfoLbl     {*this, "TermInfoLbl",     {5280,  195, 4800,  480}, "", TextRole::MutedRight};
  Label       ProgressTxt     {*this, "ProgressTxt",     { 240, 6810, 1080,  315}, "Progress:"};
  ProgressBar Progress        {*this, "ProgressBar",     {1320, 6810, 5760,  315}};
  Label       ProgressLbl     {*this, "ProgressLbl",     {7200, 6810, 2880,  315}, "Installing Firmware..."};
  Frame       FootLineFrame   {*this, "FootLineFrame",   {   0, 7260, 10320,  15}, Fill::Hairline};
  ImageButton SendFirmwareCmd {*this, "SendFirmwareCmd", { 240, 7485, 2565,  450}, &OfflineMngr::SendFirmwareCmd_Click};
  CommandButton CopyCmd       {*this, "CopyCmd",         {3165, 7485, 1200,  450}, "Copy", &OfflineMngr::CopyCmd_Click};
  CommandButton SaveLogCmd    {*this, "SaveLogCmd",      {4485, 7485, 1800,  450}, "Save Log...", &OfflineMngr::SaveLogCmd_Click};
  ImageButton CloseCmd        {*this, "CloseCmd",        {8655, 7485, 1425,  450}, &OfflineMngr::CloseCmd_Click, WindowKey::Escape};

  Timer       tmrTime         {*this, "tmrTime",    10, true, &OfflineMngr::tmrTime_Timer};
  Timer       TimeOutTmr      {*this, "TimeOutTmr",  0, true, &OfflineMngr::TimeOutTmr_Timer};
  FileDialog  OfflineDialog   {*this, "OfflineDialog"};
  FileDialog  LogDialog       {*this, "LogDialog"};
  // clang-format on
};

}  // namespace vk32
