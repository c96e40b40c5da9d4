#include "tests/platform/linux/x11/ScriptedWatcher.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>

#include <stdexcept>

namespace {

constexpr const char* name = "org.kde.StatusNotifierWatcher";
constexpr const char* path = "/StatusNotifierWatcher";

QDBusConnection connectAnew() {
    static int count = 0;
    return QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                         "watcher " + QString::number(++count));
}

}  // namespace

ScriptedWatcher::ScriptedWatcher() : connection(connectAnew()) {
    if (!connection.registerVirtualObject(path, this) || !connection.registerService(name)) {
        throw std::runtime_error("the watcher does not start");
    }
}

ScriptedWatcher::~ScriptedWatcher() { QDBusConnection::disconnectFromBus(connection.name()); }

void ScriptedWatcher::takeHost() {
    hasHost = true;
    connection.send(QDBusMessage::createSignal(path, name, "StatusNotifierHostRegistered"));
}

bool ScriptedWatcher::handleMessage(const QDBusMessage& message, const QDBusConnection& from) {
    if (message.member() != "Get") return false;
    ++asked;
    if (answers) from.send(message.createReply(QVariant::fromValue(QDBusVariant(hasHost))));
    return true;
}
