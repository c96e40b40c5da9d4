#include "tests/stores/LockedFile.h"
#include "tests/support/FakeWinsock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t most = SettingsStore::mostLastWords;

class LastWordsStore : public AnyFolder {
protected:
    void TearDown() override { EXPECT_THAT(reported, IsEmpty()); }

    static void say(SettingsStore& store, std::size_t contact, std::string_view text) {
        store.WriteSetting(SettingsStore::lastWords, std::to_string(contact), text);
    }
    [[nodiscard]] static std::string saidBy(SettingsStore& store, std::size_t contact) {
        return store.ReadSetting(SettingsStore::lastWords, std::to_string(contact));
    }
    /// As many contacts as there may be have said "old", the one of number 0 first.
    void fill() const {
        const Database database = other();
        database.makeTable();
        database.run("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n LIMIT " +
                     std::to_string(most) +
                     ") INSERT INTO settings SELECT 'Cobwaeve', 'lastthingusersaid', i, 'old' "
                     "FROM n");
    }
    [[nodiscard]] std::string countInFile() const {
        return StoreFolder::other()
            .query(
                "SELECT count(*) FROM settings WHERE section = "
                "'lastthingusersaid'")
            .value_or("");
    }
};

TEST_P(LastWordsStore, OfTheContactWhoSpokeLongestAgoGoWhenThereAreTooMany) {
    fill();
    {
        SettingsStore store = open();
        EXPECT_EQ(saidBy(store, 0), "old");
        say(store, 0, "new");
        say(store, most, "new");
        EXPECT_EQ(saidBy(store, 1), "");
        EXPECT_EQ(saidBy(store, 0), "new");
        EXPECT_EQ(saidBy(store, 2), "old");
        EXPECT_EQ(countInFile(), std::to_string(most));
    }
    SettingsStore next = open();
    EXPECT_EQ(saidBy(next, 1), "");
    EXPECT_EQ(saidBy(next, 0), "new");
    say(next, most + 1, "new");
    EXPECT_EQ(saidBy(next, 2), "");
    EXPECT_EQ(saidBy(next, 3), "old");
    EXPECT_EQ(countInFile(), std::to_string(most));
}

TEST_P(LastWordsStore, ThatAreTooManyInTheFileGoAtTheStart) {
    fill();
    other().set("another@example.com", "newest", "Cobwaeve", "lastthingusersaid");
    SettingsStore store = open();
    EXPECT_EQ(saidBy(store, 0), "");
    EXPECT_EQ(saidBy(store, 1), "old");
    EXPECT_EQ(store.ReadSetting(SettingsStore::lastWords, "another@example.com"), "newest");
    EXPECT_EQ(countInFile(), std::to_string(most));
}

TEST_P(LastWordsStore, GoWhenTheyAreTooLongTogether) {
    const std::string text(1'000'000, 'x');
    const std::size_t fitting = SettingsStore::mostBytesOfLastWords / (text.size() + 3);
    {
        SettingsStore store = open();
        for (std::size_t contact = 100; contact < 100 + fitting; ++contact)
            say(store, contact, text);
        EXPECT_EQ(saidBy(store, 100), text);
        say(store, 100 + fitting, text);
        EXPECT_EQ(saidBy(store, 100), "");
        EXPECT_EQ(saidBy(store, 101), text);
    }
    SettingsStore next = open();
    EXPECT_EQ(saidBy(next, 100), "");
    EXPECT_EQ(saidBy(next, 101), text);
    EXPECT_EQ(countInFile(), std::to_string(fitting));
}

TEST_P(LastWordsStore, TakeNothingElseAway) {
    fill();
    SettingsStore store = open();
    store.WriteSetting("Options", "callby", "fn");
    for (std::size_t contact = most; contact < most + 100; ++contact)
        say(store, contact, "new");
    EXPECT_EQ(option(store, "callby"), "fn");
    EXPECT_EQ(other().get("callby"), "fn");
}

TEST_P(LastWordsStore, AreBoundedInMemoryWhereThereIsNoFile) {
    path = folder / "settings.db";
    std::filesystem::create_directories(path);
    SettingsStore store = open();
    for (std::size_t contact = 0; contact <= most; ++contact)
        say(store, contact, "new");
    EXPECT_EQ(saidBy(store, 0), "");
    EXPECT_EQ(saidBy(store, 1), "new");
    EXPECT_EQ(reported.size(), 1U);
    reported.clear();
}

