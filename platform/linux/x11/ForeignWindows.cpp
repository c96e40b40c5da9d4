#include "platform/ForeignWindows.h"
#include "platform/linux/x11/MessengerWindows.h"
#include "platform/linux/x11/X11Client.h"
#include "platform/linux/x11/X11Title.h"
#include "platform/linux/x11/X11WindowList.h"
#include "platform/linux/x11/x11OwnWindow.h"
#include "platform/linux/x11/x11Properties.h"

#include <QSocketNotifier>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace {

/// The X server answers within some hundredths of a millisecond. One that takes longer is held up,
/// and what is asked for is not worth waiting for it.
constexpr std::chrono::milliseconds patience{5};

xcb_window_t toX11(WindowHandle window) { return static_cast<xcb_window_t>(window); }

class X11ForeignWindows final : public ForeignWindows {
public:
    X11ForeignWindows() {
        list.told = [this](const auto& windows) { messenger.take(windows, list.isManaged()); };
        list.shown = [this](xcb_window_t window) { messenger.forget(window); };
        messenger.changed = [this] { changed(); };
        listener.event = [this](const xcb_generic_event_t& event) {
            list.hear(event);
            messenger.hear(event);
        };
        listener.lost = [this] {
            writability.reset();
            owed.clear();
            messenger.lose();
        };
        if (!listener.stands()) return;
        writability = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(listener.handle()),
                                                        QSocketNotifier::Write);
        writability->setEnabled(false);
        QObject::connect(writability.get(), &QSocketNotifier::activated, writability.get(),
                         [this] { payTitles(); });
        list.look();
        listener.await(patience);
    }

    WindowHandle MessengerWindowHandle() override { return messenger.main(); }

    void SetWindowText(WindowHandle window, std::string_view text) override {
        // A server that takes nothing gets the next title.
        if (window == 0 || !listener.stands()) return;
        owed[toX11(window)] = text;
        payTitles();
    }

    void requestClose(WindowHandle window) override {
        if (window == 0 || !listener.canWrite(patience)) return;
        const xcb_window_t target = toX11(window);
        const X11Atoms& atoms = listener.atoms();
        listener.askProperty(target, atoms.wmProtocols, [this, target](const auto* reply) {
            const auto protocols = x11Properties::numbersIn(reply);
            const xcb_atom_t closing = listener.atoms().wmDeleteWindow;
            if (std::find(protocols.begin(), protocols.end(), closing) == protocols.end()) return;
            send(target, XCB_EVENT_MASK_NO_EVENT, target, listener.atoms().wmProtocols,
                 {closing, XCB_CURRENT_TIME});
        });
        listener.flush();
    }

    WindowHandle foreground() override {
        if (!listener.canWrite(patience)) return 0;
        // Questions of its own, so that none of the other answers is served before this is through.
        X11Client asking;
        Places places;
        ask(asking, [&places](const Places& answer) { places = answer; });
        asking.await(patience);
        const xcb_window_t window = list.isManaged() ? places.active : places.focus;
        return isNone(window) ? 0 : window;
    }

    void giveFocusBack(WindowHandle window) override {
        if (window == 0 || !listener.canWrite(patience)) return;
        ask(listener, [this, target = toX11(window)](const Places& places) {
            giveFocusBack(target, places);
        });
        listener.flush();
    }

private:
    /// Writes the titles that the server takes at once; the others when it does, and of several for
    /// one window the last.
    void payTitles() {
        while (!owed.empty() && listener.canWrite()) {
            const auto title = owed.extract(owed.begin());
            writeX11Title(listener, title.key(), title.mapped());
            listener.flush();
        }
        writability->setEnabled(!owed.empty());
    }

    /// The window that the window manager says the user works in, and the one that gets the keys.
    struct Places {
        xcb_window_t active = 0;
        xcb_window_t focus = 0;
    };

    template <typename Answered>
    void ask(X11Client& client, Answered answered) {
        const auto places = std::make_shared<Places>();
        client.askProperty(
            client.root(), client.atoms().netActiveWindow,
            [places](const auto* reply) { places->active = x11Properties::numberIn(reply); });
        client.template ask<xcb_get_input_focus_reply_t>(
            xcb_get_input_focus(client.handle()),
            [places, answered = std::move(answered)](const auto* reply) {
                if (reply != nullptr) places->focus = reply->focus;
                answered(*places);
            });
    }

    [[nodiscard]] bool isNone(xcb_window_t window) const {
        return window == XCB_INPUT_FOCUS_NONE || window == XCB_INPUT_FOCUS_POINTER_ROOT ||
               window == listener.root();
    }

    void giveFocusBack(xcb_window_t window, const Places& places) {
        // A window of ours may have the keys without the window manager's knowledge.
        const bool oursHasKeys = isOwnX11Window(places.focus);
        const xcb_window_t now = list.isManaged() ? places.active : places.focus;
        if (now == window && !oursHasKeys) return;
        const bool isFree = isNone(now) || isOwnX11Window(now) || (now == window && oursHasKeys);
        if (!isFree) return;
        if (list.isManaged()) {
            constexpr std::uint32_t fromPager = 2;
            send(listener.root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, window,
                 listener.atoms().netActiveWindow, {fromPager, XCB_CURRENT_TIME, places.active});
        } else {
            xcb_set_input_focus(listener.handle(), XCB_INPUT_FOCUS_PARENT, window,
                                XCB_CURRENT_TIME);
        }
    }

    void send(xcb_window_t receiver, std::uint32_t mask, xcb_window_t subject, xcb_atom_t type,
              std::initializer_list<std::uint32_t> values) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = subject;
        message.type = type;
        std::copy(values.begin(), values.end(), std::begin(message.data.data32));
        xcb_send_event(listener.handle(), 0, receiver, mask,
                       reinterpret_cast<const char*>(&message));
    }

    X11Client listener;
    X11WindowList list{listener};
    MessengerWindows messenger{listener};
    std::map<xcb_window_t, std::string> owed;
    std::unique_ptr<QSocketNotifier> writability;
};

}  // namespace

std::unique_ptr<ForeignWindows> makeForeignWindows() {
    return std::make_unique<X11ForeignWindows>();
}
