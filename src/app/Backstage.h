// A configuration that is on no screen: what a file or a device holds, apart from what the user has before him.
#pragma once

#include <string>
#include <vector>

#include "app/App.h"
#include "listing/Elsewhere.h"

namespace vk32 {

class WizardForm;

struct FileKind {
  std::string product, model;  // of some products the model says nothing
};
/// By the first lines of a configuration file. They may name what there is not. Faults as a RecordFile does.
FileKind KindOfFile(const std::string& path);

/// Shows nothing and answers by itself: OK, No and Cancel, and one file to every dialog.
class SilentScreen : public Screen {
 public:
  void FormLoaded(Form&) override {}
  void FormShown(Form&) override {}
  void FormHidden(Form&) override {}
  void FormUnloaded(Form&) override {}
  Answer Ask(const MessageBoxRequest& request) override;
  std::optional<std::string> AskFile(const FileDialogRequest&) override { return file; }
  void OpenWebSite(const std::string&) override {}
  std::string OpenManual(const std::string&) override { return {}; }
  void ProgramFaulted(int, const std::string& description) override { told.push_back(description); }
  void ProgramEnded() override {}

  std::optional<std::string> file;  // nothing: every file dialog is cancelled
  std::vector<std::string> told;    // the texts of the boxes, and of a fault
};

/// A second App, which knows nothing of the first. They share the clock, the serial driver and the port names alone.
class Backstage {
 public:
  Backstage(EventLoop& loop, SerialDriver& driver, PortNames& ports);

  /// Begins the wizard of a product; `model`: of the VK-RTX.
  WizardForm& Begin(const std::string& product, const std::string& model, const std::string& port = "None");
  /// Begins the wizard of the file's product and model, and opens the file in it. nullptr if the file is refused:
  /// what the user is told is the last of `screen.told`.
  WizardForm* Open(const std::string& path);

  SilentScreen screen;
  App app;
};

/// For a wizard of `front`, which waits inside an act meanwhile.
class BackstageReader : public Elsewhere {
 public:
  explicit BackstageReader(App& front);

  std::optional<Listing> ReadFile(const std::string& path, const WizardKind& kind) override;
  std::optional<Listing> ReadDevice(const std::string& port, const WizardKind& kind,
                                    ExchangeObserver& observer) override;
  Listing ShowSent(const SentParameters& sent, const WizardKind& kind) override;
  void Stop() override { stage_.app.forms.UnloadAll(); }
  std::string Why() const override;

 private:
  App& front_;
  Backstage stage_;
};

}  // namespace vk32
