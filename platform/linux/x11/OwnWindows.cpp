#include "platform/OwnWindows.h"

#include "platform/linux/x11/X11Client.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <array>
#include <chrono>
#include <map>

namespace {

/// Sends a request over Qt's connection, on which it comes after what Qt did to the window before:
/// over another one it might even come before the window itself. Its error, when the window is
/// gone, is passed over.
void sendByQt(xcb_void_cookie_t request) {
    xcb_discard_reply(qtX11Connection(), request.sequence);
    xcb_flush(qtX11Connection());
}

/// Keeps windows that no window manager cares for above all others: raises them now, and again
/// whenever something is put on top of them.
class RaisedWindows {
public:
    RaisedWindows();
    ~RaisedWindows();
    RaisedWindows(const RaisedWindows&) = delete;
    RaisedWindows& operator=(const RaisedWindows&) = delete;

    /// `window` is one that Qt has made.
    void set(xcb_window_t window, bool isTopMost);

private:
    using Clock = std::chrono::steady_clock;
    /// When a window was raised the last times, the oldest first.
    using Raises = std::array<Clock::time_point, 5>;

    void onEvent(const xcb_generic_event_t& event);
    void raise(xcb_window_t window);

    X11Client client;
    /// A window of ours that is never shown. Messages to it, sent over Qt's connection, arrive over
    /// ours; 0 without a server.
    xcb_window_t mailbox = 0;
    std::map<xcb_window_t, Raises> windows;
};

RaisedWindows::RaisedWindows() {
    if (!client.isConnected()) return;
    mailbox = xcb_generate_id(client.handle());
    xcb_create_window(client.handle(), XCB_COPY_FROM_PARENT, mailbox, client.root(), -1, -1, 1, 1,
                      0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    // The window is there before anything can be sent to it.
    client.request<xcb_get_input_focus_reply_t>(xcb_get_input_focus(client.handle()),
                                                [](const auto* /*reply*/) {});
    client.await();
    client.event = [this](const xcb_generic_event_t& event) { onEvent(event); };
}

RaisedWindows::~RaisedWindows() {
    if (client.isConnected()) xcb_destroy_window(client.handle(), mailbox);
}

void RaisedWindows::set(xcb_window_t window, bool isTopMost) {
    if (mailbox == 0) return;
    const auto message = x11Message(window, client.atoms().cobweaveTopMost, {isTopMost ? 1U : 0U});
    sendByQt(xcb_send_event_checked(qtX11Connection(), 0, mailbox, XCB_EVENT_MASK_NO_EVENT,
                                    x11Bytes(message)));
}

void RaisedWindows::onEvent(const xcb_generic_event_t& event) {
    if (x11TypeOf(event) == XCB_CLIENT_MESSAGE) {
        const auto& message = x11EventAs<xcb_client_message_event_t>(event);
        if (message.type != client.atoms().cobweaveTopMost || !isOwnX11Window(message.window)) {
            return;
        }
        if (message.data.data32[0] == 0) {
            windows.erase(message.window);
            client.select(message.window, 0);
        } else {
            windows.try_emplace(message.window);
            client.select(message.window,
                          XCB_EVENT_MASK_VISIBILITY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
            raise(message.window);
        }
    } else if (x11TypeOf(event) == XCB_VISIBILITY_NOTIFY) {
        const auto& visibility = x11EventAs<xcb_visibility_notify_event_t>(event);
        if (visibility.state != XCB_VISIBILITY_UNOBSCURED) raise(visibility.window);
    } else if (x11TypeOf(event) == XCB_DESTROY_NOTIFY) {
        const auto& end = x11EventAs<xcb_destroy_notify_event_t>(event);
        if (windows.erase(end.window) != 0) client.select(end.window, 0);
    }
}

void RaisedWindows::raise(xcb_window_t window) {
    const auto entry = windows.find(window);
    if (entry == windows.end()) return;
    Raises& raises = entry->second;
    // Against another program that does the same it would never end, so there is a limit.
    const auto now = Clock::now();
    if (raises.front() != Clock::time_point{} && now - raises.front() < std::chrono::seconds(1)) {
        return;
    }
    std::rotate(raises.begin(), raises.begin() + 1, raises.end());
    raises.back() = now;
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(client.handle(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

class X11OwnWindows final : public OwnWindows {
public:
    void setTopMost(WindowHandle window, bool isTopMost) override {
        QWindow* const found = find(window);
        if (found == nullptr || qtX11Connection() == nullptr) return;
        if (isOverrideRedirect(*found)) {
            raised.set(static_cast<xcb_window_t>(window), isTopMost);
        } else {
            askManager(static_cast<xcb_window_t>(window), found->isVisible(), isTopMost);
        }
    }

    void setAlpha(WindowHandle window, std::uint8_t alpha) override {
        const auto target = static_cast<xcb_window_t>(window);
        if (!isOwnX11Window(target) || !client.isConnected()) return;
        xcb_connection_t* const connection = qtX11Connection();
        const xcb_atom_t name = client.atoms().netWmWindowOpacity;
        xcb_void_cookie_t change{};
        if (alpha == 0xFF) {
            // A window without the property is solid. A window with it would not follow an opacity
            // that the user may have set for all windows in the compositor.
            change = xcb_delete_property_checked(connection, target, name);
        } else {
            const std::uint32_t opacity = alpha * 0x01010101U;
            change = xcb_change_property_checked(connection, XCB_PROP_MODE_REPLACE, target, name,
                                                 XCB_ATOM_CARDINAL, 32, 1, &opacity);
        }
        sendByQt(change);
    }

    std::optional<ScreenRectangle> workArea() override {
        if (!client.waitUntilWritable()) return std::nullopt;
        X11Client asking;
        std::uint32_t desktop = 0;
        std::vector<std::uint32_t> areas;
        ScreenRectangle screen;
        const xcb_window_t root = asking.root();
        asking.requestProperty(root, asking.atoms().netCurrentDesktop,
                               [&](const X11Property& number) { desktop = number.number(); });
        asking.requestProperty(root, asking.atoms().netWorkArea,
                               [&](const X11Property& all) { areas = all.numbers(); });
        asking.request<xcb_get_geometry_reply_t>(
            xcb_get_geometry(asking.handle(), root), [&](const auto* reply) {
                if (reply != nullptr) screen = {0, 0, reply->width, reply->height};
            });
        asking.await();
        return areaOf(desktop, areas, screen);
    }

private:
    static QWindow* find(WindowHandle window) {
        for (QWindow* const each : QGuiApplication::allWindows()) {
            if (each->handle() != nullptr && each->winId() == window) return each;
        }
        return nullptr;
    }

    /// Asks the window manager itself: when Qt's flag for it changes before a widget is shown, the
    /// widget gets another window.
    void askManager(xcb_window_t window, bool isShown, bool isTopMost) {
        xcb_connection_t* const connection = qtX11Connection();
        const X11Atoms& atoms = client.atoms();
        if (isShown) {
            constexpr std::uint32_t fromProgram = 1;
            const auto message =
                x11Message(window, atoms.netWmState,
                           {isTopMost ? 1U : 0U, atoms.netWmStateAbove, 0, fromProgram});
            sendByQt(xcb_send_event_checked(
                connection, 0, client.root(),
                XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                x11Bytes(message)));
        } else if (isTopMost) {
            sendByQt(xcb_change_property_checked(connection, XCB_PROP_MODE_APPEND, window,
                                                 atoms.netWmState, XCB_ATOM_ATOM, 32, 1,
                                                 &atoms.netWmStateAbove));
        } else {
            // Qt adds the states that it needs when it shows the window.
            sendByQt(xcb_delete_property_checked(connection, window, atoms.netWmState));
        }
    }

    /// Whether window managers leave the window alone.
    static bool isOverrideRedirect(const QWindow& window) {
        return window.flags().testFlag(Qt::BypassWindowManagerHint) ||
               window.type() == Qt::ToolTip || window.type() == Qt::Popup;
    }

    static std::optional<ScreenRectangle> areaOf(std::uint32_t desktop,
                                                 const std::vector<std::uint32_t>& areas,
                                                 const ScreenRectangle& screen) {
        const std::size_t first = std::size_t{desktop} * 4;
        if (first + 4 > areas.size()) return std::nullopt;
        const std::int64_t left = areas[first];
        const std::int64_t top = areas[first + 1];
        const std::int64_t right = left + areas[first + 2];
        const std::int64_t bottom = top + areas[first + 3];
        const bool isOnScreen =
            left < right && right <= screen.right && top < bottom && bottom <= screen.bottom;
        if (!isOnScreen) return std::nullopt;
        return ScreenRectangle{static_cast<int>(left), static_cast<int>(top),
                               static_cast<int>(right), static_cast<int>(bottom)};
    }

    X11Client client;
    RaisedWindows raised;
};

}  // namespace

std::unique_ptr<OwnWindows> makeOwnWindows() { return std::make_unique<X11OwnWindows>(); }
