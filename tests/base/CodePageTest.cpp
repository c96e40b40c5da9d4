#include "base/codePage.h"

#include "tests/support/allBytes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

struct Pair {
    const char* name;
    std::string_view bytes;
    std::string_view utf8;
};

void PrintTo(const Pair& pair, std::ostream* stream) { *stream << pair.name; }

class CodePagePair : public testing::TestWithParam<Pair> {};

TEST_P(CodePagePair, GivesTheCharacter) {
    EXPECT_EQ(codePage::toUtf8(GetParam().bytes), GetParam().utf8);
}

TEST_P(CodePagePair, ComesBackFromTheCharacter) {
    EXPECT_EQ(codePage::fromUtf8(GetParam().utf8), GetParam().bytes);
}

constexpr Pair pairs[] = {
    {"Nothing", ""sv, ""sv},
    {"Nul", "\0"sv, "\0"sv},
    {"Ascii", "Ann \r\n\x7F"sv, "Ann \r\n\x7F"sv},
    {"LatinLetters", "\xA0\xE9\xFF"sv, "\xC2\xA0\xC3\xA9\xC3\xBF"sv},
    {"Euro", "\x80"sv, "\xE2\x82\xAC"sv},
    {"LowQuote", "\x82"sv, "\xE2\x80\x9A"sv},
    {"FlorinSign", "\x83"sv, "\xC6\x92"sv},
    {"LowDoubleQuote", "\x84"sv, "\xE2\x80\x9E"sv},
    {"Ellipsis", "\x85"sv, "\xE2\x80\xA6"sv},
    {"Dagger", "\x86"sv, "\xE2\x80\xA0"sv},
    {"DoubleDagger", "\x87"sv, "\xE2\x80\xA1"sv},
    {"Circumflex", "\x88"sv, "\xCB\x86"sv},
    {"PerMille", "\x89"sv, "\xE2\x80\xB0"sv},
    {"CapitalSCaron", "\x8A"sv, "\xC5\xA0"sv},
    {"LeftAngleQuote", "\x8B"sv, "\xE2\x80\xB9"sv},
    {"CapitalOe", "\x8C"sv, "\xC5\x92"sv},
    {"CapitalZCaron", "\x8E"sv, "\xC5\xBD"sv},
    {"LeftQuote", "\x91"sv, "\xE2\x80\x98"sv},
    {"RightQuote", "\x92"sv, "\xE2\x80\x99"sv},
    {"LeftDoubleQuote", "\x93"sv, "\xE2\x80\x9C"sv},
    {"RightDoubleQuote", "\x94"sv, "\xE2\x80\x9D"sv},
    {"Bullet", "\x95"sv, "\xE2\x80\xA2"sv},
    {"EnDash", "\x96"sv, "\xE2\x80\x93"sv},
    {"EmDash", "\x97"sv, "\xE2\x80\x94"sv},
    {"SmallTilde", "\x98"sv, "\xCB\x9C"sv},
    {"TradeMark", "\x99"sv, "\xE2\x84\xA2"sv},
    {"SmallSCaron", "\x9A"sv, "\xC5\xA1"sv},
    {"RightAngleQuote", "\x9B"sv, "\xE2\x80\xBA"sv},
    {"SmallOe", "\x9C"sv, "\xC5\x93"sv},
    {"SmallZCaron", "\x9E"sv, "\xC5\xBE"sv},
    {"CapitalYDiaeresis", "\x9F"sv, "\xC5\xB8"sv},
    {"OpenCodes", "\x81\x8D\x8F\x90\x9D"sv, "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D"sv},
};

INSTANTIATE_TEST_SUITE_P(Table, CodePagePair, testing::ValuesIn(pairs),
                         [](const auto& info) { return info.param.name; });

TEST(CodePage, BringsBackAllBytes) {
    EXPECT_EQ(codePage::fromUtf8(codePage::toUtf8(allBytes())), allBytes());
}

