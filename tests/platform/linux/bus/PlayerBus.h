#pragma once

#include "platform/MediaPlayer.h"
#include "tests/platform/linux/bus/ScriptedPlayer.h"
#include "tests/support/Peer.h"
#include "tests/support/comesTrue.h"
#include "tests/support/linux/SessionBus.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

/// A session bus for players, on which the program has not been started yet.
class PlayerBus : public testing::Test {
protected:
    /// Starts the program's side.
    void start() { player = makeMediaPlayer(); }

    [[nodiscard]] std::string title() const { return player->WindowTextOf(player->WinampWindow()); }
    /// What the program reads as the title becomes `expected`; else says what it is.
    [[nodiscard]] testing::AssertionResult shows(const std::string& expected) const {
        if (comesTrue([&] { return title() == expected; })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the title is \"" << escaped(title()) << '"';
    }
    void command(int number) { player->command(player->WinampWindow(), number); }

    SessionBus bus;
    std::unique_ptr<MediaPlayer> player;
};
