#include "stores/SettingsStore.h"

#include "tests/stores/UnusableFile.h"
#include "tests/support/linux/forked.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A file that belongs to a user whom permission bits bind, and a body that runs as this user.
class ClosedFile : public UnusableFile {
protected:
    ~ClosedFile() override { allow(folder, 0700); }

    static void allow(const std::filesystem::path& which, unsigned bits) {
        std::filesystem::permissions(which, static_cast<std::filesystem::perms>(bits));
    }
    /// Gives the file and its folder away, with these rights, and runs the body as their owner.
    [[nodiscard]] bool passesWith(unsigned folderBits, unsigned fileBits,
                                  const std::function<void()>& body) const {
        if (std::filesystem::exists(path)) allow(path, fileBits);
        allow(folder, folderBits);
        if (geteuid() == 0) {
            for (const auto& given :
                 {temporary.path(), folder, path, beside("-wal"), beside("-shm")}) {
                (void)!chown(given.c_str(), nobody, nobody);
            }
        }
        return passesForked([&] {
            becomeNobody();
            body();
        });
    }
};

TEST_P(ClosedFile, ThatIsReadOnlyIsReadAndWritesStayInMemory) {
    EXPECT_TRUE(passesWith(0700, 0400, [this] {
        const std::string before = readFile(path);
        {
            SettingsStore store = open();
            EXPECT_EQ(option(store, "callby"), "e");
            EXPECT_THAT(reported, IsEmpty());
            expectToGoOnInMemory(store);
        }
        EXPECT_TRUE(readFile(path) == before);
        EXPECT_THAT(reported, saysOnceWhatToDo());
    }));
}

TEST_P(ClosedFile, ThatIsReadOnlyShowsChangesOfOthersAfterAFailedWriteToo) {
    EXPECT_TRUE(passesWith(0700, 0400, [this] {
        SettingsStore store = open();
        store.WriteSetting("Options", "timestamp", "True");
        allow(path, 0600);
        const Database database(path);
        allow(path, 0400);
        database.set("callby", "fn");
        EXPECT_EQ(option(store, "callby"), "fn");
        EXPECT_EQ(option(store, "timestamp"), "True");
    }));
}

TEST_P(ClosedFile, InAReadOnlyFolderIsReadAndWritesStayInMemory) {
    EXPECT_TRUE(passesWith(0500, 0600, [this] {
        SettingsStore store = open();
        EXPECT_EQ(option(store, "callby"), "e");
        if (GetParam() != Logs::Left) expectToGoOnInMemory(store);
    }));
    EXPECT_EQ(other().get("callby"), "e");
}

TEST_P(ClosedFile, ThatCannotBeMadeIsDoneWithout) {
    std::filesystem::remove(path);
    EXPECT_TRUE(passesWith(0500, 0, [this] {
        SettingsStore store = open();
        EXPECT_EQ(option(store, "callby"), "");
        expectToGoOnInMemory(store);
        EXPECT_FALSE(std::filesystem::exists(path));
    }));
}

TEST_P(ClosedFile, ThatCannotBeReadIsDoneWithout) {
    EXPECT_TRUE(passesWith(0700, 0, [this] {
        SettingsStore store = open();
        EXPECT_EQ(option(store, "callby"), "");
        expectToGoOnInMemory(store);
    }));
    allow(path, 0600);
    EXPECT_EQ(other().get("callby"), "e");
}

TEST_P(ClosedFile, InAFolderThatCannotBeReachedIsDoneWithout) {
    EXPECT_TRUE(passesWith(0, 0600, [this] {
        SettingsStore store = open();
        EXPECT_EQ(option(store, "callby"), "");
        expectToGoOnInMemory(store);
    }));
}

TEST_P(ClosedFile, InAFolderThatCannotBeMadeIsDoneWithout) {
    path = folder / "deeper" / "settings.db";
    EXPECT_TRUE(passesWith(0500, 0, [this] {
        SettingsStore store = open();
        expectToGoOnInMemory(store);
    }));
    EXPECT_FALSE(std::filesystem::exists(folder / "deeper"));
}