TEST(CodePage, GivesEveryByteACharacterOfItsOwn) {
    const std::string bytes = allBytes();
    for (const char first : bytes) {
        for (const char second : bytes) {
            const bool same =
                codePage::toUtf8(std::string(1, first)) == codePage::toUtf8(std::string(1, second));
            ASSERT_EQ(same, first == second);
        }
    }
}

struct Foreign {
    const char* name;
    std::string_view utf8;
    std::string_view bytes;
};

void PrintTo(const Foreign& foreign, std::ostream* stream) { *stream << foreign.name; }

class ForeignText : public testing::TestWithParam<Foreign> {};

TEST_P(ForeignText, GivesQuestionMarks) {
    EXPECT_EQ(codePage::fromUtf8(GetParam().utf8), GetParam().bytes);
}

constexpr Foreign foreignTexts[] = {
    {"CharacterOfTwoBytesThatTheCodePageLacks", "a\xD0\x96z"sv, "a?z"sv},
    {"CharacterOfThreeBytesThatTheCodePageLacks", "a\xE3\x81\x82z"sv, "a?z"sv},
    {"CharacterOfFourBytes", "a\xF0\x9F\x98\x80z"sv, "a?z"sv},
    {"ControlWhoseNumberAnotherCharacterHas", "\xC2\x80\xC2\x99"sv, "??"sv},
    {"LoneContinuation", "a\x80z"sv, "a?z"sv},
    {"LeadWithoutContinuation", "a\xC3z"sv, "a?z"sv},
    {"LeadAtTheEnd", "a\xE2\x82"sv, "a??"sv},
    {"ByteThatNoTextHas", "\xFE\xFF"sv, "??"sv},
    {"OverlongNulOfTwoBytes", "\xC0\x80"sv, "??"sv},
    {"OverlongLetterOfThreeBytes", "\xE0\x81\x81"sv, "???"sv},
    {"OverlongLetterOfFourBytes", "\xF0\x80\x81\x81"sv, "????"sv},
    {"Surrogate", "\xED\xA0\x80"sv, "???"sv},
    {"NumberBeyondTheLast", "\xF4\x90\x80\x80"sv, "????"sv},
};

INSTANTIATE_TEST_SUITE_P(Table, ForeignText, testing::ValuesIn(foreignTexts),
                         [](const auto& info) { return info.param.name; });

TEST(Utf8, IsCutBetweenCharacters) {
    using codePage::cutUtf8;
    constexpr std::string_view text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"sv;
    const std::vector<std::size_t> kept{0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 10};
    for (std::size_t size = 0; size < kept.size(); ++size)
        EXPECT_EQ(cutUtf8(text, size), text.substr(0, kept[size])) << size;
    EXPECT_EQ(cutUtf8("", 3), "");
    // Nothing but bytes that begin no character.
    EXPECT_EQ(cutUtf8("\x80\x80\x80", 2), "");
}

TEST(Utf8, BeginsWithAControlCharacterOfOneOrTwoBytes) {
    using codePage::controlAtFront;
    for (const std::string_view one : {"\0"sv, "\x1F"sv, "\x7Fz"sv, "\n"sv})
        EXPECT_EQ(controlAtFront(one), 1U);
    for (const std::string_view two : {"\xC2\x80"sv, "\xC2\x9Fz"sv})
        EXPECT_EQ(controlAtFront(two), 2U);
    for (const std::string_view none : {""sv, " "sv, "~\n"sv, "\xC2"sv, "\xC2\xA0"sv, "\xC3\x80"sv})
        EXPECT_EQ(controlAtFront(none), 0U);
}

TEST(Utf8, IsPrintableWithControlCharactersAndForeignBytesAsTheirCodes) {
    using codePage::printable;
    EXPECT_EQ(printable("caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 C:\\x"sv),
              "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 C:\\x");
    EXPECT_EQ(printable("\x1B[31m\r\n\0\x7F"sv), R"(\x1B[31m\x0D\x0A\x00\x7F)");
    EXPECT_EQ(printable("\xC2\x9B\xFF\xC3(\xE2\x82"sv), R"(\xC2\x9B\xFF\xC3(\xE2\x82)");
    EXPECT_EQ(printable(""), "");
}

}  // namespace
