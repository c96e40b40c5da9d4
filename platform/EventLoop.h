#pragma once

#include "base/Event.h"

#include <chrono>
#include <memory>

/// A periodic timer. It keeps the beat of the moment when it was enabled, also over a rest.
class Timer {
public:
    Event<> tick;

    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    virtual ~Timer() = default;

    /// Ticks every `interval` from now on.
    virtual void enable(std::chrono::milliseconds interval) = 0;
    virtual void disable() = 0;

    /// No ticks until `wake`: for a timer that has nothing to look for. An idle program does not
    /// wake up.
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

    [[nodiscard]] virtual std::unique_ptr<Timer> makeTimer() = 0;

    /// Serves the events that are due, in the middle of another one. A turn inside a turn does
    /// nothing, so that no peer can pile up turns by sending fast.
    virtual void turn() = 0;
};
