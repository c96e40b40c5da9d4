#pragma once

#include <xcb/xcb.h>

/// The numbers that an X server gives to the names that the program uses.
struct X11Atoms {
    /// Asks the server of a connection for all of them. Zeros when it does not answer.
    static X11Atoms of(xcb_connection_t* connection, int screen);

    xcb_atom_t cobweaveTitle = 0;
    xcb_atom_t cobweaveTopMost = 0;
    xcb_atom_t manager = 0;
    xcb_atom_t netActiveWindow = 0;
    xcb_atom_t netClientList = 0;
    xcb_atom_t netCurrentDesktop = 0;
    xcb_atom_t netSupportingWmCheck = 0;
    /// That of the one screen.
    xcb_atom_t netSystemTray = 0;
    xcb_atom_t netWmIconName = 0;
    xcb_atom_t netWmName = 0;
    xcb_atom_t netWmState = 0;
    xcb_atom_t netWmStateAbove = 0;
    xcb_atom_t netWmWindowOpacity = 0;
    xcb_atom_t netWmWindowType = 0;
    xcb_atom_t netWmWindowTypeNormal = 0;
    xcb_atom_t netWorkArea = 0;
    xcb_atom_t utf8String = 0;
    xcb_atom_t wmDeleteWindow = 0;
    xcb_atom_t wmProtocols = 0;
};
