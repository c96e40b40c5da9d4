#include "desktop/winamp.h"

#include "base/Failure.h"
#include "base/text.h"
#include "platform/MediaPlayer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace {

/// The place of `wanted` in `text`, from 1; 0 when it is not there. Places are 16-bit, and it fails
/// behind the last of them.
std::int16_t placeOf(std::string_view wanted, std::string_view text) {
    const std::size_t found = text.find(wanted);
    return found == std::string_view::npos ? std::int16_t{0} : checked<std::int16_t>(found + 1);
}

/// `count` characters from `first` on, from 1. Fails for a negative count.
std::string cut(std::string_view text, int first, int count) {
    if (count < 0) throw Failure("a negative count");
    return std::string(text.substr(std::min(static_cast<std::size_t>(first) - 1, text.size()),
                                   static_cast<std::size_t>(count)));
}

constexpr std::pair<std::string_view, int> transportCommands[] = {
    {"prev", 40044}, {"play", 40045}, {"pause", 40046}, {"stop", 40047}, {"next", 40048}};

}  // namespace

std::string winamp::songInTitle(std::string title) {
    // What the player shows is "7. Artist - Title - Winamp". The positions fit a number of one
    // digit; one of two leaves a blank at the end.
    std::int16_t player = 0;
    std::int16_t dot = 0;
    attempt([&] { player = placeOf(" - Winamp", title); });
    attempt([&] { dot = placeOf(".", title); });
    attempt([&] { title = cut(title, dot + 2, player - 4); });
    if (title.ends_with(' ')) title.pop_back();
    return title;
}

std::string winamp::CurrentSong(MediaPlayer& player) {
    return songInTitle(player.WindowTextOf(player.WinampWindow()));
}

int winamp::transportCommand(std::string_view message) {
    const std::size_t end = message.find_last_not_of(' ');
    message = message.substr(0, end == std::string_view::npos ? 0 : end + 1);
    for (const auto& [ending, number] : transportCommands) {
        if (message.ends_with(ending)) return number;
    }
    return 0;
}
