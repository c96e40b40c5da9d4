#include "platform/linux/bus/MprisBus.h"

#include <QDBusArgument>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr const char* prefix = "org.mpris.MediaPlayer2.";
constexpr const char* path = "/org/mpris/MediaPlayer2";
constexpr const char* playerInterface = "org.mpris.MediaPlayer2.Player";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

/// Words in the names of programs that do not count as players.
constexpr std::array ignoredWords{"playerctld", "kdeconnect", "browser",  "brave",  "chrome",
                                  "chromium",   "edge",       "epiphany", "falkon", "firefox",
                                  "konqueror",  "librewolf",  "msedge",   "opera",  "qutebrowser",
                                  "seamonkey",  "vivaldi",    "webkit"};

bool isPlayer(const QString& name) {
    if (!name.startsWith(prefix)) return false;
    static const QRegularExpression between("[._-]");
    const QStringList words =
        name.mid(QString(prefix).size()).toLower().split(between, Qt::SkipEmptyParts);
    return std::none_of(ignoredWords.begin(), ignoredWords.end(),
                        [&](const char* word) { return words.contains(word); });
}

}  // namespace

MprisBus::MprisBus() {
    if (!bus.isConnected()) return;
    bus.handle().connect({}, "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                         "Disconnected", this, SLOT(onBusLost()));
    // This comes before the names are queried, so that no change gets lost in between.
    watcher.setConnection(bus.handle());
    watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher.addWatchedService("org.mpris.MediaPlayer2*");
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
                     [this](const QString& name, const QString& /*before*/, const QString& owner) {
                         changeOwner(name, owner);
                     });
    queryNames();
}

void MprisBus::command(const QString& owner, const QString& method) {
    auto call = QDBusMessage::createMethodCall(owner, path, playerInterface, method);
    call.setAutoStartService(false);
    bus.handle().send(call);
}

void MprisBus::changeProperties(const QString& /*interface*/, const QVariantMap& changed,
                                const QStringList& invalidated, const QDBusMessage& message) {
    const QString owner = message.service();
    if (!isOwner(owner)) return;
    if (changed.contains("PlaybackStatus") || changed.contains("Metadata")) updated(owner, changed);
    if (invalidated.contains("PlaybackStatus") || invalidated.contains("Metadata")) {
        queryProperties(owner);
    }
}

void MprisBus::onBusLost() {
    const auto gone = std::exchange(owners, {});
    beingQueried.clear();
    for (const auto& [name, owner] : gone)
        left(owner);
}

void MprisBus::queryNames() {
    bus.call(BusConnection::callOfBus("ListNames"), [this](const QDBusMessage& names) {
        for (const QString& name : names.arguments().value(0).toStringList()) {
            if (!isPlayer(name)) continue;
            auto call = BusConnection::callOfBus("GetNameOwner");
            call << name;
            bus.call(call, [this, name](const QDBusMessage& answer) {
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
    const bool isNew = !owner.isEmpty() && !isOwner(owner);
    if (owner.isEmpty()) {
        owners.erase(name);
    } else {
        owners[name] = owner;
    }
    if (!before.isEmpty() && !isOwner(before)) {
        subscribe(before, false);
        beingQueried.erase(before);
        left(before);
    }
    if (isNew) {
        subscribe(owner, true);
        queryProperties(owner);
    }
}

void MprisBus::queryProperties(const QString& owner) {
    // One call at a time, however often the player reports a change: its answer comes after all
    // that it has reported before.
    if (!beingQueried.insert(owner).second) return;
    auto call = QDBusMessage::createMethodCall(owner, path, propertiesInterface, "GetAll");
    call << playerInterface;
    bus.call(call, [this, owner](const QDBusMessage& answer) { setProperties(owner, answer); });
}

void MprisBus::setProperties(const QString& owner, const QDBusMessage& answer) {
    if (!isOwner(owner)) return;
    beingQueried.erase(owner);
    if (answer.type() == QDBusMessage::ReplyMessage && answer.signature() == "a{sv}") {
        updated(owner, qdbus_cast<QVariantMap>(answer.arguments().value(0)));
    }
}

void MprisBus::subscribe(const QString& owner, bool isSubscribed) {
    // The sender is the player's connection, so that the signals of ignored programs wake nobody.
    const QString signal = "PropertiesChanged";
    const QStringList first{playerInterface};
    const QString types = "sa{sv}as";
    const char* const slot =
        SLOT(changeProperties(QString, QVariantMap, QStringList, QDBusMessage));
    if (isSubscribed) {
        bus.handle().connect(owner, path, propertiesInterface, signal, first, types, this, slot);
    } else {
        bus.handle().disconnect(owner, path, propertiesInterface, signal, first, types, this, slot);
    }
}

bool MprisBus::isOwner(const QString& owner) const {
    return std::any_of(owners.begin(), owners.end(),
                       [&](const auto& entry) { return entry.second == owner; });
}
