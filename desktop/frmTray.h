#pragma once

#include "platform/Tray.h"

#include <string>
#include <vector>

class SettingsStore;
class frmTitle;

/// The icon in the notification area: its tool-tip shows how far a sign-in has come, its right
/// click opens the program's menu.
class frmTray {
public:
    /// An icon that is not shown yet. All three have to outlive it.
    frmTray(SettingsStore& settings, frmTitle& title, Tray& tray)
        : settings(settings), title(title), tray(tray) {}

    /// Shows the icon with this menu. No setting hides it: they are about the tool-tip only.
    void Show(const std::vector<MenuEntry>& menu);
    /// Takes the icon away.
    void Unload();
    /// Shows how far the sign-in has come, in the two places that the user has chosen, by the name
    /// of the command that has passed. The caller's text becomes the caption that was set; it stays
    /// where the user wants no progress.
    void changetraycaption(std::string& newcaption, bool loggedin);

private:
    [[nodiscard]] std::string captionOf(const std::string& word, bool loggedin);

    SettingsStore& settings;
    frmTitle& title;
    Tray& tray;
};
