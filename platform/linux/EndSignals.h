#pragma once

#include "base/Event.h"
#include "platform/linux/Reactor.h"

/// SIGINT and SIGTERM as an event of the reactor. One object at a time.
class EndSignals final : private Readiness::Watched {
public:
    EndSignals(Reactor& reactor, Event<> arrived);
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

private:
    void ready(Readiness::Ready now) override;

    Reactor& reactor;
    Event<> arrived;
};
