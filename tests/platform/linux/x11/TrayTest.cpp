#include "platform/TrayHost.h"
#include "platform/linux/bus/StatusNotifierSearch.h"
#include "tests/platform/linux/x11/Desktop.h"
#include "tests/platform/linux/x11/IconHosts.h"
#include "tests/platform/linux/x11/IconProgram.h"
#include "tests/support/linux/SessionBus.h"

#include <QDBusVariant>

#include <chrono>
#include <csignal>

namespace {

using namespace std::chrono_literals;

/// A desktop with a session bus.
class Tray : public testing::Test {
protected:
    /// A panel of the older kind.
    [[nodiscard]] Child olderPanel() {
        Child panel({"trayer", "--edge", "bottom"});
        if (!becomesTrue([&] { return screen.ownerOf("_NET_SYSTEM_TRAY_S0") != 0; })) {
            throw std::runtime_error("the panel does not start");
        }
        return panel;
    }
    [[nodiscard]] bool isEmbedded() {
        return becomesTrue([&] { return screen.countBelowTop("_XEMBED_INFO") == 1; });
    }
    /// Icons that the panel knows by the bus, in words.
    [[nodiscard]] static QStringList announced() {
        return ofWatcher("RegisteredStatusNotifierItems").toStringList();
    }
    [[nodiscard]] static bool isHost() {
        return becomesTrue([] { return ofWatcher("IsStatusNotifierHostRegistered").toBool(); });
    }
    [[nodiscard]] static QVariant ofWatcher(const char* property) {
        auto question = QDBusMessage::createMethodCall(watcher, "/StatusNotifierWatcher",
                                                       "org.freedesktop.DBus.Properties", "Get");
        question << watcher << property;
        question.setAutoStartService(false);
        auto connection = QDBusConnection::connectToBus(
            qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), "asking");
        const auto answer = connection.call(question);
        QDBusConnection::disconnectFromBus("asking");
        return answer.arguments().value(0).value<QDBusVariant>().variant();
    }
    [[nodiscard]] static bool isAnnounced() {
        return becomesTrue([] { return announced().size() == 1; });
    }

    static constexpr const char* watcher = "org.kde.StatusNotifierWatcher";

    StandIn screen;
    SessionBus bus;
    const TemporaryFolder nothing;
    Variable folder{"XDG_RUNTIME_DIR", nothing.path().string()};
};

TEST_F(Tray, OfAnOlderPanelTakesTheIconAndTakesItAgainAfterARestart) {
    auto panel = olderPanel();
    IconProgram program;
    EXPECT_EQ(program.word(), "searching");
    EXPECT_EQ(program.word(), "found");
    EXPECT_TRUE(isEmbedded());
    panel = Child();
    ASSERT_TRUE(becomesTrue([&] { return screen.ownerOf("_NET_SYSTEM_TRAY_S0") == 0; }));
    panel = olderPanel();
    EXPECT_TRUE(isEmbedded());
}

TEST_F(Tray, OfAnOlderPanelIsFoundWhenItComesLater) {
    IconProgram program;
    EXPECT_EQ(program.word(), "searching");
    const auto panel = olderPanel();
    EXPECT_EQ(program.word(), "found");
    EXPECT_TRUE(isEmbedded());
}

