#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The least that a SOCKS 4 relay on one thread can do: one read and one send a chunk, Nagle's
/// delay off, all sockets in one epoll set. It shows how fast this machine lets a relay be, and is
/// no server for real use.
class EpollRelay {
public:
    /// Listens on `port` of loopback. Throws `BenchError` when that cannot be had.
    explicit EpollRelay(std::uint16_t port);
    EpollRelay(const EpollRelay&) = delete;
    EpollRelay& operator=(const EpollRelay&) = delete;
    ~EpollRelay();

    /// Readable whenever `serve` has something to do.
    [[nodiscard]] int descriptor() const { return epoll; }

    /// Waits for at most so many milliseconds (-1: without end) and does what has become possible.
    /// False when that was nothing.
    bool serve(int milliseconds);

private:
    enum class State : std::uint8_t { Closed, Listening, AwaitsRequest, Connecting, Relaying };

    /// One socket; its number is the index.
    struct Side {
        int peer = -1;
        State state = State::Closed;
        std::array<char, 6> destination{};
        /// What the system did not take at once. Nothing is read for this side meanwhile.
        std::unique_ptr<std::string> waiting;
    };

    void acceptOne(int listener);
    void takeRequest(int client);
    void finishConnecting(int server);
    void relay(int from);
    void sendWaiting(int to);
    void updateInterest(int socket);
    void closePair(int socket);

    Side& side(int socket) { return sides[static_cast<std::size_t>(socket)]; }
    void add(int socket, State state, std::uint32_t events);

    int epoll;
    std::vector<Side> sides;
    /// Closed only after the whole batch, so that no event in it meets a new owner of a number.
    std::vector<int> doomed;
    std::vector<char> buffer;
};

/// The port that one of the benchmark's relays is to listen on, from its only argument. Throws
/// `BenchError` when that is none.
[[nodiscard]] std::uint16_t portArgument(int count, char** arguments);
