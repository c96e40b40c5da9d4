#pragma once

#include "platform/linux/x11/X11Atoms.h"

#include <QSocketNotifier>

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

class X11Client;

/// The program's own connection to the X server, beside Qt's. Those who use it do so through an
/// `X11Client`. What is asked is answered from the event loop, so nothing waits for a server that
/// is held up. Errors are passed over: the windows of others vanish at any moment.
///
/// Without a display, and from the moment that the server is gone, it stays quiet.
class X11Connection : public std::enable_shared_from_this<X11Connection> {
public:
    /// The one that is there already, for as long as somebody holds it; else a new one.
    [[nodiscard]] static std::shared_ptr<X11Connection> shared();

    X11Connection();
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    [[nodiscard]] bool stands() const { return readiness != nullptr && readiness->isEnabled(); }
    [[nodiscard]] xcb_connection_t* handle() const { return connection; }
    [[nodiscard]] const X11Atoms& atoms() const { return numbers; }
    /// The root window of the screen that DISPLAY names; 0 without one.
    [[nodiscard]] xcb_window_t root() const { return rootWindow; }

private:
    friend class X11Client;

    using Answered = std::function<void(const void* reply)>;
    struct Question {
        X11Client* client;
        unsigned int sequence;
        Answered answered;
    };
    struct Freed {
        void operator()(void* memory) const;
    };
    using Event = std::unique_ptr<xcb_generic_event_t, Freed>;

    void add(X11Client& client);
    void remove(X11Client& client);
    void ask(Question question);
    /// Serves the answers to one client's questions, as they come, and nothing else.
    void await(const X11Client& client, std::chrono::milliseconds limit);
    void select(X11Client& client, xcb_window_t window, std::uint32_t events);
    [[nodiscard]] bool canWrite(std::chrono::milliseconds limit) const;
    void flush();

    /// Serves all that has arrived.
    void dispatch();
    void dispatchSoon();
    [[nodiscard]] bool answerNext();
    [[nodiscard]] bool answer(const std::deque<Question>::iterator& question);
    [[nodiscard]] Event nextEvent();
    void tell(const xcb_generic_event_t& event);
    void loseServer();

    xcb_connection_t* connection;
    xcb_window_t rootWindow = 0;
    X11Atoms numbers;
    std::unique_ptr<QSocketNotifier> readiness;
    std::vector<X11Client*> clients;
    /// In the order in which the server answers.
    std::deque<Question> questions;
    /// Read while something else was waited for.
    std::deque<Event> backlog;
    /// A window has one mask for the connection: what any of the clients wants.
    std::map<xcb_window_t, std::map<const X11Client*, std::uint32_t>> masks;
    bool isDispatchDue = false;
};
