#include "tests/platform/shared/PlayerStandIn.h"

#include "tests/platform/linux/bus/ScriptedPlayer.h"
#include "tests/support/linux/SessionBus.h"

#include <map>
#include <optional>

/// A player on a session bus of its own.
struct PlayerStandIn::System {
    SessionBus bus;
    std::optional<ScriptedPlayer> player;
};

PlayerStandIn::PlayerStandIn() : system(std::make_unique<System>()) {}

PlayerStandIn::~PlayerStandIn() = default;

void PlayerStandIn::show(Status status, const std::string& artist, const std::string& title) {
    static const std::map<Status, const char*> words{{Status::Playing, "Playing"},
                                                     {Status::Paused, "Paused"}};
    const QVariantMap properties =
        withSong(words.at(status), QString::fromStdString(artist), QString::fromStdString(title));
    if (system->player) {
        system->player->change(properties);
    } else {
        system->player.emplace("standIn", properties);
    }
}

void PlayerStandIn::end() { system->player.reset(); }

std::vector<int> PlayerStandIn::commands() const {
    static const std::map<std::string, int> numbers{{"Previous", 40044},
                                                    {"Play", 40045},
                                                    {"PlayPause", 40046},
                                                    {"Stop", 40047},
                                                    {"Next", 40048}};
    std::vector<int> commands;
    if (!system->player) return commands;
    for (const std::string& method : system->player->commands())
        commands.push_back(numbers.at(method));
    return commands;
}
