#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/FakeWinsock.h"
#include "tests/ui/windows.h"
#include "ui/about/frmabout.h"
#include "ui/common/look.h"
#include "ui/log/frmlog.h"
#include "ui/notes/frmnotes.h"
#include "ui/toasts/frmpopup.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QStyle>

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
protected:
    LargeLetters() { followLetters(16); }
    ~LargeLetters() override { followLetters(9); }

private:
    static void followLetters(int points) {
        QFont desktop;
        desktop.setPointSize(points);
        look::followLetters(desktop);
    }
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

TEST_F(Fitting, AToastHasRoomForItsLink) {
    FakeLoop loop;
    FakeOwnWindows windows;
    frmpopup form(loop, windows);
    expectFits(form);
    const int letters = form.Label2.y() + form.Label2.fontMetrics().height();
    EXPECT_LE(letters, form.Label1.y());
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
