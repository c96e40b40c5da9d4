#include "base/Failure.h"
#include "desktop/mdlFunctions.h"
#include "tests/conversation/Talk.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Values;

class WinampCommand : public Talk {
protected:
    WinampCommand() {
        signIn();
        spine.facilities.player.title = "7. Artist - Title - Winamp";
        spine.host.values.nickname = "Ann";
    }
    /// The nick names that the server was asked for since the last look.
    std::vector<std::string> asked() {
        std::vector<std::string> nicks;
        for (const std::string& chunk : spine.server().sent) {
            const std::string head = "PRP 12 MFN ";
            if (chunk.starts_with(head)) {
                nicks.push_back(need(mdlFunctions::UrlDecode(
                    chunk.substr(head.size(), chunk.size() - head.size() - 2))));
            }
        }
        return nicks;
    }
    /// The nick names that the server was asked for by `text`, which was consumed.
    std::vector<std::string> nicksOf(const std::string& text) {
        EXPECT_EQ(toServer(clientText(text)).back(), cover("12"));
        return asked();
    }
    std::vector<int>& commands() { return spine.facilities.player.commands; }
};

struct Transport {
    const char* text;
    int command;
};

void PrintTo(const Transport& transport, std::ostream* out) { *out << escaped(transport.text); }

class TransportCommand : public WinampCommand, public testing::WithParamInterface<Transport> {};

TEST_P(TransportCommand, ReachesThePlayerAndNothingElse) {
    EXPECT_THAT(nicksOf(GetParam().text), IsEmpty());
    EXPECT_THAT(commands(), ElementsAre(GetParam().command));
    EXPECT_THAT(toasts(), IsEmpty());
    EXPECT_FALSE(spine.host.values.winampOn);
    EXPECT_EQ(spine.host.values.winampPrefix, "");
}

TEST_P(TransportCommand, LeavesTheNickNameThatIsOn) {
    (void)nicksOf("!winamp on air:");
    toasts().clear();
    EXPECT_THAT(nicksOf(GetParam().text), IsEmpty());
    EXPECT_TRUE(spine.host.values.winampOn);
    EXPECT_EQ(spine.host.values.winampPrefix, "on air:");
}

