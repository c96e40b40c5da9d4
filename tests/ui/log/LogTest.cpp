#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeFacilities.h"
#include "ui/common/FormHolder.h"
#include "ui/log/frmlog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QTest>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LogWindow : public testing::Test {
protected:
    FakeFacilities::FixedClock clock;
    FakeMessageBox boxes;
    FormHolder<frmlog> log{FormLife::WholeRun,
                           [this] { return std::make_unique<frmlog>(clock, boxes); }};

    [[nodiscard]] static frmlog* window() {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (auto* const form = dynamic_cast<frmlog*>(widget)) return form;
        }
        return nullptr;
    }
    frmlog& show() {
        log.Show();
        return *window();
    }
    [[nodiscard]] static std::vector<std::string> lines(const frmlog& form) {
        std::vector<std::string> texts;
        const QAbstractItemModel& model = *form.List1.model();
        for (int row = 0; row < model.rowCount(); ++row) {
            texts.push_back(model.index(row, 0).data().toString().toStdString());
        }
        return texts;
    }
    static void select(frmlog& form, int row) {
        form.List1.setCurrentIndex(form.List1.model()->index(row, 0));
    }
};

TEST_F(LogWindow, IsNotMadeBeforeTheFirstEntry) { EXPECT_EQ(window(), nullptr); }

TEST_F(LogWindow, AnEntryMakesItWithoutShowingIt) {
    log.load().AddItem("Anna is now offline.");
    ASSERT_NE(window(), nullptr);
    EXPECT_FALSE(window()->isVisible());
    EXPECT_THAT(lines(show()), ElementsAre("Anna is now offline. (12:30:05)"));
}

TEST_F(LogWindow, HasItsCaptionAndSize) {
    const frmlog& form = show();
    EXPECT_EQ(form.windowTitle(), "Cobweave - Log");
    // The least size is above that of the design.
    EXPECT_EQ(form.size(), QSize(429, 220));
}

TEST_F(LogWindow, KeepsTheOrderOfArrivalAndTheTimeOfEach) {
    log.load().AddItem("first");
    clock.time = "12:30:06";
    log.load().AddItem("second");
    EXPECT_THAT(lines(show()), ElementsAre("first (12:30:05)", "second (12:30:06)"));
}

TEST_F(LogWindow, ShowsEntriesThatComeWhileItIsOpen) {
    frmlog& form = show();
    log.load().AddItem("late");
    EXPECT_TRUE(QTest::qWaitFor([&] { return lines(form).size() == 1; }));
    EXPECT_THAT(lines(form), ElementsAre("late (12:30:05)"));
    EXPECT_FALSE(form.List1.currentIndex().isValid());
}

TEST_F(LogWindow, CopiesTheSelectedLine) {
    log.load().AddItem("first");
    log.load().AddItem("second");
    frmlog& form = show();
    select(form, 1);
    QTest::mouseClick(&form.Command3, Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text(), "second (12:30:05)");
}

TEST_F(LogWindow, CopyWithNoSelectionLeavesTheClipboardEmpty) {
    QApplication::clipboard()->setText("before");
    log.load().AddItem("first");
    QTest::mouseClick(&show().Command3, Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text(), "");
}

TEST_F(LogWindow, CopyWithNoSelectionLeavesTheClipboardEmptyThoughTheListHasTheKeyboard) {
    log.load().AddItem("first");
    frmlog& form = show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    form.List1.setFocus();
    ASSERT_TRUE(form.List1.currentIndex().isValid());
    QApplication::clipboard()->setText("before");
    QTest::mouseClick(&form.Command3, Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text(), "");
}

TEST_F(LogWindow, ALetterTypedOnTheListSearchesNoLines) {
    log.load().AddItem("first");
    log.load().AddItem("zebra");
    frmlog& form = show();
    select(form, 0);
    QTest::keyClick(&form.List1, Qt::Key_Z);
    EXPECT_EQ(form.List1.currentIndex().row(), 0);
}

TEST_F(LogWindow, IsClearedAfterAYes) {
    log.load().AddItem("first");
    frmlog& form = show();
    QTest::mouseClick(&form.Command2, Qt::LeftButton);
    EXPECT_THAT(boxes.shown, ElementsAre("question: Are you sure you want to clear the log?"));
    EXPECT_EQ(lines(form).size(), 1U);
    boxes.answers = {true};
    QTest::mouseClick(&form.Command2, Qt::LeftButton);
    EXPECT_THAT(lines(form), IsEmpty());
    log.load().AddItem("next");
    EXPECT_TRUE(QTest::qWaitFor([&] { return lines(form).size() == 1; }));
}

