#pragma once

#include "base/Event.h"
#include "platform/linux/x11/X11Client.h"

#include <vector>

#include <xcb/xcb.h>

/// The windows that programs show on the desktop: those that the window manager lists; without one
/// that does, the children of the root window, shown or not.
class X11WindowList {
public:
    /// The whole list in the order in which the windows opened, after `refresh` and after each
    /// change.
    Event<const std::vector<xcb_window_t>&> listed;
    /// A window is shown that may have changed while it was hidden. Raised only without a window
    /// manager, and before the list that holds the window.
    Event<xcb_window_t> shown;

    /// `client` has to outlive this object, and to pass its events to `onEvent`.
    explicit X11WindowList(X11Client& client) : client(client) {}

    /// A window manager is there that lists the windows; all that it lists are shown.
    [[nodiscard]] bool isManaged() const { return managed; }

    /// Asks for the list. `listed` is raised when the server has answered.
    void refresh();
    /// Takes notice of windows and window managers that come and go; other events do nothing.
    void onEvent(const xcb_generic_event_t& event);

private:
    void queryManager();
    void checkManager(xcb_window_t candidate, bool hasList);
    void setManager(xcb_window_t window, bool hasList);
    void queryList();
    void queryChildren();
    void finish(const std::vector<xcb_window_t>& windows);

    X11Client& client;
    /// The window by which a window manager shows that it lives.
    xcb_window_t manager = 0;
    bool managed = false;
    bool isBeingQueried = false;
    bool isQueryDueAgain = false;
};
