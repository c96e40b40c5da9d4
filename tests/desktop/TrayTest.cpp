#include "desktop/frmTray.h"

#include "desktop/frmTitle.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/FakeWinsock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TrayIcon : public testing::Test {
protected:
    FakeFacilities facilities;
    FakeForeignWindows windows;
    FakeLoop loop;
    frmTitle title{facilities.settings, windows, loop};
    FakeTray tray;
    frmTray form{facilities.settings, title, tray};

    TrayIcon() {
        set("progress", "1");
        set("trayicon", "1");
        set("messengerwindow", "1");
        windows.messenger = 5;
        title.setText1("Mine");
    }
    void set(const char* key, const char* value) {
        facilities.settings.WriteSetting("Options", key, value);
    }
    /// What the caller's word becomes.
    std::string pass(std::string word, bool loggedin = false) {
        form.changetraycaption(word, loggedin);
        return word;
    }
    /// What Messenger's window was called, one title after the other.
    [[nodiscard]] std::vector<std::string> titles() const {
        std::vector<std::string> texts;
        for (const auto& [window, text] : windows.titles)
            texts.push_back(text);
        return texts;
    }
};

TEST_F(TrayIcon, IsShownWithItsMenuWhateverTheSettingsSay) {
    set("progress", "0");
    set("trayicon", "0");
    form.Show({{"mnuhelp", "&Help...", [] {}}});
    EXPECT_TRUE(tray.shown);
    EXPECT_THAT(tray.tips, ElementsAre("Cobweave"));
    EXPECT_EQ(tray.menu.size(), 1U);
}

TEST_F(TrayIcon, IsTakenAwayAtTheEnd) {
    form.Show({});
    form.Unload();
    EXPECT_FALSE(tray.shown);
}

struct Row {
    const char* name;
    const char* word;
    const char* caption;
    /// Nothing when the title is left alone.
    const char* title;
};

class TrayWords : public TrayIcon, public testing::WithParamInterface<Row> {};

TEST_P(TrayWords, MoveTheToolTipAndTheTitle) {
    EXPECT_EQ(pass(GetParam().word), GetParam().caption);
    EXPECT_THAT(tray.tips, ElementsAre(std::string(GetParam().caption).substr(0, 64)));
    if (GetParam().title == nullptr) {
        EXPECT_THAT(titles(), IsEmpty());
    } else {
        EXPECT_THAT(titles(), ElementsAre(GetParam().title));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, TrayWords,
    testing::Values(
        Row{"Xfr", "XFR", "Processing transfer command.\r\n\r\nSuggested progress: 10%", nullptr},
        Row{"Lst", "LST", "Processing contact list.\r\n\r\nSuggested progress: 75%",
            "Suggested signin progress: 75%"},
        Row{"Iln", "ILN", "Processing online list.\r\n\r\nSuggested progress: 90%",
            "Suggested signin progress: 90%"},
        Row{"Chg", "CHG", "Processing online list.\r\n\r\nSuggested progress: 95%",
            "Suggested signin progress: 95%"},
        Row{"Ver", "VER", "Processing version command.\r\n\r\nSuggested progress: 5%",
            "Suggested signin progress: 5%"},
        Row{"Cvr", "CVR", "Processing Messenger version command.\r\n\r\nSuggested progress: 10%",
            "Suggested signin progress: 10%"},
        Row{"Usr", "USR", "Processing user information.\r\n\r\nSuggested progress: 15%",
            "Suggested signin progress: 15%"},
        Row{"Msg", "MSG", "Processing user information.\r\n\r\nSuggested progress: 35%",
            "Suggested signin progress: 35%"},
        Row{"GtcWithoutTheEmptyLine", "GTC",
            "Processing user information.\r\nSuggested progress: 25%",
            "Suggested signin progress: 25%"},
        Row{"Syn", "SYN", "Synchronizing.\r\n\r\nSuggested progress: 30%",
            "Suggested signin progress: 30%"},
        Row{"Cobweave", "Cobweave", "Cobweave", "Mine"}, Row{"Out", "OUT", "OUT", "MSN Messenger"},
        Row{"AnyOther", "QNG",
            "Processing other information.\r\n\r\nSuggested signin progress: 95%",
            "Suggested signin progress: 95%"},
        Row{"LowerCase", "xfr",
            "Processing other information.\r\n\r\nSuggested signin progress: 95%",
            "Suggested signin progress: 95%"},
        Row{"TheEndOfASignIn", "Cobweave - Logged In",
            "Processing other information.\r\n\r\nSuggested signin progress: 95%",
            "Suggested signin progress: 95%"},
        Row{"Nothing", "", "Processing other information.\r\n\r\nSuggested signin progress: 95%",
            "Suggested signin progress: 95%"}),
    [](const auto& row) { return row.param.name; });

TEST_F(TrayIcon, ATransferOfASignedInUserStaysTheWordItself) {
    EXPECT_EQ(pass("XFR", true), "XFR");
    EXPECT_THAT(tray.tips, ElementsAre("XFR"));
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(TrayIcon, ASignOutGivesTheRenamedWindowItsText) {
    title.setCheck1(true);
    EXPECT_EQ(pass("OUT"), "OUT");
    EXPECT_THAT(titles(), ElementsAre("Mine"));
}

TEST_F(TrayIcon, TheLongestToolTipJustFits) {
    EXPECT_EQ(pass("CVR").size(), 64U);
    EXPECT_EQ(tray.tips.back().size(), 64U);
    (void)pass("QNG");
    EXPECT_EQ(tray.tips.back(),
              "Processing other information.\r\n\r\nSuggested signin progress: 95%");
}

TEST_F(TrayIcon, WithoutProgressNothingHappens) {
    for (const char* const value : {"", "0", "True", "01"}) {
        set("progress", value);
        EXPECT_EQ(pass("USR"), "USR") << value;
    }
    EXPECT_THAT(tray.tips, IsEmpty());
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(TrayIcon, WithoutTheToolTipTheRestStillHappens) {
    for (const char* const value : {"", "0", "True"}) {
        set("trayicon", value);
        windows.titles.clear();
        EXPECT_EQ(pass("SYN"), "Synchronizing.\r\n\r\nSuggested progress: 30%");
        EXPECT_THAT(titles(), ElementsAre("Suggested signin progress: 30%"));
    }
    EXPECT_THAT(tray.tips, IsEmpty());
}

TEST_F(TrayIcon, RepeatsAreNotSuppressed) {
    for (int time = 0; time < 3; ++time)
        (void)pass("Cobweave");
    EXPECT_EQ(tray.tips.size(), 3U);
    EXPECT_EQ(windows.titles.size(), 3U);
}

/// Hosts may take a tool-tip for markup, and there is no way to tell them not to.
TEST_F(TrayIcon, NoToolTipHoldsWhatCouldBeMarkup) {
    for (const char* const word : {"XFR", "LST", "ILN", "CHG", "VER", "CVR", "USR", "MSG", "GTC",
                                   "SYN", "Cobweave", "OUT", "<b>", "&lt;"}) {
        EXPECT_EQ(pass(word).find_first_of("<&"), std::string::npos) << word;
    }
}

}  // namespace
