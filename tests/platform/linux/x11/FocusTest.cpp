#include "tests/platform/linux/x11/Desktop.h"

#include <QWidget>

namespace {

/// The window that the user works in, with a window manager and without one.
class Foreground : public Desktop, public testing::WithParamInterface<bool> {
protected:
    Foreground() {
        if (GetParam()) manage();
        start();
    }
    /// Makes it the one that the user works in.
    void activate(xcb_window_t window) {
        if (managed) {
            other.sendToRoot(window, "_NET_ACTIVE_WINDOW", {2});
        } else {
            other.focus(window);
        }
        ASSERT_TRUE(hasFocus(window));
    }
    [[nodiscard]] bool hasFocus(xcb_window_t window) {
        return comesTrue([&] { return other.focused() == window; }) &&
               comesTrue([&] { return windows->foreground() == window; });
    }
    /// A window of this program that window managers leave alone.
    [[nodiscard]] std::unique_ptr<QWidget> toast() {
        auto window = std::make_unique<QWidget>(nullptr, Qt::X11BypassWindowManagerHint);
        window->setAttribute(Qt::WA_ShowWithoutActivating);
        window->setGeometry(300, 300, 100, 100);
        window->show();
        const auto handle = static_cast<xcb_window_t>(window->winId());
        EXPECT_TRUE(comesTrue([&] { return other.topAt(350, 350) == handle; }));
        return window;
    }
};

TEST_P(Foreground, IsTheWindowThatTheUserWorksIn) {
    const auto one = open(looks::other("one"));
    const auto two = open(looks::other("two"));
    activate(one);
    EXPECT_EQ(windows->foreground(), one);
    activate(two);
    EXPECT_EQ(windows->foreground(), two);
}

TEST_P(Foreground, StaysWithTheUserWhenAToastIsShown) {
    const auto window = open(looks::other("one"));
    activate(window);
    const auto shown = toast();
    windows->giveFocusBack(window);
    windows->giveFocusBack(window);
    (void)stays(0);
    EXPECT_EQ(other.focused(), window);
    EXPECT_EQ(windows->foreground(), window);
}

TEST_P(Foreground, IsGivenBackByAWindowOfOurs) {
    const auto window = open(looks::other("one"));
    activate(window);
    const auto shown = toast();
    const auto handle = static_cast<xcb_window_t>(shown->winId());
    other.focus(handle);
    ASSERT_EQ(other.focused(), handle);
    windows->giveFocusBack(window);
    EXPECT_TRUE(hasFocus(window));
}

TEST_P(Foreground, IsNotTakenFromAnotherProgram) {
    const auto one = open(looks::other("one"));
    const auto two = open(looks::other("two"));
    activate(two);
    windows->giveFocusBack(one);
    (void)stays(0);
    EXPECT_EQ(other.focused(), two);
    EXPECT_EQ(windows->foreground(), two);
}

TEST_P(Foreground, IsNotGivenToAWindowThatIsGone) {
    const auto one = open(looks::other("one"));
    const auto two = open(looks::other("two"));
    activate(two);
    other.close(one);
    windows->giveFocusBack(one);
    windows->giveFocusBack(0);
    (void)stays(0);
    EXPECT_EQ(other.focused(), two);
}

INSTANTIATE_TEST_SUITE_P(Table, Foreground, testing::Bool(), [](const auto& info) {
    return info.param ? "WithAWindowManager" : "WithoutAWindowManager";
});

using ForegroundOfNothing = Desktop;

TEST_F(ForegroundOfNothing, IsNoWindowAndTakesTheOneThatIsGivenBack) {
    start();
    const auto window = open(looks::other("one"));
    other.focus(XCB_INPUT_FOCUS_NONE);
    EXPECT_EQ(windows->foreground(), 0U);
    windows->giveFocusBack(window);
    EXPECT_TRUE(comesTrue([&] { return other.focused() == window; }));
}

}  // namespace
