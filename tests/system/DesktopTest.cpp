#include "tests/support/Relay.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"
#include "tests/support/linux/Child.h"
#include "tests/support/linux/Display.h"
#include "tests/support/linux/Program.h"
#include "tests/support/linux/SessionBus.h"
#include "tests/support/linux/StandIn.h"
#include "tests/support/messages.h"
#include "tests/support/readFile.h"
#include "tests/support/storedSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>

#include <cstdlib>
#include <fstream>

namespace {

using Options = std::vector<std::pair<std::string, std::string>>;

/// The program on a desktop with a window manager, and a Messenger that is no more than a window.
class OnTheDesktop : public testing::Test {
protected:
    static constexpr int screenHeight = 768;
    static constexpr int toastHeight = 116;

    Display display;
    Variable displayName{"DISPLAY", display.name()};
    StandIn other;
    std::unique_ptr<Program> program;

    void start(const Options& settings = {}) {
        giveIconAPlace();
        const auto prepare = [&](const std::filesystem::path& folder) {
            writeSettings(folder, storedOptions({{"useristyping", "False"}}));
            writeSettings(folder, storedOptions(settings));
        };
        program = std::make_unique<Program>(Program::Options{
            .environment = {{"DISPLAY", display.name()}, {"DBUS_SESSION_BUS_ADDRESS", "disabled:"}},
            .prepare = prepare});
        program->waitUntilReady();
    }

    /// Without one the program would say so in a toast, on a slow machine before the others.
    virtual void giveIconAPlace() {
        constexpr const char* place = "_NET_SYSTEM_TRAY_S0";
        if (other.ownerOf(place) == 0) other.takeSelection(place);
    }

