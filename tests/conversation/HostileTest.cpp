#include "base/Failure.h"
#include "conversation/injection.h"
#include "conversation/messageConstants.h"
#include "conversation/messageTools.h"
#include "conversation/timestamps.h"
#include "tests/conversation/LoneConversation.h"
#include "tests/conversation/Talk.h"

namespace {

using testing::Combine;
using testing::ElementsAre;
using testing::Values;

constexpr std::size_t megabyte = std::size_t{1024} * 1024;

/// Every feature is on.
class Hostile : public Talk {
protected:
    Hostile() {
        signIn();
        join();
        for (const auto* const key :
             {"timestamp", "useristyping", "preventtypo", "lastthing", "alertjoinwindow",
              "alertopenwindow", "alertclosewindow", "alertoffline"})
            set(key, "True");
        spine.host.values.rancolorOn = true;
    }
    /// Both sides send `chunk`. One chunk leaves for the server, perhaps a short one, since what
    /// stands behind a message is cut. What leaves for the client ends in a chunk of about its
    /// size.
    void survives(const std::string& chunk) {
        const auto toServers = toServer(chunk);
        ASSERT_EQ(toServers.size(), 1U);
        EXPECT_LT(toServers.back().bytes.size(), chunk.size() + 1000);
        const auto toClients = toClient(chunk);
        ASSERT_GE(toClients.size(), 1U);
        EXPECT_LT(toClients.back().bytes.size(), chunk.size() + 1000);
        EXPECT_GT(toClients.back().bytes.size() + 1000, chunk.size());
        // And all goes on as before.
        join();
        spine.host.values.rancolorOn = false;
        EXPECT_EQ(typed("still <d>"), clientText("still 11/21/26"));
        EXPECT_EQ(received(contactText("still")), contactText("still 12:30:05"));
    }
};

class LyingLength : public Hostile, public testing::WithParamInterface<std::string> {};

TEST_P(LyingLength, DoesNoHarmInATextOfEitherSide) {
    survives("MSG 12 N " + GetParam() + "\r\n" + textPayload("!nick <t>"));
}

TEST_P(LyingLength, DoesNoHarmInFrontOfAnotherMessage) {
    survives("MSG 12 N " + GetParam() + "\r\n" + typingPayload() + clientText("!nick <t>"));
}

TEST_P(LyingLength, DoesNoHarmInALoneHead) { survives("MSG 12 N " + GetParam()); }

INSTANTIATE_TEST_SUITE_P(Words, LyingLength,
                         Values("-1", "-2147483648", "-99999999999999999999", "2147483647",
                                "2147483648", "4294967296", "99999999999999999999", "1e9", "1e10",
                                "1e308", "1e309", "-1e9", "1e-9", "1e-400", "0x10", "NaN", "nan",
                                "inf", "-inf", "infinity", "", " ", "  ", "-", "+5", "5-", ".",
                                "5.", ".5", "32767", "32768", "65536", "0", "1,000", "five"));

/// A megabyte of one piece repeated, behind a head.
struct Mass {
    const char* name;
    std::string head;
    std::string piece;
};

void PrintTo(const Mass& mass, std::ostream* out) { *out << mass.name; }

class OneMegabyte : public Hostile, public testing::WithParamInterface<Mass> {
protected:
    [[nodiscard]] static std::string chunk() {
        std::string text = GetParam().head;
        while (text.size() < megabyte)
            text += GetParam().piece;
        return text;
    }
};

TEST_P(OneMegabyte, PassesBothWays) { survives(chunk()); }

TEST_P(OneMegabyte, PassesEveryTool) {
    LoneConversation conversation;
    FakeFacilities& facilities = conversation.facilities;
    const std::string text = chunk();
    (void)messageTools::SecondWord(text);
    (void)messageTools::PayloadLength(text);
    (void)messageTools::IsTypingMessage(text);
    (void)messageTools::FirstBodyLine(text);
    (void)messageTools::MessageBody(text);
    (void)messageTools::textAndRest(text);
    (void)messageTools::HasTrailingData(text);
    (void)messageTools::FixPayloadLength(text);
    (void)messageTools::ApplyRandomColor(text, facilities.chance);
    attempt([&] {
        std::string expanded = text;
        (void)messageConstants::ExpandConstants(expanded, conversation);
    });
    attempt([&] { (void)injection::MakeCoverMessage(text, text); });
    (void)injection::add1(text);
    (void)timestamps::StampPlain(text, facilities.settings, facilities.clock);
    // What holds for every text, however hostile: it comes back behind its headers.
    const std::string built = injection::BuildFakeMessage(text, text, text, text, text);
    EXPECT_TRUE(built.ends_with("\r\n\r\n" + text));
    const std::string nick = messageConstants::expandNickName(text, conversation.services);
    EXPECT_GE(nick.size() + 10, text.size());
}

INSTANTIATE_TEST_SUITE_P(
    Bytes, OneMegabyte,
    Values(Mass{"a million blanks", "MSG", " "}, Mass{"blanks as a text", clientText(""), " "},
           Mass{"NULs", "MSG 12 N 5\r\n", std::string(1, '\0')},
           Mass{"control characters", "MSG 12 N 5\r\n", "\x01\x02\x03\x1F\x7F"},
           Mass{"control characters alone", "", "\x01\x02\x03"},
           Mass{"empty lines", "MSG 12 N 5\r\n", "\r\n"},
           Mass{"empty lines, all of them declared", "MSG 12 N 1048576\r\n", "\r\n"},
           Mass{"lone carriage returns", "MSG 12 N 5\r\n", "\r"},
           Mass{"lone line feeds", "MSG 12 N 5\n", "\n"}, Mass{"tokens", clientText(""), "<ws>"},
           Mass{"tokens left open", clientText(""), "<t"},
           Mass{"percent signs", "JOI bob@example.com ", "%"},
           Mass{"placeholders", "JOI bob@example.com ", "{i}"},
           Mass{"commands", clientText(""), "!nick "}, Mass{"digits", "MSG 12 N ", "9"},
           Mass{"the length as a text", "MSG 12 N 11\r\n", "11"}, Mass{"an address", "FLN ", "a"},
           Mass{"words of a ring", "RNG ", "a "}, Mass{"leavers", "BYE ", "\r\n"},
           Mass{"colours", "MSG 12 N 5\r\n\r\n\r\na b c ", "CO="},
           // Together as long as one read can be: a search for it takes time by its square.
           Mass{"a colour field like all before it",
                "MSG 12 N 5\r\n" + std::string(32'768, 'a') + "\r\nContent-Type: text\r\na b c " +
                    std::string(32'768, 'a') + "CO=0;",
                " "},
           Mass{"heads that say half of it", "", "MSG 1 U 524290\r\n"},
           Mass{"bytes above all letters", clientText(""), "\xFF"}));

class LongNick : public Hostile, public testing::WithParamInterface<std::string> {};

TEST_P(LongNick, OfFortyThousandCharactersSilencesOnlyWhatShowsIt) {
    std::string nick;
    while (nick.size() < 40000)
        nick += GetParam();
    const std::string chunk = "JOI bob@example.com " + nick + "\r\n";
    set("callby", "fn");
    EXPECT_THAT(toClient(chunk), ElementsAre(Bytes(chunk)));
    EXPECT_EQ(spine.instance().record().contactNick, nick);
    set("callby", "e");
    EXPECT_THAT(toClient(chunk),
                ElementsAre(Bytes(injection::BuildFakeMessage(
                                nick, "bob@example.com",
                                "bob@example.com has joined the conversation window.", "ff", "")),
                            Bytes(chunk)));
    (void)toClient("RNG 1 10.0.0.1:1863 CKI 1 bob@example.com " + nick + "\r\n");
    EXPECT_EQ(logged().back(), "bob@example.com has opened a conversation window.");
    (void)toClient("PRP MFN " + nick + "\r\n");
    EXPECT_EQ(spine.host.values.nickname, "");
}

INSTANTIATE_TEST_SUITE_P(Pieces, LongNick, Values("a", "%41", "%", "\x01", "{i}"));

TEST_F(Hostile, AddressesOfAnyBytesKeepTheirLastWords) {
    const std::vector<std::string> addresses = {
        std::string(40000, 'a'), std::string("a\0b", 3), "\x01\x02", "';--", "\xFF\xFE", "%00"};
    for (const std::string& address : addresses)
        (void)toClient(contactText("words of " + address, address));
    for (const std::string& address : addresses) {
        const auto chunks = toClient("JOI " + address + " Nick\r\n");
        ASSERT_EQ(chunks.size(), 3U) << escaped(address.substr(0, 20));
        EXPECT_TRUE(chunks[1].bytes.ends_with("\r\n\r\nwords of " + address));
    }
}

TEST_F(Hostile, ASongIsTakenWholeOrNotAtAll) {
    spine.host.values.rancolorOn = false;
    const std::string song(32000, 's');
    spine.facilities.player.title = "1. " + song + " - Winamp";
    EXPECT_EQ(typed("<ws>"), clientText(song));
    spine.facilities.player.title = "1. " + std::string(megabyte, 's') + " - Winamp";
    EXPECT_EQ(typed("<ws>"), clientText("<ws>"));
    EXPECT_EQ(typed("!note <ws>"), clientText("!note <ws>"));
}

class EveryHead : public Hostile,
                  public testing::WithParamInterface<std::tuple<std::string, std::string>> {};

TEST_P(EveryHead, IsRelayedHoweverLittleFollows) {
    const auto& [name, rest] = GetParam();
    survives(name + rest);
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, EveryHead,
    Combine(Values("VER", "CHG", "MSG", "PRP", "JOI", "IRO", "USR", "FLN", "RNG", "BYE"),
            Values("", " ", "\r\n", " \r\n", "  ", "        ", "\r\n\r\n\r\n\r\n\r\n\r\n", " %",
                   " % % % % % % %", " 1 2 3 4 5 6 7 8", " \x01 \x02 \x03",
                   " 1 2 3\r\n\r\n\r\n\r\n\r\n\r\n!")));

}  // namespace