TEST_P(TransportCommand, WithoutAPlayerDoesAndReportsNothing) {
    spine.facilities.player.title.clear();
    EXPECT_THAT(nicksOf(GetParam().text), IsEmpty());
    EXPECT_THAT(commands(), IsEmpty());
    EXPECT_THAT(toasts(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Words, TransportCommand,
                         Values(Transport{"!winamp prev", 40044}, Transport{"!winamp play", 40045},
                                Transport{"!winamp pause", 40046}, Transport{"!winamp stop", 40047},
                                Transport{"!winamp next", 40048},
                                Transport{"!winamp next   ", 40048},
                                Transport{"!winamp non-stop", 40047},
                                Transport{"!winamp now I play", 40045},
                                Transport{"!winamp stop\r\nprefix", 40047}));

TEST_F(WinampCommand, SwitchesTheNickNameOn) {
    EXPECT_THAT(nicksOf("!winamp on air:"), ElementsAre("on air: Artist - Title"));
    EXPECT_THAT(toasts(), ElementsAre("Winamp Nick Name On."));
    EXPECT_TRUE(spine.host.values.winampOn);
    EXPECT_EQ(spine.host.values.winampPrefix, "on air:");
    EXPECT_EQ(spine.host.values.prewinampnickName, "Ann");
}

TEST_F(WinampCommand, SwitchesBackToTheNickNameBeforeIt) {
    (void)nicksOf("!winamp on air:");
    spine.host.values.nickname = "on air: Artist - Title";
    toasts().clear();
    EXPECT_THAT(nicksOf("!winamp"), ElementsAre("Ann"));
    EXPECT_THAT(toasts(), ElementsAre("Winamp Nick Name Off."));
    EXPECT_FALSE(spine.host.values.winampOn);
}

TEST_F(WinampCommand, IgnoresATextBehindItWhenItSwitchesOff) {
    (void)nicksOf("!winamp on air:");
    EXPECT_THAT(nicksOf("!winamp something"), ElementsAre("Ann"));
    EXPECT_EQ(spine.host.values.winampPrefix, "on air:");
}

TEST_F(WinampCommand, LeavesTheNickNameWhereTheOneBeforeIsNotKnown) {
    spine.host.values.nickname.clear();
    (void)nicksOf("!winamp on air:");
    toasts().clear();
    EXPECT_THAT(nicksOf("!winamp"), IsEmpty());
    EXPECT_THAT(toasts(), ElementsAre("Winamp Nick Name Off.\r\nYour nick name stays: the one "
                                      "before is not known."));
    EXPECT_FALSE(spine.host.values.winampOn);
}

TEST_F(WinampCommand, ExpandsTheOldNickNameWhenItComesBack) {
    spine.host.values.nickname = "Ann at <t>";
    (void)nicksOf("!winamp on air:");
    EXPECT_THAT(nicksOf("!winamp"), ElementsAre("Ann at 12:30:05"));
    EXPECT_EQ(spine.host.values.prewinampnickName, "Ann at 12:30:05");
}

TEST_F(WinampCommand, AloneIsItsOwnPrefix) {
    EXPECT_THAT(nicksOf("!winamp"), ElementsAre("!winamp Artist - Title"));
}

TEST_F(WinampCommand, WithABlankBehindItHasAnEmptyPrefix) {
    EXPECT_THAT(nicksOf("!winamp "), ElementsAre(" Artist - Title"));
}

TEST_F(WinampCommand, LosesItsWordWhereItFirstStandsWithABlank) {
    EXPECT_THAT(nicksOf("!winamp a !winamp b"), ElementsAre("a !winamp b Artist - Title"));
}

TEST_F(WinampCommand, WithNothingPlayingIsThePrefixAndABlank) {
    spine.facilities.player.title.clear();
    EXPECT_THAT(nicksOf("!winamp on air:"), ElementsAre("on air: "));
}

TEST_F(WinampCommand, KeepsTheTimeOfSwitchingOnInThePrefix) {
    (void)nicksOf("!winamp since <t>");
    spine.facilities.clock.time = "13:00:00";
    EXPECT_EQ(spine.host.values.winampPrefix, "since 12:30:05");
}

TEST_F(WinampCommand, ExpandsATokenThatTheSongBringsAlong) {
    spine.facilities.player.title = "7. <d> - Title - Winamp";
    EXPECT_THAT(nicksOf("!winamp on air:"), ElementsAre("on air: 11/21/26 - Title"));
}

TEST_F(WinampCommand, TakesItsFirstLineAlone) {
    EXPECT_THAT(nicksOf("!winamp on air:\r\nstop"), ElementsAre("on air: Artist - Title"));
    EXPECT_THAT(commands(), IsEmpty());
}

TEST_F(WinampCommand, WithoutAServerSwitchesAllTheSame) {
    spine.host.values.serverID = 0;
    EXPECT_THAT(nicksOf("!winamp on air:"), IsEmpty());
    EXPECT_TRUE(spine.host.values.winampOn);
    EXPECT_THAT(toasts(), ElementsAre("Winamp Nick Name On."));
}

TEST_F(WinampCommand, WithoutAServerExpandsTheOldNickNameAllTheSame) {
    spine.host.values.serverID = 0;
    spine.host.values.nickname = "Ann at <t>";
    (void)nicksOf("!winamp on air:");
    EXPECT_EQ(spine.host.values.prewinampnickName, "Ann at <t>");
    (void)nicksOf("!winamp");
    EXPECT_EQ(spine.host.values.prewinampnickName, "Ann at 12:30:05");
}

TEST_F(WinampCommand, OutlivesTheConnectionThatItWasTypedOn) {
    (void)nicksOf("!winamp on air:");
    spine.server().lose();
    spine.watch().pass();
    ASSERT_TRUE(spine.host.instances().empty());
    EXPECT_EQ(spine.host.values.serverID, 0);
    EXPECT_TRUE(spine.host.values.winampOn);
    EXPECT_EQ(spine.host.values.winampPrefix, "on air:");
}

}  // namespace
