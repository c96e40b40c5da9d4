#include "base/Failure.h"
#include "desktop/mdlFunctions.h"
#include "tests/conversation/Talk.h"

#include <deque>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ChangeSong : public Talk {
protected:
    ChangeSong() {
        EXPECT_EQ(spine.host.Load(), frmMain::Start::Listening);
        spine.server().sent.clear();
    }
    void followSongs(const std::string& prefix) {
        spine.host.values.winampOn = true;
        spine.host.values.winampPrefix = prefix;
    }
    /// The nick names that the server was asked for when the player's title changes to `title` and
    /// the timer ticks.
    std::vector<std::string> nicksAfter(const std::string& title) {
        spine.server().sent.clear();
        spine.facilities.player.show(title);
        spine.songTimer().pass();
        std::vector<std::string> nicks;
        const std::string head = "PRP 6 MFN ";
        for (const std::string& chunk : spine.server().sent) {
            EXPECT_TRUE(chunk.starts_with(head) && chunk.ends_with("\r\n")) << escaped(chunk);
            nicks.push_back(need(mdlFunctions::UrlDecode(
                chunk.substr(head.size(), chunk.size() - head.size() - 2))));
        }
        return nicks;
    }
};

TEST_F(ChangeSong, TicksOnceASecond) {
    EXPECT_TRUE(spine.songTimer().enabled);
    EXPECT_EQ(spine.songTimer().interval, std::chrono::milliseconds(1000));
}

TEST_F(ChangeSong, PutsThePrefixAndTheSongIntoTheNickName) {
    signIn();
    followSongs("John - Listening to:");
    EXPECT_THAT(nicksAfter("7. Artist - Title - Winamp"),
                ElementsAre("John - Listening to: Artist - Title"));
    EXPECT_THAT(nicksAfter("8. Other - Winamp"), ElementsAre("John - Listening to: Other"));
}

TEST_F(ChangeSong, AsksOnlyAtAChangeOfTheSong) {
    signIn();
    followSongs("on:");
    EXPECT_EQ(nicksAfter("7. Artist - Title - Winamp").size(), 1U);
    EXPECT_THAT(nicksAfter("7. Artist - Title - Winamp [Paused]"), IsEmpty());
    EXPECT_THAT(nicksAfter("9. Artist - Title - Winamp"), IsEmpty());
    EXPECT_THAT(nicksAfter("9. artist - Title - Winamp").size(), 1U);
}

TEST_F(ChangeSong, PutsTheWordNothingInPlaceOfASongOnceThePlayerHasGone) {
    signIn();
    followSongs("John - Listening to:");
    (void)nicksAfter("7. Artist - Title - Winamp");
    EXPECT_THAT(nicksAfter(""), ElementsAre("John - Listening to: Nothing."));
}

TEST_F(ChangeSong, PutsTheWordNothingInPlaceOfASongThatIsEmpty) {
    signIn();
    followSongs("on:");
    (void)nicksAfter("7. Artist - Title - Winamp");
    EXPECT_THAT(nicksAfter("abc - Winamp"), ElementsAre("on: Nothing."));
}

TEST_F(ChangeSong, PutsTheWordNothingOnlyAfterASong) {
    signIn();
    followSongs("on:");
    EXPECT_THAT(nicksAfter(""), IsEmpty());
}

TEST_F(ChangeSong, FollowsThePlayerWhileTheNickNameIsOff) {
    signIn();
    EXPECT_THAT(nicksAfter("7. Artist - Title - Winamp"), IsEmpty());
    followSongs("on:");
    EXPECT_THAT(nicksAfter("7. Artist - Title - Winamp"), IsEmpty());
    EXPECT_THAT(nicksAfter("8. Other - Winamp"), ElementsAre("on: Other"));
}

TEST_F(ChangeSong, IsNotCaughtUpWithAtALaterSignIn) {
    followSongs("on:");
    EXPECT_THAT(nicksAfter("7. Artist - Title - Winamp"), IsEmpty());
    signIn();
    EXPECT_THAT(nicksAfter("7. Artist - Title - Winamp"), IsEmpty());
    EXPECT_THAT(nicksAfter("8. Other - Winamp"), ElementsAre("on: Other"));
}

TEST_F(ChangeSong, ExpandsTheTokensOfASong) {
    signIn();
    followSongs("on:");
    EXPECT_THAT(nicksAfter("7. <d> <ws> <me> - Winamp"),
                ElementsAre("on: 11/21/26 <ws> ann@example.com"));
}

TEST_F(ChangeSong, FindsNoTokenInAPrefixThatWasTypedWithOne) {
    signIn();
    (void)toServer(clientText("!winamp at <t>:", "6"));
    spine.facilities.clock.time = "13:00:00";
    EXPECT_THAT(nicksAfter("8. Other - Winamp"), ElementsAre("at 12:30:05: Other"));
}

TEST_F(ChangeSong, StopsWhenTheNickNameIsSwitchedOff) {
    signIn();
    followSongs("on:");
    (void)nicksAfter("7. Artist - Title - Winamp");
    (void)toServer(clientText("!winamp", "6"));
    EXPECT_THAT(nicksAfter("8. Other - Winamp"), IsEmpty());
}

TEST_F(ChangeSong, IsTriedAgainAtTheNextOneWhereTheServerTakesNothing) {
    signIn();
    followSongs("on:");
    spine.server().sendFails = true;
    EXPECT_THAT(nicksAfter("7. Artist - Title - Winamp"), IsEmpty());
    spine.server().sendFails = false;
    EXPECT_THAT(nicksAfter("8. Other - Winamp"), ElementsAre("on: Other"));
}

/// A player whose title is another one at each look, as long as there are some.
class HastyPlayer final : public MediaPlayer {
public:
    std::deque<std::string> titles;
    [[nodiscard]] Window WinampWindow() override { return 1; }
    [[nodiscard]] std::string WindowTextOf(Window) override {
        std::string title = titles.front();
        if (titles.size() > 1) titles.pop_front();
        return title;
    }
    void command(Window, int) override {}
};

TEST_F(ChangeSong, ReadsTheSongAnewForTheNextComparison) {
    HastyPlayer player;
    player.titles = {"1. First - Winamp", "2. Second - Winamp"};
    FakeFacilities facilities;
    FakeMessageBox boxes;
    FakeNetwork network;
    FakeLoop loop;
    frmMain host(network, loop, boxes,
                 {facilities.settings, facilities.machine, facilities.clock, facilities.chance,
                  facilities.registry, player, facilities.browser, facilities.notes,
                  facilities.commandLine});
    host.values.winampOn = true;
    network.sockets.at(0)->peeked = Spine::socksRequest;
    network.sockets.at(0)->ConnectionRequest(1);
    FakeWinsock& server = *network.sockets.at(2);
    server.state = SocketState::Connected;
    host.values.serverID = 1;

    host.ChangeSong_Timer();
    EXPECT_THAT(server.sent,
                ElementsAre("PRP  MFN " + need(mdlFunctions::UrlEncode(" First")) + "\r\n"));
    host.ChangeSong_Timer();
    EXPECT_EQ(server.sent.size(), 1U) << "the second song was seen already";
}

}  // namespace
