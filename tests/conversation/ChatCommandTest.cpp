#include "tests/conversation/Talk.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Values;

/// The account and a contact are known.
class ChatCommand : public Talk {
protected:
    ChatCommand() {
        signIn();
        join();
    }
    /// The server got the cover of the command and, ahead of it, `others`.
    void expectConsumed(const std::string& text, const std::vector<Bytes>& others = {}) {
        auto expected = others;
        expected.emplace_back(cover("12"));
        EXPECT_EQ(toServer(clientText(text)), expected);
    }
};

class EveryCommand : public ChatCommand, public testing::WithParamInterface<std::string> {};

TEST_P(EveryCommand, LeavesItsCoverAloneUnderItsOwnNumber) {
    spine.relay();
    EXPECT_THAT(toServer(clientText(GetParam(), "4711"), 2), ElementsAre(Bytes(cover("4711"))));
    EXPECT_THAT(toServer(clientText(GetParam() + " x y\r\nz", "4712"), 2),
                ElementsAre(Bytes(cover("4712"))));
}

TEST_P(EveryCommand, KeepsTheNumberOfTheLastChunkForTheProgram) {
    (void)toServer(clientText(GetParam(), "4711"));
    EXPECT_EQ(spine.host.values.tranID, "4711");
}

INSTANTIATE_TEST_SUITE_P(Words, EveryCommand,
                         Values("!nick", "!note", "!notes", "!rancolor", "!rancolour", "!google",
                                "!dictionary", "!thesaurus", "!makemesay", "!preview", "!acronym",
                                "!winamp"));

TEST_F(ChatCommand, NickReachesTheServerAndTheUser) {
    expectConsumed("!nick Ann", {"PRP 12 MFN %41%6E%6E\r\n"});
    EXPECT_THAT(toasts(), ElementsAre("Changed Nick Name To:\r\nAnn"));
}

TEST_F(ChatCommand, NickTakesItsFirstLineAlone) {
    expectConsumed("!nick A b\r\nsecond", {"PRP 12 MFN %41%20%62\r\n"});
    EXPECT_THAT(toasts(), ElementsAre("Changed Nick Name To:\r\nA b"));
}

TEST_F(ChatCommand, NickAloneIsTheNick) {
    expectConsumed("!nick", {"PRP 12 MFN %21%6E%69%63%6B\r\n"});
    EXPECT_THAT(toasts(), ElementsAre("Changed Nick Name To:\r\n!nick"));
}

TEST_F(ChatCommand, NickWithABlankAloneIsNoNickAtAll) {
    expectConsumed("!nick ", {"PRP 12 MFN \r\n"});
    EXPECT_THAT(toasts(), ElementsAre("Changed Nick Name To:\r\n"));
}

TEST_F(ChatCommand, NickLosesTheCommandWhereItStandsFirstAndNowhereElse) {
    expectConsumed("!nick !nick x", {"PRP 12 MFN %21%6E%69%63%6B%20%78\r\n"});
}

TEST_F(ChatCommand, NickHasItsConstantsInTheToast) {
    expectConsumed("!nick <d>", {"PRP 12 MFN %31%31%2F%32%31%2F%32%36\r\n"});
    EXPECT_THAT(toasts(), ElementsAre("Changed Nick Name To:\r\n11/21/26"));
}

TEST_F(ChatCommand, NickIsToastedAsItWasBeforeTheSecondLookAtConstants) {
    join("bob@example.com %3Cme%3E");
    expectConsumed("!nick <cn>", {"PRP 12 MFN %61%6E%6E%40%65%78%61%6D%70%6C%65%2E%63%6F%6D\r\n"});
    EXPECT_THAT(toasts(), ElementsAre("Changed Nick Name To:\r\n<me>"));
}

TEST_F(ChatCommand, NickGoesToTheNotificationConnectionFromAnyOther) {
    spine.relay();
    spine.server(1).sent.clear();
    EXPECT_THAT(toServer(clientText("!nick A", "77"), 2), ElementsAre(Bytes(cover("77"))));
    EXPECT_THAT(spine.server(1).sent, ElementsAre("PRP 77 MFN %41\r\n"));
}

TEST_F(ChatCommand, NoteKeepsAllItsLines) {
    expectConsumed("!note milk\r\n\r\neggs");
    EXPECT_THAT(spine.facilities.notes.list(), ElementsAre("milk\r\n\r\neggs"));
    EXPECT_THAT(toasts(), ElementsAre("Note added."));
}

TEST_F(ChatCommand, NoteIsTheLastOfTheListAndOnTheDisk) {
    (void)typed("!note one");
    (void)typed("!note two <t>");
    NotesStore read(spine.facilities.folder.path() / "notes.cwv", [](std::string_view) {});
    read.load();
    EXPECT_THAT(read.list(), ElementsAre("one", "two 12:30:05"));
}

