#pragma once

#include "tests/support/Peer.h"

#include <cstdint>
#include <string>
#include <utility>

/// A connect request for 127.0.0.1 and `port`, as Messenger sends it.
[[nodiscard]] inline std::string socksRequest(std::uint16_t port, std::string user = "ann") {
    return std::string("\x04\x01", 2) + static_cast<char>(port / 256) +
           static_cast<char>(port % 256) + std::string("\x7F\0\0\x01", 4) + std::move(user) + '\0';
}

/// What the program answers to that request.
[[nodiscard]] inline std::string socksReply(std::uint16_t port) {
    return "\x04\x5A" + socksRequest(port).substr(2, 6);
}

/// A client and a server that are joined through the program.
struct Relay {
    Peer client;
    Peer server;

    /// Throws when the answer to the request is not the right one.
    [[nodiscard]] static Relay through(std::uint16_t proxyPort) {
        Server listener;
        Relay relay;
        relay.client = Peer::connectedTo(proxyPort);
        relay.client.send(socksRequest(listener.port()));
        relay.server = listener.accept();
        const std::string reply = relay.client.receive(8);
        if (reply != socksReply(listener.port())) {
            throw std::runtime_error("answered " + escaped(reply));
        }
        return relay;
    }

    /// What one read at the server gives of what the client sends in one piece.
    [[nodiscard]] std::string up(std::string_view bytes) {
        client.send(bytes);
        return server.receiveOnce();
    }
    /// The same the other way.
    [[nodiscard]] std::string down(std::string_view bytes) {
        server.send(bytes);
        return client.receiveOnce();
    }
};
