#include "tests/support/Relay.h"
#include "tests/support/linux/BadBus.h"
#include "tests/support/linux/Display.h"
#include "tests/support/linux/Program.h"
#include "tests/support/messages.h"
#include "tests/support/readFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fstream>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* secondCopyText = "Please do not run multiple instances of Cobweave.";

TEST(Program, SaysWhatToEnterInTheClient) {
    Program program;
    const std::string line = program.waitUntilReady();
    EXPECT_THAT(line, HasSubstr("SOCKS version 4"));
    EXPECT_THAT(line, HasSubstr("127.0.0.1"));
    EXPECT_THAT(line, HasSubstr("1090"));
}

TEST(Program, SaysItsVersionInItsFirstLine) {
    Program program;
    EXPECT_THAT(program.waitUntilReady(), StartsWith("Cobweave " COBWEAVE_VERSION " "));
}

class Arguments : public testing::TestWithParam<std::vector<std::string>> {
protected:
    Program program{{.environment = {{"DISPLAY", "none"}}, .arguments = GetParam()}};
};

using Answered = Arguments;

TEST_P(Answered, ArePrintedWithoutARun) {
    EXPECT_THAT(program.waitForOutput(), HasSubstr(GetParam() == std::vector<std::string>{"--help"}
                                                       ? "--version"
                                                       : "Cobweave " COBWEAVE_VERSION "\n"));
    EXPECT_EQ(program.waitForEnd(), 0);
    EXPECT_EQ(program.errors(), "");
    EXPECT_FALSE(std::filesystem::exists(program.store()));
}

INSTANTIATE_TEST_SUITE_P(Words, Answered,
                         testing::Values(std::vector<std::string>{"--help"},
                                         std::vector<std::string>{"--version"}));

TEST(Arguments, AreAnsweredBesideACopyThatRuns) {
    Program first;
    first.waitUntilReady();
    Program second({.environment = {}, .arguments = {"--version"}});
    EXPECT_EQ(second.waitForOutput(), "Cobweave " COBWEAVE_VERSION "\n");
    EXPECT_EQ(second.waitForEnd(), 0);
    EXPECT_EQ(second.errors(), "");
}

using Refused = Arguments;

TEST_P(Refused, AreNamedWithoutARun) {
    EXPECT_EQ(program.waitForOutput(), "");
    EXPECT_EQ(program.waitForEnd(), 2);
    // The first one that is not understood.
    const std::vector<std::string> words = GetParam();
    const bool isBehind = words.front() == "--version";
    EXPECT_THAT(program.errors(), HasSubstr('"' + (isBehind ? words.at(1) : words.front()) + '"'));
    EXPECT_FALSE(std::filesystem::exists(program.store()));
}

INSTANTIATE_TEST_SUITE_P(Words, Refused,
                         testing::Values(std::vector<std::string>{"--port"},
                                         std::vector<std::string>{"1091"},
                                         std::vector<std::string>{""},
                                         std::vector<std::string>{"--version", "now"},
                                         std::vector<std::string>{"start", "--version"}));

TEST(Program, SaysThatItRunsWithoutWindowsWhereThereIsNoDisplay) {
    Program program;
    program.waitUntilReady();
    EXPECT_THAT(program.errors(), HasSubstr("there is no display, so it runs without windows"));
}

TEST(Program, RunsWithoutWindowsWhereTheDisplayDoesNotAnswer) {
    Program program({.environment = {{"DISPLAY", ":64999"}}});
    program.waitUntilReady();
    EXPECT_THAT(program.errors(), HasSubstr("the display :64999 does not answer"));
    EXPECT_EQ(Relay::through(Program::port).up("PNG\r\n"), "PNG\r\n");
}

TEST(Program, ShowsControlCharactersOfWhatComesFromOutsideAsTheirCodes) {
    Program program({.environment = {{"DISPLAY", "\x1B[31m:64999\n\xC2\x9B"}}});
    program.waitUntilReady();
    EXPECT_THAT(program.errors(), HasSubstr(R"(the display \x1B[31m:64999\x0A\xC2\x9B does)"));
}

TEST(Program, GoesOnWhereNobodyReadsWhatItSaysOnStandardError) {
    Program program({.blocked = true});
    program.waitUntilReady();
    EXPECT_EQ(Relay::through(Program::port).up("PNG\r\n"), "PNG\r\n");
}

TEST(Program, SaysNothingOfWindowsThatItDoesNotShow) {
    Program program;
    program.waitUntilReady();
    program.setSetting("alertoffline", "True");
    Relay relay = Relay::through(Program::port);
    (void)relay.down("FLN bob@example.com\r\n");
    for (const char* const command : {"!note buy milk", "!notes"})
        (void)relay.up(clientText(command));
    EXPECT_EQ(relay.up("PNG\r\n"), "PNG\r\n");
    EXPECT_THAT(program.errors(), Not(HasSubstr("plugin")));
    EXPECT_THAT(program.errors(), Not(HasSubstr("does not support")));
}

class LeftServer : public testing::TestWithParam<XServer::WhenLeft> {};

TEST_P(LeftServer, StaysWithTheProgramThatIsItsFirst) {
    for (int round = 0; round < 5; ++round) {
        const XServer server(1, GetParam());
        Program program({.environment = {{"DISPLAY", server.name()}}});
        ASSERT_NO_THROW(program.waitUntilReady());
        EXPECT_THAT(program.errors(), Not(HasSubstr("without windows")));
    }
}

