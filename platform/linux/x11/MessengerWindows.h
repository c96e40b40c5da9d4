#pragma once

#include "base/Event.h"
#include "platform/linux/x11/MessengerWindow.h"
#include "platform/linux/x11/X11Client.h"

#include <map>
#include <vector>

#include <xcb/xcb.h>

/// Picks Messenger's main window out of all windows. Each window is asked once what it is; those of
/// Messenger are then watched, all others are not heard any more.
class MessengerWindows {
public:
    /// The main window is another one.
    Event<> changed;

    explicit MessengerWindows(X11Client& client) : client(client) {}

    /// 0 without one.
    [[nodiscard]] xcb_window_t main() const { return chosen; }

    /// The windows that there are. `areShown`: they need not be asked whether they are.
    void take(const std::vector<xcb_window_t>& windows, bool areShown);
    /// What is known of a window does not hold any more.
    void forget(xcb_window_t window);
    void hear(const xcb_generic_event_t& event);
    /// There are no windows any more.
    void lose();

private:
    struct Known {
        MessengerWindow facts;
        bool isAsking = false;
        bool isDueAgain = false;
    };

    void askClass(xcb_window_t window);
    void takeClass(xcb_window_t window, const xcb_get_property_reply_t* reply);
    void askFacts(xcb_window_t window);
    void finishFacts(xcb_window_t window);
    template <typename Change>
    void note(xcb_window_t window, xcb_atom_t property, Change change);
    [[nodiscard]] MessengerWindow* factsOf(xcb_window_t window);
    void judge();

    X11Client& client;
    std::map<xcb_window_t, Known> known;
    std::vector<xcb_window_t> order;
    bool allShown = true;
    /// Questions without an answer yet. Before the last one nothing is decided, for what is decided
    /// stays.
    int open = 0;
    xcb_window_t chosen = 0;
};
