#pragma once

#include <sqlite3.h>

#include <map>
#include <utility>

/// Changes what the files of all connections of this process can do, for those that are opened
/// while it lives.
class FileRules {
public:
    enum class Log {
        Allowed,
        /// As on a file system without shared memory.
        NotAllowed,
        /// As on one that promises it and does not keep the promise.
        Fails,
    };

    explicit FileRules(Log log) {
        asked = log;
        syncs = 0;
        realOpen = system()->xOpen;
        system()->xOpen = open;
    }
    ~FileRules() { system()->xOpen = realOpen; }
    FileRules(const FileRules&) = delete;
    FileRules& operator=(const FileRules&) = delete;

    /// How often a file was brought to the disk.
    static inline int syncs = 0;

private:
    static sqlite3_vfs* system() { return sqlite3_vfs_find(nullptr); }
    static int open(sqlite3_vfs* vfs, sqlite3_filename name, sqlite3_file* file, int flags,
                    int* given) {
        const int result = realOpen(vfs, name, file, flags, given);
        if (file->pMethods == nullptr) return result;
        realSync = file->pMethods->xSync;
        // Files outlive the rules that they were opened under.
        static std::map<std::pair<const sqlite3_io_methods*, Log>, sqlite3_io_methods> kinds;
        sqlite3_io_methods& changed =
            kinds.try_emplace({file->pMethods, asked}, *file->pMethods).first->second;
        if (asked == Log::NotAllowed) changed.iVersion = 1;
        if (asked == Log::Fails) {
            changed.xShmMap = [](sqlite3_file*, int, int, int, void volatile**) {
                return SQLITE_IOERR_SHMMAP;
            };
        }
        changed.xSync = [](sqlite3_file* synced, int how) {
            ++syncs;
            return realSync(synced, how);
        };
        file->pMethods = &changed;
        return result;
    }

    static inline Log asked{};
    static inline decltype(sqlite3_vfs::xOpen) realOpen = nullptr;
    static inline decltype(sqlite3_io_methods::xSync) realSync = nullptr;
};
