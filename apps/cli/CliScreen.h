// The screen of vk32-cli: the boxes that belong to the job are questions at the terminal, all others failures.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>

#include "cli/World.h"
#include "script/ScriptScreen.h"

namespace vk32 {

class CliScreen : public ScriptScreen, private FormObserver {
 public:
  /// `print` gets what the screen of the text front end prints, its boxes aside.
  CliScreen(World& world, std::function<void(const std::string&)> print)
      : ScriptScreen(std::move(print)), world_(world) {}

  void FormLoaded(Form& form) override;
  Answer Ask(const MessageBoxRequest& request) override;

  /// The next box begins like this, and belongs to the job; `then` runs while it shows, with its text for the user.
  void Expect(std::string beginning, std::function<void(const std::string&)> then) {
    expected_.push_back({std::move(beginning), std::move(then)});
  }
  /// How many of the expected boxes have not come. Expects nothing any more.
  std::size_t TakeMissing();
  /// The text, for the user, of the first box that was not expected; empty if none came.
  std::string TakeTold() { return std::exchange(told_, {}); }
  /// A text of the program as lines of a terminal, which call the port as the user did.
  std::string ForUser(std::string text) const;
  /// Takes the progress off the terminal.
  void EndProgress();

  bool talks = false;               // to a device: its forms tell how far it is
  std::string portName, portGiven;  // the port's name in the program, and as the user gave it

 private:
  void FormChanged(const PropertyBase&) override {}
  void FocusWanted(const Control&) override {}
  void ControlChanged(Control& control, const PropertyBase& property) override;

  struct Expected {
    std::string beginning;
    std::function<void(const std::string&)> then;
  };

  World& world_;
  std::deque<Expected> expected_;
  std::string told_, progress_;
};

}  // namespace vk32
