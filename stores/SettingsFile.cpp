#include "stores/SettingsFile.h"

#include <sqlite3.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace {

/// Under this name, spelled so, the settings stand in the file of each user.
constexpr std::string_view application = "Cobwaeve";

constexpr const char* createTable =
    "CREATE TABLE IF NOT EXISTS settings(application TEXT, section TEXT, key TEXT, value TEXT, "
    "PRIMARY KEY(application, section, key))";

constexpr const char* insertValue =
    "INSERT OR REPLACE INTO settings(application, section, key, value) VALUES(?1, ?2, ?3, ?4)";
constexpr const char* deleteValue =
    "DELETE FROM settings WHERE application = ?1 AND section = ?2 AND key = ?3";

/// A row that is replaced gets a new number, the highest. Some tables of others have no numbers.
constexpr const char* selectNumbered =
    "SELECT section, key, value, rowid FROM settings WHERE application = ?1";
constexpr const char* selectAll =
    "SELECT section, key, value, 0 FROM settings WHERE application = ?1";

constexpr const char* typeOfSettings = "SELECT type FROM sqlite_schema WHERE name = 'settings'";

/// The most that is read in all. Both are twice what the program ever writes.
constexpr std::size_t mostBytes = std::size_t{32} << 20U;
constexpr std::size_t mostRows = 65536;

/// The pages from which on the log is not left to grow.
constexpr int mostPagesInLog = 1000;

/// Makes the folder, for nobody but its user: last words are private.
std::error_code makePrivateFolder(const std::filesystem::path& folder) {
    std::error_code error;
    if (std::filesystem::create_directories(folder, error)) {
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    }
    return error;
}

/// Takes the file, and what SQLite has left beside it, away from all but its user, who has at least
/// the same rights to what is beside it.
void makePrivate(const std::filesystem::path& file) {
    using std::filesystem::perms;
    std::error_code notOurs;
    const auto rights = [&](const std::filesystem::path& part) {
        return std::filesystem::status(part, notOurs).permissions() & perms::owner_all;
    };
    std::filesystem::permissions(file, rights(file), notOurs);
    for (const std::string_view ending : settingsCompanions) {
        const std::filesystem::path part = withEnding(file, ending);
        if (std::filesystem::exists(part, notOurs)) {
            std::filesystem::permissions(part, rights(part) | rights(file), notOurs);
        }
    }
}

}  // namespace

std::filesystem::path withEnding(const std::filesystem::path& path, std::string_view ending) {
    std::filesystem::path longer = path;
    longer += ending;
    return longer;
}

SettingsFile::SettingsFile(std::filesystem::path path, LockPatience::Now now)
    : database(now), path(std::move(path)), stamp(this->path), logStamp(this->path) {}

SettingsFile::~SettingsFile() {
    // The log goes, so whoever copies the file, or takes it to a place without logs, has all of it.
    if (isOpen() && hasLog && isOurs && !isReplaced()) {
        const BoundedDatabase::Hurry hurry(database);
        (void)database.run("PRAGMA journal_mode = DELETE");
    }
    close();
}

std::optional<SettingsTrouble> SettingsFile::open() {
    close();
    if (const std::error_code refused = makePrivateFolder(path.parent_path())) {
        return SettingsTrouble{SettingsTrouble::Kind::Unusable, refused.message()};
    }
    isLogRefused = false;
    auto found = connect();
    std::error_code error;
    realPath = std::filesystem::canonical(path, error);
    logStamp = FileStamp(withEnding(realPath, "-wal"));
    watch.reset();
    isStill = false;
    if (!found) found = prepareFile();
    if (found) close();
    return found;
}

