#include "platform/shared/StreamSocket.h"

#include "base/Failure.h"
#include "tests/platform/shared/Sockets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void expectNoDelay(int descriptor) {
    ASSERT_GE(descriptor, 0);
    int noDelay = 0;
    socklen_t size = sizeof noDelay;
    ASSERT_EQ(getsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &noDelay, &size), 0);
    EXPECT_NE(noDelay, 0);
}

using Socket = Sockets;

TEST_F(Socket, IsClosedAtFirst) {
    const ToldSocket socket(network);
    EXPECT_EQ(socket->State(), SocketState::Closed);
    EXPECT_EQ(socket->LocalPort(), 0);
}

TEST_F(Socket, ListensOnAPortOfItsOwn) {
    const ToldSocket listener(network);
    EXPECT_EQ(listener->Listen(0), std::nullopt);
    EXPECT_EQ(listener->State(), SocketState::Listening);
    EXPECT_NE(listener->LocalPort(), 0);
    listener->Close();
    EXPECT_EQ(listener->State(), SocketState::Closed);
    EXPECT_EQ(listener->LocalPort(), 0);
}

TEST_F(Socket, TellsWhenThePortIsInUse) {
    const Server other;
    const std::size_t before = countDescriptors();
    const ToldSocket listener(network);
    const auto trouble = listener->Listen(other.port());
    ASSERT_TRUE(trouble.has_value());
    EXPECT_EQ(trouble->number, 10048);
    EXPECT_NE(trouble->description, "");
    EXPECT_EQ(listener->State(), SocketState::Closed);
    EXPECT_EQ(countDescriptors(), before);
}

TEST_F(Socket, ListensOnAPortWhoseOldConnectionsAreNotForgottenYet) {
    Accepted pair = accept();
    const std::uint16_t port = listener->LocalPort();
    // The end that closes first is the one that the system remembers.
    pair.socket->Close();
    pair.peer.waitForEnd();
    pair.peer.close();
    listener->Close();
    EXPECT_EQ(listener->Listen(port), std::nullopt);
}

TEST_F(Socket, IsConnectedOnceItHasAcceptedARequest) {
    const Accepted pair = accept();
    EXPECT_EQ(pair.socket->State(), SocketState::Connected);
    EXPECT_THAT(pair.socket.events, IsEmpty());
}

TEST_F(Socket, DropsARequestThatNobodyAccepts) {
    const std::size_t before = countDescriptors();
    Peer peer = Peer::connectedTo(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return !listener.events.empty(); }));
    EXPECT_THAT(listener.events, ElementsAre("request"));
    EXPECT_EQ(peer.receiveOnce(), "");
    peer.close();
    EXPECT_EQ(countDescriptors(), before);
}

TEST_F(Socket, CannotAcceptARequestAfterItsEvent) {
    RequestId announced = 0;
    listener->ConnectionRequest = [&](RequestId requestID) { announced = requestID; };
    const Peer peer = Peer::connectedTo(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return announced != 0; }));
    const ToldSocket socket(network);
    EXPECT_THROW(socket->Accept(announced), Failure);
    EXPECT_EQ(socket->State(), SocketState::Closed);
}

TEST_F(Socket, CannotAcceptARequestTwice) {
    const ToldSocket first(network);
    const ToldSocket second(network);
    int failures = 0;
    listener->ConnectionRequest = [&](RequestId requestID) {
        first->Accept(requestID);
        EXPECT_THROW(second->Accept(requestID), Failure);
        ++failures;
    };
    const Peer peer = Peer::connectedTo(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return failures > 0; }));
    EXPECT_EQ(first->State(), SocketState::Connected);
    EXPECT_EQ(second->State(), SocketState::Closed);
}

TEST_F(Socket, CannotAcceptWhatIsNoRequest) {
    const ToldSocket socket(network);
    EXPECT_THROW(socket->Accept(0), Failure);
    EXPECT_EQ(socket->State(), SocketState::Closed);
}

