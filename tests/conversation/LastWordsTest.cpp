#include "stores/mdlEncode.h"
#include "tests/conversation/Talk.h"

namespace {

using testing::ElementsAre;
using testing::Values;

class LastWords : public Talk {
protected:
    const std::string joining = "JOI bob@example.com Bob\r\n";

    std::string stored(const std::string& contact = "bob@example.com") {
        return spine.settings.ReadSetting("lastthingusersaid", contact);
    }
    static Bytes repeated(const std::string& words) {
        return spoken("Last thing bob@example.com said:\r\n\r\n" + words, "0");
    }
};

TEST_F(LastWords, AreKeptInBase64UnderTheSender) {
    (void)received(contactText("hello\r\n\xC3\xBC"));
    EXPECT_EQ(stored(), mdlEncode::Base64Encode("hello\r\n\xC3\xBC"));
    EXPECT_EQ(stored("ann@example.com"), "");
}

TEST_F(LastWords, AreKeptWithoutTheTimestamp) {
    set("timestamp", "True");
    (void)received(contactText("hello"));
    EXPECT_EQ(stored(), mdlEncode::Base64Encode("hello"));
}

TEST_F(LastWords, AreSpokenWhenTheContactJoinsAgain) {
    set("lastthing", "True");
    (void)received(contactText("hello\r\nthere"));
    EXPECT_THAT(toClient(joining), ElementsAre(repeated("hello\r\nthere"), Bytes(joining)));
}

TEST_F(LastWords, OfBeforeTheOptionWasOnAreSpokenOnceItIs) {
    (void)received(contactText("hello"));
    EXPECT_THAT(toClient(joining), ElementsAre(Bytes(joining)));
    set("lastthing", "True");
    EXPECT_THAT(toClient(joining), ElementsAre(repeated("hello"), Bytes(joining)));
}

TEST_F(LastWords, AreNotSpokenForAContactWhoNeverWrote) {
    set("lastthing", "True");
    (void)received(contactText("hello", "cem@example.com"));
    EXPECT_THAT(toClient(joining), ElementsAre(Bytes(joining)));
}

TEST_F(LastWords, FollowTheAlertOfTheJoin) {
    set("lastthing", "True");
    set("alertjoinwindow", "True");
    set("alertopenwindow", "True");
    (void)received(contactText("hello"));
    EXPECT_THAT(toClient(joining),
                ElementsAre(Bytes(spoken("bob@example.com has joined the conversation window.")),
                            repeated("hello"), Bytes(joining)));
}

TEST_F(LastWords, AreSpokenWithoutTheAlertOfTheJoin) {
    set("lastthing", "True");
    set("alertjoinwindow", "True");
    set("alertopenwindow", "False");
    (void)received(contactText("hello"));
    EXPECT_THAT(toClient(joining), ElementsAre(repeated("hello"), Bytes(joining)));
}

TEST_F(LastWords, NameTheContactByItsAddressWhateverTheOption) {
    set("lastthing", "True");
    set("callby", "fn");
    (void)received(contactText("hello"));
    EXPECT_EQ(toClient(joining).front(), repeated("hello"));
}

TEST_F(LastWords, HaveTheNameInBoldWithTheAddOn) {
    set("lastthing", "True");
    spine.facilities.registry.hasAddOn = true;
    (void)received(contactText("hello"));
    EXPECT_EQ(toClient(joining).front(), spoken("Last thing \x02"
                                                "bob@example.com\x02 said:\r\n\r\nhello",
                                                "0"));
}

TEST_F(LastWords, AreTheLastOnes) {
    (void)received(contactText("first"));
    (void)received(contactText("second"));
    EXPECT_EQ(stored(), mdlEncode::Base64Encode("second"));
}

TEST_F(LastWords, ThatCannotBeReadAreSpokenAsTheyStand) {
    set("lastthing", "True");
    spine.settings.WriteSetting("lastthingusersaid", "bob@example.com", "=");
    EXPECT_EQ(toClient(joining).front(), repeated("="));
}

class LastThingOption : public LastWords, public testing::WithParamInterface<std::string> {};

TEST_P(LastThingOption, SpeaksNothingUnlessItReadsTrue) {
    set("lastthing", GetParam());
    (void)received(contactText("hello"));
    EXPECT_THAT(toClient(joining), ElementsAre(Bytes(joining)));
}

INSTANTIATE_TEST_SUITE_P(Words, LastThingOption, Values("", "False", "true", "TRUE", "1"));

class BlankText : public LastWords, public testing::WithParamInterface<std::string> {};

TEST_P(BlankText, LeavesTheWordsBeforeItAndIsStampedAllTheSame) {
    set("timestamp", "True");
    (void)received(contactText("hello"));
    EXPECT_EQ(received(contactText(GetParam())), contactText(GetParam() + " 12:30:05"));
    EXPECT_EQ(stored(), mdlEncode::Base64Encode("hello"));
}

INSTANTIATE_TEST_SUITE_P(Texts, BlankText,
                         Values("", " ", "   ", "\r\n", "\r\n\r\n", "  \r\n ", " \r\n\r\n  "));

class NearlyBlankText : public LastWords, public testing::WithParamInterface<std::string> {};

TEST_P(NearlyBlankText, IsKept) {
    (void)received(contactText(GetParam()));
    EXPECT_EQ(stored(), mdlEncode::Base64Encode(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Texts, NearlyBlankText,
                         Values("\r\n\r\n\r\n", "\r\n \r\n", "\t", "\n", "\r", " . ",
                                std::string(1, '\0')));

TEST_F(LastWords, LetTypingNoticesAlone) {
    (void)received(contactText("hello"));
    (void)received(message("MSG bob@example.com Bob", typingPayload("bob@example.com")));
    EXPECT_EQ(stored(), mdlEncode::Base64Encode("hello"));
}

TEST_F(LastWords, AreOnTheDiskForTheNextRun) {
    (void)received(contactText("hello"));
    SettingsStore nextRun(spine.facilities.folder.path() / "settings.db", [](std::string_view) {});
    EXPECT_EQ(nextRun.ReadSetting("lastthingusersaid", "bob@example.com"),
              mdlEncode::Base64Encode("hello"));
}

}  // namespace
