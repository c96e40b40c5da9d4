#pragma once

#include "platform/OwnWindows.h"

#include <memory>
#include <string>

/// Other programs on the desktop, with windows as a test needs them. Each system has its own way to
/// be them; the tests are the same.
class WindowStandIn {
public:
    WindowStandIn();
    ~WindowStandIn();
    WindowStandIn(const WindowStandIn&) = delete;
    WindowStandIn& operator=(const WindowStandIn&) = delete;

    /// The main window of a Messenger.
    [[nodiscard]] WindowHandle openMessenger();
    /// A window of a program that is no Messenger.
    [[nodiscard]] WindowHandle openOther(const std::string& title);
    void close(WindowHandle window);
    /// The user works in this window from now on.
    void activate(WindowHandle window);

    /// Of any window on the desktop, as UTF-8.
    [[nodiscard]] std::string titleOf(WindowHandle window) const;
    /// How solid any window on the desktop is, from 0 to 255.
    [[nodiscard]] int alphaOf(WindowHandle window) const;

private:
    struct System;
    std::unique_ptr<System> system;
};
