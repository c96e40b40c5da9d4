#pragma once

#include "desktop/frmTitle.h"
#include "platform/Client.h"
#include "platform/ForeignWindows.h"
#include "platform/MessageBox.h"
#include "tests/stores/Database.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/FakeWinsock.h"
#include "tests/ui/windows.h"
#include "ui/common/FlashButton.h"
#include "ui/common/freshForms.h"
#include "ui/options/Toggle.h"

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
/// was told.
class OptionsDesk : public testing::Test {
protected:
    ~OptionsDesk() override { destroyClosed(); }

    /// What was asked of anything outside the window, in order.
    std::vector<std::string> calls;

    struct Windows final : ForeignWindows {
        std::vector<std::string>& calls;
        WindowHandle messenger = 77;
        explicit Windows(std::vector<std::string>& calls) : calls(calls) {}
        [[nodiscard]] WindowHandle MessengerWindowHandle() override { return messenger; }
        void SetWindowText(WindowHandle window, std::string_view text) override {
            calls.push_back("title of " + std::to_string(window) + ": " + std::string(text));
        }
        void requestClose(WindowHandle window) override {
            calls.push_back("close " + std::to_string(window));
        }
        [[nodiscard]] WindowHandle foreground() override { return 0; }
        void giveFocusBack(WindowHandle /*window*/) override {}
    } windows{calls};

    struct ToldClient final : Client {
        std::vector<std::string>& calls;
        explicit ToldClient(std::vector<std::string>& calls) : calls(calls) {}
        void start() override { calls.emplace_back("start the client"); }
    } client{calls};

    struct ToldHelp final : ShownForm {
        std::vector<std::string>& calls;
        explicit ToldHelp(std::vector<std::string>& calls) : calls(calls) {}
        void Show() override { calls.emplace_back("show the help"); }
    } help{calls};

    struct Boxes final : MessageBox {
        std::vector<std::string>& calls;
        bool answer = false;
        std::function<void()> meanwhile = [] {};
        explicit Boxes(std::vector<std::string>& calls) : calls(calls) {}
        void tell(const char* kind, std::string_view text) {
            calls.push_back(std::string(kind) + ": " + std::string(text));
            meanwhile();
        }
        void critical(std::string_view text) override { tell("critical", text); }
        void exclamation(std::string_view text) override { tell("exclamation", text); }
        void information(std::string_view text) override { tell("information", text); }
        /// The box whose text begins so is left without an answer; none when it is empty.
        std::string endsAt;
        [[nodiscard]] bool isEnding() const override {
            return !endsAt.empty() && calls.back().starts_with(endsAt);
        }
        [[nodiscard]] bool question(std::string_view text) override {
            tell("question", text);
            return answer;
        }
    } boxes{calls};

    FakeFacilities facilities;
    SettingsStore& settings = facilities.settings;
    FakeLoop loop;
    frmTitle title{settings, windows, loop};
    std::unique_ptr<Options> options = makeOptions(boxes);

    [[nodiscard]] std::unique_ptr<Options> makeOptions(MessageBox& messageBox) {
        return std::make_unique<Options>(frmoptions::Parts{settings, title, facilities.registry,
                                                           messageBox, windows, client, help});
    }

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
    static void goTo(int page) {
        const std::string name = "UserControl11(" + std::to_string(page) + ')';
        click(the<FlashButton>(name.c_str()).b1);
    }
    static void pressOk() { click(the<QPushButton>("Command2")); }
    static void pressCancel() { click(the<QPushButton>("Command1")); }
};