TEST_F(LogWindow, AnEntryThatComesUnderTheQuestionIsClearedToo) {
    log.load().AddItem("first");
    frmlog& form = show();
    boxes.answers = {true};
    boxes.opened = [&](const std::string&) { log.load().AddItem("meanwhile"); };
    QTest::mouseClick(&form.Command2, Qt::LeftButton);
    EXPECT_THAT(lines(form), IsEmpty());
    EXPECT_EQ(form.List1.model()->rowCount(), 0);
}

TEST_F(LogWindow, EveryWayOfClosingHidesItAndKeepsTheLines) {
    log.load().AddItem("first");
    const std::function<void(frmlog&)> ways[] = {
        [](frmlog& form) { QTest::mouseClick(&form.Command1, Qt::LeftButton); },
        [](frmlog& form) { form.close(); },
        [](frmlog& form) { QTest::keyClick(&form, Qt::Key_Escape); },
        [](frmlog& form) { QTest::keyClick(&form.List1, Qt::Key_Escape); },
    };
    for (const auto& close : ways) {
        frmlog& form = show();
        ASSERT_TRUE(form.isVisible());
        close(form);
        EXPECT_FALSE(form.isVisible());
        EXPECT_THAT(lines(show()), ElementsAre("first (12:30:05)"));
    }
}

TEST_F(LogWindow, LaysItsControlsOutByItsOuterSize) {
    frmlog& form = show();
    form.resize(pixels(9000 - 120), pixels(6000 - 510));
    QCoreApplication::processEvents();
    EXPECT_EQ(form.List1.size(), QSize(pixels(9000 - 350), pixels(6000 - 2100)));
    EXPECT_EQ(form.List1.pos(), QPoint(8, 64));
    for (const QPushButton* const button : {&form.Command1, &form.Command2, &form.Command3}) {
        EXPECT_EQ(button->y(), pixels(6000 - 1060));
    }
    EXPECT_EQ(form.Frame1.y(), pixels(6000 - 970));
    EXPECT_EQ(form.Frame2.pos(), QPoint(pixels(9000 - 3300), pixels(6000 - 980)));
    EXPECT_EQ(form.Frame3.pos(), QPoint(pixels(9000 - 1700), pixels(6000 - 1010)));
    EXPECT_EQ(form.Command1.x(), pixels(9000 - 1400));
    EXPECT_EQ(form.Command2.x(), pixels(9000 - 2900));
    EXPECT_EQ(form.Image4.width(), form.width());
}

TEST_F(LogWindow, CannotBeMadeSmallerThanItsControls) {
    frmlog& form = show();
    form.resize(100, 100);
    EXPECT_EQ(form.size(), QSize(pixels(6555 - 120), pixels(3810 - 510)));
}

TEST_F(LogWindow, ShowsControlCharactersAsBoxesAndCopiesThemAsTheyAre) {
    log.load().AddItem("\x01\x02\n<b>x</b>");
    frmlog& form = show();
    EXPECT_THAT(lines(form), ElementsAre("\u25A1\u25A1 <b>x</b> (12:30:05)"));
    select(form, 0);
    QTest::mouseClick(&form.Command3, Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text(), "\x01\x02\n<b>x</b> (12:30:05)");
}

TEST_F(LogWindow, SaysWhatFillsItWhileItIsEmpty) {
    frmlog& form = show();
    const QImage empty = form.List1.grab().toImage();
    EXPECT_FALSE(form.List1.accessibleDescription().isEmpty());
    log.load().AddItem("first");
    EXPECT_TRUE(QTest::qWaitFor([&] { return lines(form).size() == 1; }));
    EXPECT_NE(form.List1.grab().toImage(), empty);
}

TEST_F(LogWindow, ShowsAndCopiesAllScripts) {
    const std::string names = "Zo\u00EB \u041F\u0440\u0438 \u05E9\u05DC \u4F60\u597D \U0001F600";
    log.load().AddItem(names);
    log.load().AddItem("Zo\xEB");
    frmlog& form = show();
    EXPECT_THAT(lines(form), ElementsAre(names + " (12:30:05)", "Zo\u00EB (12:30:05)"));
    select(form, 0);
    QTest::mouseClick(&form.Command3, Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), names + " (12:30:05)");
}