INSTANTIATE_TEST_SUITE_P(Manners, LeftServer,
                         testing::Values(XServer::WhenLeft::StartsAnew, XServer::WhenLeft::Ends));

class StartWithABadBus : public testing::TestWithParam<BadBus::Manner> {
protected:
    BadBus bus{GetParam()};
};

TEST_P(StartWithABadBus, TakesTwoSecondsLongerAtMost) {
    const Display display;
    const auto before = std::chrono::steady_clock::now();
    Program program({.environment = {{"DISPLAY", display.name()},
                                     {"DBUS_SESSION_BUS_ADDRESS", bus.address()}}});
    program.waitUntilReady();
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(15));
    EXPECT_EQ(Relay::through(Program::port).up("PNG\r\n"), "PNG\r\n");
}

INSTANTIATE_TEST_SUITE_P(Manners, StartWithABadBus,
                         testing::Values(BadBus::Manner::Silent, BadBus::Manner::SilentAfterLogin,
                                         BadBus::Manner::Nonsense, BadBus::Manner::OtherAnswer,
                                         BadBus::Manner::EndlessLine));

TEST(Program, RunsWithoutADisplayWhateverTheDesktopSaysOfQt) {
    Program program({.environment = {{"QT_QPA_PLATFORM", "xcb"}}});
    program.waitUntilReady();
}

TEST(Program, UsesTheDisplayThatAnswersWhateverTheDesktopSaysOfQt) {
    const Display display;
    Program program({.environment = {{"DISPLAY", display.name()}, {"QT_QPA_PLATFORM", "wayland"}}});
    program.waitUntilReady();
    EXPECT_THAT(program.errors(), Not(HasSubstr("without windows")));
}

class EndSignal : public testing::TestWithParam<int> {};

TEST_P(EndSignal, EndsItCleanly) {
    Program program;
    program.waitUntilReady();
    Relay relay = Relay::through(Program::port);
    program.signal(GetParam());
    EXPECT_EQ(program.waitForEnd(), 0);
    relay.client.waitForEnd();
    relay.server.waitForEnd();
}

INSTANTIATE_TEST_SUITE_P(Signals, EndSignal, testing::Values(SIGINT, SIGTERM));

TEST(SecondCopy, RefusesAndLeavesTheFirstAlone) {
    Program first;
    first.waitUntilReady();
    Relay relay = Relay::through(Program::port);
    Program second;
    EXPECT_EQ(second.waitForEnd(), 1);
    EXPECT_THAT(second.errors(), HasSubstr(secondCopyText));
    EXPECT_THAT(second.errors(),
                HasSubstr("port 1090 is taken; \"ss -ltnp\" says by which program"));
    EXPECT_EQ(relay.up("PNG\r\n"), "PNG\r\n");
    EXPECT_EQ(Relay::through(Program::port).up("PNG\r\n"), "PNG\r\n");
}

TEST(SecondCopy, RefusesInABoxWhereThereIsADisplay) {
    Program first;
    first.waitUntilReady();
    const Display display;
    Program second({.environment = {{"DISPLAY", display.name()}}});
    display.waitForWindow("Cobweave");
    EXPECT_TRUE(second.isRunning());
    display.press("Cobweave", "Return");
    EXPECT_EQ(second.waitForEnd(), 1) << second.errors();
}

TEST(SecondCopy, IsEndedBySignalWhileItsBoxIsOpen) {
    Program first;
    first.waitUntilReady();
    const Display display;
    Program second({.environment = {{"DISPLAY", display.name()}}});
    display.waitForWindow("Cobweave");
    second.signal(SIGTERM);
    EXPECT_NE(second.waitForEnd(), 256 + SIGTERM);
}

TEST(Store, ThatIsDamagedIsKeptAndTheProgramGoesOn) {
    const std::string garbage(5000, 'x');
    Program program({.environment = {}, .prepare = [&](const auto& folder) {
                         std::filesystem::create_directory(folder / "Cobwaeve");
                         std::ofstream(folder / "Cobwaeve" / "settings.db") << garbage;
                     }});
    program.waitUntilReady();
    EXPECT_THAT(program.errors(), HasSubstr("are damaged"));
    EXPECT_EQ(Relay::through(Program::port).up("CHG 9 NLN 0\r\n"), "CHG 9 NLN 0\r\n");
    EXPECT_EQ(readFile(program.store().string() + ".damaged-1"), garbage);
}

TEST(Store, ThatCannotBeMadeIsReportedAndTheProgramGoesOn) {
    Program program({.environment = {}, .settings = "/proc/self"});
    program.waitUntilReady();
    EXPECT_THAT(program.errors(), HasSubstr("cannot be used"));
    EXPECT_EQ(Relay::through(Program::port).up("CHG 9 NLN 0\r\n"), "CHG 9 NLN 0\r\n");
}

TEST(Store, IsReadAfreshForEachSignIn) {
    Program program;
    program.waitUntilReady();
    program.setSetting("initialStatus", "Busy");
    EXPECT_EQ(Relay::through(Program::port).up("CHG 9 NLN 0\r\n"), "CHG 9 BSY 0\r\n");
    program.setSetting("initialStatus", "Out To Lunch");
    EXPECT_EQ(Relay::through(Program::port).up("CHG 9 NLN 0\r\n"), "CHG 9 LUN 0\r\n");
}

}  // namespace
