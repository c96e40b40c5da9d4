#pragma once

#include "platform/linux/Descriptor.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <thread>

/// How long a test waits for what must come. Nothing that goes well takes anywhere near it.
constexpr std::chrono::seconds waitLimit{20};

/// One end of a TCP connection on loopback, as a client or a server has it. Its calls wait, at most
/// for the common limit, and throw `std::runtime_error` when that runs out.
class Peer {
public:
    Peer() = default;
    explicit Peer(Descriptor connected);

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

    /// Waits until the other end has closed or broken the connection.
    void waitForEnd() { (void)receiveToEnd(); }
    /// No more bytes from this end; the other direction goes on.
    void finishSending();
    /// Closes so that the other end sees a broken connection.
    void breakOff();
    void close() { descriptor.reset(); }

    [[nodiscard]] int handle() const { return descriptor.get(); }

private:
    Descriptor descriptor;
};

/// A listening socket on a free port of loopback.
class Server {
public:
    /// Below 32,768, where a port has to be for a request to name it.
    Server();

    [[nodiscard]] std::uint16_t port() const { return boundPort; }
    [[nodiscard]] Peer accept();
    void close() { descriptor.reset(); }
    [[nodiscard]] int handle() const { return descriptor.get(); }

private:
    Descriptor descriptor;
    std::uint16_t boundPort = 0;
};

/// Waits for a condition to become true; false when the limit runs out before.
template <typename Condition>
[[nodiscard]] bool becomesTrue(Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + waitLimit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

/// The bytes with all that cannot be printed written as "\xNN", for failures to be read.
[[nodiscard]] std::string escaped(std::string_view bytes);
