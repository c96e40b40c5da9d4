#pragma once

#include <filesystem>

namespace folders {

/// The Wine prefix in which the client lives.
[[nodiscard]] std::filesystem::path winePrefix();

}  // namespace folders
