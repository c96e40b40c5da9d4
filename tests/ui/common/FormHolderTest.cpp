#include "tests/ui/options/OptionsFixture.h"

#include <QPixmapCache>
#include <QPointer>

namespace {

/// A window that is made anew for each showing.
using FreshWindow = OptionsFixture;

TEST_F(FreshWindow, IsNotMadeBeforeItIsShown) { EXPECT_EQ(countOf("Cobweave - Options"), 0); }

TEST_F(FreshWindow, ComesToTheFrontWhenItIsShownAgain) {
    open();
    QWidget* const first = shown();
    click(toggle("Label1"));
    options->Show();
    EXPECT_EQ(shown(), first);
    EXPECT_EQ(countOf("Cobweave - Options"), 1);
    EXPECT_TRUE(toggle("Label1").isOn());
}

TEST_F(FreshWindow, IsDestroyedAfterItsClosing) {
    open();
    const QPointer<QWidget> first(shown());
    pressCancel();
    EXPECT_TRUE(comesTrue([&] { return first.isNull(); }));
    EXPECT_EQ(countOf("Cobweave - Options"), 0);
}

TEST_F(FreshWindow, ReadsItsSettingsAnew) {
    open();
    click(toggle("Label1"));
    pressCancel();
    const Database other(facilities.folder.path() / "settings.db");
    other.set("preventtypo", "True");
    options->Show();
    EXPECT_FALSE(toggle("Label1").isOn());
    EXPECT_TRUE(toggle("Label6").isOn());
}

TEST_F(FreshWindow, CanBeShownWhileTheOldOneIsStillToBeDestroyed) {
    open();
    const QPointer<QWidget> first(shown());
    shown()->close();
    options->Show();
    QWidget* const second = shown();
    ASSERT_NE(second, nullptr);
    EXPECT_NE(second, first);
    EXPECT_TRUE(comesTrue([&] { return first.isNull(); }));
    EXPECT_EQ(shown(), second);
}

TEST_F(FreshWindow, MayBeClosedTwice) {
    open();
    QWidget* const only = shown();
    only->close();
    only->close();
    QCoreApplication::processEvents();
    options->Show();
    EXPECT_NE(shown(), nullptr);
}

/// Each window adds the pictures of its buttons to Qt's cache anew.
TEST_F(FreshWindow, LeavesNoMorePicturesBehindThanTheCacheIsToHold) {
    EXPECT_LE(QPixmapCache::cacheLimit(), 512);
}

TEST_F(FreshWindow, MayBeOpenWhenTheProgramEnds) {
    open();
    const QPointer<QWidget> only(shown());
    options.reset();
    EXPECT_TRUE(only.isNull());
}

TEST_F(FreshWindow, StaysBehindAnOpenBox) {
    const auto realBoxes = makeMessageBox();
    messageBox = realBoxes.get();
    open();
    status().setEditText("Sleeping");
    Answers answers({QMessageBox::Ok});
    answers.meanwhile = [&] {
        options->Show();
        EXPECT_TRUE(comesTrue([] {
            return QApplication::activeWindow() != nullptr &&
                   QApplication::activeWindow() == QApplication::activeModalWidget();
        }));
    };
    pressOk();
    EXPECT_TRUE(answers.areGiven());
}

}  // namespace
