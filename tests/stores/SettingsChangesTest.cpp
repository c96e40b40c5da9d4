#include "stores/SettingsStore.h"

#include "tests/stores/StoreFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

using testing::IsEmpty;

/// A file that has long been the same, and a store that has read it.
class ChangedByOthers : public AnyFolder {
protected:
    ChangedByOthers() {
        other().set("callby", "e");
        age();
    }
    void TearDown() override { EXPECT_THAT(reported, IsEmpty()); }

    /// Another file of settings, to be put in the place of the first.
    [[nodiscard]] std::filesystem::path anotherFile(const std::string& value) const {
        const std::filesystem::path file = folder / "another.db";
        Database(file).set("callby", value);
        return file;
    }
};

TEST_P(ChangedByOthers, IsSeenByTheNextRead) {
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_EQ(option(store, "callby"), "e");
    other().set("callby", "fn");
    EXPECT_EQ(option(store, "callby"), "fn");
}

TEST_P(ChangedByOthers, IsSeenByTheNextReadThoughTheFileHasRested) {
    SettingsStore store = open();
    for (int round = 0; round < 3; ++round) {
        const std::string before = option(store, "callby");
        age();
        std::error_code none;
        std::filesystem::last_write_time(beside("-wal"), std::filesystem::last_write_time(path),
                                         none);
        for (int read = 0; read < 9; ++read)
            EXPECT_EQ(option(store, "callby"), before);
        other().set("callby", "rested " + std::to_string(round));
        EXPECT_EQ(option(store, "callby"), "rested " + std::to_string(round));
    }
}

TEST_P(ChangedByOthers, IsSeenByTheEventBehindTheOneThatHasLooked) {
    SettingsStore store = open();
    for (int round = 0; round < 3; ++round) {
        const std::string value = std::to_string(round);
        const SettingsStore::OneLook event(store);
        other().set("callby", value);
        EXPECT_EQ(option(store, "callby"), value);
        other().set("callby", "half way");
        EXPECT_EQ(option(store, "callby"), value);
    }
    EXPECT_EQ(option(store, "callby"), "half way");
}

TEST_P(ChangedByOthers, IsSeenByAnEventWithinAnother) {
    SettingsStore store = open();
    const SettingsStore::OneLook outer(store);
    EXPECT_EQ(option(store, "callby"), "e");
    other().set("callby", "fn");
    {
        const SettingsStore::OneLook inner(store);
        EXPECT_EQ(option(store, "callby"), "fn");
    }
    other().set("callby", "later");
    EXPECT_EQ(option(store, "callby"), "fn");
}

TEST_P(ChangedByOthers, IsKeptBesideAWriteOfTheEventThatHasLooked) {
    SettingsStore store = open();
    const SettingsStore::OneLook event(store);
    EXPECT_EQ(option(store, "callby"), "e");
    other().set("callby", "fn");
    store.WriteSetting("Options", "timestamp", "True");
    EXPECT_EQ(option(store, "timestamp"), "True");
    EXPECT_EQ(other().get("timestamp"), "True");
    EXPECT_EQ(other().get("callby"), "fn");
}

TEST_P(ChangedByOthers, IsSeenDirectlyAfterAnotherChange) {
    SettingsStore store = open();
    const Database database = other();
    for (int round = 0; round < 20; ++round) {
        const std::string value = std::to_string(round);
        database.set("callby", value);
        EXPECT_EQ(option(store, "callby"), value);
    }
}

TEST_P(ChangedByOthers, IsSeenDirectlyAfterAWriteOfOurs) {
    SettingsStore store = open();
    const Database database = other();
    for (int round = 0; round < 20; ++round) {
        const std::string value = std::to_string(round);
        store.WriteSetting("Options", "callby", "ours " + value);
        EXPECT_EQ(option(store, "callby"), "ours " + value);
        database.set("callby", value);
        EXPECT_EQ(option(store, "callby"), value);
    }
}

TEST_P(ChangedByOthers, IsNotOverwrittenByAWriteOfAnotherKey) {
    SettingsStore store = open();
    other().set("callby", "fn");
    store.WriteSetting("Options", "timestamp", "True");
    EXPECT_EQ(other().get("callby"), "fn");
    EXPECT_EQ(other().get("timestamp"), "True");
    EXPECT_EQ(option(store, "callby"), "fn");
}

TEST_P(ChangedByOthers, IsUndoneByAWriteOfTheValueThatWeHadBefore) {
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    other().set("callby", "fn");
    store.WriteSetting("Options", "callby", "e");
    EXPECT_EQ(other().get("callby"), "e");
}

TEST_P(ChangedByOthers, IsSeenWhenAKeyIsGone) {
    SettingsStore store = open();
    other().run("DELETE FROM settings");
    EXPECT_EQ(option(store, "callby"), "");
}

