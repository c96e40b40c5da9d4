#include "platform/shared/systemSockets.h"

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

#include <ifaddrs.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace systemSockets {

namespace {

constexpr int longestBacklog = 4096;

constexpr int one = 1;

/// How long a connection is silent before its peer is asked whether it is still there, and then how
/// often and how many times; in seconds.
constexpr int silenceBeforeProbe = 300;
constexpr int probeInterval = 30;
constexpr int probes = 4;

/// How often a server that does not answer is asked again, each time after twice as long a wait as
/// before: given up after 15 seconds. Linux 6.5 and later ask four times more, a second apart.
constexpr int connectRetries = 3;

sockaddr_in address(std::uint32_t host, std::uint16_t port) {
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_addr.s_addr = htonl(host);
    result.sin_port = htons(port);
    return result;
}

/// The functions of sockets take every kind of address as this one.
sockaddr* generic(sockaddr_in& address) { return reinterpret_cast<sockaddr*>(&address); }

std::uint32_t hostOf(const sockaddr& address) {
    sockaddr_in internet{};
    std::memcpy(&internet, &address, sizeof internet);
    return ntohl(internet.sin_addr.s_addr);
}

/// Small pieces go out at once, and not when the last one has been acknowledged; a peer that is not
/// there, or has vanished, is found out.
void setUp(int socket) {
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    setsockopt(socket, SOL_SOCKET, SO_KEEPALIVE, &one, sizeof one);
    setsockopt(socket, IPPROTO_TCP, TCP_KEEPIDLE, &silenceBeforeProbe, sizeof silenceBeforeProbe);
    setsockopt(socket, IPPROTO_TCP, TCP_KEEPINTVL, &probeInterval, sizeof probeInterval);
    setsockopt(socket, IPPROTO_TCP, TCP_KEEPCNT, &probes, sizeof probes);
    setsockopt(socket, IPPROTO_TCP, TCP_SYNCNT, &connectRetries, sizeof connectRetries);
}

/// The outcome of the call that has just failed.
Outcome failed() {
    switch (errno) {
        case EAGAIN:
        case EINTR: return {Result::WouldBlock};
        case EMFILE:
        case ENFILE:
        case ENOBUFS:
        case ENOMEM: return {Result::OutOfDescriptors, 0, errno};
        default: return {Result::Error, 0, errno};
    }
}

/// The outcome of a call that returns 0 or a socket, and a negative number when it fails.
Outcome outcomeOf(int result) { return result < 0 ? failed() : Outcome(); }

/// The outcome of a call that returns a count of bytes, and a negative number when it fails.
Outcome transferred(ssize_t count) {
    return count < 0 ? failed() : Outcome{Result::Done, static_cast<std::size_t>(count)};
}

/// The same for a call that returns 0 at the end of the connection.
Outcome received(ssize_t count) {
    return count == 0 ? Outcome{Result::Closed} : transferred(count);
}

}  // namespace

void prepare() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

SocketTrouble troubleOf(int error) {
    const bool isTaken = error == EADDRINUSE;
    return {isTaken ? SocketTrouble::addressInUse : error, std::strerror(error),
            isTaken ? "ss -ltnp" : ""};
}

NewSocket open() {
    const int opened = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const Outcome outcome = outcomeOf(opened);
    setUp(opened);
    return {outcome, opened};
}

Outcome listen(SocketHandle socket, std::uint16_t port) {
    // A port is free for a new start though the system remembers connections of the last one.
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    sockaddr_in everywhere = address(INADDR_ANY, port);
    const Outcome bound = outcomeOf(bind(socket, generic(everywhere), sizeof everywhere));
    return bound.result == Result::Done ? outcomeOf(::listen(socket, longestBacklog)) : bound;
}

std::uint16_t localPort(SocketHandle listener) {
    sockaddr_in local{};
    socklen_t size = sizeof local;
    return getsockname(listener, generic(local), &size) == 0 ? ntohs(local.sin_port)
                                                             : std::uint16_t{0};
}

NewSocket accept(SocketHandle listener) {
    // It has the listener's options.
    sockaddr_in remote{};
    socklen_t size = sizeof remote;
    const int client = accept4(listener, generic(remote), &size, SOCK_NONBLOCK | SOCK_CLOEXEC);
    return {outcomeOf(client), client, ntohl(remote.sin_addr.s_addr)};
}

Outcome connect(SocketHandle socket, std::uint32_t host, std::uint16_t port) {
    sockaddr_in remote = address(host, port);
    const int result = ::connect(socket, generic(remote), sizeof remote);
    return result != 0 && errno == EINPROGRESS ? Outcome{Result::WouldBlock} : outcomeOf(result);
}

Outcome send(SocketHandle socket, std::string_view data) {
    return transferred(::send(socket, data.data(), data.size(), MSG_NOSIGNAL));
}

std::vector<AddressRange> ownNetworks() {
    ifaddrs* interfaces = nullptr;
    if (getifaddrs(&interfaces) != 0) return {};
    std::vector<AddressRange> networks;
    for (const ifaddrs* entry = interfaces; entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr == nullptr || entry->ifa_netmask == nullptr) continue;
        if (entry->ifa_addr->sa_family != AF_INET) continue;
        networks.push_back({hostOf(*entry->ifa_addr), hostOf(*entry->ifa_netmask)});
    }
    freeifaddrs(interfaces);
    return networks;
}

Outcome receive(SocketHandle socket, std::span<char> buffer) {
    return received(recv(socket, buffer.data(), buffer.size(), 0));
}

Outcome peek(SocketHandle socket, std::span<char> buffer) {
    return received(recv(socket, buffer.data(), buffer.size(), MSG_PEEK));
}

void close(SocketHandle socket) { ::close(socket); }

}  // namespace systemSockets
