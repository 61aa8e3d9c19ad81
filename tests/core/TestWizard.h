// The program with a small wizard, whose button runs an operation on a whole parameter set.
#pragma once

#include <string>

#include "core/ConfigMod.h"
#include "core/Convert.h"
#include "link/Conversation.h"
#include "link/VKComSubs.h"
#include "shell/Products.h"
#include "support/Harness.h"

namespace vk32 {

struct TestWizard : ConfigurationForm {
  using Operation = bool (*)(Conversation&, TestWizard&);

  TestWizard(App& app_, ScriptScreen& screen_)
      : ConfigurationForm(app_.forms, "TestWizard", "", 6000, 6000), app(app_), screen(screen_) {}

  /// Prints a line among the boxes, with a mark while the port is open.
  void Note(const std::string& what) { screen.Print(what + (app.comm.IsOpen(3) ? " (port open)" : "")); }
  void RemoveData(const Bytes& reply) override {
    Note("block " + Str(app.globals.BlockNumber) + ": " + ToHex(Mid(reply, 1, 3)));
  }
  void Parameter_Setup_VK() override { Note("setup VK"); }
  void Parameter_Setup_RB() override { Note("setup RB"); }
  std::string ModelTag() const override { return "Tag"; }

  void Record(RecordFile&, std::string&, std::string&) override {}
  void GoCmd_Click() {
    const auto conversation = Conversation::Begin(app, *this, {"The test", "Wait."});
    Note(operation(*conversation, *this) ? "True" : "False");
  }

  App& app;
  ScriptScreen& screen;
  Operation operation = nullptr;
  CommandButton GoCmd{*this, "GoCmd", {}, "", &TestWizard::GoCmd_Click};
  Timer TimeOutTmr{*this, "TimeOutTmr", 5000, true, [this] { SetTimeOutFlag(app, *this); }};
};

/// The wizard is open with a parameter set; COM3 is chosen.
struct WizardHarness : Harness {
  explicit WizardHarness(std::string_view product, FakeDevice* device = nullptr, const Bytes& image = {}) {
    Do("click Splash");
    SelectProduct(app.globals, product);
    app.globals.ComPortNumber = 3;
    app.globals.ComPortText = "COM3";
    if (device) driver.Plug("COM3", device);
    app.forms.Register("TestWizard", [this] { return std::make_shared<TestWizard>(app, screen); });
    wizard = &dynamic_cast<TestWizard&>(app.forms.Show("TestWizard"));
    wizard->TimeOutTmr.Interval = 1234;
    app.globals.BlockList = {2, 5, 7};
    app.globals.BlockTable[5] = "\x11\x22\x33";
    app.globals.BlockTable[7] = FromHex("00 FF");
    app.globals.CommFailed = FlagTrue;
    app.globals.LoadRegisters("wxyz", 0);
    app.globals.ConfigImage = image;
  }
  /// What happens, and how long it takes.
  std::string Run(TestWizard::Operation operation) {
    wizard->operation = operation;
    Elapsed();
    const std::string told = Do("click TestWizard.GoCmd");
    return told + Str(static_cast<std::int32_t>(Elapsed() / std::chrono::milliseconds(1))) + " ms";
  }

  TestWizard* wizard;
};

}  // namespace vk32
