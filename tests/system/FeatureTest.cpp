#include "tests/platform/linux/bus/ScriptedPlayer.h"
#include "tests/support/Relay.h"
#include "tests/support/comesTrue.h"
#include "tests/support/linux/Program.h"
#include "tests/support/linux/SessionBus.h"
#include "tests/support/messages.h"
#include "tests/support/readFile.h"
#include "tests/support/storedSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

std::string cover(const std::string& number, const std::string& email) {
    return "MSG " + number + " U " + std::to_string(73 + email.size()) +
           "\r\nMIME-Version: 1.0\r\nContent-Type: text/x-msmsgscontrol\r\nTypingUserx " + email +
           "\r\n\r\n\r\n";
}

/// What the client gets in the name of Bob.
std::string inBobsName(const std::string& words, const std::string& color,
                       const std::string& effects) {
    const std::string payload =
        "MIME-Version: 1.0\r\nContent-Type: text/plain; charset=UTF-8\r\n"
        "X-MMS-IM-Format: FN=Verdana; EF=" +
        effects + "; CO=" + color + "; CS=0; PF=00; RL=0\r\n\r\n" + words;
    return "MSG bob@example.com Bob " + std::to_string(payload.size()) + "\r\n" + payload;
}

/// Ann is signed in and talks with Bob.
class Features : public testing::Test {
protected:
    const std::string ann = "ann@example.com";
    Program program;
    Relay notification;
    Relay conversation;

    explicit Features(const std::string& dialect = "MSNP10",
                      const Program::Options& options = Program::Options())
        : program(options) {
        program.waitUntilReady();
        notification = Relay::through(Program::port);
        (void)notification.up("VER 1 " + dialect + " CVR0\r\n");
        (void)notification.down("USR 3 OK ann@example.com Ann%20Lee 1 0\r\n");
        (void)notification.down("PRP MFN Ann%20Lee\r\n");
        (void)notification.up("CHG 5 NLN 0\r\n");
        conversation = Relay::through(Program::port);
        (void)conversation.down("JOI bob@example.com Bob\r\n");
    }

    /// A chat command is covered; what is left for the client to read is read by the test.
    void command(const std::string& text) {
        EXPECT_EQ(escaped(conversation.up(clientText(text, "31"))), escaped(cover("31", ann)))
            << text;
    }
    [[nodiscard]] std::string clientGets(const std::string& expected) {
        return escaped(conversation.client.receive(expected.size()));
    }
};

class FeaturesOfMSNP9 : public Features {
protected:
    FeaturesOfMSNP9() : Features("MSNP9") {}
};

TEST_F(Features, ANickNameByCommandReachesTheNotificationServer) {
    command("!nick Ann");
    EXPECT_EQ(notification.server.receiveOnce(), "PRP 31 MFN %41%6E%6E\r\n");
}

TEST_F(FeaturesOfMSNP9, ANickNameByCommandReachesTheNotificationServerInItsOwnForm) {
    command("!nick Ann");
    EXPECT_EQ(notification.server.receiveOnce(), "REA 31 ann@example.com %41%6E%6E\r\n");
}

TEST_F(Features, ANoteIsInTheFileWhenItsCommandHasBeenCovered) {
    command("!note buy milk\r\nand bread");
    EXPECT_EQ(readFile(program.notes()), "buy milk" + std::string(55, ' ') + "and bread\r\n\r\n");
}

TEST_F(Features, ConstantsAreExpandedForTheContactWithATrueLength) {
    const std::string received = conversation.up(clientText("<mn>, <me>, <cn>, <ce>, <t>, <tr>"));
    const std::string text = received.substr(received.find("\r\n\r\n") + 4);
    EXPECT_THAT(text, StartsWith("Ann Lee, ann@example.com, Bob, bob@example.com, "));
    EXPECT_THAT(text, MatchesRegex(".*, [^<>]+, [0-9.]+ Mb"));
    EXPECT_EQ(received,
              "MSG 12 N " + std::to_string(textPayload(text).size()) + "\r\n" + textPayload(text));
}

TEST_F(Features, RandomColorsAreSwitchedByCommand) {
    command("!rancolor");
    const std::string received = conversation.up(clientText("Hello"));
    EXPECT_THAT(received,
                MatchesRegex("MSG 12 N [0-9]+\r\n(.|\n|\r)*; CO=[0-9a-f]+; (.|\n|\r)*Hello"));
    const std::string payload = received.substr(received.find("\r\n") + 2);
    EXPECT_THAT(received, StartsWith("MSG 12 N " + std::to_string(payload.size()) + "\r\n"));
    command("!rancolour");
    EXPECT_EQ(conversation.up(clientText("Hello")), clientText("Hello"));
}

TEST_F(Features, WordsCanBePutIntoTheContactsMouth) {
    command("!makemesay hello");
    const std::string expected = inBobsName("hello", "000000", "B");
    EXPECT_EQ(clientGets(expected), escaped(expected));
}

