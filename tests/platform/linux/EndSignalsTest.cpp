#include "platform/linux/EndSignals.h"

#include "tests/platform/shared/SocketLoop.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

class EndRequest : public testing::TestWithParam<int> {
protected:
    SocketLoop loop;
    int count = 0;
};

TEST_P(EndRequest, ArrivesAsAnEvent) {
    const EndSignals signals(loop.readiness, [this] { ++count; });
    raise(GetParam());
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(loop.runUntil([this] { return count > 0; }));
    EXPECT_EQ(count, 1);
}

TEST_P(EndRequest, ArrivesAgain) {
    const EndSignals signals(loop.readiness, [this] { ++count; });
    raise(GetParam());
    ASSERT_TRUE(loop.runUntil([this] { return count == 1; }));
    raise(GetParam());
    EXPECT_TRUE(loop.runUntil([this] { return count == 2; }));
}

TEST_P(EndRequest, ArrivesOnceWhenItIsRepeatedBeforeTheLoopHasLooked) {
    const EndSignals signals(loop.readiness, [this] { ++count; });
    raise(GetParam());
    raise(GetParam());
    ASSERT_TRUE(loop.runUntil([this] { return count > 0; }));
    loop.turn();
    EXPECT_EQ(count, 1);
}

TEST_P(EndRequest, EndsTheProcessAgainWhenNobodyListensAnyMore) {
    {
        const EndSignals signals(loop.readiness, [] {});
    }
    EXPECT_EXIT(raise(GetParam()), testing::KilledBySignal(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, EndRequest, testing::Values(SIGINT, SIGTERM),
                         [](const auto& info) {
                             return info.param == SIGINT ? "Interrupt" : "Terminate";
                         });

}  // namespace
