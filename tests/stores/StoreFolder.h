#pragma once

#include "stores/SettingsStore.h"
#include "tests/stores/Database.h"
#include "tests/stores/FileRules.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/readFile.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

/// A place for a settings file, and what is reported about it.
class StoreFolder : public testing::Test {
protected:
    TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path() / "Cobwaeve";
    std::filesystem::path path = folder / "settings.db";
    std::vector<std::string> reported;

    [[nodiscard]] SettingsStore open() {
        return {path, [this](std::string_view text) { reported.emplace_back(text); }};
    }
    /// The file as another program has it.
    [[nodiscard]] Database other() const {
        std::filesystem::create_directories(folder);
        return Database(path);
    }
    [[nodiscard]] std::filesystem::path beside(const char* ending) const {
        return withEnding(path, ending);
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

/// How it stands with logs beside the file.
enum class Logs {
    Allowed,
    NotAllowed,  ///< by the folder
    Left,        ///< allowed, and a run that was killed has left one
};

/// A place for a settings file, of each kind.
class AnyFolder : public StoreFolder, public testing::WithParamInterface<Logs> {
protected:
    FileRules rules{GetParam() == Logs::NotAllowed ? FileRules::Log::NotAllowed
                                                   : FileRules::Log::Allowed};

    [[nodiscard]] static bool hasLogs() { return GetParam() != Logs::NotAllowed; }

    /// The file as another program has it, after a killed run where it is that kind of folder.
    [[nodiscard]] Database other() const {
        Database database = StoreFolder::other();
        if (GetParam() == Logs::Left) database.leaveLog();
        return database;
    }
};

inline const auto anyFolder = testing::Values(Logs::Allowed, Logs::NotAllowed, Logs::Left);

[[nodiscard]] inline std::string folderName(const testing::TestParamInfo<Logs>& info) {
    switch (info.param) {
        case Logs::Allowed: return "WithALog";
        case Logs::NotAllowed: return "WithoutALog";
        case Logs::Left: break;
    }
    return "AfterAKill";
}

/// A setting of the fixed ones.
[[nodiscard]] inline std::string option(SettingsStore& store, std::string_view key) {
    return store.ReadSetting("Options", key);
}

/// A contact says this.
inline void say(SettingsStore& store, std::string_view contact, std::string_view text) {
    store.WriteSetting(SettingsStore::lastWords, contact, text);
}
/// What a contact said last.
[[nodiscard]] inline std::string saidBy(SettingsStore& store, std::string_view contact) {
    return store.ReadSetting(SettingsStore::lastWords, contact);
}