TEST_F(Tray, OfAnOlderPanelNeedsNoBusAndStartsNone) {
    const Variable none("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    const auto panel = olderPanel();
    IconProgram program;
    EXPECT_EQ(program.word(), "searching");
    EXPECT_EQ(program.word(), "found");
    EXPECT_TRUE(isEmbedded());
    EXPECT_TRUE(std::filesystem::is_empty(nothing.path()));
}

TEST_F(Tray, OfAnOlderPanelIsUsedWhileTheBusDoesNotAnswer) {
    const auto panel = olderPanel();
    kill(bus.process(), SIGSTOP);
    IconProgram program;
    EXPECT_EQ(program.word(), "searching");
    EXPECT_EQ(program.word(), "found");
    EXPECT_TRUE(isEmbedded());
    kill(bus.process(), SIGCONT);
}

TEST_F(Tray, OfAPanelOnTheBusTakesTheIconAndTakesItAgainAfterARestart) {
    Panel panel;
    // Before that it has a place of the older kind already, which would be taken.
    ASSERT_TRUE(isHost());
    IconProgram program;
    EXPECT_EQ(program.word(), "searching");
    EXPECT_EQ(program.word(), "found");
    EXPECT_TRUE(isAnnounced());
    panel.end();
    EXPECT_TRUE(becomesTrue([] { return announced().isEmpty(); }));
    panel.start();
    EXPECT_TRUE(isAnnounced());
}

TEST_F(Tray, OfAPanelOnTheBusIsFoundWhenItComesLater) {
    IconProgram program;
    EXPECT_EQ(program.word(), "searching");
    const Panel panel;
    EXPECT_EQ(program.word(), "found");
}

TEST_F(Tray, OfAPanelOnTheBusGoesBeforeThatOfAnOlderOne) {
    ScriptedWatcher registered;
    registered.hasHost = true;
    const auto panel = olderPanel();
    const auto tray = makeTrayHost();
    int found = 0;
    tray->found = [&] { ++found; };
    tray->search();
    EXPECT_EQ(found, 0);
    EXPECT_TRUE(comesTrue([&] { return found == 1; }));
    EXPECT_GE(registered.calls, 1);
}

class IconSearch : public Tray {
protected:
    using State = StatusNotifierSearch::State;

    [[nodiscard]] testing::AssertionResult becomes(State state) {
        if (comesTrue([&] { return search.state() == state; })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << static_cast<int>(search.state());
    }

    StatusNotifierSearch search{20ms};
};

TEST_F(IconSearch, FindsNoHostWithoutAWatcherAndNoticesOneThatComes) {
    search.search();
    EXPECT_TRUE(becomes(State::NoHost));
    ScriptedWatcher watching;
    watching.hasHost = true;
    EXPECT_TRUE(becomes(State::Host));
}

TEST_F(IconSearch, TriesFiveTimesForAHostAndNoticesOneThatComesLater) {
    ScriptedWatcher watching;
    search.search();
    EXPECT_TRUE(becomes(State::NoHost));
    EXPECT_EQ(watching.calls, 5);
    watching.addHost();
    EXPECT_TRUE(becomes(State::Host));
    EXPECT_EQ(watching.calls, 6);
}

TEST_F(IconSearch, FindsAHostThatDoesNotAnnounceItself) {
    ScriptedWatcher watching;
    search.search();
    EXPECT_TRUE(comesTrue([&] { return watching.calls == 3; }));
    watching.hasHost = true;
    EXPECT_TRUE(becomes(State::Host));
}

TEST_F(IconSearch, TakesAWatcherThatDoesNotAnswerForUnresponsive) {
    ScriptedWatcher watching;
    watching.answers = false;
    search.search();
    EXPECT_TRUE(becomes(State::Unresponsive));
    watching.answers = true;
    watching.addHost();
    EXPECT_TRUE(becomes(State::Host));
}

TEST_F(IconSearch, BeginsAnewWithEachWatcher) {
    search.search();
    {
        const ScriptedWatcher first;
        EXPECT_TRUE(comesTrue([&] { return first.calls == 5; }));
    }
    ScriptedWatcher second;
    EXPECT_TRUE(comesTrue([&] { return second.calls == 2; }));
    second.hasHost = true;
    EXPECT_TRUE(becomes(State::Host));
}

TEST_F(IconSearch, TakesABusThatHangsForUnresponsiveAndGoesOnWithTheNextWatcher) {
    search.search();
    EXPECT_TRUE(becomes(State::NoHost));
    auto watching = std::make_unique<ScriptedWatcher>();
    EXPECT_TRUE(comesTrue([&] { return watching->calls == 1; }));
    kill(bus.process(), SIGSTOP);
    EXPECT_TRUE(becomes(State::Unresponsive));
    kill(bus.process(), SIGCONT);
    watching->addHost();
    EXPECT_TRUE(becomes(State::Host));
}

TEST_F(IconSearch, FindsNoHostWithoutABus) {
    for (const char* const where : {"unix:path=/nowhere/bus", "hello", "tcp:host=127.0.0.1"}) {
        const Variable none("DBUS_SESSION_BUS_ADDRESS", where);
        StatusNotifierSearch searching;
        searching.search();
        EXPECT_EQ(searching.state(), State::NoHost) << where;
    }
}

}  // namespace
