#include "base/Failure.h"
#include "conversation/injection.h"
#include "tests/conversation/Talk.h"

namespace {

using testing::ElementsAre;
using testing::Values;

Bytes fake(const std::string& text, const std::string& color, const std::string& effects,
           const std::string& nick = "Bob", const std::string& email = "bob@example.com") {
    return injection::BuildFakeMessage(nick, email, text, color, effects);
}

TEST(BuildFakeMessage, HasTheFormOfAContactsTextToTheByte) {
    EXPECT_EQ(fake("0123456789", "ff", ""),
              Bytes("MSG bob@example.com Bob 132\r\n"
                    "MIME-Version: 1.0\r\n"
                    "Content-Type: text/plain; charset=UTF-8\r\n"
                    "X-MMS-IM-Format: FN=Verdana; EF=; CO=ff; CS=0; PF=00; RL=0\r\n"
                    "\r\n"
                    "0123456789"));
    EXPECT_EQ(fake("0123456789", "000000", "B"),
              Bytes("MSG bob@example.com Bob 137\r\n"
                    "MIME-Version: 1.0\r\n"
                    "Content-Type: text/plain; charset=UTF-8\r\n"
                    "X-MMS-IM-Format: FN=Verdana; EF=B; CO=000000; CS=0; PF=00; RL=0\r\n"
                    "\r\n"
                    "0123456789"));
}

TEST(BuildFakeMessage, IsBlackWithoutAColor) {
    EXPECT_EQ(fake("x", "", ""), fake("x", "0", ""));
    EXPECT_NE(fake("x", "", "").bytes.find("; CO=0; "), std::string::npos);
}

TEST(BuildFakeMessage, KeepsLineBreaksAndForeignBytesOfTheText) {
    const std::string text("one\r\n\r\ntwo\n\xC3\xBC\0{i}", 17);
    const std::string built = fake(text, "ff", "").bytes;
    EXPECT_TRUE(built.ends_with("\r\n\r\n" + text)) << escaped(built);
    EXPECT_TRUE(built.starts_with("MSG bob@example.com Bob 139\r\n")) << escaped(built);
}

TEST(BuildFakeMessage, HasTwoBlanksWhereThereIsNoContact) {
    EXPECT_TRUE(fake("0123456789", "ff", "", "", "").bytes.starts_with("MSG   132\r\n"));
}

TEST(BuildFakeMessage, PutsTheNumberIntoANickThatHoldsThePlaceholder) {
    EXPECT_TRUE(fake("0123456789", "ff", "", "B{i}b")
                    .bytes.starts_with("MSG bob@example.com B132b {i}\r\n"));
}

TEST(BuildFakeMessage, PutsTheNumberIntoAnAddressThatHoldsThePlaceholder) {
    EXPECT_TRUE(fake("0123456789", "ff", "", "{i}", "{i}@example.com")
                    .bytes.starts_with("MSG 132@example.com {i} {i}\r\n"));
}

TEST(MakeCoverMessage, IsAControlMessageWithAHeaderThatNoClientKnows) {
    EXPECT_EQ(Bytes(injection::MakeCoverMessage("MSG 15 N 5\r\n!nick", "twentyletters@exampl")),
              Bytes("MSG 15 U 93\r\n"
                    "MIME-Version: 1.0\r\n"
                    "Content-Type: text/x-msmsgscontrol\r\n"
                    "TypingUserx twentyletters@exampl\r\n"
                    "\r\n"
                    "\r\n"));
}

class CoverOfAddress : public testing::TestWithParam<std::string> {};

TEST_P(CoverOfAddress, DeclaresTheLengthOfWhatFollowsItsFirstLine) {
    EXPECT_EQ(Bytes(injection::MakeCoverMessage("MSG 7 N 5\r\nx", GetParam())),
              cover("7", GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Addresses, CoverOfAddress,
                         Values("", "a", "ann@example.com", "{}", std::string(27, 'a'),
                                std::string(100, 'a'), "ann@example.com\r\n"));

TEST(MakeCoverMessage, CopiesTheNumberAsText) {
    EXPECT_EQ(Bytes(injection::MakeCoverMessage("MSG 007x N 5\r\nx", "")), cover("007x", ""));
    EXPECT_EQ(Bytes(injection::MakeCoverMessage("MSG  N 5\r\nx", "")), cover("", ""));
}

TEST(MakeCoverMessage, PutsTheLengthIntoANumberThatHoldsThePlaceholder) {
    EXPECT_TRUE(
        injection::MakeCoverMessage("MSG 1{}2 N 5\r\nx", "").starts_with("MSG 1732 U {}\r\n"));
}

TEST(MakeCoverMessage, FailsWithoutANumber) {
    EXPECT_THROW((void)injection::MakeCoverMessage("MSG\r\nx y", "ann"), Failure);
    EXPECT_THROW((void)injection::MakeCoverMessage("", "ann"), Failure);
}

TEST(Add1, RaisesTheLength) { EXPECT_EQ(injection::add1("MSG 3 U 7\r\nx"), "MSG 3 U 8\r\nx"); }

TEST(Minus1, LowersTheLength) {
    EXPECT_EQ(injection::minus1("MSG 3 U 7\r\nx"), "MSG 3 U 6\r\nx");
    EXPECT_EQ(injection::minus1("MSG 3 U 0\r\nx"), "MSG 3 U -1\r\nx");
}

TEST(Add1, ChangesTheTransactionNumberThatHasTheSameDigits) {
    EXPECT_EQ(injection::add1("MSG 7 U 7\r\nx"), "MSG 8 U 7\r\nx");
    EXPECT_EQ(injection::minus1("MSG 7 U 7\r\nx"), "MSG 6 U 7\r\nx");
}

TEST(Add1, IsNothingWhereTheResultHasNoSixteenBits) {
    EXPECT_EQ(injection::add1("MSG 1 U 32766\r\n"), "MSG 1 U 32767\r\n");
    EXPECT_EQ(injection::add1("MSG 1 U 32767\r\n"), std::nullopt);
    EXPECT_EQ(injection::minus1("MSG 1 U -32767\r\n"), "MSG 1 U -32768\r\n");
    EXPECT_EQ(injection::minus1("MSG 1 U -32768\r\n"), std::nullopt);
    EXPECT_EQ(injection::minus1("MSG 1 U 32768\r\n"), std::nullopt);
    EXPECT_EQ(injection::add1("MSG 1 U\r\n5 6 7"), std::nullopt);
}

/// What the program sends of its own borrows the number that a client used last.
class BorrowedNumber : public Talk {
protected:
    BorrowedNumber() { (void)toClient("USR 3 OK ann@example.com Ann 1 0\r\n"); }
};

TEST_F(BorrowedNumber, StandsInTheNickCommandOfTheNinthDialect) {
    (void)toServer("VER 1 MSNP9 CVR0\r\n");
    (void)toServer("CHG 11 NLN 0\r\n");
    EXPECT_THAT(toServer(clientText("!nick A", "12")),
                ElementsAre("REA 12 ann@example.com %41\r\n", Bytes(cover("12"))));
    (void)toServer("PNG 13 x\r\n");
    EXPECT_EQ(spine.host.values.tranID, "13");
}

TEST_F(BorrowedNumber, StandsInTheNickCommandOfEveryOtherDialect) {
    (void)toServer("CHG 11 NLN 0\r\n");
    EXPECT_THAT(toServer(clientText("!nick A", "12")),
                ElementsAre("PRP 12 MFN %41\r\n", Bytes(cover("12"))));
    (void)toServer("VER 1 MSNP10 MSNP9 CVR0\r\n");
    EXPECT_THAT(toServer(clientText("!nick A", "14")),
                ElementsAre("PRP 14 MFN %41\r\n", Bytes(cover("14"))));
}

TEST_F(BorrowedNumber, IsTheWordThatStoodThereEvenIfItIsNone) {
    (void)toServer("CHG 11 NLN 0\r\n");
    (void)toServer("XYZ hello\r\n");
    spine.server().sent.clear();
    spine.instance().ChangeNick("%41");
    EXPECT_THAT(spine.server().sent, ElementsAre("PRP hello\r\n MFN %41\r\n"));
}

TEST_F(BorrowedNumber, StandsInTheStatusCommandWithTheClientsOwnPostfix) {
    (void)toServer("CHG 11 NLN 268435500 %3Cmsnobj%2F%3E\r\n");
    spine.server().sent.clear();
    spine.instance().ChangeStatus("BSY");
    EXPECT_THAT(spine.server().sent, ElementsAre("CHG 11 BSY 268435500\r\n"));
}

TEST_F(BorrowedNumber, KeepsTheLineEndOfAPostfixThatEndedItsChunk) {
    (void)toServer("CHG 11 NLN 0\r\n");
    spine.server().sent.clear();
    spine.instance().ChangeStatus("AWY");
    EXPECT_THAT(spine.server().sent, ElementsAre("CHG 11 AWY 0\r\n\r\n"));
}

TEST_F(BorrowedNumber, IsNeverSentWhereTheServerIsGone) {
    spine.server().sendFails = true;
    EXPECT_THROW(spine.instance().ChangeNick("%41"), Failure);
    EXPECT_THROW(spine.instance().ChangeStatus("BSY"), Failure);
}

}  // namespace
