#pragma once

#include "platform/MediaPlayer.h"
#include "tests/platform/Variable.h"
#include "tests/player/ScriptedPlayer.h"
#include "tests/player/SessionBus.h"
#include "tests/support/Peer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <memory>
#include <string>

/// Waits for a condition while events are served.
template <typename Condition>
[[nodiscard]] bool comesTrue(Condition condition) {
    return becomesTrue([&] {
        QCoreApplication::processEvents();
        return condition();
    });
}

/// A desktop with a session bus, on which the program has not yet been started.
class Desk : public testing::Test {
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
    Variable address{"DBUS_SESSION_BUS_ADDRESS", bus.address()};
    std::unique_ptr<MediaPlayer> player;
};
