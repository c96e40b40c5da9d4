#pragma once

#include "base/Event.h"
#include "platform/OwnWindows.h"

#include <memory>
#include <string_view>

/// The windows of other programs: Messenger's, and the one that the user works in. 0 is no window;
/// what is done to 0, or to a window that is gone, has no effect.
class ForeignWindows {
public:
    /// The answer of `MessengerWindowHandle` may have changed.
    Event<> changed;

    /// What Messenger calls its main window itself.
    static constexpr std::string_view messengerTitle = "MSN Messenger";

    ForeignWindows() = default;
    ForeignWindows(const ForeignWindows&) = delete;
    ForeignWindows& operator=(const ForeignWindows&) = delete;
    virtual ~ForeignWindows() = default;

    /// Messenger's main window; where there are several, the one that was found first, as long as
    /// it exists. A call costs little while no window opens or closes.
    [[nodiscard]] virtual WindowHandle MessengerWindowHandle() = 0;
    /// Writes a window's title, which is text in the program's code page.
    virtual void SetWindowText(WindowHandle window, std::string_view text) = 0;
    /// Asks Messenger to sign out and to end, and does not wait for it.
    virtual void requestMessengerEnd() = 0;

    /// The window that the user works in: the one that has the keyboard.
    [[nodiscard]] virtual WindowHandle foreground() = 0;
    /// Gives the keyboard back to a window that had it. Does nothing when the window has it still.
    virtual void giveFocusBack(WindowHandle window) = 0;
};

/// On a system without windows of others, no window exists.
[[nodiscard]] std::unique_ptr<ForeignWindows> makeForeignWindows();
