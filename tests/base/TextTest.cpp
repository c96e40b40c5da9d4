#include "base/text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(Word, ThatEndsALineCarriesTheLineEndAndWhatFollowsIt) {
    EXPECT_EQ(word("MSG 1 N 5\r\nhello you"sv, 3), "5\r\nhello");
}

TEST(Word, IsEmptyBetweenTwoBlanks) {
    EXPECT_EQ(word("a  b"sv, 1), "");
    EXPECT_EQ(word("a  b"sv, 2), "b");
}

TEST(Word, IsEmptyBeforeALeadingBlankAndBehindATrailingOne) {
    EXPECT_EQ(word(" a "sv, 0), "");
    EXPECT_EQ(word(" a "sv, 2), "");
}

TEST(Word, IsTheWholeTextWhereThereIsNoBlank) { EXPECT_EQ(word("PNG\r\n"sv, 0), "PNG\r\n"); }

TEST(Word, KnowsNoOtherBlankThanTheBlank) { EXPECT_EQ(word("a\tb\nc\0d e"sv, 0), "a\tb\nc\0d"sv); }

TEST(Word, IsNothingBehindTheLastOne) {
    EXPECT_EQ(word("PNG x"sv, 1), "x");
    EXPECT_EQ(word("PNG x"sv, 2), std::nullopt);
    EXPECT_EQ(word("PNG"sv, 1), std::nullopt);
}

TEST(Word, IsNothingInAnEmptyText) { EXPECT_EQ(word(""sv, 0), std::nullopt); }

TEST(Line, EndsAtACarriageReturnWithALineFeed) {
    EXPECT_EQ(line("one\r\ntwo\r\n"sv, 0), "one");
    EXPECT_EQ(line("one\r\ntwo\r\n"sv, 1), "two");
    EXPECT_EQ(line("one\r\ntwo\r\n"sv, 2), "");
    EXPECT_EQ(line("one\r\ntwo\r\n"sv, 3), std::nullopt);
}

TEST(Line, DoesNotEndAtHalfALineEnd) { EXPECT_EQ(line("a\rb\nc\n\rd"sv, 0), "a\rb\nc\n\rd"); }

TEST(Line, IsNothingInAnEmptyText) { EXPECT_EQ(line(""sv, 0), std::nullopt); }

TEST(FirstLine, EndsBeforeTheFirstLineEnd) {
    EXPECT_EQ(firstLine("one\r\ntwo\r\n"sv), "one");
    EXPECT_EQ(firstLine("\r\ntwo"sv), "");
}

TEST(FirstLine, IsAllOfATextWithoutALineEnd) {
    EXPECT_EQ(firstLine("one\ntwo\r"sv), "one\ntwo\r");
    EXPECT_EQ(firstLine(""sv), "");
}

TEST(LinesFrom, AreTheRestWithItsLineEnds) {
    EXPECT_EQ(linesFrom("one\r\ntwo\r\n\r\nfour"sv, 1), "two\r\n\r\nfour");
    EXPECT_EQ(linesFrom("one\r\ntwo\r\n\r\nfour"sv, 3), "four");
    EXPECT_EQ(linesFrom("one\r\n"sv, 0), "one\r\n");
    EXPECT_EQ(linesFrom("one\r\n"sv, 1), "");
}

TEST(LinesFrom, AreNothingWhereThereIsNoSuchLine) {
    EXPECT_EQ(linesFrom("one\r\ntwo"sv, 2), std::nullopt);
    EXPECT_EQ(linesFrom(""sv, 1), std::nullopt);
}

TEST(Trimmed, HasNoBlanksAtItsEnds) {
    EXPECT_EQ(trimmed("  a b "sv), "a b");
    EXPECT_EQ(trimmed("a"sv), "a");
    EXPECT_EQ(trimmed("   "sv), "");
    EXPECT_EQ(trimmed(""sv), "");
}

