#pragma once

#include <string>

class Conversation;
struct ProgramWindows;

/// Treats a chunk that the client has sent: keeps its transaction number, learns the dialect and
/// the notification-server connection, puts the chosen status into the sign-in, carries out chat
/// commands and hides typing notices. The chunk is rewritten in place. Runs statement by statement;
/// nothing fails.
void filterClientChunk(std::string& chunk, Conversation& conversation,
                       const ProgramWindows& windows);
