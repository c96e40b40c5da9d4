#pragma once

#include "platform/MessageBox.h"
#include "proxy/frmMain.h"
#include "proxy/hostForms.h"
#include "stores/SettingsStore.h"
#include "tests/support/FakeWinsock.h"
#include "tests/support/TemporaryFolder.h"

#include <string>
#include <vector>

/// Windows that keep what they were told.
struct ToldForms {
    struct Tray final : TrayForm {
        std::vector<std::string> captions;
        int shown = 0;
        int unloaded = 0;
        void Show() override { ++shown; }
        void Unload() override { ++unloaded; }
        void changetraycaption(std::string& newcaption) override { captions.push_back(newcaption); }
    } tray;
    struct Title final : TitleForm {
        bool checked = false;
        std::string text;
        std::vector<std::string> captions;
        [[nodiscard]] bool renaming() const override { return checked; }
        [[nodiscard]] std::string renameText() const override { return text; }
        void setwindowcaption(std::string_view newcaption) override {
            captions.emplace_back(newcaption);
        }
    } title;
    NotesForm notes;
    struct Log final : LogForm {
        std::vector<std::string> lines;
        void AddItem(std::string_view text) override { lines.emplace_back(text); }
    } log;
    struct Options final : OptionsForm {
        int firstRuns = 0;
        void ShowFirstRun() override { ++firstRuns; }
    } options;
    struct Toasts final : Popups {
        std::vector<std::string> texts;
        void popup(std::string_view text) override { texts.emplace_back(text); }
    } popups;
    struct Boxes final : MessageBox {
        std::vector<std::string> texts;
        void critical(std::string_view text) override { texts.emplace_back(text); }
    } boxes;
};

/// The host and its connections over sockets and timers that the test moves.
class Spine {
public:
    TemporaryFolder folder;
    SettingsStore settings{folder.path() / "settings.db", [](std::string_view) {}};
    FakeNetwork network;
    FakeLoop loop;
    ToldForms forms;
    frmMain host{network,
                 loop,
                 settings,
                 forms.boxes,
                 {forms.tray, forms.title, forms.notes, forms.log, forms.options, forms.popups}};

    [[nodiscard]] FakeWinsock& listener() { return *network.sockets.at(0); }
    /// The sides and the watch of the connection that was requested as number `count`.
    [[nodiscard]] FakeWinsock& client(std::size_t count = 1) {
        return *network.sockets.at(2 * count - 1);
    }
    [[nodiscard]] FakeWinsock& server(std::size_t count = 1) {
        return *network.sockets.at(2 * count);
    }
    [[nodiscard]] FakeTimer& watch(std::size_t count = 1) { return *loop.timers.at(count - 1); }
    [[nodiscard]] const MSNProxy& instance(std::int16_t number = 1) {
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
