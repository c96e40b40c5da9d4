#include "base/Failure.h"
#include "conversation/chatCommands.h"
#include "tests/conversation/LoneConversation.h"
#include "tests/conversation/Talk.h"

namespace {

/// Chunks of the client that hold more than their first message.
class TrailingData : public Talk {
protected:
    const std::string typing = message("MSG 11 U", typingPayload());
    const std::string transfer = message(
        "MSG 12 D", "MIME-Version: 1.0\r\nContent-Type: application/x-msnmsgrp2p\r\n\r\nbytes");
};

TEST_F(TrailingData, LetsTwoTextsPassAsTheyCame) {
    const std::string both = clientText("at <t>", "12") + clientText("and <t>", "13");
    EXPECT_EQ(only(toServer(both)), both);
}

TEST_F(TrailingData, LetsTwoTextsPassWithTheirColours) {
    spine.host.values.rancolorOn = true;
    const std::string both = clientText("hello", "12") + clientText("again", "13");
    EXPECT_EQ(only(toServer(both)), both);
}

TEST_F(TrailingData, KeepsCommandsInEitherOfTwoTextsFromBeingSeen) {
    const std::string first = clientText("!nick x", "12") + clientText("hello", "13");
    EXPECT_EQ(only(toServer(first)), first);
    const std::string second = clientText("hello", "12") + clientText("!nick x", "13");
    EXPECT_EQ(only(toServer(second)), second);
    EXPECT_TRUE(toasts().empty());
}

TEST_F(TrailingData, PassesATextBehindATypingNoticeWhole) {
    const std::string both = typing + clientText("!nick x");
    EXPECT_EQ(only(toServer(both)), both);
    EXPECT_TRUE(toasts().empty());
}

TEST_F(TrailingData, DropsWhatIsNoTextBehindATypingNotice) {
    EXPECT_EQ(only(toServer(typing + transfer)), typing);
}

TEST_F(TrailingData, DropsItBehindATextThatEndsInALineEnd) {
    EXPECT_EQ(only(toServer(clientText("at <t>\r\n", "11") + transfer)),
              clientText("at 12:30:05\r\n", "11"));
}

TEST_F(TrailingData, CarriesOutACommandInFrontOfADroppedMessage) {
    EXPECT_EQ(only(toServer(clientText("!rancolor \r\n", "11") + transfer)), cover("11", ""));
    EXPECT_TRUE(spine.host.values.rancolorOn);
}

TEST_F(TrailingData, PassesATextWithoutALineEndWholeWhateverFollows) {
    // The first message is looked for with a line end that it has not, and is not found, so what
    // remains begins with that text again.
    const std::string both = clientText("!nick x", "11") + transfer;
    EXPECT_EQ(only(toServer(both)), both);
    EXPECT_TRUE(toasts().empty());
}

TEST_F(TrailingData, CutsTheEndOfAFirstMessageThatIsNoTextAndHasNoLineEnd) {
    const std::string payload =
        "MIME-Version: 1.0\r\nContent-Type: application/x\r\nA: 1\r\n\r\nbytes";
    EXPECT_EQ(only(toServer(message("MSG 11 D", payload) + clientText("hello"))),
              message("MSG 11 D", payload.substr(0, payload.size() - 2) + "\r\n"));
}

TEST_F(TrailingData, PassesAMessageWithAFewCharactersMoreWhole) {
    for (const std::string more : {"x", "\r\n", "OUT\r\n"}) {
        const std::string chunk = clientText("at <t>\r\n") + more;
        EXPECT_EQ(only(toServer(chunk)), chunk);
    }
}

TEST_F(TrailingData, DropsEmptyLinesThatAreAsManyAsAMessageHas) {
    EXPECT_EQ(only(toServer(clientText("at <t>\r\n") + "\r\n\r\n")), clientText("at 12:30:05\r\n"));
}

TEST_F(TrailingData, PassesATextOfFewLinesBehindAnotherWhole) {
    const std::string chunk =
        typing + "MSG 12 U 5\r\nA: 1\r\nContent-Type: text/plain\r\n\r\n!nick";
    EXPECT_EQ(only(toServer(chunk)), chunk);
}

TEST_F(TrailingData, FailsForALengthFarBelowNothing) {
    const std::string chunk = "MSG 12 N -5000\r\n" + textPayload("!nick x");
    EXPECT_EQ(only(toServer(chunk)), chunk);
    EXPECT_TRUE(toasts().empty());
}

/// A process whose own command line has six lines, the last of which is the text that a command in
/// the second message is given.
class LongCommandLine : public TrailingData {
protected:
    LoneConversation conversation;

    LongCommandLine() {
        conversation.services.commandLine = "0\r\n1\r\n2\r\n3\r\n4\r\n!note from outside";
    }
    Bytes filtered(std::string chunk) {
        attempt([&] { chatCommands::FilterOutgoing(chunk, conversation); });
        return chunk;
    }
};

TEST_F(LongCommandLine, CarriesOutTheCommandOfTheSecondMessageAndSendsTheFirst) {
    EXPECT_EQ(filtered(typing + clientText("!note typed")), typing);
    EXPECT_THAT(conversation.facilities.notes.list(), testing::ElementsAre("from outside"));
    EXPECT_THAT(conversation.popups, testing::ElementsAre("Note added."));
}

TEST_F(LongCommandLine, TakesTwoMessagesForOneWhereTheSecondIsNoCommand) {
    EXPECT_EQ(filtered(typing + clientText("hello")),
              message("MSG 11 U", typingPayload() + clientText("hello")));
}

TEST_F(LongCommandLine, EndsTheProcessWhereTheSecondMessageAsksForIt) {
    EXPECT_THROW((void)filtered(typing + clientText("!forceexit")), ProcessEnded);
}

TEST_F(LongCommandLine, FailsWhereTheSecondMessageHasAnEmptyText) {
    const std::string both = typing + clientText("", "13");
    EXPECT_EQ(filtered(both), both);
}

TEST_F(LongCommandLine, FailsWithALineLess) {
    conversation.services.commandLine = "0\r\n1\r\n2\r\n3\r\n!note from outside";
    const std::string both = typing + clientText("!note typed");
    EXPECT_EQ(filtered(both), both);
    EXPECT_TRUE(conversation.facilities.notes.list().empty());
}

}  // namespace
