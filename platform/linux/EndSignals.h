#pragma once

#include "base/Event.h"
#include "platform/shared/Readiness.h"

/// SIGINT and SIGTERM as an event. One object at a time; without one they end the process.
class EndSignals final : private Readiness::Watched {
public:
    /// `arrived` comes from `dispatch`. The readiness has to outlive it.
    EndSignals(Readiness& readiness, Event<> arrived);
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

private:
    void ready(Readiness::Ready now) override;

    Readiness& readiness;
    Event<> arrived;
};
