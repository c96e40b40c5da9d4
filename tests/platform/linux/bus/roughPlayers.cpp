#include "tests/platform/linux/bus/roughPlayers.h"

#include "tests/platform/linux/bus/ScriptedPlayer.h"

#include <QDBusMessage>

#include <csignal>
#include <iostream>

namespace {

void tellReady() { std::cout << "ready" << std::endl; }

[[noreturn]] void freeze() {
    // All of its threads stop, and nothing of it goes on.
    while (true)
        (void)std::raise(SIGSTOP);
}

[[noreturn]] void flood() {
    auto connection =
        QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), "flood");
    connection.registerService("org.mpris.MediaPlayer2.flood");
    tellReady();
    const QStringList artists(20, "Ann");
    for (int count = 0;; ++count) {
        auto signal = QDBusMessage::createSignal(
            "/org/mpris/MediaPlayer2", "org.freedesktop.DBus.Properties", "PropertiesChanged");
        const QVariantMap metadata{{"xesam:title", QString::number(count)},
                                   {"xesam:artist", artists}};
        signal << "org.mpris.MediaPlayer2.Player"
               << QVariantMap{{"PlaybackStatus", "Playing"}, {"Metadata", metadata}}
               << QStringList();
        connection.send(signal);
    }
}

}  // namespace

bool roughPlayers::run(std::string_view manner) {
    if (manner == flooding) flood();
    if (manner != silent && manner != frozen) return false;
    const ScriptedPlayer player(manner == silent ? "silent" : "frozen",
                                withSong("Playing", "", "Frozen"));
    tellReady();
    if (manner == frozen) {
        player.waitUntilAsked();
        tellReady();
    }
    freeze();
}
