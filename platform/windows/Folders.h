#pragma once

#include <filesystem>

/// How Windows chooses the common folders.
namespace folders {

/// The folder for the notes: the program's, if this user can make files there, else the one for the
/// user's data.
[[nodiscard]] std::filesystem::path notesIn(const std::filesystem::path& program,
                                            const std::filesystem::path& data);

}  // namespace folders
