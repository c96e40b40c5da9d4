#include "platform/shared/StreamSocket.h"

#include "base/Failure.h"
#include "tests/platform/shared/Sockets.h"
#include "tests/support/FakeWinsock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <utility>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SocketState, HasTheNumbersThatTheProgramKnows) {
    EXPECT_EQ(static_cast<int>(SocketState::Closed), 0);
    EXPECT_EQ(static_cast<int>(SocketState::Listening), 2);
    EXPECT_EQ(static_cast<int>(SocketState::Connecting), 6);
    EXPECT_EQ(static_cast<int>(SocketState::Connected), 7);
    EXPECT_EQ(static_cast<int>(SocketState::Closing), 8);
    EXPECT_EQ(static_cast<int>(SocketState::Error), 9);
}

using Socket = Sockets;

TEST_F(Socket, IsClosedAtFirst) {
    const RecordedSocket socket(network);
    EXPECT_EQ(socket->State(), SocketState::Closed);
    EXPECT_EQ(socket->LocalPort(), 0);
}

TEST_F(Socket, ListensOnAPortOfItsOwn) {
    const RecordedSocket listener(network);
    EXPECT_EQ(listener->Listen(0), std::nullopt);
    EXPECT_EQ(listener->State(), SocketState::Listening);
    EXPECT_NE(listener->LocalPort(), 0);
    listener->Close();
    EXPECT_EQ(listener->State(), SocketState::Closed);
    EXPECT_EQ(listener->LocalPort(), 0);
}

TEST_F(Socket, SaysThatThePortIsInUse) {
    const Server other;
    const std::size_t before = testSystem::countDescriptors();
    const RecordedSocket listener(network);
    const auto trouble = listener->Listen(other.port());
    ASSERT_TRUE(trouble.has_value());
    EXPECT_EQ(trouble->number, 10048);
    EXPECT_NE(trouble->description, "");
    EXPECT_EQ(listener->State(), SocketState::Closed);
    EXPECT_EQ(testSystem::countDescriptors(), before);
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
    const std::size_t before = testSystem::countDescriptors();
    Peer peer = speakingPeer(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return !listener.events.empty(); }));
    EXPECT_THAT(listener.events, ElementsAre("request"));
    EXPECT_EQ(peer.receiveOnce(), "");
    peer.close();
    EXPECT_EQ(testSystem::countDescriptors(), before);
}

TEST_F(Socket, AnnouncesAClientWithItsFirstWords) {
    std::string words;
    listener->ConnectionRequest = [&](RequestId) { words = listener->PeekData(); };
    Peer silent = Peer::connectedTo(listener->LocalPort());
    Peer late = Peer::connectedTo(listener->LocalPort());
    Peer early = Peer::connectedTo(listener->LocalPort());
    early.send("early");
    ASSERT_TRUE(loop.runUntil([&] { return words == "early"; }));
    late.send("late");
    ASSERT_TRUE(loop.runUntil([&] { return words == "late"; }));
    EXPECT_EQ(listener->PeekData(), "");
    listener->Close();
    silent.waitForEnd();
}

TEST_F(Socket, ForgetsAClientThatLeavesWithoutAWord) {
    const std::size_t before = testSystem::countDescriptors();
    Peer::connectedTo(listener->LocalPort()).close();
    Peer peer = speakingPeer(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return !listener.events.empty(); }));
    peer.close();
    EXPECT_TRUE(loop.runUntil([&] { return testSystem::countDescriptors() == before; }));
    EXPECT_THAT(listener.events, ElementsAre("request"));
}

TEST_F(Socket, DropsAClientThatIsSilentForAMinute) {
    // Time is the test's; the sockets are real.
    FakeLoop time;
    StreamNetwork patient(loop.readiness, time);
    RecordedSocket door(patient);
    ASSERT_EQ(door->Listen(0), std::nullopt);
    FakeTimer& silence = *time.timers.at(0);
    EXPECT_FALSE(silence.enabled);
    Peer silent = Peer::connectedTo(door->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return silence.enabled; }));
    for (auto passed = silence.interval; passed < std::chrono::minutes{1};
         passed += silence.interval) {
        EXPECT_TRUE(silence.enabled);
        silence.pass();
    }
    silence.pass();
    silent.waitForEnd();
    EXPECT_FALSE(silence.enabled) << "nobody is left to wait for";
    EXPECT_THAT(door.events, IsEmpty());
}

