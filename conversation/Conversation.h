#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class Browser;
class Chance;
class Clock;
class MachineFacts;
class MediaPlayer;
class NotesStore;
class Registry;
class SettingsStore;
struct ProgramWindows;

/// What belongs to the whole process and not to one connection. It is in memory only; all
/// connections read and write it, in the order in which their chunks come.
struct ProcessValues {
    /// Number of the instance that is the notification-server connection; 0 when there is none.
    std::int16_t serverID = 0;
    /// The signed-in account's address.
    std::string email;
    /// The account that a server has accepted last.
    std::string account;
    /// The user has been warned of a second account.
    bool secondAccountReported = false;
    /// The second word of the last chunk from a client, on any connection. What the program sends
    /// of its own carries it unchanged.
    std::string tranID;
    /// The account's nick name, percent-decoded.
    std::string nickname;
    /// The nick name to go back to when it no longer follows the player.
    std::string prewinampnickName;
    /// What followed the status code in the client's first status command, with its line end.
    std::string statusPostfix;
    bool rancolorOn = false;
    bool winampOn = false;
    /// What goes before the song in the nick name.
    std::string winampPrefix;
    /// The user is signed in.
    bool loggedin = false;
};

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

/// What a conversation can ask of the program as a whole.
class ProgramActions {
public:
    virtual ~ProgramActions() = default;

    /// Fills the tokens in `text`, in place, and asks the server to make it the user's nick name,
    /// if there is a notification-server connection. Abandons the step where a token has no value
    /// or the server is gone.
    virtual void ApplyNickTemplate(std::string& text) = 0;
    /// Takes the tray icon away and ends the process at once.
    [[noreturn]] virtual void ForceExit() = 0;
};

/// What the machine and the stores offer to the features of a conversation.
struct Facilities {
    SettingsStore& settings;
    MachineFacts& machine;
    Clock& clock;
    Chance& chance;
    Registry& registry;
    MediaPlayer& player;
    Browser& browser;
    NotesStore& notes;
    /// The process's own command line.
    std::string commandLine;
};

/// What all conversations share.
struct Services : Facilities {
    ProcessValues& values;
    ProgramActions& program;
    const ProgramWindows& windows;
};

/// One connection, as the features of a conversation see it.
class Conversation {
public:
    ConnectionRecord connection;
    Services& services;

    /// `services` outlive the conversation.
    explicit Conversation(Services& services) : services(services) {}
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;
    virtual ~Conversation() = default;

    /// Sends bytes to the client. False when it is gone.
    [[nodiscard]] virtual bool sendToClient(std::string_view bytes) = 0;
};
