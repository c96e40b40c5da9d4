#pragma once

#include "stores/SettingsStore.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Where the program keeps its settings, in the folder for settings of all programs.
[[nodiscard]] inline std::filesystem::path storeIn(const std::filesystem::path& folder) {
    return folder / "Cobwaeve" / "settings.db";
}

/// What the user can set, as it stands in the store.
[[nodiscard]] inline Settings storedOptions(
    const std::vector<std::pair<std::string, std::string>>& values) {
    Settings settings;
    for (const auto& [key, value] : values)
        settings[{"Options", key}] = value;
    return settings;
}

/// Writes settings into the program's store, as another process does. Throws `std::runtime_error`
/// when they cannot be written.
inline void writeSettings(const std::filesystem::path& folder, const Settings& settings) {
    SettingsStore store(storeIn(folder), [](std::string_view trouble) {
        throw std::runtime_error(std::string(trouble));
    });
    for (const auto& [name, value] : settings)
        store.WriteSetting(name.first, name.second, value);
}
