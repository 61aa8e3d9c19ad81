// The program without a screen, as the measurements drive it.
#pragma once

#include <initializer_list>
#include <stdexcept>
#include <string>

#include "app/App.h"
#include "platform/SystemEventLoop.h"
#include "platform/posix/PosixSerialDriver.h"
#include "script/ScriptSession.h"

namespace vk32::bench {

/// Real time and real ports; what it prints is kept for the words of a failure.
struct HeadlessProgram {
  HeadlessProgram() { StartProgram(app); }

  /// std::runtime_error if the command fails: a measurement of something else is worth nothing.
  void Do(const std::string& command) {
    printed.clear();
    if (!session.RunLine(command)) throw std::runtime_error(command + ":\n" + printed);
  }

  /// From the splash page to a product menu, by the buttons of the main menu.
  void GoToProductMenu(std::initializer_list<const char*> buttons) {
    Do("click Splash");
    for (const char* button : buttons) Do(std::string("click MainMenu.") + button);
  }

  std::string printed;
  SystemEventLoop loop;
  PortNames names{"", "/nowhere", "/nowhere"};
  PosixSerialDriver driver{loop, names};
  ScriptScreen screen{[this](const std::string& line) { printed += line + "\n"; }};
  App app{loop, screen, driver, names};
  ScriptSession session{app, screen};
};

}  // namespace vk32::bench
