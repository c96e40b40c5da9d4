#pragma once

#include "tests/support/linux/Child.h"
#include "tests/support/linux/Display.h"
#include "tests/support/linux/Program.h"

#include <memory>
#include <string>

/// A desktop with a notification area and the program on it, every alert and all progress on.
class Desk {
public:
    /// Comes back when the program listens. Like the next two it throws `std::runtime_error` when
    /// something does not come.
    Desk();

    /// Opens a window of the program by the menu entry of this mnemonic, and waits for it.
    void choose(const std::string& key, const std::string& title);
    /// Runs a command of the shell on this display, to its end.
    void run(const std::string& command) const;

    Display display;
    Child tray;
    std::unique_ptr<Program> program;
};