TEST_F(Socket, WaitsForNobodyOnceEachClientHasSpoken) {
    FakeLoop time;
    StreamNetwork patient(loop.readiness, time);
    RecordedSocket door(patient);
    ASSERT_EQ(door->Listen(0), std::nullopt);
    const FakeTimer& silence = *time.timers.at(0);
    const std::size_t before = testSystem::countDescriptors();
    Peer one = Peer::connectedTo(door->LocalPort());
    Peer other = Peer::connectedTo(door->LocalPort());
    // Both ends of both.
    ASSERT_TRUE(loop.runUntil([&] { return testSystem::countDescriptors() == before + 4; }));
    EXPECT_TRUE(silence.enabled);
    one.send("x");
    ASSERT_TRUE(loop.runUntil([&] { return door.events.size() == 1; }));
    EXPECT_TRUE(silence.enabled);
    other.send("x");
    ASSERT_TRUE(loop.runUntil([&] { return door.events.size() == 2; }));
    EXPECT_FALSE(silence.enabled);
}

TEST_F(Socket, CannotAcceptARequestAfterItsEvent) {
    RequestId announced = 0;
    listener->ConnectionRequest = [&](RequestId requestID) { announced = requestID; };
    const Peer peer = speakingPeer(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return announced != 0; }));
    const RecordedSocket socket(network);
    EXPECT_FALSE(socket->Accept(announced));
    EXPECT_EQ(socket->State(), SocketState::Closed);
}

TEST_F(Socket, CannotAcceptARequestTwice) {
    const RecordedSocket first(network);
    const RecordedSocket second(network);
    int failures = 0;
    listener->ConnectionRequest = [&](RequestId requestID) {
        EXPECT_TRUE(first->Accept(requestID));
        EXPECT_FALSE(second->Accept(requestID));
        ++failures;
    };
    const Peer peer = speakingPeer(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return failures > 0; }));
    EXPECT_EQ(first->State(), SocketState::Connected);
    EXPECT_EQ(second->State(), SocketState::Closed);
}

TEST_F(Socket, CannotAcceptWhatIsNoRequest) {
    const RecordedSocket socket(network);
    EXPECT_FALSE(socket->Accept(0));
    EXPECT_EQ(socket->State(), SocketState::Closed);
}

TEST_F(Socket, DropsTheClientOfARequestThatWasBrokenOffAndTakesTheNext) {
    const RecordedSocket socket(network);
    int requests = 0;
    listener->ConnectionRequest = [&](RequestId requestID) {
        if (++requests == 1) throw std::bad_alloc();
        EXPECT_TRUE(socket->Accept(requestID));
    };
    Peer first = speakingPeer(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return requests == 1; }));
    first.waitForEnd();
    const Peer second = speakingPeer(listener->LocalPort());
    EXPECT_TRUE(loop.runUntil([&] { return socket.received == "?"; }));
}

TEST_F(Socket, StopsTakingRequestsWhenItIsClosedWithinOne) {
    listener->ConnectionRequest = [&](RequestId) {
        listener.events.emplace_back("request");
        listener->Close();
    };
    Peer first = speakingPeer(listener->LocalPort());
    Peer second = speakingPeer(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return !listener.events.empty(); }));
    first.waitForEnd();
    second.waitForEnd();
    EXPECT_THAT(listener.events, ElementsAre("request"));
}

TEST_F(Socket, IsConnectingUntilTheOtherEndHasAnswered) {
    const Server server;
    const RecordedSocket socket(network);
    EXPECT_TRUE(socket->Connect("127.0.0.1", server.port()));
    EXPECT_EQ(socket->State(), SocketState::Connecting);
    EXPECT_FALSE(socket->SendData("early"));
    ASSERT_TRUE(loop.runUntil([&] { return !socket.events.empty(); }));
    EXPECT_EQ(socket->State(), SocketState::Connected);
    EXPECT_THAT(socket.events, ElementsAre("connected"));
}

