#include "tests/support/Spine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

std::string frame(const std::string& payload) {
    return "*\x02\x11\x22"s + static_cast<char>(payload.size() / 256) +
           static_cast<char>(payload.size() % 256) + payload;
}

/// Both sides take the same path; what one receives goes to the other.
class Frames : public testing::TestWithParam<bool> {
protected:
    Spine spine;

    Frames() { spine.relay(); }
    void arrive(const std::string& bytes) {
        (GetParam() ? spine.client() : spine.server()).arrive(bytes);
    }
    std::vector<std::string>& forwarded() {
        return (GetParam() ? spine.server() : spine.client()).sent;
    }
};

INSTANTIATE_TEST_SUITE_P(Sides, Frames, testing::Values(true, false),
                         [](const auto& info) { return info.param ? "client" : "server"; });

TEST_P(Frames, AWholeFrameVanishes) {
    arrive(frame("payload"));
    EXPECT_THAT(forwarded(), IsEmpty());
    arrive("QNG 50\r\n");
    EXPECT_THAT(forwarded(), ElementsAre("QNG 50\r\n"));
}

TEST_P(Frames, AnUnfinishedFrameWaitsAndVanishesWithItsPayload) {
    const std::string whole = frame("payload");
    arrive(whole.substr(0, 6));
    arrive(whole.substr(6, 3));
    arrive(whole.substr(9));
    arrive("QNG 50\r\n");
    EXPECT_THAT(forwarded(), ElementsAre("QNG 50\r\n"));
}

TEST_P(Frames, ACommandOfSixCharactersBehindAFrameIsTreatedAtOnce) {
    arrive(frame("payload") + "QNG 50");
    EXPECT_THAT(forwarded(), ElementsAre("QNG 50"));
}

TEST_P(Frames, FewerThanSixCharactersBehindAFrameWaitForTheNextRead) {
    arrive(frame("payload") + "PNG\r\n");
    EXPECT_THAT(forwarded(), IsEmpty());
    arrive("QNG 50\r\n");
    EXPECT_THAT(forwarded(), ElementsAre("PNG\r\nQNG 50\r\n"));
}

TEST_P(Frames, SeveralFramesInOneReadVanishTogether) {
    arrive(frame("one") + frame("") + frame("three") + "QNG 50\r\n");
    EXPECT_THAT(forwarded(), ElementsAre("QNG 50\r\n"));
}

TEST_P(Frames, AMillionOfThemInOneReadCostNoMoreThanTheirNumber) {
    // With a cost that grew with the square this would take hours.
    std::string many;
    for (int count = 0; count < 1000000; ++count)
        many += frame("");
    arrive(many + "QNG 50\r\n");
    EXPECT_THAT(forwarded(), ElementsAre("QNG 50\r\n"));
}

TEST_P(Frames, AChannelAboveFiveIsNoFrame) {
    arrive("*\x05\0\0\0\0"s);
    EXPECT_THAT(forwarded(), IsEmpty());
    arrive("*\x06\0\0\0\0"s);
    EXPECT_THAT(forwarded(), ElementsAre("*\x06\0\0\0\0"s));
}

TEST_P(Frames, TheLongestFrameIs32773Characters) {
    const std::string whole = frame(std::string(32767, 'x'));
    arrive(whole.substr(0, 32772));
    arrive(whole.substr(32772) + "QNG 50\r\n");
    EXPECT_THAT(forwarded(), ElementsAre("QNG 50\r\n"));
}

TEST_P(Frames, AHeadWithoutItsLengthBytesIsTakenForAFrameOfSix) {
    arrive("*\x02"s);
    arrive("\x11\x22\xFF\xFF"s);
    arrive("QNG 50\r\n");
    EXPECT_THAT(forwarded(), ElementsAre("QNG 50\r\n"));
}

TEST_P(Frames, ASingleCharacterWaitsForTheNextRead) {
    arrive("Q");
    EXPECT_THAT(forwarded(), IsEmpty());
    arrive("NG 50\r\n");
    EXPECT_THAT(forwarded(), ElementsAre("QNG 50\r\n"));
}

TEST_P(Frames, AfterASingleCharacterTheNextFrameIsTakenForOneOfSix) {
    arrive("Q");
    arrive("NG 50\r\n");
    arrive(frame("QNG 51\r\n"));
    arrive(frame("gone"));
    EXPECT_THAT(forwarded(), ElementsAre("QNG 50\r\n", "QNG 51\r\n"));
}

TEST_P(Frames, ALengthThatMakesNoSenseBlocksThisSideForGood) {
    arrive("*\x02\x11\x22\x80\x00QNG 50\r\n"s);
    arrive("QNG 51\r\n");
    arrive(std::string(100000, 'x'));
    EXPECT_THAT(forwarded(), IsEmpty());
}

TEST_P(Frames, ABlockedSideLeavesTheOtherSideAndOtherConnectionsAlone) {
    arrive("*\x02\x11\x22\x80\x00"s);
    (GetParam() ? spine.server() : spine.client()).arrive("PNG\r\n");
    EXPECT_THAT((GetParam() ? spine.client() : spine.server()).sent, ElementsAre("PNG\r\n"));
    spine.relay();
    spine.client(2).arrive("QNG 50\r\n");
    EXPECT_THAT(spine.server(2).sent, ElementsAre("QNG 50\r\n"));
}

TEST_P(Frames, ABlockedInstanceEndsThroughItsWatch) {
    arrive("*\x02\x11\x22\xFF\xFF"s);
    (GetParam() ? spine.client() : spine.server()).lose();
    spine.watch().pass();
    EXPECT_THAT(spine.host.instances(), IsEmpty());
}

