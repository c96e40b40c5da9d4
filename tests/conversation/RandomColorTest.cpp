#include "base/Failure.h"
#include "conversation/messageTools.h"
#include "tests/conversation/Talk.h"

#include <cmath>

namespace {

using testing::Values;

struct Drawn {
    float number;
    const char* code;
};

void PrintTo(const Drawn& drawn, std::ostream* out) { *out << drawn.number; }

class ColorCode : public testing::TestWithParam<Drawn> {};

TEST_P(ColorCode, IsTheDrawnPartOfWhiteInHexadecimal) {
    EXPECT_EQ(messageTools::colorCode(GetParam().number), GetParam().code);
}

/// The number whose product with white is `value`, as near as a number of single precision is.
float drawnFor(double value) { return static_cast<float>(value / 16777215.0); }

INSTANTIATE_TEST_SUITE_P(Numbers, ColorCode,
                         Values(Drawn{0.0F, "0"}, Drawn{0.5F, "800000"}, Drawn{0.25F, "400000"},
                                Drawn{drawnFor(15), "f"}, Drawn{drawnFor(16), "10"},
                                Drawn{drawnFor(255), "ff"}, Drawn{drawnFor(0.4), "0"},
                                Drawn{drawnFor(0xA1B2C3), "a1b2c3"}));

TEST(ColorCode, IsNeverAboveWhite) {
    EXPECT_EQ(messageTools::colorCode(std::nextafter(1.0F, 0.0F)), "fffffe");
}

class RandomColor : public Talk {
protected:
    FakeFacilities::FixedChance& chance = spine.facilities.chance;

    RandomColor() { spine.host.values.rancolorOn = true; }

