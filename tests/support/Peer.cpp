#include "tests/support/Peer.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <random>
#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error(what + ": " + std::strerror(errno));
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

void waitUntil(int descriptor, short events, const char* what) {
    pollfd entry{descriptor, events, 0};
    const auto limit = std::chrono::milliseconds(waitLimit).count();
    if (poll(&entry, 1, static_cast<int>(limit)) != 1) {
        throw std::runtime_error(std::string("waited in vain to ") + what);
    }
}

}  // namespace

Peer::Peer(Descriptor connected) : descriptor(std::move(connected)) {
    const int one = 1;
    setsockopt(handle(), IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
}

Peer Peer::connectedTo(std::uint16_t port) {
    Descriptor descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const sockaddr_in address = loopback(port);
    if (connect(descriptor.get(), generic(address), sizeof address) != 0) fail("connect");
    return Peer(std::move(descriptor));
}

void Peer::send(std::string_view bytes) {
    while (!bytes.empty()) {
        waitUntil(handle(), POLLOUT, "send");
        const ssize_t sent =
            ::send(handle(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0 && errno != EAGAIN) fail("send");
        if (sent > 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

std::string Peer::receiveOnce() {
    waitUntil(handle(), POLLIN, "receive");
    std::array<char, 65536> buffer;
    const ssize_t count = recv(handle(), buffer.data(), buffer.size(), 0);
    if (count < 0 && errno != ECONNRESET) fail("recv");
    return {buffer.data(), static_cast<std::size_t>(count < 0 ? 0 : count)};
}

std::string Peer::receive(std::size_t count) {
    std::string received(count, '\0');
    std::size_t have = 0;
    while (have < count) {
        waitUntil(handle(), POLLIN, "receive");
        const ssize_t more = recv(handle(), received.data() + have, count - have, 0);
        if (more < 0) fail("recv");
        if (more == 0) {
            received.resize(have);
            throw std::runtime_error("closed after " + std::to_string(have) + " of " +
                                     std::to_string(count) + " bytes: " + escaped(received));
        }
        have += static_cast<std::size_t>(more);
    }
    return received;
}

std::string Peer::receiveToEnd() {
    std::string all;
    for (std::string more = receiveOnce(); !more.empty(); more = receiveOnce())
        all += more;
    return all;
}

bool Peer::isSilent() const {
    pollfd entry{handle(), POLLIN, 0};
    return poll(&entry, 1, 0) == 0;
}

void Peer::finishSending() { shutdown(handle(), SHUT_WR); }

void Peer::breakOff() {
    const linger atOnce{1, 0};
    setsockopt(handle(), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    close();
}

Server::Server() : descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    std::random_device random;
    std::uniform_int_distribution<int> anyPort(20000, 32767);
    for (int tries = 0; tries < 1000; ++tries) {
        boundPort = static_cast<std::uint16_t>(anyPort(random));
        const sockaddr_in address = loopback(boundPort);
        if (bind(descriptor.get(), generic(address), sizeof address) == 0 &&
            listen(descriptor.get(), SOMAXCONN) == 0) {
            return;
        }
    }
    fail("no free port for a server");
}

Peer Server::accept() {
    waitUntil(descriptor.get(), POLLIN, "accept");
    return Peer(Descriptor(::accept4(descriptor.get(), nullptr, nullptr, SOCK_CLOEXEC)));
}

std::string escaped(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (code >= 0x20 && code < 0x7F && code != '\\') {
            text += byte;
        } else if (byte == '\r') {
            text += "\\r";
        } else if (byte == '\n') {
            text += "\\n";
        } else {
            text += {'\\', 'x', digits[code / 16], digits[code % 16]};
        }
    }
    return text;
}
