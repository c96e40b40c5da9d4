#include "stores/mdlEncode.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

namespace {

using mdlEncode::Base64Decode;
using mdlEncode::Base64Encode;
using namespace std::string_literals;
using namespace std::string_view_literals;

struct Coding {
    const char* name;
    std::string_view text;
    std::string_view coded;
};

void PrintTo(const Coding& coding, std::ostream* stream) { *stream << coding.name; }

class Base64 : public testing::TestWithParam<Coding> {};

TEST_P(Base64, IsTheCodedForm) { EXPECT_EQ(Base64Encode(GetParam().text), GetParam().coded); }

TEST_P(Base64, GivesTheTextBack) { EXPECT_EQ(Base64Decode(GetParam().coded), GetParam().text); }

constexpr Coding codings[] = {
    {"Nothing", ""sv, ""sv},
    {"OneByte", "M"sv, "TQ=="sv},
    {"TwoBytes", "Ma"sv, "TWE="sv},
    {"ThreeBytes", "Man"sv, "TWFu"sv},
    {"FourBytes", "Man\n"sv, "TWFuCg=="sv},
    {"LineBreaks", "Hi\r\nyou"sv, "SGkNCnlvdQ=="sv},
    {"Nuls", "\0\0\0"sv, "AAAA"sv},
    {"LargestCodes", "\xFF\xFF\xFF"sv, "////"sv},
    {"PlusAndSlash", "\xFB\xEF\xFF"sv, "++//"sv},
    {"OneLargestCode", "\xFF"sv, "/w=="sv},
};

INSTANTIATE_TEST_SUITE_P(Table, Base64, testing::ValuesIn(codings),
                         [](const auto& info) { return info.param.name; });

TEST(Base64Encode, UsesTheWholeAlphabetInItsOrder) {
    std::string text;
    for (unsigned group = 0; group < 64; group += 4) {
        const unsigned bits = group << 18 | (group + 1) << 12 | (group + 2) << 6 | (group + 3);
        for (const int shift : {16, 8, 0})
            text += static_cast<char>(bits >> shift & 0xFFU);
    }
    EXPECT_EQ(Base64Encode(text),
              "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
}

TEST(Base64Encode, PutsNoLineBreaks) {
    EXPECT_EQ(Base64Encode(std::string(3000, '\0')), std::string(4000, 'A'));
}

struct Reading {
    const char* name;
    std::string_view coded;
    std::string_view text;
};

void PrintTo(const Reading& reading, std::ostream* stream) { *stream << reading.name; }

class Base64Reading : public testing::TestWithParam<Reading> {};

TEST_P(Base64Reading, GivesTheseBytes) {
    EXPECT_EQ(Base64Decode(GetParam().coded), GetParam().text);
}

constexpr Reading readings[] = {
    {"WithoutPadding", "QQ"sv, "A"sv},
    {"WithHalfThePadding", "QQ="sv, "A"sv},
    {"WithThreeCharactersAndNoPadding", "TWE"sv, "Ma"sv},
    {"OfASingleCharacter", "T"sv, ""sv},
    {"OfFiveCharacters", "TWFuT"sv, "Man"sv},
    {"OfSixCharacters", "TWFuTW"sv, "ManM"sv},
    {"OfSevenCharacters", "TWFuTWE"sv, "ManMa"sv},
    {"OfPaddingAlone", "=="sv, ""sv},
    {"OfPaddingBeyondTwo", "==="sv, ""sv},
    {"WithAThirdPaddingThatReadsAsZero", "TWF==="sv, "Ma@"sv},
    {"WithALineBreakThatReadsAsZeros", "TW\r\n"sv, "M`\0"sv},
    {"WithABlankThatShiftsNothing", " TWF"sv, "\x01\x35\x85"sv},
    {"WithAnInnerPaddingThatReadsAsZero", "TQ==TWFu"sv, "M\0\0Man"sv},
    {"OfCodesOutsideTheAlphabet", "\x00\x7F\x80\xFF"sv, "\0\0\0"sv},
    {"OfTheOtherAlphabet", "-_-_"sv, "\0\0\0"sv},
};

INSTANTIATE_TEST_SUITE_P(Table, Base64Reading, testing::ValuesIn(readings),
                         [](const auto& info) { return info.param.name; });

TEST(Base64Decode, IsNothingForASinglePaddingAlone) {
    EXPECT_EQ(Base64Decode("="sv), std::nullopt);
}

TEST(Base64Decode, BringsBackTextsOfAllLengthsAndBytes) {
    std::mt19937 random{1863};
    for (std::size_t length = 0; length < 600; ++length) {
        std::string text(length, '\0');
        for (char& character : text)
            character = static_cast<char>(random());
        const std::string coded = Base64Encode(text);
        ASSERT_EQ(coded.size(), (length + 2) / 3 * 4);
        ASSERT_EQ(Base64Decode(coded), text);
        // The padding says nothing that the length does not.
        ASSERT_EQ(Base64Decode(coded.substr(0, coded.find('='))), text);
    }
}

}  // namespace
