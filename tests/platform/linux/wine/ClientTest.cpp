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

    /// Makes the prefix in use one that has the client in this folder.
    void install(const std::string& folder) const {
        const auto place = path() / "drive_c" / folder / "MSN Messenger";
        fs::create_directories(place);
        std::ofstream(place / "msnmsgr.exe").close();
        std::ofstream(path() / "system.reg").close();
    }

    Variable prefix{"WINEPREFIX", path().string()};
    std::unique_ptr<Client> client = makeClient();
};

TEST_F(WineClient, IsStartedAtItsPlace) {
    install("Program Files");
    script(R"(printf '%s|' "$#" "$@" >"$out/new" && mv "$out/new" "$out/arguments")");
    client->start();
    EXPECT_EQ(left("arguments"), R"(1|C:\Program Files\MSN Messenger\msnmsgr.exe|)");
}

TEST_F(WineClient, IsStartedFromTheFolderForProgramsOf32Bits) {
    install("Program Files (x86)");
    script(R"(printf '%s' "$1" >"$out/new" && mv "$out/new" "$out/place")");
    client->start();
    EXPECT_EQ(left("place"), R"(C:\Program Files (x86)\MSN Messenger\msnmsgr.exe)");
}

TEST_F(WineClient, IsNotLookedForByWineWhereThereIsNoPrefix) {
    install("Program Files");
    fs::remove(path() / "system.reg");
    script(R"(touch "$out/started")");
    client->start();
    fs::remove_all(path() / "drive_c");
    std::ofstream(path() / "system.reg").close();
    client->start();
    // What is started is started before the call returns, and so would have run before this.
    install("Program Files");
    script(R"(touch "$out/started-now")");
    client->start();
    (void)left("started-now");
    EXPECT_FALSE(has("started"));
}

TEST_F(WineClient, IsStartedInThePrefixInUse) {
    install("Program Files");
    script(R"(printf '%s' "$WINEPREFIX" >"$out/new" && mv "$out/new" "$out/prefix")");
    client->start();
    EXPECT_EQ(left("prefix"), path());
}

TEST_F(WineClient, IsNotWaitedForAndLeavesNothingToReap) {
    install("Program Files");
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
    install("Program Files");
    const Variable nowhere("PATH", path().string());
    testing::internal::CaptureStderr();
    EXPECT_NO_THROW(client->start());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

}  // namespace
