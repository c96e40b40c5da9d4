#include "base/Failure.h"
#include "conversation/messageTools.h"
#include "tests/conversation/Talk.h"

namespace {

using testing::Values;

using messageTools::FixPayloadLength;

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
