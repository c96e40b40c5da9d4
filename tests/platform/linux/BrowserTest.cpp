#include "base/Failure.h"
#include "platform/Browser.h"
#include "platform/linux/Descriptor.h"
#include "tests/support/linux/ProgramFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class DefaultBrowser : public testing::Test, protected ProgramFolder {
protected:
    DefaultBrowser() : ProgramFolder("xdg-open") {}

    std::unique_ptr<Browser> browser = makeBrowser();
};

class Address : public DefaultBrowser, public testing::WithParamInterface<const char*> {};

TEST_P(Address, ArrivesAsOneArgumentByteForByte) {
    script(R"(printf '%s|' "$#" "$@" >"$out/new" && mv "$out/new" "$out/arguments")");
    browser->open(GetParam());
    EXPECT_EQ(left("arguments"), "1|" + std::string(GetParam()) + "|");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, Address,
    testing::Values("http://example.org/", "http://example.org/?q=two words", "'single' \"double\"",
                    "$(touch $out/hacked) `touch $out/hacked` $HOME", "a;b&c|d>e<f", "100%25 %s %n",
                    "#fragment", "back\\slash\\n", "*?[a-z]~", "  blanks around  ", "line\nend\t",
                    "bj\xF6rk \xE6\x97\xA5 \xFF\x01", "", "--help"));

TEST_F(DefaultBrowser, TakesLongAddressesAsFarAsTheSystemDoes) {
    script(R"(printf '%s' "${#1}" >"$out/new" && mv "$out/new" "$out/size")");
    browser->open(std::string(100'000, 'x'));
    EXPECT_EQ(left("size"), "100000");
    // No argument may be that long.
    EXPECT_THROW(browser->open(std::string(1'000'000, 'x')), Failure);
}

TEST_F(DefaultBrowser, LeavesNoProcessToReap) {
    script(R"(touch "$out/started")");
    browser->open("http://example.org/");
    (void)left("started");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(DefaultBrowser, OpensWhereTheSystemReapsByItself) {
    script(R"(touch "$out/started")");
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_NO_THROW(browser->open("http://example.org/"));
    std::signal(SIGCHLD, before);
    (void)left("started");
}

TEST_F(DefaultBrowser, HasASessionOfItsOwn) {
    script(R"(cut -d ' ' -f 1,6 /proc/$$/stat >"$out/new" && mv "$out/new" "$out/session")");
    browser->open("http://example.org/");
    std::istringstream numbers(left("session"));
    pid_t process = 0;
    pid_t session = -1;
    numbers >> process >> session;
    EXPECT_EQ(process, session);
    EXPECT_NE(session, getsid(0));
}

TEST_F(DefaultBrowser, ReadsFromNowhereAndHasNoDescriptorsOfTheProgram) {
    ASSERT_EQ(mkfifo((path() / "gate").c_str(), 0600), 0);
    script(R"(echo $$ >"$out/new" && mv "$out/new" "$out/process" && read -r line <"$out/gate")");
    const fs::path secret = path() / "secret";
    const Descriptor inherited(open(secret.c_str(), O_WRONLY | O_CREAT, 0600));
    browser->open("http://example.org/");
    const fs::path files = fs::path("/proc") / std::to_string(std::stoi(left("process"))) / "fd";
    EXPECT_EQ(fs::read_symlink(files / "0"), "/dev/null");
    EXPECT_EQ(fs::read_symlink(files / "1"), "/dev/null");
    EXPECT_FALSE(fs::exists(files / std::to_string(inherited.get())));
    std::ofstream(path() / "gate") << "go\n";
}

TEST_F(DefaultBrowser, HasNoSignalBlockedOrIgnored) {
    // No shell: it would begin by letting all signals through.
    std::ofstream(path() / "xdg-open") << "#!/bin/cp /proc/self/status\n";
    fs::permissions(path() / "xdg-open", fs::perms::owner_all);
    const fs::path copies = path() / "copies";
    fs::create_directory(copies);
    sigset_t some;
    sigset_t before;
    sigemptyset(&some);
    sigaddset(&some, SIGUSR1);
    sigprocmask(SIG_BLOCK, &some, &before);
    const auto handler = std::signal(SIGPIPE, SIG_IGN);
    browser->open(copies.string());
    std::signal(SIGPIPE, handler);
    sigprocmask(SIG_SETMASK, &before, nullptr);
    (void)left("copies/xdg-open");
    std::ifstream table(copies / "status");
    std::uint64_t blocked = ~0ULL;
    std::uint64_t ignored = ~0ULL;
    for (std::string name; table >> name;) {
        if (name == "SigBlk:") table >> std::hex >> blocked;
        if (name == "SigIgn:") table >> std::hex >> ignored;
    }
    // Those of real time are the C library's to use.
    constexpr std::uint64_t standard = 0x7FFFFFFF;
    EXPECT_EQ(blocked & standard, 0U);
    EXPECT_EQ(ignored & standard, 0U);
}

TEST_F(DefaultBrowser, FailsWithoutAnOpener) {
    const Variable nowhere("PATH", path().string());
    EXPECT_THROW(browser->open("http://example.org/"), Failure);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(DefaultBrowser, FailsWithAnOpenerThatCannotRun) {
    std::ofstream(path() / "xdg-open") << "touch '" << path().string() << "/ran'\n";
    fs::permissions(path() / "xdg-open", fs::perms::owner_all);
    const Variable alone("PATH", path().string());
    EXPECT_THROW(browser->open("http://example.org/"), Failure);
    EXPECT_FALSE(has("ran"));
}

}  // namespace
