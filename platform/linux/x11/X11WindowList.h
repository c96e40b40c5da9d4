#pragma once

#include "base/Event.h"
#include "platform/linux/x11/X11Client.h"

#include <vector>

#include <xcb/xcb.h>

/// The windows that programs show on the desktop: those that the window manager lists; without one
/// that does, the children of the root window, shown or not.
class X11WindowList {
public:
    /// The list, anew after each change.
    Event<const std::vector<xcb_window_t>&> told;
    /// A window is shown that may not be what it was when it was hidden. Only without a window
    /// manager, and before the list is told anew.
    Event<xcb_window_t> shown;

    explicit X11WindowList(X11Client& client) : client(client) {}

    /// A window manager is there that lists the windows. What it lists, it shows.
    [[nodiscard]] bool isManaged() const { return managed; }

    void look();
    void hear(const xcb_generic_event_t& event);

private:
    void askForManager();
    void checkManager(xcb_window_t candidate, bool hasList);
    void takeManager(xcb_window_t window, bool hasList);
    void askForList();
    void askForChildren();
    void finish(const std::vector<xcb_window_t>& windows);

    X11Client& client;
    /// The window by which a window manager shows that it lives.
    xcb_window_t manager = 0;
    bool managed = false;
    bool isAsking = false;
    bool isDueAgain = false;
};