TEST_F(LogWindow, CutsAHugeTextOfAnotherScriptBetweenTwoCharacters) {
    std::string text;
    while (text.size() < 100'000)
        text += "\u4F60";
    log.load().AddItem(text);
    EXPECT_THAT(lines(show()),
                ElementsAre(text.substr(0, (4096 - 12) / 3 * 3) + "\u2026 (12:30:05)"));
}

TEST_F(LogWindow, IsWideEnoughForOtherScripts) {
    std::string all;
    for (int count = 0; count < 20; ++count)
        all += "\u0416\u4F60\U0001F600\uFDFD";
    log.load().AddItem(all);
    frmlog& form = show();
    const QFontMetrics metrics(QApplication::font());
    const QModelIndex line = form.List1.model()->index(0, 0);
    EXPECT_GE(form.List1.sizeHintForIndex(line).width(),
              metrics.horizontalAdvance(line.data().toString()));
}

TEST_F(LogWindow, CutsAHugeTextToWhatTheListShowsAndKeepsItsTime) {
    log.load().AddItem(std::string(4096 - 11, 'x'));
    log.load().AddItem(std::string(100'000, 'x'));
    frmlog& form = show();
    select(form, 0);
    QTest::mouseClick(&form.Command3, Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text(), QString(4096 - 11, 'x') + " (12:30:05)");
    select(form, 1);
    QTest::mouseClick(&form.Command3, Qt::LeftButton);
    const QString cut = QString(4096 - 12, 'x') + QChar(0x2026) + " (12:30:05)";
    EXPECT_EQ(QApplication::clipboard()->text(), cut);
    EXPECT_EQ(lines(form).back(), cut.toStdString());
}

TEST_F(LogWindow, KeepsTheNewest32767Lines) {
    for (int number = 1; number <= 40'000; ++number)
        log.load().AddItem(std::to_string(number));
    frmlog& form = show();
    const QAbstractItemModel& model = *form.List1.model();
    ASSERT_EQ(model.rowCount(), 32767);
    EXPECT_EQ(model.index(0, 0).data().toString(), "7234 (12:30:05)");
    EXPECT_EQ(model.index(32766, 0).data().toString(), "40000 (12:30:05)");
    // The same while it is open, where the selected line stays so until it goes.
    select(form, 10);
    for (int number = 40'001; number <= 40'005; ++number)
        log.load().AddItem(std::to_string(number));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return model.index(32766, 0).data().toString() == "40005 (12:30:05)"; }));
    EXPECT_EQ(model.rowCount(), 32767);
    EXPECT_EQ(model.index(0, 0).data().toString(), "7239 (12:30:05)");
    EXPECT_EQ(form.List1.currentIndex().row(), 5);
}

TEST_F(LogWindow, DropsOldLinesThatItHasShownWhileItIsClosed) {
    log.load().AddItem("shown");
    show().close();
    for (int number = 1; number <= 34'000; ++number)
        log.load().AddItem(std::to_string(number));
    EXPECT_EQ(window()->List1.model()->rowCount(), 0);
    EXPECT_EQ(show().List1.model()->index(32766, 0).data().toString(), "34000 (12:30:05)");
}

TEST_F(LogWindow, TheKeysForCopyingTakeTheLineAsItIs) {
    log.load().AddItem("\x01");
    frmlog& form = show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    select(form, 0);
    form.List1.setFocus();
    QTest::keyClick(&form.List1, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "\x01 (12:30:05)");
}

TEST_F(LogWindow, ALongLineIsReachedByScrolling) {
    frmlog& form = show();
    log.load().AddItem(std::string(500, 'x'));
    EXPECT_TRUE(QTest::qWaitFor([&] { return form.List1.horizontalScrollBar()->maximum() > 0; }));
}

TEST_F(LogWindow, IsWideEnoughForEachCharacter) {
    std::string all;
    for (int code = 0; code < 256; ++code)
        all.append(3, static_cast<char>(code));
    log.load().AddItem(all);
    frmlog& form = show();
    const QFontMetrics metrics(QApplication::font());
    const int needed = metrics.horizontalAdvance(form.List1.model()->index(0, 0).data().toString());
    EXPECT_GE(form.List1.sizeHintForIndex(form.List1.model()->index(0, 0)).width(), needed);
}

}  // namespace
