#include "platform/shared/TimerQueue.h"

#include "tests/platform/shared/Timers.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>

namespace {

using namespace std::chrono_literals;
using Clock = TimerQueue::Clock;

TEST_F(Timers, AreNotWaitedForDuringARest) {
    const auto timer = makeTimer();
    timer->enable(1ms);
    timer->rest();
    EXPECT_EQ(queue.nextDue(), std::nullopt);
}

TEST_F(Timers, GoOnAfterARestAtTheBeatThatTheyHadBefore) {
    const auto timer = makeTimer();
    timer->enable(1h);
    const auto first = due();
    timer->rest();
    timer->wake();
    EXPECT_EQ(due(), first);
    timer->enable(3ms);
    const auto beat = due();
    timer->rest();
    const auto later = beat + 5ms;
    while (Clock::now() < later) {
    }
    timer->wake();
    EXPECT_GT(due(), beat);
    EXPECT_EQ((due() - beat) % 3ms, 0ns);
}

TEST_F(Timers, MayRestWithinTheirTickAndBeWokenLater) {
    const auto timer = makeTimer();
    timer->tick = [&] {
        ++ticks;
        timer->rest();
    };
    timer->enable(1ms);
    ASSERT_TRUE(runUntilTicks(1));
    EXPECT_EQ(queue.nextDue(), std::nullopt);
    timer->wake();
    EXPECT_TRUE(runUntilTicks(2));
}

TEST_F(Timers, MayRestAndWakeWithinTheirTick) {
    const auto timer = makeTimer();
    timer->tick = [&] {
        ++ticks;
        timer->rest();
        timer->wake();
    };
    timer->enable(1ms);
    EXPECT_TRUE(runUntilTicks(3));
}

TEST_F(Timers, KeepTheirNextTickWhenWokenWithoutARest) {
    const auto timer = makeTimer();
    timer->enable(1h);
    const auto first = due();
    timer->wake();
    EXPECT_EQ(due(), first);
}

TEST_F(Timers, AreNoLongerAtRestWhenEnabled) {
    const auto timer = makeTimer();
    timer->rest();
    timer->enable(1ms);
    EXPECT_TRUE(runUntilTicks(1));
}

}  // namespace
