#pragma once

#include "platform/EventLoop.h"
#include "platform/shared/TimerQueue.h"
#include "tests/support/system.h"
#include "tests/support/waiting.h"

#include <algorithm>
#include <chrono>
#include <memory>

/// An event loop of sockets and timers, without windows.
class SocketLoop final : public EventLoop {
public:
    const std::unique_ptr<Readiness> system = testSystem::makeReadiness();
    Readiness& readiness = *system;
    TimerQueue timers{[] {}};

    [[nodiscard]] std::unique_ptr<Timer> makeTimer() override { return timers.makeTimer(); }

    void turn() override {
        readiness.dispatch();
        timers.tickDue();
    }

    /// Sockets have something to do now.
    [[nodiscard]] bool isReady() const { return testSystem::waitForEvents(readiness, {}); }

    /// Serves events until `condition` holds; false when the common limit runs out before. It looks
    /// again after each event, and when `other` becomes readable.
    template <typename Condition>
    [[nodiscard]] bool runUntil(Condition condition, SocketHandle other = systemSockets::noSocket) {
        const auto limit = TimerQueue::Clock::now() + waitLimit;
        while (!condition()) {
            if (TimerQueue::Clock::now() > limit) return false;
            const auto wake = std::min(timers.nextDue().value_or(limit), limit);
            const auto wait =
                std::chrono::ceil<std::chrono::milliseconds>(wake - TimerQueue::Clock::now());
            testSystem::waitForEvents(readiness, std::max(wait, std::chrono::milliseconds{0}),
                                      other);
            turn();
        }
        return true;
    }
};
