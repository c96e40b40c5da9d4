#pragma once

#include "base/Event.h"
#include "platform/EventLoop.h"

#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <utility>

/// The timers of an event loop, so that the loop itself needs one alone, for whichever is due next.
class TimerQueue {
public:
    using Clock = std::chrono::steady_clock;

    /// `nextDueChanged` is called whenever the answer of `nextDue` may have changed.
    explicit TimerQueue(Event<> nextDueChanged);

    [[nodiscard]] std::unique_ptr<Timer> makeTimer();

    /// When the next timer ticks; never, when all of them rest.
    [[nodiscard]] std::optional<Clock::time_point> nextDue() const;

    /// Ticks the timers that are due. May be called again while it runs.
    void tickDue();

private:
    class QueuedTimer;

    Event<> nextDueChanged;
    std::set<std::pair<Clock::time_point, QueuedTimer*>> waiting;
};
