#include "platform/AtomicFile.h"

#include "tests/platform/linux/GuardedFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sys/inotify.h>
#include <sys/stat.h>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;
namespace fs = std::filesystem;

TEST_F(GuardedFile, IsForItsUserAloneWhenItIsNew) {
    fs::remove(path);
    EXPECT_TRUE(passesForked([this] {
        umask(0);
        EXPECT_THAT(replaceFile(path, "new"), succeeds());
    }));
    EXPECT_EQ(read(), "new");
    EXPECT_EQ(mode(path), 0600U);
}

TEST_F(GuardedFile, CanBeReadByItsUserWhateverTheMask) {
    fs::remove(path);
    EXPECT_TRUE(passesForked([this] {
        umask(0777);
        EXPECT_THAT(replaceFile(path, "new"), succeeds());
    }));
    EXPECT_EQ(mode(path), 0600U);
}

TEST_F(GuardedFile, GetsItsMissingFoldersForItsUserAlone) {
    path = folder / "deep" / "deeper" / "file";
    EXPECT_TRUE(passesForked([this] {
        umask(0);
        EXPECT_THAT(replaceFile(path, "new"), succeeds());
    }));
    EXPECT_EQ(read(), "new");
    EXPECT_EQ(mode(folder / "deep"), 0700U);
    EXPECT_EQ(mode(folder / "deep" / "deeper"), 0700U);
}

TEST_F(GuardedFile, KeepsTheModeItHad) {
    for (const unsigned bits : {0600U, 0640U, 0666U, 0755U, 0200U}) {
        allow(path, bits);
        EXPECT_THAT(replaceFile(path, "new"), succeeds());
        EXPECT_EQ(mode(path), bits);
    }
}

TEST_F(GuardedFile, KeepsTheOwnerAndTheGroupItHad) {
    giveAway();
    struct stat before {};
    ASSERT_EQ(stat(path.c_str(), &before), 0);
    EXPECT_THAT(replaceFile(path, "new"), succeeds());
    struct stat after {};
    ASSERT_EQ(stat(path.c_str(), &after), 0);
    EXPECT_NE(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
}

TEST_F(GuardedFile, IsReadToItsOldEndByWhomeverHasItOpen) {
    std::ifstream reader(path);
    EXPECT_EQ(reader.get(), 'o');
    EXPECT_THAT(replaceFile(path, "new content"), succeeds());
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "ld");
}

TEST_F(GuardedFile, CanHaveTheLongestName) {
    path = folder / std::string(255, 'x');
    EXPECT_THAT(replaceFile(path, "new"), succeeds());
    EXPECT_EQ(read(), "new");
}

/// What is made, written, renamed and removed in a folder, as the system reports it.
class FolderEvents {
public:
    explicit FolderEvents(const fs::path& folder)
        : descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        inotify_add_watch(descriptor, folder.c_str(), IN_CREATE | IN_DELETE | IN_MODIFY | IN_MOVE);
    }
    ~FolderEvents() { close(descriptor); }
    FolderEvents(const FolderEvents&) = delete;
    FolderEvents& operator=(const FolderEvents&) = delete;

    struct Event {
        std::uint32_t kind;
        std::string name;
    };
    [[nodiscard]] std::vector<Event> take() const {
        std::vector<Event> events;
        alignas(inotify_event) std::array<char, 65536> buffer{};
        const ssize_t size = ::read(descriptor, buffer.data(), buffer.size());
        for (ssize_t at = 0; at < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
            events.push_back({event->mask, event->len > 0 ? event->name : ""});
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
        return events;
    }

private:
    int descriptor;
};

TEST_F(GuardedFile, IsReplacedInOneStepAndNeverWritten) {
    const FolderEvents events(folder);
    EXPECT_THAT(replaceFile(path, "new"), succeeds());
    std::vector<std::uint32_t> kinds;
    for (const auto& event : events.take()) {
        if (event.name == "file") kinds.push_back(event.kind);
    }
    EXPECT_THAT(kinds, ElementsAre(IN_MOVED_TO));
}

TEST_F(GuardedFile, IsPreparedUnderAnotherNameEachTime) {
    const FolderEvents events(folder);
    constexpr std::size_t times = 20;
    for (std::size_t time = 0; time < times; ++time) {
        EXPECT_THAT(replaceFile(path, "new"), succeeds());
    }
    std::set<std::string> created;
    for (const auto& event : events.take()) {
        if (event.kind == IN_CREATE) created.insert(event.name);
    }
    EXPECT_THAT(created, SizeIs(times));
    EXPECT_THAT(created, Each(testing::MatchesRegex("\\.cobweave-[0-9a-f]{32}")));
}

class LinkedFile : public GuardedFile {
protected:
    fs::path other = temporary.path() / "other";

    LinkedFile() { fs::create_directory(other); }

    /// Replaces the file through the link, which must stay as it is.
    void expectReplacedThrough(const fs::path& link) {
        const fs::path before = fs::read_symlink(link);
        EXPECT_THAT(replaceFile(link, "new"), succeeds());
        EXPECT_TRUE(fs::is_symlink(link));
        EXPECT_EQ(fs::read_symlink(link), before);
        EXPECT_EQ(read(), "new");
        EXPECT_THAT(names(), ElementsAre("file"));
    }
};

TEST_F(LinkedFile, IsReplacedWhereItIs) {
    fs::create_symlink(path, other / "link");
    expectReplacedThrough(other / "link");
}

TEST_F(LinkedFile, IsFoundFromTheFolderOfTheLink) {
    fs::create_symlink("../folder/file", other / "link");
    expectReplacedThrough(other / "link");
}

TEST_F(LinkedFile, IsFoundThroughLinksToLinks) {
    fs::create_symlink(path, other / "last");
    fs::create_symlink("last", other / "first");
    expectReplacedThrough(other / "first");
    EXPECT_TRUE(fs::is_symlink(other / "last"));
}

TEST_F(LinkedFile, IsMadeWhereTheLinkPoints) {
    fs::remove(path);
    fs::create_symlink(path, other / "link");
    expectReplacedThrough(other / "link");
}

TEST_F(LinkedFile, IsNotLookedForInACircle) {
    fs::create_symlink("second", other / "first");
    fs::create_symlink("first", other / "second");
    EXPECT_THAT(replaceFile(other / "first", "new"), failsWith(ELOOP));
    EXPECT_TRUE(fs::is_symlink(other / "first"));
}

}  // namespace
