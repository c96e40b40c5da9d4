#include "bench/relay/system/socketTools.h"

#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/interruption.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>

namespace {

sockaddr_in addressOf(in_addr_t host, Port port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(host);
    address.sin_port = htons(port);
    return address;
}

template <typename Value>
void setOption(int socket, int level, int name, const Value& value) {
    if (setsockopt(socket, level, name, &value, sizeof value) != 0) {
        throwSystemError("cannot set a socket option");
    }
}

/// Whether a call that failed is to be made again.
bool wasOnlyInterrupted() {
    if (errno != EINTR) return false;
    throwIfInterrupted();
    return true;
}

}  // namespace

bool isPortFree(Port port) {
    const Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (socket.get() < 0) throwSystemError("cannot make a socket");
    setOption(socket.get(), SOL_SOCKET, SO_REUSEADDR, 1);
    const sockaddr_in address = addressOf(INADDR_ANY, port);
    if (bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        listen(socket.get(), 1) == 0) {
        return true;
    }
    if (errno != EADDRINUSE) throwSystemError("cannot listen on port " + std::to_string(port));
    return false;
}

Descriptor makeClientSocket() {
    Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (socket.get() < 0) throwSystemError("cannot make a socket");
    const timeval patience{10, 0};
    setOption(socket.get(), SOL_SOCKET, SO_RCVTIMEO, patience);
    setOption(socket.get(), SOL_SOCKET, SO_SNDTIMEO, patience);
    setNoDelayAndReset(socket.get());
    return socket;
}

void setNoDelayAndReset(int socket) {
    setOption(socket, IPPROTO_TCP, TCP_NODELAY, 1);
    setOption(socket, SOL_SOCKET, SO_LINGER, linger{1, 0});
}

bool tryConnect(int socket, Port port) {
    const sockaddr_in address = addressOf(INADDR_LOOPBACK, port);
    if (connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return true;
    const int reason = errno;
    throwIfInterrupted();
    errno = reason;
    if (reason == ECONNREFUSED) return false;
    throwSystemError("cannot connect to port " + std::to_string(port));
}

void sendAll(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0) {
            if (wasOnlyInterrupted()) continue;
            throwSystemError("sending failed");
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

std::size_t receiveSome(int socket, char* buffer, std::size_t capacity) {
    for (;;) {
        const auto count = recv(socket, buffer, capacity, 0);
        if (count > 0) return static_cast<std::size_t>(count);
        if (count == 0) throw BenchError("the connection was closed while an answer was awaited");
        if (wasOnlyInterrupted()) continue;
        if (errno == EAGAIN) throw BenchError("no answer came within ten seconds");
        throwSystemError("receiving failed");
    }
}

void receiveExactly(int socket, char* buffer, std::size_t size) {
    for (std::size_t received = 0; received < size;) {
        received += receiveSome(socket, buffer + received, size - received);
    }
}
