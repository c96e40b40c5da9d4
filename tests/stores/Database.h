#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

/// The settings file as another program has it. What goes wrong is thrown.
class Database {
public:
    explicit Database(const std::filesystem::path& path) {
        sqlite3* handle = nullptr;
        const int result = sqlite3_open(path.string().c_str(), &handle);
        database.reset(handle);
        check(result);
        run("PRAGMA busy_timeout = 0");
    }

    /// From now on changes go into a log, and the end of this connection is like that of a process
    /// that is killed: the log stays.
    void leaveLog() const {
        run("PRAGMA journal_mode = WAL");
        int keeps = 1;
        check(sqlite3_file_control(database.get(), "main", SQLITE_FCNTL_PERSIST_WAL, &keeps));
        check(sqlite3_db_config(database.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr));
    }

    void run(const std::string& sql) const {
        check(sqlite3_exec(database.get(), sql.c_str(), nullptr, nullptr, nullptr));
    }

    /// The bytes of the first column of the first row; nothing when there is no row.
    [[nodiscard]] std::optional<std::string> query(const std::string& sql) const {
        const Statement statement = prepare(sql);
        return firstOf(statement);
    }

    void makeTable() const {
        run("CREATE TABLE IF NOT EXISTS settings(application TEXT, section TEXT, key TEXT, "
            "value TEXT, PRIMARY KEY(application, section, key))");
    }

    void set(std::string_view key, std::string_view value,
             std::string_view application = "Cobwaeve",
             std::string_view section = "Options") const {
        makeTable();
        const Statement statement = prepare(
            "INSERT OR REPLACE INTO settings(application, section, key, value) VALUES(?,?,?,?)");
        bind(statement, 1, application);
        bind(statement, 2, section);
        bind(statement, 3, key);
        bind(statement, 4, value);
        (void)firstOf(statement);
    }

    [[nodiscard]] std::optional<std::string> get(std::string_view key,
                                                 std::string_view application = "Cobwaeve",
                                                 std::string_view section = "Options") const {
        const Statement statement =
            prepare("SELECT value FROM settings WHERE application = ? AND section = ? AND key = ?");
        bind(statement, 1, application);
        bind(statement, 2, section);
        bind(statement, 3, key);
        return firstOf(statement);
    }

private:
    struct Close {
        void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
        void operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Close>;

    void check(int result) const {
        if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database.get()));
    }
    [[nodiscard]] Statement prepare(const std::string& sql) const {
        sqlite3_stmt* handle = nullptr;
        check(sqlite3_prepare_v2(database.get(), sql.c_str(), -1, &handle, nullptr));
        return Statement(handle);
    }
    void bind(const Statement& statement, int position, std::string_view text) const {
        check(sqlite3_bind_text(statement.get(), position, text.data(),
                                static_cast<int>(text.size()), SQLITE_TRANSIENT));
    }
    [[nodiscard]] std::optional<std::string> firstOf(const Statement& statement) const {
        const int result = sqlite3_step(statement.get());
        if (result == SQLITE_DONE) return std::nullopt;
        if (result != SQLITE_ROW) check(result);
        const void* const bytes = sqlite3_column_blob(statement.get(), 0);
        const int size = sqlite3_column_bytes(statement.get(), 0);
        if (bytes == nullptr) return "";
        return std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
    }

    std::unique_ptr<sqlite3, Close> database;
};
