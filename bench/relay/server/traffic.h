#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What the load generator and its server say to each other. Each text begins with a three-letter
/// word that a relay which reads along passes unchanged.
namespace traffic {

using namespace std::string_view_literals;

/// The size of a typical line of chat with its header.
constexpr std::size_t messageSize = 250;
constexpr std::size_t blockSize = 65536;
/// Ends each message; the server answers a message with the same bytes once this has arrived.
constexpr auto messageEnd = "\r\n"sv;

/// "SNK <count>": the server takes so many bytes, then answers `sinkDone`.
constexpr auto sink = "SNK "sv;
constexpr auto sinkReady = "SNK\r\n"sv;
constexpr auto sinkDone = "FIN\r\n"sv;
/// "SRC <count>": the server sends so many bytes in blocks.
constexpr auto source = "SRC "sv;
/// "HLD": the server answers the same and reads nothing more.
constexpr auto hold = "HLD\r\n"sv;
/// "RLS": the server closes all connections that it holds, and answers the same. While it does not
/// read, nothing else tells it that they have ended.
constexpr auto release = "RLS\r\n"sv;

/// A text message, which holds `messageEnd` only at its end.
[[nodiscard]] std::string message();

/// What is sent again and again when the rate counts.
[[nodiscard]] std::string block();

}  // namespace traffic
