#include "stores/SettingsStore.h"

#include "tests/stores/StoreFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ForeignTable : public StoreFolder, public testing::WithParamInterface<const char*> {};

TEST_P(ForeignTable, IsToldOfAndTheProgramGoesOn) {
    other().run(GetParam());
    const std::string before = readFile(path);
    {
        SettingsStore store = open();
        EXPECT_EQ(option(store, "callby"), "");
        store.WriteSetting("Options", "callby", "fn");
        EXPECT_EQ(option(store, "callby"), "fn");
        store.WriteSetting("Options", "timestamp", "True");
        EXPECT_EQ(option(store, "callby"), "fn");
        EXPECT_EQ(option(store, "timestamp"), "True");
    }
    EXPECT_THAT(told, ElementsAre(HasSubstr(path.string())));
    EXPECT_TRUE(readFile(path) == before);
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, ForeignTable,
    testing::Values("CREATE TABLE settings(name TEXT)",
                    "CREATE TABLE settings(section TEXT, key TEXT, value TEXT)",
                    "CREATE TABLE settings(a TEXT, b TEXT, c TEXT, d TEXT)",
                    "CREATE VIEW settings AS SELECT 1 AS application, 2 AS section, 3 AS key, "
                    "4 AS value"));

class OtherTable : public StoreFolder, public testing::WithParamInterface<const char*> {};

TEST_P(OtherTable, ThatHasTheColumnsIsUsed) {
    other().run(GetParam());
    {
        SettingsStore store = open();
        store.WriteSetting("Options", "callby", "e");
        store.WriteSetting("Options", "callby", "fn");
        EXPECT_EQ(other().query("SELECT group_concat(application || section || key) FROM settings "
                                "WHERE value = 'fn'"),
                  "CobwaeveOptionscallby");
    }
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "fn");
    EXPECT_THAT(told, ElementsAre());
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, OtherTable,
    testing::Values("CREATE TABLE settings(value, key, section, application)",
                    "CREATE TABLE settings(application, section, key, value, note DEFAULT 'x', "
                    "PRIMARY KEY(application, section, key))"));

}  // namespace
