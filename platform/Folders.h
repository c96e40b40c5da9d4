#pragma once

#include <filesystem>

namespace folders {

/// Where this user's programs keep their settings. The folder need not exist yet.
[[nodiscard]] std::filesystem::path settings();

/// Where the notes are kept, in a file "notes.cwv": the folder of the program, if this user can
/// write there, or else a folder of this user's data, which need not exist yet.
///
/// Notes that are there already, and that this user can read, decide first: they are where they
/// are, or where they were last changed. So none seem lost when the rights on the program's folder
/// change; if those in a folder that cannot be written are the latest, they are shown, and saving
/// them says what is wrong.
[[nodiscard]] std::filesystem::path notes();

}  // namespace folders
