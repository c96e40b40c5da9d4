#include "desktop/winamp.h"

#include "base/Failure.h"
#include "base/text.h"
#include "platform/MediaPlayer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace {

/// The place of `wanted` in `text`, from 1; 0 when it is not there, or behind the 32,767 places
/// that are looked at.
int placeOf(std::string_view wanted, std::string_view text) {
    const std::size_t found = text.find(wanted);
    if (found == std::string_view::npos) return 0;
    return checked<std::int16_t>(found + 1).value_or(std::int16_t{0});
}

constexpr std::pair<std::string_view, int> transportCommands[] = {
    {"prev", 40044}, {"play", 40045}, {"pause", 40046}, {"stop", 40047}, {"next", 40048}};

}  // namespace

std::string winamp::songInTitle(std::string title) {
    // What the player shows is "7. Artist - Title - Winamp". The positions fit a number of one
    // digit; one of two leaves a blank at the end.
    const int player = placeOf(" - Winamp", title);
    const int dot = placeOf(".", title);
    if (player >= 4) {
        const auto first = std::min(static_cast<std::size_t>(dot + 1), title.size());
        title = title.substr(first, static_cast<std::size_t>(player - 4));
    }
    if (title.ends_with(' ')) title.pop_back();
    return title;
}

std::string winamp::CurrentSong(MediaPlayer& player) {
    return songInTitle(player.WindowTextOf(player.WinampWindow()));
}

int winamp::transportCommand(std::string_view message) {
    message = trimmed(message);
    for (const auto& [ending, number] : transportCommands) {
        if (message.ends_with(ending)) return number;
    }
    return 0;
}
