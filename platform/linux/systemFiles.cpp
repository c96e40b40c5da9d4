#include "platform/shared/systemFiles.h"

#include "platform/linux/Descriptor.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using systemFiles::Trouble;

constexpr mode_t privately = S_IRUSR | S_IWUSR;

Trouble describe(int error) { return std::generic_category().message(error); }

/// Makes a call until no signal breaks it off.
template <typename Call>
auto retryInterrupted(Call&& call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// Makes a call, and says what is wrong when it fails.
template <typename Call>
Trouble troubleOf(Call&& call) {
    if (retryInterrupted(call) < 0) return describe(errno);
    return std::nullopt;
}

Trouble writeToDisk(int descriptor) {
    const int result = retryInterrupted([&] { return fsync(descriptor); });
    // Some file systems do not know this for folders, and then there is no more to be done.
    if (result < 0 && errno != EINVAL) return describe(errno);
    return std::nullopt;
}

class LinuxNewFile final : public systemFiles::NewFile {
public:
    explicit LinuxNewFile(const fs::path& place)
        : folderPath(place.has_parent_path() ? place.parent_path() : "."),
          oldName(place.filename()) {}
    ~LinuxNewFile() override {
        if (isUnfinished) unlinkat(folder.get(), name.c_str(), 0);
    }

    [[nodiscard]] Trouble examineOld() override {
        folder = Descriptor(retryInterrupted(
            [&] { return open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
        if (folder.get() < 0) return describe(errno);
        if (fstatat(folder.get(), oldName.c_str(), &old, AT_SYMLINK_NOFOLLOW) != 0) {
            return errno == ENOENT ? std::nullopt : describe(errno);
        }
        isOldThere = true;
        if (S_ISDIR(old.st_mode)) return describe(EISDIR);
        if (!S_ISREG(old.st_mode)) return "Not a file";
        // A new file could take its place, but whoever took the right away did not mean that.
        return troubleOf(
            [&] { return faccessat(folder.get(), oldName.c_str(), W_OK, AT_EACCESS); });
    }
    [[nodiscard]] Trouble write(const std::string& newName, std::string_view content) override {
        name = newName;
        file = Descriptor(retryInterrupted([&] {
            return openat(folder.get(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                          privately);
        }));
        if (file.get() < 0) return describe(errno);
        isUnfinished = true;
        // A file with a lock is not taken for a leftover.
        flock(file.get(), LOCK_EX | LOCK_NB);
        while (!content.empty()) {
            const ssize_t written = retryInterrupted(
                [&] { return ::write(file.get(), content.data(), content.size()); });
            if (written < 0) return describe(errno);
            content.remove_prefix(static_cast<std::size_t>(written));
        }
        return std::nullopt;
    }
    [[nodiscard]] Trouble putInPlace() override {
        if (auto trouble = takeOverRights()) return trouble;
        if (auto trouble = writeToDisk(file.get())) return trouble;
        if (auto trouble = troubleOf([&] {
                return renameat(folder.get(), name.c_str(), folder.get(), oldName.c_str());
            })) {
            return trouble;
        }
        isUnfinished = false;
        return writeToDisk(folder.get());
    }

private:
    [[nodiscard]] Trouble takeOverRights() const {
        if (isOldThere) {
            // A user can give a file to a group of theirs, and only the superuser to somebody else.
            (void)!fchown(file.get(), static_cast<uid_t>(-1), old.st_gid);
            (void)!fchown(file.get(), old.st_uid, static_cast<gid_t>(-1));
        }
        constexpr mode_t permissions = 07777;
        return troubleOf(
            [&] { return fchmod(file.get(), isOldThere ? old.st_mode & permissions : privately); });
    }

    const fs::path folderPath;
    const fs::path oldName;
    Descriptor folder;
    struct stat old {};
    bool isOldThere = false;
    std::string name;
    Descriptor file;
    bool isUnfinished = false;
};

}  // namespace

Trouble systemFiles::followLinks(fs::path& path) {
    // The system itself follows as many.
    constexpr int mostLinks = 40;
    std::error_code error;
    for (int links = 0; fs::is_symlink(path, error); ++links) {
        if (links == mostLinks) return describe(ELOOP);
        const fs::path next = fs::read_symlink(path, error);
        if (error) return describe(error.value());
        path = path.parent_path() / next;
    }
    return std::nullopt;
}

Trouble systemFiles::makeFolder(const fs::path& folder) {
    std::error_code unknown;
    if (folder.empty() || fs::exists(folder, unknown)) return std::nullopt;
    if (auto trouble = makeFolder(folder.parent_path())) return trouble;
    // Whatever else makes the same one at the same time has done it for us.
    if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) return describe(errno);
    return std::nullopt;
}

void systemFiles::removeUnused(const fs::path& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat found {};
    if (fstat(file.get(), &found) != 0 || !S_ISREG(found.st_mode)) return;
    if (found.st_uid != geteuid() || found.st_nlink != 1) return;
    if (flock(file.get(), LOCK_EX | LOCK_NB) != 0) return;
    unlink(path.c_str());
}

std::unique_ptr<systemFiles::NewFile> systemFiles::makeNewFile(const fs::path& old) {
    return std::make_unique<LinuxNewFile>(old);
}
