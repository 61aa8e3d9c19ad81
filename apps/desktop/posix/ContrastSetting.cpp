// What a desktop on Linux says of high contrast.
#include "ContrastSetting.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QMap>
#include <QVariantMap>

namespace vk32 {
namespace {

using Settings = QMap<QString, QVariantMap>;  // by their group

const QString Appearance = QStringLiteral("org.freedesktop.appearance");
const QString Accessibility = QStringLiteral("org.gnome.desktop.a11y.interface");
const QString Interface = QStringLiteral("org.gnome.desktop.interface");

/// In whichever way this desktop says so: by the common setting, its own, or the name of its theme.
bool IsHigh(const Settings& settings) {
  const QString theme = settings[Interface][QStringLiteral("gtk-theme")].toString();
  return settings[Appearance][QStringLiteral("contrast")].toUInt() == 1 ||
         settings[Accessibility][QStringLiteral("high-contrast")].toBool() ||
         theme.startsWith(QLatin1String("HighContrast"));
}

}  // namespace

void ContrastSetting::Ask() {
  // Without a session bus Qt would try to start one.
  if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) return;
  QDBusMessage question = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
      QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("ReadAll"));
  question << QStringList{Appearance, Accessibility, Interface};
  auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), &context_);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context_, [this, watcher] {
    watcher->deleteLater();
    if (!watcher->isError()) told_(IsHigh(qdbus_cast<Settings>(watcher->reply().arguments().value(0))));
  });
}

}  // namespace vk32
