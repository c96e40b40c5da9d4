#pragma once

#include "base/Event.h"
#include "platform/linux/bus/BusConnection.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <map>
#include <set>

/// The media players on the user's session bus. Reports their properties and sends them commands
/// without ever waiting for one, and starts none. Web browsers do not count as players, nor do
/// programs that only pass on other players ("playerctld", "kdeconnect").
///
/// Without a session bus nothing is reported; when the bus goes away, all players leave. Needs a
/// `QCoreApplication`, from whose loop the events are raised.
class MprisBus final : public QObject {
    Q_OBJECT

public:
    /// The properties of a player, all of them at first, later those that have changed. `owner` is
    /// its connection's name on the bus.
    Event<const QString&, const QVariantMap&> updated;
    /// The player is not on the bus any more.
    Event<const QString&> left;

    /// Asks for the players that are there already; the answers come from the loop.
    MprisBus();

    /// Calls a method of a player that takes no arguments, such as "Play".
    void command(const QString& owner, const QString& method);

private Q_SLOTS:
    void changeProperties(const QString& interface, const QVariantMap& changed,
                          const QStringList& invalidated, const QDBusMessage& message);
    void onBusLost();

private:
    void queryNames();
    void changeOwner(const QString& name, const QString& owner);
    void queryProperties(const QString& owner);
    void setProperties(const QString& owner, const QDBusMessage& answer);
    void subscribe(const QString& owner, bool isSubscribed);
    [[nodiscard]] bool isOwner(const QString& owner) const;

    BusConnection bus;
    QDBusServiceWatcher watcher;
    /// The connection that owns each name of a player. One player may have several names.
    std::map<QString, QString> owners;
    /// The owners whose properties are being queried.
    std::set<QString> beingQueried;
};
