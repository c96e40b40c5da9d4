#include "platform/shared/StreamSocket.h"

#include "tests/platform/shared/Sockets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(Connection, GivesTheLastBytesBeforeTheEnd) {
    peer.send("bye");
    peer.close();
    ASSERT_TRUE(loop.runUntil([&] { return !socket.events.empty(); }));
    EXPECT_EQ(socket.received, "bye");
    EXPECT_THAT(socket.events, ElementsAre("lost"));
    EXPECT_EQ(socket->State(), SocketState::Closing);
}

TEST_F(Connection, IsClosingWhenTheOtherEndSendsNoMore) {
    peer.finishSending();
    ASSERT_TRUE(loop.runUntil([&] { return !socket.events.empty(); }));
    EXPECT_EQ(socket->State(), SocketState::Closing);
    EXPECT_EQ(peer.receiveOnce(), "");
}

TEST_F(Connection, IsInErrorWhenTheOtherEndBreaksOff) {
    peer.breakOff();
    ASSERT_TRUE(loop.runUntil([&] { return !socket.events.empty(); }));
    EXPECT_THAT(socket.events, ElementsAre("lost"));
    EXPECT_EQ(socket->State(), SocketState::Error);
}

TEST_F(Connection, IsInErrorWhenTheOtherEndBreaksOffWhileReadingIsOff) {
    socket->SetReading(false);
    peer.breakOff();
    ASSERT_TRUE(loop.runUntil([&] { return !socket.events.empty(); }));
    EXPECT_EQ(socket->State(), SocketState::Error);
}

TEST_F(Connection, IsConnectedUntilTheEndIsReadWhileReadingIsOff) {
    socket->SetReading(false);
    peer.close();
    waitUntilReadable();
    serveWhatIsDue();
    EXPECT_EQ(socket->State(), SocketState::Connected);
    socket->SetReading(true);
    ASSERT_TRUE(loop.runUntil([&] { return !socket.events.empty(); }));
    EXPECT_EQ(socket->State(), SocketState::Closing);
}

TEST_F(Connection, IsLostToASendThatFails) {
    socket->SetReading(false);
    peer.breakOff();
    EXPECT_FALSE(socket->SendData("x"));
    EXPECT_EQ(socket->State(), SocketState::Error);
    EXPECT_THAT(socket.events, ElementsAre("lost"));
}

TEST_F(Connection, ReportsNoEndThatWasAskedFor) {
    socket->Close();
    EXPECT_EQ(peer.receiveOnce(), "");
    serveWhatIsDue();
    EXPECT_THAT(socket.events, IsEmpty());
    EXPECT_EQ(socket->State(), SocketState::Closed);
}

TEST_F(Connection, CanBeClosedWithinAnArrival) {
    socket->DataArrival = [&](std::size_t) { socket->Close(); };
    peer.send("x");
    ASSERT_TRUE(loop.runUntil([&] { return socket->State() == SocketState::Closed; }));
    EXPECT_EQ(peer.receiveOnce(), "");
    EXPECT_THAT(socket.events, IsEmpty());
}

using Descriptors = Sockets;

TEST_F(Descriptors, GoBackWhenTheOtherEndClosesThoughTheSocketLivesOn) {
    const std::size_t before = testSystem::countDescriptors();
    Accepted pair(*this);
    EXPECT_EQ(testSystem::countDescriptors(), before + 2);
    pair.peer.close();
    ASSERT_TRUE(loop.runUntil([&] { return !pair.socket.events.empty(); }));
    EXPECT_EQ(pair.socket->State(), SocketState::Closing);
    EXPECT_EQ(testSystem::countDescriptors(), before);
}

TEST_F(Descriptors, GoBackWhenTheConnectionBreaksThoughTheSocketLivesOn) {
    const std::size_t before = testSystem::countDescriptors();
    Accepted pair(*this);
    pair.peer.breakOff();
    ASSERT_TRUE(loop.runUntil([&] { return !pair.socket.events.empty(); }));
    EXPECT_EQ(testSystem::countDescriptors(), before);
}

TEST_F(Descriptors, GoBackAtClose) {
    Accepted pair(*this);
    const std::size_t before = testSystem::countDescriptors();
    pair.socket->Close();
    EXPECT_EQ(testSystem::countDescriptors(), before - 1);
}

TEST_F(Descriptors, GoBackWithTheSocket) {
    const std::size_t before = testSystem::countDescriptors();
    { const Accepted pair(*this); }
    EXPECT_EQ(testSystem::countDescriptors(), before);
}

}  // namespace
