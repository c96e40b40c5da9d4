#include "desktop/mdlFunctions.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using mdlFunctions::UrlDecode;
using mdlFunctions::UrlEncode;
using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr std::size_t mostCharacters = 32767;

TEST(UrlEncode, SparesNothing) { EXPECT_EQ(UrlEncode("Hi you"sv), "%48%69%20%79%6F%75"); }

TEST(UrlEncode, GivesNothingForNothing) { EXPECT_EQ(UrlEncode(""sv), ""); }

TEST(UrlEncode, GivesCodesBelowSixteenOneDigit) {
    EXPECT_EQ(UrlEncode("\t\0\x0F\x10"sv), "%9%0%F%10");
}

TEST(UrlEncode, CodesBytesAboveAsciiOneByOne) {
    EXPECT_EQ(UrlEncode("\xC3\xA9\xFF"sv), "%C3%A9%FF");
}

TEST(UrlEncode, CodesItsOwnSigns) { EXPECT_EQ(UrlEncode("%+"sv), "%25%2B"); }

TEST(UrlEncode, IsNothingAboveTheLargestPosition) {
    EXPECT_EQ(UrlEncode(std::string(mostCharacters, 'a'))->size(), 3 * mostCharacters);
    EXPECT_EQ(UrlEncode(std::string(mostCharacters + 1, 'a')), std::nullopt);
}

TEST(UrlDecode, GivesTheCharactersOfTheCodes) {
    EXPECT_EQ(UrlDecode("%41%42"sv), "AB");
    EXPECT_EQ(UrlDecode("100%25"sv), "100%");
    EXPECT_EQ(UrlDecode("Hi%20you"sv), "Hi you");
}

TEST(UrlDecode, GivesNothingForNothing) { EXPECT_EQ(UrlDecode(""sv), ""); }

TEST(UrlDecode, ReadsDigitsOfBothCases) { EXPECT_EQ(UrlDecode("%6f%6F"sv), "oo"); }

TEST(UrlDecode, GivesANulForAPercentSignAtTheVeryEnd) {
    EXPECT_EQ(UrlDecode("abc%"sv), "abc\0"s);
    EXPECT_EQ(UrlDecode("%"sv), "\0"s);
}

TEST(UrlDecode, ReadsASingleDigitAtTheEnd) { EXPECT_EQ(UrlDecode("a%4"sv), "a\x04"); }

TEST(UrlDecode, StopsReadingAtTheFirstCharacterThatIsNoDigit) {
    EXPECT_EQ(UrlDecode("%4x!"sv), "\x04!");
    EXPECT_EQ(UrlDecode("%4%41"sv),
              "\x04"
              "41");
}

TEST(UrlDecode, GivesANulWhereThereIsNoDigit) {
    EXPECT_EQ(UrlDecode("%zz!"sv), "\0!"s);
    EXPECT_EQ(UrlDecode("%z4!"sv), "\0!"s);
    EXPECT_EQ(UrlDecode("%%41"sv), "\0001"s);
}

TEST(UrlDecode, TakesNoSignAndNoBlankForAPartOfTheNumber) {
    EXPECT_EQ(UrlDecode("%-4"sv), "\0"s);
    EXPECT_EQ(UrlDecode("%+4"sv), "\0"s);
    EXPECT_EQ(UrlDecode("% 4"sv), "\0"s);
    EXPECT_EQ(UrlDecode("%0x41"sv), "\00041"s);
}

TEST(UrlDecode, LeavesAPlusSign) { EXPECT_EQ(UrlDecode("a+b"sv), "a+b"); }

TEST(UrlDecode, KnowsNothingOfUtf8) {
    EXPECT_EQ(UrlDecode("%C3%A9\xC3\xA9"sv), "\xC3\xA9\xC3\xA9");
}

TEST(UrlDecode, IsNothingAboveTheLargestPosition) {
    const std::string text(mostCharacters, '%');
    EXPECT_EQ(UrlDecode(text)->size(), (mostCharacters + 2) / 3);
    EXPECT_EQ(UrlDecode(text + "%"), std::nullopt);
}

TEST(UrlDecode, BringsBackEveryCodeFromSixteenOn) {
    std::string text;
    for (int code = 16; code < 256; ++code)
        text += static_cast<char>(code);
    EXPECT_EQ(UrlDecode(*UrlEncode(text)), text);
}

TEST(UrlDecode, DoesNotBringBackACodeBelowSixteen) {
    EXPECT_EQ(UrlDecode(*UrlEncode("a\tb"sv)),
              "a\x09"
              "62");
    EXPECT_EQ(UrlDecode(*UrlEncode("\tb"sv)),
              "\x09"
              "62");
}

}  // namespace
