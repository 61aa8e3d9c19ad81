// The program with a small wizard that has a button for each operation on a whole parameter set.
#pragma once

#include <algorithm>
#include <functional>
#include <string>

#include "core/ConfigMod.h"
#include "core/Convert.h"
#include "core/DownloadProgress.h"
#include "shell/Products.h"
#include "support/Harness.h"

namespace vk32 {

using Note = std::function<void(const std::string&)>;

class TestWizard : public ConfigurationForm {
 public:
  TestWizard(App& app_, Note note_)
      : ConfigurationForm(app_.forms, "TestWizard", "", 6000, 6000), app(app_), note(std::move(note_)) {}

  void RemoveData(const Bytes& reply) override {
    note("block " + Str(app.globals.BlockNumber) + ": " + ToHex(Mid(reply, 1, 3)));
  }
  void Parameter_Setup_VK() override { note("setup VK"); }
  void Parameter_Setup_RB() override { note("setup RB"); }
  std::string ModelTag() const override { return {}; }

 private:
  void Record(RecordFile&, std::string&, std::string&) override {}
  void Result(bool result) { note(result ? "True" : "False"); }
  void NoteRegisters() { note("registers " + ToHex(app.globals.RegistersToString(0, 2))); }

  App& app;
  const Note note;

 public:
  // clang-format off
  CommandButton SendImageCmd  {*this, "SendImageCmd",  {}, "", [this] { Result(DownloadImage(app, *this)); }};
  CommandButton SendBlocksCmd {*this, "SendBlocksCmd", {}, "", [this] { Result(DownloadBlocks(app, *this)); }};
  CommandButton ReadImageCmd  {*this, "ReadImageCmd",  {}, "", [this] { UploadImage(app, *this); NoteRegisters(); }};
  CommandButton ReadBlocksCmd {*this, "ReadBlocksCmd", {}, "", [this] { UploadBlocks(app, *this); Result(app.globals.CommFailed == FlagFalse); }};
  CommandButton RebootCmd {*this, "RebootCmd", {}, "", [this] { SendReboot(app); Result(true); }};
  CommandButton LeaveCmd  {*this, "LeaveCmd",  {}, "", [this] { UnloadMe(); }};
  Timer         TimeOutTmr{*this, "TimeOutTmr", 5000, true, [this] { app.globals.TimeOutFlag = FlagTrue; }};
  // clang-format on
};

/// Stands in for the message of the program.
class TestProgress : public Form, public DownloadProgress {
 public:
  TestProgress(App& app, Note note_) : Form(app.forms, FormName, "", 6000, 6000), note(std::move(note_)) {}

  void StartDownloadTimer(Timer&, int total) override { note("progress " + Str(total)); }
  void StopDownloadTimer() override {
    note("progress gone");
    UnloadMe();
  }

 private:
  const Note note;
};

/// The wizard is open; COM3 is chosen. What it notes is printed among the boxes, with a mark while the port is open.
struct WizardHarness : Harness {
  explicit WizardHarness(std::string_view product, FakeDevice* device = nullptr) {
    Do("click Splash");
    SelectProduct(app.globals, product);
    app.globals.ComPortNumber = 3;
    if (device) driver.Plug("COM3", device);
    const Note note = [this](const std::string& what) { screen.Print(what + (PortIsOpen() ? " (port open)" : "")); };
    app.forms.Register("TestWizard", [this, note] { return std::make_shared<TestWizard>(app, note); });
    app.forms.Register(DownloadProgress::FormName, [this, note] { return std::make_shared<TestProgress>(app, note); });
    wizard = &dynamic_cast<TestWizard&>(app.forms.Show("TestWizard"));
  }

  bool PortIsOpen() const {
    const auto opened = std::find(driver.calls.rbegin(), driver.calls.rend(), "Open \\\\.\\COM3");
    return std::find(driver.calls.rbegin(), opened, "Close") == opened && opened != driver.calls.rend();
  }
  /// What happens, and how long it takes.
  std::string Click(const std::string& button) {
    Elapsed();
    const std::string told = Do("click TestWizard." + button);
    return told + Str(static_cast<std::int32_t>(Elapsed() / std::chrono::milliseconds(1))) + " ms";
  }

  TestWizard* wizard;
};

}  // namespace vk32
