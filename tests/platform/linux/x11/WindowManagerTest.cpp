#include "tests/platform/linux/x11/Desktop.h"

namespace {

using looks::mainClass;
using looks::ofProcess;

using WindowManagers = Desktop;

TEST_F(WindowManagers, ComeAndGoWhileMessengerRuns) {
    const auto window = open(ofProcess("MSN Messenger"));
    start();
    EXPECT_TRUE(stays(window));
    manage();
    EXPECT_TRUE(finds(window));
    const auto second = open(mainClass("x"));
    EXPECT_TRUE(stays(window));
    unmanage();
    EXPECT_TRUE(finds(window));
    other.close(window);
    EXPECT_TRUE(finds(second));
}

TEST_F(WindowManagers, LeaveAListBehindThatNobodyBelieves) {
    manage();
    const auto window = open(ofProcess("MSN Messenger"));
    unmanage();
    ASSERT_TRUE(isListed(window));
    other.close(window);
    const auto next = open(ofProcess("MSN Messenger"));
    start();
    EXPECT_TRUE(stays(next));
    EXPECT_FALSE(isListed(next));
}

TEST_F(WindowManagers, HaveMinimisedWindowsInTheirList) {
    manage();
    const auto window = open(ofProcess("MSN Messenger"));
    start();
    constexpr std::uint32_t iconic = 3;
    other.sendToRoot(window, "WM_CHANGE_STATE", {iconic});
    ASSERT_TRUE(becomesTrue([&] {
        const auto state = other.numbers(window, "WM_STATE");
        return !state.empty() && state.front() == iconic;
    }));
    EXPECT_TRUE(stays(window));
    EXPECT_EQ(changes, 0);
}

TEST_F(WindowManagers, AreNotNeededToSeeAWindowThatGetsItsClassBeforeItIsShown) {
    start();
    StandIn::Look look;
    look.title = "x";
    const auto window = open(look);
    hide(window);
    EXPECT_TRUE(stays(0));
    other.setClass(window, "msnmsblclass", "");
    EXPECT_TRUE(stays(0));
    other.show(window);
    EXPECT_TRUE(finds(window));
}

}  // namespace
