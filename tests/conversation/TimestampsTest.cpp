#include "conversation/timestamps.h"
#include "tests/conversation/Talk.h"

namespace {

using testing::Values;

class Timestamps : public Talk {
protected:
    Timestamps() {
        set("timestamp", "True");
        set("tsprefix", "[");
        set("tspostfix", "]");
    }
    void haveAddOn() { spine.facilities.registry.hasAddOn = true; }
    Bytes stampedPlain(const std::string& message) {
        return timestamps::StampPlain(message, spine.settings, spine.facilities.clock)
            .value_or("nothing");
    }
    Bytes stampedFormatted(const std::string& message) {
        return timestamps::StampFormatted(message, spine.settings, spine.facilities.clock)
            .value_or("nothing");
    }
};

TEST_F(Timestamps, StandBehindTheTextOfAContact) {
    EXPECT_EQ(received(contactText("hello")), contactText("hello [12:30:05]"));
}

TEST_F(Timestamps, StandOnTheLastLineOfTheText) {
    EXPECT_EQ(received(contactText("one\r\n\r\ntwo")), contactText("one\r\n\r\ntwo [12:30:05]"));
    EXPECT_EQ(received(contactText("one\r\n")), contactText("one\r\n [12:30:05]"));
}

TEST_F(Timestamps, MakeAPayloadOfFortyOneOfFiftyOne) {
    const std::string payload = "1\r\nContent-Type: text\r\n3\r\n\r\n0123456789ab";
    ASSERT_EQ(payload.size(), 40U);
    EXPECT_EQ(received("MSG bob@example.com Bob 40\r\n" + payload),
              "MSG bob@example.com Bob 51\r\n" + payload + " [12:30:05]");
}

TEST_F(Timestamps, AreABlankAndTheTimeWithoutBrackets) {
    set("tsprefix", "");
    set("tspostfix", "");
    EXPECT_EQ(received(contactText("hello")), contactText("hello 12:30:05"));
}

TEST_F(Timestamps, LackOneBracketWhereOneIsNotSet) {
    set("tspostfix", "");
    EXPECT_EQ(received(contactText("hello")), contactText("hello [12:30:05"));
    set("tsprefix", "");
    set("tspostfix", ")");
    EXPECT_EQ(received(contactText("hello")), contactText("hello 12:30:05)"));
}

TEST_F(Timestamps, TakeTheFirstCharacterOfEachBracket) {
    set("tsprefix", "<at ");
    set("tspostfix", "> ");
    EXPECT_EQ(received(contactText("hello")), contactText("hello <12:30:05>"));
}

TEST_F(Timestamps, HaveTheClocksOwnForm) {
    spine.facilities.clock.time = "9:05:00 PM";
    EXPECT_EQ(received(contactText("hello")), contactText("hello [9:05:00 PM]"));
}

TEST_F(Timestamps, HaveNoColourOfTheirOwnWithoutTheAddOn) {
    set("tscolor", "red");
    EXPECT_EQ(received(contactText("hello")), contactText("hello [12:30:05]"));
}

TEST_F(Timestamps, ComeOnTypingNoticesToo) {
    const std::string head = "MSG bob@example.com Bob";
    EXPECT_EQ(received(message(head, typingPayload())),
              message(head, typingPayload() + " [12:30:05]"));
}

TEST_F(Timestamps, ComeOnInvitationsToo) {
    const std::string payload =
        "MIME-Version: 1.0\r\nContent-Type: text/x-msmsgsinvite; charset=UTF-8\r\n\r\nA: b\r\n\r\n";
    const std::string head = "MSG bob@example.com Bob";
    EXPECT_EQ(received(message(head, payload)), message(head, payload + " [12:30:05]"));
}

class TimestampOption : public Timestamps, public testing::WithParamInterface<std::string> {};

TEST_P(TimestampOption, MakesNoTimestampUnlessItReadsTrue) {
    set("timestamp", GetParam());
    EXPECT_EQ(received(contactText("hello")), contactText("hello"));
}

INSTANTIATE_TEST_SUITE_P(Words, TimestampOption, Values("", "False", "true", "TRUE", "1", "True "));

struct Color {
    const char* option;
    const char* code;
};

void PrintTo(const Color& color, std::ostream* out) { *out << escaped(color.option); }

class ColorOption : public Timestamps, public testing::WithParamInterface<Color> {};

TEST_P(ColorOption, IsTheAddOnsNumberForIt) {
    haveAddOn();
    set("tscolor", GetParam().option);
    EXPECT_EQ(received(contactText("hello")),
              contactText("hello\x03\x03" + std::string(GetParam().code) + "\x02 [12:30:05]"));
}

INSTANTIATE_TEST_SUITE_P(Words, ColorOption,
                         Values(Color{"black", "1"}, Color{"red", "4"}, Color{"", "4"},
                                Color{"blue", "blue"}, Color{"Black", "Black"}, Color{"12", "12"}));

TEST_F(Timestamps, AskForTheAddOnAtEachMessage) {
    EXPECT_EQ(received(contactText("hello")), contactText("hello [12:30:05]"));
    haveAddOn();
    EXPECT_EQ(received(contactText("hello")),
              contactText(std::string("hello\x03\x03") + "4\x02 [12:30:05]"));
    spine.facilities.registry.hasAddOn = false;
    EXPECT_EQ(received(contactText("hello")), contactText("hello [12:30:05]"));
}

struct Brackets {
    const char* prefix;
    const char* postfix;
    const char* stamp;
};

void PrintTo(const Brackets& brackets, std::ostream* out) {
    *out << escaped(brackets.prefix + std::string("time") + brackets.postfix);
}

class FormattedBrackets : public Timestamps, public testing::WithParamInterface<Brackets> {};

TEST_P(FormattedBrackets, AreTheUsersOnlyWhereBothAreSet) {
    haveAddOn();
    set("tsprefix", GetParam().prefix);
    set("tspostfix", GetParam().postfix);
    EXPECT_EQ(received(contactText("hello")),
              contactText(std::string("hello\x03\x03") + "4\x02 " + GetParam().stamp));
}

INSTANTIATE_TEST_SUITE_P(Options, FormattedBrackets,
                         Values(Brackets{"", "", "[12:30:05]"}, Brackets{"(", "", "[12:30:05]"},
                                Brackets{"", ")", "[12:30:05]"}, Brackets{"(", ")", "(12:30:05)"},
                                Brackets{"<at", "> ", "<12:30:05>"}));

TEST_F(Timestamps, HaveAProvisionalLengthWhichCountsBothBrackets) {
    set("tsprefix", "");
    EXPECT_EQ(stampedPlain("MSG bob Bob 100\r\nx"), Bytes("MSG bob Bob 111\r\nx 12:30:05]"));
    EXPECT_EQ(stampedFormatted("MSG bob Bob 100\r\nx"),
              "MSG bob Bob 115\r\nx\x03\x03" + std::string("4\x02 [12:30:05]"));
}

TEST_F(Timestamps, AreNothingWhereTheLengthDoesNotFitSixteenBits) {
    EXPECT_EQ(stampedPlain("MSG bob Bob 32756\r\nx"), Bytes("MSG bob Bob 32767\r\nx [12:30:05]"));
    EXPECT_EQ(stampedPlain("MSG bob Bob 32757\r\nx"), Bytes("nothing"));
    EXPECT_EQ(stampedPlain("MSG bob Bob 32768\r\nx"), Bytes("nothing"));
    EXPECT_NE(stampedFormatted("MSG bob Bob 32752\r\nx"), Bytes("nothing"));
    EXPECT_EQ(stampedFormatted("MSG bob Bob 32753\r\nx"), Bytes("nothing"));
    EXPECT_EQ(stampedPlain("MSG bob Bob\r\nx 1 2 3 4"), Bytes("nothing"));
}

TEST_F(Timestamps, ChangeAnAddressThatHoldsTheDigitsAndStillLeaveATrueLength) {
    const std::string payload = textPayload("hello");
    const std::string digits = std::to_string(payload.size());
    const std::string more = std::to_string(payload.size() + 11);
    EXPECT_EQ(received(contactText("hello", "b" + digits + "@example.com")),
              contactText("hello [12:30:05]", "b" + more + "@example.com"));
}

TEST_F(Timestamps, LeaveAMessageAloneThatIsTooLongForThemAndMakeItsLengthTrue) {
    const std::string payload = textPayloadOfSize("", 40000);
    EXPECT_EQ(received("MSG bob@example.com Bob 50000\r\n" + payload),
              "MSG bob@example.com Bob 40000\r\n" + payload);
}

/// A clock whose time grows a character at each look.
class GrowingClock final : public Clock {
public:
    [[nodiscard]] std::string timeText() override { return time += "1"; }
    [[nodiscard]] std::string dateText() override { return ""; }

private:
    std::string time;
};

TEST_F(Timestamps, LookAtTheClockForTheLengthAndAgainForTheText) {
    GrowingClock clock;
    EXPECT_EQ(timestamps::StampPlain("MSG bob Bob 100\r\nx", spine.settings, clock),
              "MSG bob Bob 104\r\nx [11]");
}

}  // namespace
