#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// The steps in which a file is replaced: all that `replaceFile` asks of the system, written once
/// for each system.
namespace systemFiles {

/// What is wrong, in words, or nothing.
using Trouble = std::optional<std::string>;

/// Where `path` is a symbolic link, makes it the path that it leads to, which need not exist.
[[nodiscard]] Trouble followLinks(std::filesystem::path& path);
/// Makes a folder, and those above it, for its user alone, unless it is there.
[[nodiscard]] Trouble makeFolder(const std::filesystem::path& folder);
/// Removes a file of this user that has no other name, unless a process has it as its `NewFile`.
void removeUnused(const std::filesystem::path& path);

/// The new content on its way into the place of an old file, if there is one. Unless it gets there
/// it is gone with this object.
class NewFile {
public:
    NewFile() = default;
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    virtual ~NewFile() = default;

    /// First: looks at the old file. One that this user may not write, or that is no file at all,
    /// is a trouble.
    [[nodiscard]] virtual Trouble examineOld() = 0;
    /// Second: writes the content under `name`, beside the old file.
    [[nodiscard]] virtual Trouble write(const std::string& name, std::string_view content) = 0;
    /// Third: takes over who may do what with the old file, puts everything on the disk and takes
    /// the place of the old file in one step.
    [[nodiscard]] virtual Trouble putInPlace() = 0;
};

/// What is to take the place of `old`, whose folder is there and which is no symbolic link.
[[nodiscard]] std::unique_ptr<NewFile> makeNewFile(const std::filesystem::path& old);

}  // namespace systemFiles
