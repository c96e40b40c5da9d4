#include "stores/SettingsFile.h"

#include "base/codePage.h"
#include "platform/MachineFacts.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
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

/// What the file may make SQLite do: views, triggers and the like of others are computed too.
constexpr std::chrono::milliseconds longestWork{250};
/// How many steps SQLite does between two looks at the clock.
constexpr int stepsBetweenLooks = 1000;
/// All that is read, and each value. It is twice what the program ever writes.
constexpr std::size_t mostBytes = std::size_t{32} << 20U;
constexpr std::size_t mostRows = 65536;

/// From so many pages on the log is not left to grow.
constexpr int mostPagesInLog = 1000;

std::string textOf(sqlite3_stmt* row, int column) {
    // As text, since another program may have made a file that keeps it as UTF-16.
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, column));
    if (text == nullptr) return {};
    return codePage::fromUtf8({text, size});
}

void bindText(sqlite3_stmt* statement, int position, std::string_view bytes) {
    const std::string text = codePage::toUtf8(bytes);
    sqlite3_bind_text64(statement, position, text.data(), text.size(), SQLITE_TRANSIENT,
                        SQLITE_UTF8);
}

SettingsTrouble::Kind kindOf(int result) {
    switch (result & 0xFF) {
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB: return SettingsTrouble::Kind::Damaged;
        case SQLITE_BUSY:
        case SQLITE_LOCKED: return SettingsTrouble::Kind::Locked;
        case SQLITE_TOOBIG:
        case SQLITE_INTERRUPT: return SettingsTrouble::Kind::Endless;
        default: return SettingsTrouble::Kind::Unusable;
    }
}

/// Has every function of SQL fail. SQLite computes each call in one step, however long that takes:
/// some cost the square of what they are given, and the clock is looked at between steps only.
void takeFunctionsAway(sqlite3* handle) {
    const auto take = [](void* database, int /*columns*/, char** values, char** /*names*/) {
        const auto fail = [](sqlite3_context* call, int /*count*/, sqlite3_value** /*arguments*/) {
            sqlite3_result_error_code(call, SQLITE_TOOBIG);
        };
        sqlite3_create_function_v2(static_cast<sqlite3*>(database), values[0],
                                   static_cast<int>(std::strtol(values[1], nullptr, 10)),
                                   SQLITE_UTF8, nullptr, fail, nullptr, nullptr, nullptr);
        return 0;
    };
    // Asked of a database of our own: the one that is opened may be damaged or locked.
    sqlite3* empty = nullptr;
    if (sqlite3_open(":memory:", &empty) == SQLITE_OK) {
        sqlite3_exec(empty, "SELECT name, narg FROM pragma_function_list", take, handle, nullptr);
    }
    sqlite3_close(empty);
}

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

bool LockPatience::wait() {
    constexpr std::chrono::milliseconds pause{5};
    if (now() >= windowEnd) renew();
    if (left < pause) return false;
    left -= pause;
    sqlite3_sleep(static_cast<int>(pause.count()));
    return true;
}

void LockPatience::renew() {
    windowEnd = now() + window;
    left = most;
}

SettingsFile::SettingsFile(std::filesystem::path path, LockPatience::Now now)
    : patience(now), path(std::move(path)), stamp(this->path), logStamp(this->path) {}

SettingsFile::~SettingsFile() {
    // So whoever copies the file, or takes it to a place without logs, has all of it.
    if (isOpen() && hasLog && isOurs && !isReplaced()) {
        isHurried = true;
        (void)run("PRAGMA journal_mode = DELETE");
    }
    close();
}

void SettingsFile::CloseDatabase::operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }

void SettingsFile::FinalizeStatement::operator()(sqlite3_stmt* handle) const {
    sqlite3_finalize(handle);
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
    if (!found) found = prepareFile();
    if (found) close();
    return found;
}

