#pragma once

#include "platform/shared/systemSockets.h"
#include "tests/support/waiting.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

/// A socket of the tests that is closed with its owner.
class TestSocket {
public:
    TestSocket() = default;
    explicit TestSocket(SocketHandle number) : number(number) {}
    TestSocket(TestSocket&& other) noexcept
        : number(std::exchange(other.number, systemSockets::noSocket)) {}
    TestSocket& operator=(TestSocket&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }
    ~TestSocket() { close(); }

    void close();
    [[nodiscard]] SocketHandle handle() const { return number; }

private:
    SocketHandle number = systemSockets::noSocket;
};

/// One end of a TCP connection on loopback, as a client or a server has it. Its calls wait, at most
/// for the common limit, and throw `std::runtime_error` when that runs out.
class Peer {
public:
    Peer() = default;
    explicit Peer(TestSocket connected) : socket(std::move(connected)) {}

    [[nodiscard]] static Peer connectedTo(std::uint16_t port);

    void send(std::string_view bytes);
    /// Exactly `count` bytes.
    [[nodiscard]] std::string receive(std::size_t count);
    /// What one read gives; empty when the other end has closed.
    [[nodiscard]] std::string receiveOnce();
    /// All that comes until the other end closes or breaks the connection.
    [[nodiscard]] std::string receiveToEnd();
    /// Nothing has arrived and is waiting to be read, and the other end is still there.
    [[nodiscard]] bool isSilent() const;

    /// Sends as much as is taken without waiting, and returns how much that was.
    [[nodiscard]] std::size_t sendNow(std::string_view bytes);
    /// What has arrived by now.
    [[nodiscard]] std::string receiveNow();

    /// Waits until the other end has closed or broken the connection.
    void waitForEnd() { (void)receiveToEnd(); }
    /// No more bytes from this end; the other direction goes on.
    void finishSending();
    /// Closes so that the other end sees a broken connection.
    void breakOff();
    void close() { socket.close(); }

    [[nodiscard]] SocketHandle handle() const { return socket.handle(); }

private:
    TestSocket socket;
};

/// A listening socket on a free port of loopback.
class Server {
public:
    /// Below 32,768, where a port has to be for a request to name it.
    Server();

    [[nodiscard]] std::uint16_t port() const { return boundPort; }
    [[nodiscard]] Peer accept();
    void close() { socket.close(); }

    [[nodiscard]] SocketHandle handle() const { return socket.handle(); }

private:
    TestSocket socket;
    std::uint16_t boundPort = 0;
};

/// The bytes with all that cannot be printed written as "\xNN", for failures to be read.
[[nodiscard]] std::string escaped(std::string_view bytes);