    /// Opens a window of Messenger's process, and waits until the window manager has taken it.
    [[nodiscard]] xcb_window_t open(const std::string& title) {
        const xcb_window_t window = other.open(StandIn::Look::ofMessenger(title));
        if (!becomesTrue([&] { return other.isListed(window); })) {
            throw std::runtime_error("the window manager does not take a window");
        }
        return window;
    }
    [[nodiscard]] xcb_window_t openMessenger() { return open("MSN Messenger"); }
    /// The window gets this title, soon.
    [[nodiscard]] testing::AssertionResult isTitled(xcb_window_t window, const std::string& title) {
        if (becomesTrue([&] { return other.bytes(window, "_NET_WM_NAME") == title; })) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure()
               << "titled " << other.bytes(window, "_NET_WM_NAME").value_or("nothing") << "; "
               << program->errors();
    }
    /// The same for a program that has just been started: the client sends these bytes until it has
    /// found the window.
    [[nodiscard]] testing::AssertionResult isTitledBy(Relay& relay, const std::string& bytes,
                                                      xcb_window_t window,
                                                      const std::string& title) {
        (void)becomesTrue([&] {
            (void)relay.up(bytes);
            return other.bytes(window, "_NET_WM_NAME") == title;
        });
        return isTitled(window, title);
    }
    /// Whether a window of the program stands in the place of the toast of this slot.
    [[nodiscard]] bool isToastAt(int slot) {
        const xcb_window_t window = other.topAt(17 + 5, screenHeight - toastHeight * slot - 5);
        if (window == 0) return false;
        const auto place = other.geometry(window);
        return place.x == 17 && place.y == screenHeight - toastHeight * (slot + 1) &&
               place.width == 181 && place.height == toastHeight;
    }
    [[nodiscard]] bool isShown(const std::string& title) const {
        return display.runs("xdotool search --onlyvisible --name '^" + title + "$'");
    }
    void clickAt(int left, int top, const std::string& button = "1") const {
        ASSERT_TRUE(display.runs("xdotool mousemove " + std::to_string(left) + " " +
                                 std::to_string(top) + " click " + button));
    }
};

TEST_F(OnTheDesktop, AnAlertIsAToastAtTheBottomLeftThatCanBeClosed) {
    start({{"alertoffline", "True"}});
    Relay relay = Relay::through(Program::port);
    (void)relay.down("FLN bob@example.com\r\n");
    EXPECT_TRUE(becomesTrue([&] { return isToastAt(0); }));
    EXPECT_FALSE(isToastAt(1));
    (void)relay.down("FLN carol@example.com\r\n");
    EXPECT_TRUE(becomesTrue([&] { return isToastAt(1); }));
    // The close box of the lower one.
    clickAt(17 + 170, screenHeight - toastHeight + 15);
    EXPECT_TRUE(becomesTrue([&] { return !isToastAt(0); }));
    EXPECT_TRUE(isToastAt(1));
}

TEST_F(OnTheDesktop, AToastEndsByItselfAndTakesNoFocusMeanwhile) {
    start({{"alertoffline", "True"}});
    const xcb_window_t work = other.open({"work", "Work", "Work"});
    other.focus(work);
    ASSERT_TRUE(becomesTrue([&] { return other.focused() == work; }));
    Relay relay = Relay::through(Program::port);
    (void)relay.down("FLN bob@example.com\r\n");
    ASSERT_TRUE(becomesTrue([&] { return isToastAt(0); }));
    EXPECT_EQ(other.focused(), work);
    clickAt(17 + 100, screenHeight - toastHeight + 30);
    EXPECT_TRUE(becomesTrue([&] { return !isToastAt(0); }));
    EXPECT_EQ(other.focused(), work);
}

TEST_F(OnTheDesktop, NotesThatCannotBeSavedAreReportedInABoxAndKept) {
    start();
    // Nothing can take its place.
    std::filesystem::create_directory(program->notes());
    Relay relay = Relay::through(Program::port);
    (void)relay.up(clientText("!note buy milk"));
    // Toasts are titled alike, but no window manager lists them.
    const auto listed = [&] { return other.numbers(other.root(), "_NET_CLIENT_LIST"); };
    ASSERT_TRUE(becomesTrue([&] { return listed().size() == 1; }));
    const xcb_window_t box = listed().front();
    EXPECT_EQ(other.bytes(box, "_NET_WM_NAME"), "Cobweave");
    EXPECT_THAT(program->errors(),
                testing::HasSubstr("The notes could not be saved to " + program->notes().string()));
    ASSERT_TRUE(becomesTrue([&] {
        other.focus(box);
        return other.focused() == box;
    }));
    ASSERT_TRUE(display.runs("xdotool key Return"));
    EXPECT_TRUE(becomesTrue([&] { return listed().empty(); }));
    std::filesystem::remove(program->notes());
    (void)relay.up(clientText("!note and bread"));
    EXPECT_TRUE(
        becomesTrue([&] { return readFile(program->notes()) == "buy milk\r\nand bread\r\n\r\n"; }));
}

TEST_F(OnTheDesktop, AToastStaysAboveAWindowThatIsRaisedLater) {
    start({{"alertoffline", "True"}});
    const xcb_window_t work = other.open({"work", "Work", "Work"});
    Relay relay = Relay::through(Program::port);
    (void)relay.down("FLN bob@example.com\r\n");
    ASSERT_TRUE(becomesTrue([&] { return isToastAt(0); }));
    other.move(work, 0, screenHeight - 150);
    other.raise(work);
    EXPECT_TRUE(becomesTrue([&] { return isToastAt(0); }));
}

TEST_F(OnTheDesktop, TheSignInIsShownInMessengersTitle) {
    const xcb_window_t messenger = openMessenger();
    start({{"progress", "1"}, {"messengerwindow", "1"}});
    Relay relay = Relay::through(Program::port);
    EXPECT_TRUE(
        isTitledBy(relay, "VER 1 MSNP10 CVR0\r\n", messenger, "Suggested signin progress: 5%"));
    (void)relay.up("USR 3 TWN I ann@example.com\r\n");
    EXPECT_TRUE(isTitled(messenger, "Suggested signin progress: 15%"));
    (void)relay.up("QNG\r\n");
    EXPECT_TRUE(isTitled(messenger, "Suggested signin progress: 95%"));
    (void)relay.up("OUT\r\n");
    EXPECT_TRUE(isTitled(messenger, "MSN Messenger"));
}

TEST_F(OnTheDesktop, TheEndOfTheSignInBringsTheUsersTitleBack) {
    const xcb_window_t messenger = openMessenger();
    start({{"progress", "1"},
           {"messengerwindow", "1"},
           {"windowrename", "1"},
           {"windowrenamecaption", "Mine"}});
    EXPECT_TRUE(isTitled(messenger, "Mine"));
    Relay relay = Relay::through(Program::port);
    (void)relay.up("SYN 4 0 0\r\n");
    EXPECT_TRUE(isTitled(messenger, "Suggested signin progress: 30%"));
    (void)relay.up("CHG 5 NLN 0\r\n");
    EXPECT_TRUE(isTitled(messenger, "Mine"));
    (void)relay.up("SYN 6 0 0\r\n");
    EXPECT_TRUE(isTitled(messenger, "Mine"));
}

TEST_F(OnTheDesktop, ALostConnectionBringsTheUsersTitleBack) {
    const xcb_window_t messenger = openMessenger();
    start({{"progress", "1"}, {"messengerwindow", "1"}, {"windowrenamecaption", "Mine"}});
    Relay relay = Relay::through(Program::port);
    EXPECT_TRUE(isTitledBy(relay, "CHG 5 NLN 0\r\n", messenger, "Mine"));
    other.setTitle(messenger, "Messenger's own");
    relay.client.close();
    EXPECT_TRUE(isTitled(messenger, "Mine"));
}

TEST_F(OnTheDesktop, AMessengerThatStartsLaterOrAgainGetsTheUsersTitle) {
    start({{"windowrename", "1"}, {"windowrenamecaption", "Mine"}});
    for (int time = 0; time < 3; ++time) {
        const xcb_window_t messenger = openMessenger();
        EXPECT_TRUE(isTitled(messenger, "Mine"));
        other.close(messenger);
    }
}

TEST_F(OnTheDesktop, AConversationKeepsItsTitle) {
    const xcb_window_t conversation = open("Bob - Conversation");
    start({{"windowrename", "1"}, {"windowrenamecaption", "Mine"}});
    EXPECT_TRUE(isTitled(openMessenger(), "Mine"));
    EXPECT_TRUE(isTitled(conversation, "Bob - Conversation"));
}

/// Clicks and keys of somebody who starts the program for the first time.
class FirstRun : public OnTheDesktop {
protected:
    TemporaryFolder tools;

