#include "platform/FileWatch.h"

#include "platform/linux/Descriptor.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include <linux/magic.h>
#include <sys/inotify.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace {

/// File systems of which the kernel sees every change, since nobody but it writes to them.
constexpr std::array<std::uint32_t, 5> localFileSystems{
    EXT4_SUPER_MAGIC, TMPFS_MAGIC, BTRFS_SUPER_MAGIC, XFS_SUPER_MAGIC, F2FS_SUPER_MAGIC};

bool isLocal(const std::filesystem::path& folder) {
    struct statfs facts {};
    if (statfs(folder.c_str(), &facts) != 0) return false;
    return std::ranges::find(localFileSystems, static_cast<std::uint32_t>(facts.f_type)) !=
           localFileSystems.end();
}

/// What happens to the files goes to a queue of inotify's, which is read to see whether it is
/// empty.
class LinuxFileWatch final : public FileWatch {
public:
    LinuxFileWatch(std::filesystem::path path, std::filesystem::path beside)
        : file(std::move(path)), beside(std::move(beside)) {
        if (isLocal(file.parent_path()))
            queue = Descriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    }

    [[nodiscard]] bool mayHaveChanged() override {
        if (queue.get() < 0) return true;
        const bool isQuiet = takeEvents() == 0;
        if (isWatching) return !isQuiet;
        // This comes ahead of the caller's look at the file: what happens in between is for the
        // next call.
        isWatching = watchAll();
        if (!isWatching) queue.reset();
        return true;
    }

private:
    /// Empties the queue, and says how many bytes were in it.
    [[nodiscard]] std::size_t takeEvents() {
        constexpr std::size_t roomForSome = 4096;
        alignas(inotify_event) std::array<char, roomForSome> events;
        std::size_t taken = 0;
        for (;;) {
            const ssize_t size = read(queue.get(), events.data(), events.size());
            if (size <= 0) return taken;
            taken += static_cast<std::size_t>(size);
            for (const char* next = events.data(); next < events.data() + size;) {
                inotify_event event{};
                std::memcpy(&event, next, sizeof event);
                next += sizeof event + event.len;
                // A watch is of a file and not of its name, so others may stand there now.
                if (event.mask != IN_MODIFY) isWatching = false;
            }
        }
    }

    /// False where something of it cannot be watched.
    [[nodiscard]] bool watchAll() const {
        constexpr std::uint32_t moves = IN_MOVE_SELF | IN_DELETE_SELF;
        constexpr std::uint32_t names = IN_CREATE | IN_DELETE | IN_MOVE;
        bool all = watch(file, moves | IN_ATTRIB | IN_MODIFY);
        // When it is not there it has to be made first, which is seen.
        (void)watch(beside, moves | IN_ATTRIB | IN_MODIFY);
        auto folder = file.parent_path();
        all = watch(folder, moves | IN_ATTRIB | names) && all;
        for (; folder != folder.root_path(); folder = folder.parent_path())
            all = watch(folder.parent_path(), moves) && all;
        return all;
    }

    [[nodiscard]] bool watch(const std::filesystem::path& path, std::uint32_t events) const {
        return inotify_add_watch(queue.get(), path.c_str(), events | IN_DONT_FOLLOW) >= 0;
    }

    const std::filesystem::path file;
    const std::filesystem::path beside;
    Descriptor queue;
    /// All that may change has its watch.
    bool isWatching = false;
};

}  // namespace

std::unique_ptr<FileWatch> watchFile(const std::filesystem::path& path,
                                     const std::filesystem::path& beside) {
    return std::make_unique<LinuxFileWatch>(path, beside);
}
