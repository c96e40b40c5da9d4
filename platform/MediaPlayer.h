#pragma once

#include "base/Event.h"

#include <cstdint>
#include <memory>
#include <string>

/// The media player on the desktop, as a window with a title that takes commands.
class MediaPlayer {
public:
    /// Names the player's window; 0 is none.
    using Window = std::uintptr_t;

    /// Another player may be the chosen one, or its title may have changed.
    Event<> changed;

    MediaPlayer() = default;
    MediaPlayer(const MediaPlayer&) = delete;
    MediaPlayer& operator=(const MediaPlayer&) = delete;
    virtual ~MediaPlayer() = default;

    /// The window of the chosen player; 0 when there is none.
    [[nodiscard]] virtual Window WinampWindow() = 0;
    /// The window's title, as in "1. Artist - Title - Winamp [Paused]"; empty for 0.
    [[nodiscard]] virtual std::string WindowTextOf(Window window) = 0;
    /// Makes the player do what its command of this number does: 40044 to 40048 are previous,
    /// play, pause, stop and next. Nothing happens for 0.
    virtual void command(Window window, int number) = 0;
};

/// Asking it costs little and never waits for a player.
[[nodiscard]] std::unique_ptr<MediaPlayer> makeMediaPlayer();
