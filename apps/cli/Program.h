// One run of the program without a screen, driven from its splash page by the names of its controls.
#pragma once

#include <functional>
#include <string>

#include "app/App.h"
#include "cli/CliScreen.h"
#include "cli/Target.h"
#include "models/wizard/WizardForm.h"
#include "script/ScriptSession.h"

namespace vk32 {

/// Every step is what a user does, and a Failure with the program's own words if that is refused.
class Program {
 public:
  /// Stands at the product menu.
  Program(World& world, const Target& target);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// `port`: as the user names it.
  void ChoosePort(const std::string& port);
  void OpenWizard();

  // Steps of the wizard.
  void Upload();
  void Open(const std::string& path);
  /// As CANCEL does: back to the product menu.
  void CloseWizard() { Click("CancelCmd", ExitStatus::WrongUsage); }
  /// Carries out a command of the text front end.
  void Do(const std::string& command, ExitStatus ifRefused);
  /// Carries out an act on its controls.
  void Act(const std::function<void()>& act, ExitStatus ifRefused);
  /// To the last page, by all others.
  void GoToApply();

  // On the last page; the wizard closes.
  /// Finishes without sending anything.
  void Check();
  void Save(const std::string& path, Lasting lasting = Lasting::ForGood);
  /// Returns when the device has acknowledged all and, if wanted, gives back what was sent.
  void Download(bool verifies);

  void ReadDeviceInfo();
  /// Returns when the device has said that the firmware is burnt.
  void InstallFirmware(const std::string& path);

  WizardForm& Wizard() const { return dynamic_cast<WizardForm&>(FormOf(wizard_)); }
  Form& FormOf(const std::string& name) const;
  bool IsLoaded(const std::string& form) const { return app_.forms.Find(form) != nullptr; }

  void Stop();

  const Target target;

 private:
  /// Ends a step. `refusal`: empty if it was carried out.
  void Judge(const std::string& refusal, ExitStatus ifRefused);
  void Click(const std::string& control, ExitStatus ifRefused) { Do("click " + wizard_ + "." + control, ifRefused); }
  /// NoPort in place of NoAnswer if the port has not been opened since it was chosen: another program has taken it.
  ExitStatus StatusOf(ExitStatus ifRefused) const;
  /// What the page says of a value that is refused, on a line of its own; empty if nothing.
  std::string Hint() const;
  /// The box that asks to press the Configure button, which the user confirms.
  void ExpectReminder();
  /// Clicks FINISH to write. Whatever is refused before the device is asked for is a value. `atReadBack`: at the second
  /// reminder, if there is one.
  void FinishDownload(const std::function<void(const std::string&)>& atReminder,
                      const std::function<void(const std::string&)>& atReadBack = {});

  World& world_;
  std::string refusal_;  // of the last command
  CliScreen screen_;
  App app_;
  ScriptSession script_;
  std::string wizard_;
  int opens_ = 0;      // of ports, when the port was chosen
  std::string state_;  // of the device, for a user who stops the command
};

}  // namespace vk32
