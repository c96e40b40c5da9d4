#include "tests/support/Peer.h"
#include "tests/support/Spine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using namespace std::string_literals;

/// For 10.1.2.3 port 1863.
const std::string request = "\x04\x01\x07\x47\x0A\x01\x02\x03"s;

class Socks : public testing::Test {
protected:
    Spine spine;

    Socks() { spine.request(); }
};

TEST_F(Socks, ARequestOpensTheServerSideItNames) {
    spine.client().arrive(request + "ann\0"s);
    EXPECT_THAT(spine.server().connects, ElementsAre(Pair("10.1.2.3", 1863)));
    EXPECT_THAT(spine.client().sent, IsEmpty());
    EXPECT_FALSE(spine.watch().enabled);
}

TEST_F(Socks, TheReplyGoesOutWhenTheServerSideHasConnected) {
    spine.client().arrive(request);
    spine.server().succeedConnecting();
    EXPECT_THAT(spine.client().sent, ElementsAre("\x04\x5A\x07\x47\x0A\x01\x02\x03"s));
    EXPECT_TRUE(spine.watch().enabled);
    EXPECT_EQ(spine.watch().interval.count(), 100);
}

TEST_F(Socks, TheBytesBehindTheEighthAreNeverLookedAt) {
    spine.client().arrive(request + "\x04\x01*ODC2 anything"s);
    EXPECT_THAT(spine.server().connects, ElementsAre(Pair("10.1.2.3", 1863)));
    spine.server().succeedConnecting();
    EXPECT_THAT(spine.client().sent, ElementsAre("\x04\x5A\x07\x47\x0A\x01\x02\x03"s));
    EXPECT_THAT(spine.server().sent, IsEmpty());
}

TEST_F(Socks, ARequestInTwoPiecesIsActedOnWithTheBytesThatAreThere) {
    spine.client().arrive(request.substr(0, 2));
    EXPECT_THAT(spine.server().connects, ElementsAre(Pair("", 0)));
}

TEST_F(Socks, TheRestOfACutRequestPassesAsProtocolText) {
    spine.relay();
    spine.client(2).arrive(request.substr(0, 2));
    spine.client(2).arrive(request.substr(2));
    EXPECT_THAT(spine.server(2).sent, ElementsAre(request.substr(2)));
}

TEST_F(Socks, AnAddressThatIsCutOffStaysAsItWas) {
    spine.client().arrive(request.substr(0, 7));
    EXPECT_THAT(spine.server().connects, ElementsAre(Pair("", 1863)));
}

TEST_F(Socks, APortOf32767Fits) {
    spine.client().arrive("\x04\x01\x7F\xFF\x0A\x01\x02\x03"s);
    EXPECT_THAT(spine.server().connects, ElementsAre(Pair("10.1.2.3", 32767)));
}

TEST_F(Socks, APortOf32768OrMoreStaysAsItWas) {
    spine.client().arrive("\x04\x01\x80\x00\x0A\x01\x02\x03"s);
    EXPECT_THAT(spine.server().connects, ElementsAre(Pair("10.1.2.3", 0)));
}

TEST_F(Socks, APortOf32768OrMoreInASecondRequestLeavesTheFirstOne) {
    spine.client().arrive(request);
    spine.client().arrive("\x04\x01\x80\x00\x0A\x04\x05\x06"s);
    EXPECT_THAT(spine.server().connects,
                ElementsAre(Pair("10.1.2.3", 1863), Pair("10.4.5.6", 1863)));
}

TEST_F(Socks, ASecondRequestThatIsCutOffLeavesTheFirstAddress) {
    spine.client().arrive(request);
    spine.client().arrive("\x04\x01\x00\x50\x0A"s);
    EXPECT_THAT(spine.server().connects, ElementsAre(Pair("10.1.2.3", 1863), Pair("10.1.2.3", 80)));
}