    void startForTheFirstTime() {
        const auto wine = tools.path() / "wine";
        std::ofstream(wine) << "#!/bin/sh\nprintf '%s' \"$*\" > " << started().string() << '\n';
        std::filesystem::permissions(wine, std::filesystem::perms::owner_all);
        const auto place = tools.path() / "drive_c" / "Program Files" / "MSN Messenger";
        std::filesystem::create_directories(place);
        std::ofstream(place / "msnmsgr.exe").close();
        std::ofstream(tools.path() / "system.reg").close();
        program = std::make_unique<Program>(
            Program::Options{.environment = {{"DISPLAY", display.name()},
                                             {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
                                             {"WINEPREFIX", tools.path().string()},
                                             {"PATH", tools.path().string() + ":/usr/bin:/bin"}}});
        program->waitUntilReady();
        display.waitForWindow(options);
    }
    [[nodiscard]] std::filesystem::path started() const { return tools.path() / "started"; }
    [[nodiscard]] std::string commandOfTheClient() const { return readFile(started()); }
    void clickIn(const char* title, int left, int top) const {
        ASSERT_TRUE(display.runs(std::string("xdotool search --onlyvisible --name '^") + title +
                                 "$' windowactivate --sync mousemove --window %1 " +
                                 std::to_string(left) + " " + std::to_string(top) + " click 1"));
    }
    /// Answers the box that is open, and waits until it is gone.
    void answer(const char* key) {
        display.waitForWindow("Cobweave");
        display.press("Cobweave", key);
    }

    static constexpr const char* options = "Cobweave - Options";
};

/// On a session bus, as a launcher's click and its menu come to it.
class Launched : public OnTheDesktop {
protected:
    SessionBus bus;

