// The desktop program.
#include <QApplication>
#include <QCommandLineParser>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "DesktopScreen.h"
#include "QtEventLoop.h"
#include "app/App.h"
#include "platform/PortNames.h"
#include "platform/SerialDriver.h"

namespace {

constexpr int WrongUsage = 2, NoDisplay = 2;

/// Help and version are told without a display.
bool AsksForWords(int argc, char** argv) {
  return std::any_of(argv + 1, argv + argc, [](std::string_view argument) {
    return argument == "--help" || argument == "-h" || argument == "--version" || argument == "-v";
  });
}

/// False if one of the options is no port name with a path.
bool AssignPorts(const QStringList& options, vk32::PortNames& names) {
  for (const QString& option : options) {
    const std::string text = option.toStdString();
    const std::size_t sign = text.find('=');
    const std::string name = text.substr(0, sign);
    if (sign == std::string::npos || sign + 1 == text.size() || vk32::PortNames::Number(name) == 0) {
      std::fprintf(stderr, "vk32: --port wants COMn=PATH, n from 1 to %d, but is \"%s\"\n", vk32::MaxPorts,
                   text.c_str());
      return false;
    }
    names.Assign(name, text.substr(sign + 1));
  }
  return true;
}

/// False if the arguments are wrong; the user has been told. Ends the program itself after help and version.
bool Parse(const QStringList& arguments, vk32::PortNames& names) {
  QCommandLineParser parser;
  parser.setApplicationDescription("Configuration software for Norvanta gateways.");
  const QCommandLineOption help = parser.addHelpOption();
  const QCommandLineOption version = parser.addVersionOption();
  const QCommandLineOption port("port", "The device behind a port name, for this run: COM3=/dev/ttyUSB0. Repeatable.",
                                "COMn=PATH");
  parser.addOption(port);
  if (!parser.parse(arguments) || !parser.positionalArguments().isEmpty()) {
    const QString error = parser.errorText();
    std::fprintf(stderr, "vk32: %s\n", error.isEmpty() ? "takes options alone" : qPrintable(error));
    return false;
  }
  if (parser.isSet(help)) parser.showHelp();
  if (parser.isSet(version)) parser.showVersion();
  return AssignPorts(parser.values(port), names);
}

[[noreturn]] void EndWithoutDisplay() {
  const auto value = [](const char* name) { return '"' + qEnvironmentVariable(name).toStdString() + '"'; };
  std::string reason = "there is no display: start it in a desktop session";
  if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    reason = "QT_QPA_PLATFORM is " + value("QT_QPA_PLATFORM") + ", which can't start here: unset it";
  } else if (!qEnvironmentVariableIsEmpty("DISPLAY")) {
    reason = "the display " + value("DISPLAY") + " can't be opened: set DISPLAY to one that lets you in";
  } else if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
    reason = "the Wayland display " + value("WAYLAND_DISPLAY") + " can't be used: install qt6-wayland if it is missing";
  }
  std::fprintf(stderr, "vk32: %s, or use vk32-script, which needs no display\n", reason.c_str());
  std::_Exit(NoDisplay);
}

/// Qt would tell its own in many lines, and abort.
void WatchTheStart(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type == QtFatalMsg) EndWithoutDisplay();
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication::setApplicationName("vk32");
  QCoreApplication::setApplicationVersion(QString::fromStdString(vk32::ProgramVersion()));
  vk32::PortNames names;
  if (AsksForWords(argc, argv)) {
    const QCoreApplication console(argc, argv);
    return Parse(QCoreApplication::arguments(), names) ? 0 : WrongUsage;
  }

  // The program brings its own look; that of the desktop would only shine through in places.
  QApplication::setDesktopSettingsAware(false);
  qInstallMessageHandler(WatchTheStart);
  const QApplication application(argc, argv);
  qInstallMessageHandler(nullptr);
  if (!QGuiApplication::primaryScreen()) EndWithoutDisplay();
  QApplication::setDesktopFileName("vk32");
  if (!Parse(QApplication::arguments(), names)) return WrongUsage;
  if (const std::string ignored = names.Ignored(); !ignored.empty()) {
    std::fprintf(stderr, "vk32: %s.\n", ignored.c_str());
  }

  vk32::QtEventLoop loop;
  vk32::DesktopScreen screen;
  const auto driver = vk32::SystemSerialDriver(loop, names);
  vk32::App app(loop, screen, *driver, names);
  StartProgram(app);
  return screen.Ended() ? screen.ExitStatus() : QApplication::exec();
}
