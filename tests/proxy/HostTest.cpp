#include "tests/support/Spine.h"
#include "tests/support/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;

using namespace std::string_view_literals;

constexpr const char* firstRun = "show the first run";

TEST(Start, ShowsTheIconLoadsTheTitleAndListensOnPort1090) {
    Spine spine;
    EXPECT_EQ(spine.host.Load(), frmMain::Start::Listening);
    EXPECT_EQ(spine.listener().listensOn, 1090);
    EXPECT_THAT(spine.windows.calls,
                ElementsAre("show the icon", "load the title", "listen", firstRun));
}

TEST(Start, ReadsTheNotesThatAreThere) {
    Spine spine;
    spine.facilities.notes.add("buy milk");
    spine.facilities.notes.savenotes();
    spine.facilities.notes.remove(0);
    (void)spine.host.Load();
    EXPECT_THAT(spine.facilities.notes.list(), ElementsAre("buy milk"));
}

TEST(Start, ASecondCopySaysSoAndThenTakesItsIconAway) {
    Spine spine;
    spine.listener().listenTrouble = SocketTrouble{10048, "Address already in use"};
    EXPECT_EQ(spine.host.Load(), frmMain::Start::SecondCopy);
    EXPECT_THAT(spine.windows.calls,
                ElementsAre("show the icon", "load the title", "listen",
                            "critical: Please do not run multiple instances of Cobweave.",
                            "take the icon away"));
}

TEST(Start, AnyOtherTroubleIsReportedAndTheProgramGoesOn) {
    Spine spine;
    spine.listener().listenTrouble = SocketTrouble{13, "Permission denied"};
    EXPECT_EQ(spine.host.Load(), frmMain::Start::NotListening);
    EXPECT_THAT(spine.windows.calls, ElementsAre("show the icon", "load the title", "listen",
                                                 "critical: Error: Permission denied"));
}

TEST(Start, OnlyTheEmptyValueIsAFirstRun) {
    Spine spine;
    spine.settings.WriteSetting("Options", "useristyping", "False");
    (void)spine.host.Load();
    EXPECT_THAT(spine.windows.calls, Not(Contains(firstRun)));
}

TEST(Menu, HasItsEntriesInTheirOrderAndNoneToQuit) {
    Spine spine;
    (void)spine.host.Load();
    std::vector<std::pair<std::string, std::string>> entries;
    for (const MenuEntry& entry : spine.windows.menu) {
        entries.emplace_back(entry.name, entry.caption);
    }
    EXPECT_THAT(entries, ElementsAre(Pair("mnuhelp", "&Help..."), Pair("mnuoptions", "&Options..."),
                                     Pair("mnubar", "-"), Pair("mnunotes", "&Notes..."),
                                     Pair("mnulog", "&Log..."), Pair("mnubar2", "-"),
                                     Pair("mnuabout", "&About...")));
}

TEST(Menu, EachEntryShowsItsWindow) {
    Spine spine;
    (void)spine.host.Load();
    spine.windows.calls.clear();
    for (const MenuEntry& entry : spine.windows.menu) {
        entry.action();
    }
    EXPECT_THAT(spine.windows.calls,
                ElementsAre("show the help", "show the options", "show the notes", "show the log",
                            "show the about box"));
}

TEST(Connections, AreNumberedFromOneAndTakeOverTheRequest) {
    Spine spine;
    spine.request();
    EXPECT_THAT(spine.client().accepted, ElementsAre(101));
    EXPECT_EQ(spine.instance(1).record().formID, 1);
}

TEST(Connections, KeepRisingInNumberWhateverBecameOfTheEarlierOnes) {
    Spine spine;
    for (std::size_t count = 1; count <= 3; ++count) {
        spine.relay();
        spine.client(count).lose();
        spine.watch(count).pass();
    }
    EXPECT_THAT(spine.host.instances(), IsEmpty());
    spine.request();
    ASSERT_EQ(spine.host.instances().size(), 1U);
    EXPECT_EQ(spine.instance(4).record().formID, 4);
}

class Stranger : public testing::TestWithParam<std::string_view> {};

