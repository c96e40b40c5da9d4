#pragma once

#include "base/Event.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// Names a requested connection between the event that announces it and its `Accept`. 32 bits hold
/// it on every system.
using RequestId = std::int32_t;

/// What a socket is doing. The numbers are fixed.
enum class SocketState : std::uint8_t {
    Closed = 0,
    Listening = 2,
    Connecting = 6,
    Connected = 7,
    /// The other end has closed the connection, or sends no more.
    Closing = 8,
    /// The connection has failed, or could not be made.
    Error = 9
};

/// What the system says is wrong.
struct SocketTrouble {
    /// The number of a port that is taken, on every system.
    static constexpr int addressInUse = 10048;

    /// The system's own number for all else.
    int number;
    /// What is wrong in words, in the program's code page.
    std::string description;
    /// Where a port is taken, the command that shows a user which program has it.
    std::string question = {};
};

/// One TCP socket over IPv4, listening or connected, with Nagle's algorithm off. All operations
/// return at once; what happens later comes as an event, one at a time, from the event loop unless
/// it says otherwise. No event may destroy the socket.
///
/// The system has its descriptor back as soon as the connection is over, whoever still holds the
/// object. A socket whose connection is over stays Closing or Error until it is closed.
class Winsock {
public:
    /// A client has connected to the listening socket and begun to speak; `PeekData` has what it
    /// said. A client that nobody accepts in the event is dropped. Clients that are not near
    /// (platform/shared/nearness.h), or are silent for a minute, are dropped without an event.
    Event<RequestId> ConnectionRequest;
    /// So many bytes have arrived. `GetData` fetches them within the event.
    Event<std::size_t> DataArrival;
    /// What `Connect` began has succeeded.
    Event<> Connected;
    /// Bytes have gone to the system: so many now, so many still waiting. The event of bytes that
    /// go at once comes before `SendData` returns.
    Event<std::size_t, std::size_t> SendProgress;
    /// The connection, or the attempt at one, is over, and nobody here asked for that: `State` is
    /// Closing or Error. A send that finds it so raises the event before it returns.
    Event<> ConnectionLost;

    Winsock() = default;
    Winsock(const Winsock&) = delete;
    Winsock& operator=(const Winsock&) = delete;
    virtual ~Winsock() = default;

    /// What the socket is doing now.
    [[nodiscard]] virtual SocketState State() const = 0;

    /// Listens on `localPort` of all local addresses; 0 is any free port. Returns what is wrong
    /// when it cannot; the socket is closed then. Fails when it was not closed before.
    [[nodiscard]] virtual std::optional<SocketTrouble> Listen(std::uint16_t localPort) = 0;
    /// The port that it listens on, 0 when it does not.
    [[nodiscard]] virtual std::uint16_t LocalPort() const = 0;

    /// What the client of the running `ConnectionRequest` has sent so far, which arrives again once
    /// it is accepted. Valid until the event returns.
    [[nodiscard]] virtual std::string_view PeekData() = 0;
    /// Takes over a requested connection. False when the socket is not closed, or when there is no
    /// such request (any more).
    [[nodiscard]] virtual bool Accept(RequestId requestID) = 0;
    /// Begins to connect to a dotted IPv4 address. False when the socket is not closed, when the
    /// address or the port is none, or when no connection can begin; the state may be Error then.
    [[nodiscard]] virtual bool Connect(std::string_view remoteHost, std::int32_t remotePort) = 0;
    /// Drops the connection and all that waits to be sent. The state is Closed, whatever it was,
    /// and reading is on again.
    virtual void Close() = 0;

    /// Sends all of `data`, in order, keeping what the system does not take yet. False when the
    /// socket is not connected, or is found to be no longer. The connection is lost where there is
    /// no memory for what has to be kept, so that no peer gets a text with a hole in it.
    [[nodiscard]] virtual bool SendData(std::string_view data) = 0;
    /// What the running `DataArrival` is about: all bytes of one read. Valid until that event
    /// returns or gives the loop a turn.
    [[nodiscard]] virtual std::string_view GetData() = 0;

    /// Nothing is under way: no bytes wait to be sent, and none have arrived that are still to be
    /// announced. A socket that is not connected is quiet.
    [[nodiscard]] virtual bool IsQuiet() const = 0;

    /// Stops and resumes reading, so that a peer has to wait until the other one has caught up. The
    /// end of the connection is seen when what was sent before it has been read; a connection that
    /// is broken is seen at once.
    virtual void SetReading(bool reading) = 0;
};

/// Where sockets come from.
class Network {
public:
    Network() = default;
    Network(const Network&) = delete;
    Network& operator=(const Network&) = delete;
    virtual ~Network() = default;

    /// A closed socket. It has to end before the network.
    [[nodiscard]] virtual std::unique_ptr<Winsock> makeWinsock() = 0;
};
