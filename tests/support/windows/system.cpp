#include "tests/support/system.h"

#include "platform/windows/Reactor.h"
#include "platform/windows/wideText.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <stdexcept>

#include <ws2tcpip.h>

namespace testSystem {

namespace {

SOCKET toSystem(SocketHandle socket) { return static_cast<SOCKET>(socket); }

[[noreturn]] void fail(const char* what) {
    const auto error = static_cast<unsigned long>(WSAGetLastError());
    throw std::runtime_error(std::string(what) + ": " + wideText::describe(error));
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

using NameOfEnd = int(WSAAPI*)(SOCKET, sockaddr*, int*);

/// 0 for what is no connection.
std::uint16_t portOf(SOCKET socket, NameOfEnd name) {
    sockaddr_in address{};
    int size = sizeof address;
    if (name(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) return 0;
    return address.sin_family == AF_INET ? ntohs(address.sin_port) : std::uint16_t{0};
}

/// One that does not wait: there is no other way to read only what has arrived.
SocketHandle ready(SOCKET socket, const char* what) {
    if (socket == INVALID_SOCKET) fail(what);
    u_long on = 1;
    ioctlsocket(socket, FIONBIO, &on);
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
    return static_cast<SocketHandle>(socket);
}

SOCKET newSocket() {
    // Tests may have sockets before the program's part of them has any.
    static const int begun = [] {
        WSADATA facts{};
        return WSAStartup(MAKEWORD(2, 2), &facts);
    }();
    if (begun != 0) fail("WSAStartup");
    const SOCKET opened = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    if (opened == INVALID_SOCKET) fail("socket");
    return opened;
}

/// Of all numbers that this process may have handles of.
template <typename Visit>
void forEachHandle(Visit visit) {
    constexpr SocketHandle mostHandles = 0x4000;
    for (SocketHandle handle = 4; handle < mostHandles; handle += 4)
        visit(handle);
}

fd_set only(SocketHandle socket) {
    fd_set set{};
    set.fd_count = 1;
    set.fd_array[0] = toSystem(socket);
    return set;
}

}  // namespace

void setVariable(const std::string& name, const std::optional<std::string>& value) {
    // Empty is none.
    _wputenv_s(wideText::fromUtf8(name).c_str(), wideText::fromUtf8(value.value_or("")).c_str());
}

std::filesystem::path programFile() {
    constexpr DWORD longestPath = 32768;
    std::wstring file(longestPath, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), longestPath));
    return file;
}

std::size_t countDescriptors() {
    std::size_t count = 0;
    forEachHandle([&](SocketHandle handle) {
        DWORD flags = 0;
        if (GetHandleInformation(reinterpret_cast<HANDLE>(toSystem(handle)), &flags) != 0) ++count;
    });
    return count;
}

std::unique_ptr<Readiness> makeReadiness() {
    systemSockets::prepare();
    return std::make_unique<Reactor>();
}

bool waitForEvents(const Readiness& readiness, std::chrono::milliseconds limit,
                   SocketHandle other) {
    const HWND window = static_cast<const Reactor&>(readiness).handle();
    const auto hasMessages = [&] {
        MSG message{};
        while (PeekMessageW(&message, window, WM_APP, 0xBFFF, PM_NOREMOVE) != 0) {
            // The system says of each new connection that bytes can be sent.
            const bool isRoom = WSAGETSELECTEVENT(message.lParam) == FD_WRITE;
            if (!isRoom || limit.count() > 0) return true;
            PeekMessageW(&message, window, WM_APP, 0xBFFF, PM_REMOVE);
            DispatchMessageW(&message);
        }
        return false;
    };
    const auto isReady = [&] {
        return hasMessages() || (other != systemSockets::noSocket &&
                                 becomesPossible(other, Direction::Receiving, {}));
    };
    if (isReady()) return true;
    if (limit.count() == 0) return false;
    // The other socket has no messages, so it is looked at now and then.
    const auto step = other == systemSockets::noSocket ? limit : std::chrono::milliseconds(5);
    const auto end = std::chrono::steady_clock::now() + limit;
    while (std::chrono::steady_clock::now() < end) {
        MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(step.count()), QS_ALLINPUT,
                                    MWMO_INPUTAVAILABLE);
        if (isReady()) return true;
        // What is for other windows would end each wait at once.
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, WM_APP - 1, PM_REMOVE) != 0)
            DispatchMessageW(&message);
    }
    return false;
}

SocketHandle socketTo(std::uint16_t port) {
    SocketHandle found = systemSockets::noSocket;
    forEachHandle([&](SocketHandle handle) {
        if (portOf(toSystem(handle), getpeername) == port) found = handle;
    });
    return found;
}

bool sendsAtOnce(SocketHandle socket) {
    DWORD noDelay = 0;
    int size = sizeof noDelay;
    if (getsockopt(toSystem(socket), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<char*>(&noDelay),
                   &size) != 0) {
        fail("getsockopt");
    }
    return noDelay != 0;
}

std::uint16_t localPortOf(SocketHandle connection) {
    return portOf(toSystem(connection), getsockname);
}

SocketHandle connectTo(std::uint16_t port) {
    const SOCKET connection = newSocket();
    const sockaddr_in address = loopback(port);
    if (connect(connection, generic(address), sizeof address) == 0) {
        return ready(connection, "connect");
    }
    closesocket(connection);
    fail("connect");
}

SocketHandle listenOn(std::uint16_t port) {
    const SOCKET listener = newSocket();
    const sockaddr_in address = loopback(port);
    if (bind(listener, generic(address), sizeof address) == 0 && listen(listener, SOMAXCONN) == 0) {
        return static_cast<SocketHandle>(listener);
    }
    closesocket(listener);
    return systemSockets::noSocket;
}

SocketHandle acceptOne(SocketHandle listener) {
    return ready(accept(toSystem(listener), nullptr, nullptr), "accept");
}

void closeSocket(SocketHandle socket) { closesocket(toSystem(socket)); }

bool becomesPossible(SocketHandle socket, Direction direction, std::chrono::milliseconds limit) {
    fd_set set = only(socket);
    const bool isReceiving = direction == Direction::Receiving;
    const auto count = static_cast<long>(limit.count());
    timeval wait{count / 1000, count % 1000 * 1000};
    return select(0, isReceiving ? &set : nullptr, isReceiving ? nullptr : &set, nullptr, &wait) ==
           1;
}

std::size_t sendSome(SocketHandle socket, std::string_view bytes) {
    const int sent = send(toSystem(socket), bytes.data(), static_cast<int>(bytes.size()), 0);
    if (sent < 0 && WSAGetLastError() != WSAEWOULDBLOCK) fail("send");
    return static_cast<std::size_t>(std::max(sent, 0));
}

std::optional<std::size_t> receiveSome(SocketHandle socket, std::span<char> buffer) {
    const int count = recv(toSystem(socket), buffer.data(), static_cast<int>(buffer.size()), 0);
    if (count >= 0) return static_cast<std::size_t>(count);
    const int error = WSAGetLastError();
    if (error == WSAEWOULDBLOCK) return std::nullopt;
    if (error != WSAECONNRESET && error != WSAECONNABORTED) fail("recv");
    return 0;
}

void finishSending(SocketHandle socket) { shutdown(toSystem(socket), SD_SEND); }

void prepareToBreakOff(SocketHandle socket) {
    const linger atOnce{1, 0};
    setsockopt(toSystem(socket), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&atOnce),
               sizeof atOnce);
}

}  // namespace testSystem
