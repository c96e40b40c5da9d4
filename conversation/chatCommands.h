#pragma once

#include <string>
#include <string_view>

class Conversation;

namespace chatCommands {

/// What goes to the server in the place of a message of the client: the message with colour and
/// constants, or the cover of a chat command that was carried out. Each step writes back to
/// `message`, which so keeps what was done when a later step fails.
[[nodiscard]] std::string FilterOutgoing(std::string& message, Conversation& conversation);

/// Carries out the chat command that `message`, the first line of a text, is; `fullmessage` is the
/// whole text for those that take more than a line. False for what is no command.
bool parse(std::string_view message, std::string_view fullmessage, Conversation& conversation);

}  // namespace chatCommands