TEST_F(Socks, ASecondRequestIsDroppedWithItsText) {
    spine.client().arrive(request);
    spine.server().succeedConnecting();
    spine.client().sent.clear();
    spine.client().arrive("\x04\x01\x00\x50\x7F\x00\x00\x01"s);
    EXPECT_EQ(spine.server().state, SocketState::Connected);
    EXPECT_THAT(spine.server().sent, IsEmpty());
    EXPECT_THAT(spine.client().sent, IsEmpty());
}

TEST_F(Socks, ARequestFromTheServerSideIsTakenForOneToo) {
    spine.relay();
    spine.server(2).arrive("\x04\x01\x00\x50\x7F\x00\x00\x01"s);
    EXPECT_THAT(spine.server(2).connects,
                ElementsAre(Pair("10.1.2.3", 1863), Pair("127.0.0.1", 80)));
    EXPECT_THAT(spine.client(2).sent, IsEmpty());
}

TEST_F(Socks, NothingHappensWhenTheServerSideCannotBeReached) {
    spine.client().arrive(request);
    spine.server().state = SocketState::Error;
    spine.server().ConnectionLost();
    spine.watch().pass();
    EXPECT_THAT(spine.client().sent, IsEmpty());
    EXPECT_EQ(spine.client().state, SocketState::Connected);
    EXPECT_EQ(spine.host.instances().size(), 1U);
}

TEST_F(Socks, ASlotWhoseServerCannotBeReachedIsGivenBackWhenTheClientCloses) {
    spine.client().arrive(request);
    spine.server().lose();
    EXPECT_EQ(spine.host.instances().size(), 1U);
    spine.client().lose();
    EXPECT_THAT(spine.host.instances(), IsEmpty());
}

TEST_F(Socks, ASlotOfAClientThatHasClosedIsGivenBackWhenTheServerCannotBeReached) {
    spine.client().arrive(request);
    spine.client().lose();
    EXPECT_EQ(spine.host.instances().size(), 1U);
    spine.server().lose();
    EXPECT_THAT(spine.host.instances(), IsEmpty());
}

TEST_F(Socks, AServerThatCannotBeReachedIsReportedOnce) {
    for (std::size_t count = 1; count <= 3; ++count) {
        spine.client(count).arrive(request);
        spine.server(count).lose();
        spine.request();
    }
    EXPECT_THAT(spine.windows.toasts,
                ElementsAre("The server 10.1.2.3, port 1863 could not be reached."));
}

TEST_F(Socks, AServerThatCannotEvenBeTriedIsReportedByWhatTheClientAskedFor) {
    spine.server().refuses = true;
    spine.client().arrive("\x04\x01\x9C\x40\x0A\x01\x02\x03"s);
    EXPECT_THAT(spine.windows.toasts,
                ElementsAre("The server 10.1.2.3, port 40000 could not be reached."));
}

TEST_F(Socks, NeitherAServerThatClosesNorASecondRequestIsReported) {
    spine.client().arrive(request);
    spine.server().succeedConnecting();
    spine.client().arrive("\x04\x01\x00\x50\x7F\x00\x00\x01"s);
    spine.server().lose();
    EXPECT_THAT(spine.windows.toasts, IsEmpty());
}

TEST_F(Socks, OfTheServersThatCannotBeReachedSixtyFourAreRemembered) {
    const auto fail = [this](std::size_t count) {
        spine.client(count).arrive("\x04\x01\x07\x47\x0A\x01\x02"s + static_cast<char>(count));
        spine.server(count).lose();
        spine.request();
    };
    for (std::size_t count = 1; count <= 65; ++count)
        fail(count);
    EXPECT_EQ(spine.windows.toasts.size(), 65U);
    spine.client(66).arrive("\x04\x01\x07\x47\x0A\x01\x02\x02"s);
    spine.server(66).lose();
    EXPECT_EQ(spine.windows.toasts.size(), 65U);
}

