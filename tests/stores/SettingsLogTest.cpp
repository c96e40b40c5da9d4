#include "tests/stores/StoreFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

/// How much of SQLite's header says by which version the file may be written: 2 with a log.
constexpr std::size_t writeVersion = 18;

class SettingsLog : public AnyFolder {
protected:
    void TearDown() override { EXPECT_THAT(reported, IsEmpty()); }
};

TEST_P(SettingsLog, IsThereWhileTheStoreIsAndNotAfterwards) {
    {
        SettingsStore store = open();
        store.WriteSetting("Options", "callby", "fn");
        EXPECT_EQ(fs::exists(beside("-wal")), hasLogs());
        EXPECT_EQ(readFile(path)[writeVersion], hasLogs() ? 2 : 1);
    }
    EXPECT_EQ(readFile(path)[writeVersion], 1);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
    EXPECT_EQ(Database(path).get("callby"), "fn");
}

TEST_P(SettingsLog, SparesTheDiskTheSyncsOfLastWords) {
    SettingsStore store = open();
    // The first one begins the log.
    say(store, "bob@example.com", "first");
    FileRules::syncs = 0;
    for (int count = 0; count < 50; ++count)
        say(store, "bob@example.com", std::to_string(count));
    if (hasLogs()) {
        EXPECT_EQ(FileRules::syncs, 0);
    } else {
        EXPECT_GE(FileRules::syncs, 50 * 2);
    }
}

TEST_P(SettingsLog, IsOnTheDiskWhenAnOptionIsSaved) {
    SettingsStore store = open();
    say(store, "bob@example.com", "hello");
    for (int count = 0; count < 5; ++count) {
        FileRules::syncs = 0;
        store.WriteSetting("Options", "callby", std::to_string(count));
        EXPECT_GE(FileRules::syncs, 1);
    }
}

TEST_P(SettingsLog, GoesAlongWithAFileThatIsMovedAway) {
    SettingsStore store = open();
    say(store, "bob@example.com", "hello");
    const fs::path moved = folder / "moved.db";
    fs::rename(path, moved);
    EXPECT_EQ(saidBy(store, "bob@example.com"), "");
    EXPECT_EQ(Database(moved).get("bob@example.com", "Cobwaeve", "lastthingusersaid"), "hello");
}

TEST_P(SettingsLog, IsNotTakenForThatOfAFileThatTakesThePlace) {
    const fs::path another = folder / "another.db";
    fs::create_directories(folder);
    Database(another).set("callby", "theirs");
    SettingsStore store = open();
    for (int count = 0; count < 20; ++count)
        say(store, std::to_string(count), std::string(3000, 'x'));
    fs::rename(another, path);
    EXPECT_EQ(option(store, "callby"), "theirs");
    EXPECT_EQ(saidBy(store, "3"), "");
    EXPECT_EQ(Database(path).query("SELECT count(*) FROM settings"), "1");
    EXPECT_EQ(Database(path).query("PRAGMA integrity_check"), "ok");
}

TEST_P(SettingsLog, DoesNotGrowForEver) {
    SettingsStore store = open();
    for (int count = 0; count < 1500; ++count)
        say(store, "bob@example.com", std::to_string(count) + std::string(3000, 'x'));
    if (hasLogs()) {
        EXPECT_LT(fs::file_size(beside("-wal")), 5'000'000U);
    }
    EXPECT_LT(fs::file_size(path), 100'000U);
}

TEST_P(SettingsLog, IsReadByAnotherProgramAtOnce) {
    SettingsStore store = open();
    const Database program = other();
    for (int count = 0; count < 20; ++count) {
        say(store, "bob@example.com", std::to_string(count));
        EXPECT_EQ(program.get("bob@example.com", "Cobwaeve", "lastthingusersaid"),
                  std::to_string(count));
        program.set("callby", std::to_string(count));
        EXPECT_EQ(option(store, "callby"), std::to_string(count));
    }
}

INSTANTIATE_TEST_SUITE_P(Folders, SettingsLog, anyFolder, folderName);

/// A folder whose file system promises what a log needs, and does not keep the promise.
class BrokenLog : public StoreFolder {
protected:
    void TearDown() override { EXPECT_THAT(reported, IsEmpty()); }

    void expectToWork() {
        {
            SettingsStore store = open();
            EXPECT_EQ(option(store, "constants"), "False");
            store.WriteSetting("Options", "callby", "fn");
            store.WriteSetting(SettingsStore::lastWords, "bob@example.com", "hello");
            EXPECT_EQ(readFile(path)[writeVersion], 1);
            EXPECT_EQ(other().get("callby"), "fn");
        }
        SettingsStore store = open();
        EXPECT_EQ(option(store, "callby"), "fn");
        EXPECT_EQ(store.ReadSetting(SettingsStore::lastWords, "bob@example.com"), "hello");
    }
};

TEST_F(BrokenLog, IsDoneWithout) {
    other().set("constants", "False");
    const FileRules rules(FileRules::Log::Fails);
    expectToWork();
}

TEST_F(BrokenLog, ThatWasLeftElsewhereIsBroughtIntoTheFile) {
    for (const auto log : {FileRules::Log::Fails, FileRules::Log::NotAllowed}) {
        {
            const Database database = other();
            database.leaveLog();
            database.set("constants", "False");
        }
        EXPECT_GT(fs::file_size(beside("-wal")), 0U);
        const FileRules rules(log);
        expectToWork();
        fs::remove_all(folder);
    }
}

}  // namespace
