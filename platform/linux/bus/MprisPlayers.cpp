#include "platform/linux/bus/MprisPlayers.h"

#include <algorithm>
#include <utility>

namespace {

std::optional<MprisStatus> statusIn(const QVariantMap& properties) {
    const QVariant value = properties.value("PlaybackStatus");
    if (value.typeId() != QMetaType::QString) return std::nullopt;
    const QString name = value.toString();
    if (name == "Playing") return MprisStatus::Playing;
    if (name == "Paused") return MprisStatus::Paused;
    if (name == "Stopped") return MprisStatus::Stopped;
    return std::nullopt;
}

}  // namespace

void MprisPlayers::tell(const QString& owner, const QVariantMap& properties) {
    Player& player = players[owner];
    if (player.window == 0) player.window = ++lastWindow;
    if (const auto status = statusIn(properties)) {
        const bool starts = *status == MprisStatus::Playing && player.status != *status;
        if (starts) player.started = ++this->starts;
        player.status = *status;
    }
    if (properties.contains("Metadata")) player.metadata = properties.value("Metadata");
}

void MprisPlayers::remove(const QString& owner) { players.erase(owner); }

MprisPlayers::Window MprisPlayers::chosen() const {
    const auto best =
        std::max_element(players.begin(), players.end(), [](const auto& one, const auto& other) {
            if (one.second.started != other.second.started) {
                return one.second.started < other.second.started;
            }
            return one.second.window > other.second.window;
        });
    return best == players.end() ? 0 : best->second.window;
}

std::string MprisPlayers::titleOf(Window window) {
    const auto entry = find(window);
    if (entry == players.end()) return {};
    Player& player = players[entry->first];
    if (player.metadata) player.song = mprisSong(*std::exchange(player.metadata, std::nullopt));
    return mprisTitle(player.song, player.status);
}

std::optional<MprisStatus> MprisPlayers::statusOf(Window window) const {
    const auto entry = find(window);
    if (entry == players.end()) return std::nullopt;
    return entry->second.status;
}

QString MprisPlayers::ownerOf(Window window) const {
    const auto entry = find(window);
    return entry == players.end() ? QString() : entry->first;
}

MprisPlayers::Entry MprisPlayers::find(Window window) const {
    return std::find_if(players.begin(), players.end(),
                        [&](const auto& entry) { return entry.second.window == window; });
}
