#pragma once

#include "platform/MediaPlayer.h"
#include "platform/linux/bus/MprisBus.h"
#include "platform/linux/bus/MprisPlayers.h"

#include <QString>

#include <string>

/// The player on the desktop by MPRIS 2, the way in which players show and obey on the session bus.
/// `MprisPlayers` says which one is chosen.
///
/// A player's window is the player itself, by a number of its own; its title is made of what it
/// tells of its song, as UTF-8. All answers come out of a memory that the bus keeps up to date:
/// they never wait for a player, and nothing is done while no player changes. Without a session bus
/// there is no player. Needs a `QCoreApplication`, on whose events `changed` is called.
class MprisPlayer final : public MediaPlayer {
public:
    MprisPlayer();

    [[nodiscard]] Window WinampWindow() override { return players.chosen(); }
    [[nodiscard]] std::string WindowTextOf(Window window) override {
        return players.titleOf(window);
    }
    void command(Window window, int number) override;

private:
    void tellLater();
    void tellIfChanged();

    MprisPlayers players;
    Window toldWindow = 0;
    std::string toldTitle;
    bool isToTell = false;
    MprisBus bus;
};
