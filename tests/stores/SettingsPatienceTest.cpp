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

TEST_F(Patience, EndsSoonAndIsNotTriedAtEachUse) {
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

TEST_F(Patience, IsThereAtTheEndOfTheProgramToo) {
    lock();
    {
        SettingsStore store = open();
        store.WriteSetting("Options", "callby", "fn");
        Waiting::passed = 0us;
        unlockAfter(100ms);
    }
    EXPECT_EQ(program->get("callby"), "fn");
}

TEST_F(Patience, OutlastsAShortLockWhichIsNotToldOf) {
    SettingsStore store = open();
    lock();
    unlockAfter(100ms);
    store.WriteSetting("Options", "callby", "fn");
    EXPECT_EQ(program->get("callby"), "fn");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Patience, IsThereForAReadToo) {
    SettingsStore store = open();
    lock();
    program->set("callby", "fn");
    // As the disk has it once the other program has begun to write.
    age();
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now());
    unlockAfter(100ms);
    EXPECT_EQ(option(store, "callby"), "fn");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Patience, IsThereAtTheStartToo) {
    lock();
    unlockAfter(100ms);
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Patience, ComesBackAfterALongLock) {
    SettingsStore store = open();
    lock();
    store.WriteSetting("Options", "callby", "fn");
    unlock();
    EXPECT_EQ(option(store, "callby"), "fn");
    Waiting::passed = 0us;
    lock();
    unlockAfter(100ms);
    store.WriteSetting("Options", "callby", "e");
    EXPECT_EQ(program->get("callby"), "e");
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(Patience, ComesBackAfterALongLockThatOnlyReadsHaveSeen) {
    SettingsStore store = open();
    lock();
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now());
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_THAT(told, tellsOfTheLockOnce());
    unlock();
    EXPECT_EQ(option(store, "callby"), "e");
    Waiting::passed = 0us;
    lock();
    unlockAfter(100ms);
    store.WriteSetting("Options", "callby", "fn");
    EXPECT_EQ(program->get("callby"), "fn");
    EXPECT_EQ(told.size(), 1U);
}

}  // namespace
