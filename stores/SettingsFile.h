#pragma once

#include "base/FileStamp.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

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

/// Why the file of the settings cannot be used as asked.
struct SettingsTrouble {
    /// Of what sort it is.
    enum class Kind {
        Damaged,   ///< its content makes no sense
        Locked,    ///< another program keeps it for itself
        Endless,   ///< it holds too much, or takes too long to compute, or might
        Unusable,  ///< it cannot be opened, read or written
    };
    Kind kind;
    std::string reason;
};

/// What SQLite may put beside a file, by how the names end.
inline constexpr std::array<std::string_view, 3> settingsCompanions{"-journal", "-wal", "-shm"};

/// The path whose name ends in `ending` besides.
[[nodiscard]] std::filesystem::path withEnding(const std::filesystem::path& path,
                                               std::string_view ending);

/// How long other programs that lock the file are waited for.
class LockPatience {
public:
    using Now = std::chrono::steady_clock::time_point (*)();

    /// In all, within each `window` of the time that `now` gives. It is longer than an ordinary
    /// commit takes, and short enough not to be noticed in a conversation.
    static constexpr std::chrono::milliseconds most{250};
    static constexpr std::chrono::seconds window{10};

    /// The first window begins with the first wait.
    explicit LockPatience(Now now) : now(now) {}

    /// Waits a little; false, at once, when there is no patience left.
    [[nodiscard]] bool wait();
    /// Begins a new window.
    void renew();

private:
    Now now;
    std::chrono::steady_clock::time_point windowEnd{};
    std::chrono::milliseconds left{0};
};

/// The settings as an SQLite file that other programs may change too. Text in the file is UTF-8.
/// Everything returns what went wrong, or nothing when it went well.
///
/// While it is open, changes go to a write-ahead log beside the file ("-wal", with an index,
/// "-shm"), which costs fewer waits for the disk. Where the folder does not allow that, they go
/// into the file itself, each with a journal. At the end the file is alone again.
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
    [[nodiscard]] bool isOpen() const { return database != nullptr; }

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

    LockPatience patience;

private:
    struct CloseDatabase {
        void operator()(sqlite3* handle) const;
    };
    struct FinalizeStatement {
        void operator()(sqlite3_stmt* handle) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;
    using Trouble = std::optional<SettingsTrouble>;

    /// What the time and the size of the file were when it was last known to be SQLite's work.
    struct Looks {
        std::filesystem::file_time_type time;
        std::uintmax_t size = 0;
        bool operator==(const Looks&) const = default;
    };

    [[nodiscard]] Trouble prepareFile();
    [[nodiscard]] Trouble connect();
    void setUp();
    [[nodiscard]] Trouble abandonLog();
    void emptyLog();
    [[nodiscard]] bool isElsewhere() const;
    [[nodiscard]] Looks looks() const;
    [[nodiscard]] Trouble run(const char* sql);
    [[nodiscard]] Trouble prepare(const char* sql, Statement& statement);
    [[nodiscard]] int step(const Statement& statement);
    /// The first text that `sql` gives.
    [[nodiscard]] Trouble ask(const char* sql, std::string& answer);
    [[nodiscard]] Trouble loadRows(std::vector<Setting>& settings);
    [[nodiscard]] Trouble check();
    [[nodiscard]] std::int64_t fileSize() const;
    [[nodiscard]] Trouble writeAll(const SettingChanges& changes);
    [[nodiscard]] SettingsTrouble trouble() const;
    template <typename Call>
    int measured(Call&& call);

    std::filesystem::path path;
    /// Where `path` led when the file was opened.
    std::filesystem::path realPath;
    FileStamp stamp;
    FileStamp logStamp;
    std::unique_ptr<sqlite3, CloseDatabase> database;
    Statement versionQuery;
    bool hasLog = false;
    /// It has a table that we, or somebody for us, made.
    bool isOurs = false;
    /// The folder does not allow one.
    bool isLogRefused = false;
    int pagesInLog = 0;
    /// Locks are not waited for just now.
    bool isHurried = false;
    Looks known;
    /// Processor time that SQLite has had for what was last asked of the file, but for the call
    /// that it is in.
    std::chrono::nanoseconds spent{0};
    std::chrono::nanoseconds callBegin{0};
};
