#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeWinsock.h"
#include "tests/ui/windows.h"
#include "ui/toasts/clspopups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QtMath>

namespace {

using testing::ElementsAre;
using testing::Pair;

class Toasts : public testing::Test {
protected:
    FakeLoop loop;
    FakeOwnWindows windows;
    FakeForeignWindows others;
    clspopups popups{loop, windows, others};

    /// The toasts on the screen, the lowest first.
    [[nodiscard]] static std::vector<frmpopup*> shown() {
        std::vector<frmpopup*> toasts;
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (auto* const toast = dynamic_cast<frmpopup*>(widget); toast && toast->isVisible()) {
                toasts.push_back(toast);
            }
        }
        std::ranges::sort(toasts, std::greater(), &frmpopup::y);
        return toasts;
    }
    /// How opaque the toasts were made since the last time, one after the other.
    [[nodiscard]] std::vector<int> takeAlphas() {
        std::vector<int> alphas;
        for (const auto& [window, alpha] : windows.alphas)
            alphas.push_back(alpha);
        windows.alphas.clear();
        return alphas;
    }
    [[nodiscard]] static int screenHeight() {
        return QGuiApplication::primaryScreen()->geometry().height();
    }
    /// A work area that ends so much above the lower edge of the screen, in the system's pixels.
    [[nodiscard]] static ScreenRectangle areaAbove(int free) {
        const double scale = QGuiApplication::primaryScreen()->devicePixelRatio();
        return {0, 0, 800, qCeil((screenHeight() - free) * scale)};
    }
    [[nodiscard]] static FakeTimer& timer(const std::unique_ptr<Timer>& made) {
        return dynamic_cast<FakeTimer&>(*made);
    }
    static void moveMouse(frmpopup& toast, const QWidget& control) {
        QTest::mouseMove(toast.windowHandle(), control.mapTo(&toast, QPoint(3, 3)));
    }
    frmpopup& show(std::string_view text = "Hello") {
        EXPECT_TRUE(popups.popup(text));
        return *shown().back();
    }
    ~Toasts() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
};

TEST_F(Toasts, StandAtTheBottomLeft) {
    frmpopup& toast = show();
    EXPECT_EQ(toast.geometry(), QRect(17, screenHeight() - 116, 181, 116));
    EXPECT_EQ(toast.Label1.text(), "Hello");
}

TEST_F(Toasts, StandAboveTheTaskBar) {
    windows.area = areaAbove(30);
    EXPECT_EQ(show().y(), screenHeight() - 116 - 30);
    EXPECT_EQ(popups.TaskbarHeight(), 450);
}

TEST_F(Toasts, KnowNothingOfATaskBarAtTheTop) {
    windows.area = areaAbove(0);
    windows.area->top = 30;
    EXPECT_EQ(popups.TaskbarHeight(), 0);
}

TEST_F(Toasts, KeepToTheirScreenWhenTheDesktopIsHigher) {
    windows.area = areaAbove(-500);
    EXPECT_EQ(popups.TaskbarHeight(), 0);
}

TEST_F(Toasts, StackUpwardsWithoutAGap) {
    for (int count = 0; count < 11; ++count)
        show(std::to_string(count));
    const auto toasts = shown();
    ASSERT_EQ(toasts.size(), 11U);
    for (std::size_t slot = 0; slot < toasts.size(); ++slot) {
        EXPECT_EQ(toasts[slot]->Label1.text(), std::to_string(slot));
        EXPECT_EQ(toasts[slot]->y(), screenHeight() - 116 * (static_cast<int>(slot) + 1));
    }
}

TEST_F(Toasts, StackUpwardsWithoutAGapInLargeLetters) {
    const DesktopLetters letters(16);
    windows.area = areaAbove(30);
    for (int count = 0; count < 3; ++count)
        show();
    const auto toasts = shown();
    const int height = toasts.front()->height();
    EXPECT_GT(height, 116);
    for (std::size_t slot = 0; slot < toasts.size(); ++slot)
        EXPECT_EQ(toasts[slot]->y(), screenHeight() - 30 - height * (static_cast<int>(slot) + 1));
}

