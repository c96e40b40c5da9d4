#pragma once

#include "base/Event.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class EventLoop;

/// Names a requested connection between the event that announces it and its `Accept`.
using RequestId = std::int32_t;

enum class SocketState {
    Closed = 0,
    Listening = 2,
    Connecting = 6,
    Connected = 7,
    Closing = 8,
    Error = 9
};

/// Why a socket cannot listen. `number` is 10048 on every system when the port is taken.
struct SocketTrouble {
    static constexpr int addressInUse = 10048;
    int number;
    std::string description;
};

/// One TCP socket over IPv4, listening or connected, with Nagle's delay off. All operations return
/// at once; what happens later comes as an event, one at a time. There are no events for the end of
/// a connection: `State` tells.
///
/// A descriptor goes back to the system as soon as the connection is over, whoever still holds the
/// object.
class Winsock {
public:
    /// Listening only: a client wants to connect. One that nobody accepts in the event is dropped.
    Event<RequestId> ConnectionRequest;
    /// Something has arrived, to be fetched with `GetData` within the event.
    Event<std::size_t> DataArrival;
    /// What `Connect` began has succeeded.
    Event<> Connected;
    /// Bytes have gone to the system: so many now, so many still waiting. The event of bytes that
    /// go at once comes before `SendData` returns.
    Event<std::size_t, std::size_t> SendProgress;
    /// `State` is no longer Connected, and nobody asked for that. For those who sleep until there
    /// is a state to look at; what the new state means is theirs to find out.
    Event<> ConnectionLost;

    Winsock() = default;
    Winsock(const Winsock&) = delete;
    Winsock& operator=(const Winsock&) = delete;
    virtual ~Winsock() = default;

    [[nodiscard]] virtual SocketState State() const = 0;

    /// Listens on `localPort` of all local addresses. Returns what is wrong when it cannot.
    [[nodiscard]] virtual std::optional<SocketTrouble> Listen(std::uint16_t localPort) = 0;
    /// The port that it listens on, 0 when it does not.
    [[nodiscard]] virtual std::uint16_t LocalPort() const = 0;

    /// Takes over a requested connection. Fails when the socket is not closed.
    virtual void Accept(RequestId requestID) = 0;
    /// Begins to connect to a dotted IPv4 address. Fails when the socket is not closed or the
    /// address is none.
    virtual void Connect(std::string_view remoteHost, std::int32_t remotePort) = 0;
    /// Drops the connection and all that waits to be sent.
    virtual void Close() = 0;

    /// Sends all of `data`, in order, keeping what the system does not take yet. Fails when the
    /// socket is not connected.
    virtual void SendData(std::string_view data) = 0;
    /// What the running `DataArrival` is about: all bytes of one read. Valid until that event
    /// returns or gives the loop a turn.
    [[nodiscard]] virtual std::string_view GetData() = 0;

    /// Stops and resumes reading, so that a peer has to wait until the other one has caught up.
    virtual void SetReading(bool reading) = 0;
};

/// Where sockets come from.
class Network {
public:
    Network() = default;
    Network(const Network&) = delete;
    Network& operator=(const Network&) = delete;
    virtual ~Network() = default;

    [[nodiscard]] virtual std::unique_ptr<Winsock> makeWinsock() = 0;
};
