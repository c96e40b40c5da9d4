#pragma once

#include "tests/support/Child.h"

#include <string>

/// An X server without a screen to look at. Needs Xvfb.
class XServer {
public:
    explicit XServer(int screens = 1);

    /// As DISPLAY has it, for its first screen or another one.
    [[nodiscard]] std::string name(int screen = 0) const {
        return displayName + '.' + std::to_string(screen);
    }
    [[nodiscard]] pid_t process() const { return server.number(); }
    void end() { server = Child(); }

private:
    Child server;
    std::string displayName;
};
