#include "platform/linux/x11/X11WindowList.h"

#include <utility>

void X11WindowList::refresh() {
    if (std::exchange(isBeingQueried, true)) {
        isQueryDueAgain = true;
        return;
    }
    if (manager == 0) {
        queryManager();
    } else {
        queryList();
    }
}

void X11WindowList::onEvent(const xcb_generic_event_t& event) {
    switch (x11TypeOf(event)) {
        case XCB_PROPERTY_NOTIFY: {
            const auto& change = x11EventAs<xcb_property_notify_event_t>(event);
            if (change.window != client.root()) return;
            if (change.atom == client.atoms().netSupportingWmCheck) manager = 0;
            if (change.atom == client.atoms().netSupportingWmCheck ||
                change.atom == client.atoms().netClientList) {
                refresh();
            }
            return;
        }
        case XCB_DESTROY_NOTIFY: {
            const auto& end = x11EventAs<xcb_destroy_notify_event_t>(event);
            if (manager != 0 && end.window == manager) {
                manager = 0;
                refresh();
            } else if (!managed && end.event == client.root()) {
                refresh();
            }
            return;
        }
        case XCB_MAP_NOTIFY: {
            const auto& map = x11EventAs<xcb_map_notify_event_t>(event);
            if (managed || map.event != client.root()) return;
            shown(map.window);
            refresh();
            return;
        }
        case XCB_UNMAP_NOTIFY: {
            const auto& unmap = x11EventAs<xcb_unmap_notify_event_t>(event);
            if (!managed && unmap.event == client.root()) refresh();
            return;
        }
        case XCB_REPARENT_NOTIFY: {
            const auto& move = x11EventAs<xcb_reparent_notify_event_t>(event);
            if (!managed && move.event == client.root()) refresh();
            return;
        }
        default: return;
    }
}

void X11WindowList::queryManager() {
    client.select(client.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    client.requestProperty(
        client.root(), client.atoms().netClientList, [this](const X11Property& list) {
            const bool hasList = list.isSet();
            client.requestProperty(client.root(), client.atoms().netSupportingWmCheck,
                                   [this, hasList](const X11Property& check) {
                                       checkManager(check.number(), hasList);
                                   });
        });
}

void X11WindowList::checkManager(xcb_window_t candidate, bool hasList) {
    if (candidate == 0) return setManager(0, false);
    // A manager that crashed leaves its properties on the root window, but not this window. One
    // that ends from now on takes it along.
    client.select(candidate, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    client.requestProperty(candidate, client.atoms().netSupportingWmCheck,
                           [this, candidate, hasList](const X11Property& check) {
                               const bool lives = check.number() == candidate;
                               if (!lives) client.select(candidate, 0);
                               setManager(lives ? candidate : 0, lives && hasList);
                           });
}

void X11WindowList::setManager(xcb_window_t window, bool hasList) {
    manager = window;
    managed = hasList;
    if (managed) {
        queryList();
    } else {
        queryChildren();
    }
}

void X11WindowList::queryList() {
    client.requestProperty(client.root(), client.atoms().netClientList,
                           [this](const X11Property& list) {
                               managed = list.isSet();
                               if (!managed) return queryChildren();
                               finish(list.numbers());
                           });
}

void X11WindowList::queryChildren() {
    client.select(client.root(),
                  XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    client.request<xcb_query_tree_reply_t>(
        xcb_query_tree(client.handle(), client.root()), [this](const auto* tree) {
            if (tree == nullptr) return finish({});
            const xcb_window_t* const first = xcb_query_tree_children(tree);
            finish({first, first + xcb_query_tree_children_length(tree)});
        });
}

void X11WindowList::finish(const std::vector<xcb_window_t>& windows) {
    isBeingQueried = false;
    listed(windows);
    if (std::exchange(isQueryDueAgain, false)) refresh();
}
