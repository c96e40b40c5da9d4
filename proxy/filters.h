#pragma once

#include <string>

class Conversation;
struct ProgramWindows;

/// What is done to each chunk on its way. The chunk is rewritten in place; a step that cannot be
/// done is skipped, and none abandons its caller.

/// A chunk of the client: keeps its transaction number, learns the dialect and the
/// notification-server connection, puts the chosen status into the sign-in, carries out chat
/// commands and hides typing notices.
void filterClientChunk(std::string& chunk, Conversation& conversation,
                       const ProgramWindows& windows);

/// A chunk of a server: learns the account and the contact, raises the alerts, keeps and stamps
/// what contacts say.
void filterServerChunk(std::string& chunk, Conversation& conversation);
