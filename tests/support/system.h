#pragma once

#include "platform/shared/Readiness.h"
#include "platform/shared/systemSockets.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// What tests that hold on every system ask of the system itself. Each system has these in a folder
/// of its own beside this header; the tests are the same.
namespace testSystem {

/// Sets a variable of the environment, or takes it out.
void setVariable(const std::string& name, const std::optional<std::string>& value);
/// The file that this process runs.
[[nodiscard]] std::filesystem::path programFile();
/// How many files, sockets and the like this process has open.
[[nodiscard]] std::size_t countDescriptors();

[[nodiscard]] std::unique_ptr<Readiness> makeReadiness();
/// Waits until `readiness` has something to dispatch or `other`, where there is one, has something
/// to receive; false when the limit runs out before. The readiness is one of `makeReadiness`.
bool waitForEvents(const Readiness& readiness, std::chrono::milliseconds limit,
                   SocketHandle other = systemSockets::noSocket);

/// The socket of this process whose connection has `port` at its other end; `noSocket` when there
/// is none.
[[nodiscard]] SocketHandle socketTo(std::uint16_t port);
/// Whether small pieces go out at once.
[[nodiscard]] bool sendsAtOnce(SocketHandle socket);

/// The port at the own end of a connection.
[[nodiscard]] std::uint16_t localPortOf(SocketHandle connection);

/// Sockets of loopback as others have them, for `Peer` and `Server`: none of the program's code is
/// in them. All throw `std::runtime_error` when the system does not do what they ask for.

[[nodiscard]] SocketHandle connectTo(std::uint16_t port);
/// `noSocket` when the port is taken.
[[nodiscard]] SocketHandle listenOn(std::uint16_t port);
[[nodiscard]] SocketHandle acceptOne(SocketHandle listener);
void closeSocket(SocketHandle socket);

enum class Direction : std::uint8_t { Receiving, Sending };
/// Whether it becomes possible within the limit.
[[nodiscard]] bool becomesPossible(SocketHandle socket, Direction direction,
                                   std::chrono::milliseconds limit);
/// How many bytes the system takes, 0 when it takes none now.
[[nodiscard]] std::size_t sendSome(SocketHandle socket, std::string_view bytes);
/// How many bytes it gives; 0 at the end, nothing when there are none now. A broken connection has
/// ended.
[[nodiscard]] std::optional<std::size_t> receiveSome(SocketHandle socket, std::span<char> buffer);
/// No more bytes from this end.
void finishSending(SocketHandle socket);
/// Its close will look like a broken connection from the other end.
void prepareToBreakOff(SocketHandle socket);

}  // namespace testSystem
