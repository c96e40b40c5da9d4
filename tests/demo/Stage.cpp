#include "tests/demo/Stage.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <optional>
#include <vector>

#include <unistd.h>

namespace {

constexpr std::size_t columnWidth = 58;

/// The lines of a chunk as they can be printed, each with its line end.
std::vector<std::string> printable(std::string_view bytes) {
    std::vector<std::string> lines;
    while (!bytes.empty()) {
        const std::size_t found = bytes.find("\r\n");
        const std::size_t end = found == std::string_view::npos ? bytes.size() : found + 2;
        lines.push_back(escaped(bytes.substr(0, end)));
        bytes.remove_prefix(end);
    }
    return lines;
}

std::string emphasized(const std::string& text) {
    static const bool terminal = isatty(STDOUT_FILENO) != 0;
    return terminal ? "\x1B[1;33m" + text + "\x1B[0m" : text;
}

std::string filled(std::string text) {
    text.resize(std::max(text.size(), columnWidth), ' ');
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

void show(std::string_view sender, const std::string& sent, std::string_view receiver,
          const std::string& received) {
    std::cout << "    " << filled(std::string(sender)) << "   " << receiver << '\n';
    for (const Row& row : aligned(printable(sent), printable(received))) {
        const bool same = row.sent == row.received;
        const std::string after = row.received.value_or("");
        std::cout << "    " << filled(row.sent.value_or("")) << (same ? "   " : " * ")
                  << (same ? after : emphasized(after)) << '\n';
        if (!same && row.sent && row.received) {
            std::cout << "    " << filled("") << "   "
                      << emphasized(differenceBelow(*row.sent, *row.received)) << '\n';
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

void announce(std::string_view headline, std::string_view text) {
    std::cout << emphasized(std::string(headline)) << '\n' << text << "\n\n";
}
