#include "platform/shared/StreamSocket.h"

#include "tests/platform/shared/Sockets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Le;
using testing::Pair;
using testing::SizeIs;

constexpr std::size_t megabyte = 1024 * 1024;

/// Bytes in which any two places differ within the next few hundred.
std::string pattern(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t at = 0; at < size; ++at)
        bytes[at] = static_cast<char>(at * 7 + at / 251);
    return bytes;
}

/// Sends as long as somebody takes it, and returns how much that was.
std::size_t sendUntilFull(Peer& peer) {
    const std::string block(65536, 'x');
    std::size_t sum = 0;
    for (std::size_t sent = peer.sendNow(block); sent > 0; sent = peer.sendNow(block))
        sum += sent;
    return sum;
}

using Transfer = Connection;

TEST_F(Transfer, OfOneReadIsOneArrival) {
    peer.send("VER 1 MSNP9 CVR0\r\n");
    ASSERT_TRUE(loop.runUntil([&] { return !socket.arrivals.empty(); }));
    EXPECT_THAT(socket.arrivals, ElementsAre(18));
    EXPECT_EQ(socket.received, "VER 1 MSNP9 CVR0\r\n");
}

TEST_F(Transfer, OfTwoSendsThatMeetIsOneArrival) {
    peer.send("one");
    peer.send("two");
    ASSERT_TRUE(loop.runUntil([&] { return socket.received.size() == 6; }));
    EXPECT_THAT(socket.arrivals, ElementsAre(6));
}

TEST_F(Transfer, OfManyBytesArrivesInReadsOf64KilobytesAtMost) {
    const std::string bytes = pattern(2 * megabyte);
    std::size_t sent = 0;
    ASSERT_TRUE(loop.runUntil([&] {
        sent += peer.sendNow(std::string_view(bytes).substr(sent));
        return socket.received.size() == bytes.size();
    }));
    EXPECT_TRUE(socket.received == bytes);
    EXPECT_THAT(socket.arrivals, Each(Le(65536U)));
    EXPECT_THAT(socket.arrivals, testing::Contains(65536U));
}

TEST_F(Transfer, HasItsBytesWithinTheEventAlone) {
    std::size_t within = 0;
    socket->DataArrival = [&](std::size_t) { within = socket->GetData().size(); };
    peer.send("abc");
    ASSERT_TRUE(loop.runUntil([&] { return within > 0; }));
    EXPECT_EQ(within, 3U);
    EXPECT_EQ(socket->GetData(), "");
}

TEST_F(Transfer, IsQuietWhileNothingIsUnderWay) {
    EXPECT_TRUE(socket->IsQuiet());
    peer.send("x");
    waitUntilReadable();
    EXPECT_FALSE(socket->IsQuiet());
    ASSERT_TRUE(loop.runUntil([&] { return socket.received == "x"; }));
    EXPECT_TRUE(socket->IsQuiet());
    EXPECT_TRUE(socket->SendData(std::string(32 * megabyte, 'x')));
    EXPECT_FALSE(socket->IsQuiet());
    socket->Close();
    EXPECT_TRUE(socket->IsQuiet());
}

TEST_F(Transfer, ReportsBytesThatGoAtOnceBeforeItReturns) {
    EXPECT_TRUE(socket->SendData("MSG 1"));
    EXPECT_THAT(socket.progress, ElementsAre(Pair(5, 0)));
    EXPECT_EQ(peer.receive(5), "MSG 1");
}

TEST_F(Transfer, OfNothingReportsNothing) {
    EXPECT_TRUE(socket->SendData(""));
    EXPECT_THAT(socket.progress, IsEmpty());
    EXPECT_EQ(socket->State(), SocketState::Connected);
}

