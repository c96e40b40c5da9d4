#include "tests/platform/linux/bus/PlayerBus.h"

#include <QDBusMessage>

#include <chrono>
#include <ostream>

namespace {

using namespace std::chrono_literals;

struct Without {
    const char* name;
    std::optional<std::string> address;
};

void PrintTo(const Without& without, std::ostream* stream) { *stream << without.name; }

class NoBus : public testing::TestWithParam<Without> {};

TEST_P(NoBus, IsADesktopWithoutAPlayer) {
    const TemporaryFolder nothing;
    const Variable folder("XDG_RUNTIME_DIR", nothing.path().string());
    const Variable address("DBUS_SESSION_BUS_ADDRESS", GetParam().address);
    const auto before = std::chrono::steady_clock::now();
    const auto player = makeMediaPlayer();
    EXPECT_LT(std::chrono::steady_clock::now() - before, 1s);
    QCoreApplication::processEvents();
    EXPECT_EQ(player->WinampWindow(), 0U);
    EXPECT_EQ(player->WindowTextOf(0), "");
    EXPECT_EQ(player->WindowTextOf(1), "");
    player->command(0, 40045);
    player->command(1, 40045);
}

const Without cases[] = {
    {"WithoutAnAddress", std::nullopt},
    {"WithAnEmptyAddress", ""},
    {"WithASocketThatIsNotThere", "unix:path=/nowhere/bus"},
    {"WithAnAddressThatIsNone", "hello"},
    {"WithABusThatWouldHaveToBeStarted", "autolaunch:"},
};

INSTANTIATE_TEST_SUITE_P(Table, NoBus, testing::ValuesIn(cases),
                         [](const auto& info) { return info.param.name; });

using Bus = PlayerBus;

TEST_F(Bus, IsFoundInTheUsersFolderWithoutAnAddress) {
    const ScriptedPlayer one("one", withSong("Playing", "", "First"));
    const Variable folder("XDG_RUNTIME_DIR", bus.folder().string());
    const Variable none("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    start();
    EXPECT_TRUE(shows("1. First - Winamp"));
}

TEST_F(Bus, TakesThePlayersAlongWhenItGoesAway) {
    const ScriptedPlayer one("one", withSong("Playing", "", "First"));
    start();
    ASSERT_TRUE(shows("1. First - Winamp"));
    const auto window = player->WinampWindow();
    std::string known = title();
    player->changed = [&] { known = title(); };
    bus.end();
    EXPECT_TRUE(comesTrue([&] { return known.empty(); }));
    EXPECT_EQ(player->WinampWindow(), 0U);
    player->command(window, 40045);
}

TEST_F(Bus, IsNotMadeToStartAPlayer) {
    auto one = std::make_unique<ScriptedPlayer>("one", withSong("Playing", "", "First"));
    start();
    ASSERT_TRUE(shows("1. First - Winamp"));
    const auto window = player->WinampWindow();
    one = nullptr;
    ASSERT_TRUE(shows(""));
    player->command(window, 40045);
    const ScriptedPlayer two("two", withSong("Playing", "", "Second"));
    ASSERT_TRUE(shows("1. Second - Winamp"));
    EXPECT_FALSE(bus.isSleeperAwake());
    // It would have been seen: whoever calls the sleeper by its name wakes it.
    auto connection = QDBusConnection::connectToBus(QString::fromStdString(bus.address()), "waker");
    connection.send(QDBusMessage::createMethodCall(SessionBus::sleeper, "/", "", "Ping"));
    EXPECT_TRUE(comesTrue([&] { return bus.isSleeperAwake(); }));
    QDBusConnection::disconnectFromBus("waker");
}

TEST_F(Bus, CarriesNothingAfterTheStartWithoutAPlayer) {
    const auto contains = [](const std::string& line, const std::string& text) {
        return line.find(text) != std::string::npos;
    };
    Child monitor({"dbus-monitor", "--address", bus.address()});
    while (!contains(monitor.readLine(), "NameLost")) {
    }
    start();
    std::string question;
    while (!contains(question, "member=ListNames"))
        question = monitor.readLine();
    const std::size_t from = question.find(" sender=") + 1;
    const std::string sender = question.substr(from, question.find(' ', from) - from + 1);
    ASSERT_TRUE(contains(question, sender));

    // A name that comes and goes is answered by nothing, nor is what the program asks itself.
    auto other = QDBusConnection::connectToBus(QString::fromStdString(bus.address()), "other");
    ASSERT_TRUE(other.registerService("net.example.Other"));
    for (int i = 0; i < 100; ++i) {
        QCoreApplication::processEvents();
        EXPECT_EQ(title(), "");
        command(40045);
    }
    other.send(QDBusMessage::createSignal("/", "net.example.Other", "Marker"));
    std::string line;
    while (!contains(line, "member=Marker")) {
        line = monitor.readLine();
        EXPECT_FALSE(contains(line, sender)) << line;
    }
    QDBusConnection::disconnectFromBus("other");
}

}  // namespace
