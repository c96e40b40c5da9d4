#pragma once

#include "platform/linux/Descriptor.h"
#include "platform/shared/Readiness.h"

#include <chrono>
#include <cstdint>

/// The descriptors that the program waits for, sockets and others, as a set of epoll. The event
/// loop waits for the one descriptor of the set, so its cost does not grow with the number of
/// connections. Whoever is watched gets its event again as long as the descriptor is ready.
///
/// While events are brisk `dispatch` waits for the next ones itself, up to 4 ms in all, since the
/// way through the event loop takes longer than relaying a message does.
class Reactor final : public Readiness {
public:
    /// An empty set; throws where the system gives none.
    Reactor();

    /// Readable when `dispatch` has something to do.
    [[nodiscard]] int descriptor() const { return set.get(); }

    void add(SocketHandle descriptor, Interest interest, Watched& watched) override;
    void change(SocketHandle descriptor, Interest interest, Watched& watched) override;
    void remove(SocketHandle descriptor, Watched& watched) override;
    void dispatch() override;

private:
    class Batch;
    using Clock = std::chrono::steady_clock;

    void control(int operation, int descriptor, Interest interest, Watched& watched) const;

    void setAlarm() const;

    Descriptor set;
    Descriptor alarm;
    /// The batches that are being served, innermost first.
    Batch* batches = nullptr;
    /// When the last dispatch ended.
    Clock::time_point lastDispatch{};
};
