#include "tests/support/system.h"

#include "platform/linux/Reactor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <stdexcept>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace testSystem {

namespace {

constexpr int one = 1;

[[noreturn]] void fail(const char* what) {
    throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

sockaddr_in loopback(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

const sockaddr* generic(const sockaddr_in& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

using NameOfEnd = int (*)(int, sockaddr*, socklen_t*);

/// 0 for what is no connection.
std::uint16_t portOf(int descriptor, NameOfEnd name) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (name(descriptor, reinterpret_cast<sockaddr*>(&address), &size) != 0) return 0;
    return address.sin_family == AF_INET ? ntohs(address.sin_port) : std::uint16_t{0};
}

int newSocket() {
    const int opened = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (opened < 0) fail("socket");
    setsockopt(opened, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    return opened;
}

}  // namespace

void setVariable(const std::string& name, const std::optional<std::string>& value) {
    if (value) {
        setenv(name.c_str(), value->c_str(), 1);
    } else {
        unsetenv(name.c_str());
    }
}

std::filesystem::path programFile() { return std::filesystem::read_symlink("/proc/self/exe"); }

std::size_t countDescriptors() {
    // The iterator itself has one open while it counts.
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries))) - 1;
}

std::unique_ptr<Readiness> makeReadiness() { return std::make_unique<Reactor>(); }

bool waitForEvents(const Readiness& readiness, std::chrono::milliseconds limit,
                   SocketHandle other) {
    const int reactor = static_cast<const Reactor&>(readiness).descriptor();
    std::array<pollfd, 2> entries{{{reactor, POLLIN, 0}, {other, POLLIN, 0}}};
    return poll(entries.data(), entries.size(), static_cast<int>(limit.count())) > 0;
}

SocketHandle socketTo(std::uint16_t port) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        const int descriptor = std::stoi(entry.path().filename().string());
        if (portOf(descriptor, getpeername) == port) return descriptor;
    }
    return systemSockets::noSocket;
}

bool sendsAtOnce(SocketHandle socket) {
    int noDelay = 0;
    socklen_t size = sizeof noDelay;
    if (getsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &noDelay, &size) != 0) fail("getsockopt");
    return noDelay != 0;
}

std::uint16_t localPortOf(SocketHandle connection) { return portOf(connection, getsockname); }

SocketHandle connectTo(std::uint16_t port) {
    const int connection = newSocket();
    const sockaddr_in address = loopback(port);
    if (connect(connection, generic(address), sizeof address) == 0) return connection;
    close(connection);
    fail("connect");
}

SocketHandle listenOn(std::uint16_t port) {
    const int listener = newSocket();
    const sockaddr_in address = loopback(port);
    if (bind(listener, generic(address), sizeof address) == 0 && listen(listener, SOMAXCONN) == 0) {
        return listener;
    }
    close(listener);
    return systemSockets::noSocket;
}

SocketHandle acceptOne(SocketHandle listener) {
    // It has the listener's options.
    const int connection = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) fail("accept");
    return connection;
}

void closeSocket(SocketHandle socket) { close(socket); }

bool becomesPossible(SocketHandle socket, Direction direction, std::chrono::milliseconds limit) {
    const short events = direction == Direction::Receiving ? POLLIN : POLLOUT;
    pollfd entry{socket, events, 0};
    return poll(&entry, 1, static_cast<int>(limit.count())) == 1;
}

std::size_t sendSome(SocketHandle socket, std::string_view bytes) {
    const ssize_t sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0 && errno != EAGAIN) fail("send");
    return static_cast<std::size_t>(std::max<ssize_t>(sent, 0));
}

std::optional<std::size_t> receiveSome(SocketHandle socket, std::span<char> buffer) {
    const ssize_t count = recv(socket, buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno == EAGAIN) return std::nullopt;
    if (errno != ECONNRESET) fail("recv");
    return 0;
}

void finishSending(SocketHandle socket) { shutdown(socket, SHUT_WR); }

void prepareToBreakOff(SocketHandle socket) {
    const linger atOnce{1, 0};
    setsockopt(socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

}  // namespace testSystem
