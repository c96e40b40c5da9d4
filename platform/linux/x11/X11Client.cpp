#include "platform/linux/x11/X11Client.h"

#include <QGuiApplication>
#include <QMetaObject>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <map>
#include <string>

#include <poll.h>
#include <xcb/xcbext.h>

namespace {

/// The most events that are served in one go, so that a storm of them does not hold up the rest.
constexpr int eventsAtOnce = 500;

struct Freed {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename Memory>
using Owned = std::unique_ptr<Memory, Freed>;

xcb_window_t rootOf(xcb_connection_t* connection, int screen) {
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; roots.rem > 1 && screen > 0; --screen)
        xcb_screen_next(&roots);
    return roots.data->root;
}

X11Atoms atomsOf(xcb_connection_t* connection, int screen) {
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
    // All are sent before the first answer is waited for.
    std::array<xcb_intern_atom_cookie_t, names.size()> cookies{};
    std::transform(names.begin(), names.end(), cookies.begin(), [&](const Name& name) {
        const auto length = static_cast<std::uint16_t>(name.text.size());
        return xcb_intern_atom(connection, 0, length, name.text.data());
    });
    X11Atoms atoms;
    for (std::size_t index = 0; index < names.size(); ++index) {
        const Owned<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection, cookies[index], nullptr));
        if (reply != nullptr) atoms.*names[index].atom = reply->atom;
    }
    return atoms;
}

}  // namespace

/// The connection that all clients share.
class X11Connection : public std::enable_shared_from_this<X11Connection> {
public:
    using Answered = Event<const void*>;

    /// The connection that is there, for as long as a client holds it and its server lives; else a
    /// new one.
    [[nodiscard]] static std::shared_ptr<X11Connection> shared() {
        static std::weak_ptr<X11Connection> known;
        std::shared_ptr<X11Connection> connection = known.lock();
        if (connection == nullptr || !connection->isConnected()) {
            connection = std::make_shared<X11Connection>();
            known = connection;
        }
        return connection;
    }

    X11Connection() {
        int screen = 0;
        handle = xcb_connect(nullptr, &screen);
        if (xcb_connection_has_error(handle) != 0) return;
        root = rootOf(handle, screen);
        atoms = atomsOf(handle, screen);
        readiness = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(handle),
                                                      QSocketNotifier::Read);
        QObject::connect(readiness.get(), &QSocketNotifier::activated, readiness.get(),
                         [this] { dispatch(); });
    }
    ~X11Connection() {
        readiness.reset();
        xcb_disconnect(handle);
    }
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    [[nodiscard]] bool isConnected() const {
        return readiness != nullptr && readiness->isEnabled();
    }

    void add(X11Client& client) { clients.push_back(&client); }
    void remove(X11Client& client);
    void request(const X11Client& client, unsigned int sequence, Answered answered) {
        if (isConnected()) pending.push_back({&client, sequence, std::move(answered)});
    }
    void await(const X11Client& client);
    void select(const X11Client& client, xcb_window_t window, std::uint32_t events);
    [[nodiscard]] bool canWrite(std::chrono::milliseconds limit) const;
    void flush();

    xcb_connection_t* handle;
    xcb_window_t root = 0;
    X11Atoms atoms;

private:
    struct Request {
        const X11Client* client;
        unsigned int sequence;
        Answered answered;
    };
    using OwnedEvent = Owned<xcb_generic_event_t>;

    /// Serves all that has arrived.
    void dispatch();
    void dispatchLater();
    /// False while the answer has not arrived.
    [[nodiscard]] bool answer(const std::deque<Request>::iterator& request);
    [[nodiscard]] OwnedEvent nextEvent();
    void handleLostServer();
    /// Calls `notify` for each client, also where one of them adds or removes clients.
    template <typename Notify>
    void forEachClient(Notify notify);

    std::unique_ptr<QSocketNotifier> readiness;
    std::vector<X11Client*> clients;
    /// The pending requests, in the order in which the server answers.
    std::deque<Request> pending;
    /// Events that were read while something else was waited for.
    std::deque<OwnedEvent> backlog;
    /// The server keeps one event mask for a window and a connection: what any client needs.
    std::map<xcb_window_t, std::map<const X11Client*, std::uint32_t>> masks;
    bool isDispatchDue = false;
};

