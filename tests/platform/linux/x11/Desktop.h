#pragma once

#include "platform/ForeignWindows.h"
#include "tests/support/Child.h"
#include "tests/support/StandIn.h"
#include "tests/support/comesTrue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>

/// What Messenger's windows look like.
namespace looks {

inline StandIn::Look ofProcess(const std::string& title) {
    return {"msnmsgr.exe", "msnmsgr.exe", title};
}
inline StandIn::Look mainClass(const std::string& title) {
    return {"msnmsblclass", "Msnmsblclass", title};
}
inline StandIn::Look other(const std::string& title) { return {"xterm", "XTerm", title}; }

}  // namespace looks

/// A window manager that goes with its owner.
class WindowManager {
public:
    explicit WindowManager(StandIn& screen)
        : manager({"openbox", "--sm-disable", "--startup", "echo started"}) {
        while (manager.readLine() != "started") {
        }
        // It loses windows that are shown before its loop runs, of which it gives no sign.
        const xcb_window_t first = screen.open({"first", "first", "first"});
        const auto isListed = [&] {
            const auto list = screen.numbers(screen.root(), "_NET_CLIENT_LIST");
            return std::find(list.begin(), list.end(), first) != list.end();
        };
        const bool manages = becomesTrue([&] {
            if (isListed()) return true;
            screen.hide(first);
            screen.show(first);
            return false;
        });
        if (!manages) throw std::runtime_error("the window manager does not start");
        screen.close(first);
        if (!becomesTrue([&] { return !isListed(); })) {
            throw std::runtime_error("the window manager does not notice that windows close");
        }
    }

private:
    Child manager;
};

/// A screen with other programs on it.
class Desktop : public testing::Test {
protected:
    /// Starts the program's side.
    void start() {
        windows = makeForeignWindows();
        windows->changed = [this] { ++changes; };
    }
    /// What is found becomes this window, and those who sleep are told of a change.
    [[nodiscard]] testing::AssertionResult finds(WindowHandle window) const {
        if (comesTrue([&] { return windows->MessengerWindowHandle() == window; })) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << "found is " << windows->MessengerWindowHandle();
    }
    /// It is what is found when all that has happened up to now has been heard.
    [[nodiscard]] testing::AssertionResult stays(WindowHandle window) const {
        // Each answer comes after all that the server has told before, and may lead to further
        // questions, of which there are a handful at most.
        for (int turn = 0; turn < 10; ++turn) {
            (void)windows->foreground();
            QCoreApplication::processEvents();
        }
        if (windows->MessengerWindowHandle() == window) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "found is " << windows->MessengerWindowHandle();
    }
    /// Opens a window, and waits until the window manager, if there is one, has taken it.
    [[nodiscard]] xcb_window_t open(const StandIn::Look& look) {
        const xcb_window_t window = other.open(look);
        if (managed && !look.isBeyondManager && !becomesTrue([&] { return isListed(window); })) {
            throw std::runtime_error("the window manager does not take a window");
        }
        return window;
    }
    void hide(xcb_window_t window) {
        other.hide(window);
        if (managed && !becomesTrue([&] { return !isListed(window); })) {
            throw std::runtime_error("the window manager does not let go of a window");
        }
    }
    [[nodiscard]] bool isListed(xcb_window_t window) {
        const auto list = other.numbers(other.root(), "_NET_CLIENT_LIST");
        return std::find(list.begin(), list.end(), window) != list.end();
    }
    void manage() {
        manager = std::make_unique<WindowManager>(other);
        managed = true;
    }
    void unmanage() {
        manager.reset();
        managed = false;
    }

    StandIn other;
    std::unique_ptr<ForeignWindows> windows;
    int changes = 0;
    bool managed = false;

private:
    std::unique_ptr<WindowManager> manager;
};
