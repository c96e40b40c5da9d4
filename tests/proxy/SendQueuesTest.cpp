#include "proxy/SendQueues.h"

#include "conversation/ProgramWindows.h"
#include "platform/shared/StreamSocket.h"
#include "proxy/MSNProxy.h"
#include "tests/platform/shared/SocketLoop.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/FakeWinsock.h"
#include "tests/support/Relay.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <list>
#include <string>

namespace {

constexpr std::size_t mebibyte = SendQueues::mebibyte;

class Directions : public testing::Test {
protected:
    SendQueues queues{100};
    FakeWinsock source;
    FakeWinsock otherSource;
    SendQueues::Direction direction{queues, source};
    SendQueues::Direction other{queues, otherSource};
};

TEST_F(Directions, TheLargestIsNotReadForUntilAllTogetherHaveLess) {
    direction.nowWaits(60);
    EXPECT_TRUE(source.reading);
    other.nowWaits(50);
    EXPECT_FALSE(source.reading);
    EXPECT_TRUE(otherSource.reading);
    direction.nowWaits(50);
    EXPECT_TRUE(source.reading);
}

TEST_F(Directions, TheNextLargestFollowsWhereThatIsNotEnough) {
    direction.nowWaits(101);
    other.nowWaits(1);
    EXPECT_FALSE(source.reading);
    EXPECT_FALSE(otherSource.reading);
}

TEST_F(Directions, OneThatHasNothingWaitingGoesOn) {
    direction.nowWaits(101);
    other.nowWaits(1);
    other.nowWaits(0);
    EXPECT_TRUE(otherSource.reading);
    EXPECT_FALSE(source.reading);
}

TEST(Direction, CountsNoMoreWhenItEnds) {
    SendQueues queues;
    FakeWinsock source;
    {
        SendQueues::Direction direction(queues, source);
        direction.nowWaits(mebibyte);
        EXPECT_FALSE(source.reading);
        EXPECT_EQ(queues.size(), mebibyte);
    }
    EXPECT_TRUE(source.reading);
    EXPECT_EQ(queues.size(), 0U);
}

TEST(Direction, WithMuchWaitingIsNotReadForUntilHalfHasGone) {
    SendQueues queues;
    FakeWinsock source;
    SendQueues::Direction direction(queues, source);
    direction.nowWaits(SendQueues::highWaterMark);
    EXPECT_TRUE(source.reading);
    direction.nowWaits(SendQueues::highWaterMark + 1);
    EXPECT_FALSE(source.reading);
    direction.nowWaits(SendQueues::highWaterMark / 2);
    EXPECT_FALSE(source.reading);
    direction.nowWaits(SendQueues::highWaterMark / 2 - 1);
    EXPECT_TRUE(source.reading);
}

class NoActions final : public ProgramActions {
    void ApplyNickTemplate(std::string& /*text*/) override {}
    [[noreturn]] void ForceExit() override { std::abort(); }
};

/// Connections over real sockets that may have less waiting in all than one of them may.
class RealQueues : public testing::Test {
protected:
    FakeFacilities facilities;
    ProcessValues values;
    NoActions actions;
    ProgramWindows windows;
    Services services{facilities.all(), values, actions, windows};
    SocketLoop loop;
    StreamNetwork network{loop.readiness, loop};
    static constexpr std::size_t most = SendQueues::highWaterMark / 2;
    SendQueues queues{most};
    ProxyHost host{services, network, loop, queues, {}};
    std::unique_ptr<Winsock> listener = network.makeWinsock();
    std::list<MSNProxy> connections;

    RealQueues() {
        EXPECT_EQ(listener->Listen(0), std::nullopt);
        listener->ConnectionRequest = [this](RequestId requestID) {
            connections.emplace_back(host).Connect(requestID);
        };
    }

    [[nodiscard]] Relay relay() {
        Server target;
        Relay pair;
        pair.client = Peer::connectedTo(listener->LocalPort());
        pair.client.send(socksRequest(target.port()));
        EXPECT_EQ(passed(pair.client, 8), socksReply(target.port()));
        pair.server = target.accept();
        return pair;
    }
    /// What arrives at `peer` of so many bytes.
    [[nodiscard]] std::string passed(Peer& peer, std::size_t count) {
        std::string bytes;
        EXPECT_TRUE(loop.runUntil(
            [&] {
                bytes += peer.receiveNow();
                return bytes.size() >= count;
            },
            peer.handle()));
        return bytes;
    }
    /// Sends until nobody takes more, and gives what was sent.
    [[nodiscard]] std::string flood(Peer& peer) {
        std::string all;
        std::string block(65536, '\0');
        for (std::size_t sent = 1; sent > 0 || loop.isReady(); loop.turn()) {
            std::ranges::fill(block, static_cast<char>('A' + all.size() / 1000 % 26));
            sent = peer.sendNow(block);
            all.append(block, 0, sent);
        }
        return all;
    }
};

TEST_F(RealQueues, PauseTheLargestLetSmallOnesPassAndLoseNothing) {
    Relay stalled = relay();
    Relay small = relay();
    const std::string bytes = flood(stalled.server);
    EXPECT_GT(queues.size(), most);
    EXPECT_LE(queues.size(), most + 65536);

    small.client.send("PNG\r\n");
    EXPECT_EQ(passed(small.server, 5), "PNG\r\n");
    const std::string much(4 * mebibyte, 'y');
    std::size_t sent = 0;
    std::size_t received = 0;
    EXPECT_TRUE(loop.runUntil(
        [&] {
            sent += small.server.sendNow(std::string_view(much).substr(sent, 65536));
            received += small.client.receiveNow().size();
            return received == much.size();
        },
        small.client.handle()));

    EXPECT_TRUE(passed(stalled.client, bytes.size()) == bytes);
    EXPECT_EQ(queues.size(), 0U);
    stalled.server.send("QNG 50\r\n");
    EXPECT_EQ(passed(stalled.client, 8), "QNG 50\r\n");
}

}  // namespace
