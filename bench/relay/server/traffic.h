#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the load generator and its server say to each other.
namespace traffic {

using namespace std::string_view_literals;

/// The size of a typical text with its header, as the client sends it and as the server does.
constexpr std::size_t messageSize = 250;
constexpr std::size_t answerSize = 200;
/// The size of a peer-to-peer message, whole.
constexpr std::size_t peerToPeerSize = 1200;
constexpr std::size_t blockSize = 65536;

/// Who talks in all messages.
constexpr auto client = "ann@example.com"sv;
constexpr auto contact = "bob@example.com"sv;

/// Commands of the load generator, lines that a relay which reads along passes unchanged. Any other
/// line is answered with the same bytes; all of them end with `lineEnd`.
constexpr auto lineEnd = "\r\n"sv;
/// "SNK <count>": the server takes so many bytes, then answers `sinkDone`.
constexpr auto sink = "SNK "sv;
constexpr auto sinkReady = "SNK\r\n"sv;
constexpr auto sinkDone = "FIN\r\n"sv;
/// "SRC <count>": the server sends so many bytes in blocks; "SRP <count>": in peer-to-peer
/// messages.
constexpr auto source = "SRC "sv;
constexpr auto peerToPeerSource = "SRP "sv;
/// "HLD": the server answers the same and reads nothing more.
constexpr auto hold = "HLD\r\n"sv;
/// "RLS": the server closes all connections that it holds, and answers the same. While it does not
/// read, it sees in no other way that they have ended.
constexpr auto release = "RLS\r\n"sv;
/// "TLK <number>": the server answers the same and then takes its part in the talk of this number,
/// from its first turn on, over and over again.
constexpr auto talk = "TLK "sv;

/// What can be said in turns.
enum class Talk {
    UnknownCommand,       ///< A command that no filter looks at, and the same back.
    UnknownCommandInTwo,  ///< The same, sent in two writes.
    Ping,                 ///< "PNG" and "QNG".
    Text,                 ///< A text, and a text of the contact.
    TextInTwo,            ///< The same, the client's sent in two writes.
    TextWithTokens,       ///< A text with every token, and a text of the contact.
    NewTexts,             ///< A text, and a text of the contact that differs from the last one.
    Typing,               ///< Typing notices.
    SignIn,               ///< A recorded sign-in, up to a contact who opens a conversation.
};

/// One turn: what the client sends, and what the server answers when it has received that. Each
/// piece is one write.
struct Turn {
    std::vector<std::string> fromClient;
    std::vector<std::string> fromServer;
};

[[nodiscard]] const std::vector<Turn>& turnsOf(Talk which);

/// The command that begins a talk.
[[nodiscard]] std::string beginningOf(Talk which);

/// Whether these bytes are all that the client says in this turn, however a relay has rewritten
/// them: no relay changes the last bytes of a turn.
[[nodiscard]] bool isWhole(std::string_view request, const Turn& turn);

/// All pieces in one.
[[nodiscard]] std::string joined(const std::vector<std::string>& pieces);

/// A line that no filter looks at.
[[nodiscard]] std::string unknownCommand();

/// What is sent again and again when the rate counts.
[[nodiscard]] std::string block();
/// The same in peer-to-peer messages, as the client sends them and as the server does.
[[nodiscard]] std::string peerToPeerFromClient();
[[nodiscard]] std::string peerToPeerFromServer();

}  // namespace traffic
