#pragma once

#include "platform/Tray.h"

#include <string>
#include <vector>

class SettingsStore;
class frmTitle;

/// The icon in the notification area: its tool-tip follows the sign-in, its right click opens the
/// program's menu.
class frmTray {
public:
    frmTray(SettingsStore& settings, frmTitle& title, Tray& tray)
        : settings(settings), title(title), tray(tray) {}

    /// Shows the icon whatever the settings say: they are about its tool-tip alone.
    void Show(const std::vector<MenuEntry>& menu);
    /// Takes the icon away.
    void Unload();
    /// Shows how far the sign-in has come, by the name of the command that has passed. The caller's
    /// text becomes the caption that was set.
    void changetraycaption(std::string& newcaption, bool loggedin);

private:
    [[nodiscard]] std::string captionOf(const std::string& word, bool loggedin);

    SettingsStore& settings;
    frmTitle& title;
    Tray& tray;
};