TEST_F(Transfer, KeepsWhatTheSystemDoesNotTakeAndSendsItLaterInOrder) {
    std::string all;
    // The other end does not read, so at some time the system takes no more.
    for (std::size_t size = 1;
         socket.progress.empty() || socket.progress.back().second < 4 * megabyte;
         size = size * 3 % 1000003) {
        const std::string bytes = pattern(size);
        EXPECT_TRUE(socket->SendData(bytes));
        all += bytes;
        ASSERT_EQ(socket.sent() + socket.progress.back().second, all.size());
    }
    std::string received;
    EXPECT_TRUE(loop.runUntil(
        [&] {
            received += peer.receiveNow();
            return received.size() >= all.size();
        },
        peer.handle()));
    EXPECT_TRUE(received == all);
    EXPECT_EQ(socket.sent(), all.size());
    EXPECT_EQ(socket.progress.back().second, 0U);
    EXPECT_TRUE(peer.isSilent());
}

TEST_F(Transfer, CanBeGoneOnWithAfterWaitingBytesHaveGone) {
    while (socket.progress.empty() || socket.progress.back().second == 0)
        EXPECT_TRUE(socket->SendData(pattern(megabyte)));
    const std::size_t first = socket.sent() + socket.progress.back().second;
    std::string received;
    ASSERT_TRUE(loop.runUntil(
        [&] {
            received += peer.receiveNow();
            return received.size() == first;
        },
        peer.handle()));
    socket.progress.clear();
    EXPECT_TRUE(socket->SendData("again"));
    EXPECT_THAT(socket.progress, ElementsAre(Pair(5, 0)));
    EXPECT_EQ(peer.receive(5), "again");
}

TEST_F(Transfer, EndsWithCloseWhichDropsWhatWaits) {
    while (socket.progress.empty() || socket.progress.back().second == 0)
        EXPECT_TRUE(socket->SendData(pattern(megabyte)));
    socket->Close();
    EXPECT_EQ(socket->State(), SocketState::Closed);
    EXPECT_THAT(socket.events, IsEmpty());
    EXPECT_EQ(peer.receiveToEnd().size(), socket.sent());
}

TEST_F(Transfer, PausesWhileReadingIsOff) {
    socket->SetReading(false);
    peer.send("one");
    waitUntilReadable();
    serveWhatIsDue();
    EXPECT_EQ(socket.received, "");
    socket->SetReading(true);
    ASSERT_TRUE(loop.runUntil([&] { return !socket.received.empty(); }));
    EXPECT_EQ(socket.received, "one");
}

TEST_F(Transfer, PausesFromWithinAnArrival) {
    socket->DataArrival = [&](std::size_t bytesTotal) {
        socket.arrivals.push_back(bytesTotal);
        socket->SetReading(false);
    };
    peer.send(std::string(200000, 'x'));
    ASSERT_TRUE(loop.runUntil([&] { return !socket.arrivals.empty(); }));
    waitUntilReadable();
    serveWhatIsDue();
    EXPECT_THAT(socket.arrivals, SizeIs(1));
    socket->SetReading(true);
    EXPECT_TRUE(loop.runUntil([&] { return socket.arrivals.size() == 2; }));
}

TEST_F(Transfer, MakesTheOtherEndWaitWhileReadingIsOff) {
    socket->SetReading(false);
    const std::size_t sent = sendUntilFull(peer);
    serveWhatIsDue();
    EXPECT_EQ(socket.received, "");
    EXPECT_LE(sendUntilFull(peer), sent);
    socket->SetReading(true);
    ASSERT_TRUE(loop.runUntil([&] { return socket.received.size() >= sent; }));
}

TEST_F(Transfer, GoesOnInTheOtherDirectionWhileReadingIsOff) {
    socket->SetReading(false);
    EXPECT_TRUE(socket->SendData("out"));
    EXPECT_EQ(peer.receive(3), "out");
}

TEST_F(Transfer, IsReadAgainOnTheNextConnection) {
    socket->SetReading(false);
    socket->Close();
    Server server;
    EXPECT_TRUE(socket->Connect("127.0.0.1", server.port()));
    Peer next = server.accept();
    next.send("hello");
    ASSERT_TRUE(loop.runUntil([&] { return !socket.received.empty(); }));
    EXPECT_EQ(socket.received, "hello");
}

}  // namespace
