#pragma once

#include <string_view>

class Conversation;

/// Tells the user what contacts do, each as far as its option is "True". They take the chunk of the
/// server and run statement by statement; nothing fails.
namespace alerts {

/// "RNG": toast and log.
void openWindow(std::string_view chunk, Conversation& conversation);
/// "JOI": words in the conversation, in the name of the contact who has just been recorded.
void join(Conversation& conversation);
/// The last thing that this contact said, at any time before.
void lastWords(Conversation& conversation);
/// "BYE": words in the conversation, and log.
void closeWindow(std::string_view chunk, Conversation& conversation);
/// "FLN": toast and log.
void offline(std::string_view chunk, Conversation& conversation);

/// Keeps what a contact has said.
void rememberWords(std::string_view sender, std::string_view text, Conversation& conversation);

}  // namespace alerts
