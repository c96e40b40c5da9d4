#include "platform/shared/PlayerList.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

using enum PlayerStatus;

PlayerList::Change playing(const std::string& title) {
    return {Playing, [=] { return PlayerSong{title, {}}; }};
}

std::string chosenTitle(PlayerList& players) { return players.titleOf(players.chosen()); }

struct TitleRow {
    const char* name;
    PlayerStatus status;
    PlayerSong song;
    std::string title;
};

void PrintTo(const TitleRow& row, std::ostream* stream) { *stream << row.name; }

class PlayerTitle : public testing::TestWithParam<TitleRow> {};

TEST_P(PlayerTitle, IsMadeOfTheSong) {
    PlayerList players;
    players.update("one", {GetParam().status, [] { return GetParam().song; }});
    EXPECT_EQ(chosenTitle(players), GetParam().title);
}

// Of 2048 bytes, the rest of a title with " [Paused]".
constexpr std::size_t longestSong = 2048 - 3 - 9 - 9;
const std::string longest(longestSong, 'x');
const std::string note = "\xF0\x9F\x8E\xB5";

const TitleRow rows[] = {
    {"Playing", Playing, {"Song", {"Ann"}}, "1. Ann - Song - Winamp"},
    {"Paused", Paused, {"Song", {"Ann"}}, "1. Ann - Song - Winamp [Paused]"},
    {"Stopped", Stopped, {"Song", {"Ann"}}, "1. Ann - Song - Winamp"},
    {"NoTitle", Playing, {"", {"Ann"}}, ""},
    {"NoArtist", Playing, {"Song", {}}, "1. Song - Winamp"},
    {"SeveralArtistsAndAnEmptyOne", Playing, {"S", {"A", "", "B"}}, "1. A, B - S - Winamp"},
    {"ControlCharacters",
     Playing,
     {"\tS\x7F\xC2\x80o\xC2\x9Fn\r\ng\x1B", {"\x01"}},
     "1. Song - Winamp"},
    {"NothingButControlCharacters", Playing, {"\r\n", {"Ann"}}, ""},
    {"NeighboursOfControlCharacters",
     Playing,
     {" ~\xC2\xA0\xC3\x80\xC2", {}},
     "1.  ~\xC2\xA0\xC3\x80\xC2 - Winamp"},
    {"TheLongest", Playing, {longest, {}}, "1. " + longest + " - Winamp"},
    {"LongerThanTheLongest", Paused, {longest + 'x', {}}, "1. " + longest + " - Winamp [Paused]"},
    {"CutBetweenCharacters",
     Playing,
     {longest.substr(3) + note, {}},
     "1. " + longest.substr(3) + " - Winamp"},
    {"AnArtistOfAMillionBytes",
     Playing,
     {"Song", {std::string(1'000'000, 'x')}},
     "1. " + longest + " - Winamp"},
};

INSTANTIATE_TEST_SUITE_P(Table, PlayerTitle, testing::ValuesIn(rows),
                         [](const auto& info) { return info.param.name; });

TEST(PlayerList, ReadsASongOnlyWhenATitleIsAskedForAndOnce) {
    PlayerList players;
    int reads = 0;
    players.update("one", {Playing, [] { return PlayerSong{"Before", {}}; }});
    players.update("one", {std::nullopt, [&] {
                               ++reads;
                               return PlayerSong{"Song", {}};
                           }});
    EXPECT_EQ(reads, 0);
    EXPECT_EQ(chosenTitle(players), "1. Song - Winamp");
    EXPECT_EQ(chosenTitle(players), "1. Song - Winamp");
    EXPECT_EQ(reads, 1);
}

TEST(PlayerList, ChoosesThePlayerThatStartedLastUntilItLeaves) {
    PlayerList players;
    EXPECT_EQ(players.chosen(), 0U);
    players.update("c", {Stopped, {}});
    players.update("b", {Stopped, {}});
    EXPECT_EQ(players.nameOf(players.chosen()), "c");
    players.update("b", {Playing, {}});
    players.update("a", {Playing, {}});
    EXPECT_EQ(players.nameOf(players.chosen()), "a");
    // Neither a pause nor a player that plays on is a start.
    players.update("a", {Paused, {}});
    players.update("b", {Playing, {}});
    EXPECT_EQ(players.nameOf(players.chosen()), "a");
    players.remove("a");
    EXPECT_EQ(players.nameOf(players.chosen()), "b");
    players.remove("b");
    EXPECT_EQ(players.nameOf(players.chosen()), "c");
}

TEST(PlayerList, GivesNoWindowTwice) {
    PlayerList players;
    players.update("one", playing("First"));
    const auto window = players.chosen();
    players.remove("one");
    EXPECT_EQ(players.chosen(), 0U);
    players.update("one", playing("Second"));
    EXPECT_NE(players.chosen(), window);
    EXPECT_EQ(players.titleOf(window), "");
    EXPECT_EQ(players.nameOf(window), "");
    EXPECT_EQ(players.commandOf(window, 40045), std::nullopt);
}

TEST(PlayerList, KnowsTheCommandsByTheirNumbers) {
    using enum PlayerCommand;
    PlayerList players;
    players.update("one", {PlayerStatus::Playing, {}});
    const std::vector<std::optional<PlayerCommand>> expected{
        std::nullopt, Previous, Play, PlayPause, PlayerCommand::Stop, Next, std::nullopt};
    for (int index = 0; index < 7; ++index)
        EXPECT_EQ(players.commandOf(players.chosen(), 40043 + index), expected[index]) << index;
    players.update("one", {PlayerStatus::Stopped, {}});
    EXPECT_EQ(players.commandOf(players.chosen(), 40046), std::nullopt);
    EXPECT_EQ(players.commandOf(0, 40045), std::nullopt);
}

TEST(PlayerList, HasChangedWhereThePlayerOrItsTitleHas) {
    PlayerList players;
    EXPECT_FALSE(players.hasChanged());
    players.update("one", playing("Song"));
    EXPECT_TRUE(players.hasChanged());
    EXPECT_FALSE(players.hasChanged());
    players.update("one", playing("Song"));
    EXPECT_FALSE(players.hasChanged());
    players.update("one", {Paused, {}});
    EXPECT_TRUE(players.hasChanged());
    players.update("two", playing("Song"));
    players.update("two", {Paused, {}});
    EXPECT_TRUE(players.hasChanged());
    players.remove("two");
    players.remove("one");
    EXPECT_TRUE(players.hasChanged());
}

}  // namespace
