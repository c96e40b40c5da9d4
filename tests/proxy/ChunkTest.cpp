#include "stores/options.h"
#include "tests/support/Spine.h"
#include "tests/support/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <random>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

class Chunk : public testing::Test {
protected:
    Spine spine;

    Chunk() {
        spine.relay();
        spine.windows.captions.clear();
    }
    [[nodiscard]] const std::string& tranID() const { return spine.host.values.tranID; }
};

TEST_F(Chunk, OfTheFirstCommandPassesAndIsLearnedFrom) {
    spine.client().arrive("VER 1 MSNP9 MSNP8 CVR0\r\n");
    EXPECT_THAT(spine.server().sent, ElementsAre("VER 1 MSNP9 MSNP8 CVR0\r\n"));
    EXPECT_EQ(tranID(), "1");
    EXPECT_EQ(spine.instance().record().protocolVersion, "9");
}

TEST_F(Chunk, IsFilteredByTheSettingsThatItHasMetFirst) {
    const auto status = [this] { return textOf(spine.settings, options::initialStatus); };
    SettingsStore other(spine.facilities.folder.path() / "settings.db", [](std::string_view) {});
    std::vector<std::string> seen;
    // Called early in a chunk of this command and at its end.
    spine.host.windows.changetraycaption = [&](std::string&) {
        seen.push_back(status());
        other.WriteSetting("Options", "initialStatus", seen.size() == 1 ? "Away" : "Busy");
    };
    spine.client().arrive("CHG 5 NLN 0\r\n");
    EXPECT_THAT(seen, ElementsAre("Online", "Online"));
    EXPECT_EQ(status(), "Busy");
}

TEST_F(Chunk, OfASingleWordLeavesTheTransactionNumber) {
    spine.client().arrive("VER 1 MSNP9 CVR0\r\n");
    spine.client().arrive("PNG\r\n");
    EXPECT_EQ(tranID(), "1");
}

TEST_F(Chunk, OfTwoWordsGivesItsNumberWithTheLineEnd) {
    spine.client().arrive("SYN 5\r\n");
    EXPECT_EQ(tranID(), "5\r\n");
}

TEST_F(Chunk, FromTheServerLeavesTheTransactionNumber) {
    spine.client().arrive("SYN 5 0\r\n");
    spine.server().arrive("SYN 7 0\r\n");
    EXPECT_EQ(tranID(), "5");
}

TEST_F(Chunk, OfAnyConnectionGivesTheTransactionNumber) {
    spine.relay();
    spine.client(1).arrive("SYN 5 0\r\n");
    spine.client(2).arrive("CAL 2 bob@example.com\r\n");
    EXPECT_EQ(tranID(), "2");
}

TEST_F(Chunk, InSmallLettersIsNoCommand) {
    spine.client().arrive("ver 1 MSNP9\r\n");
    spine.client().arrive("chg 1 NLN\r\n");
    EXPECT_EQ(spine.instance().record().protocolVersion, "");
    EXPECT_EQ(spine.host.values.serverID, 0);
}

TEST_F(Chunk, IsOneCommandHoweverManyItHolds) {
    spine.client().arrive("PNG\r\nCHG 9 NLN 0\r\n");
    EXPECT_THAT(spine.server().sent, ElementsAre("PNG\r\nCHG 9 NLN 0\r\n"));
    EXPECT_EQ(spine.host.values.serverID, 0);
}

TEST_F(Chunk, OfHalfACommandIsSentOnAsItComes) {
    spine.client().arrive("CHG 9 N");
    spine.client().arrive("LN 0\r\n");
    EXPECT_THAT(spine.server().sent, ElementsAre("CHG 9 N", "LN 0\r\n"));
}

TEST_F(Chunk, ThatCannotBeSentIsLostAndTheNextIsTreatedAfresh) {
    spine.server().sendFails = true;
    spine.client().arrive("SYN 5 0\r\n");
    spine.server().sendFails = false;
    spine.client().arrive("SYN 6 0\r\n");
    EXPECT_THAT(spine.server().sent, ElementsAre("SYN 6 0\r\n"));
    EXPECT_THAT(spine.windows.captions, ElementsAre("SYN", "SYN"));
}

/// A clock that has no memory for the time.
struct BrokenClock final : Clock {
    [[nodiscard]] std::string timeText() override { throw std::bad_alloc(); }
    [[nodiscard]] std::string dateText() override { throw std::bad_alloc(); }
};

TEST(BrokenChunk, IsLostAndTheNextIsTreatedAfresh) {
    FakeFacilities facilities;
    BrokenClock clock;
    FakeNetwork network;
    FakeLoop loop;
    FakeMessageBox boxes;
    frmMain host(
        network, loop, boxes,
        {facilities.settings, facilities.machine, clock, facilities.chance, facilities.registry,
         facilities.player, facilities.browser, facilities.notes, facilities.commandLine});
    network.sockets.at(0)->peeked = Spine::socksRequest;
    network.sockets.at(0)->ConnectionRequest(1);
    FakeWinsock& client = *network.sockets.at(1);
    FakeWinsock& server = *network.sockets.at(2);
    client.arrive(Spine::socksRequest);
    server.succeedConnecting();
    EXPECT_THROW(client.arrive(clientText("<t>")), std::bad_alloc);
    client.arrive("PNG\r\n");
    EXPECT_THAT(server.sent, ElementsAre("PNG\r\n"));
    // The instance can be destroyed once it has ended: no event of it counts as running.
    EXPECT_FALSE(host.instances().at(1)->isInEvent());
}

TEST_F(Chunk, BeforeTheSignInGivesTheTrayItsFirstThreeCharacters) {
    spine.client().arrive("USR 6 TWN I ann@example.com\r\n");
    spine.server().arrive("XFR 3 NS\r\n");
    spine.server().arrive("OK");
    EXPECT_THAT(spine.windows.captions, ElementsAre("USR", "XFR", "OK"));
}

TEST_F(Chunk, AfterTheSignInGivesTheTrayTheNameOfTheProgram) {
    spine.client().arrive("CHG 9 NLN 0\r\n");
    spine.server().arrive("USR 6 OK ann@example.com Ann\r\n");
    EXPECT_THAT(spine.windows.captions,
                ElementsAre("Cobweave - Logged In", "Cobweave", "Cobweave"));
}

TEST_F(Chunk, ThatIsAFrameOrARequestGivesTheTrayNothing) {
    spine.client().arrive("*\x02\x11\x22\x00\x02xx"s);
    spine.client().arrive("\x04\x01\x00\x50\x7F\x00\x00\x01"s);
    EXPECT_THAT(spine.windows.captions, IsEmpty());
}

TEST_F(Chunk, OfAnyBytesPassesUnchangedUnlessARuleApplies) {
    std::mt19937 random(1863);
    std::uniform_int_distribution<int> anyByte(0, 255);
    std::uniform_int_distribution<std::size_t> anyLength(2, 3000);
    for (int round = 0; round < 500; ++round) {
        std::string bytes(anyLength(random), '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(anyByte(random));
        bytes[0] = '#';  // none of the heads that a rule knows
        FakeWinsock& from = round % 2 == 0 ? spine.client() : spine.server();
        FakeWinsock& to = round % 2 == 0 ? spine.server() : spine.client();
        to.sent.clear();
        from.arrive(bytes);
        ASSERT_THAT(to.sent, ElementsAre(bytes)) << round;
    }
}

}  // namespace