TEST_F(Features, APreviewShowsTheTextToItsWriterAlone) {
    command("!preview <mn>\r\nsecond line");
    const std::string expected =
        inBobsName("Message Preview: \r\n\r\nAnn Lee\r\nsecond line", "000000", "B");
    EXPECT_EQ(clientGets(expected), escaped(expected));
}

TEST_F(Features, AMistypedCommandStaysHereWhenToldTo) {
    EXPECT_EQ(conversation.up(clientText("!nikc x")), clientText("!nikc x"));
    program.setSetting("preventtypo", "True");
    command("!nikc x");
    const std::string expected = inBobsName("!nikc command not known.", "ff", "");
    EXPECT_EQ(clientGets(expected), escaped(expected));
}

TEST_F(Features, AnIncomingTextIsStamped) {
    program.setSetting("timestamp", "True");
    program.setSetting("tsprefix", "(");
    program.setSetting("tspostfix", ")");
    const std::string received = conversation.down(contactText("Hello"));
    EXPECT_THAT(received, MatchesRegex("MSG (.|\n|\r)*Hello \\([^()]+\\)"));
    const std::string payload = received.substr(received.find("\r\n") + 2);
    EXPECT_THAT(received,
                StartsWith("MSG bob@example.com Bob " + std::to_string(payload.size()) + "\r\n"));
}

TEST_F(Features, AContactWhoJoinsAndLeavesIsAnnouncedFirst) {
    for (const char* const key : {"alertopenwindow", "alertjoinwindow", "alertclosewindow"}) {
        program.setSetting(key, "True");
    }
    const std::string joined =
        inBobsName("bob@example.com has joined the conversation window.", "ff", "") +
        "JOI bob@example.com Bob\r\n";
    conversation.server.send("JOI bob@example.com Bob\r\n");
    EXPECT_EQ(clientGets(joined), escaped(joined));
    const std::string left =
        inBobsName("I have left your conversation window.", "ff", "") + "BYE bob@example.com\r\n";
    conversation.server.send("BYE bob@example.com\r\n");
    EXPECT_EQ(clientGets(left), escaped(left));
}

TEST_F(Features, ForceExitEndsTheProgramAndSendsNothing) {
    conversation.client.send(clientText("!forceexit"));
    EXPECT_EQ(program.waitForEnd(), 0);
    EXPECT_EQ(conversation.server.receiveToEnd(), "");
}

struct Script {
    const char* name;
    std::string nick;
    std::string artist;
    std::string title;
};

void PrintTo(const Script& script, std::ostream* stream) { *stream << script.name; }

/// Ann has a player that plays.
class AnyScript : protected SessionBus,
                  public Features,
                  public testing::WithParamInterface<Script> {
    int count = 0;
    QCoreApplication application{count, nullptr};

protected:
    const ScriptedPlayer player{"one",
                                withSong("Playing", QString::fromStdString(GetParam().artist),
                                         QString::fromStdString(GetParam().title))};
    const std::string song = GetParam().artist + " - " + GetParam().title;

    AnyScript() : Features("MSNP10", {.environment = {{"DBUS_SESSION_BUS_ADDRESS", address()}}}) {}

    /// Waits until the program knows the song, which the text of the contact then has.
    void expectSong() {
        const std::string expected = escaped(clientText(song, "7"));
        std::string got;
        EXPECT_TRUE(comesTrue([&] {
            got = escaped(conversation.up(clientText("<ws>", "7")));
            return got == expected;
        })) << got;
    }
    /// What asks the server for this nick name.
    [[nodiscard]] static std::string request(const std::string& nick) {
        constexpr const char* digits = "0123456789ABCDEF";
        std::string coded;
        for (const char character : nick) {
            const auto byte = static_cast<unsigned char>(character);
            coded += {'%', digits[byte / 16], digits[byte % 16]};
        }
        return "PRP 31 MFN " + coded + "\r\n";
    }
};

TEST_P(AnyScript, PassesFromThePlayerToContactAndServerAsItIs) {
    expectSong();
    command("!winamp " + GetParam().nick);
    EXPECT_EQ(notification.server.receiveOnce(), request(GetParam().nick + " " + song));
}

TEST_P(AnyScript, PassesInNickNamesAndNotesAsItIs) {
    command("!nick " + GetParam().nick);
    EXPECT_EQ(notification.server.receiveOnce(), request(GetParam().nick));
    const std::string answer = request(GetParam().nick).substr(std::string("PRP 31 ").size());
    (void)notification.down("PRP " + answer);
    EXPECT_EQ(escaped(conversation.up(clientText("<mn>", "7"))),
              escaped(clientText(GetParam().nick, "7")));
    command("!note " + GetParam().nick);
    EXPECT_EQ(readFile(program.notes()), GetParam().nick + "\r\n\r\n");
}

