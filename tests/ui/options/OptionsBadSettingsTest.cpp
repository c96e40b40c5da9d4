#include "tests/ui/options/OptionsFixture.h"

namespace {

/// Settings that a hand has edited: the window opens, works, and OK or Cancel ends it.
class OptionsBadSettings : public OptionsFixture {
protected:
    void openAndLookAtAll() {
        open();
        for (const int page : {0, 1, 2, 4, 5}) {
            goTo(page);
            (void)window().grab();
        }
    }
};

class OddValue : public OptionsBadSettings, public testing::WithParamInterface<std::string> {};

TEST_P(OddValue, InEverySettingLeavesAWindowThatWorks) {
    for (const char* const key :
         {"useristyping", "alertoffline", "alertopenwindow", "alertclosewindow", "alertjoinwindow",
          "constants", "timestamp", "callby", "preventtypo", "progress", "messengerwindow",
          "trayicon", "lastthing", "tsprefix", "tspostfix", "tscolor", "initialStatus",
          "windowrename", "windowrenamecaption"}) {
        set(key, GetParam());
    }
    openAndLookAtAll();
    for (const char* const name :
         {"Label1", "Label21", "Label6", "Label12", "Label2", "Label3", "Label4", "Label15"}) {
        EXPECT_FALSE(toggle(name).isOn()) << name;
    }
    EXPECT_TRUE(chosen("fn"));
    EXPECT_TRUE(chosen("black"));
    EXPECT_LE(box("prefix").text().size(), 1);
    EXPECT_LE(box("postfix").text().size(), 1);
    calls.clear();
    pressOk();
    EXPECT_EQ(calls, std::vector<std::string>{"critical: Please select an inital sign in status."});
    ASSERT_NE(shown(), nullptr);
    status().setCurrentText("Busy");
    pressOk();
    EXPECT_EQ(shown(), nullptr);
    EXPECT_EQ(stored("initialStatus"), "Busy");
    EXPECT_EQ(stored("callby"), "fn");
    EXPECT_EQ(stored("tscolor"), "black");
    EXPECT_EQ(stored("tsprefix"), GetParam().substr(0, 1));
}

INSTANTIATE_TEST_SUITE_P(Kinds, OddValue,
                         testing::Values(std::string("true"), std::string("TRUE"), std::string("2"),
                                         std::string(" "), std::string("\r\n\t"),
                                         std::string("\x01\x1B\x7F\x80\xFF"),
                                         std::string("<b>bold</b>&amp;"), std::string("%s%n%1"),
                                         std::string("Online\n"), std::string(100'000, 'x'),
                                         std::string(100'000, '\n')));

TEST_F(OptionsBadSettings, AnUnknownStatusIsShownAsItIsAndRefused) {
    set("initialStatus", "Sleeping");
    open();
    EXPECT_EQ(status().currentText(), "Sleeping");
    pressOk();
    EXPECT_EQ(calls, std::vector<std::string>{"critical: Please select an inital sign in status."});
    EXPECT_EQ(stored("initialStatus"), "Sleeping");
    EXPECT_EQ(stored("useristyping"), "(none)");
    goTo(1);
    status().setFocus();
    QTest::keyClick(&status(), Qt::Key_Down);
    pressOk();
    EXPECT_EQ(shown(), nullptr);
    EXPECT_EQ(stored("useristyping"), "False");
}

TEST_F(OptionsBadSettings, OnlyTheFirstCharacterOfABracketCounts) {
    set("tsprefix", "(((");
    set("tspostfix", ")))");
    open();
    EXPECT_EQ(box("prefix").text(), "(");
    EXPECT_EQ(box("postfix").text(), ")");
    pressOk();
    EXPECT_EQ(stored("tsprefix"), "(");
}

TEST_F(OptionsBadSettings, AnyWordForTheColorIsBlackAndForTheNameIsTheFriendlyOne) {
    set("tscolor", "Red");
    set("callby", "E");
    open();
    EXPECT_TRUE(chosen("black"));
    EXPECT_TRUE(chosen("fn"));
}

TEST_F(OptionsBadSettings, ALongCaptionIsCutToWhatTheBoxHolds) {
    set("windowrename", "1");
    set("windowrenamecaption", std::string(100'000, 'y'));
    open();
    EXPECT_EQ(box("Text1").text().size(), 100);
    EXPECT_EQ(title.renameText(), std::string(100, 'y'));
}

TEST_F(OptionsBadSettings, AMarkupCaptionIsShownAsItIs) {
    set("windowrename", "1");
    set("windowrenamecaption", "<h1>big</h1>");
    open();
    EXPECT_EQ(the<QLabel>("Label11").text(), "<h1>big</h1>");
    EXPECT_EQ(the<QLabel>("Label11").textFormat(), Qt::PlainText);
}

}  // namespace
