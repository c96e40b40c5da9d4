#pragma once

#include "tests/support/linux/XServer.h"

#include <string>

/// An X server with a window manager. Needs xdotool too.
class Display {
public:
    /// As DISPLAY has it.
    [[nodiscard]] const std::string& name() const { return displayName; }

    /// Waits until a window of this title is shown.
    void waitForWindow(const std::string& title) const;
    /// Whether a command of the shell, run on this display, ends well.
    [[nodiscard]] bool runs(const std::string& command) const;
    /// Presses a key, by its X name, in the window of this title.
    void press(const std::string& title, const std::string& key) const;

private:
    XServer server;
    std::string displayName = server.name();
    WindowManager windowManager{displayName};
};
