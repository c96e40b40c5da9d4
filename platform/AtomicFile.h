#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// Replaces the content of the file, or makes it, with its folder, when there is none. Returns what
/// went wrong, in words, or nothing.
///
/// At every moment, wherever the process or the machine stops, the file has the whole old content
/// or the whole new one. When this returns nothing, the new one is on the disk. When something goes
/// wrong, the old one is there and nothing else; only if the last step failed, which is to make the
/// disk remember the change, the new one. A process that is killed may leave an unfinished hidden
/// file beside it, for `removeLeftovers`.
///
/// A new file, and a new folder, is for its user alone. An old file keeps its mode, and its owner
/// and group where the system lets it; its other hard links keep the old content. It is left alone
/// when this user may not write it, or when it is not a file at all. A symbolic link stays one:
/// what it points to is replaced.
[[nodiscard]] std::optional<std::string> replaceFile(const std::filesystem::path& path,
                                                     std::string_view content);

/// Removes the unfinished files that killed processes of this user have left beside the file. One
/// that a process is at work on stays, and so does everything that `replaceFile` does not make.
void removeLeftovers(const std::filesystem::path& path);