TEST_F(Socket, IsInErrorWithoutConnectedWhenTheConnectionIsRefused) {
    const std::size_t before = testSystem::countDescriptors();
    Server server;
    server.close();
    const RecordedSocket socket(network);
    EXPECT_TRUE(socket->Connect("127.0.0.1", server.port()));
    ASSERT_TRUE(loop.runUntil([&] { return !socket.events.empty(); }));
    EXPECT_EQ(socket->State(), SocketState::Error);
    EXPECT_THAT(socket.events, ElementsAre("lost"));
    EXPECT_EQ(testSystem::countDescriptors(), before);
}

TEST_F(Socket, IsInErrorAtOnceWhereNoConnectionCanBegin) {
    const std::size_t before = testSystem::countDescriptors();
    const RecordedSocket socket(network);
    EXPECT_FALSE(socket->Connect("255.255.255.255", 1863));
    EXPECT_EQ(socket->State(), SocketState::Error);
    EXPECT_EQ(testSystem::countDescriptors(), before);
}

class NoDestination : public Sockets,
                      public testing::WithParamInterface<std::pair<const char*, std::int32_t>> {};

TEST_P(NoDestination, FailsAndLeavesTheSocketClosed) {
    const RecordedSocket socket(network);
    EXPECT_FALSE(socket->Connect(GetParam().first, GetParam().second));
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
    EXPECT_TRUE(testSystem::sendsAtOnce(pair.handle()));
}

TEST_F(Socket, HasNoDelayWhenItHasConnected) {
    const Server server;
    const RecordedSocket socket(network);
    EXPECT_TRUE(socket->Connect("127.0.0.1", server.port()));
    ASSERT_TRUE(loop.runUntil([&] { return !socket.events.empty(); }));
    EXPECT_TRUE(testSystem::sendsAtOnce(testSystem::socketTo(server.port())));
}

TEST_F(Socket, SendsNothingWhenClosed) {
    const RecordedSocket socket(network);
    EXPECT_FALSE(socket->SendData("x"));
    EXPECT_FALSE(socket->SendData(""));
}

/// Brings a socket into each of the states in which it is not closed.
class SocketInUse : public Sockets, public testing::WithParamInterface<SocketState> {
protected:
    Server server;
    RecordedSocket used{network};

    void SetUp() override {
        if (GetParam() == SocketState::Listening) {
            ASSERT_EQ(used->Listen(0), std::nullopt);
        } else {
            if (GetParam() == SocketState::Error) server.close();
            EXPECT_TRUE(used->Connect("127.0.0.1", server.port()));
        }
        if (GetParam() == SocketState::Closing) server.accept().close();
        ASSERT_TRUE(loop.runUntil([&] { return used->State() == GetParam(); }));
    }
};

TEST_P(SocketInUse, NeitherListensNorAcceptsNorConnects) {
    bool tried = false;
    listener->ConnectionRequest = [&](RequestId requestID) {
        EXPECT_FALSE(used->Accept(requestID));
        tried = true;
    };
    EXPECT_FALSE(used->Connect("127.0.0.1", listener->LocalPort()));
    EXPECT_THROW((void)used->Listen(0), Failure);
    EXPECT_EQ(used->State(), GetParam());
    const SocketState state = used->State();
    Peer peer = speakingPeer(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return tried; }));
    EXPECT_EQ(peer.receiveOnce(), "");
    if (state != SocketState::Connecting) {
        EXPECT_EQ(used->State(), state);
    }
}

TEST_P(SocketInUse, SendsOnlyWhenConnected) {
    if (GetParam() == SocketState::Connected) {
        EXPECT_TRUE(used->SendData("x"));
    } else {
        EXPECT_FALSE(used->SendData("x"));
        EXPECT_THAT(used.progress, IsEmpty());
    }
}

TEST_P(SocketInUse, CanBeUsedAgainAfterClose) {
    used->Close();
    EXPECT_EQ(used->State(), SocketState::Closed);
    used.events.clear();
    const Server other;
    EXPECT_TRUE(used->Connect("127.0.0.1", other.port()));
    ASSERT_TRUE(loop.runUntil([&] { return used->State() == SocketState::Connected; }));
    EXPECT_THAT(used.events, ElementsAre("connected"));
}

INSTANTIATE_TEST_SUITE_P(States, SocketInUse,
                         testing::Values(SocketState::Listening, SocketState::Connecting,
                                         SocketState::Connected, SocketState::Closing,
                                         SocketState::Error));

}  // namespace
