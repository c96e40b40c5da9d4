#include "base/Failure.h"
#include "conversation/chatCommands.h"
#include "tests/conversation/LoneConversation.h"
#include "tests/conversation/Talk.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Values;

using chatCommands::parse;

class KnownCommand : public testing::TestWithParam<std::string> {
protected:
    LoneConversation conversation;
};

TEST_P(KnownCommand, IsAnsweredWithYes) {
    EXPECT_TRUE(parse(GetParam(), "", conversation));
    EXPECT_TRUE(parse(GetParam() + " x", GetParam() + " x\r\ny", conversation));
}

INSTANTIATE_TEST_SUITE_P(Words, KnownCommand,
                         Values("!nick", "!note", "!notes", "!rancolor", "!rancolour", "!google",
                                "!dictionary", "!thesaurus", "!makemesay", "!preview", "!acronym",
                                "!winamp"));

class OtherText : public KnownCommand {};

TEST_P(OtherText, IsAnsweredWithNo) {
    EXPECT_FALSE(parse(GetParam(), "!note x", conversation));
    EXPECT_THAT(conversation.popups, IsEmpty());
    EXPECT_THAT(conversation.sent, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Texts, OtherText,
                         Values("!", "!NICK x", " !nick x", "nick", "!nickx", "!note\r\n",
                                "x !nick"));

class Parse : public testing::Test {
protected:
    LoneConversation conversation;
};

TEST_F(Parse, EndsTheProcessForItself) {
    EXPECT_THROW((void)parse("!forceexit", "", conversation), ProcessEnded);
}

TEST_F(Parse, FailsForNoTextAtAll) {
    EXPECT_THROW((void)parse("", "!note x", conversation), Failure);
}

TEST_F(Parse, TakesTheFullTextForANoteAndTheFirstLineForOthers) {
    (void)parse("!note line", "!note all\r\nlines", conversation);
    EXPECT_THAT(conversation.facilities.notes.list(), ElementsAre("all\r\nlines"));
    (void)parse("!nick line", "!nick all", conversation);
    EXPECT_THAT(conversation.nicks, ElementsAre("line"));
}

TEST_F(Parse, TakesTheCommandOutWhereItFirstStandsWithItsBlank) {
    (void)parse("!note", "say !note twice !note x", conversation);
    EXPECT_THAT(conversation.facilities.notes.list(), ElementsAre("say twice !note x"));
}

TEST_F(Parse, ReportsThatNobodyIsInTheConversationAndAnswersYes) {
    EXPECT_TRUE(parse("!makemesay x", "", conversation));
    EXPECT_THAT(conversation.popups, ElementsAre("No user in conversation."));
}

TEST_F(Parse, FailsWhereTheClientToSpeakToIsGone) {
    conversation.connection.contactEmail = "bob@example.com";
    conversation.connection.contactNick = "Bob";
    conversation.clientIsGone = true;
    EXPECT_THROW((void)parse("!makemesay x", "", conversation), Failure);
}

TEST_F(Parse, FailsWhereThereIsNoBrowser) {
    conversation.facilities.browser.missing = true;
    EXPECT_THROW((void)parse("!google x", "", conversation), Failure);
}

}  // namespace
