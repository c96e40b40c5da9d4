#include "platform/linux/x11/X11WindowList.h"

#include "platform/linux/x11/x11Properties.h"

#include <utility>

void X11WindowList::look() {
    if (std::exchange(isAsking, true)) {
        isDueAgain = true;
        return;
    }
    if (manager == 0) {
        askForManager();
    } else {
        askForList();
    }
}

void X11WindowList::hear(const xcb_generic_event_t& event) {
    switch (x11TypeOf(event)) {
        case XCB_PROPERTY_NOTIFY: {
            const auto& change = x11EventAs<xcb_property_notify_event_t>(event);
            if (change.window != client.root()) return;
            if (change.atom == client.atoms().netSupportingWmCheck) manager = 0;
            if (change.atom == client.atoms().netSupportingWmCheck ||
                change.atom == client.atoms().netClientList) {
                look();
            }
            return;
        }
        case XCB_DESTROY_NOTIFY: {
            const auto& end = x11EventAs<xcb_destroy_notify_event_t>(event);
            if (manager != 0 && end.window == manager) {
                manager = 0;
                look();
            } else if (!managed && end.event == client.root()) {
                look();
            }
            return;
        }
        case XCB_MAP_NOTIFY: {
            const auto& map = x11EventAs<xcb_map_notify_event_t>(event);
            if (managed || map.event != client.root()) return;
            shown(map.window);
            look();
            return;
        }
        case XCB_UNMAP_NOTIFY: {
            const auto& unmap = x11EventAs<xcb_unmap_notify_event_t>(event);
            if (!managed && unmap.event == client.root()) look();
            return;
        }
        case XCB_REPARENT_NOTIFY: {
            const auto& move = x11EventAs<xcb_reparent_notify_event_t>(event);
            if (!managed && move.event == client.root()) look();
            return;
        }
        default: return;
    }
}

void X11WindowList::askForManager() {
    client.select(client.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    client.askProperty(client.root(), client.atoms().netClientList, [this](const auto* list) {
        const bool hasList = x11Properties::isThere(list);
        client.askProperty(client.root(), client.atoms().netSupportingWmCheck,
                           [this, hasList](const auto* check) {
                               checkManager(x11Properties::numberIn(check), hasList);
                           });
    });
}

void X11WindowList::checkManager(xcb_window_t candidate, bool hasList) {
    if (candidate == 0) return takeManager(0, false);
    // A manager that crashed leaves its properties on the root window, but not this window. One
    // that ends from now on takes it along.
    client.select(candidate, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    client.askProperty(candidate, client.atoms().netSupportingWmCheck,
                       [this, candidate, hasList](const auto* check) {
                           const bool lives = x11Properties::numberIn(check) == candidate;
                           if (!lives) client.select(candidate, 0);
                           takeManager(lives ? candidate : 0, lives && hasList);
                       });
}

void X11WindowList::takeManager(xcb_window_t window, bool hasList) {
    manager = window;
    managed = hasList;
    if (managed) {
        askForList();
    } else {
        askForChildren();
    }
}

void X11WindowList::askForList() {
    client.askProperty(client.root(), client.atoms().netClientList, [this](const auto* list) {
        managed = x11Properties::isThere(list);
        if (!managed) return askForChildren();
        finish(x11Properties::numbersIn(list));
    });
}

void X11WindowList::askForChildren() {
    client.select(client.root(),
                  XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    client.ask<xcb_query_tree_reply_t>(
        xcb_query_tree(client.handle(), client.root()), [this](const auto* tree) {
            if (tree == nullptr) return finish({});
            const xcb_window_t* const first = xcb_query_tree_children(tree);
            finish({first, first + xcb_query_tree_children_length(tree)});
        });
}

void X11WindowList::finish(const std::vector<xcb_window_t>& windows) {
    isAsking = false;
    told(windows);
    if (std::exchange(isDueAgain, false)) look();
}
