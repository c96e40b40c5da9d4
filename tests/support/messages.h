#pragma once

#include <string>

/// The payload of a text as Messenger writes it.
[[nodiscard]] inline std::string textPayload(const std::string& text) {
    return "MIME-Version: 1.0\r\n"
           "Content-Type: text/plain; charset=UTF-8\r\n"
           "X-MMS-IM-Format: FN=Arial; EF=; CO=0; CS=0; PF=22\r\n"
           "\r\n" +
           text;
}

/// A text that the client sends.
[[nodiscard]] inline std::string clientText(const std::string& text,
                                            const std::string& number = "12") {
    const std::string payload = textPayload(text);
    return "MSG " + number + " N " + std::to_string(payload.size()) + "\r\n" + payload;
}

/// A text that a contact has sent.
[[nodiscard]] inline std::string contactText(const std::string& text,
                                             const std::string& email = "bob@example.com",
                                             const std::string& nick = "Bob") {
    const std::string payload = textPayload(text);
    return "MSG " + email + " " + nick + " " + std::to_string(payload.size()) + "\r\n" + payload;
}
