#include "platform/linux/x11/MessengerWindows.h"

#include "platform/linux/x11/x11Properties.h"

#include <algorithm>
#include <set>
#include <utility>

using namespace x11Properties;

void MessengerWindows::take(const std::vector<xcb_window_t>& windows, bool areShown) {
    const std::set<xcb_window_t> present(windows.begin(), windows.end());
    std::vector<xcb_window_t> gone;
    for (const auto& [window, entry] : known) {
        if (!present.contains(window)) gone.push_back(window);
    }
    for (const xcb_window_t window : gone)
        forget(window);
    order = windows;
    allShown = areShown;
    for (const xcb_window_t window : present) {
        if (!known.contains(window)) {
            askClass(window);
        } else if (known[window].facts.kind != MessengerWindow::Kind::Other &&
                   (!allShown || !known[window].facts.isShown)) {
            askFacts(window);
        }
    }
    judge();
}

void MessengerWindows::forget(xcb_window_t window) {
    const auto entry = known.find(window);
    if (entry == known.end()) return;
    if (entry->second.facts.kind != MessengerWindow::Kind::Other) client.select(window, 0);
    known.erase(entry);
}

void MessengerWindows::hear(const xcb_generic_event_t& event) {
    if (x11TypeOf(event) != XCB_PROPERTY_NOTIFY) return;
    const auto& change = x11EventAs<xcb_property_notify_event_t>(event);
    const MessengerWindow* const facts = factsOf(change.window);
    if (facts == nullptr || facts->kind == MessengerWindow::Kind::Other) return;
    const X11Atoms& atoms = client.atoms();
    if (change.atom == XCB_ATOM_WM_CLASS) {
        forget(change.window);
        askClass(change.window);
    } else if (change.atom == XCB_ATOM_WM_NAME || change.atom == atoms.netWmName ||
               change.atom == XCB_ATOM_WM_TRANSIENT_FOR || change.atom == atoms.netWmWindowType) {
        askFacts(change.window);
    }
}

void MessengerWindows::lose() {
    known.clear();
    order.clear();
    open = 0;
    judge();
}

void MessengerWindows::askClass(xcb_window_t window) {
    known[window].facts.window = window;
    ++open;
    client.askProperty(window, XCB_ATOM_WM_CLASS, [this, window](const auto* reply) {
        takeClass(window, reply);
        --open;
        judge();
    });
}

void MessengerWindows::takeClass(xcb_window_t window, const xcb_get_property_reply_t* reply) {
    MessengerWindow* const facts = factsOf(window);
    if (facts == nullptr) return;
    facts->kind = MessengerWindow::kindOf(textIn(reply).value_or(""));
    if (facts->kind == MessengerWindow::Kind::Other) return;
    // Before it is asked for its title, so that no change gets lost in between.
    client.select(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
    askFacts(window);
}

void MessengerWindows::askFacts(xcb_window_t window) {
    Known& entry = known[window];
    if (std::exchange(entry.isAsking, true)) {
        entry.isDueAgain = true;
        return;
    }
    ++open;
    const X11Atoms& atoms = client.atoms();
    note(window, XCB_ATOM_WM_NAME,
         [](MessengerWindow& facts, const auto* reply) { facts.title = textIn(reply); });
    note(window, atoms.netWmName, [](MessengerWindow& facts, const auto* reply) {
        if (const auto title = textIn(reply)) facts.title = *title;
    });
    note(window, atoms.cobweaveTitle,
         [](MessengerWindow& facts, const auto* reply) { facts.written = textIn(reply); });
    note(window, XCB_ATOM_WM_TRANSIENT_FOR, [](MessengerWindow& facts, const auto* reply) {
        facts.isTransient = numberIn(reply) != 0;
    });
    note(window, atoms.netWmWindowType,
         [normal = atoms.netWmWindowTypeNormal](MessengerWindow& facts, const auto* reply) {
             const auto types = numbersIn(reply);
             facts.isDialog =
                 !types.empty() && std::find(types.begin(), types.end(), normal) == types.end();
         });
    client.ask<xcb_get_window_attributes_reply_t>(
        xcb_get_window_attributes(client.handle(), window), [this, window](const auto* reply) {
            if (MessengerWindow* const facts = factsOf(window)) {
                facts->isShown =
                    allShown ? reply != nullptr
                             : reply != nullptr && reply->map_state == XCB_MAP_STATE_VIEWABLE;
            }
            finishFacts(window);
        });
}

void MessengerWindows::finishFacts(xcb_window_t window) {
    --open;
    if (const auto entry = known.find(window); entry != known.end()) {
        entry->second.isAsking = false;
        if (std::exchange(entry->second.isDueAgain, false)) askFacts(window);
    }
    judge();
}

template <typename Change>
void MessengerWindows::note(xcb_window_t window, xcb_atom_t property, Change change) {
    client.askProperty(window, property, [this, window, change](const auto* reply) {
        if (MessengerWindow* const facts = factsOf(window)) change(*facts, reply);
    });
}

MessengerWindow* MessengerWindows::factsOf(xcb_window_t window) {
    const auto entry = known.find(window);
    return entry == known.end() ? nullptr : &entry->second.facts;
}

void MessengerWindows::judge() {
    if (open > 0) return;
    std::vector<const MessengerWindow*> windows;
    for (const xcb_window_t window : order) {
        if (const MessengerWindow* const facts = factsOf(window)) windows.push_back(facts);
    }
    const xcb_window_t before = std::exchange(chosen, mainMessengerWindow(windows, chosen));
    if (before != chosen) changed();
}
