#include "platform/shared/StreamSocket.h"

#include "base/Failure.h"
#include "tests/platform/shared/Sockets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

/// Brings a socket into each of the states in which it is not closed.
class SocketInUse : public Sockets, public testing::WithParamInterface<SocketState> {
protected:
    Server server;
    ToldSocket used{network};

    void SetUp() override {
        if (GetParam() == SocketState::Listening) {
            ASSERT_EQ(used->Listen(0), std::nullopt);
        } else {
            if (GetParam() == SocketState::Error) server.close();
            used->Connect("127.0.0.1", server.port());
        }
        if (GetParam() == SocketState::Closing) server.accept().close();
        ASSERT_TRUE(loop.runUntil([&] { return used->State() == GetParam(); }));
    }
};

TEST_P(SocketInUse, NeitherListensNorAcceptsNorConnects) {
    bool tried = false;
    listener->ConnectionRequest = [&](RequestId requestID) {
        EXPECT_THROW(used->Accept(requestID), Failure);
        tried = true;
    };
    EXPECT_THROW(used->Connect("127.0.0.1", listener->LocalPort()), Failure);
    EXPECT_THROW((void)used->Listen(0), Failure);
    EXPECT_EQ(used->State(), GetParam());
    const SocketState state = used->State();
    Peer peer = Peer::connectedTo(listener->LocalPort());
    ASSERT_TRUE(loop.runUntil([&] { return tried; }));
    EXPECT_EQ(peer.receiveOnce(), "");
    if (state != SocketState::Connecting) {
        EXPECT_EQ(used->State(), state);
    }
}

TEST_P(SocketInUse, SendsOnlyWhenConnected) {
    if (GetParam() == SocketState::Connected) {
        EXPECT_NO_THROW(used->SendData("x"));
    } else {
        EXPECT_THROW(used->SendData("x"), Failure);
        EXPECT_THAT(used.progress, IsEmpty());
    }
}

TEST_P(SocketInUse, CanBeUsedAgainAfterClose) {
    used->Close();
    EXPECT_EQ(used->State(), SocketState::Closed);
    used.events.clear();
    const Server other;
    used->Connect("127.0.0.1", other.port());
    ASSERT_TRUE(loop.runUntil([&] { return used->State() == SocketState::Connected; }));
    EXPECT_THAT(used.events, ElementsAre("connected"));
}

INSTANTIATE_TEST_SUITE_P(States, SocketInUse,
                         testing::Values(SocketState::Listening, SocketState::Connecting,
                                         SocketState::Connected, SocketState::Closing,
                                         SocketState::Error));

}  // namespace
