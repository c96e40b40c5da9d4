#include "stores/SettingsStore.h"

#include "tests/stores/LockedFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using Patience = LockedFile;

TEST_P(Patience, EndsSoonAndIsNotTriedAtEachUse) {
    SettingsStore store = open();
    lock();
    store.WriteSetting("Options", "callby", "fn");
    EXPECT_GE(Waiting::passed, 100ms);
    EXPECT_LE(Waiting::passed, 500ms);
    Waiting::passed = 0us;
    store.WriteSetting("Options", "callby", "e");
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_EQ(Waiting::passed, 0us);
    unlock();
}

TEST_P(Patience, IsThereAtTheEndOfTheProgramToo) {
    lock();
    {
        SettingsStore store = open();
        store.WriteSetting("Options", "callby", "fn");
        Waiting::passed = 0us;
        unlockAfter(100ms);
    }
    EXPECT_EQ(program->get("callby"), "fn");
}

TEST_P(Patience, OutlastsAShortLockWhichIsNotReported) {
    SettingsStore store = open();
    lock();
    unlockAfter(100ms);
    store.WriteSetting("Options", "callby", "fn");
    EXPECT_EQ(program->get("callby"), "fn");
    EXPECT_THAT(reported, IsEmpty());
}

TEST_P(Patience, IsThereForAReadToo) {
    SettingsStore store = open();
    lock();
    program->set("callby", "fn");
    // As the disk has it once the other program has begun to write.
    age();
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now());
    unlockAfter(100ms);
    if (keepsFromReading()) {
        EXPECT_EQ(option(store, "callby"), "fn");
    } else {
        EXPECT_EQ(option(store, "callby"), "e");
        EXPECT_EQ(Waiting::passed, 0us);
        unlock();
        EXPECT_EQ(option(store, "callby"), "fn");
    }
    EXPECT_THAT(reported, IsEmpty());
}

TEST_P(Patience, IsThereAtTheStartToo) {
    lock();
    unlockAfter(100ms);
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_THAT(reported, IsEmpty());
}

TEST_P(Patience, ComesBackAfterALongLock) {
    SettingsStore store = open();
    lock();
    store.WriteSetting("Options", "callby", "fn");
    unlock();
    EXPECT_EQ(option(store, "callby"), "fn");
    Waiting::passed = 0us;
    Waiting::now += LockPatience::window;
    lock();
    unlockAfter(100ms);
    store.WriteSetting("Options", "callby", "e");
    EXPECT_EQ(program->get("callby"), "e");
    EXPECT_EQ(reported.size(), 1U);
}

TEST_P(Patience, ComesBackAfterALongLockThatOnlyReadsHaveSeen) {
    SettingsStore store = open();
    lock();
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now());
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_EQ(reported.size(), keepsFromReading() ? 1U : 0U);
    const std::size_t tellings = reported.size();
    unlock();
    EXPECT_EQ(option(store, "callby"), "e");
    Waiting::passed = 0us;
    Waiting::now += LockPatience::window;
    lock();
    unlockAfter(100ms);
    store.WriteSetting("Options", "callby", "fn");
    EXPECT_EQ(program->get("callby"), "fn");
    EXPECT_EQ(reported.size(), tellings);
}

TEST_P(Patience, IsOneWaitInAllWhenALockComesAndGoes) {
    SettingsStore store = open();
    for (int round = 0; round < 9; ++round) {
        lock();
        store.WriteSetting("Options", "callby", std::to_string(round));
        unlock();
        EXPECT_EQ(option(store, "callby"), std::to_string(round));
        EXPECT_EQ(program->get("callby"), std::to_string(round));
        Waiting::now += 1s;
    }
    EXPECT_EQ(Waiting::passed, LockPatience::most);
    Waiting::now += 1s;
    lock();
    store.WriteSetting("Options", "callby", "fn");
    unlock();
    EXPECT_EQ(Waiting::passed, 2 * LockPatience::most);
}

TEST_P(Patience, IsUsedUpByShortLocksToo) {
    SettingsStore store = open();
    for (int round = 0; round < 9; ++round) {
        lock();
        unlockAfter(std::chrono::duration_cast<std::chrono::milliseconds>(Waiting::passed) + 100ms);
        store.WriteSetting("Options", "callby", std::to_string(round));
        if (round >= 2) unlock();
    }
    EXPECT_EQ(Waiting::passed, LockPatience::most);
}

INSTANTIATE_TEST_SUITE_P(Folders, Patience, anyFolder, folderName);

}  // namespace
