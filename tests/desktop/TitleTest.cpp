#include "desktop/frmTitle.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/FakeWinsock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class Title : public testing::Test {
protected:
    FakeFacilities facilities;
    SettingsStore& settings = facilities.settings;
    FakeForeignWindows windows;
    FakeLoop loop;
    frmTitle title{settings, windows, loop};

    [[nodiscard]] FakeTimer& writer() { return *loop.timers.at(0); }
    [[nodiscard]] FakeTimer& watch() { return *loop.timers.at(1); }
    void passTime() {
        watch().pass();
        writer().pass();
    }
    void set(const char* key, const char* value) { settings.WriteSetting("Options", key, value); }
    [[nodiscard]] std::string stored(const char* key) {
        return settings.ReadSetting("Options", key);
    }
    void loadWith(const char* text) {
        set("windowrename", "1");
        set("windowrenamecaption", text);
        title.Load();
    }
};

TEST_F(Title, BothTimersRunFromTheLoadToTheEnd) {
    title.Load();
    EXPECT_EQ(writer().interval, std::chrono::milliseconds{1});
    EXPECT_EQ(watch().interval, std::chrono::milliseconds{50});
    EXPECT_TRUE(writer().enabled);
    EXPECT_TRUE(watch().enabled);
}

TEST_F(Title, NothingTicksWhileNothingCanChange) {
    loadWith("Mine");
    passTime();
    EXPECT_TRUE(writer().resting);
    EXPECT_TRUE(watch().resting);
    const int searches = windows.searches;
    passTime();
    EXPECT_EQ(windows.searches, searches);
}

TEST_F(Title, ALoadWritesTheTextAtOnce) {
    windows.messenger = 5;
    loadWith("Mine");
    EXPECT_THAT(windows.titles, ElementsAre(Pair(5, "Mine")));
}

TEST_F(Title, AFirstRunReplacesTheDesignTextByTheEmptyOne) {
    EXPECT_EQ(title.renameText(), "Enter Window Caption...");
    title.Load();
    EXPECT_EQ(title.renameText(), "");
    EXPECT_FALSE(title.renaming());
    EXPECT_EQ(stored("windowrename"), "0");
    EXPECT_EQ(stored("windowrenamecaption"), "");
}

TEST_F(Title, ALoadKeepsWhatWasSet) {
    loadWith("Mine");
    EXPECT_TRUE(title.renaming());
    EXPECT_EQ(title.renameText(), "Mine");
    EXPECT_EQ(stored("windowrename"), "1");
    EXPECT_EQ(stored("windowrenamecaption"), "Mine");
}

TEST_F(Title, OnlyExactlyOneTurnsRenamingOn) {
    for (const char* const value : {"True", "01", " 1", "2"}) {
        set("windowrename", value);
        set("windowrenamecaption", "Mine");
        FakeLoop ownLoop;
        frmTitle own(settings, windows, ownLoop);
        own.Load();
        EXPECT_FALSE(own.renaming()) << value;
    }
    EXPECT_THAT(windows.titles, IsEmpty());
}

TEST_F(Title, AMessengerThatStartsLaterGetsItsTitle) {
    loadWith("Mine");
    windows.titles.clear();
    passTime();
    windows.open(7);
    EXPECT_FALSE(watch().resting);
    passTime();
    EXPECT_THAT(windows.titles, ElementsAre(Pair(7, "Mine")));
}

TEST_F(Title, AWindowThatIsOpenedAnewGetsItsTitle) {
    windows.messenger = 5;
    loadWith("Mine");
    windows.titles.clear();
    windows.open(0);
    passTime();
    windows.titles.clear();
    windows.open(6);
    passTime();
    EXPECT_THAT(windows.titles, ElementsAre(Pair(6, "Mine")));
}

TEST_F(Title, TheSameWindowIsNotWrittenTwice) {
    windows.messenger = 5;
    loadWith("Mine");
    windows.titles.clear();
    windows.open(5);
    passTime();
    EXPECT_THAT(windows.titles, IsEmpty());
}

TEST_F(Title, WithoutRenamingNoWindowIsWritten) {
    title.Load();
    windows.open(5);
    passTime();
    EXPECT_THAT(windows.titles, IsEmpty());
}

