#include "stores/mdlEncode.h"
#include "tests/conversation/Talk.h"

namespace {

using testing::ElementsAre;
using testing::Values;

class ServerFilter : public Talk {
protected:
    void passes(const std::string& chunk) {
        EXPECT_THAT(toClient(chunk), ElementsAre(Bytes(chunk)));
    }
    const ConnectionRecord& record() { return spine.instance().record(); }
    ProcessValues& values() { return spine.host.values; }
    std::string stored(const std::string& contact) {
        return spine.settings.ReadSetting("lastthingusersaid", contact);
    }
    void expectContact(const std::string& email, const std::string& nick) {
        EXPECT_EQ(record().contactEmail, email);
        EXPECT_EQ(record().contactNick, nick);
    }
};

TEST_F(ServerFilter, LearnsTheNickNameFromTheContactList) {
    passes("PRP MFN Ann%20Lee\r\n");
    EXPECT_EQ(values().nickname, "Ann Lee");
}

TEST_F(ServerFilter, ReadsTheWordOfAnAnsweredNickChangeAsTheNickName) {
    passes("PRP 12 MFN Ann%20Lee\r\n");
    EXPECT_EQ(values().nickname, "MFN");
}

TEST_F(ServerFilter, KeepsTheNickNameWithoutAThirdWordInTheFirstLine) {
    values().nickname = "Ann";
    passes("PRP MFN\r\nPRP MFN x\r\n");
    EXPECT_EQ(values().nickname, "Ann");
    passes("PRP MFN " + std::string(40000, 'x') + "\r\n");
    EXPECT_EQ(values().nickname, "Ann");
}

TEST_F(ServerFilter, ReadsAnEmptyNickName) {
    values().nickname = "Ann";
    passes("PRP MFN \r\n");
    EXPECT_EQ(values().nickname, "");
}

TEST_F(ServerFilter, RecordsTheContactWhoJoins) {
    passes("JOI bob@example.com Bob%20B\r\n");
    expectContact("bob@example.com", "Bob%20B");
}

TEST_F(ServerFilter, RecordsTheSecondContactInPlaceOfTheFirst) {
    set("alertclosewindow", "True");
    passes("JOI bob@example.com Bob\r\n");
    passes("JOI cem@example.com Cem\r\n");
    expectContact("cem@example.com", "Cem");
    EXPECT_EQ(toClient("BYE dan@example.com\r\n").front(),
              spoken("dan@example.com has left your conversation window.", "ff", "",
                     "cem@example.com Cem"));
}

TEST_F(ServerFilter, KeepsWhatAJoinDoesNotName) {
    passes("JOI bob@example.com Bob\r\n");
    passes("JOI cem@example.com\r\n");
    expectContact("cem@example.com", "Bob");
    passes("JOI");
    expectContact("cem@example.com", "Bob");
}

TEST_F(ServerFilter, TakesEveryLineEndOutOfWhatItRecords) {
    passes("JOI bob@example.com\r\nJOI x\r\ny\r\n z");
    expectContact("bob@example.comJOI", "xy");
    passes("IRO 1 1 1 b\r\nob Bob\r\n");
    EXPECT_EQ(record().contactEmail, "bob");
}

TEST_F(ServerFilter, TreatsACommandByItsFirstThreeCharacters) {
    passes("JOIN x y\r\n");
    expectContact("x", "y");
    passes("JOI.a b\r\n");
    expectContact("b", "y");
}

TEST_F(ServerFilter, RecordsContactsWhoAreThere) {
    passes("IRO 1 1 2 bob@example.com Bob%20B\r\n");
    expectContact("bob@example.com", "Bob%20B");
    passes("IRO 1 2 2 cem@example.com Cem\r\nANS 1 OK\r\n");
    expectContact("cem@example.com", "Cem");
}

TEST_F(ServerFilter, TakesTheNickOfAContactWhoIsThereFromTheFirstLineAlone) {
    passes("IRO 1 1 1 bob@example.com Bob\r\n");
    passes("IRO 1 1 1 cem@example.com\r\nANS 1 OK\r\n");
    expectContact("cem@example.comANS", "Bob");
}

TEST_F(ServerFilter, KeepsContactsOfEachConnectionApart) {
    spine.relay();
    (void)toClient("JOI bob@example.com Bob\r\n", 1);
    (void)toClient("JOI cem@example.com Cem\r\n", 2);
    expectContact("bob@example.com", "Bob");
    EXPECT_EQ(spine.instance(2).record().contactEmail, "cem@example.com");
}

TEST_F(ServerFilter, LearnsTheAddressOfTheAccount) {
    passes("USR 3 TWN S ct=1\r\n");
    EXPECT_EQ(values().email, "S");
    passes("USR 4 OK ann@example.com Ann 1 0\r\n");
    EXPECT_EQ(values().email, "ann@example.com");
    passes("USR 5 OK\r\n");
    EXPECT_EQ(values().email, "ann@example.com");
}

TEST_F(ServerFilter, LearnsTheAddressFromASwitchboardAgain) {
    spine.relay();
    (void)toClient("USR 4 OK ann@example.com Ann 1 0\r\n", 1);
    (void)toClient("USR 1 OK ann@example.com Ann\r\n", 2);
    EXPECT_EQ(values().email, "ann@example.com");
}

TEST_F(ServerFilter, LearnsTheAddressWithWhatStandsUpToTheNextBlank) {
    passes("USR 4 OK ann@example.com\r\nMSG Hotmail Hotmail 5\r\n12345");
    EXPECT_EQ(values().email, "ann@example.com\r\nMSG");
}

class Untreated : public ServerFilter, public testing::WithParamInterface<std::string> {};

TEST_P(Untreated, PassesUnchangedAndTeachesNothing) {
    for (const auto* const key : {"alertjoinwindow", "alertopenwindow", "alertclosewindow",
                                  "alertoffline", "lastthing", "timestamp"})
        set(key, "True");
    passes(GetParam());
    expectContact("", "");
    EXPECT_EQ(values().email, "");
    EXPECT_EQ(values().nickname, "");
    EXPECT_TRUE(toasts().empty());
    EXPECT_TRUE(logged().empty());
}

INSTANTIATE_TEST_SUITE_P(Commands, Untreated,
                         Values("XFR 7 SB 10.0.0.1:1863 CKI 1\r\n",
                                "ILN 6 NLN bob@example.com Bob 0\r\n",
                                "NLN NLN bob@example.com Bob 0\r\n",
                                "LST bob@example.com Bob 11 0\r\n", "SYN 4 1 2 1\r\n",
                                "joi bob@example.com Bob\r\n", "Usr 3 OK ann@example.com x\r\n",
                                " JOI bob@example.com Bob\r\n", "JO bob@example.com Bob\r\n",
                                "CHG 6 NLN 0\r\n", "ILN 6 NLN a b 0\r\nFLN bob@example.com\r\n",
                                "ANS 1 OK\r\nJOI bob@example.com Bob\r\n"));

class ContactsMessage : public ServerFilter {
protected:
    ContactsMessage() { set("timestamp", "True"); }
};

TEST_F(ContactsMessage, IsStampedAndRemembered) {
    EXPECT_EQ(received(contactText("hello")), contactText("hello 12:30:05"));
    EXPECT_EQ(stored("bob@example.com"), mdlEncode::Base64Encode("hello"));
}

TEST_F(ContactsMessage, IsLeftAloneBehindAnotherCommand) {
    passes("ILN 6 NLN cem@example.com Cem 0\r\n" + contactText("hello"));
    EXPECT_EQ(stored("bob@example.com"), "");
}

TEST_F(ContactsMessage, IsLeftAloneInFrontOfAnother) {
    passes(contactText("hello") + contactText("again"));
    EXPECT_EQ(stored("bob@example.com"), "");
}

TEST_F(ContactsMessage, ThatIsCutByTheReadIsTakenForTheWhole) {
    const std::string whole = contactText("hello and more of it");
    EXPECT_EQ(received(whole.substr(0, whole.size() - 15)), contactText("hello 12:30:05"));
    EXPECT_EQ(stored("bob@example.com"), mdlEncode::Base64Encode("hello"));
    passes(whole.substr(whole.size() - 15));
}

TEST_F(ContactsMessage, OfTheServiceItselfIsLeftAlone) {
    const std::string payload =
        "MIME-Version: 1.0\r\nContent-Type: text/x-msmsgsprofile\r\nA: 1\r\n\r\nx";
    passes(message("MSG Hotmail Hotmail", payload));
    EXPECT_EQ(stored("Hotmail"), "");
    EXPECT_NE(received(message("MSG hotmail Hotmail", payload)),
              message("MSG hotmail Hotmail", payload));
}

TEST_F(ContactsMessage, ThatIsNoTextIsLeftAlone) {
    passes(message("MSG bob@example.com Bob",
                   "MIME-Version: 1.0\r\nContent-Type: application/x-msnmsgrp2p\r\n\r\n\r\nx"));
    EXPECT_EQ(stored("bob@example.com"), "");
}

TEST_F(ContactsMessage, WithoutALengthIsStampedInNoWay) {
    passes("MSG bob@example.com Bob\r\n" + textPayload("hello"));
    EXPECT_EQ(stored("bob@example.com"), "");
}

TEST_F(ContactsMessage, OfFewLinesIsStamped) {
    EXPECT_EQ(received("MSG bob@example.com Bob 5\r\nhello"),
              Bytes("MSG bob@example.com Bob 14\r\nhello 12:30:05"));
    EXPECT_EQ(stored("bob@example.com"), "");
}

TEST_F(ContactsMessage, GoesToAClientThatIsGoneWithoutHarm) {
    spine.client().sendFails = true;
    EXPECT_TRUE(toClient(contactText("hello")).empty());
    EXPECT_EQ(stored("bob@example.com"), mdlEncode::Base64Encode("hello"));
    spine.client().sendFails = false;
    EXPECT_EQ(received(contactText("again")), contactText("again 12:30:05"));
}

TEST_F(ServerFilter, LosesTheWordsOfAnAlertToAClientThatIsGoneWithoutHarm) {
    set("alertclosewindow", "True");
    spine.client().sendFails = true;
    EXPECT_TRUE(toClient("BYE bob@example.com\r\n").empty());
    EXPECT_THAT(logged(), ElementsAre("bob@example.com has left your conversation window."));
}

TEST_F(ServerFilter, ForwardsATextBeforeItsWordsAreInTheFile) {
    spine.settings.maintain(spine.loop);
    FakeTimer& afterEvent = *spine.loop.timers.at(spine.loop.timers.size() - 2);
    const auto inFile = [&] {
        return SettingsStore(spine.facilities.folder.path() / "settings.db", [](auto) {})
            .ReadSetting("lastthingusersaid", "bob@example.com");
    };
    passes(contactText("hello"));
    EXPECT_EQ(inFile(), "");
    afterEvent.pass();
    EXPECT_EQ(inFile(), mdlEncode::Base64Encode("hello"));
}

TEST_F(ServerFilter, KeepsTheFirst64KiBOfALongText) {
    const std::string text = contactText(std::string(70'000, 'x'));
    (void)toClient(text);
    EXPECT_EQ(stored("bob@example.com"), mdlEncode::Base64Encode(std::string(65536, 'x')));
}

}  // namespace
