#include "platform/shared/PlayerList.h"

#include "base/codePage.h"

#include <algorithm>
#include <string_view>
#include <utility>

using namespace std::string_view_literals;

namespace {

constexpr auto titleStart = "1. "sv;
constexpr auto titleEnd = " - Winamp"sv;
constexpr auto paused = " [Paused]"sv;

/// The song is cut and not the title's end, which shows where the song ends; and at one place, so
/// that it stays the same song when it is paused.
constexpr std::size_t longestTitle = 2048;
constexpr std::size_t longestSong =
    longestTitle - titleStart.size() - titleEnd.size() - paused.size();

/// The text without control characters, and without what is longer than any song.
std::string cleaned(std::string_view utf8) {
    std::string kept;
    for (std::size_t at = 0; at < utf8.size() && kept.size() <= longestSong;) {
        const std::size_t control = codePage::controlAtFront(utf8.substr(at));
        if (control == 0) kept += utf8[at];
        at += std::max<std::size_t>(control, 1);
    }
    return kept;
}

std::string joined(const std::vector<std::string>& artists) {
    std::string all;
    for (const std::string& artist : artists) {
        const std::string name = cleaned(artist);
        if (name.empty()) continue;
        if (!all.empty()) all += ", "sv;
        all += name;
        if (all.size() > longestSong) break;
    }
    return all;
}

std::string textOf(const PlayerSong& song) {
    const std::string title = cleaned(song.title);
    if (title.empty()) return {};
    std::string text = joined(song.artists);
    if (!text.empty()) text += " - "sv;
    text += title;
    return std::string(codePage::cutUtf8(text, longestSong));
}

}  // namespace

void PlayerList::update(const std::string& name, Change change) {
    Player& player = players[name];
    if (player.window == 0) player.window = ++lastWindow;
    if (change.status) {
        const bool isStart =
            *change.status == PlayerStatus::Playing && player.status != PlayerStatus::Playing;
        if (isStart) player.lastStart = ++starts;
        player.status = *change.status;
    }
    if (change.song) player.unreadSong = std::move(change.song);
}

void PlayerList::remove(const std::string& name) { players.erase(name); }

PlayerList::Window PlayerList::chosen() const {
    const auto best =
        std::max_element(players.begin(), players.end(), [](const auto& one, const auto& other) {
            if (one.second.lastStart != other.second.lastStart) {
                return one.second.lastStart < other.second.lastStart;
            }
            return one.second.window > other.second.window;
        });
    return best == players.end() ? 0 : best->second.window;
}

std::string PlayerList::titleOf(Window window) {
    const auto entry = find(window);
    if (entry == players.end()) return {};
    Player& player = players[entry->first];
    if (player.unreadSong) player.song = textOf(std::exchange(player.unreadSong, nullptr)());
    if (player.song.empty()) return {};
    std::string title;
    title.append(titleStart).append(player.song).append(titleEnd);
    if (player.status == PlayerStatus::Paused) title += paused;
    return title;
}

std::string PlayerList::nameOf(Window window) const {
    const auto entry = find(window);
    return entry == players.end() ? std::string() : entry->first;
}

std::optional<PlayerCommand> PlayerList::commandOf(Window window, int number) const {
    const auto entry = find(window);
    if (entry == players.end()) return std::nullopt;
    switch (number) {
        case 40044: return PlayerCommand::Previous;
        case 40045: return PlayerCommand::Play;
        case 40046:
            if (entry->second.status == PlayerStatus::Stopped) return std::nullopt;
            return PlayerCommand::PlayPause;
        case 40047: return PlayerCommand::Stop;
        case 40048: return PlayerCommand::Next;
        default: return std::nullopt;
    }
}

bool PlayerList::hasChanged() {
    const Window window = chosen();
    std::string title = titleOf(window);
    if (window == knownWindow && title == knownTitle) return false;
    knownWindow = window;
    knownTitle = std::move(title);
    return true;
}

PlayerList::Entry PlayerList::find(Window window) const {
    return std::find_if(players.begin(), players.end(),
                        [&](const auto& entry) { return entry.second.window == window; });
}
