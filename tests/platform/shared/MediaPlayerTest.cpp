#include "platform/MediaPlayer.h"

#include "tests/platform/shared/PlayerStandIn.h"
#include "tests/support/Peer.h"
#include "tests/support/comesTrue.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using Status = PlayerStandIn::Status;

class SystemPlayer : public testing::Test {
protected:
    SystemPlayer() {
        player->changed = [this] { ++changes; };
    }

    [[nodiscard]] std::string title() const { return player->WindowTextOf(player->WinampWindow()); }
    /// The title becomes `expected`; else says what it is.
    [[nodiscard]] testing::AssertionResult becomes(const std::string& expected) const {
        if (comesTrue([&] { return title() == expected; })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the title is \"" << escaped(title()) << '"';
    }

    PlayerStandIn standIn;
    std::unique_ptr<MediaPlayer> player = makeMediaPlayer();
    int changes = 0;
};

TEST_F(SystemPlayer, IsNoneWhereNoneRuns) {
    EXPECT_EQ(player->WinampWindow(), 0U);
    EXPECT_EQ(player->WindowTextOf(0), "");
    player->command(0, 40045);
}

TEST_F(SystemPlayer, HasItsSongInItsTitle) {
    standIn.show(Status::Playing, "Ann", "Song");
    EXPECT_TRUE(becomes("1. Ann - Song - Winamp"));
    EXPECT_NE(player->WinampWindow(), 0U);
    EXPECT_TRUE(comesTrue([&] { return changes > 0; }));
}

TEST_F(SystemPlayer, HasASongWhoseLettersNoCodePageHasTogetherAsUtf8) {
    standIn.show(Status::Playing, "Bj\xC3\xB6rk",
                 "\xD0\x96\xD1\x83\xD0\xBA \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x8E\xB5");
    EXPECT_TRUE(
        becomes("1. Bj\xC3\xB6rk - \xD0\x96\xD1\x83\xD0\xBA \xE6\x97\xA5\xE6\x9C\xAC "
                "\xF0\x9F\x8E\xB5 - Winamp"));
}

TEST_F(SystemPlayer, ReportsEachChangeOfItsTitle) {
    for (const std::string& song : {std::string("One"), std::string("Two"), std::string("Three")}) {
        const int before = changes;
        standIn.show(Status::Playing, "Ann", song);
        EXPECT_TRUE(becomes("1. Ann - " + song + " - Winamp"));
        EXPECT_TRUE(comesTrue([&] { return changes > before; }));
    }
}

TEST_F(SystemPlayer, SaysInItsTitleThatItPauses) {
    standIn.show(Status::Paused, "Ann", "Song");
    EXPECT_TRUE(becomes("1. Ann - Song - Winamp [Paused]"));
}

TEST_F(SystemPlayer, IsGoneWhenItEnds) {
    standIn.show(Status::Playing, "Ann", "Song");
    ASSERT_TRUE(becomes("1. Ann - Song - Winamp"));
    standIn.end();
    EXPECT_TRUE(comesTrue([&] { return player->WinampWindow() == 0; }));
}

TEST_F(SystemPlayer, IsGivenCommandsByTheirNumbers) {
    standIn.show(Status::Playing, "Ann", "Song");
    ASSERT_TRUE(becomes("1. Ann - Song - Winamp"));
    const std::vector<int> numbers{40044, 40045, 40046, 40047, 40048};
    for (const int number : numbers)
        player->command(player->WinampWindow(), number);
    EXPECT_TRUE(comesTrue([&] { return standIn.commands() == numbers; }))
        << testing::PrintToString(standIn.commands());
}

}  // namespace
