#include "platform/linux/EpollSocket.h"

#include "base/Failure.h"
#include "base/codePage.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int longestBacklog = 4096;

/// How many clients are taken before others get their turn.
constexpr int requestsAtOnce = 64;

constexpr int one = 1;

sockaddr_in address(in_addr host, std::uint16_t port) {
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_addr = host;
    result.sin_port = htons(port);
    return result;
}

/// The functions of sockets take every kind of address as this one.
sockaddr* generic(sockaddr_in& address) { return reinterpret_cast<sockaddr*>(&address); }

in_addr parsedHost(std::string_view dotted) {
    in_addr host{};
    if (inet_pton(AF_INET, std::string(dotted).c_str(), &host) != 1) {
        throw Failure("not an address");
    }
    return host;
}

/// Small commands go out at once, and not when the last one has been acknowledged.
void sendAtOnce(int descriptor) {
    setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
}

SocketTrouble troubleOf(int error) {
    // The system describes it in the user's language, as UTF-8.
    return {error == EADDRINUSE ? SocketTrouble::addressInUse : error,
            codePage::fromUtf8(std::strerror(error))};
}

bool isOutOfDescriptors(int error) {
    return error == EMFILE || error == ENFILE || error == ENOBUFS || error == ENOMEM;
}

}  // namespace

EpollSocket::~EpollSocket() {
    network.forget(*this);
    EpollSocket::Close();
}

std::optional<SocketTrouble> EpollSocket::Listen(std::uint16_t localPort) {
    descriptor = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (descriptor < 0) return troubleOf(errno);
    setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    sockaddr_in everywhere = address({INADDR_ANY}, localPort);
    if (bind(descriptor, generic(everywhere), sizeof everywhere) != 0 ||
        listen(descriptor, longestBacklog) != 0) {
        const SocketTrouble trouble = troubleOf(errno);
        network.closeDescriptor(std::exchange(descriptor, -1));
        return trouble;
    }
    watch(SocketState::Listening);
    return std::nullopt;
}

std::uint16_t EpollSocket::LocalPort() const {
    sockaddr_in local{};
    socklen_t size = sizeof local;
    if (state != SocketState::Listening || getsockname(descriptor, generic(local), &size) != 0) {
        return 0;
    }
    return ntohs(local.sin_port);
}

void EpollSocket::Accept(RequestId requestID) {
    failUnlessClosed();
    if (network.requests.erase(requestID) == 0) throw Failure("no such request");
    descriptor = requestID;
    sendAtOnce(descriptor);
    watch(SocketState::Connected);
}

void EpollSocket::Connect(std::string_view remoteHost, std::int32_t remotePort) {
    failUnlessClosed();
    sockaddr_in remote = address(parsedHost(remoteHost), checked<std::uint16_t>(remotePort));
    descriptor = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (descriptor < 0) throw Failure(std::strerror(errno));
    sendAtOnce(descriptor);
    if (connect(descriptor, generic(remote), sizeof remote) != 0 && errno != EINPROGRESS) {
        const std::string reason = std::strerror(errno);
        network.closeDescriptor(std::exchange(descriptor, -1));
        state = SocketState::Error;
        throw Failure(reason);
    }
    watch(SocketState::Connecting);
}

void EpollSocket::Close() { release(SocketState::Closed); }

void EpollSocket::SendData(std::string_view data) {
    if (state != SocketState::Connected) throw Failure("not connected");
    if (data.empty()) return;
    std::size_t sent = 0;
    if (queue.empty()) {
        const ssize_t taken = send(descriptor, data.data(), data.size(), MSG_NOSIGNAL);
        if (taken < 0 && errno != EAGAIN && errno != EINTR) {
            const std::string reason = std::strerror(errno);
            lose(SocketState::Error);
            throw Failure(reason);
        }
        sent = static_cast<std::size_t>(std::max<ssize_t>(taken, 0));
    }
    if (sent < data.size()) {
        const bool first = queue.empty();
        queue.append(data.substr(sent));
        if (first) network.reactor.change(descriptor, wantedEvents(), *this);
    }
    SendProgress(sent, queue.size());
}

