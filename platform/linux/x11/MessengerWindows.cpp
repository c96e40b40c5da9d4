#include "platform/linux/x11/MessengerWindows.h"

#include "base/text.h"
#include "platform/ForeignWindows.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

using namespace std::literals;

namespace {

/// A window of Messenger's process opens without a title and gets it a moment later; until then
/// nobody knows which one it is.
bool hasMainTitle(const MessengerWindow& window) {
    if (window.written && window.title == window.written) return true;
    const std::string title = window.title.value_or("");
    return !title.empty() && !title.ends_with(" - Conversation");
}

/// The main window among `windows`, which come in the order in which they opened; 0 without one.
xcb_window_t mainOf(const std::vector<const MessengerWindow*>& windows, xcb_window_t before) {
    using Preference = bool (*)(const MessengerWindow& window, xcb_window_t before);
    constexpr std::array<Preference, 5> preferences{
        [](const MessengerWindow& each, xcb_window_t main) { return each.window == main; },
        [](const MessengerWindow& each, xcb_window_t /*main*/) {
            return each.kind == MessengerWindow::Kind::MainClass;
        },
        // An earlier run of this program has taken it for the main window.
        [](const MessengerWindow& each, xcb_window_t /*main*/) { return each.written.has_value(); },
        [](const MessengerWindow& each, xcb_window_t /*main*/) {
            return each.title == ForeignWindows::messengerTitle;
        },
        [](const MessengerWindow& /*each*/, xcb_window_t /*main*/) { return true; },
    };
    for (const Preference preference : preferences) {
        for (const MessengerWindow* const each : windows) {
            if (each->canBeMain() && preference(*each, before)) return each->window;
        }
    }
    return 0;
}

}  // namespace

MessengerWindow::Kind MessengerWindow::kindOf(std::string_view classNames) {
    const std::string names = '\0' + lowerCase(classNames) + '\0';
    if (names.find("\0msnmsblclass\0"sv) != std::string::npos) return Kind::MainClass;
    if (names.find("\0msnmsgr.exe\0"sv) != std::string::npos) return Kind::OfProcess;
    return Kind::Other;
}

bool MessengerWindow::canBeMain() const {
    if (!isShown) return false;
    if (kind == Kind::MainClass) return true;
    return kind == Kind::OfProcess && !isTransient && !isDialog && hasMainTitle(*this);
}

void MessengerWindows::update(const std::vector<xcb_window_t>& windows, bool areShown) {
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
            queryClass(window);
        } else if (known[window].facts.kind != MessengerWindow::Kind::Other &&
                   (!allShown || !known[window].facts.isShown)) {
            queryFacts(window);
        }
    }
    choose();
}

void MessengerWindows::forget(xcb_window_t window) {
    const auto entry = known.find(window);
    if (entry == known.end()) return;
    if (entry->second.facts.kind != MessengerWindow::Kind::Other) client.select(window, 0);
    known.erase(entry);
}

void MessengerWindows::clear() {
    known.clear();
    order.clear();
    pendingQueries = 0;
    choose();
}

void MessengerWindows::onEvent(const xcb_generic_event_t& event) {
    if (x11TypeOf(event) != XCB_PROPERTY_NOTIFY) return;
    const auto& change = x11EventAs<xcb_property_notify_event_t>(event);
    const MessengerWindow* const facts = factsOf(change.window);
    if (facts == nullptr || facts->kind == MessengerWindow::Kind::Other) return;
    const X11Atoms& atoms = client.atoms();
    if (change.atom == XCB_ATOM_WM_CLASS) {
        forget(change.window);
        queryClass(change.window);
    } else if (change.atom == XCB_ATOM_WM_NAME || change.atom == atoms.netWmName ||
               change.atom == XCB_ATOM_WM_TRANSIENT_FOR || change.atom == atoms.netWmWindowType) {
        queryFacts(change.window);
    }
}

void MessengerWindows::queryClass(xcb_window_t window) {
    known[window].facts.window = window;
    ++pendingQueries;
    client.requestProperty(window, XCB_ATOM_WM_CLASS, [this, window](const X11Property& names) {
        setClass(window, names);
        --pendingQueries;
        choose();
    });
}

void MessengerWindows::setClass(xcb_window_t window, const X11Property& names) {
    MessengerWindow* const facts = factsOf(window);
    if (facts == nullptr) return;
    facts->kind = MessengerWindow::kindOf(names.text().value_or(""));
    if (facts->kind == MessengerWindow::Kind::Other) return;
    // This comes before the window is asked for its title, so that no change gets lost in between.
    client.select(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
    queryFacts(window);
}

void MessengerWindows::queryFacts(xcb_window_t window) {
    Known& entry = known[window];
    if (std::exchange(entry.isBeingQueried, true)) {
        entry.isQueryDueAgain = true;
        return;
    }
    ++pendingQueries;
    const X11Atoms& atoms = client.atoms();
    queryProperty(window, XCB_ATOM_WM_NAME, [](MessengerWindow& facts, const X11Property& title) {
        facts.title = title.text();
    });
    queryProperty(window, atoms.netWmName, [](MessengerWindow& facts, const X11Property& title) {
        if (const auto text = title.text()) facts.title = *text;
    });
    queryProperty(
        window, atoms.cobweaveTitle,
        [](MessengerWindow& facts, const X11Property& title) { facts.written = title.text(); });
    queryProperty(window, XCB_ATOM_WM_TRANSIENT_FOR,
                  [](MessengerWindow& facts, const X11Property& owner) {
                      facts.isTransient = owner.number() != 0;
                  });
    queryProperty(window, atoms.netWmWindowType,
                  [normal = atoms.netWmWindowTypeNormal](MessengerWindow& facts,
                                                         const X11Property& property) {
                      const auto types = property.numbers();
                      facts.isDialog = !types.empty() &&
                                       std::find(types.begin(), types.end(), normal) == types.end();
                  });
    client.request<xcb_get_window_attributes_reply_t>(
        xcb_get_window_attributes(client.handle(), window), [this, window](const auto* reply) {
            if (MessengerWindow* const facts = factsOf(window)) {
                facts->isShown =
                    reply != nullptr && (allShown || reply->map_state == XCB_MAP_STATE_VIEWABLE);
            }
            finishQuery(window);
        });
}

void MessengerWindows::finishQuery(xcb_window_t window) {
    --pendingQueries;
    if (const auto entry = known.find(window); entry != known.end()) {
        entry->second.isBeingQueried = false;
        if (std::exchange(entry->second.isQueryDueAgain, false)) queryFacts(window);
    }
    choose();
}

template <typename Change>
void MessengerWindows::queryProperty(xcb_window_t window, xcb_atom_t property, Change change) {
    client.requestProperty(window, property, [this, window, change](const X11Property& value) {
        if (MessengerWindow* const facts = factsOf(window)) change(*facts, value);
    });
}

MessengerWindow* MessengerWindows::factsOf(xcb_window_t window) {
    const auto entry = known.find(window);
    return entry == known.end() ? nullptr : &entry->second.facts;
}

void MessengerWindows::choose() {
    if (pendingQueries > 0) return;
    std::vector<const MessengerWindow*> windows;
    for (const xcb_window_t window : order) {
        if (const MessengerWindow* const facts = factsOf(window)) windows.push_back(facts);
    }
    const xcb_window_t before = std::exchange(chosen, mainOf(windows, chosen));
    if (before != chosen) changed();
}
