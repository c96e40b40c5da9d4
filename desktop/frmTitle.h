#pragma once

#include "platform/OwnWindows.h"
#include "stores/options.h"

#include <memory>
#include <string>
#include <string_view>

class EventLoop;
class ForeignWindows;
class SettingsStore;
class Timer;

/// Gives Messenger's main window the title that the user wants, again for each new window, and
/// shows there how far a sign-in has come. The user changes the title in the options window.
class frmTitle {
public:
    /// Does nothing before `Load`. All three have to outlive it.
    frmTitle(SettingsStore& settings, ForeignWindows& windows, EventLoop& loop);
    ~frmTitle();
    frmTitle(const frmTitle&) = delete;
    frmTitle& operator=(const frmTitle&) = delete;

    /// Takes over both settings, writes the title if there is a window, and begins to watch for the
    /// window.
    void Load();

    /// The user wants a title of their own.
    [[nodiscard]] bool renaming() const { return Check1; }
    /// The title that the user wants.
    [[nodiscard]] const std::string& renameText() const { return Text1; }

    /// Writes a title at once, if the user wants to see progress there.
    void setwindowcaption(std::string_view newcaption);
    /// Writes, on the same condition, the title that the window has while no sign-in is under way.
    void restore();

    /// Ticks or clears the check box; a change counts as a click on it.
    void setCheck1(bool value);
    /// What a click on the check box does, whose new state is set already: where it is clear, the
    /// window gets Messenger's own title back, and the user's text is lost.
    void Check1_Click();
    /// Changes the text, which is saved at once but not written to the window.
    void setText1(std::string_view text);
    /// Saves both settings and has the text written to the window at the next tick.
    void ChangeTitle();
    /// Writes text and check box into the settings, as they are.
    void savesettings();

private:
    [[nodiscard]] WindowHandle MessengerWindowHandle();
    void Timer1_Timer();
    void Timer2_Timer();

    SettingsStore& settings;
    ForeignWindows& windows;
    bool Check1 = false;
    std::string Text1 = options::captionToEnter;
    /// The text has been written to `titleWindow`.
    bool titleApplied = false;
    /// The window that got the text.
    WindowHandle titleWindow = 0;
    std::unique_ptr<Timer> Timer1;
    std::unique_ptr<Timer> Timer2;
};
