#include "platform/linux/bus/MprisBus.h"

#include "platform/linux/bus/sessionBus.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr const char* prefix = "org.mpris.MediaPlayer2.";
constexpr const char* path = "/org/mpris/MediaPlayer2";
constexpr const char* playerInterface = "org.mpris.MediaPlayer2.Player";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

/// Words in the names of those that are passed over.
constexpr std::array passedOver{"playerctld", "kdeconnect", "browser",  "brave",  "chrome",
                                "chromium",   "edge",       "epiphany", "falkon", "firefox",
                                "konqueror",  "librewolf",  "msedge",   "opera",  "qutebrowser",
                                "seamonkey",  "vivaldi",    "webkit"};

bool isPlayer(const QString& name) {
    if (!name.startsWith(prefix)) return false;
    static const QRegularExpression between("[._-]");
    const QStringList words =
        name.mid(QString(prefix).size()).toLower().split(between, Qt::SkipEmptyParts);
    return std::none_of(passedOver.begin(), passedOver.end(),
                        [&](const char* word) { return words.contains(word); });
}

/// A connection of its own: what is asked for on it ends with it.
QDBusConnection connectToBus() {
    static int count = 0;
    const QString name = "Cobweave players " + QString::number(++count);
    const QString address = sessionBus::address();
    return address.isEmpty() ? QDBusConnection(name) : QDBusConnection::connectToBus(address, name);
}

QDBusMessage questionForBus(const QString& method) {
    return QDBusMessage::createMethodCall(busName, busPath, busName, method);
}

}  // namespace

MprisBus::MprisBus() : connection(connectToBus()) {
    if (!connection.isConnected()) return;
    connection.connect({}, "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                       "Disconnected", this, SLOT(loseBus()));
    // Before the names are asked for, so that none gets lost in between.
    watcher.setConnection(connection);
    watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher.addWatchedService("org.mpris.MediaPlayer2*");
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
                     [this](const QString& name, const QString& /*before*/, const QString& owner) {
                         changeOwner(name, owner);
                     });
    askForNames();
}

MprisBus::~MprisBus() { QDBusConnection::disconnectFromBus(connection.name()); }

void MprisBus::command(const QString& owner, const QString& method) {
    auto call = QDBusMessage::createMethodCall(owner, path, playerInterface, method);
    call.setAutoStartService(false);
    connection.send(call);
}

void MprisBus::changeProperties(const QString& /*interface*/, const QVariantMap& changed,
                                const QStringList& invalidated, const QDBusMessage& message) {
    const QString owner = message.service();
    if (!isFollowed(owner)) return;
    if (changed.contains("PlaybackStatus") || changed.contains("Metadata")) told(owner, changed);
    if (invalidated.contains("PlaybackStatus") || invalidated.contains("Metadata")) {
        askForProperties(owner);
    }
}

void MprisBus::loseBus() {
    const auto gone = std::exchange(owners, {});
    asked.clear();
    for (const auto& [name, owner] : gone)
        left(owner);
}

void MprisBus::ask(QDBusMessage question, Answered answered) {
    question.setAutoStartService(false);
    auto* const pending = new QDBusPendingCallWatcher(connection.asyncCall(question), this);
    QObject::connect(pending, &QDBusPendingCallWatcher::finished, this,
                     [pending, answered = std::move(answered)] {
                         pending->deleteLater();
                         answered(pending->reply());
                     });
}

void MprisBus::askForNames() {
    ask(questionForBus("ListNames"), [this](const QDBusMessage& names) {
        for (const QString& name : names.arguments().value(0).toStringList()) {
            if (!isPlayer(name)) continue;
            auto question = questionForBus("GetNameOwner");
            question << name;
            ask(question, [this, name](const QDBusMessage& answer) {
                if (answer.type() == QDBusMessage::ReplyMessage) {
                    changeOwner(name, answer.arguments().value(0).toString());
                }
            });
        }
    });
}

void MprisBus::changeOwner(const QString& name, const QString& owner) {
    if (!isPlayer(name)) return;
    const auto entry = owners.find(name);
    const QString before = entry == owners.end() ? QString() : entry->second;
    if (before == owner) return;
    const bool isNew = !owner.isEmpty() && !isFollowed(owner);
    if (owner.isEmpty()) {
        owners.erase(name);
    } else {
        owners[name] = owner;
    }
    if (!before.isEmpty() && !isFollowed(before)) {
        follow(before, false);
        asked.erase(before);
        left(before);
    }
    if (isNew) {
        follow(owner, true);
        askForProperties(owner);
    }
}

void MprisBus::askForProperties(const QString& owner) {
    // One question at a time, however often the player says that something has changed: its answer
    // comes after all that it has said before.
    if (!asked.insert(owner).second) return;
    auto question = QDBusMessage::createMethodCall(owner, path, propertiesInterface, "GetAll");
    question << playerInterface;
    ask(question, [this, owner](const QDBusMessage& answer) { takeProperties(owner, answer); });
}

void MprisBus::takeProperties(const QString& owner, const QDBusMessage& answer) {
    if (!isFollowed(owner)) return;
    asked.erase(owner);
    if (answer.type() == QDBusMessage::ReplyMessage && answer.signature() == "a{sv}") {
        told(owner, qdbus_cast<QVariantMap>(answer.arguments().value(0)));
    }
}

void MprisBus::follow(const QString& owner, bool wanted) {
    // By its connection's name, so that the bus wakes nobody for those who are passed over.
    const QString signal = "PropertiesChanged";
    const QStringList first{playerInterface};
    const QString types = "sa{sv}as";
    const char* const slot =
        SLOT(changeProperties(QString, QVariantMap, QStringList, QDBusMessage));
    if (wanted) {
        connection.connect(owner, path, propertiesInterface, signal, first, types, this, slot);
    } else {
        connection.disconnect(owner, path, propertiesInterface, signal, first, types, this, slot);
    }
}

bool MprisBus::isFollowed(const QString& owner) const {
    return std::any_of(owners.begin(), owners.end(),
                       [&](const auto& entry) { return entry.second == owner; });
}
