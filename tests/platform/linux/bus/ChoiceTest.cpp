#include "tests/platform/linux/bus/PlayerBus.h"

namespace {

class Choice : public PlayerBus {};

TEST_F(Choice, IsAPlayerThatWasThereBefore) {
    const ScriptedPlayer one("one", withSong("Playing", "Ann", "First"));
    start();
    EXPECT_TRUE(shows("1. Ann - First - Winamp"));
    EXPECT_NE(player->WinampWindow(), 0U);
}

TEST_F(Choice, IsAPlayerThatComesLater) {
    start();
    const ScriptedPlayer one("one", withSong("Playing", "Ann", "First"));
    EXPECT_TRUE(shows("1. Ann - First - Winamp"));
}

TEST_F(Choice, IsThePlayerThatStartedLast) {
    ScriptedPlayer one("one", withSong("Stopped", "", "First"));
    ScriptedPlayer two("two", withSong("Stopped", "", "Second"));
    start();
    one.changeStatus("Playing");
    EXPECT_TRUE(shows("1. First - Winamp"));
    two.changeStatus("Playing");
    EXPECT_TRUE(shows("1. Second - Winamp"));
    one.changeStatus("Paused");
    one.changeStatus("Playing");
    EXPECT_TRUE(shows("1. First - Winamp"));
}

TEST_F(Choice, IsAPlayerThatComesPlayingThoughAnotherPlays) {
    const ScriptedPlayer one("one", withSong("Playing", "", "First"));
    start();
    EXPECT_TRUE(shows("1. First - Winamp"));
    const ScriptedPlayer two("two", withSong("Playing", "", "Second"));
    EXPECT_TRUE(shows("1. Second - Winamp"));
}

TEST_F(Choice, StaysWhileThePlayerIsPausedOrStoppedAndOthersGoOn) {
    ScriptedPlayer one("one", withSong("Playing", "", "First"));
    ScriptedPlayer two("two", withSong("Stopped", "", "Second"));
    start();
    EXPECT_TRUE(shows("1. First - Winamp"));
    two.changeStatus("Playing");
    EXPECT_TRUE(shows("1. Second - Winamp"));
    two.changeStatus("Paused");
    one.changeTitle("Next");
    EXPECT_TRUE(shows("1. Second - Winamp [Paused]"));
    two.changeStatus("Stopped");
    one.changeTitle("Last");
    two.changeTitle("Second still");
    EXPECT_TRUE(shows("1. Second still - Winamp"));
}

TEST_F(Choice, IsNotTakenByAPlayerThatSaysOnceMoreThatItPlays) {
    ScriptedPlayer one("one", withSong("Playing", "", "First"));
    start();
    EXPECT_TRUE(shows("1. First - Winamp"));
    ScriptedPlayer two("two", withSong("Playing", "", "Second"));
    EXPECT_TRUE(shows("1. Second - Winamp"));
    one.change(withSong("Playing", "", "Next"));
    two.changeTitle("Second still");
    EXPECT_TRUE(shows("1. Second still - Winamp"));
}

TEST_F(Choice, FallsBackThroughThoseThatStartedBefore) {
    ScriptedPlayer one("one", withSong("Stopped", "", "First"));
    auto two = std::make_unique<ScriptedPlayer>("two", withSong("Stopped", "", "Second"));
    auto three = std::make_unique<ScriptedPlayer>("three", withSong("Stopped", "", "Third"));
    start();
    two->changeStatus("Playing");
    EXPECT_TRUE(shows("1. Second - Winamp"));
    one.changeStatus("Playing");
    EXPECT_TRUE(shows("1. First - Winamp"));
    one.changeStatus("Stopped");
    three->changeStatus("Playing");
    EXPECT_TRUE(shows("1. Third - Winamp"));
    three.reset();
    EXPECT_TRUE(shows("1. First - Winamp"));
    two.reset();
    one.changeTitle("Alone");
    EXPECT_TRUE(shows("1. Alone - Winamp"));
}

TEST_F(Choice, IsTheOneThatCameFirstAmongThoseThatHaveNotPlayed) {
    start();
    const ScriptedPlayer one("one", withSong("Paused", "", "First"));
    EXPECT_TRUE(shows("1. First - Winamp [Paused]"));
    ScriptedPlayer two("two", withSong("Paused", "", "Second"));
    auto three = std::make_unique<ScriptedPlayer>("three", withSong("Playing", "", "Third"));
    EXPECT_TRUE(shows("1. Third - Winamp"));
    three.reset();
    EXPECT_TRUE(shows("1. First - Winamp [Paused]"));
}

TEST_F(Choice, IsNobodyWhenTheLastPlayerHasLeft) {
    auto one = std::make_unique<ScriptedPlayer>("one", withSong("Playing", "", "First"));
    start();
    EXPECT_TRUE(shows("1. First - Winamp"));
    const auto window = player->WinampWindow();
    one.reset();
    EXPECT_TRUE(comesTrue([&] { return player->WinampWindow() == 0; }));
    EXPECT_EQ(player->WindowTextOf(0), "");
    EXPECT_EQ(player->WindowTextOf(window), "");
}

TEST_F(Choice, GivesAnotherWindowToAPlayerThatComesAgain) {
    auto one = std::make_unique<ScriptedPlayer>("one", withSong("Playing", "", "First"));
    start();
    EXPECT_TRUE(shows("1. First - Winamp"));
    const auto window = player->WinampWindow();
    one = nullptr;
    one = std::make_unique<ScriptedPlayer>("one", withSong("Playing", "", "Again"));
    EXPECT_TRUE(shows("1. Again - Winamp"));
    EXPECT_NE(player->WinampWindow(), window);
}

TEST_F(Choice, StaysWhileThePlayerHasOneOfItsNamesLeft) {
    ScriptedPlayer one("one", withSong("Playing", "", "First"));
    one.takeName("one.instance7");
    start();
    EXPECT_TRUE(shows("1. First - Winamp"));
    const auto window = player->WinampWindow();
    one.leaveName("one");
    one.changeTitle("Next");
    EXPECT_TRUE(shows("1. Next - Winamp"));
    EXPECT_EQ(player->WinampWindow(), window);
    one.leaveName("one.instance7");
    EXPECT_TRUE(shows(""));
}

TEST_F(Choice, FollowsANameThatGoesToAnotherPlayer) {
    ScriptedPlayer one("one", withSong("Playing", "", "First"));
    start();
    EXPECT_TRUE(shows("1. First - Winamp"));
    ScriptedPlayer two("two", withSong("Playing", "", "Second"));
    EXPECT_TRUE(shows("1. Second - Winamp"));
    one.leaveName("one");
    two.takeName("one");
    two.leaveName("two");
    two.changeTitle("Renamed");
    EXPECT_TRUE(shows("1. Renamed - Winamp"));
}

class PassedOver : public PlayerBus, public testing::WithParamInterface<const char*> {};

TEST_P(PassedOver, IsNoPlayerBeforeOrAfterTheStart) {
    ScriptedPlayer browser(GetParam(), withSong("Playing", "", "Film"));
    start();
    ScriptedPlayer one("one", withSong("Paused", "", "First"));
    EXPECT_TRUE(shows("1. First - Winamp [Paused]"));
    browser.changeStatus("Paused");
    browser.changeStatus("Playing");
    const ScriptedPlayer later(QString(GetParam()) + ".later", withSong("Playing", "", "Film"));
    one.changeTitle("Next");
    EXPECT_TRUE(shows("1. Next - Winamp [Paused]"));
}

INSTANTIATE_TEST_SUITE_P(Names, PassedOver,
                         testing::Values("playerctld", "kdeconnect.mpris_000001",
                                         "firefox.instance_1_23", "chromium.instance4242",
                                         "google-chrome.instance1", "brave.instance2", "opera",
                                         "vivaldi.instance3", "edge.instance4", "Epiphany",
                                         "plasma-browser-integration"));

}  // namespace
