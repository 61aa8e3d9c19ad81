// The system tells at once whether it has a program for the file.
#include "FileOpener.h"

#include <QDesktopServices>
#include <QUrl>

namespace vk32 {

bool OpenFile(const QString& path, const std::function<void()>&) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

}  // namespace vk32
