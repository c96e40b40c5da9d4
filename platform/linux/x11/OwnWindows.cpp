#include "platform/OwnWindows.h"
#include "platform/linux/x11/X11Client.h"
#include "platform/linux/x11/X11TopMost.h"
#include "platform/linux/x11/x11OwnWindow.h"
#include "platform/linux/x11/x11Properties.h"

#include <QGuiApplication>
#include <QWindow>

#include <chrono>

namespace {

constexpr std::chrono::milliseconds patience{5};

class X11OwnWindows final : public OwnWindows {
public:
    void setTopMost(WindowHandle window, bool isTopMost) override {
        QWindow* const found = find(window);
        if (found == nullptr || qtX11Connection() == nullptr) return;
        if (isBeyondManager(*found)) {
            topMost.set(static_cast<xcb_window_t>(window), isTopMost);
        } else {
            askManager(static_cast<xcb_window_t>(window), found->isVisible(), isTopMost);
        }
    }

    void setAlpha(WindowHandle window, std::uint8_t alpha) override {
        const auto target = static_cast<xcb_window_t>(window);
        if (!isOwnX11Window(target) || !client.stands()) return;
        xcb_connection_t* const connection = qtX11Connection();
        const xcb_atom_t name = client.atoms().netWmWindowOpacity;
        xcb_void_cookie_t change{};
        if (alpha == 0xFF) {
            // Solid is what every window is that says nothing. Said, it would go before what the
            // user may have told the compositor for all windows.
            change = xcb_delete_property_checked(connection, target, name);
        } else {
            const std::uint32_t opacity = alpha * 0x01010101U;
            change = xcb_change_property_checked(connection, XCB_PROP_MODE_REPLACE, target, name,
                                                 XCB_ATOM_CARDINAL, 32, 1, &opacity);
        }
        send(change);
    }

    std::optional<ScreenRectangle> workArea() override {
        if (!client.canWrite(patience)) return std::nullopt;
        X11Client asking;
        std::uint32_t desktop = 0;
        std::vector<std::uint32_t> areas;
        ScreenRectangle screen;
        const xcb_window_t root = asking.root();
        asking.askProperty(root, asking.atoms().netCurrentDesktop,
                           [&](const auto* reply) { desktop = x11Properties::numberIn(reply); });
        asking.askProperty(root, asking.atoms().netWorkArea,
                           [&](const auto* reply) { areas = x11Properties::numbersIn(reply); });
        asking.ask<xcb_get_geometry_reply_t>(xcb_get_geometry(asking.handle(), root),
                                             [&](const auto* reply) {
                                                 if (reply != nullptr)
                                                     screen = {0, 0, reply->width, reply->height};
                                             });
        asking.await(patience);
        return areaOf(desktop, areas, screen);
    }

private:
    static QWindow* find(WindowHandle window) {
        for (QWindow* const each : QGuiApplication::allWindows()) {
            if (each->handle() != nullptr && each->winId() == window) return each;
        }
        return nullptr;
    }

    /// Sends a request over Qt's connection, where what Qt does to the window has its turn before
    /// it: on another one it might come before the window itself. Its error, when the window is
    /// gone, is nobody's.
    static void send(xcb_void_cookie_t request) {
        xcb_discard_reply(qtX11Connection(), request.sequence);
        xcb_flush(qtX11Connection());
    }

    /// Not by Qt's flag for it: a widget that has it changed before it is shown gets another
    /// window.
    void askManager(xcb_window_t window, bool isShown, bool isTopMost) {
        xcb_connection_t* const connection = qtX11Connection();
        const X11Atoms& atoms = client.atoms();
        if (isShown) {
            constexpr std::uint32_t fromProgram = 1;
            xcb_client_message_event_t message{};
            message.response_type = XCB_CLIENT_MESSAGE;
            message.format = 32;
            message.window = window;
            message.type = atoms.netWmState;
            message.data.data32[0] = isTopMost ? 1 : 0;
            message.data.data32[1] = atoms.netWmStateAbove;
            message.data.data32[3] = fromProgram;
            send(xcb_send_event_checked(
                connection, 0, client.root(),
                XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                reinterpret_cast<const char*>(&message)));
        } else if (isTopMost) {
            send(xcb_change_property_checked(connection, XCB_PROP_MODE_APPEND, window,
                                             atoms.netWmState, XCB_ATOM_ATOM, 32, 1,
                                             &atoms.netWmStateAbove));
        } else {
            // Qt adds what it wants itself when it shows the window.
            send(xcb_delete_property_checked(connection, window, atoms.netWmState));
        }
    }

    /// Window managers leave it alone.
    static bool isBeyondManager(const QWindow& window) {
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
    X11TopMost topMost;
};

}  // namespace

std::unique_ptr<OwnWindows> makeOwnWindows() { return std::make_unique<X11OwnWindows>(); }