std::optional<SettingsTrouble> SettingsFile::connect() {
    versionQuery.reset();
    sqlite3* handle = nullptr;
    const auto name = path.u8string();
    const int result =
        sqlite3_open_v2(reinterpret_cast<const char*>(name.c_str()), &handle,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    database.reset(handle);
    if (result != SQLITE_OK) return trouble();
    setUp();
    return std::nullopt;
}

std::optional<SettingsTrouble> SettingsFile::prepareFile() {
    // Before anything is in it.
    makePrivate(realPath);
    spent = {};
    auto found = run(createTable);
    if (found && found->kind == SettingsTrouble::Kind::Unusable) {
        // A run that was killed may have left a log in a folder that allows none any more.
        if (auto lost = abandonLog()) return lost;
        found = run(createTable);
    }
    if (found) return found;
    return prepare("PRAGMA data_version", versionQuery);
}

/// Makes the connection wait, work and write its log as it should.
void SettingsFile::setUp() {
    sqlite3* const handle = database.get();
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, static_cast<int>(mostBytes));
    takeFunctionsAway(handle);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    sqlite3_busy_handler(
        handle,
        [](void* file, int /*times*/) {
            auto& self = *static_cast<SettingsFile*>(file);
            return !self.isHurried && self.patience.wait() ? 1 : 0;
        },
        this);
    sqlite3_progress_handler(
        handle, stepsBetweenLooks,
        [](void* file) {
            const auto& self = *static_cast<const SettingsFile*>(file);
            return self.spent + (processorTime() - self.callBegin) > longestWork ? 1 : 0;
        },
        this);
    sqlite3_wal_hook(
        handle,
        [](void* file, sqlite3*, const char*, int pages) {
            static_cast<SettingsFile*>(file)->pagesInLog = pages;
            return SQLITE_OK;
        },
        this);
}

void SettingsFile::close() {
    // The log of a file that went elsewhere would be taken for one of the file that takes its name.
    if (isOpen() && hasLog && isElsewhere()) emptyLog();
    versionQuery.reset();
    database.reset();
    hasLog = false;
    pagesInLog = 0;
}

bool SettingsFile::mayHaveChanged() {
    const bool inFile = stamp.mayHaveChanged();
    const bool inLog = hasLog && logStamp.mayHaveChanged();
    return inFile || inLog;
}

bool SettingsFile::isReplaced() const {
    // With a log, SQLite writes to the file itself when the log is brought into it, and not else.
    return isElsewhere() || (hasLog && looks() != known);
}

