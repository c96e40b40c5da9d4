#include "platform/OwnWindows.h"
#include "tests/platform/linux/x11/Desktop.h"

#include <QWidget>

namespace {

/// A window of this program at 300, 300, of 100 pixels, and others that are put on top of it.
class TopMost : public Desktop {
protected:
    void showToast() {
        toast.setWindowFlags(Qt::X11BypassWindowManagerHint | Qt::FramelessWindowHint);
        toast.setAttribute(Qt::WA_ShowWithoutActivating);
        toast.setGeometry(300, 300, 100, 100);
        own->setTopMost(toast.winId(), true);
        toast.show();
        ASSERT_TRUE(isOnTop(numberOf(toast)));
    }
    [[nodiscard]] static xcb_window_t numberOf(const QWidget& widget) {
        return static_cast<xcb_window_t>(widget.winId());
    }
    [[nodiscard]] bool isOnTop(xcb_window_t window) {
        return comesTrue([&] { return other.topAt(320, 320) == window; });
    }
    [[nodiscard]] xcb_window_t openOverrideRedirect() {
        StandIn::Look look = looks::other("above");
        look.isOverrideRedirect = true;
        return other.open(look);
    }

    std::unique_ptr<OwnWindows> own = makeOwnWindows();
    QWidget toast;
};

TEST_F(TopMost, ComesUpAgainWhenAnotherWindowIsPutOnTop) {
    showToast();
    const auto above = openOverrideRedirect();
    other.move(above, 290, 290);
    EXPECT_TRUE(isOnTop(numberOf(toast)));
    other.raise(above);
    EXPECT_TRUE(isOnTop(numberOf(toast)));
}

TEST_F(TopMost, ComesUpAboveTheWindowsOfAManager) {
    manage();
    showToast();
    const auto window = open(looks::other("window"));
    other.move(window, 290, 290);
    other.sendToRoot(window, "_NET_ACTIVE_WINDOW", {2});
    EXPECT_TRUE(becomesTrue([&] { return other.focused() == window; }));
    EXPECT_TRUE(isOnTop(numberOf(toast)));
}

TEST_F(TopMost, KeepsPlaceSizeAndFocus) {
    const auto worked = open(looks::other("worked in"));
    other.focus(worked);
    showToast();
    const auto above = openOverrideRedirect();
    other.move(above, 290, 290);
    EXPECT_TRUE(isOnTop(numberOf(toast)));
    EXPECT_EQ(other.focused(), worked);
    const auto geometry = other.geometry(numberOf(toast));
    EXPECT_EQ(geometry.x, 300);
    EXPECT_EQ(geometry.y, 300);
    EXPECT_EQ(geometry.width, 100);
    EXPECT_EQ(geometry.height, 100);
}

TEST_F(TopMost, IsNoMoreWhenThatIsSet) {
    showToast();
    own->setTopMost(toast.winId(), false);
    // Served by the time that the next one is: both go the same way.
    QWidget next(nullptr, Qt::X11BypassWindowManagerHint);
    next.setGeometry(600, 300, 100, 100);
    own->setTopMost(next.winId(), true);
    next.show();
    const auto above = openOverrideRedirect();
    other.move(above, 550, 250);
    EXPECT_TRUE(comesTrue([&] { return other.topAt(620, 320) == numberOf(next); }));
    other.move(above, 290, 290);
    other.raise(above);
    const auto second = openOverrideRedirect();
    other.move(second, 550, 250);
    EXPECT_TRUE(comesTrue([&] { return other.topAt(620, 320) == numberOf(next); }));
    EXPECT_EQ(other.topAt(320, 320), above);
}

TEST_F(TopMost, DoesNotFightWithoutEnd) {
    showToast();
    const auto above = openOverrideRedirect();
    other.move(above, 290, 290);
    int wins = 0;
    // The other one goes up as often as we do.
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
    while (std::chrono::steady_clock::now() < end) {
        QCoreApplication::processEvents();
        if (other.topAt(320, 320) == numberOf(toast)) {
            ++wins;
            other.raise(above);
        }
    }
    EXPECT_GE(wins, 2);
    EXPECT_LE(wins, 5);
}

TEST_F(TopMost, IsForAManagedWindowWhatItsManagerKeepsAbove) {
    manage();
    QWidget widget;
    widget.setGeometry(300, 300, 100, 100);
    own->setTopMost(widget.winId(), true);
    widget.show();
    const auto isAbove = [&] {
        const auto state = other.numbers(numberOf(widget), "_NET_WM_STATE");
        return std::find(state.begin(), state.end(), other.atom("_NET_WM_STATE_ABOVE")) !=
               state.end();
    };
    EXPECT_TRUE(comesTrue([&] { return isListed(numberOf(widget)) && isAbove(); }));
    own->setTopMost(widget.winId(), false);
    EXPECT_TRUE(comesTrue([&] { return !isAbove(); }));
    own->setTopMost(widget.winId(), true);
    EXPECT_TRUE(comesTrue(isAbove));
    widget.hide();
    EXPECT_TRUE(comesTrue([&] { return !isListed(numberOf(widget)); }));
    own->setTopMost(widget.winId(), true);
    own->setTopMost(widget.winId(), false);
    widget.show();
    EXPECT_TRUE(comesTrue([&] { return isListed(numberOf(widget)); }));
    EXPECT_FALSE(isAbove());
}

TEST_F(TopMost, LeavesTheFocusWithAnotherWindowOfTheManager) {
    manage();
    QWidget widget;
    widget.setAttribute(Qt::WA_ShowWithoutActivating);
    widget.setGeometry(300, 300, 100, 100);
    widget.show();
    ASSERT_TRUE(comesTrue([&] { return isListed(numberOf(widget)); }));
    const auto worked = open(looks::other("worked in"));
    other.sendToRoot(worked, "_NET_ACTIVE_WINDOW", {2});
    ASSERT_TRUE(comesTrue([&] { return other.focused() == worked; }));
    const QPoint place = widget.pos();
    own->setTopMost(widget.winId(), true);
    EXPECT_TRUE(comesTrue([&] {
        const auto state = other.numbers(numberOf(widget), "_NET_WM_STATE");
        return std::find(state.begin(), state.end(), other.atom("_NET_WM_STATE_ABOVE")) !=
               state.end();
    }));
    EXPECT_EQ(other.focused(), worked);
    EXPECT_EQ(widget.pos(), place);
}

}  // namespace
