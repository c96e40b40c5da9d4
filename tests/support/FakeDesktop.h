#pragma once

#include "base/Event.h"
#include "platform/ForeignWindows.h"
#include "platform/MessageBox.h"
#include "platform/OwnWindows.h"
#include "platform/Tray.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Messenger's window and the one that the user works in, as the test has them.
struct FakeForeignWindows final : ForeignWindows {
    WindowHandle messenger = 0;
    WindowHandle inFront = 0;
    std::vector<std::pair<WindowHandle, std::string>> titles;
    std::vector<WindowHandle> focused;
    int searches = 0;
    /// What was asked for, as in "end 77" and "title of 77: text".
    Event<const std::string&> asked;

    /// Messenger's window becomes this one, and whoever waits for that is called.
    void open(WindowHandle window) {
        messenger = window;
        changed();
    }

    [[nodiscard]] WindowHandle MessengerWindowHandle() override {
        ++searches;
        return messenger;
    }
    void SetWindowText(WindowHandle window, std::string_view text) override {
        titles.emplace_back(window, text);
        asked("title of " + std::to_string(window) + ": " + std::string(text));
    }
    void requestMessengerEnd() override { asked("end " + std::to_string(messenger)); }
    [[nodiscard]] WindowHandle foreground() override { return inFront; }
    void giveFocusBack(WindowHandle window) override { focused.push_back(window); }
};

/// Keeps what was asked for our own windows.
struct FakeOwnWindows final : OwnWindows {
    std::vector<std::pair<WindowHandle, bool>> topMost;
    std::vector<std::pair<WindowHandle, int>> alphas;
    std::optional<ScreenRectangle> area;

    void setTopMost(WindowHandle window, bool wanted) override {
        topMost.emplace_back(window, wanted);
    }
    void setAlpha(WindowHandle window, std::uint8_t alpha) override {
        alphas.emplace_back(window, alpha);
    }
    [[nodiscard]] std::optional<ScreenRectangle> workArea() override { return area; }
};

/// The icon, as it was set.
struct FakeTray final : Tray {
    std::vector<std::string> tips;
    std::vector<MenuEntry> menu;
    bool shown = false;

    void add(std::string_view tip, const std::vector<MenuEntry>& entries) override {
        tips.emplace_back(tip);
        menu = entries;
        shown = true;
    }
    void modify(std::string_view tip) override { tips.emplace_back(tip); }
    void remove() override { shown = false; }
};

/// Boxes that are answered at once, and kept: "question: text".
struct FakeMessageBox final : MessageBox {
    std::vector<std::string> shown;
    /// The answers to come, the first one first; no when there are none left.
    std::vector<bool> answers;
    /// A box that begins so is left without an answer; none when it is empty.
    std::string endsAt;
    /// A box is open, and kept already.
    Event<const std::string&> opened;

    void critical(std::string_view text) override { show("critical: ", text); }
    void notify(std::string_view text) override { show("notify: ", text); }
    void critical(WindowHandle /*window*/, std::string_view text, Event<> answered) override {
        if (show("critical: ", text)) answered();
    }
    void exclamation(WindowHandle /*window*/, std::string_view text) override {
        show("exclamation: ", text);
    }
    void information(WindowHandle /*window*/, std::string_view text, Event<> answered) override {
        if (show("information: ", text)) answered();
    }
    void question(WindowHandle /*window*/, std::string_view text, Event<bool> answered) override {
        if (!show("question: ", text)) return;
        const bool answer = !answers.empty() && answers.front();
        if (!answers.empty()) answers.erase(answers.begin());
        answered(answer);
    }

private:
    /// Whether it is answered.
    bool show(const char* kind, std::string_view text) {
        const std::string box = kind + std::string(text);
        shown.push_back(box);
        opened(box);
        return endsAt.empty() || !box.starts_with(endsAt);
    }
};