void X11Connection::remove(X11Client& client) {
    clients.erase(std::remove(clients.begin(), clients.end(), &client), clients.end());
    const auto gone =
        std::stable_partition(pending.begin(), pending.end(),
                              [&](const Request& request) { return request.client != &client; });
    std::for_each(gone, pending.end(),
                  [this](const Request& request) { xcb_discard_reply(handle, request.sequence); });
    pending.erase(gone, pending.end());
    std::vector<xcb_window_t> watched;
    for (const auto& [window, masksOfClients] : masks) {
        if (masksOfClients.contains(&client)) watched.push_back(window);
    }
    for (const xcb_window_t window : watched)
        select(client, window, 0);
    flush();
}

void X11Connection::await(const X11Client& client) {
    const auto isItsRequest = [&](const Request& request) { return request.client == &client; };
    const auto deadline = std::chrono::steady_clock::now() + X11Client::longestWait;
    flush();
    while (isConnected()) {
        const auto next = std::find_if(pending.begin(), pending.end(), isItsRequest);
        if (next == pending.end()) break;
        xcb_flush(handle);
        if (auto* const event = xcb_poll_for_event(handle)) backlog.emplace_back(event);
        if (answer(next)) continue;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) break;
        pollfd entry{xcb_get_file_descriptor(handle), POLLIN, 0};
        poll(&entry, 1, static_cast<int>(left.count()));
        if (xcb_connection_has_error(handle) != 0) break;
    }
    // What has been read by now does not make the descriptor readable any more.
    dispatchLater();
}

void X11Connection::select(const X11Client& client, xcb_window_t window, std::uint32_t events) {
    if (!isConnected()) return;
    auto& masksOfClients = masks[window];
    if (events == 0) {
        masksOfClients.erase(&client);
    } else {
        masksOfClients[&client] = events;
    }
    std::uint32_t mask = 0;
    for (const auto& [each, eventsOfEach] : masksOfClients)
        mask |= eventsOfEach;
    if (mask == 0) masks.erase(window);
    xcb_change_window_attributes(handle, window, XCB_CW_EVENT_MASK, &mask);
}

void X11Connection::flush() {
    if (!isConnected()) return;
    xcb_flush(handle);
    // While it writes it may read too.
    while (xcb_generic_event_t* const event = xcb_poll_for_queued_event(handle)) {
        backlog.emplace_back(event);
    }
    if (!backlog.empty() || !pending.empty()) dispatchLater();
}

bool X11Connection::canWrite(std::chrono::milliseconds limit) const {
    if (!isConnected()) return false;
    pollfd entry{xcb_get_file_descriptor(handle), POLLOUT, 0};
    return poll(&entry, 1, static_cast<int>(limit.count())) == 1 && (entry.revents & POLLOUT) != 0;
}

void X11Connection::dispatch() {
    if (!isConnected()) return;
    // A client that is notified may drop the last hold on this connection.
    const auto self = shared_from_this();
    bool isFlushed = false;
    for (int count = 0; count < eventsAtOnce; ++count) {
        const OwnedEvent event = nextEvent();
        if (event != nullptr) forEachClient([&](X11Client& client) { client.event(*event); });
        const bool isAnswered = !pending.empty() && answer(pending.begin());
        if (isAnswered || event != nullptr) {
            isFlushed = false;
            continue;
        }
        if (xcb_connection_has_error(handle) != 0) return handleLostServer();
        if (isFlushed) return;
        // While it writes it may read too, so there may be more to serve.
        xcb_flush(handle);
        isFlushed = true;
    }
    dispatchLater();
}

void X11Connection::dispatchLater() {
    if (!isConnected() || std::exchange(isDispatchDue, true)) return;
    QMetaObject::invokeMethod(
        readiness.get(),
        [this] {
            isDispatchDue = false;
            dispatch();
        },
        Qt::QueuedConnection);
}

