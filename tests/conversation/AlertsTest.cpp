#include "tests/conversation/Talk.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Values;

class Alerts : public Talk {
protected:
    const std::string opening = "RNG 11 10.0.0.1:1863 CKI 123.456 bob@example.com %42ob%20B\r\n";
    const std::string joining = "JOI bob@example.com %42ob%20B\r\n";

    void turnOn(const std::vector<std::string>& keys) {
        for (const std::string& key : keys)
            set(key, "True");
    }
    void haveAddOn() { spine.facilities.registry.hasAddOn = true; }
    /// Words of the contact whom `joining` names.
    static Bytes words(const std::string& text) {
        return spoken(text, "ff", "", "bob@example.com %42ob%20B");
    }
    void expectSilence() {
        EXPECT_THAT(toasts(), IsEmpty());
        EXPECT_THAT(logged(), IsEmpty());
    }
};

TEST_F(Alerts, OfAnOpenedWindowAreAToastAndALogLine) {
    turnOn({"alertopenwindow"});
    EXPECT_THAT(toClient(opening), ElementsAre(Bytes(opening)));
    EXPECT_THAT(toasts(), ElementsAre("bob@example.com has opened a conversation window."));
    EXPECT_THAT(logged(), ElementsAre("bob@example.com has opened a conversation window."));
}

TEST_F(Alerts, OfAnOpenedWindowKeepTheLineEndOfTheNickInTheToastAlone) {
    turnOn({"alertopenwindow"});
    set("callby", "fn");
    (void)toClient(opening);
    EXPECT_THAT(toasts(), ElementsAre("Bob B\r\n has opened a conversation window."));
    EXPECT_THAT(logged(), ElementsAre("Bob B has opened a conversation window."));
}

TEST_F(Alerts, OfAnOpenedWindowAreNeverBold) {
    turnOn({"alertopenwindow"});
    haveAddOn();
    (void)toClient(opening);
    EXPECT_THAT(toasts(), ElementsAre("bob@example.com has opened a conversation window."));
}

TEST_F(Alerts, OfAnOpenedWindowNeedAllItsWords) {
    turnOn({"alertopenwindow"});
    (void)toClient("RNG 11 10.0.0.1:1863 CKI 123.456\r\n");
    expectSilence();
    set("callby", "fn");
    (void)toClient("RNG 11 10.0.0.1:1863 CKI 123.456 bob@example.com\r\n");
    expectSilence();
}

TEST_F(Alerts, OfAJoinAreSpokenAheadOfIt) {
    turnOn({"alertjoinwindow", "alertopenwindow"});
    EXPECT_THAT(
        toClient(joining),
        ElementsAre(words("bob@example.com has joined the conversation window."), Bytes(joining)));
    expectSilence();
}

TEST_F(Alerts, OfAJoinNeedBothOptions) {
    for (const auto& on : {"alertjoinwindow", "alertopenwindow"}) {
        set("alertjoinwindow", "False");
        set("alertopenwindow", "False");
        set(on, "True");
        EXPECT_THAT(toClient(joining), ElementsAre(Bytes(joining))) << on;
    }
}

struct Calling {
    const char* callBy;
    const char* name;
};

void PrintTo(const Calling& calling, std::ostream* out) { *out << escaped(calling.callBy); }

class CallBy : public Alerts, public testing::WithParamInterface<Calling> {};

TEST_P(CallBy, SaysHowAContactIsNamedAtAJoin) {
    turnOn({"alertjoinwindow", "alertopenwindow"});
    set("callby", GetParam().callBy);
    const std::string text = std::string(GetParam().name) + " has joined the conversation window.";
    EXPECT_EQ(toClient("JOI bob@example.com %41\r\n").front(),
              spoken(text, "ff", "", "bob@example.com %41"));
}

TEST_P(CallBy, SaysSoAtAnOpenedWindow) {
    turnOn({"alertopenwindow"});
    set("callby", GetParam().callBy);
    (void)toClient("RNG 11 10.0.0.1:1863 CKI 1 bob@example.com %41\r\n");
    EXPECT_THAT(logged(),
                ElementsAre(std::string(GetParam().name) + " has opened a conversation window."));
}

TEST_P(CallBy, SaysNothingOfThoseWhoLeave) {
    turnOn({"alertclosewindow", "alertoffline"});
    set("callby", GetParam().callBy);
    (void)toClient("BYE bob@example.com\r\n");
    (void)toClient("FLN bob@example.com\r\n");
    EXPECT_THAT(logged(), ElementsAre("bob@example.com has left your conversation window.",
                                      "bob@example.com is now offline."));
}

INSTANTIATE_TEST_SUITE_P(Options, CallBy,
                         Values(Calling{"", "bob@example.com"}, Calling{"e", "bob@example.com"},
                                Calling{"fn", "A"}, Calling{"E", "A"}, Calling{"x", "A"}));

TEST_F(Alerts, OfAJoinAreBoldWithTheAddOn) {
    turnOn({"alertjoinwindow", "alertopenwindow"});
    haveAddOn();
    EXPECT_EQ(toClient(joining).front(),
              words("\x02"
                    "bob@example.com\x02 has joined the conversation window."));
}

