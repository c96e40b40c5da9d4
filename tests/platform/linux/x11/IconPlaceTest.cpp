#include "platform/Tray.h"

#include "tests/support/comesTrue.h"
#include "tests/support/linux/SessionBus.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

/// A desktop that shows no icons.
class NoIconPlace : public testing::Test {
protected:
    SessionBus bus;

    /// Waits longer than `tray` does, by waiting for another one.
    static void outwait(std::chrono::milliseconds patience) {
        const auto other = makeTray(patience);
        bool isOver = false;
        other->noPlace = [&] { isOver = true; };
        other->add("", {});
        EXPECT_TRUE(comesTrue([&] { return isOver; }));
    }
};

TEST_F(NoIconPlace, IsReportedOnce) {
    const auto tray = makeTray(1ms);
    int reported = 0;
    tray->noPlace = [&] { ++reported; };
    tray->add("", {});
    EXPECT_EQ(reported, 0);
    EXPECT_TRUE(comesTrue([&] { return reported > 0; }));
    outwait(5ms);
    EXPECT_EQ(reported, 1);
}

TEST_F(NoIconPlace, IsNotReportedForAnIconThatHasBeenTakenAway) {
    const auto tray = makeTray(1ms);
    int reported = 0;
    tray->noPlace = [&] { ++reported; };
    tray->add("", {});
    tray->remove();
    outwait(5ms);
    EXPECT_EQ(reported, 0);
}

}  // namespace
