#include "platform/qt/qtPlatform.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/FakeWinsock.h"
#include "tests/ui/contrast.h"
#include "tests/ui/windows.h"
#include "ui/about/frmabout.h"
#include "ui/log/frmlog.h"
#include "ui/notes/frmnotes.h"
#include "ui/options/optionControls.h"
#include "ui/toasts/frmpopup.h"

#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QFontInfo>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <tuple>

namespace {

/// Fails for each caption of the window that needs more room than its control has.
void expectFits(QWidget& form) {
    form.show();
    QCoreApplication::processEvents();
    for (const QLabel* const label : form.findChildren<QLabel*>()) {
        const QSize needed = label->fontMetrics().size(0, label->text());
        EXPECT_LE(needed.width(), label->width()) << label->text().toStdString();
        EXPECT_LE(needed.height(), label->height()) << label->text().toStdString();
    }
    for (const QAbstractButton* const button : form.findChildren<QAbstractButton*>()) {
        const QSize needed = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
        const int frame = button->style()->pixelMetric(QStyle::PM_ButtonMargin);
        EXPECT_LE(needed.width() + frame, button->width()) << button->text().toStdString();
        EXPECT_LE(needed.height(), button->height()) << button->text().toStdString();
    }
}

/// Fails for a toast whose link or text has too little room around it.
void expectAToastToFit() {
    FakeLoop loop;
    FakeOwnWindows windows;
    frmpopup form(loop, windows);
    expectFits(form);
    const int letters = form.Label2.y() + form.Label2.fontMetrics().height();
    EXPECT_LE(letters, form.Label1.y());
    const int linkEnd =
        form.Label2.x() + form.Label2.fontMetrics().horizontalAdvance(form.Label2.text());
    EXPECT_GE(form.width() - linkEnd, 6);
    // The text is clear of the link above it, and of the edge at the right.
    form.Label1.setText(std::string(400, 'H'));
    const QImage text = form.Label1.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    const double scale = text.devicePixelRatio();
    int top = text.height();
    int right = 0;
    for (int y = 0; y < text.height(); ++y) {
        for (int x = 0; x < text.width(); ++x) {
            if (text.pixelColor(x, y).lightness() > 120) continue;
            top = std::min(top, y);
            right = std::max(right, x);
        }
    }
    EXPECT_GE(form.Label1.y() + top / scale - letters, 6);
    EXPECT_GE(form.width() - form.Label1.x() - right / scale, 6);
}

class Fitting : public testing::Test {
protected:
    FakeFacilities facilities;
    FakeMessageBox boxes;
};

TEST_F(Fitting, TheLogHasRoomForItsCaptions) {
    frmlog form(facilities.clock, boxes);
    expectFits(form);
    expectApart(form);
    form.resize(900, 700);
    QCoreApplication::processEvents();
    expectApart(form);
}

TEST_F(Fitting, TheNotesHaveRoomForTheirCaptions) {
    frmnotes form(facilities.notes, boxes);
    expectFits(form);
    expectApart(form);
    form.resize(form.minimumSizeHint());
    expectFits(form);
    expectApart(form);
}

/// A desktop whose letters are half as large again.
class LargeLetters : public Fitting {
    DesktopLetters letters{16};
};

TEST_F(LargeLetters, AreFollowedByTheLog) {
    frmlog form(facilities.clock, boxes);
    EXPECT_EQ(form.Command1.font().pixelSize(), 16);
    EXPECT_EQ(form.size(), QSize(429, 220) * 16 / 11);
    expectFits(form);
    expectApart(form);
    form.resize(900, 700);
    QCoreApplication::processEvents();
    expectApart(form);
    form.AddItem(std::string(100, 'W'));
    form.hide();
    form.show();
    const QModelIndex line = form.List1.model()->index(0, 0);
    EXPECT_GE(form.List1.sizeHintForIndex(line).width(),
              form.List1.fontMetrics().horizontalAdvance(line.data().toString()));
}

TEST_F(LargeLetters, AreFollowedByTheNotes) {
    frmnotes form(facilities.notes, boxes);
    EXPECT_EQ(form.findChild<QPlainTextEdit*>("Text1")->font().pixelSize(), 16);
    expectFits(form);
    expectApart(form);
}

TEST_F(LargeLetters, AreFollowedByTheAboutWindow) {
    frmabout form;
    EXPECT_EQ(form.size(), QSize(494, 271) * 16 / 11);
    EXPECT_EQ(form.minimumSize(), form.maximumSize());
    expectFits(form);
    expectApart(form);
}

TEST_F(LargeLetters, AreFollowedByToasts) {
    FakeLoop loop;
    FakeOwnWindows windows;
    EXPECT_EQ(frmpopup(loop, windows).size(), QSize(181, 116) * 16 / 11);
    expectAToastToFit();
}

TEST(Letters, AreNoSmallerThanOursAndNoLargerThanTheScreenHasRoomFor) {
    const std::tuple<double, QSize, int> sizes[] = {
        {8, {1920, 1080}, 11},  {12, {1920, 1080}, 12}, {22, {1920, 1080}, 22},
        {40, {1920, 1080}, 22}, {22, {1024, 768}, 17},  {22, {640, 480}, 11},
        {22, {320, 240}, 11},
    };
    for (const auto& [points, screen, pixels] : sizes) {
        const DesktopLetters letters(points, screen);
        EXPECT_EQ(QApplication::font().pixelSize(), pixels) << points;
        EXPECT_EQ(look::scaled(1100), 100 * pixels) << points;
    }
}

TEST(Letters, AreOfTheFirstFontOfOursThatIsInstalled) {
    const QStringList installed = QFontDatabase::families();
    for (const QString& name : letterFonts()) {
        if (!installed.contains(name)) continue;
        EXPECT_EQ(QFontInfo(QApplication::font()).family(), name);
        return;
    }
    FAIL() << "none of them is installed";
}

/// What is drawn of a text, as the darkness of all its pixels.
double inkOf(const QFont& font) {
    QImage picture(200, 40, QImage::Format_Grayscale8);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setFont(font);
    painter.drawText(QPoint(10, 25), "Allow Message Constants");
    painter.end();
    double ink = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ink += 255 - picture.pixelColor(x, y).lightness();
    }
    return ink;
}

