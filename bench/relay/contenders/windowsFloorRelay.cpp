/// The least that a SOCKS 4 relay can do on Windows: the messages of one window, one read and one
/// send a chunk.
#include <winsock2.h>

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

constexpr UINT onSocket = WM_APP;
constexpr std::size_t requestHead = 8;

struct Side {
    enum class State { AwaitsRequest, Connecting, Relaying };
    State state = State::AwaitsRequest;
    SOCKET peer = INVALID_SOCKET;
    /// Of the request, for its answer.
    std::array<char, 6> destination{};
    /// What the system has not taken yet; reading from the peer pauses meanwhile.
    std::string waiting = {};
};

HWND window = nullptr;
SOCKET listener = INVALID_SOCKET;
std::unordered_map<SOCKET, Side> sides;
std::vector<char> buffer(65536);

Side& watch(SOCKET socket) {
    const BOOL on = TRUE;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
    WSAAsyncSelect(socket, window, onSocket, FD_READ | FD_WRITE | FD_CONNECT | FD_CLOSE);
    return sides[socket] = Side();
}

void closePair(SOCKET socket) {
    const auto found = sides.find(socket);
    if (found == sides.end()) return;
    for (const SOCKET each : {socket, found->second.peer}) {
        closesocket(each);
        sides.erase(each);
    }
}

void takeRequest(SOCKET client) {
    const int count = recv(client, buffer.data(), static_cast<int>(buffer.size()), 0);
    // A message may be that of a socket before, which had the same number.
    if (count < 0 && WSAGetLastError() == WSAEWOULDBLOCK) return;
    const std::string_view request(buffer.data(), static_cast<std::size_t>(std::max(count, 0)));
    // The load generator sends its request in one piece.
    if (request.size() <= requestHead || !request.starts_with("\4\1")) return closePair(client);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    std::memcpy(&address.sin_port, request.data() + 2, sizeof address.sin_port);
    std::memcpy(&address.sin_addr, request.data() + 4, sizeof address.sin_addr);
    const SOCKET server = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    Side& other = watch(server);
    other.state = Side::State::Connecting;
    other.peer = client;
    Side& own = sides[client];
    own.state = Side::State::Relaying;
    own.peer = server;
    request.copy(own.destination.data(), own.destination.size(), 2);
    connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

void finishConnecting(SOCKET server) {
    Side& other = sides[server];
    other.state = Side::State::Relaying;
    const auto& destination = sides[other.peer].destination;
    const std::string reply =
        std::string("\0\x5A", 2).append(destination.data(), destination.size());
    send(other.peer, reply.data(), static_cast<int>(reply.size()), 0);
}

/// Sends until the system refuses, since it reports new room only after that; what it took.
std::size_t sendTo(SOCKET to, std::string_view bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const std::string_view rest = bytes.substr(sent);
        const int count = send(to, rest.data(), static_cast<int>(rest.size()), 0);
        if (count <= 0) break;
        sent += static_cast<std::size_t>(count);
    }
    return sent;
}

void relay(SOCKET from) {
    Side& own = sides[from];
    Side& other = sides[own.peer];
    if (own.state != Side::State::Relaying || !other.waiting.empty()) return;
    const int count = recv(from, buffer.data(), static_cast<int>(buffer.size()), 0);
    if (count < 0 && WSAGetLastError() == WSAEWOULDBLOCK) return;
    if (count <= 0) return closePair(from);
    const std::string_view chunk(buffer.data(), static_cast<std::size_t>(count));
    other.waiting = chunk.substr(sendTo(own.peer, chunk));
}

void sendWaiting(SOCKET to) {
    Side& other = sides[to];
    if (other.waiting.empty()) return;
    other.waiting.erase(0, sendTo(to, other.waiting));
    // The message that there is something to read does not come again.
    if (other.waiting.empty()) PostMessageW(window, onSocket, other.peer, FD_READ);
}

LRESULT CALLBACK procedure(HWND receiver, UINT message, WPARAM socket, LPARAM event) {
    if (message != onSocket) return DefWindowProcW(receiver, message, socket, event);
    if (socket == listener) {
        const SOCKET client = accept(listener, nullptr, nullptr);
        if (client != INVALID_SOCKET) watch(client);
        return 0;
    }
    const auto found = sides.find(socket);
    if (found == sides.end()) return 0;
    switch (WSAGETSELECTEVENT(event)) {
        case FD_CONNECT:
            if (WSAGETSELECTERROR(event) == 0) {
                finishConnecting(socket);
            } else {
                closePair(socket);
            }
            break;
        case FD_READ:
            if (found->second.state == Side::State::AwaitsRequest) {
                takeRequest(socket);
            } else {
                relay(socket);
            }
            break;
        case FD_WRITE: sendWaiting(socket); break;
        case FD_CLOSE: closePair(socket); break;
        default: break;
    }
    return 0;
}

int fail(const char* what) {
    std::cerr << "floor_relay: " << what << '\n';
    return EXIT_FAILURE;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) return fail("give the port to listen on as the only argument");
    WSADATA facts{};
    WSAStartup(MAKEWORD(2, 2), &facts);
    WNDCLASSW kind{};
    kind.lpfnWndProc = procedure;
    kind.lpszClassName = L"FloorRelay";
    RegisterClassW(&kind);
    window = CreateWindowExW(0, L"FloorRelay", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                             nullptr);
    listener = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<u_short>(std::atoi(arguments[1])));
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, SOMAXCONN) != 0) {
        return fail("cannot listen there");
    }
    WSAAsyncSelect(listener, window, onSocket, FD_ACCEPT);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
}
