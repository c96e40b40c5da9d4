#include "platform/shared/TimerQueue.h"

#include "tests/platform/shared/SocketLoop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <new>
#include <optional>
#include <string>

namespace {

using namespace std::chrono_literals;
using Clock = TimerQueue::Clock;

/// Timers that count their ticks, in a loop.
class Timers : public testing::Test {
protected:
    SocketLoop loop;
    TimerQueue& queue = loop.timers;

    [[nodiscard]] std::unique_ptr<Timer> makeTimer() {
        auto timer = queue.makeTimer();
        timer->tick = [this] { ++ticks; };
        return timer;
    }
    /// Runs until so many ticks have come.
    [[nodiscard]] bool runUntilTicks(int count) {
        return loop.runUntil([&] { return ticks >= count; });
    }
    [[nodiscard]] TimerQueue::Clock::time_point due() const {
        EXPECT_TRUE(queue.nextDue().has_value());
        return queue.nextDue().value_or(TimerQueue::Clock::time_point());
    }

    int ticks = 0;
};

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

TEST_F(Timers, TickAgainAfterATickThatWasBrokenOff) {
    const auto broken = makeTimer();
    broken->tick = [this] {
        ++ticks;
        throw std::bad_alloc();
    };
    broken->enable(1ms);
    EXPECT_TRUE(runUntilTicks(3));
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

TEST_F(Timers, ThatAreEnabledAtRestKeepTheBeatOfThatMomentOnceTheyAreAwake) {
    const auto timer = makeTimer();
    const auto before = Clock::now();
    timer->enableAtRest(1h);
    const auto after = Clock::now();
    EXPECT_EQ(queue.nextDue(), std::nullopt);
    timer->wake();
    EXPECT_GE(due(), before + 1h);
    EXPECT_LE(due(), after + 1h);
    timer->enableAtRest(1h);
    EXPECT_EQ(queue.nextDue(), std::nullopt);
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
    const auto next = due();
    timer->rest();
    const auto later = next + 5ms;
    while (Clock::now() < later) {
    }
    timer->wake();
    EXPECT_GT(due(), next);
    EXPECT_EQ((due() - next) % 3ms, 0ns);
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

TEST(TimerQueue, ReportsEveryChangeOfWhatIsDueNext) {
    std::optional<Clock::time_point> reported;
    std::unique_ptr<TimerQueue> queue;
    queue = std::make_unique<TimerQueue>([&] { reported = queue->nextDue(); });
    const auto timer = queue->makeTimer();
    const auto check = [&] { EXPECT_EQ(reported, queue->nextDue()); };
    timer->tick = check;
    timer->enable(1h);
    check();
    EXPECT_TRUE(reported.has_value());
    timer->rest();
    check();
    timer->wake();
    check();
    EXPECT_TRUE(reported.has_value());
    timer->disable();
    check();
    timer->enable(1ms);
    while (Clock::now() < *reported) {
    }
    queue->tickDue();
    check();
    EXPECT_TRUE(reported.has_value());
}

}  // namespace
