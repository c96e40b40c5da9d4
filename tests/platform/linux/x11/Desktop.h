#pragma once

#include "tests/platform/shared/FoundMessenger.h"
#include "tests/support/linux/StandIn.h"
#include "tests/support/linux/XServer.h"

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

/// What Messenger's windows look like.
namespace looks {

inline StandIn::Look ofProcess(const std::string& title) {
    return StandIn::Look::ofMessenger(title);
}
inline StandIn::Look mainClass(const std::string& title) {
    return {"msnmsblclass", "Msnmsblclass", title};
}
inline StandIn::Look other(const std::string& title) { return {"xterm", "XTerm", title}; }

}  // namespace looks

/// A screen with other programs on it.
class Desktop : public FoundMessenger {
protected:
    /// This window is the one that is found when all events up to now have been served.
    [[nodiscard]] testing::AssertionResult stays(WindowHandle window) const {
        // Each answer comes after all events before it, and may lead to further requests, of which
        // there are a handful at most.
        for (int turn = 0; turn < 10; ++turn) {
            (void)windows->foreground();
            QCoreApplication::processEvents();
        }
        return isFound(window);
    }
    /// Opens a window, and waits until the window manager, if there is one, has taken and shown it.
    [[nodiscard]] xcb_window_t open(const StandIn::Look& look) {
        const xcb_window_t window = other.open(look);
        const auto isTaken = [&] { return isListed(window) && other.isViewable(window); };
        if (managed && !look.isOverrideRedirect && !becomesTrue(isTaken)) {
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
    [[nodiscard]] bool isListed(xcb_window_t window) { return other.isListed(window); }
    /// Starts a window manager, or ends it.
    void manage() {
        manager = std::make_unique<WindowManager>(std::getenv("DISPLAY"));
        managed = true;
    }
    void unmanage() {
        manager.reset();
        if (!becomesTrue([&] { return !other.isManaged(); })) {
            throw std::runtime_error("the window manager does not go");
        }
        managed = false;
    }

    StandIn other;
    bool managed = false;

private:
    std::unique_ptr<WindowManager> manager;
};
