#include "platform/OwnWindows.h"
#include "tests/platform/shared/FoundMessenger.h"
#include "tests/platform/shared/WindowStandIn.h"

#include <QWidget>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

class SystemWindows : public FoundMessenger {
protected:
    [[nodiscard]] testing::AssertionResult hasTitle(WindowHandle window,
                                                    const std::string& expected) const {
        if (comesTrue([&] { return others.titleOf(window) == expected; })) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << "the title is " << others.titleOf(window);
    }

    WindowStandIn others;
};

TEST_F(SystemWindows, HaveNoMessengerWhereNoneRuns) {
    (void)others.openOther("MSN Messenger");
    start();
    EXPECT_EQ(windows->MessengerWindowHandle(), 0U);
}

TEST_F(SystemWindows, HaveAMessengerThatRunsAlready) {
    const auto messenger = others.openMessenger();
    start();
    EXPECT_TRUE(finds(messenger));
}

TEST_F(SystemWindows, ReportAMessengerThatComesAndGoes) {
    start();
    const auto messenger = others.openMessenger();
    EXPECT_TRUE(finds(messenger));
    EXPECT_GT(changes, 0);
    changes = 0;
    others.close(messenger);
    EXPECT_TRUE(finds(0));
    EXPECT_TRUE(comesTrue([this] { return changes > 0; }));
}

TEST_F(SystemWindows, KeepTheFirstMessengerOfSeveral) {
    start();
    const auto first = others.openMessenger();
    ASSERT_TRUE(finds(first));
    const auto second = others.openMessenger();
    EXPECT_TRUE(finds(first));
    others.close(first);
    EXPECT_TRUE(finds(second));
}

TEST_F(SystemWindows, AreTitledWithAllLettersOfTheCodePage) {
    start();
    const auto messenger = others.openMessenger();
    ASSERT_TRUE(finds(messenger));
    windows->SetWindowText(messenger, "5 \x80, caf\xE9");
    EXPECT_TRUE(hasTitle(messenger, "5 \xE2\x82\xAC, caf\xC3\xA9"));
    windows->SetWindowText(messenger, "");
    EXPECT_TRUE(hasTitle(messenger, ""));
}

TEST_F(SystemWindows, AreTitledWithLettersThatNoCodePageHasTogether) {
    start();
    const auto messenger = others.openMessenger();
    ASSERT_TRUE(finds(messenger));
    const std::string title =
        "Bj\xC3\xB6rk \xD0\x96\xD1\x83\xD0\xBA \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x8E\xB5";
    windows->SetWindowText(messenger, title);
    EXPECT_TRUE(hasTitle(messenger, title));
}

TEST_F(SystemWindows, MayBeNoneOrGone) {
    start();
    const auto messenger = others.openMessenger();
    const auto gone = others.openMessenger();
    others.close(gone);
    for (const WindowHandle none : {WindowHandle{0}, gone}) {
        windows->SetWindowText(none, "x");
        windows->giveFocusBack(none);
    }
    windows->SetWindowText(messenger, "still there");
    EXPECT_TRUE(hasTitle(messenger, "still there"));
}

TEST_F(SystemWindows, HaveOneThatTheUserWorksIn) {
    start();
    const auto one = others.openOther("one");
    const auto two = others.openOther("two");
    others.activate(one);
    EXPECT_TRUE(comesTrue([&] { return windows->foreground() == one; }));
    others.activate(two);
    EXPECT_TRUE(comesTrue([&] { return windows->foreground() == two; }));
    windows->giveFocusBack(two);
    EXPECT_TRUE(comesTrue([&] { return windows->foreground() == two; }));
}

class SystemOwnWindow : public testing::Test {
protected:
    [[nodiscard]] testing::AssertionResult hasAlpha(WindowHandle window, int expected) const {
        if (comesTrue([&] { return others.alphaOf(window) == expected; })) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << "it is " << others.alphaOf(window);
    }

    WindowStandIn others;
    std::unique_ptr<OwnWindows> own = makeOwnWindows();
};

TEST_F(SystemOwnWindow, IsAsSolidAsItIsSet) {
    const QWidget widget;
    for (const int alpha : {128, 1, 254, 255}) {
        own->setAlpha(widget.winId(), static_cast<std::uint8_t>(alpha));
        EXPECT_TRUE(hasAlpha(widget.winId(), alpha));
    }
}

TEST_F(SystemOwnWindow, IsNoneOfAnotherProgram) {
    const auto other = others.openOther("other");
    for (const WindowHandle none : {WindowHandle{0}, other}) {
        own->setAlpha(none, 100);
        own->setTopMost(none, true);
    }
    const QWidget widget;
    own->setAlpha(widget.winId(), 100);
    EXPECT_TRUE(hasAlpha(widget.winId(), 100));
    EXPECT_EQ(others.alphaOf(other), 255);
}

TEST_F(SystemOwnWindow, HasAWorkAreaThatIsNotEmptyWhereOneIsKnown) {
    const auto area = own->workArea();
    if (!area) return;
    EXPECT_LT(area->left, area->right);
    EXPECT_LT(area->top, area->bottom);
}

}  // namespace
