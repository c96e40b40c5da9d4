#include "platform/linux/x11/X11Connection.h"

#include "platform/linux/x11/X11Client.h"

#include <QMetaObject>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include <poll.h>
#include <xcb/xcbext.h>

namespace {

/// Served in one go, so that a storm of events does not hold up what else there is to do.
constexpr int eventsAtOnce = 500;

xcb_window_t rootOf(xcb_connection_t* connection, int screen) {
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; roots.rem > 1 && screen > 0; --screen)
        xcb_screen_next(&roots);
    return roots.data->root;
}

}  // namespace

void X11Connection::Freed::operator()(void* memory) const { std::free(memory); }

std::shared_ptr<X11Connection> X11Connection::shared() {
    static std::weak_ptr<X11Connection> known;
    std::shared_ptr<X11Connection> connection = known.lock();
    if (connection == nullptr || !connection->stands()) {
        connection = std::make_shared<X11Connection>();
        known = connection;
    }
    return connection;
}

X11Connection::X11Connection() {
    int screen = 0;
    connection = xcb_connect(nullptr, &screen);
    if (xcb_connection_has_error(connection) != 0) return;
    rootWindow = rootOf(connection, screen);
    numbers = X11Atoms::of(connection, screen);
    readiness = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection),
                                                  QSocketNotifier::Read);
    QObject::connect(readiness.get(), &QSocketNotifier::activated, readiness.get(),
                     [this] { dispatch(); });
}

X11Connection::~X11Connection() {
    readiness.reset();
    xcb_disconnect(connection);
}

void X11Connection::add(X11Client& client) { clients.push_back(&client); }

void X11Connection::remove(X11Client& client) {
    clients.erase(std::remove(clients.begin(), clients.end(), &client), clients.end());
    const auto gone =
        std::stable_partition(questions.begin(), questions.end(),
                              [&](const Question& question) { return question.client != &client; });
    std::for_each(gone, questions.end(), [this](const Question& question) {
        xcb_discard_reply(connection, question.sequence);
    });
    questions.erase(gone, questions.end());
    std::vector<xcb_window_t> watched;
    for (const auto& [window, wishes] : masks) {
        if (wishes.contains(&client)) watched.push_back(window);
    }
    for (const xcb_window_t window : watched)
        select(client, window, 0);
    flush();
}

void X11Connection::ask(Question question) {
    if (stands()) questions.push_back(std::move(question));
}

void X11Connection::await(const X11Client& client, std::chrono::milliseconds limit) {
    const auto asks = [&](const Question& question) { return question.client == &client; };
    const auto deadline = std::chrono::steady_clock::now() + limit;
    flush();
    while (stands()) {
        const auto next = std::find_if(questions.begin(), questions.end(), asks);
        if (next == questions.end()) break;
        xcb_flush(connection);
        if (auto* const event = xcb_poll_for_event(connection)) backlog.emplace_back(event);
        if (answer(next)) continue;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) break;
        pollfd entry{xcb_get_file_descriptor(connection), POLLIN, 0};
        poll(&entry, 1, static_cast<int>(left.count()));
        if (xcb_connection_has_error(connection) != 0) break;
    }
    // What has been read by now does not make the descriptor readable any more.
    dispatchSoon();
}

void X11Connection::select(X11Client& client, xcb_window_t window, std::uint32_t events) {
    if (!stands()) return;
    auto& wishes = masks[window];
    if (events == 0) {
        wishes.erase(&client);
    } else {
        wishes[&client] = events;
    }
    std::uint32_t mask = 0;
    for (const auto& [who, wish] : wishes)
        mask |= wish;
    if (mask == 0) masks.erase(window);
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &mask);
}

void X11Connection::flush() {
    if (!stands()) return;
    xcb_flush(connection);
    // While it writes it may read too.
    while (xcb_generic_event_t* const event = xcb_poll_for_queued_event(connection)) {
        backlog.emplace_back(event);
    }
    if (!backlog.empty() || !questions.empty()) dispatchSoon();
}

bool X11Connection::canWrite(std::chrono::milliseconds limit) const {
    if (!stands()) return false;
    pollfd entry{xcb_get_file_descriptor(connection), POLLOUT, 0};
    return poll(&entry, 1, static_cast<int>(limit.count())) == 1 && (entry.revents & POLLOUT) != 0;
}

void X11Connection::dispatch() {
    if (!stands()) return;
    // Those who are told may drop what they have.
    const auto self = shared_from_this();
    bool isFlushed = false;
    for (int count = 0; count < eventsAtOnce; ++count) {
        const Event event = nextEvent();
        if (event != nullptr) tell(*event);
        if (answerNext() || event != nullptr) {
            isFlushed = false;
            continue;
        }
        if (xcb_connection_has_error(connection) != 0) return loseServer();
        if (isFlushed) return;
        // While it writes it may read too, so there may be more to serve.
        xcb_flush(connection);
        isFlushed = true;
    }
    dispatchSoon();
}

void X11Connection::dispatchSoon() {
    if (!stands() || std::exchange(isDispatchDue, true)) return;
    QMetaObject::invokeMethod(
        readiness.get(),
        [this] {
            isDispatchDue = false;
            dispatch();
        },
        Qt::QueuedConnection);
}

bool X11Connection::answerNext() { return !questions.empty() && answer(questions.begin()); }

bool X11Connection::answer(const std::deque<Question>::iterator& question) {
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    if (xcb_poll_for_reply(connection, question->sequence, &reply, &error) == 0) return false;
    const std::unique_ptr<void, Freed> owned(reply);
    std::free(error);
    const Answered answered = std::move(question->answered);
    questions.erase(question);
    answered(reply);
    return true;
}

X11Connection::Event X11Connection::nextEvent() {
    if (backlog.empty()) return Event(xcb_poll_for_event(connection));
    Event event = std::move(backlog.front());
    backlog.pop_front();
    return event;
}

void X11Connection::tell(const xcb_generic_event_t& event) {
    for (X11Client* const client : std::vector(clients)) {
        if (std::find(clients.begin(), clients.end(), client) != clients.end()) {
            client->event(event);
        }
    }
}

void X11Connection::loseServer() {
    // Its descriptor stays readable for ever.
    readiness->setEnabled(false);
    questions.clear();
    backlog.clear();
    masks.clear();
    for (X11Client* const client : std::vector(clients)) {
        if (std::find(clients.begin(), clients.end(), client) != clients.end()) client->lost();
    }
}
