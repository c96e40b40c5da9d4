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

    /// Shows bad news with an OK, under the application's title, and returns when it was pressed.
    /// Without a display the text goes to standard error, and nothing waits.
    virtual void critical(std::string_view text) = 0;
};

[[nodiscard]] std::unique_ptr<MessageBox> makeMessageBox();
