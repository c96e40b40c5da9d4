#pragma once

#include <filesystem>

/// What Linux has beyond the common folders, and how it chooses them.
namespace folders {

/// The Wine prefix that the client is installed in.
[[nodiscard]] std::filesystem::path winePrefix();

/// Where this program keeps data for its user. The folder need not exist yet.
[[nodiscard]] std::filesystem::path userData();

/// Whether the folder of the program is one that holds other programs too: what goes with this one
/// is in the folder for data instead.
[[nodiscard]] bool isShared(const std::filesystem::path& program);

/// The file of this name in the program's folder or, where there is none, in the folder for data
/// that goes with it.
[[nodiscard]] std::filesystem::path movieFor(const std::filesystem::path& program,
                                             const char* name);

}  // namespace folders
