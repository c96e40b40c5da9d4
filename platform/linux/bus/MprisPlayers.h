#pragma once

#include "platform/MediaPlayer.h"
#include "platform/linux/bus/MprisTitle.h"

#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <map>
#include <optional>
#include <string>

/// The players that have told of themselves, and which one of them is the chosen one: the one that
/// started to play last. It stays it while it is paused or stopped, until it leaves or another one
/// starts. When it leaves, the one that started last before it follows. Among players that have not
/// played since they are known, the one that told of itself first is chosen. Of several that play
/// already when the program starts, the one counts as the last that answers last.
class MprisPlayers {
public:
    using Window = MediaPlayer::Window;

    /// Takes over what a player's properties have become; those that are not there stay. `owner` is
    /// its connection's name on the bus.
    void tell(const QString& owner, const QVariantMap& properties);
    void remove(const QString& owner);

    /// The chosen player's window; 0 without one. A window's number is never used again.
    [[nodiscard]] Window chosen() const;
    /// Empty for a player that has left.
    [[nodiscard]] std::string titleOf(Window window);
    [[nodiscard]] std::optional<MprisStatus> statusOf(Window window) const;
    [[nodiscard]] QString ownerOf(Window window) const;

private:
    struct Player {
        Window window = 0;
        MprisStatus status = MprisStatus::Stopped;
        /// The how-manieth start of all it was; 0 when it has not played.
        std::uint64_t started = 0;
        /// What is told of the song is read when somebody asks, and only once.
        std::optional<QVariant> metadata = std::nullopt;
        std::string song = {};
    };
    using Entry = std::map<QString, Player>::const_iterator;

    [[nodiscard]] Entry find(Window window) const;

    std::map<QString, Player> players;
    Window lastWindow = 0;
    std::uint64_t starts = 0;
};
