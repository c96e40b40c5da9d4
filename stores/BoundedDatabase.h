#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// Why the file of the settings cannot be used as asked.
struct SettingsTrouble {
    /// The kind of trouble.
    enum class Kind {
        Damaged,   ///< its content makes no sense
        Locked,    ///< another program keeps it for itself
        Endless,   ///< it holds too much, or takes too long to compute, or might
        Unusable,  ///< it cannot be opened, read or written
    };
    Kind kind;
    std::string reason;
};

/// How long other programs that lock the file are waited for.
class LockPatience {
public:
    /// A clock.
    using Now = std::chrono::steady_clock::time_point (*)();

    /// The longest wait in all, within each `window` of the time that `now` gives. It is longer
    /// than an ordinary commit takes, and short enough not to be noticed in a conversation.
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

/// An SQLite file that anybody may have made, views, triggers and all: what it can make SQLite
/// compute is bounded in time and in memory, it can call no function of SQL, and programs that lock
/// it are waited for as long as there is patience. Everything returns what went wrong, or nothing
/// when it went well.
class BoundedDatabase {
    struct FinalizeStatement {
        void operator()(sqlite3_stmt* handle) const;
    };

public:
    /// The longest value that SQLite reads or makes.
    static constexpr std::size_t mostBytes = std::size_t{32} << 20U;

    /// What went wrong; nothing where all went well.
    using Trouble = std::optional<SettingsTrouble>;
    /// A statement has to end before the file is opened again or closed.
    using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

    /// The file is closed at first; `now` gives the time that patience counts in.
    explicit BoundedDatabase(LockPatience::Now now) : patience(now) {}
    BoundedDatabase(const BoundedDatabase&) = delete;
    BoundedDatabase& operator=(const BoundedDatabase&) = delete;

    /// Opens the file, which is made when there is none.
    [[nodiscard]] Trouble open(const std::filesystem::path& path);
    /// Lets go of the file.
    void close() { database.reset(); }
    /// True also after an opening that failed, so that `trouble` can say why.
    [[nodiscard]] bool isOpen() const { return database != nullptr; }
    /// SQLite's handle, for calls that are not among these; null when the file is closed.
    [[nodiscard]] sqlite3* handle() const { return database.get(); }

    /// Counts the processor's time anew: SQLite has a quarter of a second until this is called
    /// again.
    void beginWork() { spent = {}; }

    /// Does all that `sql` says.
    [[nodiscard]] Trouble run(const char* sql);
    /// Makes `statement` what `sql` says, for `step`.
    [[nodiscard]] Trouble prepare(const char* sql, Statement& statement);
    /// What SQLite answers: whether there is a row, or none any more, or trouble.
    [[nodiscard]] int step(const Statement& statement);
    /// The first text that `sql` gives.
    [[nodiscard]] Trouble ask(const char* sql, std::string& answer);
    /// What the call that has just failed came to.
    [[nodiscard]] SettingsTrouble trouble() const;

    /// The text in a column: one byte a character, whatever the file has it in; UTF-8 where the
    /// code page lacks one.
    [[nodiscard]] static std::string textOf(const Statement& row, int column);
    /// Has the parameter of that number, from 1, stand for `bytes`.
    static void bindText(const Statement& statement, int position, std::string_view bytes);

    /// While a `Hurry` lives, locks are not waited for.
    class Hurry {
    public:
        /// `database` outlives it.
        explicit Hurry(BoundedDatabase& database) : database(database) {
            database.isHurried = true;
        }
        ~Hurry() { database.isHurried = false; }
        Hurry(const Hurry&) = delete;
        Hurry& operator=(const Hurry&) = delete;

    private:
        BoundedDatabase& database;
    };

    /// How long programs that lock the file are still waited for.
    LockPatience patience;

private:
    struct CloseDatabase {
        void operator()(sqlite3* handle) const;
    };

    void setUp();
    template <typename Call>
    int measured(Call&& call);

    std::unique_ptr<sqlite3, CloseDatabase> database;
    bool isHurried = false;
    /// Processor time that SQLite has had for what was last asked of the file, but for the call
    /// that it is in.
    std::chrono::nanoseconds spent{0};
    std::chrono::nanoseconds callBegin{0};
};
