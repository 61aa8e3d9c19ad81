// The desktop's own opener tells by its end whether there was a program for the file.
#include "FileOpener.h"

#include <QDesktopServices>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace vk32 {
namespace {

/// It may last as long as the program that shows the file; what goes wrong then says nothing of the opening.
constexpr qint64 Opening = 20000;  // ms

}  // namespace

bool OpenFile(const QString& path, const std::function<void()>& failed) {
  const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
  // Without X it takes more: on Wayland only Qt can hand on the right to come to the front.
  if (opener.isEmpty() || QGuiApplication::platformName() != QStringLiteral("xcb")) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
  }
  auto* const process = new QProcess;  // not of the application, whose end would end it
  QElapsedTimer since;
  since.start();
  QObject::connect(process, &QProcess::finished, process, [=](int status, QProcess::ExitStatus) {
    process->deleteLater();
    if (status != 0 && since.elapsed() < Opening) failed();
  });
  process->setProcessChannelMode(QProcess::ForwardedChannels);
  process->setStandardInputFile(QProcess::nullDevice());
  process->start(opener, {path});
  return true;
}

}  // namespace vk32
