#include "platform/ForeignWindows.h"

#include "platform/linux/x11/MessengerWindows.h"
#include "platform/linux/x11/X11Client.h"
#include "platform/linux/x11/X11Titles.h"
#include "platform/linux/x11/X11WindowList.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

xcb_window_t toX11(WindowHandle window) { return static_cast<xcb_window_t>(window); }

class X11ForeignWindows final : public ForeignWindows {
public:
    X11ForeignWindows() {
        list.listed = [this](const auto& windows) { messenger.update(windows, list.isManaged()); };
        list.shown = [this](xcb_window_t window) { messenger.forget(window); };
        messenger.changed = [this] { changed(); };
        client.event = [this](const xcb_generic_event_t& event) {
            list.onEvent(event);
            messenger.onEvent(event);
        };
        client.lost = [this] {
            titles.clear();
            messenger.clear();
        };
        if (!client.isConnected()) return;
        list.refresh();
        client.await();
    }

    WindowHandle MessengerWindowHandle() override { return messenger.main(); }

    void SetWindowText(WindowHandle window, std::string_view text) override {
        if (window != 0) titles.write(toX11(window), text);
    }

    // Does what the close box of its main window does.
    void requestMessengerEnd() override {
        const xcb_window_t target = messenger.main();
        if (target == 0 || !client.waitUntilWritable()) return;
        const X11Atoms& atoms = client.atoms();
        client.requestProperty(target, atoms.wmProtocols, [this, target](const X11Property& list) {
            const auto protocols = list.numbers();
            const xcb_atom_t closing = client.atoms().wmDeleteWindow;
            if (std::find(protocols.begin(), protocols.end(), closing) == protocols.end()) return;
            send(target, XCB_EVENT_MASK_NO_EVENT, target, client.atoms().wmProtocols,
                 {closing, XCB_CURRENT_TIME});
        });
        client.flush();
    }

    WindowHandle foreground() override {
        if (!client.waitUntilWritable()) return 0;
        // The questions have a client of their own, so that no other answer is served meanwhile.
        X11Client asking;
        FocusedWindows focused;
        query(asking, [&focused](const FocusedWindows& answer) { focused = answer; });
        asking.await();
        const xcb_window_t window = list.isManaged() ? focused.active : focused.focus;
        return isNone(window) ? 0 : window;
    }

    void giveFocusBack(WindowHandle window) override {
        if (window == 0 || !client.waitUntilWritable()) return;
        query(client, [this, target = toX11(window)](const FocusedWindows& focused) {
            giveFocusBack(target, focused);
        });
        client.flush();
    }

private:
    /// The window that the window manager says the user works in, and the one that gets the keys.
    struct FocusedWindows {
        xcb_window_t active = 0;
        xcb_window_t focus = 0;
    };

    template <typename Answered>
    static void query(X11Client& client, Answered answered) {
        const auto focused = std::make_shared<FocusedWindows>();
        client.requestProperty(
            client.root(), client.atoms().netActiveWindow,
            [focused](const X11Property& window) { focused->active = window.number(); });
        client.request<xcb_get_input_focus_reply_t>(
            xcb_get_input_focus(client.handle()),
            [focused, answered = std::move(answered)](const auto* reply) {
                if (reply != nullptr) focused->focus = reply->focus;
                answered(*focused);
            });
    }

    [[nodiscard]] bool isNone(xcb_window_t window) const {
        return window == XCB_INPUT_FOCUS_NONE || window == XCB_INPUT_FOCUS_POINTER_ROOT ||
               window == client.root();
    }

    void giveFocusBack(xcb_window_t window, const FocusedWindows& focused) {
        // A window of ours may have the keys without the window manager's knowledge.
        const bool oursHasKeys = isOwnX11Window(focused.focus);
        const xcb_window_t now = list.isManaged() ? focused.active : focused.focus;
        if (now == window && !oursHasKeys) return;
        const bool isFree = isNone(now) || isOwnX11Window(now) || (now == window && oursHasKeys);
        if (!isFree) return;
        if (list.isManaged()) {
            constexpr std::uint32_t fromPager = 2;
            send(client.root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, window,
                 client.atoms().netActiveWindow, {fromPager, XCB_CURRENT_TIME, focused.active});
        } else {
            xcb_set_input_focus(client.handle(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        }
    }

    void send(xcb_window_t receiver, std::uint32_t mask, xcb_window_t subject, xcb_atom_t type,
              std::initializer_list<std::uint32_t> values) {
        const auto message = x11Message(subject, type, values);
        xcb_send_event(client.handle(), 0, receiver, mask, x11Bytes(message));
    }

    X11Client client;
    X11WindowList list{client};
    MessengerWindows messenger{client};
    X11Titles titles{client};
};

}  // namespace

std::unique_ptr<ForeignWindows> makeForeignWindows() {
    return std::make_unique<X11ForeignWindows>();
}
