#include "stores/SettingsStore.h"

#include "platform/linux/Descriptor.h"
#include "tests/stores/StoreFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <functional>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace {

/// A file that several processes use.
class SharedFile : public AnyFolder {
protected:
    void TearDown() override { EXPECT_THAT(reported, testing::IsEmpty()); }

    /// Runs the body in a process that is killed at its end.
    static void killAfter(const std::function<void()>& body) {
        const pid_t child = fork();
        if (child == 0) {
            body();
            (void)raise(SIGKILL);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
    }
};

TEST_P(SharedFile, LosesNothingToAKill) {
    for (int round = 0; round < 5; ++round) {
        killAfter([&] {
            SettingsStore store = open();
            for (int count = 0; count <= 20; ++count) {
                say(store, "bob@example.com", std::to_string(count));
                say(store, std::to_string(round), "hello");
            }
            store.WriteSetting("Options", "callby", std::to_string(round));
        });
        EXPECT_EQ(Database(path).get("bob@example.com", "Cobwaeve", "lastthingusersaid"), "20");
    }
    SettingsStore store = open();
    EXPECT_EQ(saidBy(store, "bob@example.com"), "20");
    EXPECT_EQ(saidBy(store, "0") + saidBy(store, "4"), "hellohello");
    EXPECT_EQ(option(store, "callby"), "4");
}

TEST_P(SharedFile, ShowsTheChangeOfAnotherProcess) {
    other().set("callby", "e");
    age();
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    Descriptor waiting(ends[0]);
    Descriptor go(ends[1]);
    const pid_t child = fork();
    if (child == 0) {
        go.reset();
        char begin = '\0';
        (void)!::read(waiting.get(), &begin, 1);
        other().set("callby", "from " + std::to_string(getpid()));
        _exit(0);
    }
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    go.reset();
    int status = -1;
    waitpid(child, &status, 0);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(option(store, "callby"), "from " + std::to_string(child));
}

INSTANTIATE_TEST_SUITE_P(Folders, SharedFile, anyFolder, folderName);

}  // namespace
