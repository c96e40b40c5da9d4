#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <memory>
#include <string>
#include <vector>

/// A player on the bus of the environment that does what a test says. Its calls return when the bus
/// has taken what it says, so that nobody who speaks afterwards is heard before.
class ScriptedPlayer {
public:
    /// On the bus under the name "org.mpris.MediaPlayer2." and `name`.
    explicit ScriptedPlayer(const QString& name, const QVariantMap& properties = {});
    ~ScriptedPlayer();
    ScriptedPlayer(const ScriptedPlayer&) = delete;
    ScriptedPlayer& operator=(const ScriptedPlayer&) = delete;

    /// Changes its properties, and tells of it.
    void change(const QVariantMap& changes);
    void changeStatus(const QString& status) { change({{"PlaybackStatus", status}}); }
    void changeTitle(const QString& title);
    /// Changes its properties and tells that they have changed, but not to what.
    void changeSilently(const QVariantMap& changes);
    /// Says anything as its PropertiesChanged.
    void say(const QVariantList& arguments);

    /// Waits until somebody has asked for its properties, and the bus has the answer.
    void waitUntilAsked() const;

    void takeName(const QString& name);
    void leaveName(const QString& name);

    /// The commands that it has got.
    [[nodiscard]] const std::vector<std::string>& commands() const;

private:
    class Object;

    QDBusConnection connection;
    std::unique_ptr<Object> object;
};

/// The properties of a player that has a song.
[[nodiscard]] QVariantMap withSong(const QString& status, const QString& artist,
                                   const QString& title);
