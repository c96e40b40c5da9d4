#include "platform/linux/x11/X11Atoms.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

X11Atoms X11Atoms::of(xcb_connection_t* connection, int screen) {
    struct Name {
        std::string text;
        xcb_atom_t X11Atoms::*atom;
    };
    const std::array names{
        Name{"_COBWEAVE_TITLE", &X11Atoms::cobweaveTitle},
        Name{"_COBWEAVE_TOP_MOST", &X11Atoms::cobweaveTopMost},
        Name{"MANAGER", &X11Atoms::manager},
        Name{"_NET_ACTIVE_WINDOW", &X11Atoms::netActiveWindow},
        Name{"_NET_CLIENT_LIST", &X11Atoms::netClientList},
        Name{"_NET_CURRENT_DESKTOP", &X11Atoms::netCurrentDesktop},
        Name{"_NET_SUPPORTING_WM_CHECK", &X11Atoms::netSupportingWmCheck},
        Name{"_NET_SYSTEM_TRAY_S" + std::to_string(screen), &X11Atoms::netSystemTray},
        Name{"_NET_WM_ICON_NAME", &X11Atoms::netWmIconName},
        Name{"_NET_WM_NAME", &X11Atoms::netWmName},
        Name{"_NET_WM_STATE", &X11Atoms::netWmState},
        Name{"_NET_WM_STATE_ABOVE", &X11Atoms::netWmStateAbove},
        Name{"_NET_WM_WINDOW_OPACITY", &X11Atoms::netWmWindowOpacity},
        Name{"_NET_WM_WINDOW_TYPE", &X11Atoms::netWmWindowType},
        Name{"_NET_WM_WINDOW_TYPE_NORMAL", &X11Atoms::netWmWindowTypeNormal},
        Name{"_NET_WORKAREA", &X11Atoms::netWorkArea},
        Name{"UTF8_STRING", &X11Atoms::utf8String},
        Name{"WM_DELETE_WINDOW", &X11Atoms::wmDeleteWindow},
        Name{"WM_PROTOCOLS", &X11Atoms::wmProtocols},
    };
    std::array<xcb_intern_atom_cookie_t, names.size()> cookies{};
    std::transform(names.begin(), names.end(), cookies.begin(), [&](const Name& name) {
        const auto length = static_cast<std::uint16_t>(name.text.size());
        return xcb_intern_atom(connection, 0, length, name.text.data());
    });
    X11Atoms atoms;
    for (std::size_t index = 0; index < names.size(); ++index) {
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(connection, cookies[index], nullptr), &std::free);
        if (reply != nullptr) atoms.*names[index].atom = reply->atom;
    }
    return atoms;
}
