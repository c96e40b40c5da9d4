#pragma once

#include "desktop/frmTitle.h"
#include "platform/Client.h"
#include "tests/stores/Database.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/FakeWinsock.h"
#include "tests/ui/windows.h"
#include "ui/common/FormHolder.h"
#include "ui/options/frmoptions.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

/// The options window and what it works on: the settings are a real file, all else keeps what it
/// was asked for.
class OptionsFixture : public testing::Test {
protected:
    OptionsFixture() {
        windows.messenger = 77;
        windows.asked = boxes.opened = [this](const std::string& call) { calls.push_back(call); };
    }
    ~OptionsFixture() override { destroyClosed(); }

    /// What was asked of anything outside the window, in order.
    std::vector<std::string> calls;

    FakeForeignWindows windows;
    FakeMessageBox boxes;
    struct AskedClient final : Client {
        std::vector<std::string>& calls;
        explicit AskedClient(std::vector<std::string>& calls) : calls(calls) {}
        void start() override { calls.emplace_back("start the client"); }
    } client{calls};

    FakeFacilities facilities;
    SettingsStore& settings = facilities.settings;
    FakeLoop loop;
    frmTitle title{settings, windows, loop};
    /// What the window opens its boxes by and shows the help by; both may be exchanged until it is
    /// made.
    MessageBox* messageBox = &boxes;
    Event<> showHelp = [this] { calls.emplace_back("show the help"); };
    std::unique_ptr<FormHolder<frmoptions>> options =
        std::make_unique<FormHolder<frmoptions>>(FormLife::UntilClosed, [this] {
            return std::make_unique<frmoptions>(
                frmoptions::Parts{settings, title, facilities.registry, *messageBox, windows,
                                  client, facilities.clock, "Use port 1090.", showHelp});
        });

    void set(const char* key, std::string_view value) {
        settings.WriteSetting("Options", key, value);
    }
    /// As another program reads it from the file.
    [[nodiscard]] std::string stored(const char* key) const {
        return Database(facilities.folder.path() / "settings.db").get(key).value_or("(none)");
    }

    /// Starts the program's side of it and opens the window.
    void open() {
        title.Load();
        calls.clear();
        options->Show();
        (void)QTest::qWaitForWindowActive(shown());
    }
    /// The same on a first run.
    void openFirst() {
        title.Load();
        calls.clear();
        options->load().RestartMessenger = true;
        options->Show();
    }
    [[nodiscard]] static QWidget* shown() { return windowOf("Cobweave - Options"); }
    [[nodiscard]] static QWidget& window() {
        if (shown() == nullptr) throw std::runtime_error("the options are not shown");
        return *shown();
    }
    template <typename Control>
    [[nodiscard]] static Control& the(const char* name) {
        return named<Control>(window(), name);
    }
    [[nodiscard]] static Toggle& toggle(const char* name) { return the<Toggle>(name); }
    [[nodiscard]] static QCheckBox& check(const char* name) { return the<QCheckBox>(name); }
    [[nodiscard]] static QLineEdit& box(const char* name) { return the<QLineEdit>(name); }
    [[nodiscard]] static QComboBox& status() { return the<QComboBox>("Combo1"); }
    [[nodiscard]] static bool chosen(const char* name) {
        return the<QRadioButton>(name).isChecked();
    }

    /// Presses the button of a page.
    static void goTo(int page) { showPage(window(), page); }
    static void pressOk() { click(the<QPushButton>("Command2")); }
    static void pressCancel() { click(the<QPushButton>("Command1")); }
};
