#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

struct sqlite3;
struct sqlite3_stmt;

/// Finds a setting by section and key, without making strings of them.
struct SettingOrder {
    using is_transparent = void;
    template <typename Left, typename Right>
    bool operator()(const Left& left, const Right& right) const {
        const int sections = std::string_view(left.first).compare(right.first);
        return sections != 0 ? sections < 0 : std::string_view(left.second) < right.second;
    }
};

/// Values by section and key.
using Settings = std::map<std::pair<std::string, std::string>, std::string, SettingOrder>;

/// Why the file of the settings cannot be used as asked.
struct SettingsTrouble {
    enum class Kind {
        Damaged,   ///< its content makes no sense
        Locked,    ///< another program keeps it for itself
        Unusable,  ///< it cannot be opened, read or written
    };
    Kind kind;
    std::string reason;
};

/// The settings as an SQLite file that other programs may change too. Text in the file is UTF-8.
/// Everything returns what went wrong, or nothing when it went well.
class SettingsFile {
public:
    SettingsFile();
    ~SettingsFile();
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    /// Opens the file, which is made, with its folder, when there is none. It stays closed when
    /// there is trouble.
    [[nodiscard]] std::optional<SettingsTrouble> open(const std::filesystem::path& wanted);
    void close();
    [[nodiscard]] bool isOpen() const { return database != nullptr; }

    /// Whether the open file is no longer the one that stands under its path.
    [[nodiscard]] bool hasMoved() const;

    /// Whether changes by other programs may leave the file itself as it is, for a time, and stand
    /// in a log beside it. Known once it was loaded.
    [[nodiscard]] bool hasChangesBeside() const { return changesBeside; }

    /// A number that changes when another program has changed the file.
    [[nodiscard]] std::optional<SettingsTrouble> readVersion(int& version);
    /// Puts what the file holds into `settings`; what was read before a trouble is there too.
    [[nodiscard]] std::optional<SettingsTrouble> load(Settings& settings);
    /// Writes `changes`, all or none. They are on the disk when it returns.
    [[nodiscard]] std::optional<SettingsTrouble> write(const Settings& changes);

    /// How long to wait for another program that has locked the file; also for the next `open`.
    void setPatience(std::chrono::milliseconds time);

private:
    struct CloseDatabase {
        void operator()(sqlite3* handle) const;
    };
    struct FinalizeStatement {
        void operator()(sqlite3_stmt* handle) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

    [[nodiscard]] std::optional<SettingsTrouble> prepareFile();
    [[nodiscard]] std::optional<SettingsTrouble> run(const char* sql);
    [[nodiscard]] std::optional<SettingsTrouble> prepare(const char* sql, Statement& statement);
    /// The first text that `sql` gives.
    [[nodiscard]] std::optional<SettingsTrouble> ask(const char* sql, std::string& answer);
    [[nodiscard]] std::optional<SettingsTrouble> loadRows(Settings& settings);
    [[nodiscard]] std::optional<SettingsTrouble> check();
    [[nodiscard]] std::int64_t fileSize() const;
    [[nodiscard]] std::optional<SettingsTrouble> writeAll(const Settings& changes);
    [[nodiscard]] SettingsTrouble trouble() const;

    std::filesystem::path path;
    /// Where `path` led when the file was opened.
    std::filesystem::path realPath;
    std::unique_ptr<sqlite3, CloseDatabase> database;
    Statement versionQuery;
    std::chrono::milliseconds patience{0};
    bool changesBeside = false;
};
