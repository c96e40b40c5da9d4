#include "platform/AtomicFile.h"
#include "platform/linux/Descriptor.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// Why the file cannot be replaced. It does not leave this source.
class Trouble : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    explicit Trouble(int error) : Trouble(std::generic_category().message(error)) {}
};

/// Makes a call until no signal breaks it off.
template <typename Call>
auto undisturbed(Call&& call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// Makes a call whose failure is a trouble.
template <typename Call>
auto demand(Call&& call) {
    const auto result = undisturbed(std::forward<Call>(call));
    if (result < 0) throw Trouble(errno);
    return result;
}

/// What a chain of symbolic links ends at, be it there or not.
fs::path target(fs::path link) {
    // As many as the system itself follows.
    constexpr int mostLinks = 40;
    std::error_code error;
    for (int links = 0; fs::is_symlink(link, error); ++links) {
        if (links == mostLinks) throw Trouble(ELOOP);
        const fs::path next = fs::read_symlink(link, error);
        if (error) throw Trouble(error.value());
        link = link.parent_path() / next;
    }
    return link;
}

void makeFolder(const fs::path& folder) {
    std::error_code unknown;
    if (folder.empty() || fs::exists(folder, unknown)) return;
    makeFolder(folder.parent_path());
    // Whatever else makes the same one at the same time has done it for us.
    if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) throw Trouble(errno);
}

int openFolder(const fs::path& folder) {
    const fs::path given = folder.empty() ? "." : folder;
    return demand([&] { return open(given.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
}

void writeToDisk(int descriptor) {
    const int result = undisturbed([&] { return fsync(descriptor); });
    // Some file systems do not know this for folders, and then there is no more to be done.
    if (result < 0 && errno != EINVAL) throw Trouble(errno);
}

constexpr std::string_view namePrefix = ".cobweave-";
constexpr std::string_view digits = "0123456789abcdef";
constexpr std::size_t nameBytes = 16;

/// A name that nobody can foresee, so that nobody can have put a file of theirs under it.
std::string newName() {
    std::array<std::uint8_t, nameBytes> chance{};
    demand([&] { return getrandom(chance.data(), chance.size(), 0); });
    std::string name(namePrefix);
    for (const std::uint8_t byte : chance) {
        name += digits[byte >> 4U];
        name += digits[byte & 0xFU];
    }
    return name;
}

bool isOfNewName(std::string_view name) {
    return name.size() == namePrefix.size() + 2 * nameBytes && name.starts_with(namePrefix) &&
           name.find_first_not_of(digits, namePrefix.size()) == std::string_view::npos;
}

/// The new content under a name of its own, which is gone with this object.
class NewFile {
public:
    explicit NewFile(int folder)
        : folder(folder), file(demand([&] {
              return openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                            privately);
          })) {
        // So that nobody takes it for a leftover.
        flock(file.get(), LOCK_EX | LOCK_NB);
    }
    ~NewFile() {
        if (!inPlace) unlinkat(folder, name.c_str(), 0);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void write(std::string_view content) const {
        while (!content.empty()) {
            const ssize_t written =
                demand([&] { return ::write(file.get(), content.data(), content.size()); });
            content.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    /// Takes over whose the old file is and who may read it, or what a new one has.
    void resemble(const struct stat* old) const {
        if (old != nullptr) {
            // A user can give a file to a group of theirs, and only the superuser to somebody else.
            (void)!fchown(file.get(), static_cast<uid_t>(-1), old->st_gid);
            (void)!fchown(file.get(), old->st_uid, static_cast<gid_t>(-1));
        }
        constexpr mode_t permissions = 07777;
        demand([&] {
            return fchmod(file.get(), old == nullptr ? privately : old->st_mode & permissions);
        });
    }
    void putInPlaceOf(const fs::path& fileName) {
        writeToDisk(file.get());
        demand([&] { return renameat(folder, name.c_str(), folder, fileName.c_str()); });
        inPlace = true;
        writeToDisk(folder);
    }

private:
    static constexpr mode_t privately = S_IRUSR | S_IWUSR;

    int folder;
    std::string name = newName();
    Descriptor file;
    bool inPlace = false;
};

/// Tells in `old` about the file that is there; false when there is none. One that is not to be
/// replaced is a trouble.
bool find(int folder, const fs::path& fileName, struct stat& old) {
    if (fstatat(folder, fileName.c_str(), &old, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno == ENOENT) return false;
        throw Trouble(errno);
    }
    if (S_ISDIR(old.st_mode)) throw Trouble(EISDIR);
    if (!S_ISREG(old.st_mode)) throw Trouble("Not a file");
    // A new file could take its place, but whoever took the right away did not mean that.
    demand([&] { return faccessat(folder, fileName.c_str(), W_OK, AT_EACCESS); });
    return true;
}

}  // namespace

std::optional<std::string> replaceFile(const fs::path& path, std::string_view content) {
    try {
        const auto place = target(path);
        makeFolder(place.parent_path());
        const Descriptor folder(openFolder(place.parent_path()));
        struct stat old {};
        const bool isThere = find(folder.get(), place.filename(), old);
        NewFile file(folder.get());
        file.write(content);
        file.resemble(isThere ? &old : nullptr);
        file.putInPlaceOf(place.filename());
        return std::nullopt;
    } catch (const Trouble& trouble) {
        return trouble.what();
    }
}

void removeLeftovers(const fs::path& path) {
    try {
        const fs::path parent = target(path).parent_path();
        const Descriptor folder(openFolder(parent));
        std::error_code error;
        for (fs::directory_iterator entry(parent.empty() ? "." : parent, error), end;
             !error && entry != end; entry.increment(error)) {
            const std::string name = entry->path().filename();
            if (!isOfNewName(name)) continue;
            const Descriptor file(
                openat(folder.get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
            struct stat found {};
            if (fstat(file.get(), &found) != 0 || !S_ISREG(found.st_mode)) continue;
            if (found.st_uid != geteuid() || found.st_nlink != 1) continue;
            if (flock(file.get(), LOCK_EX | LOCK_NB) != 0) continue;
            unlinkat(folder.get(), name.c_str(), 0);
        }
    } catch (const Trouble&) {
        // A folder that cannot be opened has nothing that could be removed.
    }
}