TEST_P(ChangedByOthers, IsSeenWhenAFileTookItsPlace) {
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    std::filesystem::rename(anotherFile("fn"), path);
    EXPECT_EQ(option(store, "callby"), "fn");
    other().set("callby", "again");
    EXPECT_EQ(option(store, "callby"), "again");
}

TEST_P(ChangedByOthers, IsSeenWhenALinkLeadsToAnotherFile) {
    const std::filesystem::path another = anotherFile("fn");
    // Whoever moves a file leaves its log behind.
    StoreFolder::other().run("PRAGMA wal_checkpoint(TRUNCATE)");
    std::filesystem::rename(path, folder / "real.db");
    std::filesystem::create_symlink("real.db", path);
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    std::filesystem::create_symlink(another, folder / "new-link");
    std::filesystem::rename(folder / "new-link", path);
    EXPECT_EQ(option(store, "callby"), "fn");
}

TEST_P(ChangedByOthers, IsSeenWhenALinkToAnotherFolderTookThePlaceOfTheFolder) {
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    const std::filesystem::path elsewhere = temporary.path() / "elsewhere";
    std::filesystem::create_directory(elsewhere);
    Database(elsewhere / "settings.db").set("callby", "fn");
    std::filesystem::rename(folder, temporary.path() / "aside");
    std::filesystem::create_directory_symlink(elsewhere, folder);
    EXPECT_EQ(option(store, "callby"), "fn");
}

TEST_P(ChangedByOthers, IsSeenWhenALinkTookThePlaceOfTheFile) {
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    (void)anotherFile("fn");
    std::filesystem::create_symlink("another.db", folder / "new-link");
    std::filesystem::rename(folder / "new-link", path);
    EXPECT_EQ(option(store, "callby"), "fn");
}

TEST_P(ChangedByOthers, IsSeenWhenAnOldFileTookItsPlace) {
    const std::filesystem::path old = anotherFile("fn");
    const auto now = std::filesystem::file_time_type::clock::now();
    std::filesystem::last_write_time(old, now - std::chrono::hours{100});
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    std::filesystem::rename(old, path);
    EXPECT_EQ(option(store, "callby"), "fn");
}

TEST_P(ChangedByOthers, IsWrittenIntoTheFileThatTookItsPlace) {
    SettingsStore store = open();
    std::filesystem::rename(anotherFile("fn"), path);
    store.WriteSetting("Options", "timestamp", "True");
    EXPECT_EQ(other().get("timestamp"), "True");
    EXPECT_EQ(other().get("callby"), "fn");
}

TEST_P(ChangedByOthers, ReadsAsEmptyWhenTheFileIsGone) {
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    std::filesystem::remove(path);
    EXPECT_EQ(option(store, "callby"), "");
}

TEST_P(ChangedByOthers, BeginsANewFileWhenTheOldOneIsGone) {
    SettingsStore store = open();
    std::filesystem::remove(path);
    store.WriteSetting("Options", "timestamp", "True");
    EXPECT_EQ(other().get("timestamp"), "True");
    EXPECT_EQ(other().get("callby"), std::nullopt);
}

TEST_P(ChangedByOthers, BeginsANewFileWhenTheWholeFolderIsGone) {
    SettingsStore store = open();
    std::filesystem::remove_all(folder);
    EXPECT_EQ(option(store, "callby"), "");
    store.WriteSetting("Options", "callby", "e");
    EXPECT_EQ(other().get("callby"), "e");
}

TEST_P(ChangedByOthers, ReadsAsEmptyWhenTheFileWasEmptied) {
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    std::filesystem::resize_file(path, 0);
    EXPECT_EQ(option(store, "callby"), "");
    store.WriteSetting("Options", "timestamp", "True");
    EXPECT_EQ(other().get("timestamp"), "True");
}

TEST_P(ChangedByOthers, GoesOnWhenTheTableIsGone) {
    SettingsStore store = open();
    other().run("DROP TABLE settings");
    EXPECT_EQ(option(store, "callby"), "");
    store.WriteSetting("Options", "callby", "fn");
    EXPECT_EQ(other().get("callby"), "fn");
}

TEST_P(ChangedByOthers, IsSeenInAWriteAheadLogToo) {
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    const Database database = other();
    database.run("PRAGMA journal_mode = WAL");
    age();
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_EQ(option(store, "callby"), "e");
    // Such a change does not touch the file itself.
    for (const char* const value : {"one", "two", "three"}) {
        database.set("callby", value);
        EXPECT_EQ(option(store, "callby"), value);
    }
    store.WriteSetting("Options", "callby", "ours");
    EXPECT_EQ(database.get("callby"), "ours");
}

INSTANTIATE_TEST_SUITE_P(Folders, ChangedByOthers, anyFolder, folderName);

}  // namespace
