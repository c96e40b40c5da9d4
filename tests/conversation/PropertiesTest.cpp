#include "base/Failure.h"
#include "conversation/chatCommands.h"
#include "conversation/injection.h"
#include "conversation/messageConstants.h"
#include "conversation/messageTools.h"
#include "conversation/timestamps.h"
#include "tests/conversation/LoneConversation.h"
#include "tests/conversation/Talk.h"

#include <random>

namespace {

/// Messages of every kind, the same ones at each run.
class RandomMessages : public Talk {
protected:
    static constexpr int rounds = 2000;
    std::mt19937 generator{20031118};

    std::size_t below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(generator);
    }
    bool chance(int percent) { return below(100) < static_cast<std::size_t>(percent); }
    std::string oneOf(const std::vector<std::string>& choices) {
        return choices[below(choices.size())];
    }
    std::string anyText() {
        std::string text;
        if (chance(20)) {
            text = oneOf({"!nick ", "!note ", "!rancolor ", "!google ", "!makemesay ", "!preview ",
                          "!winamp ", "!typo ", "!notes"});
        }
        const std::size_t pieces = below(12);
        for (std::size_t piece = 0; piece < pieces; ++piece) {
            text += chance(60) ? oneOf({"<t>", "<d>", "<ws>", "<mn>", "<me>", "<cn>", "<ce>",
                                        "<tr>", "<ut>", "<", "CO=1;", "\r\n", "12", " ", "!nick"})
                               : std::string(1 + below(200), static_cast<char>(below(256)));
        }
        return text;
    }
    std::string anyColor() {
        std::string code;
        for (std::size_t digits = below(7); digits > 0; --digits)
            code += "0123456789abcdef"[below(16)];
        return code;
    }
    std::string anyPayload() {
        return "MIME-Version: 1.0\r\nContent-Type: text/plain; charset=UTF-8\r\n"
               "X-MMS-IM-Format: FN=Arial; EF=; CO=" +
               anyColor() + "; CS=0; PF=22\r\n\r\n" + anyText();
    }
    /// Every number has fewer digits than a length, so no length is found in it.
    std::string anyNumber() { return std::to_string(below(100)); }

    /// The length that the first line declares is the payload's.
    static void expectTrueLength(const std::string& message) {
        const std::size_t end = message.find("\r\n");
        ASSERT_NE(end, std::string::npos) << escaped(message);
        const std::string head = message.substr(0, end);
        EXPECT_EQ(head.substr(head.rfind(' ') + 1), std::to_string(message.size() - end - 2))
            << escaped(message);
    }
    /// The head of `message`, up to the length.
    static std::string headOf(const std::string& message) {
        const std::string head = message.substr(0, message.find("\r\n"));
        return head.substr(0, head.rfind(' '));
    }
};

/// A head whose words hold no digits, in which every replacement finds the length alone.
const std::string plainHead = "MSG a@b.c N";

TEST_F(RandomMessages, HaveTheirTrueLengthAfterFixPayloadLength) {
    for (int round = 0; round < rounds; ++round) {
        const std::string payload = anyPayload();
        const std::string wrong = std::to_string(below(100000));
        const std::string fixed =
            need(messageTools::FixPayloadLength(plainHead + " " + wrong + "\r\n" + payload));
        EXPECT_EQ(Bytes(fixed), message(plainHead, payload));
    }
}

TEST_F(RandomMessages, HaveTheirTrueLengthAfterARandomColour) {
    for (int round = 0; round < rounds; ++round) {
        spine.facilities.chance.next = std::uniform_real_distribution<float>(0, 1)(generator);
        const std::string before = message(plainHead, anyPayload());
        const std::string after =
            need(messageTools::ApplyRandomColor(before, spine.facilities.chance));
        expectTrueLength(after);
        EXPECT_EQ(headOf(after), plainHead);
        const std::size_t mark = after.find("CO=") + 3;
        const std::string code = after.substr(mark, after.find(';', mark) - mark);
        EXPECT_FALSE(code.empty() || code.size() > 6) << code;
        EXPECT_EQ(code.find_first_not_of("0123456789abcdef"), std::string::npos) << code;
        EXPECT_TRUE(code == "0" || code.front() != '0') << code;
    }
}

