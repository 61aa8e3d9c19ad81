// The whole program in virtual time, driven by the commands of the text front end.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/App.h"
#include "script/ScriptSession.h"
#include "support/FakeSerialDriver.h"
#include "support/VirtualEventLoop.h"

namespace vk32 {

using namespace std::chrono_literals;

/// Tells what happens, while it happens.
struct TestScreen : ScriptScreen {
  using ScriptScreen::ScriptScreen;
  Answer Ask(const MessageBoxRequest& request) override {
    if (onBox) onBox(request);
    return ScriptScreen::Ask(request);
  }
  std::optional<std::string> AskFile(const FileDialogRequest& request) override {
    if (onFileDialog) onFileDialog();
    return ScriptScreen::AskFile(request);
  }
  void FormUnloaded(Form& form) override {
    if (onUnload) onUnload(form);
  }
  std::function<void(const MessageBoxRequest&)> onBox;
  std::function<void()> onFileDialog;
  std::function<void(const Form&)> onUnload;
};

class Harness {
 public:
  /// The program has started: the splash page shows.
  Harness();

  /// Runs commands, one a line, leading blanks aside, and returns what they printed but for the lines "ok".
  std::string Do(std::string_view commands);
  /// The property's text, without its quotes and escapes. A test failure if there is none.
  std::string Get(const std::string& path);
  /// From the splash page to the product menu; with a port, behind which the device stands.
  void GoTo(const std::string& productButton, FakeDevice* device = nullptr);

  /// What has passed since the clock was last read here.
  Time Elapsed() { return loop.Now() - std::exchange(mark_, loop.Now()); }

 private:
  std::string printed_;
  Time mark_{0};

 public:
  /// Of all boxes.
  std::string details;
  VirtualEventLoop loop;
  TestScreen screen;
  FakeSerialDriver driver;
  PortNames names;
  App app;
  ScriptSession session;
};

/// A file that goes with the test; its folder is a fresh one.
class TemporaryFile {
 public:
  /// Without a content it isn't there yet.
  explicit TemporaryFile(const std::string& name, std::string_view content = {});
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& Path() const { return path_; }
  std::string Content() const;
  void Fill(std::string_view content) const;

 private:
  std::string path_;
};

/// The number of the fault that an act ends with; 0 if it ends well.
template <class Act>
int FaultOf(const Act& act) {
  try {
    return act(), 0;
  } catch (const RuntimeFault& fault) {
    return fault.Code();
  }
}
/// Bytes from hexadecimal digits; blanks are passed over.
Bytes FromHex(std::string_view digits);
std::vector<std::string> Split(const std::string& text, char separator = ' ');
/// The text as the lines of a file: each \n becomes \r\n.
std::string Lines(std::string text);
/// "4E 45 45", for messages of failed comparisons.
std::string ToHex(std::string_view bytes);

}  // namespace vk32
