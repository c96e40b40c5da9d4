#pragma once

#include "conversation/ConnectionRecord.h"

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
struct ProcessValues;

/// What a conversation can ask of the program as a whole.
class ProgramActions {
public:
    virtual ~ProgramActions() = default;

    /// Fills the tokens in `text`, in place, and makes it the user's nick name, if there is a
    /// notification-server connection to tell it to.
    virtual void ApplyNickTemplate(std::string& text) = 0;
    virtual void ShowNotes() = 0;
    /// Takes the tray icon away and ends the process at once.
    [[noreturn]] virtual void ForceExit() = 0;
};

/// What the machine and the stores have for the features of a conversation.
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
};

/// One connection, as the features of a conversation see it.
class Conversation {
public:
    ConnectionRecord connection;
    Services& services;

    explicit Conversation(Services& services) : services(services) {}
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;
    virtual ~Conversation() = default;

    /// Sends bytes to the client. Fails when it is gone.
    virtual void sendToClient(std::string_view bytes) = 0;
    /// Shows a toast.
    virtual void showPopup(std::string_view text) = 0;
    /// Adds a line to the log.
    virtual void addToLog(std::string_view text) = 0;
};
