#include "tests/platform/linux/bus/PlayerBus.h"

#include <ostream>
#include <vector>

namespace {

struct Reported {
    const char* name;
    QString status;
    QVariantMap metadata;
    std::string title;
};

void PrintTo(const Reported& reported, std::ostream* stream) { *stream << reported.name; }

class WindowTitle : public PlayerBus, public testing::WithParamInterface<Reported> {};

TEST_P(WindowTitle, IsMadeOfWhatThePlayerReports) {
    // Another song first, so that an empty title is seen to come.
    ScriptedPlayer one("one", withSong("Playing", "", "Before"));
    start();
    ASSERT_TRUE(shows("1. Before - Winamp"));
    one.change({{"PlaybackStatus", GetParam().status}, {"Metadata", GetParam().metadata}});
    EXPECT_TRUE(shows(GetParam().title));
}

QVariantMap song(const QStringList& artists, const QString& title) {
    return {{"xesam:artist", artists}, {"xesam:title", title}};
}

const Reported reportedSongs[] = {
    {"Playing", "Playing", song({"Ann"}, "Song"), "1. Ann - Song - Winamp"},
    {"Paused", "Paused", song({"Ann"}, "Song"), "1. Ann - Song - Winamp [Paused]"},
    {"StoppedWithATitle", "Stopped", song({"Ann"}, "Song"), "1. Ann - Song - Winamp"},
    {"StoppedWithoutATitle", "Stopped", {}, ""},
    {"PlayingWithoutATitle", "Playing", {{"xesam:artist", QStringList{"Ann"}}}, ""},
    {"EmptyTitle", "Playing", song({"Ann"}, ""), ""},
    {"NoArtist", "Playing", {{"xesam:title", "Song"}}, "1. Song - Winamp"},
    {"NoArtistPaused", "Paused", {{"xesam:title", "Song"}}, "1. Song - Winamp [Paused]"},
    {"EmptyListOfArtists", "Playing", song({}, "Song"), "1. Song - Winamp"},
    {"EmptyArtist", "Playing", song({""}, "Song"), "1. Song - Winamp"},
    {"TwoArtists", "Playing", song({"Ann", "Bob"}, "Song"), "1. Ann, Bob - Song - Winamp"},
    {"AnEmptyArtistBetween", "Playing", song({"Ann", "", "Bob"}, "Song"),
     "1. Ann, Bob - Song - Winamp"},
    {"LineEnds", "Playing", song({"A\r\nnn"}, "So\nn\rg"), "1. Ann - Song - Winamp"},
    {"ControlCharacters", "Playing", song({"A\x01nn"}, QString("\tSo\x7Fn\u0085g\x1B")),
     "1. Ann - Song - Winamp"},
    {"BytesOfUtf8", "Playing", song({QString("Bj\u00F6rk")}, QString("\u65E5\u672C \U0001F3B5")),
     "1. Bj\xC3\xB6rk - \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x8E\xB5 - Winamp"},
    {"ATitleWithAWrongType", "Playing", {{"xesam:title", 7}}, ""},
    {"AnArtistAsAText",
     "Playing",
     {{"xesam:title", "Song"}, {"xesam:artist", "Ann"}},
     "1. Ann - Song - Winamp"},
    {"AnArtistWithAWrongType",
     "Playing",
     {{"xesam:title", "Song"}, {"xesam:artist", 7}},
     "1. Song - Winamp"},
    {"ATitleAsAList", "Playing", {{"xesam:title", QStringList{"Song"}}}, ""},
};

INSTANTIATE_TEST_SUITE_P(Table, WindowTitle, testing::ValuesIn(reportedSongs),
                         [](const auto& info) { return info.param.name; });

class LongTitle : public PlayerBus {
protected:
    /// The song part of a title of all the bytes that there may be, paused.
    static constexpr std::size_t room = 2048 - 3 - 9 - 9;
};

TEST_F(LongTitle, IsCutBeforeItsEnd) {
    const ScriptedPlayer one("one", withSong("Paused", "", QString(1'000'000, 'x')));
    start();
    EXPECT_TRUE(shows("1. " + std::string(room, 'x') + " - Winamp [Paused]"));
    EXPECT_EQ(title().size(), 2048U);
}

TEST_F(LongTitle, IsNotCutWhenItJustFits) {
    const ScriptedPlayer one("one", withSong("Playing", "", QString(room, 'x')));
    start();
    EXPECT_TRUE(shows("1. " + std::string(room, 'x') + " - Winamp"));
}

TEST_F(LongTitle, IsCutBetweenCharacters) {
    for (const char* before : {"", "x", "xx", "xxx"}) {
        const QString note("\U0001F3B5");
        const ScriptedPlayer one("one", withSong("Playing", "", before + note.repeated(5000)));
        start();
        std::string expected = before;
        while (expected.size() + 4 <= room)
            expected += "\xF0\x9F\x8E\xB5";
        EXPECT_TRUE(shows("1. " + expected + " - Winamp"));
    }
}

TEST_F(LongTitle, IsCutWithinTenThousandArtists) {
    QStringList artists;
    for (int i = 0; i < 10'000; ++i)
        artists += "Ann";
    const ScriptedPlayer one(
        "one", {{"PlaybackStatus", "Playing"},
                {"Metadata", QVariantMap{{"xesam:artist", artists}, {"xesam:title", "Song"}}}});
    start();
    std::string expected = "Ann";
    while (expected.size() < room)
        expected += ", Ann";
    EXPECT_TRUE(shows("1. " + expected.substr(0, room) + " - Winamp"));
}

using Changes = PlayerBus;

TEST_F(Changes, AreReportedEachWithItsTitle) {
    start();
    std::vector<std::string> titles;
    player->changed = [&] { titles.push_back(title()); };
    auto one = std::make_unique<ScriptedPlayer>("one", withSong("Playing", "", "First"));
    ASSERT_TRUE(comesTrue([&] { return titles.size() == 1; }));
    one->changeStatus("Paused");
    ASSERT_TRUE(comesTrue([&] { return titles.size() == 2; }));
    one->change({{"Volume", 0.5}});
    one->changeTitle("Second");
    ASSERT_TRUE(comesTrue([&] { return titles.size() == 3; }));
    one.reset();
    ASSERT_TRUE(comesTrue([&] { return titles.size() == 4; }));
    EXPECT_EQ(titles, (std::vector<std::string>{"1. First - Winamp", "1. First - Winamp [Paused]",
                                                "1. Second - Winamp [Paused]", ""}));
}

TEST_F(Changes, AreQueriedWhenThePlayerDoesNotReportThem) {
    ScriptedPlayer one("one", withSong("Playing", "", "First"));
    start();
    ASSERT_TRUE(shows("1. First - Winamp"));
    one.changeSilently(withSong("Paused", "Ann", "Second"));
    EXPECT_TRUE(shows("1. Ann - Second - Winamp [Paused]"));
}

}  // namespace
