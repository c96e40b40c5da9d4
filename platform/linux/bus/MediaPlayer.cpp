#include "platform/MediaPlayer.h"

#include "platform/linux/bus/MprisBus.h"
#include "platform/shared/PlayerList.h"

#include <QDBusArgument>
#include <QMetaObject>
#include <QStringList>

#include <utility>

namespace {

std::optional<PlayerStatus> statusIn(const QVariantMap& properties) {
    const QVariant value = properties.value("PlaybackStatus");
    if (value.typeId() != QMetaType::QString) return std::nullopt;
    const QString name = value.toString();
    if (name == "Playing") return PlayerStatus::Playing;
    if (name == "Paused") return PlayerStatus::Paused;
    if (name == "Stopped") return PlayerStatus::Stopped;
    return std::nullopt;
}

QVariantMap entriesOf(const QVariant& metadata) {
    if (metadata.metaType() != QMetaType::fromType<QDBusArgument>()) return metadata.toMap();
    const auto argument = metadata.value<QDBusArgument>();
    if (argument.currentSignature() != "a{sv}") return {};
    return qdbus_cast<QVariantMap>(argument);
}

/// The property `Metadata`. A value of a wrong type counts as missing.
PlayerSong songIn(const QVariant& metadata) {
    const QVariantMap entries = entriesOf(metadata);
    const QVariant title = entries.value("xesam:title");
    if (title.typeId() != QMetaType::QString) return {};
    PlayerSong song{title.toString().toStdString(), {}};
    const QVariant artists = entries.value("xesam:artist");
    // A list, as it has to be, or a single text, which some players send instead.
    if (artists.typeId() == QMetaType::QString || artists.typeId() == QMetaType::QStringList) {
        for (const QString& artist : artists.toStringList())
            song.artists.push_back(artist.toStdString());
    }
    return song;
}

QString methodOf(PlayerCommand command) {
    switch (command) {
        case PlayerCommand::Previous: return "Previous";
        case PlayerCommand::Play: return "Play";
        case PlayerCommand::PlayPause: return "PlayPause";
        case PlayerCommand::Stop: return "Stop";
        case PlayerCommand::Next: return "Next";
    }
    return {};
}

/// The player on the desktop by MPRIS 2, the way in which players are seen and controlled on the
/// session bus. The number of a "window" names the player itself. All answers come out of what
/// the bus has reported so far: none waits for a player, and nothing is done while no player
/// changes. Without a session bus there is no player.
class MprisPlayer final : public MediaPlayer {
public:
    MprisPlayer() {
        bus.updated = [this](const QString& owner, const QVariantMap& properties) {
            PlayerList::Change change{statusIn(properties), {}};
            if (const auto metadata = properties.constFind("Metadata");
                metadata != properties.constEnd()) {
                change.song = [value = *metadata] { return songIn(value); };
            }
            players.update(owner.toStdString(), std::move(change));
            notifyLater();
        };
        bus.left = [this](const QString& owner) {
            players.remove(owner.toStdString());
            notifyLater();
        };
    }

    [[nodiscard]] Window WinampWindow() override { return players.chosen(); }
    [[nodiscard]] std::string WindowTextOf(Window window) override {
        return players.titleOf(window);
    }
    void command(Window window, int number) override {
        if (const auto command = players.commandOf(window, number)) {
            bus.command(QString::fromStdString(players.nameOf(window)), methodOf(*command));
        }
    }

private:
    /// Notifies once for all changes that have arrived: a player may report each second that it
    /// plays.
    void notifyLater() {
        if (std::exchange(isNotificationDue, true)) return;
        QMetaObject::invokeMethod(
            &bus,
            [this] {
                isNotificationDue = false;
                if (players.hasChanged()) changed();
            },
            Qt::QueuedConnection);
    }

    PlayerList players;
    bool isNotificationDue = false;
    MprisBus bus;
};

}  // namespace

std::unique_ptr<MediaPlayer> makeMediaPlayer() { return std::make_unique<MprisPlayer>(); }
