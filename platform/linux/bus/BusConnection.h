#pragma once

#include "base/Event.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

/// A connection of its own to the user's session bus. Signals that were subscribed on it, and calls
/// that have no answer yet, end with it. Needs a `QCoreApplication`.
class BusConnection {
public:
    /// The name of the bus itself, and of its interface.
    static constexpr const char* busName = "org.freedesktop.DBus";
    static constexpr const char* busPath = "/org/freedesktop/DBus";

    /// What is done with the answer to a call.
    using Answered = Event<const QDBusMessage&>;

    /// Connects; without a bus it is not connected, and what is sent on it has no effect.
    BusConnection();
    ~BusConnection();
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;

    /// Whether there is a bus, and it is still there.
    [[nodiscard]] bool isConnected() const { return connection.isConnected(); }
    /// The connection on which signals are subscribed and messages are sent.
    [[nodiscard]] QDBusConnection& handle() { return connection; }

    /// A call of one of the bus's own methods.
    [[nodiscard]] static QDBusMessage callOfBus(const QString& method);
    /// Sends a call and hands over its answer, a reply or an error, from the event loop. It starts
    /// no service. After `limit` milliseconds the answer is the error `NoReply`; -1 stands for the
    /// 25 s of the library.
    void call(QDBusMessage message, Answered answered, int limit = -1);

private:
    QDBusConnection connection;
    /// Owns the pending calls.
    QObject pendingCalls;
};
