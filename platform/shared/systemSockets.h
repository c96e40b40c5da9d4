#pragma once

#include "platform/Winsock.h"
#include "platform/shared/nearness.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// A socket as the system numbers it. 32 bits hold it on every system.
using SocketHandle = std::int32_t;

/// The TCP sockets of the system, over IPv4: all that `StreamSocket` asks of it, written once for
/// each system. No call waits, no socket is passed on to programs that are started, small pieces go
/// out at once, a server that never answers is given up after some 20 seconds, and a peer that has
/// vanished without a word is found out within some minutes.
namespace systemSockets {

/// No socket at all.
constexpr SocketHandle noSocket = -1;

/// How a call ended.
enum class Result : std::uint8_t {
    Done,
    /// Nothing can be done now. `Readiness` says when to try again.
    WouldBlock,
    /// The other end sends no more.
    Closed,
    /// The process, or the system, has no room for one more socket.
    OutOfDescriptors,
    Error
};

/// How a call ended, in numbers.
struct Outcome {
    Result result = Result::Done;
    /// How many bytes were sent or received; less than all is Done too.
    std::size_t bytes = 0;
    /// The system's number of an error, for `troubleOf`; 0 when there was none.
    int error = 0;
};

/// A socket that was opened or accepted.
struct NewSocket {
    Outcome outcome;
    /// `noSocket`, unless the outcome is Done.
    SocketHandle socket = noSocket;
    /// Where the client of an accepted socket is. 0x7F000001 is 127.0.0.1.
    std::uint32_t host = 0;
};

/// Call it before all others. Gets as many sockets for the process as the system allows it.
void prepare();

/// The number and the words of an error.
[[nodiscard]] SocketTrouble troubleOf(int error);

/// A socket that neither listens nor is connected.
[[nodiscard]] NewSocket open();
/// Lets clients connect to a port of all local addresses. 0 is any free port.
[[nodiscard]] Outcome listen(SocketHandle socket, std::uint16_t port);
/// The port of a socket that listens, 0 where the system does not know it.
[[nodiscard]] std::uint16_t localPort(SocketHandle listener);
/// The connection of the client that has waited longest.
[[nodiscard]] NewSocket accept(SocketHandle listener);
/// The networks of the machine's own interfaces, as they are now.
[[nodiscard]] std::vector<AddressRange> ownNetworks();
/// Begins to connect: Done or WouldBlock is a connection on its way. `host` is 0x7F000001 for
/// 127.0.0.1.
[[nodiscard]] Outcome connect(SocketHandle socket, std::uint32_t host, std::uint16_t port);
/// Sends as much of `data` as the system takes. Where that is not all of it, `Readiness` says when
/// the system takes more.
[[nodiscard]] Outcome send(SocketHandle socket, std::string_view data);
/// One read of what has arrived.
[[nodiscard]] Outcome receive(SocketHandle socket, std::span<char> buffer);
/// The same as `receive`, but what it gives is still to be received.
[[nodiscard]] Outcome peek(SocketHandle socket, std::span<char> buffer);
/// Ends a connection, or the listening, and gives the descriptor back.
void close(SocketHandle socket);

}  // namespace systemSockets
