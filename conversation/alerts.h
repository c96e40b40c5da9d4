#pragma once

#include <string_view>

class Conversation;

/// What the program reports of contacts when the option for it is on. Each is raised by a command
/// of the server, whose chunk it takes (`filterServerChunk` in proxy/filters.cpp). What cannot be
/// read out of the chunk, or not be sent, is left out; none abandons its caller.
namespace alerts {

/// "RNG": toast and log.
void openWindow(std::string_view chunk, Conversation& conversation);
/// "JOI": words in the conversation, about the contact who has just been recorded.
void join(Conversation& conversation);
/// "JOI" too: the last thing that this contact said, however long ago.
void lastWords(Conversation& conversation);
/// "BYE": words in the conversation, and log.
void closeWindow(std::string_view chunk, Conversation& conversation);
/// "FLN": toast and log.
void offline(std::string_view chunk, Conversation& conversation);

/// Keeps what a contact has said, unless it is blank, in place of what was kept before.
void rememberWords(std::string_view sender, std::string_view text, Conversation& conversation);

}  // namespace alerts
