#pragma once

#include "platform/linux/x11/X11Client.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include <xcb/xcb.h>

class QSocketNotifier;

/// Writes the titles of windows, without ever blocking on a server that takes nothing: what it does
/// not take waits, and of several titles for one window the last one counts.
class X11Titles {
public:
    /// `client` has to outlive this object.
    explicit X11Titles(X11Client& client);
    ~X11Titles();
    X11Titles(const X11Titles&) = delete;
    X11Titles& operator=(const X11Titles&) = delete;

    /// Writes `text`, which is in the program's code page, in all the properties in which window
    /// managers and panels look for a title, and into one that says that this program wrote it. A
    /// zero byte ends the text, as it does on the title bars that Messenger was made for.
    void write(xcb_window_t window, std::string_view text);
    /// Drops the titles that wait, when the server is gone.
    void clear();

private:
    void writePending();

    X11Client& client;
    std::map<xcb_window_t, std::string> pending;
    /// Null without a server.
    std::unique_ptr<QSocketNotifier> writability;
};
