#pragma once

#include "base/Event.h"
#include "platform/OwnWindows.h"

#include <memory>
#include <string_view>

/// Boxes that the user has to answer, under the application's title. All of the program goes on
/// while one is open.
///
/// Most belong to a window, which takes no other input until its box is answered; the other windows
/// do. Such a call returns at once, and `answered` comes later, in an event of its own. It never
/// comes when the window, or the program, ends first. A window has one box at a time: a second
/// one brings the first to the front, and comes when that is answered.
class MessageBox {
public:
    MessageBox() = default;
    MessageBox(const MessageBox&) = delete;
    MessageBox& operator=(const MessageBox&) = delete;
    virtual ~MessageBox() = default;

    /// Shows a box with an OK that belongs to no window. Returns when OK was pressed.
    virtual void critical(std::string_view text) = 0;
    /// The same without waiting for the OK. While it is open, a new text takes the old one's place.
    virtual void notify(std::string_view text) = 0;

    // Each has the icon of its name and an OK.
    virtual void critical(WindowHandle window, std::string_view text, Event<> answered) = 0;
    virtual void exclamation(WindowHandle window, std::string_view text) = 0;
    virtual void information(WindowHandle window, std::string_view text, Event<> answered) = 0;
    /// Has Yes and No; `answered` gets true on Yes. A box that is closed without an answer says no.
    virtual void question(WindowHandle window, std::string_view text, Event<bool> answered) = 0;
};

/// Boxes that are real windows.
[[nodiscard]] std::unique_ptr<MessageBox> makeMessageBox();
/// Boxes of a run without windows: a text that belongs to none goes to standard error, the others
/// nowhere, every question is answered by no, and nothing waits.
[[nodiscard]] std::unique_ptr<MessageBox> makeMessageBoxWithoutWindows();
