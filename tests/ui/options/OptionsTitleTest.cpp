#include "tests/ui/options/OptionsFixture.h"

namespace {

/// The page that renames Messenger's window: it takes effect at once.
class OptionsTitle : public OptionsFixture {
protected:
    void openRenamed(const char* text = "Ann's") {
        set("windowrename", "1");
        set("windowrenamecaption", text);
        open();
        goTo(5);
        calls.clear();
    }
    /// The timers of the title come round.
    void tick() const {
        for (FakeTimer* const timer : loop.timers)
            timer->pass();
    }
};

TEST_F(OptionsTitle, IsMirroredWhenItIsOn) {
    openRenamed();
    EXPECT_TRUE(check("Check3").isChecked());
    EXPECT_TRUE(box("Text1").isEnabled());
    EXPECT_EQ(box("Text1").text(), "Ann's");
    EXPECT_EQ(box("Text1").cursorPosition(), 5);
    EXPECT_EQ(the<QLabel>("Label11").text(), "Ann's");
}

TEST_F(OptionsTitle, IsMessengersOwnWhenItIsOff) {
    set("windowrename", "0");
    set("windowrenamecaption", "left over");
    open();
    goTo(5);
    EXPECT_FALSE(check("Check3").isChecked());
    EXPECT_FALSE(box("Text1").isEnabled());
    EXPECT_EQ(box("Text1").text(), "MSN Messenger");
    EXPECT_EQ(title.renameText(), "MSN Messenger");
    EXPECT_EQ(stored("windowrenamecaption"), "MSN Messenger");
}

TEST_F(OptionsTitle, IsWrittenWhileTheUserTypes) {
    openRenamed("A");
    box("Text1").setFocus();
    QTest::keyClicks(&box("Text1"), "b");
    EXPECT_EQ(title.renameText(), "Ab");
    EXPECT_EQ(stored("windowrenamecaption"), "Ab");
    EXPECT_EQ(stored("windowrename"), "1");
    EXPECT_EQ(the<QLabel>("Label11").text(), "Ab");
    tick();
    EXPECT_EQ(calls, std::vector<std::string>{"title of 77: Ab"});
    pressCancel();
    EXPECT_EQ(stored("windowrenamecaption"), "Ab");
}

TEST_F(OptionsTitle, StaysOffAfterACancel) {
    openRenamed();
    click(check("Check3"));
    EXPECT_FALSE(title.renaming());
    EXPECT_FALSE(box("Text1").isEnabled());
    EXPECT_EQ(box("Text1").text(), "MSN Messenger");
    ASSERT_FALSE(calls.empty());
    for (const std::string& call : calls)
        EXPECT_EQ(call, "title of 77: MSN Messenger");
    pressCancel();
    EXPECT_EQ(stored("windowrename"), "0");
    EXPECT_EQ(stored("windowrenamecaption"), "MSN Messenger");
    options->Show();
    goTo(5);
    EXPECT_FALSE(check("Check3").isChecked());
}

TEST_F(OptionsTitle, CanBeTypedAgainOnceItIsOn) {
    open();
    goTo(5);
    click(check("Check3"));
    EXPECT_TRUE(box("Text1").isEnabled());
    EXPECT_TRUE(title.renaming());
    EXPECT_EQ(stored("windowrename"), "1");
    box("Text1").selectAll();
    QTest::keyClicks(&box("Text1"), "Mine & yours");
    EXPECT_EQ(title.renameText(), "Mine & yours");
    EXPECT_EQ(the<QLabel>("Label11").text(), "Mine & yours");
    pressCancel();
    EXPECT_EQ(stored("windowrenamecaption"), "Mine & yours");
}

TEST_F(OptionsTitle, IsAtMostAHundredCharacters) {
    openRenamed("");
    QTest::keyClicks(&box("Text1"), QString(120, 'x'));
    EXPECT_EQ(title.renameText(), std::string(100, 'x'));
}

TEST_F(OptionsTitle, IsWrittenOnceMoreByOk) {
    openRenamed("Kept");
    const Database other(facilities.folder.path() / "settings.db");
    other.set("windowrename", "0");
    pressOk();
    EXPECT_EQ(stored("windowrename"), "1");
    EXPECT_EQ(stored("windowrenamecaption"), "Kept");
}

TEST_F(OptionsTitle, KeepsWhatIsTypedInOtherScripts) {
    openRenamed("A");
    const QString typed = QString::fromUtf8("\u0159 \u041F\u0440\u0438 \u4F60\u597D \U0001F600");
    box("Text1").setText(typed);
    EXPECT_EQ(title.renameText(), typed.toStdString());
    EXPECT_EQ(the<QLabel>("Label11").text(), typed);
    pressCancel();
    options->Show();
    EXPECT_EQ(box("Text1").text(), typed);
}

TEST_F(OptionsTitle, KeepsEveryCharacterOfTheCodePage) {
    openRenamed("\xE9\x80 caf\xE9");
    EXPECT_EQ(box("Text1").text(), QString::fromUtf8("é€ café"));
    QTest::keyClicks(&box("Text1"), "!");
    EXPECT_EQ(title.renameText(), "\xE9\x80 caf\xE9!");
}

}  // namespace
