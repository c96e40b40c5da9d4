#pragma once

#include "tests/support/Child.h"
#include "tests/support/XServer.h"

#include <string>

/// An X server without a screen to look at, with a window manager. Needs Xvfb, openbox, xprop and
/// xdotool.
class Display {
public:
    Display();

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
    Child windowManager;
};