const Script scripts[] = {
    {"Latin", "Zo\u00EB", "Bj\u00F6rk", "J\u00F3ga"},
    {"Cyrillic", "\u0417\u043E\u044F", "\u041A\u0438\u043D\u043E",
     "\u0413\u0440\u0443\u043F\u043F\u0430 \u043A\u0440\u043E\u0432\u0438"},
    {"Arabic", "\u0632\u0648\u064A", "\u0641\u064A\u0631\u0648\u0632",
     "\u0646\u0633\u0645 \u0639\u0644\u064A\u0646\u0627 \u0627\u0644\u0647\u0648\u0649"},
    {"Chinese", "\u4F50\u4F0A", "\u9093\u9E97\u541B", "\u6708\u4EAE\u4EE3\u8868\u6211\u7684\u5FC3"},
    {"Emoji", "\U0001F478\U0001F3FD", "\U0001F3B5", "\U0001F469\u200D\U0001F3A4"},
};

INSTANTIATE_TEST_SUITE_P(Scripts, AnyScript, testing::ValuesIn(scripts),
                         [](const auto& info) { return info.param.name; });

class UnreadFeatures : public Features {
protected:
    UnreadFeatures() : Features("MSNP10", {.unread = true}) {}
};

TEST_F(UnreadFeatures, NotesThatCannotBeSavedEndNothing) {
    std::filesystem::create_directory(program.notes());
    command("!note buy milk");
    EXPECT_EQ(conversation.up("PNG\r\n"), "PNG\r\n");
}

TEST(LastWords, SurviveARestart) {
    const TemporaryFolder settings;
    const Program::Options options{.environment = {}, .settings = settings.path()};
    {
        Program first(options);
        first.waitUntilReady();
        Relay relay = Relay::through(Program::port);
        EXPECT_EQ(relay.down(contactText("See you\r\ntomorrow")),
                  contactText("See you\r\ntomorrow"));
        // It is relayed before it is written.
        SettingsStore store(storeIn(settings.path()), {});
        ASSERT_TRUE(becomesTrue([&] {
            return !store.ReadSetting(SettingsStore::lastWords, "bob@example.com").empty();
        }));
    }
    writeSettings(settings.path(), storedOptions({{"lastthing", "True"}}));
    Program second(options);
    second.waitUntilReady();
    Relay relay = Relay::through(Program::port);
    const std::string expected =
        inBobsName("Last thing bob@example.com said:\r\n\r\nSee you\r\ntomorrow", "0", "") +
        "JOI bob@example.com Bob\r\n";
    relay.server.send("JOI bob@example.com Bob\r\n");
    EXPECT_EQ(escaped(relay.client.receive(expected.size())), escaped(expected));
}

/// A stand-in for the desktop's opener, which keeps what it was asked to open.
class Searches : public testing::Test {
protected:
    TemporaryFolder tools;
    Program program;

    explicit Searches(unsigned long descriptors = 0)
        : program({.environment = {{"PATH", makeOpener()}}, .descriptors = descriptors}) {
        program.waitUntilReady();
    }

    std::string makeOpener() {
        const auto opener = tools.path() / "xdg-open";
        std::ofstream(opener) << "#!/bin/sh\nprintf '%s|' \"$@\" >> " << opened().string() << '\n';
        std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
        return tools.path().string() + ":/usr/bin:/bin";
    }
    [[nodiscard]] std::filesystem::path opened() const { return tools.path() / "opened"; }
};

TEST_F(Searches, OpenExactlyWhatWasTyped) {
    Relay relay = Relay::through(Program::port);
    EXPECT_THAT(relay.up(clientText("!google a  b & 100% \"c\" $(d)")), HasSubstr("TypingUserx"));
    EXPECT_TRUE(becomesTrue([&] { return readFile(opened()).ends_with('|'); }));
    EXPECT_THAT(readFile(opened()), EndsWith("/search?q=a%20%20b%20&%20100%%20\"c\"%20$(d)|"));
}

class CrowdedFeatures : public Searches {
protected:
    CrowdedFeatures() : Searches(48) {}
};

TEST_F(CrowdedFeatures, NoCommandReachesTheContactThoughNoFileCanBeOpened) {
    Relay relay = Relay::through(Program::port);
    std::vector<Peer> waiting;
    for (int count = 0; count < 60; ++count)
        waiting.push_back(Peer::connectedTo(Program::port));
    ASSERT_TRUE(becomesTrue([&] { return program.openDescriptors() >= 47; }));
    for (const char* const command :
         {"!nick <ru>, <ur> of <tr>", "!note <t> <d>", "!google spiders", "!winamp <ut>", "!winamp",
          "!rancolor", "!notes"}) {
        EXPECT_THAT(relay.up(clientText(command)), HasSubstr("TypingUserx")) << command;
    }
    EXPECT_TRUE(becomesTrue([&] { return readFile(opened()).ends_with("spiders|"); }));
}

}  // namespace