TEST(Trimmed, KeepsAllThatIsNoBlank) { EXPECT_EQ(trimmed(" \t\r\n "sv), "\t\r\n"); }

TEST(Characters, CountFromOneAndIncludeTheLast) {
    EXPECT_EQ(characters("VER 1"sv, 1, 3), "VER");
    EXPECT_EQ(characters("VER 1"sv, 5, 5), "1");
}

TEST(Characters, AreFewerWhereTheTextEndsEarlier) {
    EXPECT_EQ(characters("PN"sv, 1, 3), "PN");
    EXPECT_EQ(characters("PNG"sv, 3, 8), "G");
    EXPECT_EQ(characters("PNG"sv, 4, 8), "");
    EXPECT_EQ(characters("PNG"sv, 40, 80), "");
    EXPECT_EQ(characters(""sv, 1, 3), "");
}

TEST(Code, IsThatOfTheByte) {
    EXPECT_EQ(code("\x00\x7F\x80\xFF"sv, 1), 0);
    EXPECT_EQ(code("\x00\x7F\x80\xFF"sv, 2), 0x7F);
    EXPECT_EQ(code("\x00\x7F\x80\xFF"sv, 3), 0x80);
    EXPECT_EQ(code("\x00\x7F\x80\xFF"sv, 4), 0xFF);
}

TEST(Code, IsNothingBehindTheEnd) {
    EXPECT_EQ(code("ab"sv, 3), std::nullopt);
    EXPECT_EQ(code(""sv, 1), std::nullopt);
}

TEST(LowerCase, ChangesTheLettersFromAToZAlone) {
    EXPECT_EQ(lowerCase("MSNP9 @[`{ az\xC3\x9C\xC0"sv), "msnp9 @[`{ az\xC3\x9C\xC0");
    EXPECT_EQ(lowerCase("A\0Z"sv), "a\0z"s);
    EXPECT_EQ(lowerCase(""sv), "");
}

TEST(BeginsInAnyCase, ComparesTheBeginningAlone) {
    EXPECT_TRUE(beginsInAnyCase("Content-TYPE: Text"sv, "content-type"sv));
    EXPECT_TRUE(beginsInAnyCase("A"sv, "a"sv));
    EXPECT_TRUE(beginsInAnyCase(""sv, ""sv));
    EXPECT_FALSE(beginsInAnyCase("Content-Typ"sv, "content-type"sv));
    EXPECT_FALSE(beginsInAnyCase("Content_Type"sv, "content-type"sv));
    EXPECT_FALSE(beginsInAnyCase("\xC0"sv, "\xE0"sv));
}

TEST(ReplaceFirst, LeavesTheLaterOnes) {
    EXPECT_EQ(replaceFirst("NLN NLN", "NLN"sv, "BSY"sv), "BSY NLN");
}

TEST(ReplaceFirst, FindsItInsideOfAWord) {
    EXPECT_EQ(replaceFirst("TypingUser: a", "Typing"sv, ""sv), "User: a");
}

TEST(ReplaceFirst, LeavesATextWithoutIt) {
    EXPECT_EQ(replaceFirst("nln", "NLN"sv, "BSY"sv), "nln");
    EXPECT_EQ(replaceFirst("", "NLN"sv, "BSY"sv), "");
    EXPECT_EQ(replaceFirst("NL", "NLN"sv, "BSY"sv), "NL");
}

TEST(ReplaceFirst, DoesNotLookAgainIntoWhatItPut) {
    EXPECT_EQ(replaceFirst("aa", "a"sv, "aa"sv), "aaa");
}

TEST(ReplaceFirst, TakesBytesOfEveryValue) {
    EXPECT_EQ(replaceFirst("x\0\xFFy"s, "\0\xFF"sv, "\x80\0"sv), "x\x80\0y"s);
}

TEST(RemoveAll, TakesOutEveryOne) {
    EXPECT_EQ(removeAll("\0a\0\0b\0"sv, "\0"sv), "ab");
    EXPECT_EQ(removeAll("a\r\nb\r\n"sv, "\r\n"sv), "ab");
}

