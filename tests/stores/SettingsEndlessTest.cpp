#include "platform/MachineFacts.h"
#include "tests/stores/StoreFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using namespace std::chrono_literals;

/// A file that makes SQLite compute for ever.
class EndlessFile : public StoreFolder, public testing::WithParamInterface<const char*> {
protected:
    static inline std::chrono::steady_clock::time_point now;

    EndlessFile() { now = {}; }

    [[nodiscard]] SettingsStore open() {
        return {path, [this](std::string_view text) { reported.emplace_back(text); },
                [] { return now; }};
    }
    /// Processor time, so that a busy machine makes no difference.
    template <typename Step>
    static double secondsOf(Step&& step) {
        const auto begin = processorTime();
        step();
        return std::chrono::duration<double>(processorTime() - begin).count();
    }
};

TEST_P(EndlessFile, CostsAQuarterOfASecondOnceInAWhile) {
    other().run(GetParam());
    {
        SettingsStore store = open();
        const double first = secondsOf([&] {
            store.WriteSetting("Options", "callby", "fn");
            EXPECT_EQ(option(store, "callby"), "fn");
        });
        EXPECT_LT(first, 1.5);
        const double others = secondsOf([&] {
            for (int count = 0; count < 20; ++count) {
                store.WriteSetting("Options", "callby", std::to_string(count));
                EXPECT_EQ(option(store, "callby"), std::to_string(count));
            }
        });
        EXPECT_LT(others, 0.2);
        now += 10s;
        EXPECT_LT(secondsOf([&] { store.WriteSetting("Options", "callby", "e"); }), 1.5);
        EXPECT_THAT(reported, ElementsAre(HasSubstr(path.string())));
    }
    EXPECT_THAT(reported, ElementsAre(HasSubstr("too much, or take too long")));
}

TEST_P(EndlessFile, IsDoneWithoutOnceItIsOutOfTheWay) {
    other().run(GetParam());
    SettingsStore store = open();
    store.WriteSetting("Options", "callby", "fn");
    std::filesystem::rename(path, folder / "elsewhere.db");
    store.WriteSetting("Options", "timestamp", "True");
    EXPECT_EQ(option(store, "callby"), "fn");
    now += 10s;
    store.WriteSetting("Options", "constants", "False");
    EXPECT_EQ(other().get("callby"), "fn");
    EXPECT_EQ(other().get("timestamp"), "True");
    EXPECT_EQ(other().get("constants"), "False");
}

constexpr const char* endlessView =
    "CREATE VIEW settings AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
    "SELECT 'Cobwaeve' AS application, 'Options' AS section, 'none' AS key, 'x' AS value FROM n "
    "WHERE i < 0";
constexpr const char* endlessRows =
    "CREATE VIEW settings AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
    "SELECT 'Cobwaeve' AS application, 'lastthingusersaid' AS section, i AS key, 'x' AS value "
    "FROM n";
constexpr const char* endlessTrigger =
    "CREATE TABLE settings(application TEXT, section TEXT, key TEXT, value TEXT, "
    "PRIMARY KEY(application, section, key)); CREATE TABLE numbers(i); "
    "CREATE TRIGGER fill AFTER INSERT ON settings BEGIN INSERT INTO numbers SELECT i FROM "
    "(WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n) "
    "WHERE i < 0; END";

/// One value, and more in it than memory is for.
constexpr const char* hugeValue =
    "CREATE VIEW settings AS WITH RECURSIVE n(v) AS (SELECT 'y' UNION ALL SELECT v || v FROM n) "
    "SELECT 'Cobwaeve' AS application, 'Options' AS section, 'none' AS key, v AS value FROM n "
    "WHERE v < 'x'";

/// One call of a function, which SQLite cannot be stopped in.
constexpr const char* slowView =
    "CREATE VIEW settings AS SELECT 'Cobwaeve' AS application, 'Options' AS section, "
    "'none' AS key, replace(hex(zeroblob(200000)), hex(zeroblob(100000)) || '1', '') AS value";
constexpr const char* slowColumn =
    "CREATE TABLE settings(application TEXT, section TEXT, key TEXT, value TEXT, "
    "more DEFAULT (instr(hex(zeroblob(200000)), hex(zeroblob(100000)) || '1')), "
    "PRIMARY KEY(application, section, key))";

INSTANTIATE_TEST_SUITE_P(Files, EndlessFile,
                         testing::Values(endlessView, endlessRows, endlessTrigger, hugeValue,
                                         slowView, slowColumn));

}  // namespace
