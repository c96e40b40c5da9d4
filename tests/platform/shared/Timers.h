#pragma once

#include "tests/platform/shared/PollLoop.h"

#include <gtest/gtest.h>

#include <memory>

/// Timers that count their ticks, in a loop.
class Timers : public testing::Test {
protected:
    PollLoop loop;
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
