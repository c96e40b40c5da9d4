#pragma once

#include "base/FileStamp.h"
#include "platform/FileWatch.h"
#include "stores/BoundedDatabase.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Orders pairs of section and key, also those that are not strings of their own.
struct SettingOrder {
    using is_transparent = void;
    template <typename Left, typename Right>
    bool operator()(const Left& left, const Right& right) const {
        const int sections = std::string_view(left.first).compare(right.first);
        return sections != 0 ? sections < 0 : std::string_view(left.second) < right.second;
    }
};

/// The section and the key of a setting.
using SettingName = std::pair<std::string, std::string>;

/// Values by section and key.
using Settings = std::map<SettingName, std::string, SettingOrder>;

/// What is to be in the file: a value for each name, or nothing where the row is to go.
using SettingChanges = std::map<SettingName, std::optional<std::string>, SettingOrder>;

/// One row of the file.
struct Setting {
    SettingName name;
    std::string value;
    /// The later it was changed, the higher; 0 where the file does not say.
    std::int64_t age = 0;
};

/// What SQLite may put beside a file, by how the names end.
inline constexpr std::array<std::string_view, 3> settingsCompanions{"-journal", "-wal", "-shm"};

/// The path whose name ends in `ending` besides.
[[nodiscard]] std::filesystem::path withEnding(const std::filesystem::path& path,
                                               std::string_view ending);

/// The settings as an SQLite file that other programs may change too. Text in the file is UTF-8.
/// Everything returns what went wrong, or nothing when it went well.
///
/// While it is open, changes go to a write-ahead log beside the file ("-wal", with an index,
/// "-shm"), which costs fewer waits for the disk. Where the folder does not allow that, they go
/// into the file itself, each with a journal. When this object ends, the file is alone again.
class SettingsFile {
public:
    /// How surely a change is kept when `write` returns.
    enum class Durability {
        SurvivesKill,      ///< a power cut may take the changes of the last seconds back
        SurvivesPowerCut,  ///< it is on the disk
    };

    SettingsFile(std::filesystem::path path, LockPatience::Now now);
    ~SettingsFile();
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    /// Opens the file, which is made, with its folder, when there is none. It stays closed when
    /// there is trouble. Nobody but its user can read it, or what is beside it, afterwards.
    [[nodiscard]] std::optional<SettingsTrouble> open();
    /// Lets go of the file without a further look at it.
    void close();
    [[nodiscard]] bool isOpen() const { return database.isOpen(); }

    /// False only when what the file holds is surely what it was at the last call, at the price of
    /// a system call or two.
    [[nodiscard]] bool mayHaveChanged();
    /// Whether the open file is no longer the one that stands under its path, or was overwritten
    /// by a program that does not use SQLite.
    [[nodiscard]] bool isReplaced() const;
    /// A number that changes when another program has changed the file.
    [[nodiscard]] std::optional<SettingsTrouble> readVersion(int& version);
    /// Puts what the file holds into `settings`, what was changed last as the last; what was read
    /// before a trouble is there too.
    [[nodiscard]] std::optional<SettingsTrouble> load(std::vector<Setting>& settings);
    /// Begins the log, for a file that is known to be sound; `load` has done so when it went well.
    void beginLog();
    /// Writes `changes`, all or none.
    [[nodiscard]] std::optional<SettingsTrouble> write(const SettingChanges& changes,
                                                       Durability durability);

    /// Whether there is something in the log that `settle` may bring into the file.
    [[nodiscard]] bool isUnsettled() const { return pagesInLog > 0; }
    /// Brings the log into the file, on the disk, unless another program is at work there.
    void settle();

    /// Other programs that lock the file are waited for as if none had been so far.
    void renewPatience() { database.patience.renew(); }

private:
    using Trouble = std::optional<SettingsTrouble>;

    /// What the time and the size of the file were when it was last known to be SQLite's work.
    struct Looks {
        std::filesystem::file_time_type time;
        std::uintmax_t size = 0;
        bool operator==(const Looks&) const = default;
    };

    [[nodiscard]] Trouble prepareFile();
    [[nodiscard]] Trouble connect();
    [[nodiscard]] Trouble abandonLog();
    void emptyLog();
    [[nodiscard]] bool isElsewhere() const;
    [[nodiscard]] Looks looks() const;
    [[nodiscard]] Trouble loadRows(std::vector<Setting>& settings);
    [[nodiscard]] Trouble check();
    [[nodiscard]] std::int64_t fileSize() const;
    [[nodiscard]] Trouble writeAll(const SettingChanges& changes);

    BoundedDatabase database;
    std::filesystem::path path;
    /// Where `path` led when the file was opened.
    std::filesystem::path realPath;
    FileStamp stamp;
    FileStamp logStamp;
    /// There is none before the stamps stood still, nor where links lead to the file, which may
    /// change too.
    std::unique_ptr<FileWatch> watch;
    /// The stamps stood still at the last call, so they need no look until the watch sees a change.
    bool isStill = false;
    BoundedDatabase::Statement versionQuery;
    bool hasLog = false;
    /// The file has a table that we, or somebody for us, made.
    bool isOurs = false;
    /// The folder does not allow a log.
    bool isLogRefused = false;
    int pagesInLog = 0;
    Looks known;
};
