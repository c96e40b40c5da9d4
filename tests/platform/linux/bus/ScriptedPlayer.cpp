#include "tests/platform/linux/bus/ScriptedPlayer.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QEventLoop>

#include <csignal>
#include <iostream>

namespace {

constexpr const char* path = "/org/mpris/MediaPlayer2";
constexpr const char* playerInterface = "org.mpris.MediaPlayer2.Player";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr const char* namePrefix = "org.mpris.MediaPlayer2.";
constexpr const char* busName = "org.freedesktop.DBus";

QDBusConnection connected() {
    static int count = 0;
    return QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                         "scripted " + QString::number(++count));
}

void waitForBus(const QDBusConnection& connection) {
    (void)connection.call(QDBusMessage::createMethodCall(busName, "/", busName, "GetId"));
}

void writeReady() { std::cout << "ready" << std::endl; }

[[noreturn]] void freeze() {
    // All of its threads stop.
    while (true)
        (void)std::raise(SIGSTOP);
}

[[noreturn]] void flood() {
    auto connection =
        QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), "flood");
    connection.registerService(QString(namePrefix) + "flood");
    writeReady();
    const QStringList artists(20, "Ann");
    for (int count = 0;; ++count) {
        auto signal = QDBusMessage::createSignal(path, propertiesInterface, "PropertiesChanged");
        const QVariantMap metadata{{"xesam:title", QString::number(count)},
                                   {"xesam:artist", artists}};
        signal << playerInterface
               << QVariantMap{{"PlaybackStatus", "Playing"}, {"Metadata", metadata}}
               << QStringList();
        connection.send(signal);
    }
}

}  // namespace

class ScriptedPlayer::Object final : public QDBusVirtualObject {
public:
    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.interface() == playerInterface) {
            commands.push_back(message.member().toStdString());
            return true;
        }
        if (message.member() != "GetAll") return false;
        wasAsked = true;
        return connection.send(message.createReply(properties));
    }

    QVariantMap properties;
    std::vector<std::string> commands;
    bool wasAsked = false;
};

ScriptedPlayer::ScriptedPlayer(const QString& name, const QVariantMap& properties)
    : connection(connected()), object(std::make_unique<Object>()) {
    object->properties = properties;
    connection.registerVirtualObject(path, object.get());
    takeName(name);
}

ScriptedPlayer::~ScriptedPlayer() { QDBusConnection::disconnectFromBus(connection.name()); }

void ScriptedPlayer::change(const QVariantMap& changes) {
    object->properties.insert(changes);
    emitChange({playerInterface, changes, QStringList()});
}

void ScriptedPlayer::changeTitle(const QString& title) {
    change({{"Metadata", QVariantMap{{"xesam:title", title}}}});
}

void ScriptedPlayer::changeSilently(const QVariantMap& changes) {
    object->properties.insert(changes);
    emitChange({playerInterface, QVariantMap(), QStringList(changes.keys())});
}

void ScriptedPlayer::emitChange(const QVariantList& arguments) {
    auto signal = QDBusMessage::createSignal(path, propertiesInterface, "PropertiesChanged");
    signal.setArguments(arguments);
    connection.send(signal);
    waitForBus(connection);
}

void ScriptedPlayer::waitUntilAsked() const {
    while (!object->wasAsked)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    waitForBus(connection);
}

void ScriptedPlayer::takeName(const QString& name) {
    connection.registerService(namePrefix + name);
}

void ScriptedPlayer::leaveName(const QString& name) {
    connection.unregisterService(namePrefix + name);
}

const std::vector<std::string>& ScriptedPlayer::commands() const { return object->commands; }

QVariantMap withSong(const QString& status, const QString& artist, const QString& title) {
    QVariantMap metadata{{"xesam:title", title}};
    if (!artist.isEmpty()) metadata["xesam:artist"] = QStringList{artist};
    return {{"PlaybackStatus", status}, {"Metadata", metadata}};
}

bool misbehaving::run(std::string_view argument) {
    if (argument == flooding) flood();
    if (argument != silent && argument != frozen) return false;
    const ScriptedPlayer player(argument == silent ? "silent" : "frozen",
                                withSong("Playing", "", "Frozen"));
    writeReady();
    if (argument == frozen) {
        player.waitUntilAsked();
        writeReady();
    }
    freeze();
}
