#pragma once

#include "base/Event.h"
#include "base/FileStamp.h"
#include "stores/SettingsFile.h"

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

/// Everything that is remembered between runs, apart from the notes: strings by section and key.
///
/// Reads are answered from memory, yet what another program writes into the file is seen by the
/// next read. A write is on the disk when it returns. What is wrong with the file is told once, and
/// the program goes on with what it has in memory; what the file did not take goes there as soon
/// as it can be used again.
class SettingsStore {
public:
    /// `tell` takes one line for the user: what is wrong and what becomes of it.
    SettingsStore(std::filesystem::path path, Event<std::string_view> tell);
    ~SettingsStore();  // NOLINT(bugprone-exception-escape)
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;

    /// The stored value; empty when there is none.
    [[nodiscard]] std::string ReadSetting(std::string_view section, std::string_view key);
    void WriteSetting(std::string_view section, std::string_view key, std::string_view value);

private:
    void refresh();
    void tryAgain();
    [[nodiscard]] bool reopen();
    void reload();
    void save();
    void handle(const SettingsTrouble& trouble);
    void replaceDamagedFile(const std::string& reason);
    void tellOnce(SettingsTrouble::Kind kind, const std::string& text);
    void unlocked();

    std::filesystem::path path;
    Event<std::string_view> tell;
    SettingsFile file;
    FileStamp stamp;
    /// The file did not take or give what it was asked for. It is written to again when there is
    /// something new to write; where it can be read, it still is.
    bool givenUp = false;
    bool loaded = false;
    int knownVersion = 0;
    Settings settings;
    /// What is in memory only, because the file did not take it.
    Settings unsaved;
    std::set<SettingsTrouble::Kind> told;
};
