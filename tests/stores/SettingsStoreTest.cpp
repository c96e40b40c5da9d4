#include "stores/SettingsStore.h"

#include "base/codePage.h"
#include "tests/stores/StoreFolder.h"
#include "tests/support/allBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using testing::IsEmpty;
using namespace std::string_literals;

class SettingsStoreTest : public AnyFolder {
protected:
    void TearDown() override { EXPECT_THAT(reported, IsEmpty()); }
};

TEST_P(SettingsStoreTest, ReadsAKeyThatWasNeverWrittenAsEmpty) {
    SettingsStore store = open();
    EXPECT_EQ(store.ReadSetting("Options", "useristyping"), "");
    EXPECT_EQ(store.ReadSetting("lastthingusersaid", "bob@example.com"), "");
    EXPECT_EQ(store.ReadSetting("", ""), "");
}

TEST_P(SettingsStoreTest, ReadsWhatWasWritten) {
    SettingsStore store = open();
    store.WriteSetting("Options", "useristyping", "True");
    EXPECT_EQ(option(store, "useristyping"), "True");
    store.WriteSetting("Options", "useristyping", "False");
    EXPECT_EQ(option(store, "useristyping"), "False");
    store.WriteSetting("Options", "useristyping", "");
    EXPECT_EQ(option(store, "useristyping"), "");
}

TEST_P(SettingsStoreTest, KeepsSectionsKeysAndCapitalsApart) {
    SettingsStore store = open();
    store.WriteSetting("Options", "key", "one");
    store.WriteSetting("lastthingusersaid", "key", "two");
    store.WriteSetting("Options", "Key", "three");
    store.WriteSetting("Optionsk", "ey", "four");
    EXPECT_EQ(store.ReadSetting("Options", "key"), "one");
    EXPECT_EQ(store.ReadSetting("lastthingusersaid", "key"), "two");
    EXPECT_EQ(store.ReadSetting("Options", "Key"), "three");
    EXPECT_EQ(store.ReadSetting("Optionsk", "ey"), "four");
}

TEST_P(SettingsStoreTest, RemembersBetweenRuns) {
    {
        SettingsStore store = open();
        store.WriteSetting("Options", "callby", "fn");
        store.WriteSetting("Options", "callby", "e");
        store.WriteSetting("lastthingusersaid", "bob@example.com", "SGk=");
    }
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_EQ(store.ReadSetting("lastthingusersaid", "bob@example.com"), "SGk=");
}

TEST_P(SettingsStoreTest, IsReadableByOthersWhenAWriteReturns) {
    SettingsStore store = open();
    store.WriteSetting("Options", "timestamp", "True");
    EXPECT_EQ(other().get("timestamp"), "True");
    store.WriteSetting("Options", "timestamp", "False");
    EXPECT_EQ(other().get("timestamp"), "False");
    EXPECT_EQ(other().query("SELECT count(*) FROM settings"), "1");
}

/// The connection to a file that was opened last anywhere in this process.
sqlite3* lastOpened = nullptr;

int noteOpened(sqlite3* handle, char** /*error*/, const sqlite3_api_routines* /*unused*/) {
    const char* const file = sqlite3_db_filename(handle, "main");
    if (file != nullptr && *file != '\0') lastOpened = handle;
    return SQLITE_OK;
}

TEST_P(SettingsStoreTest, WaitsUntilAWriteIsOnTheDisk) {
    const auto note = reinterpret_cast<void (*)()>(noteOpened);
    ASSERT_EQ(sqlite3_auto_extension(note), SQLITE_OK);
    SettingsStore store = open();
    sqlite3_cancel_auto_extension(note);
    ASSERT_NE(lastOpened, nullptr);
    std::string mode;
    const auto take = [](void* answer, int, char** values, char**) {
        *static_cast<std::string*>(answer) = values[0];
        return 0;
    };
    ASSERT_EQ(sqlite3_exec(lastOpened, "PRAGMA synchronous", take, &mode, nullptr), SQLITE_OK);
    EXPECT_EQ(mode, "2");
    ASSERT_EQ(sqlite3_exec(lastOpened, "PRAGMA journal_mode", take, &mode, nullptr), SQLITE_OK);
    EXPECT_EQ(mode, hasLogs() ? "wal" : "delete");
}

TEST_P(SettingsStoreTest, KeepsEveryByte) {
    {
        SettingsStore store = open();
        store.WriteSetting("Options", "tsprefix", allBytes());
        store.WriteSetting(allBytes(), allBytes(), "\0"s);
        store.WriteSetting("Options", "", "\0\0"s);
    }
    SettingsStore store = open();
    EXPECT_EQ(option(store, "tsprefix"), allBytes());
    EXPECT_EQ(store.ReadSetting(allBytes(), allBytes()), "\0"s);
    EXPECT_EQ(option(store, ""), "\0\0"s);
}

TEST_P(SettingsStoreTest, KeepsKeysApartThatDifferBehindANul) {
    {
        SettingsStore store = open();
        store.WriteSetting("Options", "a\0b"s, "one");
        store.WriteSetting("Options", "a\0c"s, "two");
        store.WriteSetting("Options", "a", "three");
    }
    SettingsStore store = open();
    EXPECT_EQ(option(store, "a\0b"s), "one");
    EXPECT_EQ(option(store, "a\0c"s), "two");
    EXPECT_EQ(option(store, "a"), "three");
}

