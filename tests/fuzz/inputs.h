#pragma once

#include "tests/support/Recording.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// How inputs are written: those that the searches begin with, and what a search makes of one.

/// Each read of an input begins with one of these marks, which no text of the protocol has. What
/// stands before the first one is the client's.
inline constexpr std::string_view clientMark = "\xFF@";
inline constexpr std::string_view serverMark = "\xFF#";

/// In an input for the store, what comes behind this is the write-ahead log of the file before it.
inline constexpr std::string_view logMark = "\xFF the log \xFF";

/// An input as the reads of both sides.
[[nodiscard]] inline std::vector<RecordedRead> readsOf(std::string_view input) {
    std::vector<RecordedRead> reads{{true, ""}};
    while (!input.empty()) {
        const bool isClients = input.starts_with(clientMark);
        if (isClients || input.starts_with(serverMark)) {
            reads.push_back({isClients, ""});
            input.remove_prefix(clientMark.size());
            continue;
        }
        // The next mark, or a byte that is none and only looks like one.
        const std::size_t end = std::min(input.find(clientMark.front(), 1), input.size());
        reads.back().bytes += input.substr(0, end);
        input.remove_prefix(end);
    }
    return reads;
}

/// The read as a part of an input.
[[nodiscard]] inline std::string marked(const RecordedRead& read) {
    return std::string(read.fromClient ? clientMark : serverMark) + read.bytes;
}

/// How many bytes these are in all.
[[nodiscard]] inline std::size_t sizeOf(const std::vector<std::string>& texts) {
    std::size_t size = 0;
    for (const std::string& text : texts)
        size += text.size();
    return size;
}
