#pragma once

#include "platform/MessageBox.h"
#include "proxy/frmMain.h"
#include "proxy/hostForms.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/FakeWinsock.h"

#include <string>
#include <vector>

/// Windows that keep what they were told.
struct ToldForms {
    /// What was asked of any of them at the start and the end, in order.
    std::vector<std::string> calls;

    struct Tray final : TrayForm {
        std::vector<std::string>& calls;
        explicit Tray(std::vector<std::string>& calls) : calls(calls) {}
        std::vector<std::string> captions;
        std::vector<MenuEntry> menu;
        void Show(const std::vector<MenuEntry>& entries) override {
            menu = entries;
            calls.emplace_back("show the icon");
        }
        void Unload() override { calls.emplace_back("take the icon away"); }
        void changetraycaption(std::string& newcaption) override { captions.push_back(newcaption); }
    } tray{calls};
    struct Title final : TitleForm {
        std::vector<std::string>& calls;
        explicit Title(std::vector<std::string>& calls) : calls(calls) {}
        void Load() override { calls.emplace_back("load the title"); }
        bool checked = false;
        std::string text;
        std::vector<std::string> captions;
        [[nodiscard]] bool renaming() const override { return checked; }
        [[nodiscard]] std::string renameText() const override { return text; }
        void setwindowcaption(std::string_view newcaption) override {
            captions.emplace_back(newcaption);
        }
    } title{calls};
    struct Shown final : ShownForm {
        int shown = 0;
        void Show() override { ++shown; }
    } help, notes, about;
    struct Log final : LogForm {
        int shown = 0;
        void Show() override { ++shown; }
        std::vector<std::string> lines;
        void AddItem(std::string_view text) override { lines.emplace_back(text); }
    } log;
    struct Options final : OptionsForm {
        std::vector<std::string>& calls;
        explicit Options(std::vector<std::string>& calls) : calls(calls) {}
        int shown = 0;
        void Show() override { ++shown; }
        void ShowFirstRun() override { calls.emplace_back("show the first run"); }
    } options{calls};
    struct Toasts final : Popups {
        std::vector<std::string> texts;
        bool popup(std::string_view text) override {
            texts.emplace_back(text);
            return true;
        }
    } popups;
    struct Boxes final : MessageBox {
        std::vector<std::string>& calls;
        explicit Boxes(std::vector<std::string>& calls) : calls(calls) {}
        void critical(std::string_view text) override {
            calls.push_back("tell: " + std::string(text));
        }
        void exclamation(std::string_view text) override { critical(text); }
        void information(std::string_view text) override { critical(text); }
        [[nodiscard]] bool question(std::string_view text) override {
            critical(text);
            return false;
        }
    } boxes{calls};
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
    ToldForms forms;
    frmMain host{network,
                 loop,
                 forms.boxes,
                 {forms.tray, forms.title, forms.help, forms.options, forms.notes, forms.log,
                  forms.about, forms.popups},
                 facilities.all()};

    Spine() {
        listener().listening = [this] { forms.calls.emplace_back("listen"); };
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
    [[nodiscard]] MSNProxy& instance(std::int16_t number = 1) {
        return *host.instances().at(number);
    }

    /// A client connects, and no more.
    void request() { listener().ConnectionRequest(++requests); }
    /// A client connects and its connection relays.
    void relay() {
        request();
        const std::size_t count = (network.sockets.size() - 1) / 2;
        client(count).arrive(std::string("\x04\x01\x07\x47\x0A\x01\x02\x03", 8) + "ann" + '\0');
        server(count).succeedConnecting();
        client(count).sent.clear();
    }

private:
    RequestId requests = 100;
};