/// Opens the file, whose log is brought into it by `settle` and at the end alone.
std::optional<SettingsTrouble> SettingsFile::connect() {
    versionQuery.reset();
    if (auto found = database.open(path)) return found;
    sqlite3_db_config(database.handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    sqlite3_wal_hook(
        database.handle(),
        [](void* file, sqlite3*, const char*, int pages) {
            static_cast<SettingsFile*>(file)->pagesInLog = pages;
            return SQLITE_OK;
        },
        this);
    return std::nullopt;
}

std::optional<SettingsTrouble> SettingsFile::prepareFile() {
    // This comes before anything is in the file.
    makePrivate(realPath);
    database.beginWork();
    auto found = database.run(createTable);
    if (found && found->kind == SettingsTrouble::Kind::Unusable) {
        // A run that was killed may have left a log in a folder that allows none any more.
        if (auto lost = abandonLog()) return lost;
        found = database.run(createTable);
    }
    if (found) return found;
    return database.prepare("PRAGMA data_version", versionQuery);
}

void SettingsFile::close() {
    // The log of a file that went elsewhere would be taken for one of the file that takes its name.
    if (isOpen() && hasLog && isElsewhere()) emptyLog();
    versionQuery.reset();
    database.close();
    hasLog = false;
    pagesInLog = 0;
}

bool SettingsFile::mayHaveChanged() {
    // The watch is asked ahead of the stamps, even while they count as changing: what comes later
    // is for the next call.
    const bool isWatchQuiet = watch != nullptr && !watch->mayHaveChanged();
    if (isStill && isWatchQuiet) return false;
    const bool inFile = stamp.mayHaveChanged();
    const bool inLog = hasLog && logStamp.mayHaveChanged();
    isStill = !inFile && !inLog;
    // No watch begins while the file still changes: beginning one and ending it takes the system
    // some time.
    if (isStill && watch == nullptr && path.native() == realPath.native()) {
        watch = watchFile(realPath, withEnding(realPath, "-wal"));
    }
    return !isStill;
}

bool SettingsFile::isReplaced() const {
    // With a log, SQLite writes to the file itself only when the log is brought into it.
    return isElsewhere() || (hasLog && looks() != known);
}

bool SettingsFile::isElsewhere() const {
    // SQLite knows the file behind a link, and not whether the link still leads there.
    int moved = 0;
    sqlite3_file_control(database.handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    if (moved != 0) return true;
    std::error_code error;
    // No link was on the way when it was opened. A folder that is one now leads to the same file,
    // or it would have moved; a link in the place of the file has other files beside it.
    if (path.native() == realPath.native() && !std::filesystem::is_symlink(path, error)) {
        return false;
    }
    return std::filesystem::canonical(path, error) != realPath;
}

SettingsFile::Looks SettingsFile::looks() const {
    std::error_code missing;
    return {std::filesystem::last_write_time(realPath, missing),
            std::filesystem::file_size(realPath, missing)};
}

std::optional<SettingsTrouble> SettingsFile::readVersion(int& version) {
    const int result = database.step(versionQuery);
    if (result == SQLITE_ROW) version = sqlite3_column_int(versionQuery.get(), 0);
    sqlite3_reset(versionQuery.get());
    if (result != SQLITE_ROW) return database.trouble();
    return std::nullopt;
}

std::optional<SettingsTrouble> SettingsFile::load(std::vector<Setting>& settings) {
    database.beginWork();
    // Another program may have emptied the file since it was opened.
    if (auto found = database.run(createTable)) return found;
    if (auto found = database.run("BEGIN")) return found;
    auto found = loadRows(settings);
    // SQLite would give nothing before it had read all, and of a damaged file nothing at all.
    std::ranges::stable_sort(settings, {}, &Setting::age);
    if (!found) found = check();
    (void)database.run("ROLLBACK");
    if (!found) beginLog();
    return found;
}

/// Finds the damages that the rows do not show: those that hide rows, and a missing end, which
/// reads as NULs.
std::optional<SettingsTrouble> SettingsFile::check() {
    std::string verdict;
    if (auto found = database.ask("PRAGMA integrity_check(settings)", verdict)) return found;
    if (verdict != "ok") return SettingsTrouble{SettingsTrouble::Kind::Damaged, verdict};

    std::string mode;
    if (auto found = database.ask("PRAGMA journal_mode", mode)) return found;
    hasLog = mode == "wal";
    std::string pageSize;
    if (auto found = database.ask("PRAGMA page_size", pageSize)) return found;
    // A log is brought into the file while others read it.
    std::error_code missing;
    const bool isLogEmpty = std::filesystem::file_size(withEnding(realPath, "-wal"), missing) == 0;
    if ((!hasLog || isLogEmpty) && fileSize() % std::stol(pageSize) != 0) {
        return SettingsTrouble{SettingsTrouble::Kind::Damaged, "the file is cut off"};
    }
    return std::nullopt;
}

/// The size of the open file, whatever stands under its path by now.
std::int64_t SettingsFile::fileSize() const {
    sqlite3_file* opened = nullptr;
    sqlite3_file_control(database.handle(), "main", SQLITE_FCNTL_FILE_POINTER, &opened);
    sqlite3_int64 size = 0;
    if (opened != nullptr) opened->pMethods->xFileSize(opened, &size);
    return size;
}

std::optional<SettingsTrouble> SettingsFile::loadRows(std::vector<Setting>& settings) {
    BoundedDatabase::Statement rows;
    if (database.prepare(selectNumbered, rows)) {
        if (auto found = database.prepare(selectAll, rows)) return found;
    }
    BoundedDatabase::bindText(rows, 1, application);
    std::size_t bytes = 0;
    int result = database.step(rows);
    for (; result == SQLITE_ROW; result = database.step(rows)) {
        for (int column = 0; column < 3; ++column) {
            bytes += static_cast<std::size_t>(sqlite3_column_bytes(rows.get(), column));
        }
        if (bytes > mostBytes || settings.size() == mostRows) {
            settings.clear();
            return SettingsTrouble{SettingsTrouble::Kind::Endless, "it holds too much"};
        }
        settings.push_back({{BoundedDatabase::textOf(rows, 0), BoundedDatabase::textOf(rows, 1)},
                            BoundedDatabase::textOf(rows, 2),
                            sqlite3_column_int64(rows.get(), 3)});
    }
    if (result != SQLITE_DONE) return database.trouble();
    return std::nullopt;
}

void SettingsFile::beginLog() {
    isStill = false;
    std::string type;
    // A view or the like that somebody else made under this name stays as it is.
    isOurs = !database.ask(typeOfSettings, type) && type == "table";
    if (!hasLog && !isLogRefused && isOurs) {
        // No log begins while others are at work in the file; they are not waited for either.
        const BoundedDatabase::Hurry hurry(database);
        std::string mode;
        auto found = database.ask("PRAGMA journal_mode = WAL", mode);
        hasLog = mode == "wal";
        int version = 0;
        if (!found && hasLog) found = readVersion(version);
        // Where no index can be shared, SQLite finds out too late.
        if (found && found->kind == SettingsTrouble::Kind::Unusable) (void)abandonLog();
    }
    known = looks();
}

/// Has the file do without a log, and without what can be shared beside one.
std::optional<SettingsTrouble> SettingsFile::abandonLog() {
    hasLog = false;
    isLogRefused = true;
    if (auto found = connect()) return found;
    (void)database.run("PRAGMA locking_mode = EXCLUSIVE");
    (void)database.run("PRAGMA journal_mode = DELETE");
    (void)database.run("PRAGMA locking_mode = NORMAL");
    return database.prepare("PRAGMA data_version", versionQuery);
}

void SettingsFile::settle() {
    if (hasLog && !isReplaced()) emptyLog();
    pagesInLog = 0;
}

/// The log has no length afterwards, so it cannot be taken for one of another file.
void SettingsFile::emptyLog() {
    const BoundedDatabase::Hurry hurry(database);
    sqlite3_wal_checkpoint_v2(database.handle(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr,
                              nullptr);
    known = looks();
}

std::optional<SettingsTrouble> SettingsFile::write(const SettingChanges& changes,
                                                   Durability durability) {
    database.beginWork();
    // Without a log the weaker one might tear the file.
    const bool light = hasLog && durability == Durability::SurvivesKill;
    if (auto found =
            database.run(light ? "PRAGMA synchronous = NORMAL" : "PRAGMA synchronous = FULL")) {
        return found;
    }
    if (auto found = database.run("BEGIN IMMEDIATE")) return found;
    auto found = writeAll(changes);
    if (!found) found = database.run("COMMIT");
    if (found) {
        (void)database.run("ROLLBACK");
    } else if (pagesInLog > mostPagesInLog) {
        settle();
    }
    return found;
}

std::optional<SettingsTrouble> SettingsFile::writeAll(const SettingChanges& changes) {
    BoundedDatabase::Statement insert;
    if (auto found = database.prepare(insertValue, insert)) return found;
    BoundedDatabase::Statement remove;
    if (auto found = database.prepare(deleteValue, remove)) return found;
    for (const auto& [name, value] : changes) {
        const BoundedDatabase::Statement& statement = value ? insert : remove;
        BoundedDatabase::bindText(statement, 1, application);
        BoundedDatabase::bindText(statement, 2, name.first);
        BoundedDatabase::bindText(statement, 3, name.second);
        if (value) BoundedDatabase::bindText(statement, 4, *value);
        if (database.step(statement) != SQLITE_DONE) return database.trouble();
        sqlite3_reset(statement.get());
    }
    return std::nullopt;
}
