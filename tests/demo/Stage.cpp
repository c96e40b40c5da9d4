#include "tests/demo/Stage.h"

#include "base/Failure.h"
#include "conversation/messageTools.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <optional>
#include <vector>

#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr std::size_t endless = std::string::npos;

/// How many characters a line has room for: as many as the terminal, any number elsewhere.
std::size_t screenWidth() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return endless;
    return size.ws_col;
}

/// Two columns behind a margin of 4, with 3 between them and the last place of the screen free.
struct Columns {
    std::size_t screen = screenWidth();
    std::size_t left = screen == endless ? 58 : std::clamp<std::size_t>((screen - 8) / 2, 16, 58);
    std::size_t right = screen == endless ? endless : std::max<std::size_t>(screen - 8 - left, 16);
    /// Of the left one; elsewhere than on a terminal, a longer line goes on into the right one.
    std::size_t leftFold = screen == endless ? endless : left;
};

/// The text in pieces of up to `width` characters, which end with a blank where there is one.
std::vector<std::string> folded(std::string_view text, std::size_t width) {
    std::vector<std::string> pieces;
    while (text.size() > width) {
        const std::size_t blank = text.rfind(' ', width - 1);
        const std::size_t end = blank == std::string_view::npos ? width : blank + 1;
        pieces.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    pieces.emplace_back(text);
    return pieces;
}

/// The size of the first line with its end.
std::size_t sizeOfLine(std::string_view bytes) {
    const std::size_t found = bytes.find("\r\n");
    return found == std::string_view::npos ? bytes.size() : found + 2;
}

/// The same, with the payload of a message.
std::size_t sizeOfCommand(std::string_view bytes) {
    std::size_t size = sizeOfLine(bytes);
    if (bytes.starts_with("MSG "))
        size += std::max(messageTools::PayloadLength(bytes).value_or(0), 0);
    return std::min(size, bytes.size());
}

/// The lines of a chunk as they can be printed, each with its line end. Each command begins one.
std::vector<std::string> printable(std::string_view bytes) {
    std::vector<std::string> lines;
    while (!bytes.empty()) {
        std::string_view command = bytes.substr(0, sizeOfCommand(bytes));
        bytes.remove_prefix(command.size());
        while (!command.empty()) {
            const std::size_t size = sizeOfLine(command);
            lines.push_back(escaped(command.substr(0, size)));
            command.remove_prefix(size);
        }
    }
    return lines;
}

std::string emphasized(const std::string& text) {
    static const bool terminal = isatty(STDOUT_FILENO) != 0;
    return terminal ? "\x1B[1;33m" + text + "\x1B[0m" : text;
}

std::string filled(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

/// A line of signs below what differs in the second text.
std::string differenceBelow(const std::string& sent, const std::string& received) {
    std::size_t first = 0;
    while (first < std::min(sent.size(), received.size()) && sent[first] == received[first]) {
        ++first;
    }
    std::size_t same = 0;
    while (same < std::min(sent.size(), received.size()) - first &&
           sent[sent.size() - 1 - same] == received[received.size() - 1 - same]) {
        ++same;
    }
    const std::size_t count = std::max<std::size_t>(received.size() - same - first, 1);
    return std::string(first, ' ') + std::string(count, '^');
}

/// Two lines that stand side by side; none where the other end has no counterpart.
struct Row {
    std::optional<std::string> sent;
    std::optional<std::string> received;
};

/// The lines of both ends, with those that are the same opposite each other.
std::vector<Row> aligned(const std::vector<std::string>& left,
                         const std::vector<std::string>& right) {
    // same[i][j]: how many lines can be paired from left line i and right line j on.
    std::vector<std::vector<int>> same(left.size() + 1, std::vector<int>(right.size() + 1));
    for (std::size_t i = left.size(); i-- > 0;) {
        for (std::size_t j = right.size(); j-- > 0;) {
            same[i][j] = left[i] == right[j] ? same[i + 1][j + 1] + 1
                                             : std::max(same[i + 1][j], same[i][j + 1]);
        }
    }
    std::vector<Row> rows;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < left.size() || j < right.size()) {
        const bool inLeft = i < left.size();
        const bool inRight = j < right.size();
        const bool pair =
            inLeft && inRight && (left[i] == right[j] || same[i][j] == same[i + 1][j + 1]);
        if (pair) {
            rows.push_back({left[i++], right[j++]});
        } else if (inLeft && (!inRight || same[i + 1][j] >= same[i][j + 1])) {
            rows.push_back({left[i++], std::nullopt});
        } else {
            rows.push_back({std::nullopt, right[j++]});
        }
    }
    return rows;
}

/// What came, in lines, with what differs from what was sent below each of them.
std::vector<std::string> arrived(const Row& row, std::size_t width) {
    const bool same = row.sent == row.received;
    const std::string text = row.received.value_or("");
    const std::string marks =
        !same && row.sent && row.received ? differenceBelow(*row.sent, text) : "";
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (const std::string& piece : folded(text, width)) {
        lines.push_back(same ? piece : emphasized(piece));
        const std::size_t end = begin + piece.size();
        // A mark for what is missing at the end stands behind it.
        const std::size_t count = end == text.size() ? std::string::npos : piece.size();
        const std::string below = begin < marks.size() ? marks.substr(begin, count) : "";
        if (below.find('^') != std::string::npos) lines.push_back(emphasized(below));
        begin = end;
    }
    return lines;
}

void show(std::string_view sender, const std::string& sent, std::string_view receiver,
          const std::string& received) {
    const Columns columns;
    std::cout << "    " << filled(std::string(sender), columns.left) << "   " << receiver << '\n';
    for (const Row& row : aligned(printable(sent), printable(received))) {
        const auto left = folded(row.sent.value_or(""), columns.leftFold);
        const auto right = arrived(row, columns.right);
        for (std::size_t i = 0; i < std::max(left.size(), right.size()); ++i) {
            const bool marked = i == 0 && row.sent != row.received;
            std::cout << "    " << filled(i < left.size() ? left[i] : "", columns.left)
                      << (marked ? " * " : "   ") << (i < right.size() ? right[i] : "") << '\n';
        }
    }
    std::cout << std::endl;
}

}  // namespace

void Stage::clientSends(std::string_view bytes) {
    show("The client sends", std::string(bytes), "The server receives", relay.up(bytes));
}

void Stage::serverSends(std::string_view bytes) {
    // More than one piece may come of it; a command behind it, sent when the first has arrived,
    // ends the wait.
    constexpr std::string_view mark = "QNG 50\r\n";
    std::string received = relay.down(bytes);
    relay.server.send(mark);
    while (!received.ends_with(mark))
        received += relay.client.receiveOnce();
    received.resize(received.size() - mark.size());
    if (received.size() > bytes.size() && received.ends_with(bytes)) {
        received.resize(received.size() - bytes.size());
        show("", "", "The client receives first", received);
        received = bytes;
    }
    show("The server sends", std::string(bytes), "The client receives", received);
}

void Stage::serverReceives() { show("", "", "The server receives", relay.server.receiveOnce()); }

void Stage::clientReceives() { show("", "", "The client receives", relay.client.receiveOnce()); }

void say(std::string_view text) {
    constexpr std::size_t widest = 96;
    for (const std::string& line : folded(text, std::min(screenWidth(), widest)))
        std::cout << line << '\n';
    std::cout << '\n';
}

void announce(std::string_view headline, std::string_view text) {
    std::cout << emphasized(std::string(headline)) << '\n';
    say(text);
}
