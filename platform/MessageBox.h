#pragma once

#include <memory>
#include <string_view>

/// Boxes that the user has to answer. Sockets and timers are served while one is open.
class MessageBox {
public:
    MessageBox() = default;
    MessageBox(const MessageBox&) = delete;
    MessageBox& operator=(const MessageBox&) = delete;
    virtual ~MessageBox() = default;

    /// Each shows a text under the application's title, with the icon of its name and an OK, and
    /// returns when that was pressed.
    virtual void critical(std::string_view text) = 0;
    virtual void exclamation(std::string_view text) = 0;
    virtual void information(std::string_view text) = 0;
    /// The same with Yes and No; true on Yes. A box that is closed without an answer says no.
    [[nodiscard]] virtual bool question(std::string_view text) = 0;

    /// A box was left without an answer, because the program ends. What was to be done after such a
    /// box must not be done.
    [[nodiscard]] virtual bool isEnding() const { return false; }
};

/// Real windows.
[[nodiscard]] std::unique_ptr<MessageBox> makeMessageBox();
/// For a run without windows: a critical text goes to standard error, the others nowhere, every
/// question is answered by no, and nothing waits.
[[nodiscard]] std::unique_ptr<MessageBox> makeMessageBoxWithoutWindows();
