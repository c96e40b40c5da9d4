#include "stores/SettingsFile.h"

#include "base/codePage.h"

#include <sqlite3.h>

#include <string>
#include <string_view>
#include <system_error>

namespace {

/// Under this name, spelled so, the settings stand in the file of each user.
constexpr const char* application = "Cobwaeve";

constexpr const char* createTable =
    "CREATE TABLE IF NOT EXISTS settings(application TEXT, section TEXT, key TEXT, value TEXT, "
    "PRIMARY KEY(application, section, key))";

constexpr const char* insertValue =
    "INSERT OR REPLACE INTO settings(application, section, key, value) VALUES(?1, ?2, ?3, ?4)";

std::string textOf(sqlite3_stmt* row, int column) {
    // As text, since another program may have made a file that keeps it as UTF-16.
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, column));
    if (text == nullptr) return {};
    return codePage::fromUtf8({text, size});
}

int bindText(sqlite3_stmt* statement, int position, std::string_view bytes) {
    const std::string text = codePage::toUtf8(bytes);
    return sqlite3_bind_text64(statement, position, text.data(), text.size(), SQLITE_TRANSIENT,
                               SQLITE_UTF8);
}

SettingsTrouble::Kind kindOf(int result) {
    switch (result & 0xFF) {
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB: return SettingsTrouble::Kind::Damaged;
        case SQLITE_BUSY:
        case SQLITE_LOCKED: return SettingsTrouble::Kind::Locked;
        default: return SettingsTrouble::Kind::Unusable;
    }
}

/// Makes the folder, for nobody but its user: last words are private.
std::error_code makeFolder(const std::filesystem::path& folder) {
    std::error_code error;
    if (std::filesystem::create_directories(folder, error)) {
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    }
    return error;
}

}  // namespace

SettingsFile::SettingsFile() = default;
SettingsFile::~SettingsFile() = default;

void SettingsFile::CloseDatabase::operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }

void SettingsFile::FinalizeStatement::operator()(sqlite3_stmt* handle) const {
    sqlite3_finalize(handle);
}

std::optional<SettingsTrouble> SettingsFile::open(const std::filesystem::path& wanted) {
    close();
    path = wanted;
    if (const std::error_code error = makeFolder(path.parent_path())) {
        return SettingsTrouble{SettingsTrouble::Kind::Unusable, error.message()};
    }
    sqlite3* handle = nullptr;
    const auto name = path.u8string();
    const int result =
        sqlite3_open_v2(reinterpret_cast<const char*>(name.c_str()), &handle,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    database.reset(handle);
    setPatience(patience);
    auto found = result == SQLITE_OK ? prepareFile() : trouble();
    std::error_code error;
    realPath = std::filesystem::canonical(path, error);
    if (found) close();
    return found;
}

std::optional<SettingsTrouble> SettingsFile::prepareFile() {
    if (auto found = run("PRAGMA synchronous = FULL")) return found;
    if (auto found = run(createTable)) return found;
    return prepare("PRAGMA data_version", versionQuery);
}

void SettingsFile::close() {
    versionQuery.reset();
    database.reset();
}

bool SettingsFile::hasMoved() const {
    // SQLite knows the file behind a link, and not whether the link still leads there.
    int moved = 0;
    sqlite3_file_control(database.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    std::error_code error;
    return moved != 0 || std::filesystem::canonical(path, error) != realPath;
}

std::optional<SettingsTrouble> SettingsFile::readVersion(int& version) {
    const int result = sqlite3_step(versionQuery.get());
    if (result == SQLITE_ROW) version = sqlite3_column_int(versionQuery.get(), 0);
    sqlite3_reset(versionQuery.get());
    if (result != SQLITE_ROW) return trouble();
    return std::nullopt;
}

std::optional<SettingsTrouble> SettingsFile::load(Settings& settings) {
    // Another program may have emptied the file since it was opened.
    if (auto found = run(createTable)) return found;
    if (auto found = run("BEGIN")) return found;
    auto found = loadRows(settings);
    if (!found) found = check();
    (void)run("ROLLBACK");
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
    changesBeside = mode == "wal";
    std::string pageSize;
    if (auto found = ask("PRAGMA page_size", pageSize)) return found;
    // A log is brought into the file while others read it.
    if (!changesBeside && fileSize() % std::stol(pageSize) != 0) {
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

std::optional<SettingsTrouble> SettingsFile::loadRows(Settings& settings) {
    Statement rows;
    if (auto found =
            prepare("SELECT section, key, value FROM settings WHERE application = ?1", rows)) {
        return found;
    }
    bindText(rows.get(), 1, application);
    int result = sqlite3_step(rows.get());
    for (; result == SQLITE_ROW; result = sqlite3_step(rows.get())) {
        settings[{textOf(rows.get(), 0), textOf(rows.get(), 1)}] = textOf(rows.get(), 2);
    }
    if (result != SQLITE_DONE) return trouble();
    return std::nullopt;
}

std::optional<SettingsTrouble> SettingsFile::write(const Settings& changes) {
    if (auto found = run("BEGIN IMMEDIATE")) return found;
    auto found = writeAll(changes);
    if (!found) found = run("COMMIT");
    if (found) (void)run("ROLLBACK");
    return found;
}

std::optional<SettingsTrouble> SettingsFile::writeAll(const Settings& changes) {
    Statement insert;
    if (auto found = prepare(insertValue, insert)) return found;
    bindText(insert.get(), 1, application);
    for (const auto& [name, value] : changes) {
        bindText(insert.get(), 2, name.first);
        bindText(insert.get(), 3, name.second);
        bindText(insert.get(), 4, value);
        if (sqlite3_step(insert.get()) != SQLITE_DONE) return trouble();
        sqlite3_reset(insert.get());
    }
    return std::nullopt;
}

void SettingsFile::setPatience(std::chrono::milliseconds time) {
    patience = time;
    if (isOpen()) sqlite3_busy_timeout(database.get(), static_cast<int>(patience.count()));
}

std::optional<SettingsTrouble> SettingsFile::run(const char* sql) {
    if (sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK) {
        return std::nullopt;
    }
    return trouble();
}

std::optional<SettingsTrouble> SettingsFile::prepare(const char* sql, Statement& statement) {
    sqlite3_stmt* handle = nullptr;
    const int result = sqlite3_prepare_v2(database.get(), sql, -1, &handle, nullptr);
    statement.reset(handle);
    if (result == SQLITE_OK) return std::nullopt;
    return trouble();
}

std::optional<SettingsTrouble> SettingsFile::ask(const char* sql, std::string& answer) {
    Statement row;
    if (auto found = prepare(sql, row)) return found;
    if (sqlite3_step(row.get()) != SQLITE_ROW) return trouble();
    answer = textOf(row.get(), 0);
    return std::nullopt;
}

SettingsTrouble SettingsFile::trouble() const {
    return {kindOf(sqlite3_errcode(database.get())), sqlite3_errmsg(database.get())};
}
