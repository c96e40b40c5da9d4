#pragma once

#include <string>

class Conversation;

/// Treats a chunk that a server has sent: learns the account and the contact, raises the alerts,
/// keeps and stamps what contacts say. The chunk is rewritten in place. Runs statement by
/// statement; nothing fails.
void filterServerChunk(std::string& chunk, Conversation& conversation);
