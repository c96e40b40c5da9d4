#include "tests/support/Spine.h"
#include "tests/support/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::Values;

class ClientFilter : public testing::Test {
protected:
    Spine spine;

    ClientFilter() { spine.relay(); }
    void set(const std::string& key, const std::string& value) {
        spine.settings.WriteSetting("Options", key, value);
    }
    /// What the server is sent when the client sends `chunk` on connection `count`.
    std::string filtered(const std::string& chunk, std::size_t count = 1) {
        spine.client(count).arrive(chunk);
        return spine.server(count).sent.back();
    }
};

struct Dialect {
    std::string chunk;
    std::string protocolVersion;
};

class FirstDialect : public ClientFilter, public testing::WithParamInterface<Dialect> {};

TEST_P(FirstDialect, OfferedIsTheOneThatCounts) {
    EXPECT_EQ(filtered(GetParam().chunk), GetParam().chunk);
    EXPECT_EQ(spine.instance().record().protocolVersion, GetParam().protocolVersion);
}

INSTANTIATE_TEST_SUITE_P(Dialects, FirstDialect,
                         Values(Dialect{"VER 1 MSNP9 MSNP8 CVR0\r\n", "9"},
                                Dialect{"VER 1 MSNP10 MSNP9 CVR0\r\n", "10"},
                                Dialect{"VER 1 MSNP8 MSNP9 CVR0\r\n", ""},
                                Dialect{"VER 1 MSNP9\r\n", ""}, Dialect{"VER 1 msnp9 CVR0\r\n", ""},
                                Dialect{"VER 1\r\n", "10"}, Dialect{"VER", "10"}));

TEST_F(ClientFilter, AnotherDialectLeavesTheOneThatIsKnown) {
    filtered("VER 1 MSNP9 CVR0\r\n");
    filtered("VER 2 MSNP8 CVR0\r\n");
    EXPECT_EQ(spine.instance().record().protocolVersion, "9");
}

TEST_F(ClientFilter, PutsTheChosenStatusIntoTheFirstStatusCommand) {
    set("initialStatus", "Busy");
    EXPECT_EQ(filtered("CHG 9 NLN 0\r\n"), "CHG 9 BSY 0\r\n");
    EXPECT_EQ(spine.host.values.statusPostfix, "0\r\n");
    EXPECT_EQ(spine.host.values.serverID, 1);
    EXPECT_TRUE(spine.host.values.loggedin);
    EXPECT_TRUE(spine.instance().record().statusApplied);
}

TEST_F(ClientFilter, PutsTheChosenStatusInTheOfflineOnesPlaceToo) {
    set("initialStatus", "Appear Offline");
    EXPECT_EQ(filtered("CHG 9 FLN 0\r\n"), "CHG 9 HDN 0\r\n");
}

TEST_F(ClientFilter, WithoutAChosenStatusSignsInOnline) {
    EXPECT_EQ(filtered("CHG 9 NLN 0\r\n"), "CHG 9 NLN 0\r\n");
}

TEST_F(ClientFilter, WithoutAChosenStatusSignsInOnlineWhereTheClientHasOffline) {
    EXPECT_EQ(filtered("CHG 9 FLN 0\r\n"), "CHG 9 NLN 0\r\n");
}

TEST_F(ClientFilter, AnUnknownStatusIsOnline) {
    set("initialStatus", "busy");
    EXPECT_EQ(filtered("CHG 9 NLN 0\r\n"), "CHG 9 NLN 0\r\n");
}

TEST_F(ClientFilter, AFirstStatusOfAnotherKindPassesAsItCame) {
    set("initialStatus", "Busy");
    EXPECT_EQ(filtered("CHG 9 AWY 0\r\n"), "CHG 9 AWY 0\r\n");
    EXPECT_EQ(filtered("CHG 10 NLN 0\r\n"), "CHG 10 NLN 0\r\n");
}

TEST_F(ClientFilter, TheFirstOccurrenceTakesTheStatusWhereverItStands) {
    set("initialStatus", "Busy");
    EXPECT_EQ(filtered("CHG NLN NLN 0\r\n"), "CHG BSY NLN 0\r\n");
}

TEST_F(ClientFilter, BothWordsInOneChunkFillTheFirstPlaceAlone) {
    set("initialStatus", "Busy");
    EXPECT_EQ(filtered("CHG 9 NLN FLN\r\n"), "CHG 9 BSY {status}\r\n");
}

TEST_F(ClientFilter, LaterStatusCommandsPassUnchanged) {
    set("initialStatus", "Busy");
    filtered("CHG 9 NLN 0\r\n");
    EXPECT_EQ(filtered("CHG 10 NLN 0\r\n"), "CHG 10 NLN 0\r\n");
    EXPECT_EQ(spine.host.values.statusPostfix, "0\r\n");
}

