#pragma once

#include "platform/Tray.h"

#include <string>
#include <string_view>

/// What the rest of the program asks of the icon and of the Messenger window's title. What is
/// written out here is the answer of one that does not exist.

/// The icon in the notification area.
class TrayForm {
public:
    virtual ~TrayForm() = default;
    /// Shows the icon, with the menu that its right click opens.
    virtual void Show(const std::vector<MenuEntry>& /*menu*/) {}
    /// Takes the icon away.
    virtual void Unload() {}
    /// Shows how far the sign-in has come, by the command word that has passed. The caller's text
    /// becomes the caption that was set.
    virtual void changetraycaption(std::string& /*newcaption*/) {}
};

/// The title of the Messenger window.
class TitleForm {
public:
    /// What Messenger calls its main window itself.
    static constexpr std::string_view messengersOwnTitle = "MSN Messenger";

    virtual ~TitleForm() = default;
    virtual void Load() {}
    /// The user wants a title of their own.
    [[nodiscard]] virtual bool renaming() const { return false; }
    /// That title.
    [[nodiscard]] virtual std::string renameText() const { return {}; }
    /// What the window is called while no sign-in is under way.
    [[nodiscard]] std::string restingTitle() const {
        return renaming() ? renameText() : std::string(messengersOwnTitle);
    }
    /// Writes a title at once, if the user wants progress there.
    virtual void setwindowcaption(std::string_view /*newcaption*/) {}
};
