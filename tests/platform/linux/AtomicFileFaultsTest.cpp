#include "platform/AtomicFile.h"

#include "tests/platform/linux/GuardedFile.h"
#include "tests/support/system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// What a test does when something is to be put on the disk: an error number, or 0 to go on.
std::function<int(bool isFolder)> onSync;

}  // namespace

/// Stands before the system's function of that name in the whole test program.
int fsync(int descriptor) {
    struct stat status {};
    if (onSync && fstat(descriptor, &status) == 0) {
        if (const int error = onSync(S_ISDIR(status.st_mode))) {
            errno = error;
            return -1;
        }
    }
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::StartsWith;
namespace fs = std::filesystem;

class FaultyDisk : public GuardedFile {
protected:
    ~FaultyDisk() override { onSync = nullptr; }

    /// A disk that fails once, for a file or for a folder.
    static void failOnce(bool forFolder, int error) {
        onSync = [=, done = false](bool isFolder) mutable {
            if (done || isFolder != forFolder) return 0;
            done = true;
            return error;
        };
    }
};

TEST_F(FaultyDisk, HasTheNewContentBeforeItTakesThePlaceOfTheOldAndThenTheFolder) {
    std::vector<std::pair<std::string, std::string>> steps;
    onSync = [&](bool isFolder) {
        steps.emplace_back(isFolder ? "folder" : "file", read());
        return 0;
    };
    EXPECT_THAT(replaceFile(path, "new"), succeeds());
    EXPECT_THAT(steps, ElementsAre(std::pair("file", "old"), std::pair("folder", "new")));
}

TEST_F(FaultyDisk, LeavesTheOldFileWhenItDoesNotTakeTheNewContent) {
    failOnce(false, EIO);
    EXPECT_THAT(replaceFile(path, "new"), failsWith(EIO));
    expectUntouched();
    EXPECT_THAT(replaceFile(path, "new"), succeeds());
    EXPECT_EQ(read(), "new");
}

TEST_F(FaultyDisk, IsReportedWhenItMayForgetTheChange) {
    failOnce(true, EIO);
    EXPECT_THAT(replaceFile(path, "new"), failsWith(EIO));
    EXPECT_EQ(read(), "new");
    EXPECT_THAT(names(), ElementsAre("file"));
}

TEST_F(FaultyDisk, NeedNotKnowHowToRememberFolders) {
    failOnce(true, EINVAL);
    EXPECT_THAT(replaceFile(path, "new"), succeeds());
    EXPECT_EQ(read(), "new");
}

TEST_F(FaultyDisk, IsAskedAgainAfterASignal) {
    for (const bool forFolder : {false, true}) {
        write("old");
        failOnce(forFolder, EINTR);
        EXPECT_THAT(replaceFile(path, "new"), succeeds());
        EXPECT_EQ(read(), "new");
    }
}

/// A process whose files may not grow beyond some size, as on a disk that is nearly full.
class FullDisk : public GuardedFile {
protected:
    static void limit(rlim_t size) {
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        limit.rlim_cur = size;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    /// Tries to write more than there is room for, in part or at all.
    static auto replaceWithin(rlim_t room, const fs::path& path) {
        std::signal(SIGXFSZ, SIG_IGN);
        limit(room);
        auto reason = replaceFile(path, std::string(10'000, 'x'));
        limit(RLIM_INFINITY);
        return reason;
    }
};

TEST_F(FullDisk, LeavesTheOldFile) {
    for (const rlim_t room : {0, 1, 4096, 9999}) {
        EXPECT_TRUE(passesForked([&] {
            const std::size_t descriptors = testSystem::countDescriptors();
            EXPECT_THAT(replaceWithin(room, path), failsWith(EFBIG));
            EXPECT_EQ(testSystem::countDescriptors(), descriptors);
        }));
        expectUntouched();
    }
}

TEST_F(FullDisk, LeavesNothingWhereNoFileWas) {
    fs::remove(path);
    EXPECT_TRUE(passesForked([this] { EXPECT_THAT(replaceWithin(4096, path), failsWith(EFBIG)); }));
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(FullDisk, TakesTheFileThatJustFits) {
    EXPECT_TRUE(passesForked([this] { EXPECT_THAT(replaceWithin(10'000, path), succeeds()); }));
    EXPECT_EQ(read(), std::string(10'000, 'x'));
}

class ClosedPlace : public GuardedFile {
protected:
    ClosedPlace() { giveAway(); }

    [[nodiscard]] bool failsForNobody(int error) const {
        return passesForked([=, this] {
            becomeNobody();
            EXPECT_THAT(replaceFile(path, "new"), failsWith(error));
        });
    }
};

TEST_F(ClosedPlace, IsLeftAloneWhenItIsAReadOnlyFolder) {
    allow(folder, 0500);
    EXPECT_TRUE(failsForNobody(EACCES));
    expectUntouched();
}

TEST_F(ClosedPlace, IsLeftAloneWhenItIsAReadOnlyFile) {
    allow(path, 0400);
    EXPECT_TRUE(failsForNobody(EACCES));
    expectUntouched();
    EXPECT_EQ(mode(path), 0400U);
}

TEST_F(ClosedPlace, IsLeftAloneWhenTheFolderCannotBeReached) {
    allow(folder, 0);
    EXPECT_TRUE(failsForNobody(EACCES));
    allow(folder, 0700);
    expectUntouched();
}

TEST_F(ClosedPlace, IsLeftAloneWhenTheFolderCannotBeMade) {
    allow(folder, 0500);
    path = folder / "deeper" / "file";
    EXPECT_TRUE(failsForNobody(EACCES));
    EXPECT_THAT(names(), ElementsAre("file"));
}

TEST_F(ClosedPlace, IsLeftAloneWhenTheFolderIsAFile) {
    EXPECT_THAT(replaceFile(path / "file", "new"), failsWith(ENOTDIR));
    EXPECT_THAT(replaceFile(path / "deeper" / "file", "new"), failsWith(ENOTDIR));
    expectUntouched();
}

TEST_F(ClosedPlace, IsLeftAloneWhenTheNameIsTooLong) {
    EXPECT_THAT(replaceFile(folder / std::string(256, 'x'), "new"), failsWith(ENAMETOOLONG));
    expectUntouched();
}

TEST_F(ClosedPlace, IsLeftAloneWhenItIsAFolder) {
    EXPECT_THAT(replaceFile(folder, "new"), failsWith(EISDIR));
    expectUntouched();
}

TEST_F(ClosedPlace, IsLeftAloneWhenItIsAPipe) {
    fs::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_THAT(replaceFile(path, "new"), testing::Optional(std::string("Not a file")));
    EXPECT_TRUE(fs::is_fifo(path));
    EXPECT_THAT(names(), ElementsAre("file"));
}

/// A process that does something over and over, until it is killed.
class Killed {
public:
    explicit Killed(const std::function<void()>& step) : process(fork()) {
        if (process < 0) throw std::runtime_error("no fork");
        if (process > 0) return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (;;)
            step();
    }
    ~Killed() {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    Killed(const Killed&) = delete;
    Killed& operator=(const Killed&) = delete;

private:
    pid_t process;
};

TEST_F(GuardedFile, IsWholeAtEachLookWhileItsWriterWritesAndIsKilled) {
    // Of other lengths, so that neither covers the other.
    const std::string first(100'000, 'a');
    const std::string second(300'000, 'b');
    constexpr int writers = 8;
    constexpr int looksEach = 10;
    write(first);
    for (int writer = 0; writer < writers; ++writer) {
        {
            const Killed process([&] {
                (void)replaceFile(path, second);
                (void)replaceFile(path, first);
            });
            // As many looks as it takes to have seen both.
            int firsts = 0;
            int seconds = 0;
            while (firsts + seconds < looksEach || firsts == 0 || seconds == 0) {
                const std::string content = read();
                firsts += content == first ? 1 : 0;
                seconds += content == second ? 1 : 0;
                ASSERT_TRUE(content == first || content == second) << content.size() << " bytes";
            }
        }
        const std::string content = read();
        ASSERT_TRUE(content == first || content == second) << content.size() << " bytes";
    }
    // What a killed writer leaves is hidden.
    EXPECT_THAT(names(), testing::Each(AnyOf("file", StartsWith(".cobweave-"))));
    EXPECT_LE(names().size(), std::size_t{writers + 1});
}

class Leftovers : public ReplacedFile {
protected:
    ~Leftovers() override { onSync = nullptr; }

    const std::string name = ".cobweave-0123456789abcdef0123456789abcdef";

    void make(const std::string& file) const { std::ofstream(folder / file) << "part"; }
    [[nodiscard]] static auto allOf(std::set<std::string> names) {
        return testing::ContainerEq(names);
    }
};

TEST_F(Leftovers, OfASaveThatWasKilledAreRemoved) {
    const pid_t child = fork();
    if (child == 0) {
        onSync = [](bool) { return raise(SIGKILL); };
        (void)replaceFile(path, "new");
        _exit(0);
    }
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_EQ(names().size(), 2U);
    removeLeftovers(path);
    expectUntouched();
}

TEST_F(Leftovers, AreFilesOfThatKindAlone) {
    const std::set<std::string> others{"file",
                                       name + "0",
                                       name.substr(0, name.size() - 1),
                                       name.substr(1),
                                       ".cobweave-",
                                       ".cobweave-0123456789ABCDEF0123456789ABCDEF",
                                       ".cobweave-0123456789abcdef0123456789abcdeg",
                                       "x" + name};
    for (const std::string& other : others)
        make(other);
    make(name);
    removeLeftovers(path);
    EXPECT_THAT(names(), allOf(others));
}

TEST_F(Leftovers, AreNothingButFilesOfOneName) {
    std::string next = name;
    const auto another = [&] { return folder / (++next.back(), next); };
    fs::create_directory(another());
    fs::create_symlink(path, another());
    fs::create_hard_link(path, another());
    ASSERT_EQ(mkfifo(another().c_str(), 0600), 0);
    const auto before = names();
    removeLeftovers(path);
    EXPECT_THAT(names(), allOf(before));
    EXPECT_EQ(read(), "old");
}

TEST_F(Leftovers, AreNotTheFileThatAnotherProcessIsWriting) {
    bool wasThere = false;
    onSync = [&](bool isFolder) {
        if (isFolder) return 0;
        const auto before = names();
        EXPECT_TRUE(passesForked([&] {
            onSync = nullptr;
            removeLeftovers(path);
        }));
        wasThere = before.size() == 2 && names() == before;
        return 0;
    };
    EXPECT_THAT(replaceFile(path, "new"), succeeds());
    EXPECT_TRUE(wasThere);
    EXPECT_EQ(read(), "new");
}

TEST_F(Leftovers, BehindALinkAreBesideWhatItLeadsTo) {
    const fs::path link = temporary.path() / "link";
    fs::create_symlink(path, link);
    make(name);
    removeLeftovers(link);
    expectUntouched();
    removeLeftovers(temporary.path() / "nowhere" / "file");
}

}  // namespace
