#pragma once

#include "proxy/frmMain.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/FakeWinsock.h"

#include <string>
#include <string_view>
#include <vector>

/// What the host has asked of its windows, none of which exists.
struct AskedWindows {
    /// In order, with the boxes, but without captions, toasts and entries of the log.
    std::vector<std::string> calls;
    std::vector<MenuEntry> menu;
    std::vector<std::string> captions;
    std::vector<std::string> toasts;
    std::vector<std::string> logged;
    FakeMessageBox boxes;

    void connect(ProgramWindows& windows) {
        const auto call = [this](const char* words) {
            return [this, words] { calls.emplace_back(words); };
        };
        const auto text = [](std::vector<std::string>& texts) {
            return [&texts](std::string_view shown) { texts.emplace_back(shown); };
        };
        windows.showTrayIcon = [this](const std::vector<MenuEntry>& entries) {
            menu = entries;
            calls.emplace_back("show the icon");
        };
        windows.removeTrayIcon = call("take the icon away");
        windows.changetraycaption = text(captions);
        windows.loadTitle = call("load the title");
        windows.restoreTitle = call("restore the title");
        windows.showHelp = call("show the help");
        windows.showOptions = call("show the options");
        windows.showFirstRun = call("show the first run");
        windows.showNotes = call("show the notes");
        windows.showLog = call("show the log");
        windows.showAbout = call("show the about box");
        windows.addToLog = text(logged);
        windows.popup = text(toasts);
        boxes.opened = [this](const std::string& box) { calls.push_back(box); };
    }
};

/// What the end of the process is to a test.
struct ProcessEnded {};

/// The host and its connections over sockets and timers that the test moves.
class Spine {
public:
    FakeFacilities facilities;
    SettingsStore& settings = facilities.settings;
    FakeNetwork network;
    FakeLoop loop;
    AskedWindows windows;
    frmMain host{network, loop, windows.boxes, facilities.all()};
    /// What was reported to the user on standard error.
    std::vector<std::string> reported;

    explicit Spine(const std::filesystem::path& stores = "") : facilities(stores) {
        windows.connect(host.windows);
        listener().listening = [this] { windows.calls.emplace_back("listen"); };
        host.trouble = [this](std::string_view text) { reported.emplace_back(text); };
        host.endProcess = [] { throw ProcessEnded(); };
    }

    [[nodiscard]] FakeWinsock& listener() { return *network.sockets.at(0); }
    /// The sides and the watch of the connection that was requested as number `count`.
    [[nodiscard]] FakeWinsock& client(std::size_t count = 1) {
        return *network.sockets.at(2 * count - 1);
    }
    [[nodiscard]] FakeWinsock& server(std::size_t count = 1) {
        return *network.sockets.at(2 * count);
    }
    [[nodiscard]] FakeTimer& watch(std::size_t count = 1) { return *loop.timers.at(count); }
    /// The timer that follows the player.
    [[nodiscard]] FakeTimer& songTimer() { return *loop.timers.at(0); }
    [[nodiscard]] MSNProxy& instance(std::int16_t number = 1) const {
        return *host.instances().at(number);
    }

    /// What a client says first, to reach 10.1.2.3 at 1863.
    static inline const std::string socksRequest =
        std::string("\x04\x01\x07\x47\x0A\x01\x02\x03", 8) + "ann" + '\0';

    /// Somebody connects and says this first, which has yet to arrive.
    void request(const std::string& said = socksRequest) {
        listener().peeked = said;
        listener().ConnectionRequest(++requests);
    }
    /// A client connects and its connection relays.
    void relay() {
        request();
        const std::size_t count = (network.sockets.size() - 1) / 2;
        client(count).arrive(socksRequest);
        server(count).succeedConnecting();
        client(count).sent.clear();
    }

private:
    RequestId requests = 100;
};
