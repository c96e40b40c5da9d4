#pragma once

#include "platform/linux/x11/X11Client.h"

#include <string_view>

#include <xcb/xcb.h>

/// Writes a window's title, in the program's bytes, in all the places where window managers and
/// panels look for it, and beside it that it was this program who wrote it. A zero byte ends it, as
/// it does on the title bars that Messenger was made for.
void writeX11Title(X11Client& client, xcb_window_t window, std::string_view text);
