#pragma once

#include <filesystem>

/// Where the files of the program and of its user are.
namespace folders {

/// Where this user's programs keep their settings. The folder need not exist yet.
[[nodiscard]] std::filesystem::path settings();

/// Where the notes are kept: the folder of the program, if it is the program's own and this user
/// can write there, or else a folder of this user's data, which need not exist yet.
[[nodiscard]] std::filesystem::path notes();

/// Which of the two folders it is: that of the program, if this user can make files there, or else
/// the one for the user's data.
[[nodiscard]] std::filesystem::path notesIn(const std::filesystem::path& program,
                                            const std::filesystem::path& data);

/// The movie of this file name that came with the program: the one beside it or, where there is
/// none, the one in the folder for data of the place where it is installed. Neither need exist.
[[nodiscard]] std::filesystem::path movie(const char* name);

}  // namespace folders
