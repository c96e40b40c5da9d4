#include "platform/linux/bus/sessionBus.h"

#include "platform/linux/bus/busProbe.h"

#include <QByteArray>
#include <QFileInfo>
#include <QStringList>

namespace {

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";
constexpr std::chrono::seconds longestWait{2};

/// The name of the socket in an address such as "unix:path=/run/user/1000/bus,guid=0123"; empty in
/// one of another kind.
std::string socketName(const QString& address) {
    for (const QString& pair : address.mid(QString("unix:").size()).split(',')) {
        std::string value =
            QByteArray::fromPercentEncoding(pair.section('=', 1).toLocal8Bit()).toStdString();
        if (pair.startsWith("path=")) return value;
        if (pair.startsWith("abstract=")) return '\0' + value;
    }
    return {};
}

}  // namespace

QString sessionBus::address() {
    if (qEnvironmentVariableIsEmpty(variable)) {
        const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus";
        return QFileInfo::exists(socket) ? "unix:path=" + socket : QString();
    }
    QStringList addresses = qEnvironmentVariable(variable).split(';');
    addresses.removeIf([](const QString& address) { return !address.startsWith("unix:"); });
    return addresses.join(';');
}

void sessionBus::select() {
    const QString known = address();
    // There is nothing to select from, and the environment stays as it is.
    if (known.isEmpty() && qEnvironmentVariableIsEmpty(variable)) return;
    const auto deadline = std::chrono::steady_clock::now() + longestWait;
    QByteArray selected = "disabled:";
    for (const QString& each : known.split(';', Qt::SkipEmptyParts)) {
        if (!isAnsweringBus(socketName(each), deadline)) continue;
        selected = each.toLocal8Bit();
        break;
    }
    qputenv(variable, selected);
}
