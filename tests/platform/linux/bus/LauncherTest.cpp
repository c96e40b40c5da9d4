#include "platform/Launcher.h"

#include "tests/support/comesTrue.h"
#include "tests/support/linux/SessionBus.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <optional>
#include <string>
#include <vector>

namespace {

constexpr const char* id = "net.example.Some-Program";

/// A desktop whose launchers call the programs that they belong to.
class ProgramLauncher : public testing::Test {
protected:
    SessionBus bus;
    QDBusConnection desktop{QDBusConnection::connectToBus(QString::fromStdString(bus.address()),
                                                          "desktop of the launcher")};
    std::unique_ptr<Launcher> launcher = makeLauncher(id);
    int activations = 0;
    std::vector<std::string> actions;

    ProgramLauncher() {
        launcher->activated = [this] { ++activations; };
        launcher->actionChosen = [this](std::string_view name) { actions.emplace_back(name); };
    }
    ~ProgramLauncher() override { QDBusConnection::disconnectFromBus("desktop of the launcher"); }

    /// Waits until somebody can be called.
    void waitForOwner() {
        ASSERT_TRUE(
            comesTrue([&] { return desktop.interface()->isServiceRegistered(id).value(); }));
    }
    /// The type of the answer to a call, once it is there.
    [[nodiscard]] QDBusMessage::MessageType answerTo(const QString& method,
                                                     const QVariantList& arguments) {
        auto call = QDBusMessage::createMethodCall(id, "/net/example/Some_Program",
                                                   "org.freedesktop.Application", method);
        call.setArguments(arguments);
        const auto pending = desktop.asyncCall(call);
        EXPECT_TRUE(comesTrue([&] { return pending.isFinished(); })) << method.toStdString();
        return pending.reply().type();
    }
};

TEST_F(ProgramLauncher, ReportsAClick) {
    launcher->listen();
    waitForOwner();
    EXPECT_EQ(answerTo("Activate", {QVariantMap()}), QDBusMessage::ReplyMessage);
    EXPECT_EQ(activations, 1);
    EXPECT_TRUE(actions.empty());
}

TEST_F(ProgramLauncher, ReportsWhichEntryOfItsMenuWasChosen) {
    launcher->listen();
    waitForOwner();
    EXPECT_EQ(answerTo("ActivateAction", {"notes", QVariantList(), QVariantMap()}),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(actions, std::vector<std::string>{"notes"});
    EXPECT_EQ(activations, 0);
}

TEST_F(ProgramLauncher, TakesFilesForAClick) {
    launcher->listen();
    waitForOwner();
    EXPECT_EQ(answerTo("Open", {QStringList{"file:///etc/hosts"}, QVariantMap()}),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(activations, 1);
}

TEST_F(ProgramLauncher, AnswersAnythingElseWithAnError) {
    launcher->listen();
    waitForOwner();
    EXPECT_EQ(answerTo("Deactivate", {}), QDBusMessage::ErrorMessage);
    EXPECT_EQ(answerTo("Activate", {"now"}), QDBusMessage::ErrorMessage);
    EXPECT_EQ(activations, 0);
}

TEST_F(ProgramLauncher, StaysWithTheCopyThatRunsAlready) {
    launcher->listen();
    waitForOwner();
    const auto second = makeLauncher(id);
    int secondActivations = 0;
    second->activated = [&] { ++secondActivations; };
    second->listen();
    for (int click = 0; click < 3; ++click) {
        EXPECT_EQ(answerTo("Activate", {QVariantMap()}), QDBusMessage::ReplyMessage);
    }
    EXPECT_EQ(activations, 3);
    EXPECT_EQ(secondActivations, 0);
}

TEST_F(ProgramLauncher, IsQuietWhenTheBusGoesAway) {
    launcher->listen();
    waitForOwner();
    bus.end();
    EXPECT_TRUE(comesTrue([&] { return !desktop.isConnected(); }));
    EXPECT_EQ(activations, 0);
}

TEST(LauncherWithoutABus, IsQuiet) {
    const TemporaryFolder nothing;
    const Variable folder("XDG_RUNTIME_DIR", nothing.path().string());
    const Variable address("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    const auto launcher = makeLauncher(id);
    launcher->activated = [] { FAIL(); };
    launcher->listen();
    QCoreApplication::processEvents();
}

}  // namespace
