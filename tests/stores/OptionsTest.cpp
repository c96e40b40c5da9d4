#include "stores/options.h"

#include "tests/stores/StoreFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

constexpr const options::Switch* trueFalseSwitches[] = {
    &options::useristyping,     &options::constants,       &options::preventtypo,
    &options::timestamp,        &options::alertopenwindow, &options::alertjoinwindow,
    &options::alertclosewindow, &options::alertoffline,    &options::lastthing,
};
constexpr const options::Switch* oneZeroSwitches[] = {
    &options::progress,
    &options::trayicon,
    &options::messengerwindow,
    &options::windowrename,
};
constexpr const options::Text* texts[] = {
    &options::initialStatus, &options::tsprefix, &options::tspostfix,
    &options::tscolor,       &options::callby,   &options::windowrenamecaption,
};

class OptionsTest : public StoreFolder {
protected:
    SettingsStore store = open();

    void expectWords(const options::Switch& row, std::string_view on, std::string_view off) {
        set(store, row, true);
        EXPECT_EQ(option(store, row.key), on);
        EXPECT_TRUE(isOn(store, row) && saysOn(store, row)) << row.key;
        set(store, row, false);
        EXPECT_EQ(option(store, row.key), off);
        EXPECT_FALSE(isOn(store, row) || saysOn(store, row)) << row.key;
        EXPECT_TRUE(isSet(store, row)) << row.key;
    }

    /// What a switch makes of a text that is neither of its words, or is none at all.
    void expectNeither(const options::Switch& row, std::string_view text) {
        store.WriteSetting("Options", row.key, text);
        const bool isConstants = row.key == "constants";
        EXPECT_EQ(isOn(store, row), isConstants) << row.key << ' ' << text;
        EXPECT_FALSE(saysOn(store, row)) << row.key << ' ' << text;
        EXPECT_EQ(isSet(store, row), !text.empty()) << row.key << ' ' << text;
    }
};

TEST_F(OptionsTest, SwitchesHaveTheirOwnWords) {
    for (const options::Switch* const row : trueFalseSwitches)
        expectWords(*row, "True", "False");
    for (const options::Switch* const row : oneZeroSwitches)
        expectWords(*row, "1", "0");
}

TEST_F(OptionsTest, OnlyTheConstantsAreOnByAnythingButTheirWordForOff) {
    for (const std::string_view text : {"", "true", "true ", "banana", "2", "TRUE", "false"}) {
        for (const options::Switch* const row : trueFalseSwitches)
            expectNeither(*row, text);
        for (const options::Switch* const row : oneZeroSwitches)
            expectNeither(*row, text);
    }
    for (const options::Switch* const row : oneZeroSwitches)
        expectNeither(*row, "True");
}

TEST_F(OptionsTest, TextsThatAreNotSetCountAsWhatTheyAreAtFirst) {
    EXPECT_EQ(textOf(store, options::initialStatus), "Online");
    EXPECT_EQ(textOf(store, options::tsprefix), "");
    EXPECT_EQ(textOf(store, options::tspostfix), "");
    EXPECT_EQ(textOf(store, options::tscolor), "red");
    EXPECT_EQ(textOf(store, options::callby), "e");
    EXPECT_EQ(textOf(store, options::windowrenamecaption), "");
}

TEST_F(OptionsTest, TextsAreReadAsTheyWereSaved) {
    for (const options::Text* const row : texts) {
        for (const std::string_view text : {" a", "E", "", "caf\xE9"}) {
            set(store, *row, text);
            EXPECT_EQ(option(store, row->key), text);
            EXPECT_EQ(textOf(store, *row), text.empty() ? row->initial : text) << row->key;
        }
    }
}

TEST_F(OptionsTest, AreReadAtTheMomentOfUse) {
    EXPECT_FALSE(isOn(store, options::timestamp));
    other().set("timestamp", "True");
    EXPECT_TRUE(isOn(store, options::timestamp));
}

}  // namespace