TEST_F(Toasts, TheTwelfthIsLostAndCountsAsShown) {
    for (int count = 0; count < 11; ++count)
        show();
    others.focused.clear();
    EXPECT_TRUE(popups.popup("lost"));
    EXPECT_EQ(shown().size(), 11U);
    EXPECT_EQ(others.focused.size(), 2U);
    for (frmpopup* const toast : shown())
        EXPECT_EQ(toast->Label1.text(), "Hello");
}

TEST_F(Toasts, TheLowestFreePlaceWins) {
    frmpopup& first = show("first");
    show("second");
    first.Unload();
    show("third");
    const auto toasts = shown();
    ASSERT_EQ(toasts.size(), 2U);
    EXPECT_EQ(toasts[0]->Label1.text(), "third");
    EXPECT_EQ(toasts[1]->Label1.text(), "second");
}

TEST_F(Toasts, TheFocusIsHandedBackTwice) {
    others.inFront = 42;
    show();
    EXPECT_THAT(others.focused, ElementsAre(42, 42));
}

TEST_F(Toasts, NeverTakeTheFocus) {
    QWidget work;
    work.show();
    work.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&work));
    frmpopup& toast = show();
    QTest::mouseClick(&toast.Label2, Qt::LeftButton);
    EXPECT_EQ(QApplication::activeWindow(), &work);
    EXPECT_TRUE(toast.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_TRUE(toast.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(toast.windowFlags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(Toasts, AreAboveAllOthers) {
    frmpopup& toast = show();
    EXPECT_THAT(windows.topMost, ElementsAre(Pair(toast.winId(), true)));
}

TEST_F(Toasts, StayInvisibleFor200MsAndAreThereAtOnceThen) {
    frmpopup& toast = show();
    EXPECT_THAT(takeAlphas(), ElementsAre(0));
    EXPECT_EQ(timer(toast.Timer2).interval, std::chrono::milliseconds{200});
    timer(toast.Timer2).pass();
    EXPECT_THAT(takeAlphas(), ElementsAre(25, 51, 76, 102, 127, 153, 178, 204, 229, 254));
    EXPECT_FALSE(timer(toast.Timer2).enabled);
}

TEST_F(Toasts, EndAfterSevenSecondsByFadingWithoutAStepOf60) {
    frmpopup& toast = show();
    EXPECT_EQ(timer(toast.Timer1).interval, std::chrono::milliseconds{7000});
    (void)takeAlphas();
    timer(toast.Timer1).pass();
    EXPECT_THAT(takeAlphas(), ElementsAre(229, 204, 178, 127, 102, 76, 51, 25));
    EXPECT_TRUE(shown().empty());
}

TEST_F(Toasts, AreDestroyedOnlyAfterTheirOwnEvent) {
    const QPointer<frmpopup> toast = &show();
    timer(toast->Timer1).pass();
    ASSERT_TRUE(toast);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(toast);
}

TEST_F(Toasts, TheCloseBoxEndsThem) {
    frmpopup& toast = show();
    (void)takeAlphas();
    QTest::mouseClick(&toast.Image1, Qt::LeftButton);
    EXPECT_TRUE(shown().empty());
    EXPECT_EQ(windows.alphas.size(), 8U);
}

TEST_F(Toasts, ASecondClickThatWasOnItsWayEndsNoOtherToast) {
    frmpopup& first = show("first");
    QTest::mouseClick(&first.Image1, Qt::LeftButton);
    const QPointer<frmpopup> second = &show("second");
    QTest::mouseClick(&first.Image1, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(second);
    EXPECT_EQ(shown().size(), 1U);
}

TEST_F(Toasts, AMouseThatIsDraggedOffTheCloseBoxClicksNothing) {
    frmpopup& toast = show();
    QTest::mousePress(&toast.Image1, Qt::LeftButton);
    QTest::mouseRelease(&toast.Image1, Qt::LeftButton, {}, QPoint(-50, 50));
    EXPECT_TRUE(toast.isVisible());
}

TEST_F(Toasts, OtherMouseButtonsDoNothing) {
    frmpopup& toast = show();
    QTest::mouseClick(&toast.Image1, Qt::RightButton);
    QTest::mouseClick(&toast.Label2, Qt::RightButton);
    EXPECT_EQ(shown().size(), 1U);
    EXPECT_EQ(toast.Label1.text(), "Hello");
}

TEST_F(Toasts, TheCloseBoxLightsUpUnderTheMouse) {
    frmpopup& toast = show();
    EXPECT_FALSE(toast.Image1.hovered());
    moveMouse(toast, toast.Image1);
    EXPECT_TRUE(toast.Image1.hovered());
    moveMouse(toast, toast.Label1);
    EXPECT_FALSE(toast.Image1.hovered());
    moveMouse(toast, toast.Image1);
    moveMouse(toast, toast);
    EXPECT_FALSE(toast.Image1.hovered());
}

TEST_F(Toasts, TheCopyLinkLeavesTheCloseBoxAsItWas) {
    frmpopup& toast = show();
    moveMouse(toast, toast.Image1);
    moveMouse(toast, toast.Label2);
    EXPECT_TRUE(toast.Image1.hovered());
}

TEST_F(Toasts, TheTextCanBeCopied) {
    frmpopup& toast = show("Your nick:\r\nAnn");
    EXPECT_EQ(toast.Label2.text(), "Copy to Clipboard");
    QTest::mouseClick(&toast.Label2, Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text(), "Your nick:\r\nAnn");
    EXPECT_EQ(toast.Label1.text(), "Text copied to clipboard.");
    EXPECT_TRUE(timer(toast.Timer1).enabled);
    QTest::mouseClick(&toast.Label2, Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text(), "Text copied to clipboard.");
}

TEST_F(Toasts, ShowAndCopyAllScripts) {
    const std::string names = "Zo\u00EB \u041F\u0440\u0438 \u05E9\u05DC \u4F60\u597D \U0001F600";
    frmpopup& toast = show(names);
    EXPECT_EQ(toast.Label1.accessibleName().toStdString(), names);
    QTest::mouseClick(&toast.Label2, Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), names);
}

TEST_F(Toasts, AHugeTextIsCopiedWhole) {
    const std::string text(100'000, 'x');
    frmpopup& toast = show(text);
    (void)toast.grab();
    QTest::mouseClick(&toast.Label2, Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text().size(), 100'000);
}

TEST_F(Toasts, HaveTheirPlacesColorsAndCursors) {
    frmpopup& toast = show();
    EXPECT_EQ(toast.Label1.geometry(), QRect(8, 40, 170, 65));
    EXPECT_EQ(toast.Label2.geometry(), QRect(90, 26, 89, 17));
    EXPECT_EQ(toast.Image1.geometry(), QRect(163, 7, 14, 16));
    EXPECT_EQ(toast.Label1.palette().color(QPalette::WindowText), QColor(0, 0, 64));
    EXPECT_EQ(toast.Label2.palette().color(QPalette::WindowText), QColor(31, 51, 107));
    EXPECT_TRUE(toast.Label2.font().underline());
    EXPECT_EQ(toast.Label1.cursor().shape(), toast.Image1.cursor().shape());
}

TEST_F(Toasts, AreAlertsWithATextALinkAndAButtonForAssistivePrograms) {
    frmpopup& toast = show();
    const std::tuple<QWidget*, QAccessible::Role, QString> parts[] = {
        {&toast, QAccessible::AlertMessage, "Cobweave"},
        {&toast.Label1, QAccessible::StaticText, "Hello"},
        {&toast.Label2, QAccessible::Link, "Copy to Clipboard"},
        {&toast.Image1, QAccessible::Button, "Close"},
    };
    for (const auto& [part, role, name] : parts) {
        const QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(part);
        EXPECT_EQ(face->role(), role) << name.toStdString();
        EXPECT_EQ(face->text(QAccessible::Name), name);
    }
}

TEST_F(Toasts, AThousandAtOnceFillThePlacesAndNoMore) {
    for (int count = 0; count < 1000; ++count)
        EXPECT_TRUE(popups.popup("Hello"));
    EXPECT_EQ(shown().size(), 11U);
}

}  // namespace
