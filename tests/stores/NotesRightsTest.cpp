#include "stores/NotesStore.h"

#include "tests/stores/NotesFile.h"
#include "tests/support/linux/forked.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <string>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

/// Notes in a folder of a user whom permission bits bind.
class NotesWithoutRights : public NotesFile {
protected:
    fs::path folder = temporary.path() / "folder";

    NotesWithoutRights() {
        path = folder / "notes.cwv";
        fs::create_directory(folder);
        write("old\r\n\r\n");
    }
    ~NotesWithoutRights() override { allow(folder, 0700); }

    static void allow(const fs::path& which, unsigned bits) {
        fs::permissions(which, static_cast<fs::perms>(bits));
    }
    /// Runs the body as the owner of the file and its folder.
    [[nodiscard]] bool passesAsNobody(const std::function<void()>& body) const {
        if (geteuid() == 0) {
            for (const auto& given : {temporary.path(), folder, path}) {
                (void)!chown(given.c_str(), nobody, nobody);
            }
        }
        return passesForked([&] {
            becomeNobody();
            body();
        });
    }
};

TEST_F(NotesWithoutRights, AreReportedAtEachSaveThatFailsAndSavedAtTheFirstThatDoesNot) {
    EXPECT_TRUE(passesAsNobody([this] {
        NotesStore notes = store();
        notes.load();
        notes.add("new");
        allow(folder, 0500);
        notes.savenotes();
        EXPECT_THAT(reported, ElementsAre(unsaved("Permission denied")));
        notes.savenotes();
        EXPECT_THAT(reported,
                    ElementsAre(unsaved("Permission denied"), unsaved("Permission denied")));
        EXPECT_THAT(notes.list(), ElementsAre("old", "new"));
        EXPECT_EQ(read(), "old\r\n\r\n");
        allow(folder, 0700);
        notes.savenotes();
        EXPECT_EQ(reported.size(), 2U);
        EXPECT_EQ(read(), "old\r\nnew\r\n\r\n");
    }));
}

TEST_F(NotesWithoutRights, StayInTheListAndOnTheDiskWhenItIsFull) {
    EXPECT_TRUE(passesForked([this] {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        NotesStore notes = store();
        notes.load();
        notes.add(std::string(10'000, 'x'));
        rlimit full = before;
        full.rlim_cur = 4096;
        setrlimit(RLIMIT_FSIZE, &full);
        notes.savenotes();
        setrlimit(RLIMIT_FSIZE, &before);
        EXPECT_THAT(reported, ElementsAre(unsaved("File too large")));
        EXPECT_THAT(notes.list(), ElementsAre("old", std::string(10'000, 'x')));
        EXPECT_EQ(read(), "old\r\n\r\n");
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
        notes.savenotes();
        EXPECT_EQ(reported.size(), 1U);
        EXPECT_EQ(read(), "old\r\n" + std::string(10'000, 'x') + "\r\n\r\n");
    }));
}

TEST_F(NotesWithoutRights, AreReadFromAReadOnlyFileThatIsLeftAlone) {
    EXPECT_TRUE(passesAsNobody([this] {
        allow(path, 0400);
        NotesStore notes = store();
        notes.load();
        EXPECT_THAT(notes.list(), ElementsAre("old"));
        notes.remove(0);
        notes.savenotes();
        EXPECT_THAT(reported, ElementsAre(unsaved("Permission denied")));
        EXPECT_EQ(read(), "old\r\n\r\n");
    }));
}

TEST_F(NotesWithoutRights, AreNotReplacedWhileTheyCannotBeRead) {
    EXPECT_TRUE(passesAsNobody([this] {
        allow(path, 0200);
        NotesStore notes = store();
        notes.load();
        EXPECT_THAT(notes.list(), IsEmpty());
        EXPECT_THAT(reported, IsEmpty());
        notes.add("new");
        notes.savenotes();
        notes.savenotes();
        EXPECT_THAT(reported, ElementsAre(unread(), unread()));
        allow(path, 0600);
        EXPECT_EQ(read(), "old\r\n\r\n");
        EXPECT_THAT(notes.list(), ElementsAre("new"));
    }));
}

TEST_F(NotesWithoutRights, AreSavedOnceTheFileThatCannotBeReadIsOutOfTheWay) {
    EXPECT_TRUE(passesAsNobody([this] {
        allow(path, 0200);
        NotesStore notes = store();
        notes.load();
        notes.add("new");
        fs::rename(path, folder / "kept.cwv");
        notes.savenotes();
        notes.savenotes();
        EXPECT_THAT(reported, IsEmpty());
        EXPECT_EQ(read(), "new\r\n\r\n");
        EXPECT_TRUE(fs::exists(folder / "kept.cwv"));
    }));
}

TEST_F(NotesWithoutRights, AreSavedOnceTheFileCouldBeLoaded) {
    EXPECT_TRUE(passesAsNobody([this] {
        allow(path, 0200);
        NotesStore notes = store();
        notes.load();
        allow(path, 0600);
        notes.load();
        notes.add("new");
        notes.savenotes();
        EXPECT_THAT(reported, IsEmpty());
        EXPECT_EQ(read(), "old\r\nnew\r\n\r\n");
    }));
}

TEST_F(NotesWithoutRights, AreAnEmptyListWhenTheDiskCannotReadThem) {
    // The first bytes of a process's memory, which is a file too, belong to nobody.
    fs::remove(path);
    fs::create_symlink("/proc/self/mem", path);
    NotesStore notes = store();
    notes.load();
    EXPECT_THAT(notes.list(), IsEmpty());
    notes.savenotes();
    EXPECT_THAT(reported, ElementsAre(unread()));
}

TEST_F(NotesWithoutRights, AreNotWaitedForWhenAPipeHasTheirName) {
    fs::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    NotesStore notes = store();
    notes.load();
    EXPECT_THAT(notes.list(), IsEmpty());
    notes.savenotes();
    EXPECT_THAT(reported, ElementsAre(unread()));
    EXPECT_TRUE(fs::is_fifo(path));
}

TEST_F(NotesFile, IsMadeWithItsFolderForItsUserAlone) {
    path = temporary.path() / "share" / "cobweave" / "notes.cwv";
    EXPECT_THAT(loaded(), IsEmpty());
    EXPECT_FALSE(fs::exists(path.parent_path()));
    save({"a"});
    EXPECT_EQ(read(), "a\r\n\r\n");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms{0600});
    EXPECT_EQ(fs::status(path.parent_path()).permissions(), fs::perms{0700});
}

TEST_F(NotesFile, StaysALinkWhenItIsOne) {
    const fs::path target = temporary.path() / "target.cwv";
    fs::create_symlink("target.cwv", path);
    EXPECT_THAT(loaded(), IsEmpty());
    save({"a"});
    EXPECT_TRUE(fs::is_symlink(path));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(target)));
    EXPECT_THAT(loaded(), ElementsAre("a"));
}

TEST_F(NotesFile, KeepsTheModeThatItHas) {
    save({"a"});
    fs::permissions(path, fs::perms{0640});
    save({"b"});
    EXPECT_EQ(fs::status(path).permissions(), fs::perms{0640});
    EXPECT_EQ(read(), "b\r\n\r\n");
}

}  // namespace
