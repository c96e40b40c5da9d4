#include "tests/demo/Stage.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
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

void show(std::string_view sender, const std::string& sent, std::string_view receiver,
          const std::string& received) {
    std::cout << "    " << filled(std::string(sender) + " sends") << "   " << receiver
              << " receives\n";
    const auto left = printable(sent);
    const auto right = printable(received);
    for (std::size_t row = 0; row < std::max(left.size(), right.size()); ++row) {
        const std::string before = row < left.size() ? left[row] : "";
        const std::string after = row < right.size() ? right[row] : "";
        const bool same = before == after;
        std::cout << "    " << filled(before) << (same ? "   " : " * ")
                  << (same ? after : emphasized(after)) << '\n';
        if (!same) {
            std::cout << "    " << filled("") << "   "
                      << emphasized(differenceBelow(before, after)) << '\n';
        }
    }
    std::cout << std::endl;
}

}  // namespace

void Stage::clientSends(std::string_view bytes) {
    show("The client", std::string(bytes), "the server", relay.up(bytes));
}

void Stage::serverSends(std::string_view bytes) {
    show("The server", std::string(bytes), "the client", relay.down(bytes));
}

void announce(std::string_view headline, std::string_view text) {
    std::cout << emphasized(std::string(headline)) << '\n' << text << "\n\n";
}