    ~Launched() override { QDBusConnection::disconnectFromBus(desktop.name()); }

    void startOnTheBus() {
        giveIconAPlace();
        startWithoutAPlace();
    }
    void startWithoutAPlace() {
        program = std::make_unique<Program>(
            Program::Options{.environment = {{"DISPLAY", display.name()},
                                             {"DBUS_SESSION_BUS_ADDRESS", bus.address()}},
                             .prepare = [](const std::filesystem::path& folder) {
                                 writeSettings(folder, storedOptions({{"useristyping", "False"}}));
                             }});
        program->waitUntilReady();
    }
    /// Calls whoever owns the program's name.
    [[nodiscard]] bool calls(const char* method, const QVariantList& arguments) {
        return desktop.call(callOf(method, arguments)).type() == QDBusMessage::ReplyMessage;
    }
    /// The same, and goes on at once.
    void startCalling(const char* method, const QVariantList& arguments) {
        desktop.asyncCall(callOf(method, arguments));
    }
    /// Tells the bus how the program is started, as its package does: here by a file that appears,
    /// for which the test starts it. Returns that file.
    [[nodiscard]] std::filesystem::path makeStartable() {
        const auto wanted = bus.folder() / "wanted";
        std::ofstream(bus.folder() / "program.service")
            << "[D-BUS Service]\nName=" << COBWEAVE_ID << "\nExec=/usr/bin/touch "
            << wanted.string() << '\n';
        const auto answer = desktop.call(
            QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                           "org.freedesktop.DBus", "ReloadConfig"));
        EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage);
        return wanted;
    }

private:
    int count = 0;
    QCoreApplication application{count, nullptr};
    QDBusConnection desktop{
        QDBusConnection::connectToBus(QString::fromStdString(bus.address()), "desktop")};

    [[nodiscard]] static QDBusMessage callOf(const char* method, const QVariantList& arguments) {
        auto call = QDBusMessage::createMethodCall(COBWEAVE_ID, "/net/cobweave/Cobweave",
                                                   "org.freedesktop.Application", method);
        call.setArguments(arguments);
        return call;
    }
};

TEST_F(Launched, ShowsTheOptionsByTheClickThatStartsIt) {
    const std::filesystem::path wanted = makeStartable();
    startCalling("Activate", {QVariantMap()});
    ASSERT_TRUE(becomesTrue([&] { return std::filesystem::exists(wanted); }));
    startOnTheBus();
    display.waitForWindow("Cobweave - Options");
}

TEST_F(Launched, ShowsTheOptionsByAClickAndEndsByItsMenu) {
    startOnTheBus();
    // The name is asked for when the first line has been printed.
    ASSERT_TRUE(becomesTrue([&] { return calls("Activate", {QVariantMap()}); }));
    display.waitForWindow("Cobweave - Options");
    ASSERT_TRUE(calls("ActivateAction", {"quit", QVariantList(), QVariantMap()}));
    EXPECT_EQ(program->waitForEnd(), 0);
}

TEST_F(Launched, ShowsEachWindowByItsEntryInTheMenu) {
    startOnTheBus();
    const auto choose = [&](const char* name) {
        return calls("ActivateAction", {name, QVariantList(), QVariantMap()});
    };
    ASSERT_TRUE(becomesTrue([&] { return choose("nothing of ours"); }));
    for (const auto& [name, title] : {std::pair{"options", "Cobweave - Options"},
                                      {"help", "Cobweave - Help"},
                                      {"notes", "Cobweave - Notes"},
                                      {"log", "Cobweave - Log"},
                                      {"about", "Cobweave - About"}}) {
        EXPECT_FALSE(isShown(title)) << title;
        ASSERT_TRUE(choose(name)) << name;
        display.waitForWindow(title);
    }
}

