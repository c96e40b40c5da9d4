#include "platform/linux/bus/BusConnection.h"

#include "platform/linux/bus/sessionBus.h"

#include <QDBusPendingCallWatcher>

#include <utility>

namespace {

QDBusConnection connectToBus() {
    static int count = 0;
    const QString name = "Cobweave " + QString::number(++count);
    const QString address = sessionBus::address();
    return address.isEmpty() ? QDBusConnection(name) : QDBusConnection::connectToBus(address, name);
}

}  // namespace

BusConnection::BusConnection() : connection(connectToBus()) {}

BusConnection::~BusConnection() { QDBusConnection::disconnectFromBus(connection.name()); }

QDBusMessage BusConnection::callOfBus(const QString& method) {
    return QDBusMessage::createMethodCall(busName, busPath, busName, method);
}

void BusConnection::call(QDBusMessage message, Answered answered, int limit) {
    message.setAutoStartService(false);
    auto* const pending =
        new QDBusPendingCallWatcher(connection.asyncCall(message, limit), &pendingCalls);
    QObject::connect(pending, &QDBusPendingCallWatcher::finished, pending,
                     [pending, answered = std::move(answered)] {
                         pending->deleteLater();
                         answered(pending->reply());
                     });
}
