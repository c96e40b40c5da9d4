#pragma once

#include "tests/conversation/Talk.h"
#include "tests/support/Recording.h"

#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <vector>

/// What came of one read.
struct Outcome {
    std::vector<Bytes> toServer;
    std::vector<Bytes> toClient;
    std::vector<std::string> toasts;
    std::vector<std::string> logged;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

inline void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << "to the server " << testing::PrintToString(outcome.toServer) << ", to the client "
         << testing::PrintToString(outcome.toClient) << ", toasts "
         << testing::PrintToString(outcome.toasts) << ", log "
         << testing::PrintToString(outcome.logged);
}

/// `text` with the first `from`, which is there, replaced.
[[nodiscard]] inline std::string replaced(std::string text, const std::string& from,
                                          const std::string& to) {
    const std::size_t found = text.find(from);
    EXPECT_NE(found, std::string::npos) << from << " in " << escaped(text);
    return found == std::string::npos ? text : text.replace(found, from.size(), to);
}

/// A single message, taken to pieces without any of the program's tools.
struct Message {
    std::string head;
    std::string payload;

    static bool is(const std::string& read) {
        if (!read.starts_with("MSG ")) return false;
        const std::size_t end = read.find("\r\n");
        const std::size_t length = read.rfind(' ', end) + 1;
        return std::stoul(read.substr(length, end - length)) == read.size() - end - 2;
    }
    explicit Message(const std::string& read) {
        const std::size_t end = read.find("\r\n");
        head = read.substr(0, read.rfind(' ', end));
        payload = read.substr(end + 2);
    }
    [[nodiscard]] bool hasFormat() const { return payload.find("X-MMS-IM") != std::string::npos; }
    [[nodiscard]] std::string text() const { return payload.substr(payload.find("\r\n\r\n") + 4); }
};

/// The account of the connections on which no server names one.
inline const std::string account = "me@example.com";

/// Each connection of a real client and server, with one feature on at a time.
class PlayedRecording : public Talk, public testing::WithParamInterface<std::string> {
protected:
    std::vector<RecordedRead> reads = readRecording(GetParam());

    PlayedRecording() { spine.host.values.email = account; }

    /// The text that the client sends with `read`, where that is a single message with a text.
    static std::string typedIn(const RecordedRead& read) {
        const bool single = Message::is(read.bytes) && Message(read.bytes).hasFormat();
        return read.fromClient && single ? Message(read.bytes).text() : "";
    }
    static std::string numberOf(const RecordedRead& read) {
        return read.bytes.substr(4, read.bytes.find(' ', 4) - 4);
    }
    /// A single message with a part of its payload replaced.
    static Bytes altered(const RecordedRead& read, const std::string& from, const std::string& to) {
        const Message whole(read.bytes);
        return message(whole.head, replaced(whole.payload, from, to));
    }
    /// What the program makes of a read with nothing on: it relays it, but for the one command and
    /// the one constant that were typed.
    static Outcome plain(const RecordedRead& read) {
        if (!read.fromClient) return {{}, {read.bytes}, {}, {}};
        if (typedIn(read).starts_with("!nick ")) {
            return {{cover(numberOf(read))}, {}, {"Changed Nick Name To:\r\nSomebody Else"}, {}};
        }
        if (typedIn(read).starts_with("<me>"))
            return {{altered(read, "<me>", account)}, {}, {}, {}};
        return {{read.bytes}, {}, {}, {}};
    }
    Outcome outcomeOf(const RecordedRead& read) {
        FakeWinsock& client = spine.client(connection);
        FakeWinsock& server = spine.server(connection);
        toasts().clear();
        logged().clear();
        client.sent.clear();
        server.sent.clear();
        (read.fromClient ? client : server).arrive(read.bytes);
        return {sentBy(server), sentBy(client), toasts(), logged()};
    }
    /// Plays the recording. `change` makes of what is expected otherwise what it is with the
    /// feature, and says whether it did; `changes` is how often it does in each recording, none in
    /// those that are not named, so that no feature passes for want of something to do.
    void expectOnly(const std::map<std::string, int>& changes,
                    const std::function<bool(const RecordedRead&, Outcome&)>& change) {
        int changed = 0;
        for (const RecordedRead& read : reads) {
            Outcome expected = plain(read);
            changed += change(read, expected) ? 1 : 0;
            EXPECT_EQ(outcomeOf(read), expected) << escaped(read.bytes);
        }
        const auto found = changes.find(GetParam());
        EXPECT_EQ(changed, found == changes.end() ? 0 : found->second);
    }
    /// Has the user type another text of the same length.
    void retype(const std::string& from, const std::string& to) {
        ASSERT_EQ(from.size(), to.size());
        for (RecordedRead& read : reads) {
            if (typedIn(read) == from) read.bytes = replaced(read.bytes, from, to);
        }
    }
    void playAgain() {
        spine.relay();
        ++connection;
    }

private:
    std::size_t connection = 1;
};
