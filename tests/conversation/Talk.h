#pragma once

#include "tests/support/Peer.h"
#include "tests/support/Spine.h"
#include "tests/support/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Bytes that are printed escaped where they are not what a test expects.
struct Bytes {
    std::string bytes;

    Bytes(std::string bytes) : bytes(std::move(bytes)) {}
    Bytes(const char* text) : bytes(text) {}

    friend bool operator==(const Bytes&, const Bytes&) = default;
    /// It would be printed as the address of its first character.
    friend bool operator==(const Bytes&, const char*) = delete;
    friend void PrintTo(const Bytes& shown, std::ostream* out) {
        *out << '"' << escaped(shown.bytes) << '"';
    }
};

/// A message whose first line ends in the true length of `payload`, behind `head`.
[[nodiscard]] inline std::string message(const std::string& head, const std::string& payload) {
    return head + " " + std::to_string(payload.size()) + "\r\n" + payload;
}

/// The payload of a notice that `email` is typing.
[[nodiscard]] inline std::string typingPayload(const std::string& email = "ann@example.com") {
    return "MIME-Version: 1.0\r\nContent-Type: text/x-msmsgscontrol\r\nTypingUser: " + email +
           "\r\n\r\n\r\n";
}

/// A payload of `size` characters, headers and all, whose text begins with `text`.
[[nodiscard]] inline std::string textPayloadOfSize(const std::string& text, std::size_t size) {
    std::string payload = textPayload(text);
    payload.resize(size, '.');
    return payload;
}

/// What is sent in place of a chat command, under the command's number.
[[nodiscard]] inline std::string cover(const std::string& number,
                                       const std::string& email = "ann@example.com") {
    return message("MSG " + number + " U",
                   "MIME-Version: 1.0\r\nContent-Type: text/x-msmsgscontrol\r\nTypingUserx " +
                       email + "\r\n\r\n\r\n");
}

/// Words of the program, as the client gets them in the name of a contact.
[[nodiscard]] inline std::string spoken(const std::string& words, const std::string& color = "ff",
                                        const std::string& effects = "",
                                        const std::string& contact = "bob@example.com Bob") {
    return message("MSG " + contact,
                   "MIME-Version: 1.0\r\nContent-Type: text/plain; charset=UTF-8\r\n"
                   "X-MMS-IM-Format: FN=Verdana; EF=" +
                       effects + "; CO=" + color + "; CS=0; PF=00; RL=0\r\n\r\n" + words);
}

/// A connection that relays; its user is signed in, and a contact is there, when a test says so.
class Talk : public testing::Test {
protected:
    Spine spine;

    Talk() { spine.relay(); }

    void set(const std::string& key, const std::string& value) {
        spine.settings.WriteSetting("Options", key, value);
    }

    /// All that the server is sent for one read of the client.
    std::vector<Bytes> toServer(const std::string& chunk, std::size_t connection = 1) {
        spine.server(connection).sent.clear();
        spine.client(connection).arrive(chunk);
        return sentBy(spine.server(connection));
    }
    /// All that the client is sent for one read of the server.
    std::vector<Bytes> toClient(const std::string& chunk, std::size_t connection = 1) {
        spine.client(connection).sent.clear();
        spine.server(connection).arrive(chunk);
        return sentBy(spine.client(connection));
    }
    /// What became of a text that the user typed: the one chunk that the server is sent.
    Bytes typed(const std::string& text, const std::string& number = "12") {
        return only(toServer(clientText(text, number)));
    }
    /// The same for a message with a payload of any kind.
    Bytes sent(const std::string& payload) { return only(toServer(message("MSG 12 N", payload))); }
    /// What became of a message of a contact: the one chunk that the client is sent.
    Bytes received(const std::string& chunk) { return only(toClient(chunk)); }

    /// The account is known as soon as a server has confirmed it.
    void signIn() {
        (void)toClient("USR 3 OK ann@example.com Ann 1 0\r\n");
        (void)toServer("CHG 6 NLN 0\r\n");
    }
    void join(const std::string& contact = "bob@example.com Bob") {
        (void)toClient("JOI " + contact + "\r\n");
        spine.client().sent.clear();
    }

    /// What the client was sent since it was last looked at.
    std::vector<Bytes> newToClient(std::size_t connection = 1) {
        auto chunks = sentBy(spine.client(connection));
        spine.client(connection).sent.clear();
        return chunks;
    }
    std::vector<std::string>& toasts() { return spine.windows.toasts; }
    std::vector<std::string>& logged() { return spine.windows.logged; }

    static std::vector<Bytes> sentBy(const FakeWinsock& socket) {
        return {socket.sent.begin(), socket.sent.end()};
    }
    static Bytes only(const std::vector<Bytes>& chunks) {
        EXPECT_EQ(chunks.size(), 1U) << testing::PrintToString(chunks);
        return chunks.empty() ? Bytes("nothing") : chunks.back();
    }
};