TEST_F(ChatCommand, NoteAloneIsANoteOfThatWord) {
    (void)typed("!note");
    EXPECT_THAT(spine.facilities.notes.list(), ElementsAre("!note"));
}

TEST_F(ChatCommand, NotesShowsTheWindowWhateverFollows) {
    expectConsumed("!notes");
    expectConsumed("!notes extra");
    EXPECT_THAT(spine.windows.calls, ElementsAre("show the notes", "show the notes"));
    EXPECT_THAT(spine.facilities.notes.list(), IsEmpty());
    EXPECT_THAT(toasts(), IsEmpty());
}

TEST_F(ChatCommand, RandomColorsTurnOnAndOffUnderBothSpellings) {
    expectConsumed("!rancolor");
    EXPECT_TRUE(spine.host.values.rancolorOn);
    expectConsumed("!rancolour now");
    EXPECT_FALSE(spine.host.values.rancolorOn);
    EXPECT_THAT(toasts(), ElementsAre("Random Message Colors On.", "Random Message Colors Off."));
}

TEST_F(ChatCommand, RandomColorsHoldInAllConversationsFromTheNextMessageOn) {
    spine.relay();
    (void)typed("!rancolor");
    EXPECT_NE(only(toServer(clientText("hello"), 2)), clientText("hello"));
}

struct Search {
    const char* command;
    const char* path;
};

void PrintTo(const Search& search, std::ostream* out) { *out << escaped(search.command); }

class SearchCommand : public ChatCommand, public testing::WithParamInterface<Search> {};

TEST_P(SearchCommand, OpensItsSiteWithTheTextBehindIt) {
    const std::string command = GetParam().command;
    const auto& opened = spine.facilities.browser.opened;
    expectConsumed(command + " a b&c%\r\nsecond");
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_TRUE(opened.back().starts_with("http://"));
    EXPECT_TRUE(opened.back().ends_with(GetParam().path + std::string("a%20b&c%"))) << opened[0];
    expectConsumed(command);
    EXPECT_TRUE(opened.back().ends_with(GetParam().path + command)) << opened[1];
    expectConsumed(command + " ");
    EXPECT_TRUE(opened.back().ends_with(GetParam().path)) << opened[2];
    EXPECT_THAT(toasts(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Sites, SearchCommand,
                         Values(Search{"!google", "/search?q="},
                                Search{"!dictionary", "/search?q="},
                                Search{"!thesaurus", "/search?q="},
                                Search{"!acronym", "/af-query.asp?String=exact&Acronym="}));

TEST_F(ChatCommand, MakeMeSaySpeaksInTheContactsNameBoldAndBlack) {
    expectConsumed("!makemesay hello there\r\ndropped");
    EXPECT_THAT(newToClient(), ElementsAre(Bytes(spoken("hello there", "000000", "B"))));
    EXPECT_THAT(toasts(), IsEmpty());
}

TEST_F(ChatCommand, PreviewShowsTheWholeTextWithItsConstants) {
    expectConsumed("!preview <t>\r\nsecond");
    EXPECT_THAT(
        newToClient(),
        ElementsAre(Bytes(spoken("Message Preview: \r\n\r\n12:30:05\r\nsecond", "000000", "B"))));
}

TEST_F(ChatCommand, IsCoveredUnderTheNumberThatTookTheChangeOfItsLength) {
    const std::string payload = textPayload("!note <t>");
    const std::string number = std::to_string(payload.size());
    EXPECT_THAT(toServer(message("MSG " + number + " N", payload)),
                ElementsAre(Bytes(cover(std::to_string(payload.size() + 5)))));
}

TEST_F(ChatCommand, ForceExitEndsTheProcessAndSendsNothing) {
    spine.server().sent.clear();
    EXPECT_THROW(spine.client().arrive(clientText("!forceexit now")), ProcessEnded);
    EXPECT_THAT(spine.windows.calls, ElementsAre("take the icon away"));
    EXPECT_THAT(spine.server().sent, IsEmpty());
}

class SpeakingCommand : public Talk, public testing::WithParamInterface<std::string> {};

TEST_P(SpeakingCommand, NeedsAContactWithAddressAndNick) {
    EXPECT_EQ(typed(GetParam() + " hello"), cover("12", ""));
    join("bob@example.com ");
    EXPECT_EQ(typed(GetParam() + " hello"), cover("12", ""));
    join(" Bob");
    EXPECT_EQ(typed(GetParam() + " hello"), cover("12", ""));
    EXPECT_THAT(newToClient(), IsEmpty());
    EXPECT_THAT(toasts(), testing::Each("No user in conversation."));
    EXPECT_EQ(toasts().size(), 3U);
}

INSTANTIATE_TEST_SUITE_P(Words, SpeakingCommand, Values("!makemesay", "!preview"));

}  // namespace