TEST_F(ClientFilter, EveryStatusCommandNamesTheNotificationConnection) {
    spine.relay();
    filtered("CHG 9 NLN 0\r\n", 1);
    filtered("CHG 10 AWY 0\r\n", 2);
    EXPECT_EQ(spine.host.values.serverID, 2);
    filtered("CHG 11 NLN 0\r\n", 1);
    EXPECT_EQ(spine.host.values.serverID, 1);
}

TEST_F(ClientFilter, TheFirstStatusOfASecondSignInIsAFirstAgain) {
    set("initialStatus", "Busy");
    filtered("CHG 9 NLN 0\r\n", 1);
    spine.relay();
    EXPECT_EQ(filtered("CHG 9 NLN 268435500 x y\r\n", 2), "CHG 9 BSY 268435500 x y\r\n");
    EXPECT_EQ(spine.host.values.statusPostfix, "268435500");
}

TEST_F(ClientFilter, AStatusCommandOfFewWordsKeepsTheOldPostfix) {
    spine.host.values.statusPostfix = "0\r\n";
    EXPECT_EQ(filtered("CHG 9 NLN\r\n"), "CHG 9 NLN\r\n");
    EXPECT_EQ(spine.host.values.statusPostfix, "0\r\n");
}

TEST_F(ClientFilter, ACommandIsKnownByThreeCharactersAlone) {
    set("initialStatus", "Busy");
    EXPECT_EQ(filtered("CHGX 9 NLN 0\r\n"), "CHGX 9 BSY 0\r\n");
}

TEST_F(ClientFilter, AChangedSettingTakesEffectWithTheNextChunk) {
    spine.relay();
    set("initialStatus", "Busy");
    EXPECT_EQ(filtered("CHG 9 NLN 0\r\n", 1), "CHG 9 BSY 0\r\n");
    set("initialStatus", "Away");
    EXPECT_EQ(filtered("CHG 9 NLN 0\r\n", 2), "CHG 9 AWY 0\r\n");
}

const std::string typing =
    "MSG 12 U 88\r\nMIME-Version: 1.0\r\nContent-Type: text/x-msmsgscontrol\r\n"
    "TypingUser: ann@example.com\r\n\r\n\r\n";

std::string hidden(std::string message) {
    return message.replace(message.find("TypingUser:"), 11, "TypingUserx");
}

TEST_F(ClientFilter, HidesTypingNoticesWhenToldTo) {
    set("useristyping", "True");
    EXPECT_EQ(filtered(typing), hidden(typing));
    EXPECT_EQ(filtered(typing).size(), typing.size());
}

class OtherThanTrue : public ClientFilter, public testing::WithParamInterface<std::string> {};

TEST_P(OtherThanTrue, LeavesTypingNoticesAsTheyAre) {
    set("useristyping", GetParam());
    EXPECT_EQ(filtered(typing), typing);
}

INSTANTIATE_TEST_SUITE_P(Words, OtherThanTrue, Values("", "False", "true", "TRUE", "1", "True "));

TEST_F(ClientFilter, HidesTheFirstOccurrenceEvenInATextOfTheUser) {
    set("useristyping", "True");
    const std::string text = clientText("TypingUser: TypingUser:");
    EXPECT_EQ(filtered(text), hidden(text));
}

TEST_F(ClientFilter, LeavesPeerToPeerTrafficUntouched) {
    set("useristyping", "True");
    const std::string transfer =
        "MSG 12 N 140\r\nMIME-Version: 1.0\r\nContent-Type: application/x-msnmsgrp2p\r\n"
        "P2P-Dest: bob@example.com\r\n\r\nTypingUser:";
    EXPECT_EQ(filtered(transfer), transfer);
}

TEST_F(ClientFilter, TakesOnlyTheExactContentTypeForPeerToPeer) {
    set("useristyping", "True");
    const std::string transfer =
        "MSG 12 N 99\r\nMIME-Version: 1.0\r\nContent-Type: application/X-msnmsgrp2p\r\n"
        "P2P-Dest: bob@example.com\r\n\r\nTypingUser:";
    EXPECT_EQ(filtered(transfer), hidden(transfer));
}

TEST_F(ClientFilter, AMessageOfFewLinesIsTreatedAsOneForAConversation) {
    set("useristyping", "True");
    EXPECT_EQ(filtered("MSG 12 U 16\r\nTypingUser: ann@"), "MSG 12 U 16\r\nTypingUserx ann@");
}

TEST_F(ClientFilter, HidesNothingInOtherCommands) {
    set("useristyping", "True");
    EXPECT_EQ(filtered("UUX 12 TypingUser: 0\r\n"), "UUX 12 TypingUser: 0\r\n");
}

TEST_F(ClientFilter, HidesNothingOfWhatTheServerSends) {
    set("useristyping", "True");
    spine.server().arrive(typing);
    EXPECT_THAT(spine.client().sent, ElementsAre(typing));
}

}  // namespace
