#pragma once

#include <cstdint>
#include <string>

/// What is known of one connection, beyond its sockets.
struct ConnectionRecord {
    /// "9" or "10" once the client has named its dialect; empty before.
    std::string protocolVersion;
    /// The contact who was named last on this connection, in whose name words are injected: the
    /// address, and the nick name still percent-encoded. Empty before the first.
    std::string contactEmail;
    std::string contactNick;
    /// The number of the instance.
    std::int16_t formID = 0;
    /// The chosen sign-in status has been put in.
    bool statusApplied = false;
};
