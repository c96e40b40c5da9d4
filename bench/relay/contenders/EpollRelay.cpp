#include "bench/relay/contenders/EpollRelay.h"

#include "bench/relay/system/BenchError.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::size_t bufferSize = 65536;
constexpr std::size_t requestHead = 8;

void switchDelayOff(int socket) {
    const int on = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

}  // namespace

EpollRelay::EpollRelay(std::uint16_t port)
    : epoll(epoll_create1(EPOLL_CLOEXEC)), buffer(bufferSize) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (epoll < 0 || listener < 0) throwSystemError("cannot make a socket");
    const int on = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, SOMAXCONN) != 0) {
        throwSystemError("cannot listen on port " + std::to_string(port));
    }
    add(listener, State::Listening, EPOLLIN);
}

EpollRelay::~EpollRelay() {
    for (std::size_t number = 0; number < sides.size(); ++number) {
        if (sides[number].state != State::Closed) ::close(static_cast<int>(number));
    }
    ::close(epoll);
}

bool EpollRelay::serve(int milliseconds) {
    std::array<epoll_event, 64> events;
    const int count =
        epoll_wait(epoll, events.data(), static_cast<int>(events.size()), milliseconds);
    for (int index = 0; index < count; ++index) {
        const epoll_event& event = events[static_cast<std::size_t>(index)];
        const int socket = event.data.fd;
        switch (side(socket).state) {
            case State::Closed: break;
            case State::Listening: acceptOne(socket); break;
            case State::AwaitsRequest: takeRequest(socket); break;
            case State::Connecting: finishConnecting(socket); break;
            case State::Relaying:
                if ((event.events & EPOLLERR) != 0) {
                    closePair(socket);
                    break;
                }
                if ((event.events & EPOLLOUT) != 0) sendWaiting(socket);
                if ((event.events & (EPOLLIN | EPOLLHUP)) != 0) relay(socket);
                break;
        }
    }
    for (const int socket : doomed)
        ::close(socket);
    doomed.clear();
    return count > 0;
}

void EpollRelay::acceptOne(int listener) {
    const int client = accept4(listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (client < 0) return;
    switchDelayOff(client);
    add(client, State::AwaitsRequest, EPOLLIN);
}

void EpollRelay::takeRequest(int client) {
    const auto count = recv(client, buffer.data(), buffer.size(), 0);
    if (count < 0 && errno == EAGAIN) return;
    // The load generator sends its request in one piece, so a part of one is not waited for.
    const std::string_view request(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    if (request.size() <= requestHead || !request.starts_with("\4\1") || request.back() != '\0') {
        return closePair(client);
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    std::memcpy(&address.sin_port, request.data() + 2, sizeof address.sin_port);
    std::memcpy(&address.sin_addr, request.data() + 4, sizeof address.sin_addr);

    const int server = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (server < 0) return closePair(client);
    switchDelayOff(server);
    add(server, State::Connecting, EPOLLOUT);
    side(server).peer = client;
    side(client).peer = server;
    side(client).state = State::Relaying;
    request.copy(side(client).destination.data(), side(client).destination.size(), 2);
    if (connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 &&
        errno != EINPROGRESS) {
        closePair(client);
    }
}

void EpollRelay::finishConnecting(int server) {
    int failure = 0;
    socklen_t size = sizeof failure;
    getsockopt(server, SOL_SOCKET, SO_ERROR, &failure, &size);
    if (failure != 0) return closePair(server);

    const int client = side(server).peer;
    side(server).state = State::Relaying;
    std::array<char, requestHead> reply{0, 90};
    std::memcpy(reply.data() + 2, side(client).destination.data(), side(client).destination.size());
    if (send(client, reply.data(), reply.size(), MSG_NOSIGNAL) !=
        static_cast<ssize_t>(reply.size())) {
        return closePair(server);
    }
    updateInterest(server);
}

void EpollRelay::relay(int from) {
    // An event that is older than a change of interest may still come.
    const int to = side(from).peer;
    if (side(from).state != State::Relaying || side(to).waiting) return;
    // What arrives before the far side is connected is refused by `send` and waits like the rest.
    const auto count = recv(from, buffer.data(), buffer.size(), 0);
    if (count < 0 && errno == EAGAIN) return;
    if (count <= 0) return closePair(from);

    const auto sent = send(to, buffer.data(), static_cast<std::size_t>(count), MSG_NOSIGNAL);
    if (sent == count) return;
    if (sent < 0 && errno != EAGAIN) return closePair(from);
    side(to).waiting = std::make_unique<std::string>(buffer.data() + std::max<ssize_t>(sent, 0),
                                                     buffer.data() + count);
    updateInterest(from);
    updateInterest(to);
}

void EpollRelay::sendWaiting(int to) {
    if (!side(to).waiting) return;
    std::string& waiting = *side(to).waiting;
    const auto sent = send(to, waiting.data(), waiting.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno == EAGAIN) return;
    if (sent < 0) return closePair(to);
    waiting.erase(0, static_cast<std::size_t>(sent));
    if (!waiting.empty()) return;
    side(to).waiting.reset();
    updateInterest(to);
    updateInterest(side(to).peer);
}

void EpollRelay::updateInterest(int socket) {
    const Side& own = side(socket);
    const Side& peer = side(own.peer);
    epoll_event event{};
    event.data.fd = socket;
    event.events = (peer.waiting ? 0U : EPOLLIN) | (own.waiting ? EPOLLOUT : 0U);
    epoll_ctl(epoll, EPOLL_CTL_MOD, socket, &event);
}

void EpollRelay::closePair(int socket) {
    for (const int number : {socket, side(socket).peer}) {
        if (number < 0 || side(number).state == State::Closed) continue;
        side(number) = Side{};
        epoll_ctl(epoll, EPOLL_CTL_DEL, number, nullptr);
        doomed.push_back(number);
    }
}

void EpollRelay::add(int socket, State state, std::uint32_t events) {
    const auto number = static_cast<std::size_t>(socket);
    if (sides.size() <= number) sides.resize(number + 1);
    sides[number].state = state;
    epoll_event event{};
    event.events = events;
    event.data.fd = socket;
    epoll_ctl(epoll, EPOLL_CTL_ADD, socket, &event);
}

std::uint16_t portArgument(int count, char** arguments) {
    const std::string_view text = count == 2 ? arguments[1] : "";
    std::uint16_t port = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), port);
    if (text.empty() || result.ec != std::errc{} || result.ptr != text.data() + text.size()) {
        throw BenchError("give the port to listen on as the only argument");
    }
    return port;
}
