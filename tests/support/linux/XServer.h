#pragma once

#include "tests/support/linux/Child.h"
#include "tests/support/linux/StandIn.h"

#include <string>

/// An X server without a screen to look at. Needs Xvfb.
class XServer {
public:
    /// What happens when the last program has left it.
    enum class WhenLeft { StaysAsItIs, StartsAnew, Ends };

    explicit XServer(int screens = 1, WhenLeft whenLeft = WhenLeft::StaysAsItIs);

    /// As DISPLAY has it, for the first screen or another one.
    [[nodiscard]] std::string name(int screen = 0) const {
        return displayName + '.' + std::to_string(screen);
    }
    [[nodiscard]] pid_t process() const { return server.number(); }
    /// Ends the server.
    void end() { server = Child(); }

private:
    Child server;
    std::string displayName;
};

/// A window manager on a display, from when it manages windows reliably. Needs openbox.
class WindowManager {
public:
    explicit WindowManager(const std::string& display);

private:
    Child manager;
    /// Connected as long as the window manager runs: the server gives the numbers of windows of
    /// one that leaves to the next, and events on the old ones are still on their way.
    StandIn other;
};
