#pragma once

#include "base/Event.h"
#include "platform/linux/x11/X11Client.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>

/// What is known of a window, as far as it shows whether it is Messenger's main window.
struct MessengerWindow {
    /// Whose window it is, by its class.
    enum class Kind {
        Other,
        /// It has the class that Messenger gives to its main window alone.
        MainClass,
        /// It belongs to Messenger's process under Wine, which gives one class to all windows of a
        /// program: main window, conversations, dialogs.
        OfProcess,
    };
    /// Reads the kind out of the bytes of WM_CLASS: two names, each with a zero byte behind it.
    [[nodiscard]] static Kind kindOf(std::string_view classNames);

    /// Whether nothing speaks against its being the main window.
    [[nodiscard]] bool canBeMain() const;

    xcb_window_t window = 0;
    Kind kind = Kind::Other;
    std::optional<std::string> title = std::nullopt;
    /// The title that this program wrote last, in this run or an earlier one.
    std::optional<std::string> written = std::nullopt;
    bool isTransient = false;
    bool isDialog = false;
    bool isShown = false;
};

/// Finds Messenger's main window among all windows. Each window is asked for its class once; those
/// of Messenger are watched for changes from then on.
class MessengerWindows {
public:
    /// `main` answers with another window.
    Event<> changed;

    /// `client` has to outlive this object, and to pass its events to `onEvent`.
    explicit MessengerWindows(X11Client& client) : client(client) {}

    /// The main window; 0 without one. Where several can be it, the one that it was before stays.
    [[nodiscard]] xcb_window_t main() const { return chosen; }

    /// Takes over the list of all windows, in the order in which they opened. `areShown`: the list
    /// holds none that is hidden, so none has to be asked whether it is shown.
    void update(const std::vector<xcb_window_t>& windows, bool areShown);
    /// Drops what is known of a window, which may be another one when it is listed next.
    void forget(xcb_window_t window);
    /// Drops what is known of all windows, when the server is gone.
    void clear();
    /// Takes notice of changes of the windows that it knows; other events do nothing.
    void onEvent(const xcb_generic_event_t& event);

private:
    struct Known {
        MessengerWindow facts;
        bool isBeingQueried = false;
        bool isQueryDueAgain = false;
    };

    void queryClass(xcb_window_t window);
    void setClass(xcb_window_t window, const X11Property& names);
    void queryFacts(xcb_window_t window);
    void finishQuery(xcb_window_t window);
    /// Calls `change` with the facts and the property, where the window is still known by then.
    template <typename Change>
    void queryProperty(xcb_window_t window, xcb_atom_t property, Change change);
    [[nodiscard]] MessengerWindow* factsOf(xcb_window_t window);
    void choose();

    X11Client& client;
    std::map<xcb_window_t, Known> known;
    std::vector<xcb_window_t> order;
    bool allShown = true;
    /// Nothing is chosen before the last of the pending queries is answered, for what is chosen
    /// stays.
    int pendingQueries = 0;
    xcb_window_t chosen = 0;
};
