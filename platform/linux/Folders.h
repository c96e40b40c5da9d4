#pragma once

#include <filesystem>

namespace folders {

/// The Wine prefix in which the client lives.
[[nodiscard]] std::filesystem::path winePrefix();

/// Where this program keeps data for its user. The folder need not exist yet.
[[nodiscard]] std::filesystem::path userData();

/// Which of the two the notes are kept in, as `notes` says: the program's folder, which is
/// empty where it is not known, or the user's.
[[nodiscard]] std::filesystem::path notesIn(const std::filesystem::path& program,
                                            const std::filesystem::path& data);

/// The file of this name that goes with the program in that folder, as `movie` says.
[[nodiscard]] std::filesystem::path movieFor(const std::filesystem::path& program,
                                             const char* name);

}  // namespace folders
