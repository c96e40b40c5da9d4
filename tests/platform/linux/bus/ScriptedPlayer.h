#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A player on the bus of the environment that does what a test says. Its calls return when the bus
/// has what it sends, so that what anybody sends afterwards arrives later.
class ScriptedPlayer {
public:
    /// On the bus under the name "org.mpris.MediaPlayer2." and `name`.
    explicit ScriptedPlayer(const QString& name, const QVariantMap& properties = {});
    ~ScriptedPlayer();
    ScriptedPlayer(const ScriptedPlayer&) = delete;
    ScriptedPlayer& operator=(const ScriptedPlayer&) = delete;

    /// Changes its properties, and reports the change.
    void change(const QVariantMap& changes);
    void changeStatus(const QString& status) { change({{"PlaybackStatus", status}}); }
    void changeTitle(const QString& title);
    /// Changes its properties and reports that they have changed, but not to what.
    void changeSilently(const QVariantMap& changes);
    /// Sends its signal PropertiesChanged with any arguments.
    void emitChange(const QVariantList& arguments);

    /// Waits until a program has asked for its properties, and the bus has the answer.
    void waitUntilAsked() const;

    /// Adds a name on the bus, behind "org.mpris.MediaPlayer2.", or gives one up.
    void takeName(const QString& name);
    void leaveName(const QString& name);

    /// The names of the methods that were called, in order.
    [[nodiscard]] const std::vector<std::string>& commands() const;

private:
    class Object;

    QDBusConnection connection;
    std::unique_ptr<Object> object;
};

/// The properties of a player that has a song.
[[nodiscard]] QVariantMap withSong(const QString& status, const QString& artist,
                                   const QString& title);

/// Players that misbehave, as processes of their own on the bus of the environment. They write a
/// line when they are there.
namespace misbehaving {

/// Is on the bus and does not read what it is sent.
constexpr const char* silent = "--silent-player";
/// Plays, with the title "Frozen". When it has answered a call for its properties, it writes
/// another line and freezes.
constexpr const char* frozen = "--frozen-player";
/// Plays, and reports another title without an end.
constexpr const char* flooding = "--flooding-player";

/// Becomes the player of this argument, and does not return; false for another argument.
[[nodiscard]] bool run(std::string_view argument);

}  // namespace misbehaving
