#include "platform/linux/x11/X11TopMost.h"

#include "platform/linux/x11/x11OwnWindow.h"

#include <algorithm>

X11TopMost::X11TopMost() {
    if (!client.stands()) return;
    mailbox = xcb_generate_id(client.handle());
    xcb_create_window(client.handle(), XCB_COPY_FROM_PARENT, mailbox, client.root(), -1, -1, 1, 1,
                      0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    // Stands before anything can be sent to it.
    client.ask<xcb_get_input_focus_reply_t>(xcb_get_input_focus(client.handle()),
                                            [](const auto* /*reply*/) {});
    client.await(std::chrono::milliseconds(5));
    client.event = [this](const xcb_generic_event_t& event) { hear(event); };
}

X11TopMost::~X11TopMost() {
    if (client.stands()) xcb_destroy_window(client.handle(), mailbox);
}

void X11TopMost::set(xcb_window_t window, bool isTopMost) {
    xcb_connection_t* const connection = qtX11Connection();
    if (connection == nullptr || mailbox == 0) return;
    // By way of Qt's connection: the window may not have reached the server yet, and what comes
    // over ours might overtake it.
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = client.atoms().cobweaveTopMost;
    message.data.data32[0] = isTopMost ? 1 : 0;
    const auto sent = xcb_send_event_checked(connection, 0, mailbox, XCB_EVENT_MASK_NO_EVENT,
                                             reinterpret_cast<const char*>(&message));
    xcb_discard_reply(connection, sent.sequence);
    xcb_flush(connection);
}

void X11TopMost::hear(const xcb_generic_event_t& event) {
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

void X11TopMost::raise(xcb_window_t window) {
    const auto entry = windows.find(window);
    if (entry == windows.end()) return;
    Raises& raises = entry->second;
    // Against another program that does the same there is no winner, only a limit.
    const auto now = Clock::now();
    if (raises.front() != Clock::time_point{} && now - raises.front() < std::chrono::seconds(1)) {
        return;
    }
    std::rotate(raises.begin(), raises.begin() + 1, raises.end());
    raises.back() = now;
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(client.handle(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}
