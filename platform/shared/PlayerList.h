#pragma once

#include "platform/MediaPlayer.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// How far a player has got with its song.
enum class PlayerStatus { Stopped, Paused, Playing };

/// What a player says of its song, as UTF-8. Without a title there is no song.
struct PlayerSong {
    std::string title;
    std::vector<std::string> artists;
};

/// What a player can be asked to do.
enum class PlayerCommand { Previous, Play, PlayPause, Stop, Next };

/// The players on the desktop, in whatever way the system knows of them, and the choice of the one
/// that is followed: the player that started to play last. It stays chosen while it is paused or
/// stopped, until it leaves or another one starts. When it leaves, the one that started last before
/// it follows. Among players that have not played since they are known, the first one is chosen.
/// Where several play already when the program starts, the last one that `update` names counts.
class PlayerList {
public:
    using Window = MediaPlayer::Window;

    /// What has become known of a player; what is not set stays as it was.
    struct Change {
        std::optional<PlayerStatus> status = std::nullopt;
        /// Called when a title is asked for, and only once: reading it may cost something.
        std::function<PlayerSong()> song = {};
    };
    /// `name` tells players apart, as the system does.
    void update(const std::string& name, Change change);
    /// The player has left; nothing happens for one that is not known.
    void remove(const std::string& name);

    /// The chosen player's window; 0 without one. A window's number is never used again.
    [[nodiscard]] Window chosen() const;
    /// The title of a player's window, as in "1. Artist - Title - Winamp [Paused]"; several artists
    /// are joined by ", ". UTF-8 without control characters, of at most 2048 bytes. Empty without a
    /// song, and for a player that has left.
    [[nodiscard]] std::string titleOf(Window window);
    /// The name that the player has for the system; empty for one that has left.
    [[nodiscard]] std::string nameOf(Window window) const;
    /// What the player is to do on the command of this number (see `MediaPlayer::command`); nothing
    /// for another number, for a player that has left, and for a pause of one that is stopped,
    /// which would start it.
    [[nodiscard]] std::optional<PlayerCommand> commandOf(Window window, int number) const;

    /// Whether the chosen player or its title is another one than at the last call.
    [[nodiscard]] bool hasChanged();

private:
    struct Player {
        Window window = 0;
        PlayerStatus status = PlayerStatus::Stopped;
        /// Numbers the starts of all players; 0 when this one has not played.
        std::uint64_t lastStart = 0;
        /// Set while what the player has said of its song is unread.
        std::function<PlayerSong()> unreadSong = {};
        /// "Artist - Title".
        std::string song = {};
    };
    using Entry = std::map<std::string, Player>::const_iterator;

    [[nodiscard]] Entry find(Window window) const;

    std::map<std::string, Player> players;
    Window lastWindow = 0;
    std::uint64_t starts = 0;
    Window knownWindow = 0;
    std::string knownTitle;
};