TEST_F(Launched, SaysOnceWhatToDoWithoutAPlaceForItsIcon) {
    startWithoutAPlace();
    EXPECT_TRUE(becomesTrue([&] { return isToastAt(0); }));
    const std::string errors = program->errors();
    const auto reported = errors.find("this desktop has no place for an icon");
    EXPECT_NE(reported, std::string::npos) << errors;
    EXPECT_EQ(errors.find("this desktop has no place for an icon", reported + 1),
              std::string::npos);
}

TEST_F(FirstRun, LeadsFromTheOptionsToAClientThatSignsInWithTheChosenStatus) {
    startForTheFirstTime();
    display.press(options, "Escape");
    clickIn(options, 90, 130);
    clickIn(options, 346, 157);
    ASSERT_TRUE(display.runs("xdotool sleep 0.3 key Down key Return"));
    clickIn(options, 510, 380);
    // Settings are needed; sign out, please; would you like to see the help?
    answer("Return");
    answer("Return");
    EXPECT_TRUE(becomesTrue(
        [&] { return commandOfTheClient() == "C:\\Program Files\\MSN Messenger\\msnmsgr.exe"; }));
    answer("alt+y");
    display.waitForWindow("Cobweave - Help");
    Relay relay = Relay::through(Program::port);
    EXPECT_EQ(relay.up("CHG 5 NLN 268435500\r\n"), "CHG 5 BSY 268435500\r\n");
}

/// With a notification area of the older kind at the upper left corner.
class WithATray : public OnTheDesktop {
protected:
    Child tray = startTray();

    void giveIconAPlace() override {}
    /// Windows keep clear of it.
    [[nodiscard]] static Child startTray() {
        return Child({"trayer", "--edge", "top", "--align", "left", "--widthtype", "request",
                      "--height", "24", "--SetDockType", "true", "--SetPartialStrut", "true"});
    }
    [[nodiscard]] bool hasIcon() { return other.countBelowTop("_XEMBED_INFO") == 1; }

    void choose(const std::string& key) {
        ASSERT_TRUE(becomesTrue([&] { return hasIcon(); }));
        chooseFromIcon(key);
    }
    /// The same where the icon is known to be there: `hasIcon` takes other windows for icons.
    void chooseFromIcon(const std::string& key) {
        // A click that comes while another window is going away may be lost on it.
        int looks = 0;
        ASSERT_TRUE(becomesTrue([&] {
            if (looks++ % 250 == 0) clickAt(12, 12, "3");
            return isMenuOpen();
        }));
        // The menu is seen a little before it has the keyboard.
        ASSERT_TRUE(
            becomesTrue([&] { return display.runs("xdotool key " + key) && !isMenuOpen(); }));
    }
    /// Below the tool-tip, and narrower than any other window of the program.
    [[nodiscard]] bool isMenuOpen() {
        const xcb_window_t window = other.topAt(60, 100);
        return window != 0 && other.geometry(window).width < 200;
    }
};

TEST_F(WithATray, EachWindowOpensByItsMenuEntryAndClosesByEscape) {
    start();
    for (const auto& [key, title] : {std::pair{"n", "Cobweave - Notes"},
                                     {"l", "Cobweave - Log"},
                                     {"h", "Cobweave - Help"},
                                     {"a", "Cobweave - About"}}) {
        choose(key);
        display.waitForWindow(title);
        display.press(title, "Escape");
        EXPECT_TRUE(becomesTrue([this, &title = title] { return !isShown(title); })) << title;
    }
    EXPECT_TRUE(program->isRunning());
}

