#pragma once

#include <xcb/xcb.h>

/// Qt's connection to the X server; null where Qt does not show its windows there.
[[nodiscard]] xcb_connection_t* qtX11Connection();

/// The window is one of this program's.
[[nodiscard]] bool isOwnX11Window(xcb_window_t window);
