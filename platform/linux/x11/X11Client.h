#pragma once

#include "base/Event.h"

#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

class X11Connection;

/// The numbers that the X server gives to the names that the program uses; all 0 without a server.
struct X11Atoms {
    xcb_atom_t cobweaveTitle = 0;
    xcb_atom_t cobweaveTopMost = 0;
    xcb_atom_t manager = 0;
    xcb_atom_t netActiveWindow = 0;
    xcb_atom_t netClientList = 0;
    xcb_atom_t netCurrentDesktop = 0;
    xcb_atom_t netSupportingWmCheck = 0;
    /// The name of the tray of the screen that DISPLAY names.
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

/// A property of a window, as the server answers with it; to be read within the call that hands it
/// over. One of another type than expected reads as none: anybody can write anything there.
class X11Property {
public:
    /// Null where the server has no answer, as for a window that is gone.
    explicit X11Property(const xcb_get_property_reply_t* reply) : reply(reply) {}

    /// Whether the window has this property at all, of whatever type.
    [[nodiscard]] bool isSet() const;
    /// The bytes of a text; nothing where the property is no text. A text longer than 64 KiB is
    /// cut.
    [[nodiscard]] std::optional<std::string_view> text() const;
    /// Windows, atoms or numbers; empty where the property holds none.
    [[nodiscard]] std::vector<std::uint32_t> numbers() const;
    /// The first of the numbers; 0 without one.
    [[nodiscard]] std::uint32_t number() const;

private:
    const xcb_get_property_reply_t* reply;
};

/// `event` as the type that `x11TypeOf` names.
template <typename Type>
[[nodiscard]] const Type& x11EventAs(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Type&>(event);
}
/// The type of an event, whether it comes from the server or from another program.
[[nodiscard]] inline int x11TypeOf(const xcb_generic_event_t& event) {
    return event.response_type & 0x7F;
}

/// A message about `window` with at most five numbers, as programs and window managers send each
/// other.
[[nodiscard]] xcb_client_message_event_t x11Message(xcb_window_t window, xcb_atom_t type,
                                                    std::initializer_list<std::uint32_t> numbers);
/// What `xcb_send_event` takes a message as.
[[nodiscard]] inline const char* x11Bytes(const xcb_client_message_event_t& message) {
    return reinterpret_cast<const char*>(&message);
}

/// Qt's connection to the X server; null where Qt does not show its windows there.
[[nodiscard]] xcb_connection_t* qtX11Connection();
/// Whether `window` is one that Qt has made for this program.
[[nodiscard]] bool isOwnX11Window(xcb_window_t window);

/// A part of the program that uses the one connection that the program has to the X server beside
/// Qt's. Requests are answered from the event loop, so nothing waits for a server that is held up.
/// Errors are passed over: the windows of other programs vanish at any moment. The pending requests
/// and the watched windows of a client end with it.
///
/// Without a display, and from the moment that the server is gone, requests have no effect and no
/// answer.
class X11Client {
public:
    /// The X server answers within some hundredths of a millisecond. One that takes longer than
    /// this is held up, and no answer is worth waiting longer for it.
    static constexpr std::chrono::milliseconds usualWait{5};
    static inline std::chrono::milliseconds longestWait = usualWait;

    /// Any event that arrives over the connection, whichever client it was selected by; errors, of
    /// type 0, too.
    Event<const xcb_generic_event_t&> event;
    /// The server is gone. Raised once.
    Event<> lost;

    /// Takes a part in the one connection to the X server, which is made for the first client.
    X11Client();
    ~X11Client();
    X11Client(const X11Client&) = delete;
    X11Client& operator=(const X11Client&) = delete;

    /// Whether there is a server, and it is still there.
    [[nodiscard]] bool isConnected() const;
    /// The connection over which requests are sent; valid, if useless, without a server too.
    [[nodiscard]] xcb_connection_t* handle() const;
    /// The numbers of the names; valid as long as this client.
    [[nodiscard]] const X11Atoms& atoms() const;
    /// The root window of the screen that DISPLAY names; 0 without a server.
    [[nodiscard]] xcb_window_t root() const;

    /// Calls `answered` with the reply to a request, or with null where the server answers with an
    /// error; never when the server is gone before it answers.
    template <typename Reply, typename Cookie, typename Answered>
    void request(Cookie cookie, Answered answered) {
        request(cookie.sequence, [answered = std::move(answered)](const void* reply) {
            answered(static_cast<const Reply*>(reply));
        });
    }
    /// The same for a property of a window.
    void requestProperty(xcb_window_t window, xcb_atom_t name, Event<const X11Property&> answered);
    /// Serves the answers to this client's requests, as they come and nothing else, until all are
    /// there; at most for `longestWait`.
    void await();

    /// Selects the events of a window that this client needs; 0 for none any more.
    void select(xcb_window_t window, std::uint32_t events);
    /// Whether the server takes some 100 KB of requests without blocking the sender.
    [[nodiscard]] bool canWrite() const;
    /// The same, and waits for it at most for `longestWait`.
    [[nodiscard]] bool waitUntilWritable() const;
    /// Call it after the last of some requests, unless in the course of an event or an answer.
    void flush();

private:
    void request(unsigned int sequence, Event<const void*> answered);

    std::shared_ptr<X11Connection> connection;
};
