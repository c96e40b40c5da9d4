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
    EXPECT_EQ(SecondWord("MSG\r\nx y z"), std::nullopt);
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

TEST_P(NoLength, LeavesNothingToAllThatReadIt) {
    EXPECT_EQ(PayloadLength(GetParam()), std::nullopt);
    EXPECT_EQ(HasTrailingData(GetParam()), Answer::Unknown);
    EXPECT_EQ(FixPayloadLength(GetParam()), std::nullopt);
    EXPECT_EQ(MessageBody(GetParam()), std::nullopt);
    EXPECT_EQ(withLengthChanged(GetParam(), 1), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Messages, NoLength,
                         Values("", "MSG", "MSG 1 U", "MSG 1 U\r\n5 6 7", "MSG 1 U \r\nx",
                                "MSG 1 U five\r\nx", "MSG 1 U 5x\r\nx", "MSG 1 U 0x5\r\nx",
                                "MSG 1 U NaN\r\nx", "MSG 1 U inf\r\nx", "MSG 1 U  5\r\nx",
                                "MSG 1 U 2147483648\r\nx", "MSG 1 U 1e999\r\nx", "MSG 1 U 5\nx",
                                "\r\nMSG 1 U 5\r\nx"));

struct TextTest {
    const char* thirdLine;
    Answer isText;
};

void PrintTo(const TextTest& test, std::ostream* out) { *out << escaped(test.thirdLine); }

class ContentType : public testing::TestWithParam<TextTest> {};

TEST_P(ContentType, IsTextWhenItBeginsLikeTextInAnyCaseOfLetters) {
    EXPECT_EQ(IsTextMessage(head + GetParam().thirdLine + "\r\nx"), GetParam().isText);
}

INSTANTIATE_TEST_SUITE_P(Lines, ContentType,
                         Values(TextTest{"Content-Type: text/plain; charset=UTF-8", Answer::Yes},
                                TextTest{"Content-Type: text/x-msmsgscontrol", Answer::Yes},
                                TextTest{"Content-Type: text/x-msmsgsinvite; charset=UTF-8",
                                         Answer::Yes},
                                TextTest{"content-type: TEXT/plain", Answer::Yes},
                                TextTest{"Content-Type: text", Answer::Yes},
                                TextTest{"Content-Type: textual", Answer::Yes},
                                TextTest{"Content-Type: tex", Answer::No},
                                TextTest{"Content-Type:text/plain", Answer::No},
                                TextTest{" Content-Type: text", Answer::No},
                                TextTest{"Content-Type: application/x-msnmsgrp2p", Answer::No},
                                TextTest{"", Answer::No}));

TEST(IsTextMessage, IsUnknownBelowThreeLines) {
    EXPECT_EQ(IsTextMessage(""), Answer::Unknown);
    EXPECT_EQ(IsTextMessage("MSG 1 U 0"), Answer::Unknown);
    EXPECT_EQ(IsTextMessage("MSG 1 U 0\r\nContent-Type: text"), Answer::Unknown);
}

TEST(IsTextMessage, CountsNoLoneLineFeedAsTheEndOfALine) {
    EXPECT_EQ(IsTextMessage("MSG 1 U 0\nMIME-Version: 1.0\nContent-Type: text"), Answer::Unknown);
}

TEST(IsTypingMessage, LooksAtTheFourthLineInAnyCaseOfLetters) {
    EXPECT_EQ(IsTypingMessage(message("MSG 1 U", typingPayload())), Answer::Yes);
    EXPECT_EQ(IsTypingMessage("a\r\nb\r\nc\r\ntYPINGuSER:"), Answer::Yes);
    EXPECT_EQ(IsTypingMessage("a\r\nb\r\nc\r\nTypingUserx ann"), Answer::No);
    EXPECT_EQ(IsTypingMessage("a\r\nb\r\nc\r\nTypingUser"), Answer::No);
    EXPECT_EQ(IsTypingMessage(clientText("TypingUser:")), Answer::No);
}

TEST(IsTypingMessage, IsUnknownBelowFourLines) {
    EXPECT_EQ(IsTypingMessage("a\r\nb\r\nTypingUser:"), Answer::Unknown);
}

TEST(FirstBodyLine, IsTheSixthWhole) {
    EXPECT_EQ(FirstBodyLine(clientText("one two\r\nthree")), "one two");
    EXPECT_EQ(FirstBodyLine(clientText("")), "");
    EXPECT_EQ(FirstBodyLine("0\r\n1\r\n2\r\n3\r\n4\r\n5"), "5");
}

TEST(FirstBodyLine, IsNothingBelowSixLines) {
    EXPECT_EQ(FirstBodyLine("0\r\n1\r\n2\r\n3\r\n4"), std::nullopt);
}

TEST(TextAndRest, IsNotCutToTheDeclaredLength) {
    EXPECT_EQ(textAndRest(clientText("one\r\n") + "OUT\r\n"), "one\r\nOUT\r\n");
    EXPECT_EQ(textAndRest("0\r\n1\r\n2\r\n3\r\n4\r\n"), "");
}

TEST(TextAndRest, IsNothingBelowSixLines) {
    EXPECT_EQ(textAndRest("0\r\n1\r\n2\r\n3\r\n4"), std::nullopt);
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
        const std::string whole = "MSG bob@example.com Bob " + declared + "\r\n" + payload;
        const auto body = MessageBody(whole);
        return body ? std::optional<std::string>(body) : std::nullopt;
    };
    EXPECT_EQ(cut(2), "hel");
    EXPECT_EQ(cut(5), "");
    EXPECT_EQ(cut(6), std::nullopt);
}

