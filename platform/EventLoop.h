#pragma once

#include "base/Event.h"

#include <chrono>
#include <memory>

/// A periodic timer. All its ticks are a whole number of intervals after the moment when it was
/// enabled, also after a rest; those that the loop was too busy for are left out.
class Timer {
public:
    /// The listener may enable, disable, rest and wake this timer and others. It must not destroy
    /// this one. An exception ends this tick alone.
    Event<> tick;

    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    virtual ~Timer() = default;

    /// Ticks every `interval`, which is positive, from now on. Ends a rest.
    virtual void enable(std::chrono::milliseconds interval) = 0;
    /// Enables it in the same way, but at rest until `wake`.
    virtual void enableAtRest(std::chrono::milliseconds interval) = 0;
    /// Stops the ticks.
    virtual void disable() = 0;

    /// Stops the ticks until `wake`: for a timer that has nothing to do, so that an idle program
    /// does not wake up.
    virtual void rest() = 0;
    /// Ends a rest: the next tick comes when it would have come without one. Does nothing to a
    /// timer that is disabled or awake.
    virtual void wake() = 0;
};

/// The one loop that all events come from.
class EventLoop {
public:
    EventLoop() = default;
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;
    virtual ~EventLoop() = default;

    /// A disabled timer. It has to end before the loop.
    [[nodiscard]] virtual std::unique_ptr<Timer> makeTimer() = 0;

    /// Serves the events that are due, in the middle of another one. A turn within a turn does
    /// nothing, so that no peer can pile up turns by sending fast.
    virtual void turn() = 0;
};
