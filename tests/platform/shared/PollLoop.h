#pragma once

#include "platform/EventLoop.h"
#include "platform/linux/Reactor.h"
#include "platform/shared/TimerQueue.h"
#include "tests/support/Peer.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>

#include <poll.h>

/// An event loop of sockets and timers, without windows.
class PollLoop final : public EventLoop {
public:
    Reactor reactor;
    TimerQueue timers{[] {}};

    [[nodiscard]] std::unique_ptr<Timer> makeTimer() override { return timers.makeTimer(); }

    void turn() override {
        reactor.dispatch();
        timers.tickDue();
    }

    /// Serves events until `condition` holds; false when the common limit runs out before. It looks
    /// again after each event, and when `other` becomes readable.
    template <typename Condition>
    [[nodiscard]] bool runUntil(Condition condition, int other = -1) {
        const auto limit = TimerQueue::Clock::now() + waitLimit;
        while (!condition()) {
            if (TimerQueue::Clock::now() > limit) return false;
            const auto wake = std::min(timers.nextDue().value_or(limit), limit);
            const auto wait =
                std::chrono::ceil<std::chrono::milliseconds>(wake - TimerQueue::Clock::now());
            std::array<pollfd, 2> entries{{{reactor.descriptor(), POLLIN, 0}, {other, POLLIN, 0}}};
            poll(entries.data(), entries.size(), std::max(0, static_cast<int>(wait.count())));
            turn();
        }
        return true;
    }
};
