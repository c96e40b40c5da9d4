#pragma once

#include "platform/shared/StreamSocket.h"
#include "tests/platform/shared/SocketLoop.h"
#include "tests/support/Peer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// A socket that records its events.
class RecordedSocket {
public:
    explicit RecordedSocket(Network& network) : socket(network.makeWinsock()) {
        socket->ConnectionRequest = [this](RequestId) { events.emplace_back("request"); };
        socket->Connected = [this] { events.emplace_back("connected"); };
        socket->ConnectionLost = [this] { events.emplace_back("lost"); };
        socket->SendProgress = [this](std::size_t sent, std::size_t remaining) {
            progress.emplace_back(sent, remaining);
        };
        socket->DataArrival = [this](std::size_t bytesTotal) {
            arrivals.push_back(bytesTotal);
            received += socket->GetData();
        };
    }

    RecordedSocket(const RecordedSocket&) = delete;
    RecordedSocket& operator=(const RecordedSocket&) = delete;

    [[nodiscard]] Winsock* operator->() const { return socket.get(); }

    /// How many bytes have gone to the system.
    [[nodiscard]] std::size_t sent() const {
        std::size_t sum = 0;
        for (const auto& [now, remaining] : progress)
            sum += now;
        return sum;
    }

    std::vector<std::string> events;
    std::vector<std::pair<std::size_t, std::size_t>> progress;
    std::vector<std::size_t> arrivals;
    std::string received;

private:
    std::unique_ptr<Winsock> socket;
};

/// A client that has said something, so that its request is announced.
[[nodiscard]] inline Peer speakingPeer(std::uint16_t port) {
    Peer peer = Peer::connectedTo(port);
    peer.send("?");
    return peer;
}

/// Real sockets on loopback, one of which listens.
class Sockets : public testing::Test {
protected:
    /// A connection that was requested and accepted: our end and the other one.
    struct Accepted {
        RecordedSocket socket;
        Peer peer;
        /// Of the other end, also when that is closed.
        const std::uint16_t port;

        explicit Accepted(Sockets& test)
            : socket(test.network),
              peer(speakingPeer(test.listener->LocalPort())),
              port(testSystem::localPortOf(peer.handle())) {
            const auto before = std::exchange(
                test.listener->ConnectionRequest,
                [this](RequestId requestID) { EXPECT_TRUE(socket->Accept(requestID)); });
            // The request comes with the first byte, which is none of the test's.
            EXPECT_TRUE(test.loop.runUntil([this] { return socket.received == "?"; }));
            socket.received.clear();
            socket.arrivals.clear();
            test.listener->ConnectionRequest = before;
        }

        /// Our end, as the system numbers it.
        [[nodiscard]] SocketHandle handle() const { return testSystem::socketTo(port); }
    };

    SocketLoop loop;
    StreamNetwork network{loop.readiness, loop};
    RecordedSocket listener{network};

    Sockets() { EXPECT_EQ(listener->Listen(0), std::nullopt); }

    [[nodiscard]] Accepted accept() { return Accepted(*this); }
};

/// A connection that was accepted: `socket` is our end, `peer` the other one.
class Connection : public Sockets {
protected:
    Accepted pair{*this};
    RecordedSocket& socket = pair.socket;
    Peer& peer = pair.peer;

    /// Waits until bytes, or the end, have come in at our end, whether they are read or not.
    void waitUntilReadable() const {
        ASSERT_TRUE(testSystem::becomesPossible(pair.handle(), testSystem::Direction::Receiving,
                                                waitLimit));
    }
    /// Lets everything happen that is due: what arrives later on another connection has.
    void serveWhatIsDue() {
        Accepted other(*this);
        other.peer.send("x");
        ASSERT_TRUE(loop.runUntil([&] { return other.socket.received == "x"; }));
    }
};