bool X11Connection::answer(const std::deque<Request>::iterator& request) {
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    if (xcb_poll_for_reply(handle, request->sequence, &reply, &error) == 0) return false;
    const Owned<void> ownedReply(reply);
    const Owned<xcb_generic_error_t> ownedError(error);
    const Answered answered = std::move(request->answered);
    pending.erase(request);
    answered(reply);
    return true;
}

X11Connection::OwnedEvent X11Connection::nextEvent() {
    if (backlog.empty()) return OwnedEvent(xcb_poll_for_event(handle));
    OwnedEvent event = std::move(backlog.front());
    backlog.pop_front();
    return event;
}

void X11Connection::handleLostServer() {
    // The descriptor stays readable for ever.
    readiness->setEnabled(false);
    pending.clear();
    backlog.clear();
    masks.clear();
    forEachClient([](X11Client& client) { client.lost(); });
}

template <typename Notify>
void X11Connection::forEachClient(Notify notify) {
    for (X11Client* const client : std::vector(clients)) {
        if (std::find(clients.begin(), clients.end(), client) != clients.end()) notify(*client);
    }
}

bool X11Property::isSet() const { return reply != nullptr && reply->type != XCB_ATOM_NONE; }

std::optional<std::string_view> X11Property::text() const {
    if (!isSet() || reply->format != 8) return std::nullopt;
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply));
    return std::string_view(static_cast<const char*>(xcb_get_property_value(reply)), length);
}

std::vector<std::uint32_t> X11Property::numbers() const {
    if (!isSet() || reply->format != 32) return {};
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply));
    std::vector<std::uint32_t> numbers(length / sizeof(std::uint32_t));
    if (length > 0) std::memcpy(numbers.data(), xcb_get_property_value(reply), length);
    return numbers;
}

std::uint32_t X11Property::number() const {
    const std::vector<std::uint32_t> all = numbers();
    return all.empty() ? 0 : all.front();
}

xcb_client_message_event_t x11Message(xcb_window_t window, xcb_atom_t type,
                                      std::initializer_list<std::uint32_t> numbers) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::copy(numbers.begin(), numbers.end(), std::begin(message.data.data32));
    return message;
}

xcb_connection_t* qtX11Connection() {
    if (qGuiApp == nullptr) return nullptr;
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

bool isOwnX11Window(xcb_window_t window) {
    xcb_connection_t* const connection = qtX11Connection();
    if (connection == nullptr || window == 0) return false;
    // The number of all that a connection makes begins with the one that the server gave to it.
    const xcb_setup_t* const setup = xcb_get_setup(connection);
    return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

X11Client::X11Client() : connection(X11Connection::shared()) { connection->add(*this); }
X11Client::~X11Client() { connection->remove(*this); }

bool X11Client::isConnected() const { return connection->isConnected(); }
xcb_connection_t* X11Client::handle() const { return connection->handle; }
const X11Atoms& X11Client::atoms() const { return connection->atoms; }
xcb_window_t X11Client::root() const { return connection->root; }

void X11Client::requestProperty(xcb_window_t window, xcb_atom_t name,
                                Event<const X11Property&> answered) {
    constexpr std::uint32_t wordsOf64KiB = 0x4000;
    const auto cookie =
        xcb_get_property(handle(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, wordsOf64KiB);
    request<xcb_get_property_reply_t>(cookie, [answered = std::move(answered)](const auto* reply) {
        answered(X11Property(reply));
    });
}

void X11Client::await() { connection->await(*this); }
void X11Client::select(xcb_window_t window, std::uint32_t events) {
    connection->select(*this, window, events);
}
bool X11Client::canWrite() const { return connection->canWrite({}); }
bool X11Client::waitUntilWritable() const { return connection->canWrite(longestWait); }
void X11Client::flush() { connection->flush(); }

void X11Client::request(unsigned int sequence, Event<const void*> answered) {
    connection->request(*this, sequence, std::move(answered));
}