TEST_F(RandomMessages, HaveTheirTrueLengthAfterConstants) {
    LoneConversation conversation;
    conversation.values.nickname = "Ann";
    conversation.connection.contactNick = "%42ob";
    for (int round = 0; round < rounds; ++round) {
        const std::string payload = anyPayload();
        if (payload.size() > 1640) continue;
        std::string expanded = message(plainHead, payload);
        EXPECT_TRUE(messageConstants::ExpandConstants(expanded, conversation));
        expectTrueLength(expanded);
        EXPECT_EQ(headOf(expanded), plainHead);
        EXPECT_EQ(expanded.find("<ws>"), std::string::npos);
        EXPECT_EQ(expanded.find("<t>"), std::string::npos);
    }
}

TEST_F(RandomMessages, OfContactsHaveTheirTrueLengthWithAStamp) {
    set("timestamp", "True");
    set("tsprefix", "[");
    for (int round = 0; round < rounds; ++round) {
        spine.facilities.registry.hasAddOn = chance(50);
        spine.facilities.clock.time = std::string(1 + below(12), '1');
        const std::string payload = anyPayload();
        const std::string stamped = received(message(plainHead, payload)).bytes;
        expectTrueLength(stamped);
        EXPECT_EQ(headOf(stamped), plainHead);
        EXPECT_EQ(stamped.substr(stamped.find("\r\n") + 2, payload.size()), payload);
    }
}

TEST_F(RandomMessages, OfTheProgramDeclareTheirOwnLength) {
    for (int round = 0; round < rounds; ++round) {
        const std::string text = anyText();
        expectTrueLength(injection::BuildFakeMessage("Bob", "bob@example.com", text, anyColor(),
                                                     chance(50) ? "B" : ""));
        const std::string email(below(100), 'a');
        const std::string number = anyNumber();
        const std::string covered =
            injection::MakeCoverMessage(message("MSG " + number + " N", text), email);
        EXPECT_EQ(Bytes(covered), cover(number, email));
    }
}

TEST_F(RandomMessages, OfTheClientLeaveOneChunkForEach) {
    signIn();
    join();
    set("preventtypo", "True");
    spine.host.values.serverID = 0;
    int covers = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::string number = anyNumber();
        const std::string chunk = message("MSG " + number + " N", anyPayload());
        const std::string out = only(toServer(chunk)).bytes;
        if (out == cover(number)) {
            ++covers;
            continue;
        }
        EXPECT_EQ(headOf(out), "MSG " + number + " N");
        expectTrueLength(out);
    }
    EXPECT_GT(covers, rounds / 10);
    EXPECT_LT(covers, rounds / 2);
}

TEST_F(RandomMessages, OfEitherSideLeaveOneChunkForEachEvenWhereTheyAreNone) {
    set("timestamp", "True");
    set("useristyping", "True");
    for (int round = 0; round < rounds; ++round) {
        std::string chunk = message("MSG " + anyNumber() + " N", anyPayload());
        for (std::size_t changes = 1 + below(4); changes > 0; --changes) {
            const std::size_t at = 3 + below(chunk.size() - 3);
            if (chance(50)) {
                chunk.erase(at, 1 + below(20));
            } else {
                chunk.insert(at, oneOf({"\r\n", " ", "-", "9", "e", "<t>", "{}", "{i}"}));
            }
        }
        EXPECT_EQ(toServer(chunk).size(), 1U) << escaped(chunk);
        EXPECT_EQ(toClient(chunk).size(), 1U) << escaped(chunk);
    }
}

}  // namespace