TEST(RemoveAll, DoesNotLookForOnesThatTheRemovalMakes) {
    EXPECT_EQ(removeAll("aabb"sv, "ab"sv), "ab");
}

TEST(RemoveAll, LeavesATextWithoutIt) {
    EXPECT_EQ(removeAll("abc"sv, "d"sv), "abc");
    EXPECT_EQ(removeAll(""sv, "d"sv), "");
}

/// The same functions once more, one character at a time.
namespace reference {

bool isAt(const std::string& text, std::size_t at, const std::string& wanted) {
    for (std::size_t offset = 0; offset < wanted.size(); ++offset) {
        if (at + offset >= text.size() || text[at + offset] != wanted[offset]) return false;
    }
    return true;
}

std::vector<std::string> pieces(const std::string& text, const std::string& separator) {
    if (text.empty()) return {};
    std::vector<std::string> found{""};
    for (std::size_t at = 0; at < text.size();) {
        if (isAt(text, at, separator)) {
            found.emplace_back();
            at += separator.size();
        } else {
            found.back() += text[at++];
        }
    }
    return found;
}

std::string replaceFirst(const std::string& text, const std::string& from, const std::string& to) {
    std::string result;
    bool replaced = false;
    for (std::size_t at = 0; at < text.size();) {
        if (!replaced && isAt(text, at, from)) {
            result += to;
            at += from.size();
            replaced = true;
        } else {
            result += text[at++];
        }
    }
    return result;
}

std::string removeAll(const std::string& text, const std::string& unwanted) {
    std::string result;
    for (const std::string& kept : pieces(text, unwanted))
        result += kept;
    return result;
}

}  // namespace reference

/// Short texts over few characters, so that separators meet, overlap and stand at the ends.
class RandomTexts : public testing::Test {
protected:
    static constexpr int rounds = 20000;

    [[nodiscard]] std::string text(std::size_t longest) {
        constexpr std::string_view alphabet = "a \r\n"sv;
        std::string result(pick(longest + 1), '\0');
        for (char& character : result)
            character = alphabet[pick(alphabet.size())];
        return result;
    }
    [[nodiscard]] std::string nonEmptyText(std::size_t longest) {
        return text(longest - 1) + "a \r\n"[pick(4)];
    }

private:
    std::size_t pick(std::size_t count) { return random() % count; }

    std::mt19937 random{20240229};
};

using Reader = std::optional<std::string_view> (*)(std::string_view, std::size_t);

void expectSamePieces(const std::string& text, const std::string& separator, Reader reader) {
    const std::vector<std::string> expected = reference::pieces(text, separator);
    for (std::size_t index = 0; index < expected.size(); ++index)
        ASSERT_EQ(reader(text, index), expected[index]) << testing::PrintToString(text);
    ASSERT_EQ(reader(text, expected.size()), std::nullopt) << testing::PrintToString(text);
}

TEST_F(RandomTexts, HaveTheWordsAndLinesOfTheReference) {
    for (int round = 0; round < rounds; ++round) {
        const std::string whole = text(12);
        ASSERT_NO_FATAL_FAILURE(expectSamePieces(whole, " ", word));
        ASSERT_NO_FATAL_FAILURE(expectSamePieces(whole, "\r\n", line));
    }
}

TEST_F(RandomTexts, AreReplacedAndRemovedAsInTheReference) {
    for (int round = 0; round < rounds; ++round) {
        const std::string whole = text(12);
        const std::string part = nonEmptyText(3);
        const std::string put = text(4);
        ASSERT_EQ(replaceFirst(whole, part, put), reference::replaceFirst(whole, part, put))
            << testing::PrintToString(whole) << testing::PrintToString(part);
        ASSERT_EQ(removeAll(whole, part), reference::removeAll(whole, part))
            << testing::PrintToString(whole) << testing::PrintToString(part);
    }
}

}  // namespace
