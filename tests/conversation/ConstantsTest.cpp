#include "tests/conversation/Talk.h"

#include <cctype>

namespace {

using testing::Values;

/// Account, contact, player, clock and machine all have something to say.
class Constants : public Talk {
protected:
    Constants() {
        signIn();
        join("bob@example.com %42ob%20B");
        spine.host.values.nickname = "Ann Lee";
        spine.facilities.player.title = "7. Artist - Title - Winamp";
    }
};

struct Constant {
    const char* token;
    const char* value;
};

void PrintTo(const Constant& constant, std::ostream* out) { *out << escaped(constant.token); }

class EveryConstant : public Constants, public testing::WithParamInterface<Constant> {
protected:
    std::string token = GetParam().token;
    std::string value = GetParam().value;
};

TEST_P(EveryConstant, IsReplacedByItsValueAndTheLengthIsTrue) {
    EXPECT_EQ(typed("It is " + token), clientText("It is " + value));
}

TEST_P(EveryConstant, IsReplacedWhereverItOccurs) {
    EXPECT_EQ(typed(token + token + "\r\nand " + token),
              clientText(value + value + "\r\nand " + value));
}

TEST_P(EveryConstant, IsExactInCaseAndBrackets) {
    std::string capitals = token;
    for (char& letter : capitals)
        letter = static_cast<char>(std::toupper(letter));
    const std::string text = capitals + token.substr(0, token.size() - 1) + " " + token.substr(1) +
                             "< " + token.substr(1);
    EXPECT_EQ(typed(text), clientText(text));
}

TEST_P(EveryConstant, StaysAsTypedWhenTheOptionIsFalse) {
    set("constants", "False");
    EXPECT_EQ(typed(token), clientText(token));
}

TEST_P(EveryConstant, WorksForEveryOtherWordOfTheOption) {
    for (const std::string word : {"", "True", "false", "FALSE", "0", "False "}) {
        set("constants", word);
        EXPECT_EQ(typed(token), clientText(value)) << word;
    }
}

TEST_P(EveryConstant, IsReplacedInTheHeadersToo) {
    const std::string ahead = "MIME-Version: 1.0\r\nContent-Type: application/x\r\nA: ";
    EXPECT_EQ(sent(ahead + token + "\r\n\r\nx"), message("MSG 12 N", ahead + value + "\r\n\r\nx"));
}

TEST_P(EveryConstant, StaysAsItIsInWhatContactsSend) {
    EXPECT_EQ(received(contactText(token)), contactText(token));
}

INSTANTIATE_TEST_SUITE_P(Table, EveryConstant,
                         Values(Constant{"<ws>", "Artist - Title"}, Constant{"<mn>", "Ann Lee"},
                                Constant{"<me>", "ann@example.com"}, Constant{"<cn>", "Bob B"},
                                Constant{"<ce>", "bob@example.com"}, Constant{"<t>", "12:30:05"},
                                Constant{"<d>", "11/21/26"}, Constant{"<tr>", "514.2 Mb"},
                                Constant{"<ur>", "128.6 Mb"}, Constant{"<ru>", "4%"},
                                Constant{"<ut>", "0 days, 1 hours, 5 minutes and 9 seconds."}));

TEST_F(Constants, AreReplacedInTheFirstLineToo) {
    EXPECT_EQ(only(toServer("MSG <d> N 13\r\n1\r\n2\r\n3\r\n4\r\nx")),
              Bytes("MSG 11/21/26 N 13\r\n1\r\n2\r\n3\r\n4\r\nx"));
}

TEST_F(Constants, ThatNothingIsKnownForDisappear) {
    Spine fresh;
    fresh.relay();
    fresh.client().arrive(clientText("[<ws><mn><me><cn><ce>]"));
    EXPECT_EQ(Bytes(fresh.server().sent.back()), clientText("[]"));
}

TEST_F(Constants, TakeTheSongOfTheMoment) {
    EXPECT_EQ(typed("<ws>"), clientText("Artist - Title"));
    spine.facilities.player.title = "8. Other - Winamp [Paused]";
    EXPECT_EQ(typed("<ws>"), clientText("Other"));
    spine.facilities.player.title.clear();
    EXPECT_EQ(typed("<ws>"), clientText(""));
}

TEST_F(Constants, PutBytesOfOtherAlphabetsInAsTheyStand) {
    spine.facilities.player.title = "1. B\xC3\xB6se - \xFF - Winamp";
    EXPECT_EQ(typed("<ws>"), clientText("B\xC3\xB6se - \xFF"));
}

TEST_F(Constants, LaterInTheTableAreFoundInTheValuesOfEarlierOnes) {
    spine.facilities.player.title = "1. <t> - Winamp";
    EXPECT_EQ(typed("<ws>"), clientText("12:30:05"));
    spine.host.values.nickname = "<me><ut>";
    EXPECT_EQ(typed("<mn>"),
              clientText("ann@example.com0 days, 1 hours, 5 minutes and 9 seconds."));
}

TEST_F(Constants, EarlierInTheTableStayInTheValuesOfLaterOnes) {
    join("bob@example.com %3Cws%3E%3Cmn%3E");
    EXPECT_EQ(typed("<cn>"), clientText("<ws><mn>"));
}

TEST_F(Constants, DoNotReplaceWhatTheyBringInThemselves) {
    spine.host.values.nickname = "<mn>!<mn>";
    EXPECT_EQ(typed("<mn>"), clientText("<mn>!<mn>"));
}

TEST_F(Constants, LeaveATypingNoticeAsItIs) {
    EXPECT_EQ(sent(typingPayload()), message("MSG 12 N", typingPayload()));
}

TEST_F(Constants, AreReplacedInATypingNotice) {
    EXPECT_EQ(sent(typingPayload("<me>")), message("MSG 12 N", typingPayload()));
}

TEST_F(Constants, ChangeATransactionNumberThatHasTheDigitsOfTheLength) {
    const std::string before = textPayload("<t>");
    const std::string number = std::to_string(before.size());
    const std::string after = textPayload("12:30:05");
    EXPECT_EQ(only(toServer(message("MSG " + number + " N", before))),
              "MSG " + std::to_string(after.size()) + " N " + number + "\r\n" + after);
}

TEST_F(Constants, FailAsAWholeWhereOneHasNoValue) {
    spine.facilities.machine.status.available = 0;
    EXPECT_EQ(typed("<t> <ru> !"), clientText("<t> <ru> !"));
    EXPECT_EQ(typed("!note <ru>"), clientText("!note <ru>"));
    EXPECT_TRUE(toasts().empty());
}

TEST_F(Constants, WithoutAValueHarmNoTextThatDoesWithoutThem) {
    spine.facilities.machine.status.available = 0;
    EXPECT_EQ(typed("<t> !"), clientText("12:30:05 !"));
    (void)typed("!rancolor");
    EXPECT_TRUE(spine.host.values.rancolorOn);
}

TEST_F(Constants, FailAsAWholeWhereTheyWouldMakeTooLongAText) {
    const std::string text = "<mn><t>";
    // The time is one character longer than both tokens.
    std::string& nickname = spine.host.values.nickname;
    nickname = std::string(32767 - clientText(text).size(), 'n');
    EXPECT_EQ(typed(text), clientText(text));
    nickname.pop_back();
    EXPECT_EQ(typed(text), clientText(nickname + "12:30:05"));
}

TEST_F(Constants, FailBeforeTheyTakeMemory) {
    spine.host.values.nickname = std::string(60000, 'n');
    spine.facilities.player.title = "1. " + std::string(30000, 's') + " - Winamp";
    std::string text;
    for (int times = 0; times < 300; ++times)
        text += "<mn>";
    EXPECT_EQ(typed(text), clientText(text));
}

}  // namespace
