#include "stores/SettingsStore.h"

#include "tests/stores/StoreFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr int contacts = 30;
constexpr std::size_t pageSize = 4096;

std::string contact(int number) { return std::to_string(number) + "@example.com"; }

class DamagedFile : public AnyFolder {
protected:
    std::filesystem::path kept = folder / "settings.db.damaged-1";

    /// A file of many pages.
    void makeLargeFile() const {
        {
            const Database database = other();
            database.makeTable();
            database.run("BEGIN");
            for (int number = 0; number < contacts; ++number) {
                database.set(contact(number), std::string(1500, 'x'), "Cobwaeve",
                             "lastthingusersaid");
            }
            database.run("COMMIT");
            database.run("PRAGMA wal_checkpoint(TRUNCATE)");
        }
        ASSERT_GT(std::filesystem::file_size(path), 10 * pageSize);
    }
    /// How many of the contacts the store still knows.
    [[nodiscard]] static int countRead(SettingsStore& store) {
        int count = 0;
        for (int number = 0; number < contacts; ++number) {
            const std::string value = store.ReadSetting("lastthingusersaid", contact(number));
            if (value == std::string(1500, 'x')) ++count;
            EXPECT_TRUE(value.empty() || value.size() == 1500);
        }
        return count;
    }
    /// What could be read is there, what was lost is reported, and the program goes on.
    void expectNoLossInSilence(const std::string& damaged, const std::string& how) {
        SCOPED_TRACE(how);
        write(path, damaged);
        reported.clear();
        {
            SettingsStore store = open();
            EXPECT_TRUE(countRead(store) == contacts || reported.size() == 1);
            if (!reported.empty()) {
                EXPECT_TRUE(readFile(kept) == damaged);
                EXPECT_THAT(reported.front(), HasSubstr(kept.string()));
            }
            store.WriteSetting("Options", "callby", "fn");
            EXPECT_EQ(StoreFolder::other().get("callby"), "fn");
            EXPECT_LE(reported.size(), 1U);
        }
        {
            SettingsStore next = open();
            EXPECT_EQ(option(next, "callby"), "fn");
        }
        std::filesystem::remove_all(folder);
    }
    /// The file is put aside, this is reported once, and the program saves into a new one.
    void expectNewFileBesideThe(const std::string& damaged) {
        {
            SettingsStore store = open();
            EXPECT_TRUE(readFile(kept) == damaged);
            store.WriteSetting("Options", "callby", "fn");
            EXPECT_EQ(option(store, "callby"), "fn");
            EXPECT_EQ(other().get("callby"), "fn");
        }
        EXPECT_TRUE(readFile(kept) == damaged);
        EXPECT_THAT(reported,
                    ElementsAre(AllOf(HasSubstr(path.string()), HasSubstr(kept.string()))));
        reported.clear();
        SettingsStore next = open();
        EXPECT_EQ(option(next, "callby"), "fn");
        EXPECT_THAT(reported, ElementsAre());
    }
};

TEST_P(DamagedFile, WithAForeignHeadIsKept) {
    const std::string damaged(5000, 'g');
    write(path, damaged);
    expectNewFileBesideThe(damaged);
}

TEST_P(DamagedFile, OfAFewBytesIsKept) {
    write(path, "xyz");
    expectNewFileBesideThe("xyz");
}

TEST_P(DamagedFile, WhoseHeadAloneIsDamagedIsKept) {
    makeLargeFile();
    std::string damaged = readFile(path);
    damaged.replace(0, 16, 16, '\0');
    write(path, damaged);
    expectNewFileBesideThe(damaged);
}

TEST_P(DamagedFile, CutInHalfIsKept) {
    makeLargeFile();
    std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
    expectNewFileBesideThe(readFile(path));
}

/// What a page may come to hold instead of its own bytes, given the whole file and its place.
using Tear = std::string (*)(const std::string& whole, std::size_t page);

constexpr Tear tears[] = {
    [](const auto&, auto) { return std::string(pageSize, '\0'); },
    [](const auto&, auto) { return std::string(pageSize, '\xFF'); },
    [](const auto& whole, auto page) {
        return whole.substr(page * pageSize, pageSize / 2) + std::string(pageSize / 2, '\0');
    },
    [](const auto& whole, auto page) { return whole.substr((page - 1) * pageSize, pageSize); },
};

