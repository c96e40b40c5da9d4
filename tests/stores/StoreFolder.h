#pragma once

#include "stores/SettingsStore.h"
#include "tests/stores/Database.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/readFile.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

/// A place for a settings file, and what the user is told about it.
class StoreFolder : public testing::Test {
protected:
    TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path() / "Cobwaeve";
    std::filesystem::path path = folder / "settings.db";
    std::vector<std::string> told;

    [[nodiscard]] SettingsStore open() {
        return {path, [this](std::string_view text) { told.emplace_back(text); }};
    }
    /// The file as another program has it.
    [[nodiscard]] Database other() const {
        std::filesystem::create_directories(folder);
        return Database(path);
    }

    /// As if the last change of the file had been an hour ago.
    void age() const {
        const auto now = std::filesystem::file_time_type::clock::now();
        std::filesystem::last_write_time(path, now - std::chrono::hours{1});
    }

    static void write(const std::filesystem::path& file, std::string_view bytes) {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
    }
};

/// A setting of the fixed ones.
[[nodiscard]] inline std::string option(SettingsStore& store, std::string_view key) {
    return store.ReadSetting("Options", key);
}
