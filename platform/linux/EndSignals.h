#pragma once

#include "base/Event.h"
#include "platform/shared/Readiness.h"

/// SIGINT and SIGTERM as an event. One object at a time; without one they end the process.
class EndSignals final : private Readiness::Watched {
public:
    /// `dispatch` of the readiness raises `arrived`. The readiness has to outlive this object.
    EndSignals(Readiness& readiness, Event<> arrived);
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

private:
    void ready(Readiness::Ready now) override;

    Readiness& readiness;
    Event<> arrived;
};
