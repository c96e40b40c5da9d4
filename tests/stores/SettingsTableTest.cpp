#include "stores/SettingsStore.h"

#include "tests/stores/StoreFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class TableOfOthers : public AnyFolder {};

constexpr const char* uselessTables[] = {
    "CREATE TABLE settings(name TEXT)",
    "CREATE TABLE settings(section TEXT, key TEXT, value TEXT)",
    "CREATE TABLE settings(a TEXT, b TEXT, c TEXT, d TEXT)",
    "CREATE VIEW settings AS SELECT 1 AS application, 2 AS section, 3 AS key, 4 AS value",
};

TEST_P(TableOfOthers, IsReportedAndTheProgramGoesOn) {
    for (const char* const table : uselessTables) {
        SCOPED_TRACE(table);
        other().run(table);
        const std::string before = readFile(path);
        reported.clear();
        {
            SettingsStore store = open();
            EXPECT_EQ(option(store, "callby"), "");
            store.WriteSetting("Options", "callby", "fn");
            EXPECT_EQ(option(store, "callby"), "fn");
            store.WriteSetting("Options", "timestamp", "True");
            EXPECT_EQ(option(store, "callby"), "fn");
            EXPECT_EQ(option(store, "timestamp"), "True");
        }
        EXPECT_THAT(reported, ElementsAre(HasSubstr(path.string())));
        EXPECT_TRUE(readFile(path) == before);
        std::filesystem::remove_all(folder);
    }
}

constexpr const char* usefulTables[] = {
    "CREATE TABLE settings(value, key, section, application)",
    "CREATE TABLE settings(application, section, key, value, note DEFAULT 'x', "
    "PRIMARY KEY(application, section, key))",
    "CREATE TABLE settings(application TEXT, section TEXT, key TEXT, value TEXT, "
    "PRIMARY KEY(application, section, key)) WITHOUT ROWID",
};

TEST_P(TableOfOthers, IsUsedWhereItHasTheColumns) {
    for (const char* const table : usefulTables) {
        SCOPED_TRACE(table);
        other().run(table);
        {
            SettingsStore store = open();
            store.WriteSetting("Options", "callby", "e");
            store.WriteSetting("Options", "callby", "fn");
            EXPECT_EQ(other().query("SELECT group_concat(application || section || key) FROM "
                                    "settings WHERE value = 'fn'"),
                      "CobwaeveOptionscallby");
        }
        {
            SettingsStore store = open();
            EXPECT_EQ(option(store, "callby"), "fn");
        }
        EXPECT_THAT(reported, ElementsAre());
        std::filesystem::remove_all(folder);
    }
}

INSTANTIATE_TEST_SUITE_P(Folders, TableOfOthers, anyFolder, folderName);

}  // namespace
