// The desktop program.
#include <QApplication>
#include <QCommandLineParser>
#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "DesktopScreen.h"
#include "QtEventLoop.h"
#include "Start.h"
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
    if (names.AssignBy(option.toStdString())) continue;
    vk32::TellAtStart("--port wants COMn=PATH, n from 1 to " + std::to_string(vk32::MaxPorts) + ", but is \"" +
                      option.toStdString() + '"');
    return false;
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
    vk32::TellAtStart(error.isEmpty() ? "takes options alone" : error.toStdString());
    return false;
  }
  if (parser.isSet(help)) parser.showHelp();
  if (parser.isSet(version)) parser.showVersion();
  return AssignPorts(parser.values(port), names);
}

[[noreturn]] void EndWithoutDisplay() {
  vk32::TellAtStart(vk32::WhyNoDisplay() + ", or use vk32-script, which needs no display");
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
    vk32::TellAtStart(ignored + ".");
  }

  vk32::QtEventLoop loop;
  vk32::DesktopScreen screen;
  const auto driver = vk32::SystemSerialDriver(loop, names);
  vk32::App app(loop, screen, *driver, names);
  StartProgram(app);
  return screen.Ended() ? screen.ExitStatus() : QApplication::exec();
}