TEST_P(DamagedFile, TornAnywhereLosesNothingInSilence) {
    for (const Tear& tear : tears) {
        makeLargeFile();
        const std::string whole = readFile(path);
        for (std::size_t page = 1; page < whole.size() / pageSize; ++page) {
            std::string damaged = whole;
            damaged.replace(page * pageSize, pageSize, tear(whole, page));
            expectNoLossInSilence(
                damaged, std::to_string(&tear - tears) + " in page " + std::to_string(page));
        }
    }
}

TEST_P(DamagedFile, CutAnywhereLosesNothingInSilence) {
    makeLargeFile();
    const std::string whole = readFile(path);
    for (std::size_t size = 2; size < whole.size(); size += 2039)
        expectNoLossInSilence(whole.substr(0, size), "cut to " + std::to_string(size));
}

TEST_P(DamagedFile, HandsOnWhatCouldBeRead) {
    makeLargeFile();
    std::string damaged = readFile(path);
    damaged.replace(damaged.size() / 2, pageSize, pageSize, '\0');
    write(path, damaged);
    int count = 0;
    {
        SettingsStore store = open();
        count = countRead(store);
        EXPECT_GT(count, 0);
        EXPECT_LT(count, contacts);
    }
    SettingsStore next = open();
    EXPECT_EQ(countRead(next), count);
}

TEST_P(DamagedFile, ThatComesWhileTheProgramRunsLosesNothing) {
    makeLargeFile();
    SettingsStore store = open();
    EXPECT_EQ(countRead(store), contacts);
    const std::string damaged(5000, 'g');
    write(folder / "garbage", damaged);
    std::filesystem::rename(folder / "garbage", path);
    EXPECT_EQ(countRead(store), contacts);
    EXPECT_TRUE(readFile(kept) == damaged);
    EXPECT_EQ(reported.size(), 1U);
    EXPECT_EQ(other().query("SELECT count(*) FROM settings"), std::to_string(contacts));
}

TEST_P(DamagedFile, ThatIsOverwrittenInPlaceWhileTheProgramRunsLosesNothing) {
    makeLargeFile();
    SettingsStore store = open();
    EXPECT_EQ(countRead(store), contacts);
    const std::string damaged(5000, 'g');
    write(path, damaged);
    EXPECT_EQ(countRead(store), contacts);
    EXPECT_TRUE(readFile(kept) == damaged);
    EXPECT_EQ(other().query("SELECT count(*) FROM settings"), std::to_string(contacts));
}

TEST_P(DamagedFile, IsKeptBesideTheEarlierOnes) {
    write(path, std::string(5000, 'a'));
    { SettingsStore store = open(); }
    write(path, std::string(5000, 'b'));
    { SettingsStore store = open(); }
    EXPECT_TRUE(readFile(kept) == std::string(5000, 'a'));
    EXPECT_TRUE(readFile(folder / "settings.db.damaged-2") == std::string(5000, 'b'));
    EXPECT_EQ(reported.size(), 2U);
}

TEST_P(DamagedFile, IsKeptASecondTimeInTheSameRun) {
    write(path, std::string(5000, 'a'));
    SettingsStore store = open();
    store.WriteSetting("Options", "callby", "fn");
    write(folder / "garbage", std::string(5000, 'b'));
    std::filesystem::rename(folder / "garbage", path);
    EXPECT_EQ(option(store, "callby"), "fn");
    EXPECT_TRUE(readFile(folder / "settings.db.damaged-2") == std::string(5000, 'b'));
    EXPECT_EQ(other().get("callby"), "fn");
    EXPECT_THAT(reported, ElementsAre(HasSubstr(".damaged-1"), HasSubstr(".damaged-2")));
}

TEST_P(DamagedFile, TakesItsJournalAlong) {
    const std::string damaged(5000, 'g');
    // One that begins with zeros is not in force, so it is left to the file that it belongs to.
    const std::string journal(600, '\0');
    write(path, damaged);
    write(folder / "settings.db-journal", journal);
    expectNewFileBesideThe(damaged);
    EXPECT_TRUE(readFile(folder / "settings.db.damaged-1-journal") == journal);
    EXPECT_FALSE(std::filesystem::exists(folder / "settings.db-journal"));
}

INSTANTIATE_TEST_SUITE_P(Folders, DamagedFile, anyFolder, folderName);

}  // namespace
