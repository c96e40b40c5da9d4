#include "tests/conversation/Talk.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Values;

class UnknownCommand : public Talk {
protected:
    UnknownCommand() {
        signIn();
        join();
        set("preventtypo", "True");
    }
};

struct Typo {
    const char* text;
    const char* word;
};

void PrintTo(const Typo& typo, std::ostream* out) { *out << escaped(typo.text); }

class Typos : public UnknownCommand, public testing::WithParamInterface<Typo> {};

TEST_P(Typos, AreReportedInTheContactsNameAndNotSent) {
    EXPECT_EQ(typed(GetParam().text), cover("12"));
    EXPECT_THAT(newToClient(),
                ElementsAre(Bytes(spoken(std::string(GetParam().word) + " command not known."))));
    EXPECT_THAT(toasts(), IsEmpty());
}

TEST_P(Typos, AreReportedInBoldWithTheAddOn) {
    spine.facilities.registry.hasAddOn = true;
    EXPECT_EQ(typed(GetParam().text), cover("12"));
    EXPECT_THAT(newToClient(), ElementsAre(Bytes(spoken("\x02" + std::string(GetParam().word) +
                                                        "\x02 command not known."))));
}

TEST_P(Typos, GoToTheContactWithoutTheOption) {
    for (const std::string value : {"", "False", "true", "1"}) {
        set("preventtypo", value);
        EXPECT_EQ(typed(GetParam().text), clientText(GetParam().text));
        EXPECT_THAT(newToClient(), IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, Typos,
                         Values(Typo{"!NICK x", "!NICK"}, Typo{"!Nick x", "!Nick"},
                                Typo{"!notee x", "!notee"}, Typo{"!not x", "!not"}, Typo{"!", "!"},
                                Typo{"! hello", "!"}, Typo{"!!", "!!"},
                                Typo{"!nick\tx", "!nick\tx"}, Typo{"!\r\n!nick x", "!"},
                                Typo{"!parse", "!parse"}));

class NoCommand : public UnknownCommand, public testing::WithParamInterface<std::string> {};

TEST_P(NoCommand, GoesToTheContact) {
    EXPECT_EQ(typed(GetParam()), clientText(GetParam()));
    EXPECT_THAT(newToClient(), IsEmpty());
    EXPECT_THAT(toasts(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Texts, NoCommand,
                         Values(" !nick x", "  !nick x", " !typo", "say !nick x",
                                "hello\r\n!nick x", "nick x", "?nick", "\t!nick x", "\n!nick x",
                                "\r\n!nick x", " "));

TEST_F(UnknownCommand, IsReportedWithEmptyNamesWhileThereIsNoContact) {
    spine.relay();
    EXPECT_EQ(only(toServer(clientText("!typo"), 2)), cover("12"));
    EXPECT_THAT(newToClient(2),
                ElementsAre(Bytes(spoken("!typo command not known.", "ff", "", " "))));
}

TEST_F(UnknownCommand, GoesToTheContactWhereItCannotBeReported) {
    spine.client().sendFails = true;
    EXPECT_EQ(typed("!typo <t>"), clientText("!typo 12:30:05"));
}

TEST_F(UnknownCommand, IsLookedForInEachMessageAnew) {
    EXPECT_EQ(typed("!typo"), cover("12"));
    set("preventtypo", "False");
    EXPECT_EQ(typed("!typo"), clientText("!typo"));
}

TEST_F(UnknownCommand, IsCoveredWithAnEmptyAddressBeforeOneIsKnown) {
    spine.host.values.email.clear();
    EXPECT_EQ(typed("!typo"), cover("12", ""));
}

TEST_F(UnknownCommand, IsSoughtInEveryKindOfMessageButPeerToPeer) {
    const std::string headers = "MIME-Version: 1.0\r\nContent-Type: application/x\r\nA: 1\r\n\r\n";
    EXPECT_EQ(sent(headers + "!typo"), cover("12"));
    const std::string transfer =
        "MIME-Version: 1.0\r\nContent-Type: application/x-msnmsgrp2p\r\nA: 1\r\n\r\n!typo";
    EXPECT_EQ(sent(transfer), message("MSG 12 N", transfer));
}

}  // namespace
