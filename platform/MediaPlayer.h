#pragma once

#include "base/Event.h"

#include <cstdint>
#include <memory>
#include <string>

/// The media player on the desktop, as far as its window tells and obeys.
class MediaPlayer {
public:
    /// Names the player's window; 0 is none.
    using Window = std::uintptr_t;

    /// The player that is chosen or its title may have changed. For those who sleep until then.
    Event<> changed;

    MediaPlayer() = default;
    MediaPlayer(const MediaPlayer&) = delete;
    MediaPlayer& operator=(const MediaPlayer&) = delete;
    virtual ~MediaPlayer() = default;

    [[nodiscard]] virtual Window WinampWindow() = 0;
    /// The window's title, as in "1. Artist - Title - Winamp [Paused]"; empty for 0.
    [[nodiscard]] virtual std::string WindowTextOf(Window window) = 0;
    /// Makes the player do what its command of this number does: 40044 to 40048 are previous,
    /// play, pause, stop and next. Nothing happens for 0.
    virtual void command(Window window, int number) = 0;
};

[[nodiscard]] std::unique_ptr<MediaPlayer> makeMediaPlayer();
