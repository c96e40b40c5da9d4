#include "platform/shared/TimerQueue.h"

#include "tests/platform/shared/Timers.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace {

using namespace std::chrono_literals;
using Clock = TimerQueue::Clock;

TEST_F(Timers, ThatAreNotEnabledNeverTick) {
    const auto timer = makeTimer();
    EXPECT_EQ(queue.nextDue(), std::nullopt);
    queue.tickDue();
    EXPECT_EQ(ticks, 0);
}

TEST_F(Timers, AreDueOneIntervalAfterTheyWereEnabled) {
    const auto timer = makeTimer();
    const auto before = Clock::now();
    timer->enable(1h);
    EXPECT_GE(due(), before + 1h);
    EXPECT_LE(due(), Clock::now() + 1h);
    queue.tickDue();
    EXPECT_EQ(ticks, 0);
}

TEST_F(Timers, TickOnAndOnButNotBeforeTheyAreDue) {
    const auto timer = makeTimer();
    timer->enable(2ms);
    const auto begin = due() - 2ms;
    ASSERT_TRUE(runUntilTicks(5));
    EXPECT_GE(Clock::now(), begin + 5 * 2ms);
}

TEST_F(Timers, KeepTheBeatOfTheMomentWhenTheyWereEnabled) {
    const auto timer = makeTimer();
    timer->enable(3ms);
    const auto first = due();
    for (int count = 1; count <= 5; ++count) {
        ASSERT_TRUE(runUntilTicks(count));
        EXPECT_GT(due(), first);
        EXPECT_EQ((due() - first) % 3ms, 0ns);
    }
}

TEST_F(Timers, DoNotMakeUpForBeatsThatWereMissed) {
    const auto timer = makeTimer();
    timer->enable(1ms);
    const auto late = due() + 20ms;
    while (Clock::now() < late) {
    }
    queue.tickDue();
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ((due() - late) % 1ms, 0ns);
    EXPECT_GT(due(), late);
}

TEST_F(Timers, DoNotTickWhenDisabled) {
    const auto timer = makeTimer();
    timer->enable(1ms);
    timer->disable();
    EXPECT_EQ(queue.nextDue(), std::nullopt);
    timer->wake();
    EXPECT_EQ(queue.nextDue(), std::nullopt);
}

TEST_F(Timers, MayBeDisabledWithinTheirTick) {
    const auto timer = makeTimer();
    timer->tick = [&] {
        ++ticks;
        timer->disable();
    };
    timer->enable(1ms);
    ASSERT_TRUE(runUntilTicks(1));
    EXPECT_EQ(queue.nextDue(), std::nullopt);
}

TEST_F(Timers, MayBeEnabledWithAnotherIntervalWithinTheirTick) {
    const auto timer = makeTimer();
    timer->tick = [&] {
        ++ticks;
        timer->enable(1h);
    };
    timer->enable(1ms);
    ASSERT_TRUE(runUntilTicks(1));
    EXPECT_GT(due(), Clock::now() + 30min);
}

TEST_F(Timers, HaveANewBeatWhenEnabledAgain) {
    const auto timer = makeTimer();
    timer->enable(1ms);
    timer->enable(1h);
    EXPECT_GT(due(), Clock::now() + 30min);
}

TEST_F(Timers, TickInTheOrderInWhichTheyAreDue) {
    std::string order;
    const auto slow = queue.makeTimer();
    const auto fast = queue.makeTimer();
    slow->tick = [&] { order += 's'; };
    fast->tick = [&] {
        order += 'f';
        fast->disable();
    };
    slow->enable(20ms);
    fast->enable(10ms);
    ASSERT_TRUE(loop.runUntil([&] { return order.find('s') != std::string::npos; }));
    EXPECT_EQ(order.substr(0, 2), "fs");
}

TEST_F(Timers, AreForgottenWhenTheyGo) {
    auto timer = makeTimer();
    const auto other = makeTimer();
    timer->enable(1ms);
    other->enable(1h);
    timer.reset();
    EXPECT_GT(due(), Clock::now() + 30min);
}

TEST_F(Timers, MayGoWithinTheTickOfAnother) {
    auto victim = makeTimer();
    const auto timer = queue.makeTimer();
    bool gone = false;
    victim->enable(1h);
    timer->tick = [&] {
        victim.reset();
        gone = true;
        timer->disable();
    };
    timer->enable(1ms);
    ASSERT_TRUE(loop.runUntil([&] { return gone; }));
    EXPECT_EQ(queue.nextDue(), std::nullopt);
}

TEST_F(Timers, GoOnUnderABoxThatATickHasOpened) {
    const auto boxed = queue.makeTimer();
    const auto other = makeTimer();
    int boxes = 0;
    boxed->tick = [&] {
        ++boxes;
        EXPECT_TRUE(runUntilTicks(ticks + 3));
        boxed->disable();
    };
    boxed->enable(1ms);
    other->enable(1ms);
    ASSERT_TRUE(loop.runUntil([&] { return boxes > 0; }));
    // The tick that opened the box has not come a second time under it.
    EXPECT_EQ(boxes, 1);
}

TEST(TimerQueue, TellsOfEveryChangeOfWhatIsDueNext) {
    std::optional<Clock::time_point> told;
    std::unique_ptr<TimerQueue> queue;
    queue = std::make_unique<TimerQueue>([&] { told = queue->nextDue(); });
    const auto timer = queue->makeTimer();
    const auto check = [&] { EXPECT_EQ(told, queue->nextDue()); };
    timer->tick = check;
    timer->enable(1h);
    check();
    EXPECT_TRUE(told.has_value());
    timer->rest();
    check();
    timer->wake();
    check();
    EXPECT_TRUE(told.has_value());
    timer->disable();
    check();
    timer->enable(1ms);
    while (Clock::now() < *told) {
    }
    queue->tickDue();
    check();
    EXPECT_TRUE(told.has_value());
}

}  // namespace