TEST_P(Stranger, GetsNoNumberAndNoSlotAndNoHearing) {
    Spine spine;
    const std::size_t sockets = spine.network.sockets.size();
    spine.request(std::string(GetParam()));
    EXPECT_TRUE(spine.host.instances().empty());
    EXPECT_EQ(spine.network.sockets.size(), sockets);
    EXPECT_EQ(spine.host.values.tranID, "");
    spine.relay();
    EXPECT_EQ(spine.instance(1).record().formID, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Beginnings, Stranger,
    testing::Values("POST / HTTP/1.1\r\nContent-Length: 99\r\n\r\nMSG 1 N 9"sv, "VER 1 MSNP9\r\n"sv,
                    "\x04"sv, "\x04\x02\x07\x47\x0A\x01\x02\x03"sv, "\x05\x01\x00"sv,
                    // Frames of another protocol alone, whole or not, ask for nothing.
                    "*\x02\x00\x00\x00\x01x"sv, "*\x02\x00\x00\x00\x09x"sv,
                    "*\x02\x00\x00\x00\x01xPOST / HTTP/1.1"sv, "*\x02\x00\x00\x80\x00x"sv));

TEST(Clients, AskForAConnectionWithTheirFirstWords) {
    for (const std::string_view words :
         {"\x04\x01"sv, "\x04\x01\x07\x47\x0A\x01\x02\x03"sv,
          "*\x02\x00\x00\x00\x01x\x04\x01\x07\x47\x0A\x01\x02\x03"sv}) {
        Spine spine;
        spine.request(std::string(words));
        EXPECT_EQ(spine.host.instances().size(), 1U) << testing::PrintToString(words);
    }
}

TEST(Clients, MaySendTheirRequestInPiecesBehindAFrame) {
    const auto frameAndPiece = "*\x02\x00\x00\x00\x01x\x04\x01\x07"sv;
    Spine spine;
    spine.request(std::string(frameAndPiece));
    ASSERT_EQ(spine.host.instances().size(), 1U);
    spine.client().arrive(frameAndPiece);
    spine.client().arrive("\x47\x0A\x01\x02\x03"sv);
    EXPECT_THAT(spine.server().connects, ElementsAre(Pair("10.1.2.3", 1863)));
}

TEST(Connections, AreReportedWhenFewNumbersAreLeft) {
    Spine spine;
    for (int count = 0; count < 29999; ++count)
        spine.host.AddControl();
    EXPECT_THAT(spine.windows.toasts, IsEmpty());
    spine.host.AddControl();
    EXPECT_EQ(spine.windows.toasts.size(), 1U);
    EXPECT_THAT(spine.reported, ElementsAre(spine.windows.toasts.front()));
    spine.host.AddControl();
    EXPECT_EQ(spine.windows.toasts.size(), 1U);
}

TEST(Connections, BeyondTheLastNumberLandOnTheLastInstance) {
    Spine spine;
    for (int count = 0; count < 32767; ++count)
        spine.host.AddControl();
    ASSERT_EQ(spine.host.instances().size(), 32767U);
    FakeWinsock& client = spine.client(32767);
    FakeWinsock& server = spine.server(32767);
    spine.request();
    EXPECT_THAT(client.accepted, ElementsAre(101));
    server.state = SocketState::Connected;
    spine.request();
    EXPECT_THAT(client.accepted, ElementsAre(101, 102));
    EXPECT_EQ(server.state, SocketState::Closed);
    EXPECT_EQ(spine.host.instances().size(), 32767U);
    EXPECT_EQ(spine.instance(32767).record().formID, 32767);
}

TEST(Connections, ThatWereRelayedUnderTheLastNumberEndWhenAnotherTakesItOver) {
    Spine spine;
    for (int count = 0; count < 32766; ++count)
        spine.host.AddControl();
    spine.relay();
    FakeTimer& watch = spine.watch(32767);
    watch.pass();
    ASSERT_TRUE(watch.resting);
    spine.request();
    watch.pass();
    EXPECT_EQ(spine.host.instances().size(), 32766U);
}

TEST(Connections, OfTheLastNumberAreMadeAnewOnceThatIsFree) {
    Spine spine;
    for (int count = 0; count < 32766; ++count)
        spine.host.AddControl();
    spine.relay();
    spine.client(32767).lose();
    spine.watch(32767).pass();
    ASSERT_EQ(spine.host.instances().size(), 32766U);
    spine.request();
    EXPECT_EQ(spine.instance(32767).record().formID, 32767);
}

class SignedIn : public testing::Test {
protected:
    Spine spine;

    SignedIn() {
        spine.relay();
        spine.client(1).arrive("CHG 9 NLN 0\r\n");
        spine.relay();
        spine.host.values.email = "ann@example.com";
        spine.host.values.nickname = "Ann";
        spine.windows.captions.clear();
    }
    void end(std::size_t count) {
        spine.server(count).lose();
        spine.watch(count).pass();
    }
};

TEST_F(SignedIn, TheEndOfTheNotificationConnectionIsTheEndOfTheSignIn) {
    end(1);
    EXPECT_EQ(spine.host.values.serverID, 0);
    EXPECT_FALSE(spine.host.values.loggedin);
    EXPECT_THAT(spine.windows.captions, ElementsAre("Cobweave"));
    EXPECT_THAT(spine.windows.calls, ElementsAre("restore the title"));
}

TEST_F(SignedIn, TheEndOfTheSignInKeepsWhatIsKnownOfTheAccount) {
    end(1);
    EXPECT_EQ(spine.host.values.email, "ann@example.com");
    EXPECT_EQ(spine.host.values.nickname, "Ann");
    EXPECT_EQ(spine.host.values.tranID, "9");
    EXPECT_EQ(spine.host.values.statusPostfix, "0\r\n");
}

TEST_F(SignedIn, TheEndOfAConversationLeavesTrayTitleAndSignInAlone) {
    end(2);
    EXPECT_EQ(spine.host.instances().size(), 1U);
    EXPECT_EQ(spine.host.values.serverID, 1);
    EXPECT_TRUE(spine.host.values.loggedin);
    EXPECT_THAT(spine.windows.captions, IsEmpty());
    EXPECT_THAT(spine.windows.calls, IsEmpty());
}

TEST_F(SignedIn, ASecondAccountIsReportedOnce) {
    spine.server(1).arrive("USR 6 TWN S lc=1033,id=507\r\n");
    spine.server(1).arrive("USR 7 OK ann@example.com Ann 1 0\r\n");
    spine.server(2).arrive("USR 1 OK Ann@Example.com Ann\r\n");
    EXPECT_THAT(spine.windows.toasts, IsEmpty());
    spine.relay();
    for (int count = 0; count < 2; ++count) {
        spine.server(3).arrive("USR 6 TWN S lc=1033,id=507\r\n");
        spine.server(3).arrive("USR 7 OK bob@example.com Bob 1 0\r\n");
        spine.server(1).arrive("USR 7 OK ann@example.com Ann 1 0\r\n");
    }
    EXPECT_THAT(spine.windows.toasts,
                ElementsAre("bob@example.com has signed in as a second account. Cobweave serves "
                            "one at a time: nick names and commands of both get mixed up."));
}

TEST_F(SignedIn, AnotherAccountAfterTheEndOfTheFirstIsNoSecondOne) {
    spine.server(1).arrive("USR 7 OK ann@example.com Ann 1 0\r\n");
    end(1);
    spine.relay();
    spine.server(3).arrive("USR 7 OK bob@example.com Bob 1 0\r\n");
    EXPECT_THAT(spine.windows.toasts, IsEmpty());
}

TEST_F(SignedIn, SigningInAgainIsANewInstance) {
    end(1);
    spine.relay();
    spine.client(3).arrive("CHG 3 NLN 0\r\n");
    EXPECT_EQ(spine.host.values.serverID, 3);
    EXPECT_TRUE(spine.host.values.loggedin);
}

TEST(Alerts, ReachTheToastsAndWithoutLineEndsTheLog) {
    Spine spine;
    spine.settings.WriteSetting("Options", "alertopenwindow", "True");
    spine.settings.WriteSetting("Options", "callby", "fn");
    spine.relay();
    spine.server().arrive("RNG 1 10.0.0.1:1863 CKI 2 anna@example.com Anna\r\n");
    EXPECT_THAT(spine.windows.toasts, ElementsAre("Anna\r\n has opened a conversation window."));
    EXPECT_THAT(spine.windows.logged, ElementsAre("Anna has opened a conversation window."));
}

TEST(Songs, ThatChangeAfterTheHostReachNobody) {
    FakeFacilities facilities;
    FakeNetwork network;
    FakeLoop loop;
    FakeMessageBox boxes;
    { const frmMain host(network, loop, boxes, facilities.all()); }
    // The host's timer is gone, so a sanitizer finds a listener that was left.
    facilities.player.changed();
}

}  // namespace
