#pragma once

#include "base/Event.h"
#include "tests/stores/StoreFolder.h"

#include <gmock/gmock.h>

#include <chrono>
#include <optional>

/// The waiting of all connections of this process passes at once, and the test may act while it
/// goes on. So locks are as long as they are said to be, on the slowest machine too.
class Waiting {
public:
    Waiting() {
        passed = std::chrono::microseconds{0};
        now = {};
        meanwhile = {};
        system->xSleep = [](sqlite3_vfs*, int time) {
            passed += std::chrono::microseconds(time);
            now += std::chrono::microseconds(time);
            // It may set another one.
            const Event<> step = meanwhile;
            step();
            return time;
        };
    }
    ~Waiting() { system->xSleep = realSleep; }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

    static inline std::chrono::microseconds passed{};
    static inline std::chrono::steady_clock::time_point now;
    static inline Event<> meanwhile;

private:
    sqlite3_vfs* system = sqlite3_vfs_find(nullptr);
    int (*realSleep)(sqlite3_vfs*, int) = system->xSleep;
};

/// A file that another program may lock.
class LockedFile : public AnyFolder {
protected:
    Waiting waiting;
    std::optional<Database> program;

    [[nodiscard]] SettingsStore open() {
        return {path, [this](std::string_view text) { reported.emplace_back(text); },
                [] { return Waiting::now; }};
    }

    LockedFile() {
        other().set("callby", "e");
        age();
        program.emplace(path);
    }

    void lock() const { program->run("BEGIN EXCLUSIVE"); }
    void unlock() const { program->run("COMMIT"); }
    /// Whether a program that writes keeps others from reading, once the store has the file.
    [[nodiscard]] static bool keepsFromReading() { return !hasLogs(); }
    /// The lock goes after so much waiting.
    void unlockAfter(std::chrono::milliseconds time) const {
        Waiting::meanwhile = [this, time] {
            if (Waiting::passed < time) return;
            unlock();
            Waiting::meanwhile = {};
        };
    }
    [[nodiscard]] auto namesTheFileOnce() const {
        return testing::ElementsAre(testing::HasSubstr(path.string()));
    }
};
