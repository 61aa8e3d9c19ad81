// The screen of the desktop: windows for forms, message boxes, file dialogs, the browser.
#pragma once

#include <QPoint>
#include <QString>
#include <memory>
#include <vector>

#include "ContrastSetting.h"
#include "Theme.h"
#include "forms/Screen.h"

class QWidget;

namespace vk32 {

class FormWindow;

class DesktopScreen : public Screen {
 public:
  /// Gives the application its style, palette and icon.
  DesktopScreen();
  ~DesktopScreen() override;

  void FormLoaded(Form& form) override;
  void FormShown(Form& form) override;
  void FormHidden(Form& form) override;
  void FormUnloaded(Form& form) override;
  Answer Ask(const MessageBoxRequest& request) override;
  std::optional<std::string> AskFile(const FileDialogRequest& request) override;
  void OpenWebSite(const std::string& url) override;
  std::string OpenManual(const std::string& form) override;
  void CopyText(const std::string& text) override;
  std::string Description() const override;
  std::optional<std::string> MakePdf(const std::string& html) override;
  void ProgramFaulted(int number, const std::string& description) override;
  void ProgramEnded() override;

  bool Ended() const { return ended_; }
  /// Of the process: 1 after a fault.
  int ExitStatus() const { return faulted_ ? 1 : 0; }
  /// nullptr if the form has never been shown.
  FormWindow* WindowOf(const Form& form) const;
  void ShowHighContrast(bool high);

 private:
  struct Opened {
    const Form* form;
    std::shared_ptr<FormWindow> window;
  };

  /// The window that the user is at, or nullptr.
  QWidget* ActiveWindow() const;
  void Leave(const QWidget& window);
  /// Empty, or why it can't be opened; what shows only later is told in a box.
  std::string OpenManualPage(std::string_view page);
  /// A box on top of whatever shows.
  void Tell(const std::string& reason);

  Theme theme_;
  std::vector<Opened> windows_;  // topmost last
  QPoint middle_;                // of the window that the user was at
  QString folder_;               // of the last file
  bool tellsReason_ = false;     // why the manual can't be opened
  bool ended_ = false;
  bool faulted_ = false;
  ContrastSetting contrast_{[this](bool high) { ShowHighContrast(high); }};
};

}  // namespace vk32
