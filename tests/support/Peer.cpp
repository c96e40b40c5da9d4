#include "tests/support/Peer.h"

#include "tests/support/system.h"

#include <array>
#include <random>
#include <span>
#include <stdexcept>

using testSystem::Direction;

namespace {

void waitUntilPossible(SocketHandle socket, Direction direction, const char* what) {
    if (!testSystem::becomesPossible(socket, direction, waitLimit)) {
        throw std::runtime_error(std::string("waited in vain to ") + what);
    }
}

/// How many bytes one read gives, once there is something to read.
std::size_t receiveSome(SocketHandle socket, std::span<char> buffer) {
    for (;;) {
        waitUntilPossible(socket, Direction::Receiving, "receive");
        if (const auto count = testSystem::receiveSome(socket, buffer)) return *count;
    }
}

}  // namespace

void TestSocket::close() {
    const SocketHandle closed = std::exchange(number, systemSockets::noSocket);
    if (closed != systemSockets::noSocket) testSystem::closeSocket(closed);
}

Peer Peer::connectedTo(std::uint16_t port) { return Peer(TestSocket(testSystem::connectTo(port))); }

void Peer::send(std::string_view bytes) {
    while (!bytes.empty()) {
        waitUntilPossible(handle(), Direction::Sending, "send");
        bytes.remove_prefix(sendNow(bytes));
    }
}

std::size_t Peer::sendNow(std::string_view bytes) { return testSystem::sendSome(handle(), bytes); }

std::string Peer::receiveOnce() {
    std::array<char, 65536> buffer;
    return {buffer.data(), receiveSome(handle(), buffer)};
}

std::string Peer::receive(std::size_t count) {
    std::string received(count, '\0');
    for (std::size_t have = 0; have < count;) {
        const std::size_t more = receiveSome(handle(), std::span(received).subspan(have));
        if (more == 0) {
            received.resize(have);
            throw std::runtime_error("closed after " + std::to_string(have) + " of " +
                                     std::to_string(count) + " bytes: " + escaped(received));
        }
        have += more;
    }
    return received;
}

std::string Peer::receiveToEnd() {
    std::string all;
    for (std::string more = receiveOnce(); !more.empty(); more = receiveOnce())
        all += more;
    return all;
}

std::string Peer::receiveNow() {
    std::string all;
    std::array<char, 65536> buffer;
    for (;;) {
        const std::size_t count = testSystem::receiveSome(handle(), buffer).value_or(0);
        if (count == 0) return all;
        all.append(buffer.data(), count);
    }
}

bool Peer::isSilent() const {
    return !testSystem::becomesPossible(handle(), Direction::Receiving, {});
}

void Peer::finishSending() { testSystem::finishSending(handle()); }

void Peer::breakOff() {
    testSystem::prepareToBreakOff(handle());
    close();
}

Server::Server() {
    std::random_device random;
    std::uniform_int_distribution<int> anyPort(20000, 32767);
    for (int tries = 0; tries < 1000; ++tries) {
        boundPort = static_cast<std::uint16_t>(anyPort(random));
        socket = TestSocket(testSystem::listenOn(boundPort));
        if (socket.handle() != systemSockets::noSocket) return;
    }
    throw std::runtime_error("no free port for a server");
}

Peer Server::accept() {
    waitUntilPossible(socket.handle(), Direction::Receiving, "accept");
    return Peer(TestSocket(testSystem::acceptOne(socket.handle())));
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