TEST_F(Socket, StopsTakingRequestsWhenItIsClosedWithinOne) {
    listener->ConnectionRequest = [&](RequestId) {
        listener.events.emplace_back("request");
        listener->Close();
    };
    Peer first = Peer::connectedTo(listener->LocalPort());
    Peer second = Peer::connectedTo(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return !listener.events.empty(); }));
    first.waitForEnd();
    second.waitForEnd();
    EXPECT_THAT(listener.events, ElementsAre("request"));
}

TEST_F(Socket, IsConnectingUntilTheOtherEndHasAnswered) {
    const Server server;
    const ToldSocket socket(network);
    socket->Connect("127.0.0.1", server.port());
    EXPECT_EQ(socket->State(), SocketState::Connecting);
    EXPECT_THROW(socket->SendData("early"), Failure);
    ASSERT_TRUE(loop.runUntil([&] { return !socket.events.empty(); }));
    EXPECT_EQ(socket->State(), SocketState::Connected);
    EXPECT_THAT(socket.events, ElementsAre("connected"));
}

TEST_F(Socket, IsInErrorWithoutConnectedWhenTheConnectionIsRefused) {
    const std::size_t before = countDescriptors();
    Server server;
    server.close();
    const ToldSocket socket(network);
    socket->Connect("127.0.0.1", server.port());
    ASSERT_TRUE(loop.runUntil([&] { return !socket.events.empty(); }));
    EXPECT_EQ(socket->State(), SocketState::Error);
    EXPECT_THAT(socket.events, ElementsAre("lost"));
    EXPECT_EQ(countDescriptors(), before);
}

TEST_F(Socket, IsInErrorAtOnceWhereNoConnectionCanBegin) {
    const std::size_t before = countDescriptors();
    const ToldSocket socket(network);
    EXPECT_THROW(socket->Connect("255.255.255.255", 1863), Failure);
    EXPECT_EQ(socket->State(), SocketState::Error);
    EXPECT_EQ(countDescriptors(), before);
}

class NoDestination : public Sockets,
                      public testing::WithParamInterface<std::pair<const char*, std::int32_t>> {};

TEST_P(NoDestination, FailsAndLeavesTheSocketClosed) {
    const ToldSocket socket(network);
    EXPECT_THROW(socket->Connect(GetParam().first, GetParam().second), Failure);
    EXPECT_EQ(socket->State(), SocketState::Closed);
}

INSTANTIATE_TEST_SUITE_P(Table, NoDestination,
                         testing::Values(std::pair{"", 80}, std::pair{"localhost", 80},
                                         std::pair{"127.0.0", 80}, std::pair{"127.0.0.256", 80},
                                         std::pair{"::1", 80}, std::pair{"127.0.0.1 ", 80},
                                         std::pair{" 127.0.0.1", 80}, std::pair{"127.0.0.01", 80},
                                         std::pair{"127.0.0.0x1", 80}, std::pair{"127.0.0.-1", 80},
                                         std::pair{"127.0.0.1.1", 80}, std::pair{"127..0.1", 80},
                                         std::pair{".127.0.0.1", 80}, std::pair{"127.0.0.1.", 80},
                                         std::pair{"127.0.0.1", -1},
                                         std::pair{"127.0.0.1", 65536}));

TEST_F(Socket, HasNoDelayWhenItHasAccepted) {
    const Accepted pair = accept();
    expectNoDelay(pair.descriptor());
}

TEST_F(Socket, HasNoDelayWhenItHasConnected) {
    const Server server;
    const ToldSocket socket(network);
    socket->Connect("127.0.0.1", server.port());
    ASSERT_TRUE(loop.runUntil([&] { return !socket.events.empty(); }));
    expectNoDelay(descriptorTo(server.port()));
}

TEST_F(Socket, SendsNothingWhenClosed) {
    const ToldSocket socket(network);
    EXPECT_THROW(socket->SendData("x"), Failure);
    EXPECT_THROW(socket->SendData(""), Failure);
}

}  // namespace