// What goes does not depend on how the file is written, and the bounds are large.
INSTANTIATE_TEST_SUITE_P(Folders, LastWordsStore, testing::Values(Logs::Left), folderName);

/// A store that does its work between the events of a loop.
class MaintainedStore : public LockedFile {
protected:
    FakeLoop loop;

    FakeTimer& afterEvent() { return *loop.timers.at(0); }
    FakeTimer& maintenance() { return *loop.timers.at(1); }
    [[nodiscard]] std::optional<std::string> inFile() const {
        return StoreFolder::other().get("bob@example.com", "Cobwaeve", "lastthingusersaid");
    }
    static void say(SettingsStore& store, std::string_view text) {
        store.WriteSetting(SettingsStore::lastWords, "bob@example.com", text);
    }
    [[nodiscard]] static std::string said(SettingsStore& store) {
        return store.ReadSetting(SettingsStore::lastWords, "bob@example.com");
    }
};

TEST_P(MaintainedStore, WritesLastWordsAfterTheEventThatTheyCameWith) {
    SettingsStore store = open();
    store.maintain(loop);
    EXPECT_FALSE(afterEvent().enabled);
    say(store, "hello");
    EXPECT_EQ(said(store), "hello");
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_EQ(inFile(), std::nullopt);
    EXPECT_LE(afterEvent().interval, std::chrono::milliseconds{1});
    afterEvent().pass();
    EXPECT_EQ(inFile(), "hello");
    EXPECT_FALSE(afterEvent().enabled);
}

TEST_P(MaintainedStore, WritesOptionsAtOnce) {
    SettingsStore store = open();
    store.maintain(loop);
    say(store, "hello");
    store.WriteSetting("Options", "callby", "fn");
    EXPECT_EQ(program->get("callby"), "fn");
    EXPECT_EQ(inFile(), "hello");
}

TEST_P(MaintainedStore, WritesLastWordsAtTheEnd) {
    {
        SettingsStore store = open();
        store.maintain(loop);
        say(store, "hello");
    }
    EXPECT_EQ(inFile(), "hello");
}

TEST_P(MaintainedStore, SavesWithinASecondAfterALock) {
    SettingsStore store = open();
    store.maintain(loop);
    lock();
    store.WriteSetting("Options", "callby", "fn");
    say(store, "hello");
    afterEvent().pass();
    EXPECT_TRUE(maintenance().enabled);
    EXPECT_LT(maintenance().interval, std::chrono::seconds{1});
    maintenance().pass();
    unlock();
    EXPECT_EQ(program->get("callby"), "e");
    maintenance().pass();
    EXPECT_EQ(program->get("callby"), "fn");
    EXPECT_EQ(inFile(), "hello");
    EXPECT_EQ(reported.size(), 1U);
}

TEST_P(MaintainedStore, ReadsWithinASecondAfterALock) {
    lock();
    SettingsStore store = open();
    store.maintain(loop);
    EXPECT_EQ(option(store, "callby"), GetParam() == Logs::Left ? "e" : "");
    unlock();
    maintenance().pass();
    EXPECT_EQ(option(store, "callby"), "e");
}

TEST_P(MaintainedStore, BringsTheLogToTheDiskAfterSomeSecondsAndRestsThen) {
    SettingsStore store = open();
    store.maintain(loop);
    EXPECT_FALSE(maintenance().enabled);
    say(store, "hello");
    afterEvent().pass();
    EXPECT_EQ(maintenance().enabled, hasLogs());
    if (!hasLogs()) return;
    FileRules::syncs = 0;
    std::chrono::milliseconds passed{0};
    while (maintenance().enabled && passed < std::chrono::seconds{10}) {
        maintenance().pass();
        passed += maintenance().interval;
    }
    EXPECT_GE(passed, std::chrono::seconds{2});
    EXPECT_LT(passed, std::chrono::seconds{10});
    EXPECT_EQ(FileRules::syncs, 2);
    EXPECT_EQ(std::filesystem::file_size(beside("-wal")), 0U);
    say(store, "hello again");
    afterEvent().pass();
    EXPECT_TRUE(maintenance().enabled);
}

INSTANTIATE_TEST_SUITE_P(Folders, MaintainedStore, anyFolder, folderName);

}  // namespace