bool SettingsFile::isElsewhere() const {
    // SQLite knows the file behind a link, and not whether the link still leads there.
    int moved = 0;
    sqlite3_file_control(database.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
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
    const int result = step(versionQuery);
    if (result == SQLITE_ROW) version = sqlite3_column_int(versionQuery.get(), 0);
    sqlite3_reset(versionQuery.get());
    if (result != SQLITE_ROW) return trouble();
    return std::nullopt;
}

std::optional<SettingsTrouble> SettingsFile::load(std::vector<Setting>& settings) {
    spent = {};
    // Another program may have emptied the file since it was opened.
    if (auto found = run(createTable)) return found;
    if (auto found = run("BEGIN")) return found;
    auto found = loadRows(settings);
    // SQLite would give nothing before it had read all, and of a damaged file nothing at all.
    std::ranges::stable_sort(settings, {}, &Setting::age);
    if (!found) found = check();
    (void)run("ROLLBACK");
    if (!found) beginLog();
    return found;
}

/// Finds the damages that the rows do not show: those that hide rows, and a missing end, which
/// reads as NULs.
std::optional<SettingsTrouble> SettingsFile::check() {
    std::string verdict;
    if (auto found = ask("PRAGMA integrity_check(settings)", verdict)) return found;
    if (verdict != "ok") return SettingsTrouble{SettingsTrouble::Kind::Damaged, verdict};

    std::string mode;
    if (auto found = ask("PRAGMA journal_mode", mode)) return found;
    hasLog = mode == "wal";
    std::string pageSize;
    if (auto found = ask("PRAGMA page_size", pageSize)) return found;
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
    sqlite3_file_control(database.get(), "main", SQLITE_FCNTL_FILE_POINTER, &opened);
    sqlite3_int64 size = 0;
    if (opened != nullptr) opened->pMethods->xFileSize(opened, &size);
    return size;
}

std::optional<SettingsTrouble> SettingsFile::loadRows(std::vector<Setting>& settings) {
    Statement rows;
    if (prepare(selectNumbered, rows)) {
        if (auto found = prepare(selectAll, rows)) return found;
    }
    bindText(rows.get(), 1, application);
    std::size_t bytes = 0;
    int result = step(rows);
    for (; result == SQLITE_ROW; result = step(rows)) {
        for (int column = 0; column < 3; ++column) {
            bytes += static_cast<std::size_t>(sqlite3_column_bytes(rows.get(), column));
        }
        if (bytes > mostBytes || settings.size() == mostRows) {
            settings.clear();
            return SettingsTrouble{SettingsTrouble::Kind::Endless, "it holds too much"};
        }
        settings.push_back({{textOf(rows.get(), 0), textOf(rows.get(), 1)},
                            textOf(rows.get(), 2),
                            sqlite3_column_int64(rows.get(), 3)});
    }
    if (result != SQLITE_DONE) return trouble();
    return std::nullopt;
}

void SettingsFile::beginLog() {
    std::string type;
    // A view or the like that somebody else made under this name stays as it is.
    isOurs = !ask(typeOfSettings, type) && type == "table";
    if (!hasLog && !isLogRefused && isOurs) {
        // Not while others are at work in the file; they are not waited for either.
        isHurried = true;
        std::string mode;
        auto found = ask("PRAGMA journal_mode = WAL", mode);
        hasLog = mode == "wal";
        int version = 0;
        if (!found && hasLog) found = readVersion(version);
        // Where no index can be shared, SQLite finds out too late.
        if (found && found->kind == SettingsTrouble::Kind::Unusable) (void)abandonLog();
        isHurried = false;
    }
    known = looks();
}

/// Has the file do without a log, and without what can be shared beside one.
std::optional<SettingsTrouble> SettingsFile::abandonLog() {
    hasLog = false;
    isLogRefused = true;
    if (auto found = connect()) return found;
    (void)run("PRAGMA locking_mode = EXCLUSIVE");
    (void)run("PRAGMA journal_mode = DELETE");
    (void)run("PRAGMA locking_mode = NORMAL");
    return prepare("PRAGMA data_version", versionQuery);
}

void SettingsFile::settle() {
    if (hasLog && !isReplaced()) emptyLog();
    pagesInLog = 0;
}

/// The log has no length afterwards, so it cannot be taken for one of another file.
void SettingsFile::emptyLog() {
    isHurried = true;
    sqlite3_wal_checkpoint_v2(database.get(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    isHurried = false;
    known = looks();
}

std::optional<SettingsTrouble> SettingsFile::write(const SettingChanges& changes,
                                                   Durability durability) {
    spent = {};
    // Without a log the weaker one might tear the file.
    const bool light = hasLog && durability == Durability::SurvivesKill;
    if (auto found = run(light ? "PRAGMA synchronous = NORMAL" : "PRAGMA synchronous = FULL")) {
        return found;
    }
    if (auto found = run("BEGIN IMMEDIATE")) return found;
    auto found = writeAll(changes);
    if (!found) found = run("COMMIT");
    if (found) {
        (void)run("ROLLBACK");
    } else if (pagesInLog > mostPagesInLog) {
        settle();
    }
    return found;
}

std::optional<SettingsTrouble> SettingsFile::writeAll(const SettingChanges& changes) {
    Statement insert;
    if (auto found = prepare(insertValue, insert)) return found;
    Statement remove;
    if (auto found = prepare(deleteValue, remove)) return found;
    for (const auto& [name, value] : changes) {
        const Statement& statement = value ? insert : remove;
        bindText(statement.get(), 1, application);
        bindText(statement.get(), 2, name.first);
        bindText(statement.get(), 3, name.second);
        if (value) bindText(statement.get(), 4, *value);
        if (step(statement) != SQLITE_DONE) return trouble();
        sqlite3_reset(statement.get());
    }
    return std::nullopt;
}

std::optional<SettingsTrouble> SettingsFile::run(const char* sql) {
    const int result =
        measured([&] { return sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr); });
    if (result == SQLITE_OK) return std::nullopt;
    return trouble();
}

std::optional<SettingsTrouble> SettingsFile::prepare(const char* sql, Statement& statement) {
    sqlite3_stmt* handle = nullptr;
    const int result =
        measured([&] { return sqlite3_prepare_v2(database.get(), sql, -1, &handle, nullptr); });
    statement.reset(handle);
    if (result == SQLITE_OK) return std::nullopt;
    return trouble();
}

int SettingsFile::step(const Statement& statement) {
    return measured([&] { return sqlite3_step(statement.get()); });
}

std::optional<SettingsTrouble> SettingsFile::ask(const char* sql, std::string& answer) {
    Statement row;
    if (auto found = prepare(sql, row)) return found;
    if (step(row) != SQLITE_ROW) return trouble();
    answer = textOf(row.get(), 0);
    return std::nullopt;
}

/// Makes a call of SQLite and counts the processor time that it takes. The time that a disk takes
/// to wake up does not count.
template <typename Call>
int SettingsFile::measured(Call&& call) {
    callBegin = processorTime();
    const int result = call();
    spent += processorTime() - callBegin;
    return result;
}

SettingsTrouble SettingsFile::trouble() const {
    return {kindOf(sqlite3_errcode(database.get())), sqlite3_errmsg(database.get())};
}
