// The desktop program.
#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>

#include "DesktopScreen.h"
#include "QtEventLoop.h"
#include "app/App.h"
#include "platform/PortNames.h"
#include "platform/PosixSerialDriver.h"

namespace {

constexpr int WrongUsage = 2;

/// False if one of the options is no port name with a path.
bool AssignPorts(const QStringList& options, vk32::PortNames& names) {
  for (const QString& option : options) {
    const std::string text = option.toStdString();
    const std::size_t sign = text.find('=');
    const std::string name = text.substr(0, sign);
    if (sign == std::string::npos || sign + 1 == text.size() || vk32::PortNames::Number(name) == 0) {
      std::fprintf(stderr, "vk32: --port wants COMn=PATH, n from 1 to %d, but is \"%s\"\n", vk32::MaxPorts, text.c_str());
      return false;
    }
    names.Assign(name, text.substr(sign + 1));
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  // The program brings its own look; that of the desktop would only shine through in places.
  QApplication::setDesktopSettingsAware(false);
  QApplication application(argc, argv);
  QApplication::setApplicationName("vk32");
  QApplication::setApplicationDisplayName({});
  QApplication::setApplicationVersion(QString::fromStdString(vk32::ProgramVersion()));
  QApplication::setDesktopFileName("vk32");

  QCommandLineParser parser;
  parser.setApplicationDescription("Configuration software for Norvanta gateways.");
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption port("port", "The device behind a port name, for this run: COM3=/dev/ttyUSB0. Repeatable.",
                                "COMn=PATH");
  parser.addOption(port);
  parser.process(application);

  vk32::PortNames names;
  if (!AssignPorts(parser.values(port), names)) return WrongUsage;
  vk32::QtEventLoop loop;
  vk32::DesktopScreen screen;
  vk32::PosixSerialDriver driver(loop, names);
  vk32::App app(loop, screen, driver, names);
  StartProgram(app);
  return screen.Ended() ? screen.ExitStatus() : QApplication::exec();
}