void EpollSocket::SetReading(bool wanted) {
    if (reading == wanted) return;
    reading = wanted;
    if (state == SocketState::Connected) {
        network.reactor.change(descriptor, wantedEvents(), *this);
    }
}

void EpollSocket::resumeListening() {
    if (state == SocketState::Listening) network.reactor.change(descriptor, EPOLLIN, *this);
}

void EpollSocket::ready(std::uint32_t events) {
    switch (state) {
        case SocketState::Listening: takeRequests(); break;
        case SocketState::Connecting: finishConnect(); break;
        default: {
            if ((events & EPOLLOUT) != 0 && !queue.empty()) drain();
            if (state != SocketState::Connected) return;
            const bool broken = (events & (EPOLLHUP | EPOLLERR)) != 0;
            if (reading && ((events & EPOLLIN) != 0 || broken)) {
                receive();
            } else if (broken) {
                lose(SocketState::Error);
            }
        }
    }
}

void EpollSocket::takeRequests() {
    for (int count = 0; count < requestsAtOnce; ++count) {
        const int client = accept4(descriptor, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (client < 0) {
            if (isOutOfDescriptors(errno)) {
                network.reactor.change(descriptor, 0, *this);
                network.waitForDescriptor(*this);
                return;
            }
            if (errno == EAGAIN) return;
            continue;
        }
        network.requests.insert(client);
        ConnectionRequest(client);
        if (network.requests.erase(client) > 0) network.closeDescriptor(client);
        if (state != SocketState::Listening) return;
    }
}

void EpollSocket::finishConnect() {
    int error = 0;
    socklen_t size = sizeof error;
    getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &size);
    if (error != 0) {
        lose(SocketState::Error);
        return;
    }
    state = SocketState::Connected;
    network.reactor.change(descriptor, wantedEvents(), *this);
    Connected();
}

void EpollSocket::receive() {
    auto& buffer = network.readBuffer;
    const ssize_t count = recv(descriptor, buffer.data(), buffer.size(), 0);
    if (count > 0) {
        arrived = {buffer.data(), static_cast<std::size_t>(count)};
        DataArrival(arrived.size());
        arrived = {};
    } else if (count == 0) {
        lose(SocketState::Closing);
    } else if (errno != EAGAIN && errno != EINTR) {
        lose(SocketState::Error);
    }
}

void EpollSocket::drain() {
    const ssize_t taken = send(descriptor, queue.waiting().data(), queue.size(), MSG_NOSIGNAL);
    if (taken < 0) {
        if (errno != EAGAIN && errno != EINTR) lose(SocketState::Error);
        return;
    }
    queue.remove(static_cast<std::size_t>(taken));
    if (queue.empty()) network.reactor.change(descriptor, wantedEvents(), *this);
    SendProgress(static_cast<std::size_t>(taken), queue.size());
}

void EpollSocket::release(SocketState afterwards) {
    state = afterwards;
    reading = true;
    queue.clear();
    if (descriptor < 0) return;
    network.reactor.remove(descriptor, *this);
    network.closeDescriptor(std::exchange(descriptor, -1));
}

void EpollSocket::lose(SocketState afterwards) {
    release(afterwards);
    ConnectionLost();
}

void EpollSocket::failUnlessClosed() const {
    if (state != SocketState::Closed) throw Failure("the socket is in use");
}

void EpollSocket::watch(SocketState connection) {
    state = connection;
    network.reactor.add(descriptor, wantedEvents(), *this);
}

std::uint32_t EpollSocket::wantedEvents() const {
    if (state == SocketState::Connecting) return EPOLLOUT;
    std::uint32_t events = 0;
    if (reading) events |= EPOLLIN;
    if (!queue.empty()) events |= EPOLLOUT;
    return events;
}
