#pragma once

#include "base/Event.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <map>
#include <set>

/// The media players on the user's session bus. Tells of them and commands them without ever
/// waiting for one, and starts none. Web browsers are no players, nor are those who hand on other
/// players
/// ("playerctld", "kdeconnect").
///
/// Without a session bus it is a quiet object that tells of nobody, and so it becomes when the bus
/// goes away. Needs a `QCoreApplication`, on whose events it tells.
class MprisBus final : public QObject {
    Q_OBJECT

public:
    /// The properties of a player, all of them at first, later those that have changed. `owner` is
    /// its connection's name on the bus.
    Event<const QString&, const QVariantMap&> told;
    Event<const QString&> left;

    MprisBus();
    ~MprisBus() override;
    MprisBus(const MprisBus&) = delete;
    MprisBus& operator=(const MprisBus&) = delete;

    /// Sends a player one of its methods that take nothing, as in "Play".
    void command(const QString& owner, const QString& method);

private Q_SLOTS:
    void changeProperties(const QString& interface, const QVariantMap& changed,
                          const QStringList& invalidated, const QDBusMessage& message);
    void loseBus();

private:
    using Answered = std::function<void(const QDBusMessage& answer)>;

    void ask(QDBusMessage question, Answered answered);
    void askForNames();
    void changeOwner(const QString& name, const QString& owner);
    void askForProperties(const QString& owner);
    void takeProperties(const QString& owner, const QDBusMessage& answer);
    void follow(const QString& owner, bool wanted);
    [[nodiscard]] bool isFollowed(const QString& owner) const;

    QDBusConnection connection;
    QDBusServiceWatcher watcher;
    /// The players' names, and who owns each. One player may have several.
    std::map<QString, QString> owners;
    /// Who has been asked and has not answered yet.
    std::set<QString> asked;
};
