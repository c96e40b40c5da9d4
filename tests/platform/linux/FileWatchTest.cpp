#include "platform/FileWatch.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>

#include <linux/magic.h>
#include <sys/vfs.h>

namespace {

namespace fs = std::filesystem;

class WatchedFile : public testing::Test {
protected:
    void SetUp() override {
        struct statfs facts {};
        ASSERT_EQ(statfs(temporary.path().c_str(), &facts), 0);
        if (facts.f_type == OVERLAYFS_SUPER_MAGIC) {
            GTEST_SKIP() << "of an overlay the kernel does not see every change";
        }
        fs::create_directories(folder);
        write(file);
        watch = watchFile(file, log);
        EXPECT_TRUE(watch->mayHaveChanged()) << "what was before is not known";
        ASSERT_FALSE(watch->mayHaveChanged());
    }

    static void write(const fs::path& path) { std::ofstream(path, std::ios::app) << 'x'; }

    /// That a change has been seen, and the next one will be.
    void expectSeen() {
        EXPECT_TRUE(watch->mayHaveChanged());
        EXPECT_FALSE(watch->mayHaveChanged());
        write(file);
        EXPECT_TRUE(watch->mayHaveChanged());
    }

    TemporaryFolder temporary;
    fs::path above = fs::canonical(temporary.path()) / "above";
    fs::path folder = above / "folder";
    fs::path file = folder / "file";
    fs::path log = folder / "log";
    std::unique_ptr<FileWatch> watch;
};

TEST_F(WatchedFile, IsSeenToBeWrittenTo) {
    write(file);
    expectSeen();
}

TEST_F(WatchedFile, IsSeenToBeReplaced) {
    write(folder / "new");
    fs::rename(folder / "new", file);
    expectSeen();
}

TEST_F(WatchedFile, IsSeenToGetAnotherTime) {
    fs::last_write_time(file, fs::last_write_time(file) - std::chrono::hours{1});
    expectSeen();
}

TEST_F(WatchedFile, IsSeenToBeWrittenToUnderAnotherName) {
    fs::create_hard_link(file, above / "other");
    EXPECT_TRUE(watch->mayHaveChanged());
    EXPECT_FALSE(watch->mayHaveChanged());
    write(above / "other");
    expectSeen();
}

TEST_F(WatchedFile, IsSeenToGoAndIsNotWatchedAnyMore) {
    fs::remove(file);
    EXPECT_TRUE(watch->mayHaveChanged());
    EXPECT_TRUE(watch->mayHaveChanged());
}

TEST_F(WatchedFile, HasTheOneBesideItWatchedToo) {
    write(log);
    EXPECT_TRUE(watch->mayHaveChanged());
    EXPECT_FALSE(watch->mayHaveChanged());
    write(log);
    EXPECT_TRUE(watch->mayHaveChanged());
    EXPECT_FALSE(watch->mayHaveChanged());
    fs::remove(log);
    expectSeen();
}

TEST_F(WatchedFile, IsSeenToChangeManyTimes) {
    for (int time = 0; time < 1000; ++time) {
        write(file);
        fs::last_write_time(file, fs::last_write_time(file) - std::chrono::hours{1});
    }
    expectSeen();
}

TEST_F(WatchedFile, IsNoLongerTrustedWhenAFolderOnTheWayMoves) {
    fs::rename(above, temporary.path() / "elsewhere");
    EXPECT_TRUE(watch->mayHaveChanged());
    EXPECT_TRUE(watch->mayHaveChanged());
    // Another folder has the name then.
    fs::create_directories(folder);
    write(file);
    EXPECT_TRUE(watch->mayHaveChanged());
}

TEST_F(WatchedFile, IsSeenToBeExchangedWithTheFoldersOnTheWay) {
    fs::rename(above, temporary.path() / "elsewhere");
    fs::create_directories(folder);
    write(file);
    expectSeen();
}

TEST_F(WatchedFile, IsNotTrustedWhereItIsNotThere) {
    const std::unique_ptr<FileWatch> other = watchFile(folder / "missing", log);
    EXPECT_TRUE(other->mayHaveChanged());
    EXPECT_TRUE(other->mayHaveChanged());
}

}  // namespace
