#include "tests/platform/shared/PlayerStandIn.h"

#include "tests/platform/windows/OtherProgram.h"

#include <optional>
#include <sstream>

/// A window like that of Winamp.
struct PlayerStandIn::System {
    OtherProgram program;
    HWND window = nullptr;
};

PlayerStandIn::PlayerStandIn() : system(std::make_unique<System>()) {}

PlayerStandIn::~PlayerStandIn() = default;

void PlayerStandIn::show(Status status, const std::string& artist, const std::string& title) {
    const std::string shown = "1. " + artist + " - " + title + " - Winamp" +
                              (status == Status::Paused ? " [Paused]" : "");
    if (system->window == nullptr) {
        system->window = system->program.open("Winamp v1.x", shown);
    } else {
        system->program.ask("title " + std::to_string(fromSystem(system->window)) + '|' + shown);
    }
}

void PlayerStandIn::end() {
    system->program.ask("close " + std::to_string(fromSystem(system->window)));
    system->window = nullptr;
}

std::vector<int> PlayerStandIn::commands() const {
    std::istringstream numbers(system->program.ask("commands"));
    return {std::istream_iterator<int>(numbers), {}};
}
