#pragma once

#include <filesystem>
#include <memory>

/// Finds out, for less than a look at it costs, that nothing has happened to a file, nor to one
/// that stands beside it.
class FileWatch {
public:
    FileWatch() = default;
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;
    virtual ~FileWatch() = default;

    /// False only when since the last call began nobody has written to the files, changed their
    /// times or rights, taken one away, put another one in its place, or moved a folder on the way
    /// to them. True for the first call.
    [[nodiscard]] virtual bool mayHaveChanged() = 0;
};

/// Watches the file at `path`, which is absolute and holds no link, and `beside` in the same
/// folder, which need not be there. Where the system does not say enough, as of a file that other
/// machines may write to, or of one that has gone, the answer is true from then on.
[[nodiscard]] std::unique_ptr<FileWatch> watchFile(const std::filesystem::path& path,
                                                   const std::filesystem::path& beside);
