#include "tests/support/linux/StandIn.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace {

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

template <typename Reply>
Owned<Reply> own(Reply* reply) {
    return {reply, &std::free};
}

}  // namespace

StandIn::StandIn(const std::string& display) {
    int screen = 0;
    connection = xcb_connect(display.empty() ? nullptr : display.c_str(), &screen);
    if (xcb_connection_has_error(connection) != 0) throw std::runtime_error("no X server");
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen > 0; --screen)
        xcb_screen_next(&roots);
    screenRoot = roots.data->root;
}

StandIn::~StandIn() { xcb_disconnect(connection); }

xcb_window_t StandIn::open(const Look& look) {
    const xcb_window_t window = xcb_generate_id(connection);
    const std::array<std::uint32_t, 2> values{look.isOverrideRedirect ? 1U : 0U,
                                              XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screenRoot, 10, 10, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    if (!look.instance.empty() || !look.className.empty()) {
        setClass(window, look.instance, look.className);
    }
    if (look.title) setTitle(window, *look.title);
    if (!look.type.empty()) {
        setNumbers(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {atom(look.type)});
    }
    if (look.transientFor != 0) {
        setNumbers(window, "WM_TRANSIENT_FOR", XCB_ATOM_WINDOW, {look.transientFor});
    }
    if (look.isClosable) {
        setNumbers(window, "WM_PROTOCOLS", XCB_ATOM_ATOM, {atom("WM_DELETE_WINDOW")});
    }
    show(window);
    return window;
}

void StandIn::hide(xcb_window_t window) {
    xcb_unmap_window(connection, window);
    // As it is asked of whoever takes a window away from a window manager.
    xcb_unmap_notify_event_t event{};
    event.response_type = XCB_UNMAP_NOTIFY;
    event.event = screenRoot;
    event.window = window;
    xcb_send_event(connection, 0, screenRoot,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    sync();
}

void StandIn::show(xcb_window_t window) {
    xcb_map_window(connection, window);
    sync();
}

void StandIn::close(xcb_window_t window) {
    xcb_destroy_window(connection, window);
    sync();
}

void StandIn::raise(xcb_window_t window) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    sync();
}

void StandIn::move(xcb_window_t window, int left, int top) {
    const std::array place{static_cast<std::uint32_t>(left), static_cast<std::uint32_t>(top)};
    xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y,
                         place.data());
    sync();
}

void StandIn::focus(xcb_window_t window) {
    xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    sync();
}

void StandIn::setTitle(xcb_window_t window, std::string_view title) {
    setText(window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, title);
    setText(window, atom("_NET_WM_NAME"), atom("UTF8_STRING"), title);
    sync();
}

void StandIn::setClass(xcb_window_t window, std::string_view instance, std::string_view className) {
    const std::string both = std::string(instance) + '\0' + std::string(className) + '\0';
    setText(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, both);
    sync();
}

void StandIn::setNumbers(xcb_window_t window, const std::string& name, xcb_atom_t type,
                         const std::vector<std::uint32_t>& numbers) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom(name), type, 32,
                        static_cast<std::uint32_t>(numbers.size()), numbers.data());
    sync();
}

void StandIn::remove(xcb_window_t window, const std::string& name) {
    xcb_delete_property(connection, window, atom(name));
    sync();
}

void StandIn::sendToRoot(xcb_window_t window, const std::string& type,
                         const std::vector<std::uint32_t>& numbers) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(type);
    std::copy(numbers.begin(), numbers.end(), std::begin(message.data.data32));
    xcb_send_event(connection, 0, screenRoot,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    sync();
}

xcb_atom_t StandIn::atom(const std::string& name) {
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    return own(xcb_intern_atom_reply(connection, cookie, nullptr))->atom;
}

bool StandIn::isListed(xcb_window_t window) {
    const std::vector<std::uint32_t> list = numbers(screenRoot, "_NET_CLIENT_LIST");
    return std::find(list.begin(), list.end(), window) != list.end();
}

