#include "platform/Client.h"

#include "tests/support/Peer.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

/// A folder for programs that comes first, with a Wine of the test's own.
class WineClient : public testing::Test {
protected:
    void script(const std::string& lines) const {
        const fs::path file = folder.path() / "wine";
        std::ofstream(file) << "#!/bin/sh\nout='" << folder.path().string() << "'\n" << lines;
        fs::permissions(file, fs::perms::owner_all);
    }
    [[nodiscard]] std::string left(const std::string& name) const {
        const fs::path file = folder.path() / name;
        EXPECT_TRUE(becomesTrue([&] { return fs::exists(file); })) << name;
        std::ostringstream text;
        text << std::ifstream(file).rdbuf();
        return text.str();
    }

    TemporaryFolder folder;
    Variable path{"PATH", folder.path().string() + ":" + std::getenv("PATH")};
    std::unique_ptr<Client> client = makeClient();
};

TEST_F(WineClient, IsStartedAtItsOnePlace) {
    script(R"(printf '%s|' "$#" "$@" >"$out/new" && mv "$out/new" "$out/arguments")");
    client->start();
    EXPECT_EQ(left("arguments"), R"(1|C:\Program Files\MSN Messenger\msnmsgr.exe|)");
}

TEST_F(WineClient, IsStartedInThePrefixInUse) {
    const Variable prefix("WINEPREFIX", "/some/where");
    script(R"(printf '%s' "$WINEPREFIX" >"$out/new" && mv "$out/new" "$out/prefix")");
    client->start();
    EXPECT_EQ(left("prefix"), "/some/where");
}

TEST_F(WineClient, IsNotWaitedForAndLeavesNothingToReap) {
    script(R"(touch "$out/started"; while [ ! -e "$out/go" ]; do sleep 0.01; done)"
           "\ntouch \"$out/ended\"\n");
    client->start();
    (void)left("started");
    EXPECT_FALSE(fs::exists(folder.path() / "ended"));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    std::ofstream(folder.path() / "go") << '\n';
    (void)left("ended");
}

TEST_F(WineClient, IsPassedOverWithoutAWordWhereThereIsNoWine) {
    const Variable nowhere("PATH", folder.path().string());
    testing::internal::CaptureStderr();
    EXPECT_NO_THROW(client->start());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

}  // namespace
