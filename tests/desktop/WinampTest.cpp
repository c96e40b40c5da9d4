#include "desktop/winamp.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/Peer.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using testing::Values;

struct TitleCase {
    const char* title;
    const char* song;
};

void PrintTo(const TitleCase& title, std::ostream* out) { *out << escaped(title.title); }

class SongInTitle : public testing::TestWithParam<TitleCase> {};

TEST_P(SongInTitle, StandsBetweenTheFirstDotAndTheNameOfThePlayer) {
    EXPECT_EQ(winamp::songInTitle(GetParam().title), GetParam().song);
}

INSTANTIATE_TEST_SUITE_P(Titles, SongInTitle,
                         Values(TitleCase{"7. Artist - Title - Winamp", "Artist - Title"},
                                TitleCase{"12. Artist - Title - Winamp", "Artist - Title"},
                                TitleCase{"123. Artist - Title - Winamp", "Artist - Title -"},
                                TitleCase{"12. Artist - Title - Winamp [Paused]", "Artist - Title"},
                                TitleCase{"3. Dr. Who - Theme - Winamp", "Dr. Who - Theme"},
                                TitleCase{"Artist - Title - Winamp", "rtist - Tit"},
                                TitleCase{"Winamp 2.91", "Winamp 2.91"},
                                TitleCase{"abc - Winamp", ""}, TitleCase{"", ""}));

INSTANTIATE_TEST_SUITE_P(
    Odd, SongInTitle,
    Values(TitleCase{"7. artist - title - winamp", "7. artist - title - winamp"},
           TitleCase{"ab - Winamp", "ab - Winamp"}, TitleCase{" - Winamp", " - Winamp"},
           TitleCase{"7. A - Winamp - B - Winamp", "A"},
           TitleCase{"no player at all ", "no player at all"},
           TitleCase{"two blanks  ", "two blanks "}, TitleCase{" ", ""},
           TitleCase{"Artist - Title - Winamp.", ""}, TitleCase{"7.  Two - Winamp", " Two"}));

TEST(SongInTitle, IsTheWholeTitleWhereThePlayersNameStandsTooFarBehind) {
    const std::string last = "1. " + std::string(32767 - 4, 's');
    EXPECT_EQ(winamp::songInTitle(last + " - Winamp"), std::string(32767 - 4, 's'));
    EXPECT_EQ(winamp::songInTitle(last + "s - Winamp"), last + "s - Winamp");
}

TEST(SongInTitle, BeginsWithTheSecondCharacterWhereTheDotStandsTooFarBehind) {
    const std::string title = "abcdef - Winamp" + std::string(32767 - 15, ' ');
    EXPECT_EQ(winamp::songInTitle(title + ".x"), "bcd");
}

TEST(CurrentSong, IsTheOneOfThePlayersTitle) {
    FakeFacilities::Player player;
    player.title = "7. Artist - Title - Winamp";
    EXPECT_EQ(winamp::CurrentSong(player), "Artist - Title");
}

TEST(CurrentSong, IsEmptyWithoutAPlayer) {
    FakeFacilities::Player player;
    EXPECT_EQ(winamp::CurrentSong(player), "");
}

struct Ending {
    const char* message;
    int command;
};

void PrintTo(const Ending& ending, std::ostream* out) { *out << escaped(ending.message); }

class TransportEnding : public testing::TestWithParam<Ending> {};

TEST_P(TransportEnding, IsThatOfTheWholeMessageWithoutItsBlanks) {
    EXPECT_EQ(winamp::transportCommand(GetParam().message), GetParam().command);
}

INSTANTIATE_TEST_SUITE_P(Messages, TransportEnding,
                         Values(Ending{"!winamp prev", 40044}, Ending{"!winamp play", 40045},
                                Ending{"!winamp pause", 40046}, Ending{"!winamp stop", 40047},
                                Ending{"!winamp next", 40048}, Ending{"  !winamp next  ", 40048},
                                Ending{"!winamp non-stop", 40047}, Ending{"!winampplay", 40045},
                                Ending{"stop", 40047}, Ending{"!winamp Stop", 0},
                                Ending{"!winamp stop!", 0}, Ending{"!winamp stop it", 0},
                                Ending{"!winamp paus", 0}, Ending{"!winamp aus e", 0},
                                Ending{"!winamp", 0}, Ending{"!winamp stop\t", 0},
                                Ending{"ause", 0}, Ending{"op", 0}, Ending{"", 0},
                                Ending{"    ", 0}));

}  // namespace
