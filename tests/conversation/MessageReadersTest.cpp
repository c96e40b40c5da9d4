#include "base/Failure.h"
#include "conversation/messageTools.h"
#include "tests/conversation/Talk.h"

namespace {

using testing::Values;

using namespace messageTools;

const std::string head = "MSG 12 N 120\r\nMIME-Version: 1.0\r\n";

TEST(SecondWord, IsTheTransactionNumberInAMessageOfTheClient) {
    EXPECT_EQ(SecondWord(clientText("hello", "125")), "125");
}

TEST(SecondWord, IsTheSenderInAMessageOfTheServer) {
    EXPECT_EQ(SecondWord(contactText("hello", "cem@example.com")), "cem@example.com");
}

TEST(SecondWord, IsTheOneOfTheFirstLineAlone) {
    EXPECT_EQ(SecondWord("MSG 1\r\nx y"), "1");
    EXPECT_THROW((void)SecondWord("MSG\r\nx y z"), Failure);
}

TEST(SecondWord, IsEmptyBetweenTwoBlanks) { EXPECT_EQ(SecondWord("MSG  N 5\r\n"), ""); }

struct Length {
    const char* word;
    std::int32_t value;
};

void PrintTo(const Length& length, std::ostream* out) { *out << escaped(length.word); }

class DeclaredLength : public testing::TestWithParam<Length> {};

TEST_P(DeclaredLength, IsTheIntegerPartOfWordThree) {
    EXPECT_EQ(PayloadLength(std::string("MSG 12 N ") + GetParam().word + "\r\n1 2 3 4"),
              GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Words, DeclaredLength,
                         Values(Length{"0", 0}, Length{"5", 5}, Length{"007", 7},
                                Length{"12.9", 12}, Length{"-3", -3}, Length{"1e3", 1000},
                                Length{"40000", 40000}, Length{"2147483647", 2147483647},
                                Length{"7 8", 7}));

class NoLength : public testing::TestWithParam<std::string> {};

TEST_P(NoLength, IsAFailureOfAllThatReadIt) {
    EXPECT_THROW((void)PayloadLength(GetParam()), Failure);
    EXPECT_THROW((void)HasTrailingData(GetParam()), Failure);
    EXPECT_THROW((void)FixPayloadLength(GetParam()), Failure);
    EXPECT_THROW((void)MessageBody(GetParam()), Failure);
}

INSTANTIATE_TEST_SUITE_P(Messages, NoLength,
                         Values("", "MSG", "MSG 1 U", "MSG 1 U\r\n5 6 7", "MSG 1 U \r\nx",
                                "MSG 1 U five\r\nx", "MSG 1 U 5x\r\nx", "MSG 1 U 0x5\r\nx",
                                "MSG 1 U NaN\r\nx", "MSG 1 U inf\r\nx", "MSG 1 U  5\r\nx",
                                "MSG 1 U 2147483648\r\nx", "MSG 1 U 1e999\r\nx", "MSG 1 U 5\nx",
                                "\r\nMSG 1 U 5\r\nx"));

struct TextTest {
    const char* thirdLine;
    bool isText;
};

void PrintTo(const TextTest& test, std::ostream* out) { *out << escaped(test.thirdLine); }

class ContentType : public testing::TestWithParam<TextTest> {};

TEST_P(ContentType, IsTextWhenItBeginsLikeTextInAnyCaseOfLetters) {
    EXPECT_EQ(IsTextMessage(head + GetParam().thirdLine + "\r\nx"), GetParam().isText);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ContentType,
    Values(TextTest{"Content-Type: text/plain; charset=UTF-8", true},
           TextTest{"Content-Type: text/x-msmsgscontrol", true},
           TextTest{"Content-Type: text/x-msmsgsinvite; charset=UTF-8", true},
           TextTest{"content-type: TEXT/plain", true}, TextTest{"Content-Type: text", true},
           TextTest{"Content-Type: textual", true}, TextTest{"Content-Type: tex", false},
           TextTest{"Content-Type:text/plain", false}, TextTest{" Content-Type: text", false},
           TextTest{"Content-Type: application/x-msnmsgrp2p", false}, TextTest{"", false}));

TEST(IsTextMessage, FailsBelowThreeLines) {
    EXPECT_THROW((void)IsTextMessage(""), Failure);
    EXPECT_THROW((void)IsTextMessage("MSG 1 U 0"), Failure);
    EXPECT_THROW((void)IsTextMessage("MSG 1 U 0\r\nContent-Type: text"), Failure);
}

TEST(IsTextMessage, CountsNoLoneLineFeedAsTheEndOfALine) {
    EXPECT_THROW((void)IsTextMessage("MSG 1 U 0\nMIME-Version: 1.0\nContent-Type: text"), Failure);
}

TEST(IsTypingMessage, LooksAtTheFourthLineInAnyCaseOfLetters) {
    EXPECT_TRUE(IsTypingMessage(message("MSG 1 U", typingPayload())));
    EXPECT_TRUE(IsTypingMessage("a\r\nb\r\nc\r\ntYPINGuSER:"));
    EXPECT_FALSE(IsTypingMessage("a\r\nb\r\nc\r\nTypingUserx ann"));
    EXPECT_FALSE(IsTypingMessage("a\r\nb\r\nc\r\nTypingUser"));
    EXPECT_FALSE(IsTypingMessage(clientText("TypingUser:")));
}

TEST(IsTypingMessage, FailsBelowFourLines) {
    EXPECT_THROW((void)IsTypingMessage("a\r\nb\r\nTypingUser:"), Failure);
}

TEST(FirstBodyLine, IsTheSixthWhole) {
    EXPECT_EQ(FirstBodyLine(clientText("one two\r\nthree")), "one two");
    EXPECT_EQ(FirstBodyLine(clientText("")), "");
    EXPECT_EQ(FirstBodyLine("0\r\n1\r\n2\r\n3\r\n4\r\n5"), "5");
}

TEST(FirstBodyLine, FailsBelowSixLines) {
    EXPECT_THROW((void)FirstBodyLine("0\r\n1\r\n2\r\n3\r\n4"), Failure);
}

TEST(MessageBody, IsTheTextAlone) {
    EXPECT_EQ(MessageBody(contactText("one\r\n\r\ntwo\r\n")), "one\r\n\r\ntwo\r\n");
}

TEST(MessageBody, IsALoneLineEndForATypingNotice) {
    EXPECT_EQ(MessageBody(message("MSG bob@example.com Bob", typingPayload())), "\r\n");
}

TEST(MessageBody, LeavesWhatFollowsTheDeclaredLengthOut) {
    EXPECT_EQ(MessageBody(contactText("hello") + contactText("again")), "hello");
}

TEST(MessageBody, IsCutWhereTheDeclaredLengthCutsIntoIt) {
    const std::string payload = textPayload("hello");
    const auto cut = [&](std::size_t less) {
        const std::string declared = std::to_string(payload.size() - less);
        return MessageBody("MSG bob@example.com Bob " + declared + "\r\n" + payload);
    };
    EXPECT_EQ(cut(2), "hel");
    EXPECT_EQ(cut(5), "");
    EXPECT_THROW((void)cut(6), Failure);
}

TEST(MessageBody, IsAllThatIsThereBelowTheDeclaredLength) {
    EXPECT_EQ(MessageBody("MSG bob@example.com Bob 5000\r\n" + textPayload("hello")), "hello");
}

TEST(MessageBody, FailsWhereNoTextIs) {
    EXPECT_THROW((void)MessageBody("MSG bob Bob 4\r\nMIME"), Failure);
    EXPECT_THROW((void)MessageBody("MSG bob Bob 0\r\n" + textPayload("hello")), Failure);
    EXPECT_THROW((void)MessageBody("MSG bob Bob -1\r\n" + textPayload("hello")), Failure);
}

TEST(HasTrailingData, IsNoForOneMessageAndYesForOneCharacterMore) {
    EXPECT_FALSE(HasTrailingData("MSG 3 N 5\r\n12345"));
    EXPECT_TRUE(HasTrailingData("MSG 3 N 5\r\n123456"));
}

TEST(HasTrailingData, IsNoForThePartOfAMessage) {
    EXPECT_FALSE(HasTrailingData("MSG 3 N 5\r\n1"));
    EXPECT_FALSE(HasTrailingData("MSG 3 N 5"));
    EXPECT_FALSE(HasTrailingData("MSG 3 N 2147483647\r\n12345"));
}

}  // namespace
