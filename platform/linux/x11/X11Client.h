#pragma once

#include "base/Event.h"
#include "platform/linux/x11/X11Connection.h"

#include <cstdint>
#include <memory>
#include <utility>

#include <xcb/xcb.h>

/// An event as what its type says that it is.
template <typename Event>
[[nodiscard]] const Event& x11EventAs(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}
/// Its type, whether the server or a program sent it.
[[nodiscard]] inline int x11TypeOf(const xcb_generic_event_t& event) {
    return event.response_type & 0x7F;
}

/// One of those who use the program's connection to the X server. Its questions and wishes end with
/// it.
class X11Client {
public:
    /// All that the server tells, whoever wanted it. Errors, of type 0, among it.
    Event<const xcb_generic_event_t&> event;
    /// The server is gone. Comes once.
    Event<> lost;

    X11Client() { connection->add(*this); }
    ~X11Client() { connection->remove(*this); }
    X11Client(const X11Client&) = delete;
    X11Client& operator=(const X11Client&) = delete;

    [[nodiscard]] bool stands() const { return connection->stands(); }
    [[nodiscard]] xcb_connection_t* handle() const { return connection->handle(); }
    [[nodiscard]] const X11Atoms& atoms() const { return connection->atoms(); }
    [[nodiscard]] xcb_window_t root() const { return connection->root(); }

    /// Hears the answer to a request from the event loop, null where the server has none. It never
    /// comes when the server is gone before it.
    template <typename Reply, typename Cookie, typename Answered>
    void ask(Cookie cookie, Answered answered) {
        connection->ask(
            {this, cookie.sequence, [answered = std::move(answered)](const void* reply) {
                 answered(static_cast<const Reply*>(reply));
             }});
    }
    /// A property, as a question. Of one longer than 64 KiB the beginning.
    [[nodiscard]] xcb_get_property_cookie_t property(xcb_window_t window, xcb_atom_t name) const {
        constexpr std::uint32_t length = 0x4000;
        return xcb_get_property(handle(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, length);
    }
    template <typename Answered>
    void askProperty(xcb_window_t window, xcb_atom_t name, Answered answered) {
        ask<xcb_get_property_reply_t>(property(window, name), std::move(answered));
    }
    /// Hears its answers at once, if they come within the limit.
    void await(std::chrono::milliseconds limit) { connection->await(*this, limit); }

    /// Which events of a window this client wants; 0 for none any more.
    void select(xcb_window_t window, std::uint32_t events) {
        connection->select(*this, window, events);
    }
    /// The server takes what is sent, up to some 100 KB, without keeping the sender waiting; is
    /// waited for until it does.
    [[nodiscard]] bool canWrite(std::chrono::milliseconds limit = {}) const {
        return connection->canWrite(limit);
    }
    /// To be called after the last of some requests, unless in the course of an event or answer.
    void flush() { connection->flush(); }

private:
    std::shared_ptr<X11Connection> connection = X11Connection::shared();
};
