#pragma once

#include "desktop/desktopForms.h"

#include <functional>
#include <string>
#include <vector>

class SettingsStore;

/// The icon in the notification area: its tool-tip follows the sign-in, its right click opens the
/// program's menu.
class frmTray final : public TrayForm {
public:
    /// Whether the user is signed in.
    std::function<bool()> loggedin = [] { return false; };

    frmTray(SettingsStore& settings, TitleForm& title, Tray& tray)
        : settings(settings), title(title), tray(tray) {}

    /// Shows the icon whatever the settings say: they are about its tool-tip alone.
    void Show(const std::vector<MenuEntry>& menu) override;
    void Unload() override;
    void changetraycaption(std::string& newcaption) override;

private:
    [[nodiscard]] std::string captionOf(const std::string& word);

    SettingsStore& settings;
    TitleForm& title;
    Tray& tray;
};
