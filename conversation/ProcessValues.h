#pragma once

#include <cstdint>
#include <string>

/// What belongs to the whole process and not to one connection. In memory only; all connections
/// read and write it, in the order in which their chunks come.
struct ProcessValues {
    /// Number of the instance that is the notification-server connection; 0 when there is none.
    std::int16_t serverID = 0;
    /// The signed-in account's address.
    std::string email;
    /// The second word of the last chunk from a client, on any connection. What the program sends
    /// of its own borrows it as it stands.
    std::string tranID;
    /// The account's nick name, percent-decoded.
    std::string nickname;
    /// The nick name to go back to when it no longer follows the player.
    std::string prewinampnickName;
    /// What followed the status code in the client's first status command, line end and all.
    std::string statusPostfix;
    bool rancolorOn = false;
    bool winampOn = false;
    /// What goes before the song in the nick name.
    std::string winampPrefix;
    /// The user is signed in.
    bool loggedin = false;
};
