// What a start that fails tells on the terminal.
#include "Start.h"

#include <QString>
#include <cstdio>

namespace vk32 {

std::string WhyNoDisplay() {
  const auto value = [](const char* name) { return '"' + qEnvironmentVariable(name).toStdString() + '"'; };
  if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    return "QT_QPA_PLATFORM is " + value("QT_QPA_PLATFORM") + ", which can't start here: unset it";
  }
  if (!qEnvironmentVariableIsEmpty("DISPLAY")) {
    return "the display " + value("DISPLAY") + " can't be opened: set DISPLAY to one that lets you in";
  }
  if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
    return "the Wayland display " + value("WAYLAND_DISPLAY") + " can't be used: install qt6-wayland if it is missing";
  }
  return "there is no display: start it in a desktop session";
}

void TellAtStart(const std::string& text) { std::fprintf(stderr, "vk32: %s\n", text.c_str()); }

}  // namespace vk32
