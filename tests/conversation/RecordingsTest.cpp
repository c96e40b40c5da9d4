#include "tests/conversation/PlayedRecording.h"

namespace {

using testing::ValuesIn;

using Recording = PlayedRecording;

const std::string signIn9 = "p9-talk-ann-ns-1.txt";
const std::string signIn10 = "p10-talk-ann-ns-1.txt";
const std::string signInBob = "p10-talk-bob-ns-1.txt";
const std::string talk9 = "p9-talk-ann-sb-1.txt";
const std::string talk10 = "p10-talk-ann-sb-1.txt";
const std::string talkBob = "p10-talk-bob-sb-1.txt";

TEST_P(Recording, IsRelayedButForItsOneCommandAndItsOneConstant) {
    expectOnly({}, [](const RecordedRead&, Outcome&) { return false; });
}

TEST_P(Recording, IsRelayedToTheByteWithConstantsOff) {
    set("constants", "False");
    expectOnly({{talk9, 1}, {talk10, 1}, {talkBob, 1}},
               [](const RecordedRead& read, Outcome& expected) {
                   if (!read.fromClient) return false;
                   const bool differed = expected.toServer.front() != Bytes(read.bytes);
                   expected = {{read.bytes}, {}, {}, {}};
                   return differed;
               });
}

TEST_P(Recording, HasTheChosenStatusInItsFirstStatusCommand) {
    set("initialStatus", "Busy");
    expectOnly({{signIn9, 1}, {signIn10, 1}, {signInBob, 1}},
               [](const RecordedRead& read, Outcome& expected) {
                   if (!read.fromClient || !read.bytes.starts_with("CHG ")) return false;
                   expected.toServer = {replaced(read.bytes, "NLN", "BSY")};
                   return true;
               });
}

TEST_P(Recording, HasItsTypingNoticesHidden) {
    set("useristyping", "True");
    expectOnly({{talk9, 4}, {talk10, 4}, {talkBob, 4}},
               [](const RecordedRead& read, Outcome& expected) {
                   if (!read.fromClient || read.bytes.find("TypingUser:") == std::string::npos) {
                       return false;
                   }
                   expected.toServer = {replaced(read.bytes, "TypingUser:", "TypingUserx")};
                   return true;
               });
}

TEST_P(Recording, HasItsConstantsExpanded) {
    retype("hello", "<d><d");
    expectOnly({{talk9, 1}, {talk10, 1}}, [](const RecordedRead& read, Outcome& expected) {
        if (typedIn(read) != "<d><d") return false;
        expected.toServer = {altered(read, "<d><d", "11/21/26<d")};
        return true;
    });
}

TEST_P(Recording, HasItsTextsInAnotherColour) {
    spine.host.values.rancolorOn = true;
    spine.facilities.chance.next = 0;
    expectOnly({{talk9, 4}, {talk10, 4}, {talkBob, 3}},
               [](const RecordedRead& read, Outcome& expected) {
                   const bool consumed = typedIn(read).starts_with("!nick ");
                   if (typedIn(read).empty() || consumed) return false;
                   RecordedRead colored = read;
                   colored.bytes = altered(read, "CO=000000;", "CO=0;").bytes;
                   expected = plain(colored);
                   return true;
               });
}

TEST_P(Recording, HasItsIncomingMessagesStamped) {
    set("timestamp", "True");
    set("tsprefix", "[");
    set("tspostfix", "]");
    expectOnly({{talk9, 9}, {talk10, 9}, {talkBob, 9}},
               [](const RecordedRead& read, Outcome& expected) {
                   if (read.fromClient || !Message::is(read.bytes)) return false;
                   const Message whole(read.bytes);
                   if (whole.head.starts_with("MSG Hotmail ")) return false;
                   expected.toClient = {message(whole.head, whole.payload + " [12:30:05]")};
                   return true;
               });
}

TEST_P(Recording, HasAnUnknownCommandReportedAndCovered) {
    set("preventtypo", "True");
    retype("hello", "!typo");
    expectOnly({{talk9, 1}, {talk10, 1}}, [](const RecordedRead& read, Outcome& expected) {
        if (typedIn(read) != "!typo") return false;
        expected.toServer = {cover(numberOf(read))};
        expected.toClient = {
            spoken("!typo command not known.", "ff", "", "bob@example.com Bob%20\xC3\x9Cnal")};
        return true;
    });
}

TEST_P(Recording, HasTheOpeningOfAWindowReported) {
    set("alertopenwindow", "True");
    expectOnly({{signInBob, 1}}, [](const RecordedRead& read, Outcome& expected) {
        if (!read.bytes.starts_with("RNG ")) return false;
        expected.toasts = {"ann@example.com has opened a conversation window."};
        expected.logged = expected.toasts;
        return true;
    });
}

TEST_P(Recording, HasAJoinReported) {
    set("alertopenwindow", "True");
    set("alertjoinwindow", "True");
    set("callby", "fn");
    expectOnly(
        {{talk9, 1}, {talk10, 1}, {signInBob, 1}}, [](const RecordedRead& read, Outcome& expected) {
            if (read.bytes.starts_with("RNG ")) {
                expected.toasts = {"Ann Lee\r\n has opened a conversation window."};
                expected.logged = {"Ann Lee has opened a conversation window."};
                return true;
            }
            if (!read.bytes.starts_with("JOI ")) return false;
            expected.toClient = {spoken("Bob \xC3\x9Cnal has joined the conversation window.", "ff",
                                        "", "bob@example.com Bob%20\xC3\x9Cnal"),
                                 read.bytes};
            return true;
        });
}

TEST_P(Recording, HasALeavingContactReported) {
    set("alertclosewindow", "True");
    expectOnly({{talk9, 1}, {talk10, 1}}, [](const RecordedRead& read, Outcome& expected) {
        if (!read.bytes.starts_with("BYE ")) return false;
        expected.toClient = {spoken("I have left your conversation window.", "ff", "",
                                    "bob@example.com Bob%20\xC3\x9Cnal"),
                             read.bytes};
        expected.logged = {"bob@example.com has left your conversation window."};
        return true;
    });
}

TEST_P(Recording, HasAContactGoneOfflineReported) {
    set("alertoffline", "True");
    // Nobody went offline while it was recorded.
    reads.push_back({false, "FLN bob@example.com\r\n"});
    expectOnly({{GetParam(), 1}}, [](const RecordedRead& read, Outcome& expected) {
        if (!read.bytes.starts_with("FLN ")) return false;
        expected.toasts = {"bob@example.com is now offline."};
        expected.logged = expected.toasts;
        return true;
    });
}

TEST_P(Recording, HasTheLastWordsOfItsContactSpokenWhenItIsPlayedAgain) {
    set("lastthing", "True");
    expectOnly({}, [](const RecordedRead&, Outcome&) { return false; });
    playAgain();
    std::string last;
    for (const RecordedRead& read : reads) {
        const bool contacts = !read.fromClient && Message::is(read.bytes);
        if (contacts && Message(read.bytes).hasFormat()) last = Message(read.bytes).text();
    }
    expectOnly({{talk9, 1}, {talk10, 1}}, [&](const RecordedRead& read, Outcome& expected) {
        if (!read.bytes.starts_with("JOI ")) return false;
        expected.toClient = {spoken("Last thing bob@example.com said:\r\n\r\n" + last, "0", "",
                                    "bob@example.com Bob%20\xC3\x9Cnal"),
                             read.bytes};
        return true;
    });
}

INSTANTIATE_TEST_SUITE_P(Real, Recording, ValuesIn(recordingNames()));

}  // namespace
