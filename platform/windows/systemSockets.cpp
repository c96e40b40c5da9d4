#include "platform/shared/systemSockets.h"

#include "base/codePage.h"
#include "platform/windows/wideText.h"
#include "platform/windows/win32.h"

#include <algorithm>
#include <array>
#include <limits>

#include <mstcpip.h>
#include <ws2tcpip.h>

namespace systemSockets {

namespace {

/// How long a connection is silent before its peer is asked whether it is still there, and then how
/// often, which it is ten times; in milliseconds.
constexpr ULONG silenceBeforeProbe = 300'000;
constexpr ULONG probeInterval = 12'000;

SOCKET toSystem(SocketHandle socket) { return static_cast<SOCKET>(socket); }

SocketHandle fromSystem(SOCKET socket) {
    return socket == INVALID_SOCKET ? noSocket : static_cast<SocketHandle>(socket);
}

sockaddr_in address(std::uint32_t host, std::uint16_t port) {
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_addr.s_addr = htonl(host);
    result.sin_port = htons(port);
    return result;
}

/// The functions of sockets take every kind of address as this one.
sockaddr* generic(sockaddr_in& address) { return reinterpret_cast<sockaddr*>(&address); }

/// No call waits, small pieces go out at once and not when the last one has been acknowledged, a
/// peer that has vanished is found out, and programs that are started do not get it.
void setUp(SOCKET socket) {
    u_long on = 1;
    ioctlsocket(socket, FIONBIO, &on);
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
    tcp_keepalive times{};
    times.onoff = 1;
    times.keepalivetime = silenceBeforeProbe;
    times.keepaliveinterval = probeInterval;
    DWORD count = 0;
    WSAIoctl(socket, SIO_KEEPALIVE_VALS, &times, sizeof times, nullptr, 0, &count, nullptr,
             nullptr);
    SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
}

/// The outcome of the call that has just failed.
Outcome failed() {
    const int error = WSAGetLastError();
    switch (error) {
        case WSAEWOULDBLOCK:
        case WSAEINTR: return {Result::WouldBlock};
        case WSAEMFILE:
        case WSAENOBUFS: return {Result::OutOfDescriptors, 0, error};
        default: return {Result::Error, 0, error};
    }
}

/// The outcome of a call that returns 0 when it succeeds.
Outcome outcomeOf(int result) { return result != 0 ? failed() : Outcome(); }

NewSocket madeFrom(SOCKET socket) {
    if (socket == INVALID_SOCKET) return {failed()};
    setUp(socket);
    return {{}, fromSystem(socket)};
}

int sizeOf(std::size_t size) {
    return static_cast<int>(
        std::min(size, static_cast<std::size_t>(std::numeric_limits<int>::max())));
}

Outcome receiveBy(int flags, SocketHandle socket, std::span<char> buffer) {
    const int count = recv(toSystem(socket), buffer.data(), sizeOf(buffer.size()), flags);
    if (count < 0 && WSAGetLastError() == WSAEMSGSIZE) return {Result::Done, buffer.size()};
    if (count < 0) return failed();
    if (count == 0) return {Result::Closed};
    return {Result::Done, static_cast<std::size_t>(count)};
}

}  // namespace

void prepare() {
    WSADATA facts{};
    WSAStartup(MAKEWORD(2, 2), &facts);
}

SocketTrouble troubleOf(int error) {
    static_assert(WSAEADDRINUSE == SocketTrouble::addressInUse);
    return {error, codePage::fromUtf8(wideText::describe(static_cast<unsigned long>(error))),
            error == WSAEADDRINUSE ? "netstat -ano" : ""};
}

NewSocket open() { return madeFrom(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)); }

Outcome listen(SocketHandle socket, std::uint16_t port) {
    // Neither shared nor exclusive: a port that is taken is reported as taken, and one is free for
    // a new start though the system remembers connections of the last one.
    sockaddr_in everywhere = address(INADDR_ANY, port);
    const Outcome bound = outcomeOf(bind(toSystem(socket), generic(everywhere), sizeof everywhere));
    return bound.result == Result::Done ? outcomeOf(::listen(toSystem(socket), SOMAXCONN)) : bound;
}

std::uint16_t localPort(SocketHandle listener) {
    sockaddr_in local{};
    int size = sizeof local;
    return getsockname(toSystem(listener), generic(local), &size) == 0 ? ntohs(local.sin_port)
                                                                       : std::uint16_t{0};
}

NewSocket accept(SocketHandle listener) {
    sockaddr_in remote{};
    int size = sizeof remote;
    const SOCKET client = ::accept(toSystem(listener), generic(remote), &size);
    // It has the listener's window and message.
    if (client != INVALID_SOCKET) WSAEventSelect(client, nullptr, 0);
    NewSocket made = madeFrom(client);
    made.host = ntohl(remote.sin_addr.s_addr);
    return made;
}

std::vector<AddressRange> ownNetworks() {
    constexpr std::size_t mostInterfaces = 64;
    std::array<INTERFACE_INFO, mostInterfaces> interfaces{};
    const SOCKET any = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    DWORD size = 0;
    const int result = WSAIoctl(any, SIO_GET_INTERFACE_LIST, nullptr, 0, interfaces.data(),
                                sizeof interfaces, &size, nullptr, nullptr);
    closesocket(any);
    if (result != 0) return {};
    std::vector<AddressRange> networks;
    const auto count = std::min(size / sizeof(INTERFACE_INFO), mostInterfaces);
    for (const INTERFACE_INFO& each : std::span(interfaces).first(count)) {
        networks.push_back({ntohl(each.iiAddress.AddressIn.sin_addr.s_addr),
                            ntohl(each.iiNetmask.AddressIn.sin_addr.s_addr)});
    }
    return networks;
}

Outcome connect(SocketHandle socket, std::uint32_t host, std::uint16_t port) {
    sockaddr_in remote = address(host, port);
    return outcomeOf(::connect(toSystem(socket), generic(remote), sizeof remote));
}

Outcome send(SocketHandle socket, std::string_view data) {
    // Sending goes on until the system refuses: it reports new room only after a refusal.
    std::size_t sent = 0;
    while (sent < data.size()) {
        const std::string_view rest = data.substr(sent);
        const int count = ::send(toSystem(socket), rest.data(), sizeOf(rest.size()), 0);
        if (count < 0) {
            const Outcome refused = failed();
            return refused.result == Result::WouldBlock && sent > 0 ? Outcome{Result::Done, sent}
                                                                    : refused;
        }
        sent += static_cast<std::size_t>(count);
    }
    return {Result::Done, sent};
}

Outcome receive(SocketHandle socket, std::span<char> buffer) {
    return receiveBy(0, socket, buffer);
}

Outcome peek(SocketHandle socket, std::span<char> buffer) {
    return receiveBy(MSG_PEEK, socket, buffer);
}

void close(SocketHandle socket) { closesocket(toSystem(socket)); }

}  // namespace systemSockets
