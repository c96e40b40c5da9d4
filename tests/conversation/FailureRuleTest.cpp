#include "tests/conversation/Talk.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A failure inside a tool ends the tool and its callers up to the event of the socket; what was
/// written back before it stays, and the event goes on.
class FailureRule : public Talk {
protected:
    FailureRule() {
        signIn();
        join();
    }
    static std::string colored(const std::string& text) {
        std::string payload = textPayload(text);
        return message("MSG 12 N", payload.replace(payload.find("CO=0"), 4, "CO=800000"));
    }
    void turnColorsOn() { spine.host.values.rancolorOn = true; }
};

TEST_F(FailureRule, KeepsTheColourWhereConstantsAreOff) {
    turnColorsOn();
    set("constants", "False");
    EXPECT_EQ(typed("!nick <t>"), colored("!nick <t>"));
}

TEST_F(FailureRule, KeepsTheFirstMessageWhereAllAfterTheCutFails) {
    turnColorsOn();
    const std::string typing = message("MSG 11 U", typingPayload("<me>"));
    const std::string transfer =
        message("MSG 12 D", "MIME-Version: 1.0\r\nContent-Type: application/x\r\n\r\nbytes");
    EXPECT_EQ(only(toServer(typing + transfer)), typing);
}

TEST_F(FailureRule, KeepsTheConstantsWhereTheTextIsEmpty) {
    EXPECT_EQ(typed("\r\n<t>"), clientText("\r\n12:30:05"));
}

TEST_F(FailureRule, KeepsTheConstantsWhereThereIsNoTextLine) {
    EXPECT_EQ(only(toServer("MSG 12 N 3\r\n<t>")), Bytes("MSG 12 N 8\r\n12:30:05"));
    EXPECT_EQ(only(toServer("MSG 7 N 12\r\n1\r\n2\r\n3\r\n<t>")),
              Bytes("MSG 7 N 17\r\n1\r\n2\r\n3\r\n12:30:05"));
}

TEST_F(FailureRule, GoesOnToHideTypingNoticesAfterAFailedFilter) {
    set("useristyping", "True");
    turnColorsOn();
    EXPECT_NE(sent(typingPayload()).bytes.find("TypingUserx ann@example.com"), std::string::npos);
}

TEST_F(FailureRule, SendsTheCommandWithItsConstantsWhereItCannotBeCarriedOut) {
    spine.client().sendFails = true;
    EXPECT_EQ(typed("!makemesay <t>"), clientText("!makemesay 12:30:05"));
    EXPECT_EQ(typed("!preview <t>"), clientText("!preview 12:30:05"));
    EXPECT_THAT(toasts(), IsEmpty());
}

TEST_F(FailureRule, SendsASearchThatNoBrowserTakes) {
    spine.facilities.browser.missing = true;
    EXPECT_EQ(typed("!google <d>"), clientText("!google 11/21/26"));
}

TEST_F(FailureRule, KeepsWhatACommandHadDoneBeforeItFailed) {
    spine.server().sendFails = true;
    (void)toServer(clientText("!winamp on:"));
    EXPECT_TRUE(spine.host.values.winampOn);
    EXPECT_THAT(toasts(), IsEmpty());
}

TEST_F(FailureRule, SendsACommandWithoutANumberAsItIs) {
    // Without a word 1 there is no word 3 either, so it fails long before the cover.
    const std::string chunk = "MSG\r\n" + textPayload("!rancolor");
    EXPECT_EQ(only(toServer(chunk)), chunk);
    EXPECT_FALSE(spine.host.values.rancolorOn);
}

TEST_F(FailureRule, LosesATextsConstantsToANickInItThatIsTooLong) {
    join("bob@example.com " + std::string(40000, 'b'));
    EXPECT_EQ(typed("<t> <cn>"), clientText("<t> <cn>"));
    EXPECT_EQ(typed("!note <cn>"), clientText("!note <cn>"));
    EXPECT_EQ(typed("<t>"), clientText("12:30:05"));
}

TEST_F(FailureRule, LeavesNothingBehindForTheNextMessage) {
    set("constants", "False");
    (void)typed("<t>");
    set("constants", "True");
    EXPECT_EQ(typed("<t>"), clientText("12:30:05"));
}

/// On the server's side only the statement is lost.
class ServersSide : public FailureRule {};

TEST_F(ServersSide, MakesTheLengthTrueWhereTheStampFails) {
    set("timestamp", "True");
    const std::string payload = textPayload("hello");
    EXPECT_EQ(received("MSG bob@example.com Bob 32767\r\n" + payload), contactText("hello"));
    EXPECT_EQ(received("MSG bob@example.com Bob 1e9\r\n" + payload),
              "MSG bob@example.com Bob 1e9\r\n" + payload);
}

TEST_F(ServersSide, StampsWhereTheTextCannotBeTaken) {
    set("timestamp", "True");
    EXPECT_EQ(received("MSG bob@example.com Bob 23\r\n1\r\nContent-Type: text/x"),
              Bytes("MSG bob@example.com Bob 32\r\n1\r\nContent-Type: text/x 12:30:05"));
    EXPECT_EQ(spine.settings.ReadSetting("lastthingusersaid", "bob@example.com"), "");
}

TEST_F(ServersSide, TakesATestThatCannotBeAnsweredForPassed) {
    set("timestamp", "True");
    // No length, so neither stamp nor true length, and nothing else is changed.
    EXPECT_EQ(received("MSG bob@example.com Bob\r\n1\r\nContent-Type: text/x"),
              Bytes("MSG bob@example.com Bob\r\n1\r\nContent-Type: text/x"));
    // A length, and too few lines to be a text.
    EXPECT_EQ(received("MSG bob@example.com Bob 1\r\nx"),
              Bytes("MSG bob@example.com Bob 10\r\nx 12:30:05"));
    // A single word: what stands behind it is not there either.
    EXPECT_EQ(received("MSG"), Bytes("MSG"));
}

TEST_F(ServersSide, GivesTheLastWordsWhereTheAlertFails) {
    set("alertjoinwindow", "True");
    set("alertopenwindow", "True");
    set("lastthing", "True");
    set("callby", "fn");
    (void)received(contactText("hello"));
    const std::string nick(40000, 'b');
    const std::string chunk = "JOI bob@example.com " + nick + "\r\n";
    EXPECT_THAT(toClient(chunk),
                ElementsAre(Bytes(spoken("Last thing bob@example.com said:\r\n\r\nhello", "0", "",
                                         "bob@example.com " + nick)),
                            Bytes(chunk)));
}

TEST_F(ServersSide, LogsWhereNothingCanBeSpoken) {
    set("alertclosewindow", "True");
    spine.client().sendFails = true;
    (void)toClient("BYE bob@example.com\r\n");
    EXPECT_THAT(logged(), ElementsAre("bob@example.com has left your conversation window."));
}

TEST_F(ServersSide, TakesALeaverWithoutANameForNobody) {
    set("alertclosewindow", "True");
    EXPECT_THAT(toClient("BYE"),
                ElementsAre(Bytes(spoken(" has left your conversation window.")), "BYE"));
    EXPECT_THAT(logged(), ElementsAre(" has left your conversation window."));
}

}  // namespace
