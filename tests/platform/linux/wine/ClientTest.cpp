#include "platform/Client.h"
#include "tests/support/linux/ProgramFolder.h"

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

class WineClient : public testing::Test, protected ProgramFolder {
protected:
    WineClient() : ProgramFolder("wine") {}

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
    EXPECT_FALSE(fs::exists(path() / "ended"));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    std::ofstream(path() / "go") << '\n';
    (void)left("ended");
}

TEST_F(WineClient, IsPassedOverWithoutAWordWhereThereIsNoWine) {
    const Variable nowhere("PATH", path().string());
    testing::internal::CaptureStderr();
    EXPECT_NO_THROW(client->start());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

}  // namespace