TEST_P(SettingsStoreTest, KeepsLongValues) {
    std::string value;
    while (value.size() < 100000)
        value += allBytes();
    {
        SettingsStore store = open();
        store.WriteSetting("lastthingusersaid", "bob@example.com", value);
        store.WriteSetting("lastthingusersaid", std::string(100000, 'k'), "long key");
    }
    SettingsStore store = open();
    EXPECT_TRUE(store.ReadSetting("lastthingusersaid", "bob@example.com") == value);
    EXPECT_EQ(store.ReadSetting("lastthingusersaid", std::string(100000, 'k')), "long key");
}

TEST_P(SettingsStoreTest, KeepsManyContacts) {
    constexpr int contacts = 200;
    {
        SettingsStore store = open();
        for (int contact = 0; contact < contacts; ++contact) {
            const std::string number = std::to_string(contact);
            store.WriteSetting("lastthingusersaid", number + "@example.com", "said " + number);
        }
    }
    SettingsStore store = open();
    for (int contact = 0; contact < contacts; ++contact) {
        const std::string number = std::to_string(contact);
        EXPECT_EQ(store.ReadSetting("lastthingusersaid", number + "@example.com"),
                  "said " + number);
    }
}

TEST_P(SettingsStoreTest, HasTextInTheFileThatOtherProgramsCanRead) {
    SettingsStore store = open();
    store.WriteSetting("Options", "windowrenamecaption", "caf\xE9 5\x80");
    EXPECT_EQ(other().get("windowrenamecaption"), "caf\xC3\xA9 5\xE2\x82\xAC");
    EXPECT_EQ(other().query("SELECT typeof(value) FROM settings"), "text");
    store.WriteSetting("Options", "tsprefix", allBytes());
    EXPECT_EQ(other().get("tsprefix"), codePage::toUtf8(allBytes()));
}

TEST_P(SettingsStoreTest, ReadsTheCharactersThatOthersHaveWritten) {
    other().set("windowrenamecaption", "caf\xC3\xA9 5\xE2\x82\xAC?");
    other().set("tsprefix", "\xD0\x96");
    SettingsStore store = open();
    EXPECT_EQ(option(store, "windowrenamecaption"), "caf\xE9 5\x80?");
    // What the code page lacks is UTF-8, as it is where it is typed into a window.
    EXPECT_EQ(option(store, "tsprefix"), "\xD0\x96");
    other().set("windowrenamecaption", "caf\xC3\xA9 \xD0\x96?");
    EXPECT_EQ(option(store, "windowrenamecaption"), "caf\xC3\xA9 \xD0\x96?");
}

TEST_P(SettingsStoreTest, ReadsAFileThatKeepsItsTextAsUtf16) {
    {
        const Database wide = other();
        wide.run("PRAGMA encoding = 'UTF-16le'");
        wide.set("windowrenamecaption", "caf\xC3\xA9");
    }
    SettingsStore store = open();
    EXPECT_EQ(option(store, "windowrenamecaption"), "caf\xE9");
    store.WriteSetting("Options", "callby", "f\xE8");
    EXPECT_EQ(other().query("SELECT CAST(value AS BLOB) FROM settings WHERE key = 'callby'"),
              "f\0\xE8\0"s);
    EXPECT_EQ(option(store, "callby"), "f\xE8");
}

TEST_P(SettingsStoreTest, ReadsWhatIsNoTextAsItsText) {
    const Database database = other();
    database.makeTable();
    database.run("INSERT INTO settings VALUES('Cobwaeve', 'Options', 'blob', x'4142')");
    database.run("INSERT INTO settings VALUES('Cobwaeve', 'Options', 'null', NULL)");
    database.run("INSERT INTO settings VALUES('Cobwaeve', 'Options', 'number', 1)");
    SettingsStore store = open();
    EXPECT_EQ(option(store, "blob"), "AB");
    EXPECT_EQ(option(store, "null"), "");
    EXPECT_EQ(option(store, "number"), "1");
}

TEST_P(SettingsStoreTest, DoesNotMixWithAnotherApplicationInTheFile) {
    other().set("callby", "theirs", "Cobweave");
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "");
    store.WriteSetting("Options", "callby", "ours");
    EXPECT_EQ(other().get("callby", "Cobweave"), "theirs");
    EXPECT_EQ(other().get("callby", "Cobwaeve"), "ours");
    other().set("callby", "theirs again", "Cobweave");
    EXPECT_EQ(option(store, "callby"), "ours");
}

TEST_P(SettingsStoreTest, MakesAPrivateFolder) {
    SettingsStore store = open();
    store.WriteSetting("Options", "callby", "fn");
    EXPECT_EQ(std::filesystem::status(folder).permissions(), std::filesystem::perms::owner_all);
}

TEST_P(SettingsStoreTest, LeavesAFolderThatThereIsAsItIs) {
    const auto open755 = static_cast<std::filesystem::perms>(0755);
    std::filesystem::create_directories(folder);
    std::filesystem::permissions(folder, open755);
    SettingsStore store = open();
    EXPECT_EQ(std::filesystem::status(folder).permissions(), open755);
}

INSTANTIATE_TEST_SUITE_P(Folders, SettingsStoreTest, anyFolder, folderName);

}  // namespace
