#include "tests/platform/linux/bus/PlayerBus.h"

#include <vector>

namespace {

using Names = std::vector<std::string>;

class Commands : public PlayerBus {
protected:
    void show(const QString& status) {
        one.change(withSong(status, "", status));
        start();
        ASSERT_TRUE(comesTrue([&] { return player->WinampWindow() != 0; }));
    }
    [[nodiscard]] testing::AssertionResult arrive(const Names& expected) const {
        (void)comesTrue([&] { return one.commands().size() >= expected.size(); });
        if (one.commands() == expected) return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(one.commands());
    }

    ScriptedPlayer one{"one"};
};

TEST_F(Commands, ReachThePlayerByTheirNumbers) {
    show("Playing");
    for (const int number : {40044, 40045, 40046, 40047, 40048})
        command(number);
    EXPECT_TRUE(arrive({"Previous", "Play", "PlayPause", "Stop", "Next"}));
}

TEST_F(Commands, EndAPauseByPausingOnceMore) {
    show("Paused");
    command(40046);
    EXPECT_TRUE(arrive({"PlayPause"}));
}

TEST_F(Commands, DoNotPauseAPlayerThatIsStopped) {
    show("Stopped");
    command(40046);
    command(40048);
    EXPECT_TRUE(arrive({"Next"}));
}

TEST_F(Commands, OfOtherNumbersDoNothing) {
    show("Playing");
    for (const int number : {0, -1, 1, 14, 273, 40043, 40049, 2147483647})
        command(number);
    command(40047);
    EXPECT_TRUE(arrive({"Stop"}));
}

TEST_F(Commands, ForNoWindowOrAnUnknownOneDoNothing) {
    show("Playing");
    player->command(0, 40044);
    player->command(player->WinampWindow() + 1, 40045);
    command(40047);
    EXPECT_TRUE(arrive({"Stop"}));
}

TEST_F(Commands, ReachTheChosenPlayerAlone) {
    show("Playing");
    ScriptedPlayer two("two", withSong("Playing", "", "Second"));
    ASSERT_TRUE(shows("1. Second - Winamp"));
    command(40047);
    EXPECT_TRUE(comesTrue([&] { return two.commands() == Names{"Stop"}; }));
    one.changeStatus("Paused");
    one.changeStatus("Playing");
    ASSERT_TRUE(shows("1. Playing - Winamp"));
    command(40048);
    EXPECT_TRUE(arrive({"Next"}));
    EXPECT_EQ(two.commands(), Names{"Stop"});
}

}  // namespace
