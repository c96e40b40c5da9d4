#include "stores/BoundedDatabase.h"

#include "base/codePage.h"
#include "platform/MachineFacts.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>

namespace {

/// What the file may make SQLite do: views, triggers and the like of others are computed too.
constexpr std::chrono::milliseconds longestWork{250};
/// How many steps SQLite does between two looks at the clock.
constexpr int stepsBetweenLooks = 1000;

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
    // Name, origin, kind, encoding, number of arguments.
    const auto take = [](void* database, int /*columns*/, char** values, char** /*names*/) {
        const auto fail = [](sqlite3_context* call, int /*count*/, sqlite3_value** /*arguments*/) {
            sqlite3_result_error_code(call, SQLITE_TOOBIG);
        };
        sqlite3_create_function_v2(static_cast<sqlite3*>(database), values[0],
                                   static_cast<int>(std::strtol(values[4], nullptr, 10)),
                                   SQLITE_UTF8, nullptr, fail, nullptr, nullptr, nullptr);
        return 0;
    };
    // Asked of a database of our own: the one that is opened may be damaged or locked.
    sqlite3* empty = nullptr;
    if (sqlite3_open(":memory:", &empty) == SQLITE_OK) {
        sqlite3_exec(empty, "PRAGMA function_list", take, handle, nullptr);
    }
    sqlite3_close(empty);
}

}  // namespace

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

void BoundedDatabase::CloseDatabase::operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }

void BoundedDatabase::FinalizeStatement::operator()(sqlite3_stmt* handle) const {
    sqlite3_finalize(handle);
}

BoundedDatabase::Trouble BoundedDatabase::open(const std::filesystem::path& path) {
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

/// Makes the connection wait and work as it should.
void BoundedDatabase::setUp() {
    sqlite3* const handle = database.get();
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, static_cast<int>(mostBytes));
    takeFunctionsAway(handle);
    sqlite3_busy_handler(
        handle,
        [](void* file, int /*times*/) {
            auto& self = *static_cast<BoundedDatabase*>(file);
            return !self.isHurried && self.patience.wait() ? 1 : 0;
        },
        this);
    sqlite3_progress_handler(
        handle, stepsBetweenLooks,
        [](void* file) {
            const auto& self = *static_cast<const BoundedDatabase*>(file);
            return self.spent + (processorTime() - self.callBegin) > longestWork ? 1 : 0;
        },
        this);
}

BoundedDatabase::Trouble BoundedDatabase::run(const char* sql) {
    const int result =
        measured([&] { return sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr); });
    if (result == SQLITE_OK) return std::nullopt;
    return trouble();
}

BoundedDatabase::Trouble BoundedDatabase::prepare(const char* sql, Statement& statement) {
    sqlite3_stmt* handle = nullptr;
    const int result =
        measured([&] { return sqlite3_prepare_v2(database.get(), sql, -1, &handle, nullptr); });
    statement.reset(handle);
    if (result == SQLITE_OK) return std::nullopt;
    return trouble();
}

int BoundedDatabase::step(const Statement& statement) {
    return measured([&] { return sqlite3_step(statement.get()); });
}

BoundedDatabase::Trouble BoundedDatabase::ask(const char* sql, std::string& answer) {
    Statement row;
    if (auto found = prepare(sql, row)) return found;
    if (step(row) != SQLITE_ROW) return trouble();
    answer = textOf(row, 0);
    return std::nullopt;
}

/// Makes a call of SQLite and counts the processor time that it takes. The time that a disk takes
/// to wake up does not count.
template <typename Call>
int BoundedDatabase::measured(Call&& call) {
    callBegin = processorTime();
    const int result = call();
    spent += processorTime() - callBegin;
    return result;
}

SettingsTrouble BoundedDatabase::trouble() const {
    return {kindOf(sqlite3_errcode(database.get())), sqlite3_errmsg(database.get())};
}

std::string BoundedDatabase::textOf(const Statement& row, int column) {
    // It is read as text, since another program may have made a file that keeps it as UTF-16.
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(row.get(), column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row.get(), column));
    if (text == nullptr) return {};
    const std::string_view utf8(text, size);
    std::string bytes = codePage::fromUtf8(utf8);
    // Another program may have written characters that the code page lacks. They are kept as UTF-8,
    // as those that are typed here.
    const bool fits = std::ranges::count(bytes, '?') == std::ranges::count(utf8, '?');
    return fits || !codePage::isUtf8(utf8) ? bytes : std::string(utf8);
}

void BoundedDatabase::bindText(const Statement& statement, int position, std::string_view bytes) {
    const std::string text = codePage::toUtf8(bytes);
    sqlite3_bind_text64(statement.get(), position, text.data(), text.size(), SQLITE_TRANSIENT,
                        SQLITE_UTF8);
}