TEST_F(Alerts, AreNotRaisedForAContactWhoWasThereBefore) {
    turnOn({"alertjoinwindow", "alertopenwindow", "lastthing"});
    const std::string there = "IRO 1 1 1 bob@example.com Bob\r\n";
    EXPECT_THAT(toClient(there), ElementsAre(Bytes(there)));
    expectSilence();
}

TEST_F(Alerts, OfALeavingContactAreSpokenByItselfAheadOfItAndLogged) {
    turnOn({"alertclosewindow"});
    (void)toClient(joining);
    const std::string leaving = "BYE bob@example.com\r\n";
    EXPECT_THAT(toClient(leaving),
                ElementsAre(words("I have left your conversation window."), Bytes(leaving)));
    EXPECT_THAT(logged(), ElementsAre("bob@example.com has left your conversation window."));
    EXPECT_THAT(toasts(), IsEmpty());
}

TEST_F(Alerts, OfAnotherLeavingContactNameItInTheNameOfTheLast) {
    turnOn({"alertclosewindow"});
    (void)toClient("JOI cem@example.com Cem\r\n");
    (void)toClient(joining);
    EXPECT_EQ(toClient("BYE cem@example.com\r\n").front(),
              words("cem@example.com has left your conversation window."));
    EXPECT_EQ(toClient("BYE bob@example.com\r\n").front(),
              words("I have left your conversation window."));
}

TEST_F(Alerts, OfALeavingContactAreBoldWithTheAddOnWhereTheyNameIt) {
    turnOn({"alertclosewindow"});
    haveAddOn();
    (void)toClient(joining);
    EXPECT_EQ(toClient("BYE cem@example.com\r\n").front(),
              words("\x02"
                    "cem@example.com\x02 has left your conversation window."));
    EXPECT_EQ(toClient("BYE bob@example.com\r\n").front(),
              words("I have left your conversation window."));
    EXPECT_THAT(logged(), ElementsAre("cem@example.com has left your conversation window.",
                                      "bob@example.com has left your conversation window."));
}

TEST_F(Alerts, AreNotRaisedForAContactWhoWasDropped) {
    turnOn({"alertclosewindow"});
    (void)toClient(joining);
    for (const std::string leaving :
         {"BYE bob@example.com 1\r\n", "BYE bob@example.com \r\n", "BYE bob@example.com x y"}) {
        EXPECT_THAT(toClient(leaving), ElementsAre(Bytes(leaving)));
    }
    expectSilence();
}

TEST_F(Alerts, OfAContactGoneOfflineAreAToastAndALogLine) {
    turnOn({"alertoffline"});
    EXPECT_THAT(toClient("FLN bob@example.com\r\n"), ElementsAre("FLN bob@example.com\r\n"));
    EXPECT_THAT(toasts(), ElementsAre("bob@example.com is now offline."));
    EXPECT_THAT(logged(), ElementsAre("bob@example.com is now offline."));
}

TEST_F(Alerts, OfAContactGoneOfflineLogWhatFollowsTheLineToo) {
    turnOn({"alertoffline"});
    (void)toClient("FLN bob@example.com\r\nNLN AWY cem@example.com Cem 0\r\n");
    EXPECT_THAT(toasts(), ElementsAre("bob@example.com is now offline."));
    EXPECT_THAT(logged(), ElementsAre("bob@example.comNLN is now offline."));
}

struct Silent {
    const char* key;
    const char* chunk;
};

void PrintTo(const Silent& silent, std::ostream* out) {
    *out << escaped(silent.key + std::string(" ") + silent.chunk);
}

class AlertOption : public Alerts, public testing::WithParamInterface<Silent> {};

TEST_P(AlertOption, IsOnOnlyWhenItReadsTrue) {
    turnOn({"alertjoinwindow", "alertopenwindow", "alertclosewindow", "alertoffline"});
    for (const std::string value : {"", "False", "true", "TRUE", "1", " True"}) {
        set(GetParam().key, value);
        EXPECT_THAT(toClient(GetParam().chunk), ElementsAre(GetParam().chunk)) << value;
        expectSilence();
    }
}

INSTANTIATE_TEST_SUITE_P(Options, AlertOption,
                         Values(Silent{"alertopenwindow",
                                       "RNG 11 10.0.0.1:1863 CKI 1 bob@example.com Bob\r\n"},
                                Silent{"alertopenwindow", "JOI bob@example.com Bob\r\n"},
                                Silent{"alertjoinwindow", "JOI bob@example.com Bob\r\n"},
                                Silent{"alertclosewindow", "BYE bob@example.com\r\n"},
                                Silent{"alertoffline", "FLN bob@example.com\r\n"}));

TEST_F(Alerts, OfOneConversationAreAToastAtTheRingAndWordsAtTheJoin) {
    turnOn({"alertjoinwindow", "alertopenwindow"});
    spine.relay();
    EXPECT_EQ(toClient(opening, 1).size(), 1U);
    EXPECT_EQ(toasts().size(), 1U);
    EXPECT_EQ(toClient(joining, 2).size(), 2U);
    EXPECT_EQ(toasts().size(), 1U);
}

}  // namespace