bool StandIn::isManaged() {
    const auto cookie = xcb_get_window_attributes(connection, screenRoot);
    const auto reply = own(xcb_get_window_attributes_reply(connection, cookie, nullptr));
    return reply != nullptr && (reply->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
}

bool StandIn::isViewable(xcb_window_t window) {
    const auto cookie = xcb_get_window_attributes(connection, window);
    const auto reply = own(xcb_get_window_attributes_reply(connection, cookie, nullptr));
    return reply != nullptr && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::optional<std::string> StandIn::bytes(xcb_window_t window, const std::string& name) {
    const auto cookie =
        xcb_get_property(connection, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 0x100000);
    const auto reply = own(xcb_get_property_reply(connection, cookie, nullptr));
    if (reply == nullptr || reply->type == XCB_ATOM_NONE) return std::nullopt;
    return std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                       static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
}

std::string StandIn::typeOf(xcb_window_t window, const std::string& name) {
    const auto cookie =
        xcb_get_property(connection, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 0);
    const auto reply = own(xcb_get_property_reply(connection, cookie, nullptr));
    if (reply == nullptr || reply->type == XCB_ATOM_NONE) return {};
    const auto type = own(
        xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, reply->type), nullptr));
    return {xcb_get_atom_name_name(type.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(type.get()))};
}

std::vector<std::uint32_t> StandIn::numbers(xcb_window_t window, const std::string& name) {
    const std::string value = bytes(window, name).value_or("");
    std::vector<std::uint32_t> numbers(value.size() / sizeof(std::uint32_t));
    if (!numbers.empty()) {
        std::memcpy(numbers.data(), value.data(), numbers.size() * sizeof(std::uint32_t));
    }
    return numbers;
}

xcb_window_t StandIn::focused() {
    return own(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr))
        ->focus;
}

void StandIn::takeSelection(const std::string& selection) {
    const xcb_window_t owner = xcb_generate_id(connection);
    xcb_create_window(connection, 0, owner, screenRoot, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(connection, owner, atom(selection), XCB_CURRENT_TIME);
    sync();
}

xcb_window_t StandIn::ownerOf(const std::string& selection) {
    const auto cookie = xcb_get_selection_owner(connection, atom(selection));
    return own(xcb_get_selection_owner_reply(connection, cookie, nullptr))->owner;
}

xcb_window_t StandIn::topAt(int left, int top) {
    const auto cookie =
        xcb_translate_coordinates(connection, screenRoot, screenRoot,
                                  static_cast<std::int16_t>(left), static_cast<std::int16_t>(top));
    return own(xcb_translate_coordinates_reply(connection, cookie, nullptr))->child;
}

xcb_get_geometry_reply_t StandIn::geometry(xcb_window_t window) {
    const auto reply =
        own(xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    return reply == nullptr ? xcb_get_geometry_reply_t{} : *reply;
}

int StandIn::countBelowTop(const std::string& name) {
    int count = 0;
    std::vector<xcb_window_t> open = childrenOf(screenRoot);
    while (!open.empty()) {
        const xcb_window_t window = open.back();
        open.pop_back();
        for (const xcb_window_t child : childrenOf(window)) {
            if (bytes(child, name)) ++count;
            open.push_back(child);
        }
    }
    return count;
}

std::optional<std::uint32_t> StandIn::message(const std::string& type) {
    const xcb_atom_t wanted = atom(type);
    while (const auto event = own(xcb_poll_for_event(connection))) {
        if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) continue;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        if (message.type == wanted) return message.data.data32[0];
    }
    return std::nullopt;
}

void StandIn::sync() { (void)focused(); }

std::vector<xcb_window_t> StandIn::childrenOf(xcb_window_t window) {
    const auto tree =
        own(xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
    if (tree == nullptr) return {};
    const xcb_window_t* const first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

void StandIn::setText(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                      std::string_view text) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, name, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}