TEST_F(Socks, AClientThatClosesEarlyIsSeenOnceTheServerSideHasConnected) {
    spine.client().arrive(request);
    spine.client().lose();
    spine.watch().pass();
    EXPECT_EQ(spine.host.instances().size(), 1U);
    spine.server().succeedConnecting();
    spine.watch().pass();
    EXPECT_THAT(spine.host.instances(), IsEmpty());
}

TEST_F(Socks, TheWatchIsArmedEvenWhenTheReplyFails) {
    spine.client().arrive(request);
    spine.client().sendFails = true;
    spine.server().succeedConnecting();
    EXPECT_TRUE(spine.watch().enabled);
}

TEST_F(Socks, TheConnectEventOfTheClientSideDoesNothing) {
    spine.client().Connected();
    EXPECT_FALSE(spine.watch().enabled);
    EXPECT_THAT(spine.client().sent, IsEmpty());
}

TEST(Watch, RestsWhileBothSidesAreConnected) {
    Spine spine;
    spine.relay();
    EXPECT_TRUE(spine.watch().enabled);
    EXPECT_TRUE(spine.watch().resting);
    spine.watch().wake();
    spine.watch().pass();
    EXPECT_TRUE(spine.watch().resting);
    EXPECT_EQ(spine.host.instances().size(), 1U);
}

class WatchedSide : public testing::TestWithParam<bool> {};

TEST_P(WatchedSide, EndsThePairAtOnceWhereNothingIsUnderWay) {
    Spine spine;
    spine.relay();
    (GetParam() ? spine.client() : spine.server()).lose();
    EXPECT_EQ((GetParam() ? spine.server() : spine.client()).state, SocketState::Closed);
    EXPECT_THAT(spine.host.instances(), IsEmpty());
    EXPECT_FALSE(spine.watch().enabled);
}

TEST_P(WatchedSide, EndsThePairAtTheNextTickWhereBytesAreUnderWay) {
    Spine spine;
    spine.relay();
    spine.watch().pass();
    FakeWinsock& lost = GetParam() ? spine.client() : spine.server();
    FakeWinsock& other = GetParam() ? spine.server() : spine.client();
    other.busy = true;
    lost.lose();
    EXPECT_EQ(other.state, SocketState::Connected);
    spine.watch().pass();
    EXPECT_EQ(other.state, SocketState::Closed);
    EXPECT_THAT(spine.host.instances(), IsEmpty());
    EXPECT_FALSE(spine.watch().enabled);
}

INSTANTIATE_TEST_SUITE_P(Sides, WatchedSide, testing::Values(true, false),
                         [](const auto& info) { return info.param ? "client" : "server"; });

TEST(Watch, EndsAPairThatASendFindsLostAtTheNextTick) {
    Spine spine;
    spine.relay();
    spine.client().arrive("CHG 9 NLN 0\r\n");
    spine.windows.captions.clear();
    spine.server().losesSends = true;
    spine.client().arrive("PNG\r\n");
    // The chunk's event runs to its end first.
    EXPECT_THAT(spine.windows.captions, ElementsAre("Cobweave"));
    EXPECT_EQ(spine.host.values.serverID, 1);
    spine.watch().pass();
    EXPECT_EQ(spine.host.values.serverID, 0);
}

TEST(IntegerToBase256, GivesTheMostSignificantByteFirst) {
    EXPECT_EQ(MSNProxy::IntegerToBase256(1863), "\x07\x47");
    EXPECT_EQ(MSNProxy::IntegerToBase256(0), "\0\0"s);
    EXPECT_EQ(MSNProxy::IntegerToBase256(32767), "\x7F\xFF");
}

TEST(IntegerToBase256, FailsBelowZeroAndAboveTwoBytes) {
    EXPECT_THROW((void)MSNProxy::IntegerToBase256(-1), Failure);
    EXPECT_THROW((void)MSNProxy::IntegerToBase256(65536), Failure);
}

}  // namespace
