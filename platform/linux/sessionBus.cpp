#include "platform/linux/sessionBus.h"

#include <QFileInfo>
#include <QStringList>

QString sessionBus::address() {
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
        const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus";
        return QFileInfo::exists(socket) ? "unix:path=" + socket : QString();
    }
    QStringList addresses = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS").split(';');
    addresses.removeIf([](const QString& address) { return !address.startsWith("unix:"); });
    return addresses.join(';');
}
