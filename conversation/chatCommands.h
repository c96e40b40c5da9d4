#pragma once

#include <string>
#include <string_view>

class Conversation;

namespace chatCommands {

/// Makes of a message of the client what goes to the server in its place: the message with colour
/// and constants, or the cover of a chat command that was carried out. Where a step cannot be done
/// `message` keeps what was done before it, whether this returns or abandons the step of its
/// caller.
void FilterOutgoing(std::string& message, Conversation& conversation);

/// Carries out the chat command that `message`, the first line of a text, is; `fullmessage` is the
/// whole text for those that take more than a line. False for what is no command. Abandons the
/// step where the first line is empty, and where the command cannot be carried out.
bool parse(std::string_view message, std::string_view fullmessage, Conversation& conversation);

}  // namespace chatCommands