TEST(MessageBody, IsAllThatIsThereBelowTheDeclaredLength) {
    EXPECT_EQ(MessageBody("MSG bob@example.com Bob 5000\r\n" + textPayload("hello")), "hello");
}

TEST(MessageBody, IsNothingWhereNoTextIs) {
    EXPECT_EQ(MessageBody("MSG bob Bob 4\r\nMIME"), std::nullopt);
    EXPECT_EQ(MessageBody("MSG bob Bob 0\r\n" + textPayload("hello")), std::nullopt);
    EXPECT_EQ(MessageBody("MSG bob Bob -1\r\n" + textPayload("hello")), std::nullopt);
}

TEST(HasTrailingData, IsNoForOneMessageAndYesForOneCharacterMore) {
    EXPECT_EQ(HasTrailingData("MSG 3 N 5\r\n12345"), Answer::No);
    EXPECT_EQ(HasTrailingData("MSG 3 N 5\r\n123456"), Answer::Yes);
}

TEST(HasTrailingData, IsNoForThePartOfAMessage) {
    EXPECT_EQ(HasTrailingData("MSG 3 N 5\r\n1"), Answer::No);
    EXPECT_EQ(HasTrailingData("MSG 3 N 5"), Answer::No);
    EXPECT_EQ(HasTrailingData("MSG 3 N 2147483647\r\n12345"), Answer::No);
}

Bytes fixed(const std::string& message) { return need(FixPayloadLength(message)); }

TEST(FixPayloadLength, LeavesAMessageOfTheRightLengthAsItIs) {
    EXPECT_EQ(fixed(clientText("hello")), clientText("hello"));
    EXPECT_EQ(fixed("MSG 3 N 0\r\n"), Bytes("MSG 3 N 0\r\n"));
}

TEST(FixPayloadLength, CountsThePayloadAnew) {
    EXPECT_EQ(fixed("MSG 3 N 9\r\n12345"), Bytes("MSG 3 N 5\r\n12345"));
    EXPECT_EQ(fixed("MSG 3 N 9\r\n123456789012"), Bytes("MSG 3 N 12\r\n123456789012"));
}

TEST(FixPayloadLength, ChangesTheTransactionNumberThatHasTheSameDigits) {
    EXPECT_EQ(fixed("MSG 7 U 7\r\n123456789"), Bytes("MSG 9 U 7\r\n123456789"));
    EXPECT_EQ(fixed("MSG 125 U 125\r\nx"), Bytes("MSG 1 U 125\r\nx"));
}

TEST(FixPayloadLength, ChangesTheFirstDigitsThatMatchEvenWithinAnotherNumber) {
    EXPECT_EQ(fixed("MSG 1712 U 71\r\nx"), Bytes("MSG 112 U 71\r\nx"));
    EXPECT_EQ(fixed("MSG bob9@example.com Bob 9\r\nx"), Bytes("MSG bob1@example.com Bob 9\r\nx"));
}

TEST(FixPayloadLength, LooksForTheIntegerPartAndNotForTheWord) {
    EXPECT_EQ(fixed("MSG 3 N 9.75\r\n12345"), Bytes("MSG 3 N 5.75\r\n12345"));
    EXPECT_EQ(fixed("MSG 3 N 009\r\n12345"), Bytes("MSG 3 N 005\r\n12345"));
}

TEST(FixPayloadLength, FindsNoNumberThatIsWrittenInAnotherWay) {
    EXPECT_EQ(fixed("MSG 3 N 1e2\r\n12345"), Bytes("MSG 3 N 1e2\r\n12345"));
}

TEST(FixPayloadLength, MayFindTheDigitsInThePayload) {
    EXPECT_EQ(fixed("MSG 3 N 1e2\r\nfrom 100 on"), Bytes("MSG 3 N 1e2\r\nfrom 11 on"));
}

TEST(FixPayloadLength, MakesANegativeLengthTrue) {
    EXPECT_EQ(fixed("MSG 3 N -9\r\n12345"), Bytes("MSG 3 N 5\r\n12345"));
}

TEST(FixPayloadLength, CountsBytesAndNotLettersOfAnotherAlphabet) {
    EXPECT_EQ(fixed("MSG 3 N 9\r\n\xC3\xBC\xC3\x9F"), Bytes("MSG 3 N 4\r\n\xC3\xBC\xC3\x9F"));
}

TEST(FixPayloadLength, TakesTheWholeForThePayloadWhereTheFirstLineHasNoEnd) {
    EXPECT_EQ(fixed("MSG 3 N 90"), Bytes("MSG 3 N 10"));
}

TEST(FixPayloadLength, CountsAllThatFollowsTheFirstLine) {
    EXPECT_EQ(fixed("MSG 4 N 5\r\n12345MSG 4 N 6\r\n123456"),
              Bytes("MSG 4 N 22\r\n12345MSG 4 N 6\r\n123456"));
}

TEST(FixPayloadLength, HoldsAboveThirtyTwoThousand) {
    const std::string payload(40000, 'x');
    EXPECT_EQ(fixed("MSG 3 N 9\r\n" + payload), "MSG 3 N 40000\r\n" + payload);
}

TEST(FixPayloadLength, IsNothingForAnEmptyMessage) {
    EXPECT_EQ(FixPayloadLength(""), std::nullopt);
}

class PartOfAMessage : public Talk {};

TEST_F(PartOfAMessage, LeavesWithTheLengthOfThePart) {
    const std::string whole = clientText("hello, the rest comes later");
    const std::string part = whole.substr(0, whole.size() - 10);
    EXPECT_EQ(only(toServer(part)), message("MSG 12 N", textPayload("hello, the rest c")));
    EXPECT_EQ(only(toServer("omes later")), Bytes("omes later"));
}

}  // namespace
