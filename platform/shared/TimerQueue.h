#pragma once

#include "base/Event.h"
#include "platform/EventLoop.h"

#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <utility>

/// The timers of an event loop. The loop itself needs only one, for the next that is due.
class TimerQueue {
public:
    using Clock = std::chrono::steady_clock;

    /// `nextDueChanged` is called whenever the answer of `nextDue` may have changed.
    explicit TimerQueue(Event<> nextDueChanged);

    /// A disabled timer. It has to end before the queue.
    [[nodiscard]] std::unique_ptr<Timer> makeTimer();

    /// When the next timer ticks; nothing when none will.
    [[nodiscard]] std::optional<Clock::time_point> nextDue() const;

    /// Ticks the timers that are due. May be called again while it runs.
    void tickDue();

private:
    class QueuedTimer;

    Event<> nextDueChanged;
    std::set<std::pair<Clock::time_point, QueuedTimer*>> waiting;
};
