#pragma once

#include <string>
#include <string_view>

class Conversation;

/// What is done to each chunk on its way. They give what is to be sent: the chunk, where it stands,
/// or what becomes of it, in `rewritten`, so that a chunk that passes unchanged is never copied. A
/// step that cannot be done is skipped, and none abandons its caller.

/// A chunk of the client: keeps its transaction number, learns the dialect and the
/// notification-server connection, puts the chosen status into the sign-in, carries out chat
/// commands and hides typing notices.
[[nodiscard]] std::string_view filterClientChunk(std::string_view chunk, std::string& rewritten,
                                                 Conversation& conversation);

/// A chunk of a server: learns the account and the contact, raises the alerts, keeps and stamps
/// what contacts say.
[[nodiscard]] std::string_view filterServerChunk(std::string_view chunk, std::string& rewritten,
                                                 Conversation& conversation);
