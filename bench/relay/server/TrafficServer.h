#pragma once

#include "bench/relay/system/socketTools.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the server lets the load generator see, in memory that both share.
struct ServerCounters {
    std::atomic<std::int64_t> openConnections{0};
    /// Bytes that a "SRC" command has sent so far, since the server started.
    std::atomic<std::int64_t> sourceBytes{0};
};

/// The far end of every measured connection: echoes messages, takes bytes, sends bytes, or stalls,
/// as `traffic.h` says.
class TrafficServer {
public:
    TrafficServer(Listener listener, ServerCounters& counters);

    [[noreturn]] void run();

private:
    enum class Mode { Closed, Messages, Sink, Source, Hold };

    struct Connection {
        Descriptor socket;
        Mode mode = Mode::Closed;
        std::int64_t remaining = 0;
        std::string partOfMessage;
    };

    void acceptOne();
    void close(Connection& connection);
    void read(Connection& connection);
    void releaseHeld();
    void takeMessage(Connection& connection, std::string_view message);
    void sendBlocks(Connection& connection);
    void send(Connection& connection, std::string_view bytes);
    void listenFor(Connection& connection, std::uint32_t events);

    Listener listener;
    ServerCounters& counters;
    Descriptor epoll;
    std::vector<Connection> connections;
    std::vector<char> buffer;
    std::string block;
};
