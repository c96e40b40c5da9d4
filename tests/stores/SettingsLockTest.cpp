#include "stores/SettingsStore.h"

#include "tests/stores/LockedFile.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST_P(LockedFile, IsDoneWithoutAndReportedOnce) {
    SettingsStore store = open();
    lock();
    store.WriteSetting("Options", "callby", "fn");
    store.WriteSetting("Options", "timestamp", "True");
    EXPECT_EQ(option(store, "callby"), "fn");
    EXPECT_EQ(option(store, "timestamp"), "True");
    EXPECT_THAT(reported, namesTheFileOnce());
    unlock();
}

TEST_P(LockedFile, GetsTheChangesAtTheNextRead) {
    SettingsStore store = open();
    lock();
    store.WriteSetting("Options", "callby", "fn");
    store.WriteSetting("Options", "timestamp", "True");
    unlock();
    EXPECT_EQ(program->get("callby"), "e");
    EXPECT_EQ(option(store, "constants"), "");
    EXPECT_EQ(program->get("callby"), "fn");
    EXPECT_EQ(program->get("timestamp"), "True");
}

TEST_P(LockedFile, GetsTheChangesAtTheNextWrite) {
    SettingsStore store = open();
    lock();
    store.WriteSetting("Options", "callby", "fn");
    unlock();
    store.WriteSetting("Options", "timestamp", "True");
    EXPECT_EQ(program->get("callby"), "fn");
    EXPECT_EQ(program->get("timestamp"), "True");
}

TEST_P(LockedFile, GetsTheChangesAtTheEndOfTheProgram) {
    {
        SettingsStore store = open();
        lock();
        store.WriteSetting("Options", "callby", "fn");
        unlock();
    }
    EXPECT_EQ(program->get("callby"), "fn");
}

TEST_P(LockedFile, GetsTheChangesAtTheEndThoughItWasLockedFromTheStart) {
    lock();
    {
        SettingsStore store = open();
        store.WriteSetting("Options", "callby", "fn");
        unlock();
    }
    EXPECT_EQ(program->get("callby"), "fn");
    EXPECT_THAT(reported, namesTheFileOnce());
}

TEST_P(LockedFile, IsReadOnceItIsFreeWhenItWasLockedFromTheStart) {
    lock();
    SettingsStore store = open();
    // Where a log was left it can be read all the time.
    const bool isLocked = GetParam() != Logs::Left;
    EXPECT_EQ(option(store, "callby"), isLocked ? "" : "e");
    unlock();
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_EQ(reported.size(), isLocked ? 1U : 0U);
}

TEST_P(LockedFile, KeepsWhatOthersWroteUnlessWeChangedItToo) {
    SettingsStore store = open();
    program->run("BEGIN EXCLUSIVE");
    program->set("callby", "theirs");
    program->set("timestamp", "theirs");
    store.WriteSetting("Options", "callby", "ours");
    unlock();
    EXPECT_EQ(option(store, "callby"), "ours");
    EXPECT_EQ(option(store, "timestamp"), "theirs");
    EXPECT_EQ(program->get("callby"), "ours");
    EXPECT_EQ(program->get("timestamp"), "theirs");
}

TEST_P(LockedFile, IsReportedAgainWhenItWasFreeInBetween) {
    SettingsStore store = open();
    for (int round = 1; round <= 3; ++round) {
        lock();
        store.WriteSetting("Options", "callby", std::to_string(round));
        EXPECT_EQ(reported.size(), static_cast<std::size_t>(round));
        unlock();
        EXPECT_EQ(option(store, "constants"), "");
    }
}

TEST_P(LockedFile, IsReportedOnceWhenItMayBeReadAllTheTime) {
    program->run("BEGIN IMMEDIATE");
    SettingsStore store = open();
    store.WriteSetting("Options", "callby", "fn");
    for (int count = 0; count < 5; ++count) {
        EXPECT_EQ(option(store, "callby"), "fn");
        store.WriteSetting("Options", "timestamp", std::to_string(count));
    }
    EXPECT_THAT(reported, namesTheFileOnce());
    unlock();
    EXPECT_EQ(option(store, "callby"), "fn");
    EXPECT_EQ(program->get("callby"), "fn");
}

TEST_P(LockedFile, TakesTheChangeWhenALongReaderHasGone) {
    SettingsStore store = open();
    program->run("BEGIN");
    EXPECT_EQ(program->get("callby"), "e");
    store.WriteSetting("Options", "callby", "fn");
    EXPECT_EQ(reported.size(), hasLogs() ? 0U : 1U);
    EXPECT_EQ(program->get("callby"), "e");
    unlock();
    EXPECT_EQ(option(store, "callby"), "fn");
    EXPECT_EQ(program->get("callby"), "fn");
}

TEST_P(LockedFile, ShowsAChangeThatTookLongToBecomeWhole) {
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    // The pages are in the file already, the end of the change comes much later and leaves the
    // time of the file as it is.
    lock();
    program->run("PRAGMA cache_size = 1");
    for (int number = 0; number < 50; ++number)
        program->set(std::to_string(number), std::string(3000, 'x'));
    program->set("callby", "fn");
    (void)option(store, "callby");
    age();
    const auto time = std::filesystem::last_write_time(path);
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_EQ(option(store, "callby"), "e");
    unlock();
    std::filesystem::last_write_time(path, time);
    EXPECT_EQ(option(store, "callby"), "fn");
}

INSTANTIATE_TEST_SUITE_P(Folders, LockedFile, anyFolder, folderName);

}  // namespace