TEST_F(WithATray, TheOptionsStandInTheMiddleOfWhatTheTrayLeavesWithTheirFrame) {
    start();
    choose("o");
    display.waitForWindow("Cobweave - Options");
    constexpr int trayHeight = 24;
    constexpr int middle = (screenHeight + trayHeight) / 2;
    xcb_get_geometry_reply_t frame{};
    EXPECT_TRUE(becomesTrue([&] {
        frame = other.geometry(other.topAt(512, middle));
        // Larger than the window by a title bar.
        return frame.height > 403 + 10 && frame.width < 600 &&
               std::abs(frame.x + frame.width / 2 - 512) <= 1 &&
               std::abs(frame.y + frame.height / 2 - middle) <= 1;
    })) << frame.x
        << ' ' << frame.y << ' ' << frame.width << ' ' << frame.height;
}

TEST_F(WithATray, UnderABoxAllGoesOnAndAClickOnTheIconBringsItToTheFront) {
    start({{"alertoffline", "True"}});
    choose("n");
    display.waitForWindow("Cobweave - Notes");
    // There is no note to remove, as the box says.
    display.press("Cobweave - Notes", "alt+r");
    display.waitForWindow("Cobweave");
    Relay relay = Relay::through(Program::port);
    (void)relay.down("FLN bob@example.com\r\n");
    EXPECT_TRUE(becomesTrue([&] { return isToastAt(0); }));
    (void)relay.up(clientText("!notes"));
    chooseFromIcon("l");
    display.waitForWindow("Cobweave - Log");
    const auto focusedTitle = [&] { return other.bytes(other.focused(), "_NET_WM_NAME"); };
    EXPECT_TRUE(becomesTrue([&] { return focusedTitle() == "Cobweave - Log"; }));
    clickAt(12, 12);
    EXPECT_TRUE(becomesTrue([&] { return focusedTitle() == "Cobweave"; }));
    display.press("Cobweave", "Return");
    EXPECT_TRUE(becomesTrue([&] { return !isShown("Cobweave"); }));
    display.press("Cobweave - Notes", "Escape");
    EXPECT_TRUE(becomesTrue([&] { return !isShown("Cobweave - Notes"); }));
}

TEST_F(WithATray, OtherClicksOnTheIconDoNothing) {
    start();
    ASSERT_TRUE(becomesTrue([&] { return hasIcon(); }));
    for (const char* const button : {"1", "--repeat 2 1", "2"})
        clickAt(12, 12, button);
    choose("Escape");
    for (const char* const title : {"Cobweave - Notes", "Cobweave - Log"}) {
        EXPECT_FALSE(isShown(title));
    }
}

TEST_F(WithATray, ATrayThatComesLaterOrAgainGetsTheIcon) {
    tray = Child();
    start();
    EXPECT_FALSE(hasIcon());
    for (int time = 0; time < 2; ++time) {
        tray = startTray();
        EXPECT_TRUE(becomesTrue([&] { return hasIcon(); }));
        tray = Child();
        EXPECT_TRUE(becomesTrue([&] { return !hasIcon(); }));
    }
}

TEST_F(WithATray, ForceExitTakesTheIconAway) {
    start();
    ASSERT_TRUE(becomesTrue([&] { return hasIcon(); }));
    Relay relay = Relay::through(Program::port);
    relay.client.send(clientText("!forceexit"));
    EXPECT_EQ(program->waitForEnd(), 0);
    EXPECT_TRUE(becomesTrue([&] { return !hasIcon(); }));
}

TEST_F(WithATray, NotesComeByCommandAndAreShownByCommand) {
    start();
    Relay relay = Relay::through(Program::port);
    (void)relay.up(clientText("!note buy milk"));
    EXPECT_TRUE(becomesTrue([&] { return isToastAt(0); }));
    (void)relay.up(clientText("!notes"));
    display.waitForWindow("Cobweave - Notes");
    display.press("Cobweave - Notes", "Escape");
    EXPECT_TRUE(becomesTrue([&] { return !isShown("Cobweave - Notes"); }));
    EXPECT_EQ(readFile(program->notes()), "buy milk\r\n\r\n");
}

}  // namespace
