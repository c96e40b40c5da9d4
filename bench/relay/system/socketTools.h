#pragma once

#include "platform/linux/Descriptor.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

using Port = std::uint16_t;

/// True when a program could listen on `port` of all addresses now.
[[nodiscard]] bool isPortFree(Port port);

/// A socket that sends without delay, gives up any wait after ten seconds, and is reset when it is
/// closed: a closing handshake would leave thousands of waiting ports behind that slow the next
/// measurement down.
[[nodiscard]] Descriptor makeClientSocket();

/// Gives an accepted socket the same two habits.
void setNoDelayAndReset(int socket);

/// Connects to loopback. False when nobody listens there; `BenchError` for any other reason.
[[nodiscard]] bool tryConnect(int socket, Port port);

/// All of `bytes`, or a `BenchError`.
void sendAll(int socket, std::string_view bytes);

/// At least one byte and at most `capacity`, or a `BenchError` when the peer closes or is silent
/// for ten seconds.
std::size_t receiveSome(int socket, char* buffer, std::size_t capacity);

/// Exactly `size` bytes, or a `BenchError`.
void receiveExactly(int socket, char* buffer, std::size_t size);
