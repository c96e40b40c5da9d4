#include "bench/relay/contenders/handshake.h"

#include "bench/relay/system/BenchError.h"

#include <array>
#include <string>

namespace {

using namespace std::string_literals;

std::string portBytes(Port port) {
    return {static_cast<char>(port >> 8), static_cast<char>(port & 0xff)};
}

const std::string loopbackBytes = "\x7f\0\0\x01"s;

void shakeHandsBySocks4(int socket, Port server) {
    sendAll(socket, "\x04\x01"s + portBytes(server) + loopbackBytes + "bench\0"s);
    std::array<char, 8> reply{};
    receiveExactly(socket, reply.data(), reply.size());
    // The standard has 0 as the first byte of the reply; the program under test answers 4.
    if ((reply[0] != 0 && reply[0] != 4) || reply[1] != 90) {
        throw BenchError("the relay refused the SOCKS 4 request");
    }
}

void shakeHandsBySocks5(int socket, Port server) {
    sendAll(socket, "\x05\x01\0"s);
    std::array<char, 2> method{};
    receiveExactly(socket, method.data(), method.size());
    if (method[0] != 5 || method[1] != 0) throw BenchError("the relay wants a SOCKS 5 password");

    sendAll(socket, "\x05\x01\0\x01"s + loopbackBytes + portBytes(server));
    std::array<char, 10> reply{};
    receiveExactly(socket, reply.data(), reply.size());
    if (reply[0] != 5 || reply[1] != 0) throw BenchError("the relay refused the SOCKS 5 request");
}

}  // namespace

void shakeHands(int socket, Handshake handshake, Port server) {
    switch (handshake) {
        case Handshake::None: break;
        case Handshake::Socks4: shakeHandsBySocks4(socket, server); break;
        case Handshake::Socks5: shakeHandsBySocks5(socket, server); break;
    }
}
