#pragma once

#include "bench/relay/server/traffic.h"
#include "platform/linux/Descriptor.h"
#include "tests/support/Peer.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the server lets the load generator see, in memory that both share.
struct ServerFacts {
    std::atomic<std::int64_t> openConnections{0};
    /// Bytes that a source has sent so far, since the server started.
    std::atomic<std::int64_t> sourceBytes{0};
    /// The last thing that a client has said in a talk, there before it is answered. What does not
    /// fit is cut off.
    std::atomic<std::size_t> requestSize{0};
    std::array<char, 4096> request{};
};

/// The far end of every measured connection: echoes lines, talks, takes bytes, sends bytes, or
/// stalls, as `traffic.h` says.
class TrafficServer {
public:
    /// Serves those who connect to `listener`; `facts` outlives this object.
    TrafficServer(Server listener, ServerFacts& facts);

    /// Serves until the process ends.
    [[noreturn]] void run();

private:
    enum class Mode { Closed, Lines, Talk, Sink, Source, Hold };

    struct Connection {
        Descriptor socket;
        Mode mode = Mode::Closed;
        /// Bytes that are still to come or to be sent.
        std::int64_t remaining = 0;
        /// What a source sends again and again.
        const std::string* block = nullptr;
        const std::vector<traffic::Turn>* turns = nullptr;
        std::size_t turn = 0;
        /// What has arrived of a line or a turn that is not whole.
        std::string part;
    };

    void acceptOne();
    void close(Connection& connection);
    void read(Connection& connection);
    void releaseHeld();
    [[nodiscard]] bool isWhole(const Connection& connection, std::string_view arrived) const;
    void take(Connection& connection, std::string_view whole);
    void takeTurn(Connection& connection, std::string_view request);
    void takeLine(Connection& connection, std::string_view line);
    void startSource(Connection& connection, const std::string& what, std::int64_t count);
    void sendBlocks(Connection& connection);
    void send(Connection& connection, std::string_view bytes);
    void waitFor(Connection& connection, std::uint32_t events);

    Server listener;
    ServerFacts& facts;
    Descriptor epoll;
    std::vector<Connection> connections;
    std::vector<char> buffer;
    std::string block;
    std::string peerToPeer;
};
