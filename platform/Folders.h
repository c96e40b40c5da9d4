#pragma once

#include <filesystem>

namespace folders {

/// Where this user's programs keep their settings. The folder need not exist yet.
[[nodiscard]] std::filesystem::path settings();

}  // namespace folders