TEST(LettersInBold, AreBolderThanTheOthers) {
    const QFont plain = QApplication::font();
    QFont bold = plain;
    bold.setBold(true);
    EXPECT_GT(inkOf(bold), 1.2 * inkOf(plain));
}

TEST_F(Fitting, AToastHasRoomForItsLink) { expectAToastToFit(); }

TEST_F(Fitting, TheCloseBoxOfAToastIsSeenAtRest) {
    FakeLoop loop;
    FakeOwnWindows windows;
    frmpopup form(loop, windows);
    ASSERT_FALSE(form.Image1.hovered());
    EXPECT_GE(greatestContrast(form.grab(form.Image1.geometry()).toImage()), 3);
}

TEST_F(Fitting, AnEmptyListSaysReadablyWhatFillsIt) {
    frmlog log(facilities.clock, boxes);
    frmnotes notes(facilities.notes, boxes);
    for (QAbstractItemView* const list : {static_cast<QAbstractItemView*>(&log.List1),
                                          notes.findChild<QAbstractItemView*>("List1")}) {
        list->window()->show();
        EXPECT_FALSE(list->accessibleDescription().isEmpty());
        EXPECT_GE(greatestContrast(list->viewport()->grab().toImage()), 4.5);
    }
    log.AddItem("");
    log.hide();
    log.show();
    // The words are gone, and the line, a time alone, is at the top.
    const QRect below = log.List1.viewport()->rect().adjusted(0, 30, 0, 0);
    EXPECT_EQ(greatestContrast(log.List1.viewport()->grab(below).toImage()), 1);
    EXPECT_FALSE(notes.findChild<QPlainTextEdit*>("Text1")->placeholderText().isEmpty());
}

TEST_F(Fitting, ABoxHasItsWholeFrameAtEveryScaleAndPlace) {
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        for (double offset = 0; offset < 1; offset += 0.125) {
            QImage picture(60, 60, QImage::Format_RGB32);
            picture.fill(look::page);
            QPainter painter(&picture);
            painter.translate(10 + offset, 10 + offset);
            painter.scale(scale, scale);
            QStyleOptionFrame option;
            option.rect = QRect(0, 0, 20, 20);
            // As a box is clipped to its place.
            painter.setClipRect(option.rect);
            QApplication::style()->drawPrimitive(QStyle::PE_Frame, &option, &painter);
            int sides = 0;
            for (const QRect& side : {QRect(5, 20, 15, 1), QRect(20, 20, 35, 1),
                                      QRect(20, 5, 1, 15), QRect(20, 20, 1, 35)}) {
                sides += greatestContrast(picture.copy(side)) > 1 ? 1 : 0;
            }
            EXPECT_EQ(sides, 4) << scale << ' ' << offset;
        }
    }
}

TEST_F(Fitting, RowsOfAllListsAreOfOneHeight) {
    facilities.notes.add("one");
    frmlog log(facilities.clock, boxes);
    frmnotes notes(facilities.notes, boxes);
    StatusBox statuses(nullptr);
    statuses.addItem("one");
    log.AddItem("one");
    log.show();
    EXPECT_EQ(log.List1.sizeHintForRow(0), statuses.view()->sizeHintForRow(0));
    EXPECT_EQ(notes.findChild<QListWidget*>("List1")->sizeHintForRow(0),
              statuses.view()->sizeHintForRow(0));
}

TEST_F(Fitting, TheFirstLineOfTheLogLooksAsTheOthersUntilItIsChosen) {
    frmlog log(facilities.clock, boxes);
    for (int count = 0; count < 2; ++count)
        log.AddItem("same");
    log.show();
    log.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&log));
    log.List1.setFocus();
    ASSERT_TRUE(log.List1.currentIndex().isValid());
    const auto row = [&](int number) {
        const QModelIndex index = log.List1.model()->index(number, 0);
        return log.List1.viewport()->grab(log.List1.visualRect(index)).toImage();
    };
    EXPECT_EQ(row(0), row(1));
    log.List1.setCurrentIndex(log.List1.model()->index(0, 0));
    log.List1.selectionModel()->select(log.List1.currentIndex(), QItemSelectionModel::Select);
    EXPECT_NE(row(0), row(1));
}

TEST_F(Fitting, EveryControlHasANameForThoseWhoCannotSeeIt) {
    FakeLoop loop;
    FakeOwnWindows windows;
    frmlog log(facilities.clock, boxes);
    frmnotes notes(facilities.notes, boxes);
    frmpopup toast(loop, windows);
    EXPECT_EQ(toast.Image1.accessibleName(), "Close");
    EXPECT_EQ(log.List1.accessibleName(), "Log");
    EXPECT_EQ(notes.findChild<QWidget*>("List1")->accessibleName(), "Select A Note");
    EXPECT_EQ(notes.findChild<QWidget*>("Text1")->accessibleName(), "Edit/Delete/View Note");
}

}  // namespace
