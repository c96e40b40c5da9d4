#pragma once

#include "base/Event.h"
#include "platform/Tray.h"

#include <string>
#include <string_view>
#include <vector>

/// What conversations and their host ask of the program's windows, one event each. One that nobody
/// has connected is a window that does not exist: nothing is shown and nothing changes.
struct ProgramWindows {
    /// Shows the icon in the notification area, with the menu that its right click opens.
    Event<const std::vector<MenuEntry>&> showTrayIcon;
    /// Takes the icon away.
    Event<> removeTrayIcon;
    /// A command of this name has passed: the icon's tool-tip and Messenger's title follow. The
    /// caller's text becomes the caption that was set.
    Event<std::string&> changetraycaption;

    /// Begins to watch for Messenger's window, to give it the user's title.
    Event<> loadTitle;
    /// Gives Messenger's window the title that it has while no sign-in is under way.
    Event<> restoreTitle;

    /// Each of the next six shows its window, or brings it to the front.
    Event<> showHelp;
    Event<> showOptions;
    /// Shows the options of a first run, at whose end the client is started again.
    Event<> showFirstRun;
    Event<> showNotes;
    Event<> showLog;
    Event<> showAbout;

    /// Adds an entry of one line to the log, which puts the time behind it.
    Event<std::string_view> addToLog;
    /// Shows a toast.
    Event<std::string_view> popup;
};
