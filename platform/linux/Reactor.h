#pragma once

#include "platform/linux/Descriptor.h"
#include "platform/shared/Readiness.h"

#include <cstdint>

/// The descriptors that the program waits for, sockets and others, as a set of epoll. The event
/// loop waits for the one descriptor of the set, so its cost does not grow with the number of
/// connections. Whoever is watched gets its event again as long as the descriptor is ready.
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

    void control(int operation, int descriptor, Interest interest, Watched& watched) const;

    Descriptor set;
    /// The batches that are being served, innermost first.
    Batch* batches = nullptr;
};