TEST_P(ClosedFile, GetsAllChangesAtTheFirstWriteAfterItWasOpened) {
    EXPECT_TRUE(passesWith(0700, 0400, [this] {
        SettingsStore store = open();
        store.WriteSetting("Options", "callby", "fn");
        store.WriteSetting("Options", "timestamp", "True");
        std::filesystem::rename(path, folder / "old.db");
        std::filesystem::copy_file(folder / "old.db", path);
        allow(path, 0600);
        store.WriteSetting("Options", "constants", "False");
        const Database database(path);
        EXPECT_EQ(database.get("callby"), "fn");
        EXPECT_EQ(database.get("timestamp"), "True");
        EXPECT_EQ(database.get("constants"), "False");
        EXPECT_THAT(reported, saysOnceWhatToDo());
    }));
}

TEST_P(ClosedFile, IsWrittenAgainOnceItsRightsAreMended) {
    EXPECT_TRUE(passesWith(0700, 0400, [this] {
        SettingsStore store = open();
        store.WriteSetting("Options", "callby", "fn");
        allow(path, 0600);
        store.WriteSetting("Options", "timestamp", "True");
        const Database database(path);
        EXPECT_EQ(database.get("callby"), "fn");
        EXPECT_EQ(database.get("timestamp"), "True");
    }));
}

TEST_P(ClosedFile, IsWrittenAtTheEndOnceItsRightsAreMended) {
    EXPECT_TRUE(passesWith(0700, 0400, [this] {
        {
            SettingsStore store = open();
            store.WriteSetting("Options", "callby", "fn");
            allow(path, 0600);
        }
        EXPECT_EQ(Database(path).get("callby"), "fn");
    }));
}

TEST_P(ClosedFile, IsWrittenOnceItsFolderCanBeReached) {
    EXPECT_TRUE(passesWith(0, 0600, [this] {
        SettingsStore store = open();
        store.WriteSetting("Options", "timestamp", "True");
        allow(folder, 0700);
        store.WriteSetting("Options", "constants", "False");
        const Database database(path);
        EXPECT_EQ(database.get("callby"), "e");
        EXPECT_EQ(database.get("timestamp"), "True");
        EXPECT_EQ(database.get("constants"), "False");
        EXPECT_EQ(option(store, "callby"), "e");
    }));
}

TEST_P(ClosedFile, IsLeftAloneWhereItIsDamagedAndCannotBePutAside) {
    const std::string damaged(5000, 'g');
    std::filesystem::remove_all(folder);
    write(path, damaged);
    EXPECT_TRUE(passesWith(0500, 0600, [&] {
        SettingsStore store = open();
        store.WriteSetting("Options", "callby", "fn");
        EXPECT_EQ(option(store, "callby"), "fn");
        EXPECT_THAT(reported, ElementsAre(AllOf(HasSubstr(path.string()), HasSubstr("writable"))));
        EXPECT_TRUE(readFile(path) == damaged);
    }));
}

INSTANTIATE_TEST_SUITE_P(Folders, ClosedFile, anyFolder, folderName);

/// A file for its user alone.
class PrivateFile : public AnyFolder {
protected:
    static constexpr auto ownersAlone = static_cast<std::filesystem::perms>(0600);

    void TearDown() override { EXPECT_THAT(reported, IsEmpty()); }
};

TEST_P(PrivateFile, HasALogAsPrivateAsItselfInAFolderThatIsOpenToAll) {
    const mode_t before = umask(0);
    std::filesystem::create_directories(folder);
    std::filesystem::permissions(folder, std::filesystem::perms::all);
    {
        SettingsStore store = open();
        store.WriteSetting("Options", "callby", "fn");
        store.WriteSetting(SettingsStore::lastWords, "bob@example.com", "hello");
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            EXPECT_EQ(entry.status().permissions(), ownersAlone) << entry.path();
    }
    EXPECT_EQ(std::filesystem::status(path).permissions(), ownersAlone);
    umask(before);
}

TEST_P(PrivateFile, IsTakenFromAllOthersWithItsLogWhereItIsFoundOpenToThem) {
    other().set("callby", "fn");
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        std::filesystem::permissions(entry.path(), static_cast<std::filesystem::perms>(0664));
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "fn");
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        EXPECT_EQ(entry.status().permissions(), ownersAlone) << entry.path();
}

INSTANTIATE_TEST_SUITE_P(Folders, PrivateFile, anyFolder, folderName);

}  // namespace