    static std::string colored(const std::string& code, const std::string& text = "hello") {
        return "MIME-Version: 1.0\r\nContent-Type: text/plain; charset=UTF-8\r\n"
               "X-MMS-IM-Format: FN=Arial; EF=; CO=" +
               code + "; CS=0; PF=22\r\n\r\n" + text;
    }
    std::string applied(const std::string& message) {
        return messageTools::ApplyRandomColor(message, chance).value_or("nothing");
    }
};

TEST_F(RandomColor, RaisesTheLengthByWhatTheCodeIsLonger) {
    chance.next = drawnFor(0xA1B2C3);
    EXPECT_EQ(Bytes(applied("MSG 3 N 100\r\n" + colored("0"))),
              "MSG 3 N 105\r\n" + colored("a1b2c3"));
}

TEST_F(RandomColor, LeavesTheLengthForACodeOfTheSameLength) {
    chance.next = drawnFor(3);
    EXPECT_EQ(Bytes(applied("MSG 3 N 100\r\n" + colored("0"))), "MSG 3 N 100\r\n" + colored("3"));
}

TEST_F(RandomColor, LowersTheLengthByWhatTheCodeIsShorter) {
    chance.next = 0;
    EXPECT_EQ(Bytes(applied("MSG 3 N 100\r\n" + colored("ff00ff"))),
              "MSG 3 N 95\r\n" + colored("0"));
}

TEST_F(RandomColor, FillsAnEmptyCode) {
    chance.next = drawnFor(255);
    EXPECT_EQ(Bytes(applied("MSG 3 N 100\r\n" + colored(""))), "MSG 3 N 102\r\n" + colored("ff"));
}

TEST_F(RandomColor, TakesTheOldCodeUpToTheFirstSemicolon) {
    chance.next = 0;
    const auto with = [](const std::string& declared, const std::string& field) {
        return "MSG 3 N " + declared + "\r\n1\r\n2\r\nX-MMS-IM-Format: FN=A; EF=; " + field +
               " CS=0\r\n\r\ntext";
    };
    EXPECT_EQ(Bytes(applied(with("100", "CO=12;34;"))), with("99", "CO=0;"));
    EXPECT_EQ(Bytes(applied(with("100", "CO=12CO=3;"))), with("95", "CO=0;"));
    EXPECT_EQ(Bytes(applied(with("100", "xCO=12;"))), with("99", "CO=0;"));
    EXPECT_EQ(Bytes(applied(with("100", "CO=123"))), with("98", "CO=0;"));
    EXPECT_EQ(Bytes(applied(with("100", "CO="))), with("101", "CO=0;"));
}

TEST_F(RandomColor, ReplacesTheFirstFieldOfThatWordingWhereverItStands) {
    chance.next = drawnFor(0xFF);
    EXPECT_EQ(Bytes(applied("MSG CO=0; N 100\r\n" + colored("0"))),
              "MSG CO=ff; N 101\r\n" + colored("0"));
}

TEST_F(RandomColor, ChangesTheTransactionNumberThatHasTheDigitsOfTheLength) {
    chance.next = drawnFor(0xFF);
    EXPECT_EQ(Bytes(applied("MSG 100 N 100\r\n" + colored("0"))),
              "MSG 101 N 100\r\n" + colored("ff"));
}

TEST_F(RandomColor, LooksForTheLengthAsItIsWritten) {
    chance.next = drawnFor(0xFF);
    EXPECT_EQ(Bytes(applied("MSG 3 N 0100\r\n" + colored("0"))), "MSG 3 N 101\r\n" + colored("ff"));
}

class NoFormat : public RandomColor, public testing::WithParamInterface<std::string> {};

TEST_P(NoFormat, IsColoredInNoWay) { EXPECT_EQ(applied(GetParam()), "nothing"); }

INSTANTIATE_TEST_SUITE_P(
    Messages, NoFormat,
    Values("", "MSG 3 N 5", "MSG 3 N 5\r\n1\r\n2", "MSG 3 N 5\r\n1\r\n2\r\na b CO=0;",
           "MSG 3 N 5\r\n1\r\n2\r\na b c EF=;", "MSG 3 N 5\r\n1\r\n2\r\na b c co=0;",
           "MSG 3 N 5\r\n1\r\n2\r\na b CO=0; d", "MSG 3 N\r\n1\r\n2\r\na b c CO=0;",
           "MSG 3 N five\r\n1\r\n2\r\na b c CO=0;", message("MSG 3 U", typingPayload())));

TEST_F(RandomColor, OfATextOfTheUserIsDrawnForEachMessage) {
    chance.next = drawnFor(0xFF);
    EXPECT_EQ(typed("hello"), message("MSG 12 N", colored("ff")));
    chance.next = drawnFor(0xA1B2C3);
    EXPECT_EQ(typed("hello"), message("MSG 12 N", colored("a1b2c3")));
}

TEST_F(RandomColor, LeavesMessagesAloneWhileItIsOff) {
    spine.host.values.rancolorOn = false;
    EXPECT_EQ(typed("hello"), clientText("hello"));
}

TEST_F(RandomColor, LeavesWhatContactsSendAlone) {
    EXPECT_EQ(received(contactText("hello")), contactText("hello"));
}

TEST_F(RandomColor, LeavesATypingNoticeAsItCame) {
    EXPECT_EQ(sent(typingPayload("<me>")), message("MSG 12 N", typingPayload("<me>")));
}

TEST_F(RandomColor, LeavesATextWithoutAFormatLineAsItCameConstantsAndCommandsIncluded) {
    const std::string payload =
        "MIME-Version: 1.0\r\nContent-Type: text/plain\r\nX-Other: 1\r\n\r\n!nick <t>";
    EXPECT_EQ(sent(payload), message("MSG 12 N", payload));
    EXPECT_TRUE(toasts().empty());
}

TEST_F(RandomColor, ExpandsConstantsInAMessageThatIsNoText) {
    const std::string payload =
        "MIME-Version: 1.0\r\nContent-Type: application/x\r\nX-Other: 1\r\n\r\nat ";
    EXPECT_EQ(sent(payload + "<t>"), message("MSG 12 N", payload + "12:30:05"));
}

}  // namespace
