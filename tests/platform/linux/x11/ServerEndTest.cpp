#include "platform/OwnWindows.h"
#include "platform/TrayHost.h"
#include "platform/linux/x11/X11Client.h"
#include "tests/platform/linux/x11/Desktop.h"
#include "tests/support/Variable.h"
#include "tests/support/linux/XServer.h"

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <csignal>
#include <ctime>
#include <utility>

namespace {

using namespace std::chrono_literals;

using looks::mainClass;

/// All that is asked of the windows of others and of our own, with nobody there to answer.
void expectQuiet(ForeignWindows& windows, OwnWindows& own) {
    EXPECT_EQ(windows.MessengerWindowHandle(), 0U);
    EXPECT_EQ(windows.foreground(), 0U);
    windows.SetWindowText(1, "x");
    windows.requestMessengerEnd();
    windows.giveFocusBack(1);
    own.setAlpha(1, 100);
    own.setTopMost(1, true);
    EXPECT_EQ(own.workArea(), std::nullopt);
    QCoreApplication::processEvents();
}

[[nodiscard]] double processorSeconds() {
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

TEST(NoServer, IsADesktopWithoutWindows) {
    for (const char* const name : {"", ":4711", "hello"}) {
        const Variable display("DISPLAY", name);
        const auto windows = makeForeignWindows();
        const auto own = makeOwnWindows();
        expectQuiet(*windows, *own);
    }
}

TEST(AServerThatEnds, TakesMessengerAlongAndIsNotWaitedFor) {
    XServer server;
    const Variable display("DISPLAY", server.name());
    auto windows = makeForeignWindows();
    const auto own = makeOwnWindows();
    const auto tray = makeTrayHost();
    tray->search();
    {
        StandIn other;
        const auto window = other.open(mainClass("MSN Messenger"));
        ASSERT_TRUE(comesTrue([&] { return windows->MessengerWindowHandle() == window; }));
        int changes = 0;
        windows->changed = [&] { ++changes; };
        server.end();
        EXPECT_TRUE(comesTrue([&] { return changes > 0; }));
        EXPECT_EQ(changes, 1);
    }
    expectQuiet(*windows, *own);
    // An ended connection stays readable for ever, which must not keep the loop busy.
    const double before = processorSeconds();
    QEventLoop loop;
    QTimer::singleShot(200ms, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_LT(processorSeconds() - before, 0.05);

    XServer next;
    const Variable nextDisplay("DISPLAY", next.name());
    windows = makeForeignWindows();
    StandIn other;
    const auto window = other.open(mainClass("MSN Messenger"));
    EXPECT_TRUE(comesTrue([&] { return windows->MessengerWindowHandle() == window; }));
}

TEST(AServerThatEnds, MayDoSoInTheMiddleOfAQuestion) {
    for (int round = 0; round < 5; ++round) {
        XServer server;
        const Variable display("DISPLAY", server.name());
        const auto windows = makeForeignWindows();
        const auto own = makeOwnWindows();
        {
            StandIn other;
            (void)other.open(mainClass("MSN Messenger"));
            windows->requestMessengerEnd();
            windows->giveFocusBack(1);
            server.end();
        }
        (void)windows->foreground();
        (void)own->workArea();
        EXPECT_TRUE(comesTrue([&] { return windows->MessengerWindowHandle() == 0; }));
        expectQuiet(*windows, *own);
    }
}

TEST(AServerThatStandsStill, HoldsNothingUp) {
    XServer server;
    const Variable display("DISPLAY", server.name());
    StandIn other;
    const auto window = other.open(mainClass("MSN Messenger"));
    const auto windows = makeForeignWindows();
    const auto own = makeOwnWindows();
    ASSERT_EQ(windows->MessengerWindowHandle(), window);
    kill(server.process(), SIGSTOP);
    const auto patience = std::exchange(X11Client::longestWait, X11Client::usualWait);
    const auto before = std::chrono::steady_clock::now();
    for (int count = 0; count < 20; ++count) {
        (void)windows->foreground();
        (void)own->workArea();
    }
    // More than the connection's buffers take.
    for (int count = 0; count < 2000; ++count)
        windows->SetWindowText(window, std::string(500, 'x'));
    windows->SetWindowText(window, "last");
    QCoreApplication::processEvents();
    EXPECT_LT(std::chrono::steady_clock::now() - before, 2s);
    EXPECT_EQ(windows->MessengerWindowHandle(), window);
    X11Client::longestWait = patience;
    kill(server.process(), SIGCONT);
    EXPECT_TRUE(comesTrue([&] { return other.bytes(window, "WM_NAME") == "last"; }));
    other.close(window);
    EXPECT_TRUE(comesTrue([&] { return windows->MessengerWindowHandle() == 0; }));
}

TEST(AScreen, IsTheOneThatTheDisplayNames) {
    const XServer server(2);
    const Variable second("DISPLAY", server.name(1));
    StandIn there;
    const auto windows = makeForeignWindows();
    xcb_window_t elsewhere = 0;
    std::unique_ptr<StandIn> here;
    {
        const Variable first("DISPLAY", server.name(0));
        here = std::make_unique<StandIn>();
        elsewhere = here->open(mainClass("elsewhere"));
    }
    ASSERT_NE(here->root(), there.root());
    ASSERT_NE(elsewhere, 0U);
    const auto window = there.open(mainClass("there"));
    EXPECT_TRUE(comesTrue([&] { return windows->MessengerWindowHandle() == window; }));
    there.close(window);
    EXPECT_TRUE(comesTrue([&] { return windows->MessengerWindowHandle() == 0; }));
}

}  // namespace
