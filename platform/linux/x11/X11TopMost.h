#pragma once

#include "platform/linux/x11/X11Client.h"

#include <array>
#include <chrono>
#include <map>

#include <xcb/xcb.h>

/// Keeps windows above all others that no window manager cares for: raises them now, and again
/// whenever something is put on top of them.
class X11TopMost {
public:
    X11TopMost();
    ~X11TopMost();
    X11TopMost(const X11TopMost&) = delete;
    X11TopMost& operator=(const X11TopMost&) = delete;

    /// `window` is one that Qt has made.
    void set(xcb_window_t window, bool isTopMost);

private:
    using Clock = std::chrono::steady_clock;
    /// When a window was raised the last times, the oldest first.
    using Raises = std::array<Clock::time_point, 5>;

    void hear(const xcb_generic_event_t& event);
    void raise(xcb_window_t window);

    X11Client client;
    /// Where Qt's connection leaves word for ours.
    xcb_window_t mailbox = 0;
    std::map<xcb_window_t, Raises> windows;
};
