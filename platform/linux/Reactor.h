#pragma once

#include <array>
#include <cstdint>

/// The set of descriptors that the program waits for. The event loop waits for the one descriptor
/// of the set, so its cost does not grow with the number of connections.
class Reactor {
public:
    /// Something with a descriptor that becomes ready.
    class Watched {
    public:
        /// `events` are those of epoll.
        virtual void ready(std::uint32_t events) = 0;

    protected:
        ~Watched() = default;
    };

    Reactor();
    ~Reactor();
    Reactor(const Reactor&) = delete;
    Reactor& operator=(const Reactor&) = delete;

    /// Readable when `dispatch` has something to do.
    [[nodiscard]] int descriptor() const { return set; }

    void add(int watchedDescriptor, std::uint32_t events, Watched& watched) const;
    void change(int watchedDescriptor, std::uint32_t events, Watched& watched) const;
    /// Takes the descriptor out. `watched` is not called any more, not even for what is known to be
    /// ready already.
    void remove(int watchedDescriptor, Watched& watched);

    /// Serves what is ready until nothing is, but not so long that the windows would have to wait.
    /// May be called again while it runs.
    void dispatch();

private:
    struct Batch;

    int set;
    /// The batches that are being served, innermost first.
    Batch* batches = nullptr;
};
