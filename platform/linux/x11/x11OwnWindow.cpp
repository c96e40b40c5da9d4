#include "platform/linux/x11/x11OwnWindow.h"

#include <QGuiApplication>

xcb_connection_t* qtX11Connection() {
    if (qGuiApp == nullptr) return nullptr;
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

bool isOwnX11Window(xcb_window_t window) {
    xcb_connection_t* const connection = qtX11Connection();
    if (connection == nullptr || window == 0) return false;
    // All that a connection makes has the number that the server gave to the connection.
    const xcb_setup_t* const setup = xcb_get_setup(connection);
    return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}