/// A direct-connection header of the foreign protocol with a name of 16 characters in it.
std::string directConnect(const std::string& name, char first = '\x01', char second = '\x01') {
    std::string header(76, '\x01');
    header.replace(0, 4, "ODC2");
    header.replace(28, 2, 2, '\0');
    header[30] = first;
    header[31] = second;
    std::string field = name;
    field.resize(16, '\0');
    header.replace(44, 16, field);
    return header;
}

class DirectConnect : public testing::Test {
protected:
    Spine spine;

    DirectConnect() {
        spine.relay();
        spine.server().arrive(directConnect("anna"));
        spine.client().sent.clear();
    }
};

TEST_F(DirectConnect, FromTheServerPasses) {
    spine.server().arrive(directConnect("bob"));
    EXPECT_THAT(spine.client().sent, ElementsAre(directConnect("bob")));
}

TEST_F(DirectConnect, OfExactly30000WaitingBytesPasses) {
    spine.client().SendProgress(10, 30000);
    spine.client().arrive(directConnect("anna"));
    EXPECT_THAT(spine.server().sent, ElementsAre(directConnect("anna")));
}

TEST_F(DirectConnect, OfMoreThan30000WaitingBytesIsDropped) {
    spine.server().SendProgress(10, 30001);
    spine.client().arrive(directConnect("anna"));
    EXPECT_THAT(spine.server().sent, IsEmpty());
    spine.client().arrive("QNG 50\r\n");
    EXPECT_THAT(spine.server().sent, ElementsAre("QNG 50\r\n"));
}

TEST_F(DirectConnect, BeforeAnyProgressReportIsDropped) {
    spine.client().arrive(directConnect("anna"));
    EXPECT_THAT(spine.server().sent, IsEmpty());
}

TEST_F(DirectConnect, TheLastReportOfEitherSideCounts) {
    spine.server().SendProgress(10, 30001);
    spine.client().SendProgress(10, 0);
    spine.client().arrive(directConnect("anna"));
    EXPECT_THAT(spine.server().sent, ElementsAre(directConnect("anna")));
}

TEST_F(DirectConnect, IsOneOfTheDroppedKindUpToEight) {
    spine.server().SendProgress(10, 30001);
    spine.client().arrive(directConnect("anna", '\x08', '\xFF'));
    spine.client().arrive(directConnect("anna", '\x09', '\xFF'));
    EXPECT_THAT(spine.server().sent, ElementsAre(directConnect("anna", '\x09', '\xFF')));
}

TEST_F(DirectConnect, PassesWhileTheServerHasNamedNobody) {
    spine.relay();
    spine.server(2).arrive(directConnect(""));
    spine.client(2).arrive(directConnect("anna"));
    EXPECT_THAT(spine.server(2).sent, ElementsAre(directConnect("anna")));
}

TEST_F(DirectConnect, ThatIsNotOneOfTheDroppedKindPasses) {
    const std::string high = directConnect("anna", '\x09');
    const std::string zero = directConnect("anna", '\x01', '\0');
    std::string named = directConnect("anna");
    named[28] = 'x';
    for (const std::string& text : {high, zero, named})
        spine.client().arrive(text);
    EXPECT_THAT(spine.server().sent, ElementsAre(high, zero, named));
}

TEST_F(DirectConnect, ThatIsTooShortToBeReadCountsAsOneOfTheDroppedKind) {
    spine.client().arrive("ODC2 and no more");
    EXPECT_THAT(spine.server().sent, IsEmpty());
}

TEST_F(DirectConnect, GivesTheLoopATurnForEachCode) {
    spine.loop.turns = 0;
    spine.client().arrive(directConnect("anna"));
    EXPECT_EQ(spine.loop.turns, 2);
}

TEST_F(DirectConnect, AnInstanceThatEndsDuringTheTurnIsDestroyedAfterItsEvent) {
    spine.loop.duringTurn = [this] {
        spine.server().lose();
        spine.watch().pass();
    };
    spine.client().arrive(directConnect("anna"));
    EXPECT_THAT(spine.host.instances(), IsEmpty());
    EXPECT_THAT(spine.server().sent, IsEmpty());
    spine.relay();
    spine.client(2).arrive("QNG 50\r\n");
    EXPECT_THAT(spine.server(2).sent, ElementsAre("QNG 50\r\n"));
}

TEST_F(DirectConnect, AReadDuringTheTurnTakesTheWaitingTextAlong) {
    spine.client().SendProgress(1, 0);
    spine.loop.duringTurn = [this] { spine.client().arrive("more"); };
    spine.client().arrive(directConnect("anna"));
    EXPECT_THAT(spine.server().sent, ElementsAre(directConnect("anna") + "more", ""));
}

TEST(Backlog, OfAQuarterOfAMebibyteMakesTheOtherSideWait) {
    constexpr std::size_t quarter = 256 * std::size_t{1024};
    Spine spine;
    spine.relay();
    spine.client().SendProgress(1, quarter);
    EXPECT_TRUE(spine.server().reading);
    spine.client().SendProgress(1, quarter + 1);
    EXPECT_FALSE(spine.server().reading);
    EXPECT_TRUE(spine.client().reading);
    spine.client().SendProgress(1, quarter / 2);
    EXPECT_FALSE(spine.server().reading);
    spine.client().SendProgress(1, quarter / 2 - 1);
    EXPECT_TRUE(spine.server().reading);
}

}  // namespace
