#include "platform/shared/systemSockets.h"

#include "tests/platform/shared/Sockets.h"
#include "tests/support/linux/forked.h"
#include "tests/support/linux/ownNetwork.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace {

int option(SocketHandle socket, int level, int name) {
    int value = -1;
    socklen_t size = sizeof value;
    EXPECT_EQ(getsockopt(socket, level, name, &value, &size), 0);
    return value;
}

/// Both ways in which a socket of the program comes to be connected.
class SystemSocket : public Sockets, public testing::WithParamInterface<bool> {
protected:
    Server server;
    std::optional<Accepted> accepted;
    RecordedSocket connected{network};

    [[nodiscard]] SocketHandle made() {
        if (GetParam()) return accepted.emplace(*this).handle();
        EXPECT_TRUE(connected->Connect("127.0.0.1", server.port()));
        EXPECT_TRUE(loop.runUntil([&] { return !connected.events.empty(); }));
        return testSystem::socketTo(server.port());
    }
};

TEST_P(SystemSocket, IsNotPassedOnToPrograms) { EXPECT_NE(fcntl(made(), F_GETFD) & FD_CLOEXEC, 0); }

TEST_P(SystemSocket, AsksASilentPeerAfterFiveMinutesWhetherItIsStillThere) {
    const SocketHandle socket = made();
    EXPECT_NE(option(socket, SOL_SOCKET, SO_KEEPALIVE), 0);
    EXPECT_EQ(option(socket, IPPROTO_TCP, TCP_KEEPIDLE), 300);
    EXPECT_EQ(option(socket, IPPROTO_TCP, TCP_KEEPINTVL), 30);
    EXPECT_EQ(option(socket, IPPROTO_TCP, TCP_KEEPCNT), 4);
}

INSTANTIATE_TEST_SUITE_P(Ways, SystemSocket, testing::Values(true, false),
                         [](const auto& info) { return info.param ? "accepted" : "connected"; });

TEST(NewSocket, GivesUpAServerThatDoesNotAnswerWithinTwentySeconds) {
    const TestSocket socket(systemSockets::open().socket);
    // Each wait is twice as long as the one before; some kernels wait for four seconds besides.
    int seconds = 1;
    for (int retries = option(socket.handle(), IPPROTO_TCP, TCP_SYNCNT); retries > 0; --retries)
        seconds = 2 * seconds + 1;
    EXPECT_GT(seconds, 10);
    EXPECT_LE(seconds + 4, 20);
}

Peer connectedFrom(const char* address, std::uint16_t port) {
    TestSocket connection(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in end{};
    end.sin_family = AF_INET;
    inet_pton(AF_INET, address, &end.sin_addr);
    EXPECT_EQ(bind(connection.handle(), reinterpret_cast<sockaddr*>(&end), sizeof end), 0);
    end.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    end.sin_port = htons(port);
    EXPECT_EQ(connect(connection.handle(), reinterpret_cast<sockaddr*>(&end), sizeof end), 0);
    return Peer(std::move(connection));
}

/// What the listener does where a client says something from `address`, until that is cut off.
void meetClientFrom(const char* address, const std::vector<std::string>& expected) {
    EXPECT_TRUE(passesForked([&] {
        if (!leaveNetworkForTheInternet()) GTEST_SKIP() << "there is no network to try this in";
        SocketLoop loop;
        StreamNetwork network(loop.readiness, loop);
        const RecordedSocket listener(network);
        ASSERT_EQ(listener->Listen(0), std::nullopt);
        Peer client = connectedFrom(address, listener->LocalPort());
        client.send("?");
        ASSERT_TRUE(loop.runUntil([&] { return !client.isSilent(); }, client.handle()));
        EXPECT_EQ(client.receiveOnce(), "");
        EXPECT_EQ(listener.events, expected);
    }));
}

TEST(ClientFromTheInternet, IsCutOffUnheard) { meetClientFrom("203.0.113.7", {}); }

TEST(ClientFromTheInternet, IsLetInFromANetworkOfTheMachinesOwn) {
    meetClientFrom("198.51.100.7", {"request"});
}

}  // namespace
