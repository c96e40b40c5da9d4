#include "tests/conversation/Talk.h"

namespace {

using testing::Values;

struct Limit {
    std::size_t length;
    bool expands;
    bool expandsUptime;
};

void PrintTo(const Limit& limit, std::ostream* out) { *out << limit.length; }

/// Messages with every kind of constant and of a length that is near the limits.
class ConstantLimit : public Talk, public testing::WithParamInterface<Limit> {
protected:
    const std::string uptime = "0 days, 1 hours, 5 minutes and 9 seconds.";

    [[nodiscard]] std::string filled(const std::string& text, std::size_t length) const {
        return textPayload(text + std::string(length - textPayload(text).size(), '.'));
    }
};

TEST_P(ConstantLimit, IsMetByTheDeclaredLength) {
    const auto [length, expands, expandsUptime] = GetParam();
    const std::string payload = filled("<t> <ut> <ru>", length);
    std::string expected = payload;
    if (expands) {
        expected.replace(expected.find("<t>"), 3, "12:30:05");
        expected.replace(expected.find("<ru>"), 4, "4%");
    }
    if (expandsUptime) expected.replace(expected.find("<ut>"), 4, uptime);
    EXPECT_EQ(sent(payload), message("MSG 12 N", expected));
}

TEST_P(ConstantLimit, IsOneOfCommandsToo) {
    const std::string payload = filled("!rancolor ", GetParam().length);
    EXPECT_EQ(sent(payload), GetParam().expands ? cover("12", "") : message("MSG 12 N", payload));
    EXPECT_EQ(spine.host.values.rancolorOn, GetParam().expands);
}

INSTANTIATE_TEST_SUITE_P(Lengths, ConstantLimit,
                         Values(Limit{1599, true, true}, Limit{1600, true, true},
                                Limit{1601, true, false}, Limit{1640, true, false},
                                Limit{1641, false, false}, Limit{5000, false, false}));

class ConstantsOfALength : public ConstantLimit {};

TEST_F(ConstantsOfALength, AreMeasuredByTheMessageAsItCameAndNotAsItGrows) {
    const std::string tokens = "<ut><ut><ut><ut><ut><ut><ut><ut><ut><ut>";
    std::string values;
    for (int times = 0; times < 10; ++times)
        values += uptime;
    const std::string payload = filled(tokens, 1600);
    std::string expected = payload;
    expected.replace(expected.find(tokens), tokens.size(), values);
    ASSERT_GT(expected.size(), 1640U);
    EXPECT_EQ(sent(payload), message("MSG 12 N", expected));
}

TEST_F(ConstantsOfALength, AreMeasuredByTheDeclaredLengthAndNotByTheTrueOne) {
    const std::string part = "MSG 12 N 1641\r\n" + textPayload("<t>");
    EXPECT_EQ(only(toServer(part)), part);
    EXPECT_EQ(only(toServer("MSG 12 N 1640\r\n" + textPayload("<t>"))), clientText("12:30:05"));
}

TEST_F(ConstantsOfALength, AreMeasuredWithTheRandomColourInThem) {
    spine.host.values.rancolorOn = true;
    // Five characters more than the old colour.
    const std::string over = filled("<t>", 1636);
    EXPECT_EQ(sent(over),
              message("MSG 12 N", std::string(over).replace(over.find("CO=0"), 4, "CO=800000")));
    std::string under = filled("<t>", 1635);
    const std::string sentUnder = sent(under).bytes;
    under.replace(under.find("CO=0"), 4, "CO=800000").replace(under.find("<t>"), 3, "12:30:05");
    EXPECT_EQ(Bytes(sentUnder), message("MSG 12 N", under));
}

class ConstantsOff : public Talk {
protected:
    ConstantsOff() { set("constants", "False"); }
};

TEST_F(ConstantsOff, TurnCommandsOff) {
    set("preventtypo", "True");
    for (const std::string text : {"!nick x", "!note x", "!rancolor", "!google x", "!typo"}) {
        EXPECT_EQ(typed(text), clientText(text));
    }
    EXPECT_EQ(typed("!forceexit"), clientText("!forceexit"));
    EXPECT_TRUE(toasts().empty());
    EXPECT_TRUE(spine.facilities.browser.opened.empty());
}

TEST_F(ConstantsOff, LeaveAWrongLengthAsItIs) {
    EXPECT_EQ(only(toServer("MSG 12 N 500\r\n" + textPayload("x"))),
              "MSG 12 N 500\r\n" + textPayload("x"));
}

TEST_F(ConstantsOff, LetTheRandomColourBe) {
    spine.host.values.rancolorOn = true;
    const std::string plain = textPayload("<t>");
    EXPECT_EQ(sent(plain),
              message("MSG 12 N", std::string(plain).replace(plain.find("CO=0"), 4, "CO=800000")));
}

TEST_F(ConstantsOff, LetTypingNoticesBeHidden) {
    set("useristyping", "True");
    std::string hidden = typingPayload();
    hidden.replace(hidden.find("TypingUser:"), 11, "TypingUserx");
    EXPECT_EQ(sent(typingPayload()), message("MSG 12 N", hidden));
}

}  // namespace
