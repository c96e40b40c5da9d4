#pragma once

#include "platform/shared/StreamSocket.h"
#include "tests/platform/shared/PollLoop.h"
#include "tests/platform/shared/ToldSocket.h"
#include "tests/platform/shared/descriptors.h"
#include "tests/support/Peer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <utility>

#include <poll.h>

/// Real sockets on loopback, one of which listens.
class Sockets : public testing::Test {
protected:
    /// A connection that was requested and accepted: our end and the other one.
    struct Accepted {
        ToldSocket socket;
        Peer peer;

        explicit Accepted(Sockets& test)
            : socket(test.network), peer(Peer::connectedTo(test.listener->LocalPort())) {
            const auto before =
                std::exchange(test.listener->ConnectionRequest,
                              [this](RequestId requestID) { socket->Accept(requestID); });
            EXPECT_TRUE(
                test.loop.runUntil([this] { return socket->State() == SocketState::Connected; }));
            test.listener->ConnectionRequest = before;
        }

        [[nodiscard]] int descriptor() const { return descriptorTo(localPortOf(peer.handle())); }
    };

    PollLoop loop;
    StreamNetwork network{loop.reactor, loop};
    ToldSocket listener{network};

    Sockets() { EXPECT_EQ(listener->Listen(0), std::nullopt); }

    [[nodiscard]] Accepted accept() { return Accepted(*this); }
};

/// A connection that was accepted: `socket` is our end, `peer` the other one.
class Connection : public Sockets {
protected:
    Accepted pair{*this};
    ToldSocket& socket = pair.socket;
    Peer& peer = pair.peer;

    /// Waits until bytes, or the end, have come in at our end, whether they are read or not.
    void waitUntilReadable() const {
        pollfd entry{pair.descriptor(), POLLIN, 0};
        const auto limit = std::chrono::milliseconds(waitLimit).count();
        ASSERT_EQ(poll(&entry, 1, static_cast<int>(limit)), 1);
    }
    /// Lets everything happen that is due: what arrives later on another connection has.
    void serveWhatIsDue() {
        Accepted other(*this);
        other.peer.send("x");
        ASSERT_TRUE(loop.runUntil([&] { return other.socket.received == "x"; }));
    }
};
