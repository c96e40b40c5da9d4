#include "base/Failure.h"
#include "conversation/messageConstants.h"
#include "desktop/mdlFunctions.h"
#include "tests/conversation/LoneConversation.h"
#include "tests/conversation/Talk.h"

namespace {

using testing::ElementsAre;
using testing::Values;

struct Token {
    const char* token;
    const char* value;
};

void PrintTo(const Token& token, std::ostream* out) { *out << escaped(token.token); }

class NickToken : public testing::TestWithParam<Token> {
protected:
    LoneProgram program;

    NickToken() {
        program.values.email = "ann@example.com";
        program.values.nickname = "Ann";
        program.facilities.player.title = "1. Song - Winamp";
    }
    std::string expanded(const std::string& text) {
        return messageConstants::expandNickName(text, program.services);
    }
};

TEST_P(NickToken, IsReplacedWhereverItOccurs) {
    const std::string token = GetParam().token;
    const std::string value = GetParam().value;
    EXPECT_EQ(expanded("a " + token + token + " b"), "a " + value + value + " b");
}

TEST_P(NickToken, IsReplacedWhateverTheOptionOfMessagesAndTheLengthSay) {
    program.facilities.settings.WriteSetting("Options", "constants", "False");
    const std::string much(5000, '.');
    EXPECT_EQ(expanded(much + GetParam().token), much + GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Known, NickToken,
                         Values(Token{"<me>", "ann@example.com"}, Token{"<t>", "12:30:05"},
                                Token{"<d>", "11/21/26"}, Token{"<tr>", "514.2 Mb"},
                                Token{"<ur>", "128.6 Mb"}, Token{"<ru>", "4%"},
                                Token{"<ut>", "0 days, 1 hours, 5 minutes and 9 seconds."}));

INSTANTIATE_TEST_SUITE_P(Unknown, NickToken,
                         Values(Token{"<ws>", "<ws>"}, Token{"<mn>", "<mn>"}, Token{"<cn>", "<cn>"},
                                Token{"<ce>", "<ce>"}, Token{"<T>", "<T>"}, Token{"<ME>", "<ME>"}));

class NickTokens : public NickToken {};

TEST_F(NickTokens, AreReplacedInTheOrderOfTheTable) {
    program.values.email = "<t>";
    program.facilities.clock.time = "<d>";
    program.facilities.clock.date = "<me>";
    EXPECT_EQ(expanded("<me>"), "<me>");
}

TEST_F(NickTokens, FailWhereOneHasNoValue) {
    program.facilities.machine.status.available = 0;
    EXPECT_THROW((void)expanded("Ann <ru>"), Failure);
    EXPECT_EQ(expanded("Ann"), "Ann");
}

TEST_F(NickTokens, FailWhereTheyWouldMakeTooLongANickName) {
    program.values.email = std::string(32767, 'a');
    EXPECT_EQ(expanded("<me>").size(), 32767U);
    EXPECT_THROW((void)expanded("<me><me>"), Failure);
    EXPECT_THROW((void)expanded("x<me>"), Failure);
}

class ApplyNickTemplate : public Talk {
protected:
    /// The nick name that the server was asked for.
    std::string asked() {
        const std::string& chunk = spine.server().sent.at(0);
        EXPECT_TRUE(chunk.starts_with("PRP 12 MFN ")) << escaped(chunk);
        return need(mdlFunctions::UrlDecode(chunk.substr(11, chunk.size() - 13)));
    }
};

TEST_F(ApplyNickTemplate, KnowsAllConstantsThroughTheMessageOfTheCommand) {
    signIn();
    join("bob@example.com %42ob");
    spine.host.values.nickname = "Ann";
    spine.facilities.player.title = "1. Song - Winamp";
    (void)toServer(clientText("!nick <ws>|<mn>|<me>|<cn>|<ce>|<t>|<d>|<ru>"));
    EXPECT_EQ(asked(), "Song|Ann|ann@example.com|Bob|bob@example.com|12:30:05|11/21/26|4%");
}

TEST_F(ApplyNickTemplate, ExpandsTheSevenASecondTime) {
    signIn();
    join("bob@example.com %3Cd%3E%3Cws%3E");
    spine.facilities.clock.date = "1";
    (void)toServer(clientText("!nick <cn>"));
    EXPECT_EQ(asked(), "1<ws>");
}

TEST_F(ApplyNickTemplate, SendsNothingWithoutANotificationConnectionAndToastsAllTheSame) {
    EXPECT_EQ(typed("!nick Ann"), cover("12", ""));
    EXPECT_THAT(toasts(), ElementsAre("Changed Nick Name To:\r\nAnn"));
}

TEST_F(ApplyNickTemplate, LetsTheCommandThroughWhereTheConnectionTakesNothing) {
    signIn();
    spine.relay();
    spine.server(1).sendFails = true;
    EXPECT_EQ(only(toServer(clientText("!nick Ann"), 2)), clientText("!nick Ann"));
    EXPECT_TRUE(toasts().empty());
}

TEST_F(ApplyNickTemplate, LetsANickThroughThatIsTooLong) {
    signIn();
    join("bob@example.com " + std::string(32000, 'b'));
    const std::string text = "!nick " + std::string(1000, '.') + "<cn>";
    EXPECT_EQ(typed(text), clientText(text));
    EXPECT_TRUE(toasts().empty());
}

}  // namespace
