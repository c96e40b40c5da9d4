#pragma once

#include "desktop/desktopForms.h"

#include <string_view>

/// The windows that the host and its connections speak to, one interface each. What is written out
/// here is the answer of a window that does not exist: it shows nothing and changes nothing.

/// A window that the menu shows.
class ShownForm {
public:
    virtual ~ShownForm() = default;
    virtual void Show() {}
};

class LogForm : public ShownForm {
public:
    /// Adds an entry of one line; the log puts the time behind it.
    virtual void AddItem(std::string_view /*text*/) {}
};

class OptionsForm : public ShownForm {
public:
    /// Shows the options of a first run, at whose end the client is started again.
    virtual void ShowFirstRun() {}
};

/// The toasts.
class Popups {
public:
    virtual ~Popups() = default;
    /// Shows a text for a while, if there is room. True if the search for a free place was not
    /// given up.
    virtual bool popup(std::string_view /*text*/) { return false; }
};

struct HostForms {
    TrayForm& tray;
    TitleForm& title;
    ShownForm& help;
    OptionsForm& options;
    ShownForm& notes;
    LogForm& log;
    ShownForm& about;
    Popups& popups;
};