TEST_F(Title, AnEmptyTextIsWrittenToo) {
    windows.messenger = 5;
    loadWith("");
    EXPECT_THAT(windows.titles, ElementsAre(Pair(5, "")));
}

TEST_F(Title, AChangedTextIsWrittenAtTheNextTick) {
    windows.messenger = 5;
    loadWith("Mine");
    windows.titles.clear();
    title.setText1("Yours");
    passTime();
    EXPECT_THAT(windows.titles, IsEmpty());
    title.ChangeTitle();
    EXPECT_THAT(windows.titles, IsEmpty());
    passTime();
    EXPECT_THAT(windows.titles, ElementsAre(Pair(5, "Yours")));
}

TEST_F(Title, AChangedTextIsSavedAtOnce) {
    title.Load();
    title.setText1("Mine");
    EXPECT_EQ(stored("windowrenamecaption"), "Mine");
}

TEST_F(Title, UntickingGivesTheWindowItsOwnTitleBackAndLosesTheText) {
    windows.messenger = 5;
    loadWith("Mine");
    windows.titles.clear();
    title.setCheck1(false);
    EXPECT_THAT(windows.titles, ElementsAre(Pair(5, "MSN Messenger")));
    EXPECT_EQ(title.renameText(), "MSN Messenger");
    EXPECT_EQ(stored("windowrename"), "0");
    EXPECT_EQ(stored("windowrenamecaption"), "MSN Messenger");
}

TEST_F(Title, TickingAgainWritesNothingUntilTheTextOrTheWindowChanges) {
    windows.messenger = 5;
    loadWith("Mine");
    title.setCheck1(false);
    windows.titles.clear();
    title.setCheck1(true);
    passTime();
    EXPECT_THAT(windows.titles, IsEmpty());
    title.ChangeTitle();
    passTime();
    EXPECT_THAT(windows.titles, ElementsAre(Pair(5, "MSN Messenger")));
}

TEST_F(Title, TickingWritesToAWindowThatCameMeanwhile) {
    title.Load();
    title.setText1("Mine");
    windows.open(5);
    passTime();
    title.setCheck1(true);
    passTime();
    EXPECT_THAT(windows.titles, ElementsAre(Pair(5, "Mine")));
}

TEST_F(Title, ProgressIsShownOnlyWhereBothSettingsSayOne) {
    windows.messenger = 5;
    for (const char* const window : {"", "0", "1", "True"}) {
        for (const char* const progress : {"", "0", "1", "True"}) {
            set("messengerwindow", window);
            set("progress", progress);
            windows.titles.clear();
            title.setwindowcaption("Half");
            const bool both = window == std::string("1") && progress == std::string("1");
            EXPECT_EQ(windows.titles.size(), both ? 1U : 0U) << window << ' ' << progress;
        }
    }
}

TEST_F(Title, ProgressIsWrittenAtOnceAndLeavesTheRestAlone) {
    windows.messenger = 5;
    loadWith("Mine");
    set("messengerwindow", "1");
    set("progress", "1");
    windows.titles.clear();
    title.setwindowcaption("Half");
    passTime();
    EXPECT_THAT(windows.titles, ElementsAre(Pair(5, "Half")));
}

TEST_F(Title, IsRestoredToTheUsersOwnWhereThereIsOneAndElseToMessengersOwn) {
    windows.messenger = 5;
    set("messengerwindow", "1");
    set("progress", "1");
    title.setText1("Mine");
    title.restore();
    title.setCheck1(true);
    title.restore();
    EXPECT_THAT(windows.titles, ElementsAre(Pair(5, "MSN Messenger"), Pair(5, "Mine")));
}

TEST_F(Title, IsNotRestoredWhereNoProgressIsShown) {
    windows.messenger = 5;
    title.restore();
    EXPECT_THAT(windows.titles, IsEmpty());
}

TEST_F(Title, NothingReachesATitleThatIsGone) {
    {
        FakeLoop ownLoop;
        frmTitle own(settings, windows, ownLoop);
    }
    windows.open(9);
    EXPECT_EQ(windows.searches, 0);
}

}  // namespace
