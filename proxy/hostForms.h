#pragma once

#include <string>
#include <string_view>

/// The windows that the host and its connections speak to, one interface each. What is written out
/// here is the answer of a window that does not exist: it shows nothing and changes nothing.

/// The icon in the notification area.
class TrayForm {
public:
    virtual ~TrayForm() = default;
    virtual void Show() {}
    /// Takes the icon away.
    virtual void Unload() {}
    /// Shows how far the sign-in has come, by the command word that has passed. The caller's text
    /// becomes the caption that was set.
    virtual void changetraycaption(std::string& /*newcaption*/) {}
};

/// The title of the Messenger window.
class TitleForm {
public:
    virtual ~TitleForm() = default;
    virtual void Load() {}
    /// The user wants a title of their own.
    [[nodiscard]] virtual bool renaming() const { return false; }
    /// That title.
    [[nodiscard]] virtual std::string renameText() const { return {}; }
    /// Writes a title at once, if the user wants progress there.
    virtual void setwindowcaption(std::string_view /*newcaption*/) {}
};

class NotesForm {
public:
    virtual ~NotesForm() = default;
    virtual void Show() {}
};

class LogForm {
public:
    virtual ~LogForm() = default;
    /// Adds an entry of one line; the log puts the time behind it.
    virtual void AddItem(std::string_view /*text*/) {}
};

class OptionsForm {
public:
    virtual ~OptionsForm() = default;
    /// Shows the options of a first run, at whose end the client is started again.
    virtual void ShowFirstRun() {}
};

/// The toasts.
class Popups {
public:
    virtual ~Popups() = default;
    virtual void popup(std::string_view /*text*/) {}
};

struct HostForms {
    TrayForm& tray;
    TitleForm& title;
    NotesForm& notes;
    LogForm& log;
    OptionsForm& options;
    Popups& popups;
};
