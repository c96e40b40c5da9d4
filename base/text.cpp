#include "base/text.h"

#include <algorithm>

namespace {

/// What follows the occurrence number `count` of `separator`.
std::optional<std::string_view> behind(std::string_view text, std::string_view separator,
                                       std::size_t count) {
    for (; count > 0; --count) {
        const std::size_t end = text.find(separator);
        if (end == std::string_view::npos) return std::nullopt;
        text.remove_prefix(end + separator.size());
    }
    return text;
}

char inLowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

}  // namespace

std::optional<std::string_view> piece(std::string_view text, std::string_view separator,
                                      std::size_t index) {
    if (text.empty()) return std::nullopt;
    const auto rest = behind(text, separator, index);
    if (!rest) return std::nullopt;
    return rest->substr(0, rest->find(separator));
}

std::optional<std::string_view> word(std::string_view text, std::size_t index) {
    return piece(text, " ", index);
}

std::optional<std::string_view> line(std::string_view text, std::size_t index) {
    return piece(text, lineEnd, index);
}

std::string_view firstLine(std::string_view text) { return text.substr(0, text.find(lineEnd)); }

std::optional<std::string_view> linesFrom(std::string_view text, std::size_t index) {
    return behind(text, lineEnd, index);
}

std::string_view characters(std::string_view text, std::size_t first, std::size_t last) {
    return text.substr(std::min(first - 1, text.size()), last - first + 1);
}

std::optional<std::uint8_t> code(std::string_view text, std::size_t position) {
    if (position > text.size()) return std::nullopt;
    return static_cast<std::uint8_t>(text[position - 1]);
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), inLowerCase);
    return lower;
}

bool beginsInAnyCase(std::string_view text, std::string_view head) {
    return std::ranges::equal(text.substr(0, head.size()), head, {}, inLowerCase);
}

std::string replaceFirst(std::string text, std::string_view from, std::string_view to) {
    const std::size_t found = text.find(from);
    if (found != std::string::npos) text.replace(found, from.size(), to);
    return text;
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string replaced;
    replaced.reserve(text.size());
    std::size_t start = 0;
    for (std::size_t found = text.find(from); found != std::string_view::npos;
         found = text.find(from, start)) {
        replaced.append(text.substr(start, found - start)).append(to);
        start = found + from.size();
    }
    replaced.append(text.substr(start));
    return replaced;
}

std::size_t occurrences(std::string_view text, std::string_view wanted) {
    std::size_t count = 0;
    for (std::size_t found = text.find(wanted); found != std::string_view::npos;
         found = text.find(wanted, found + wanted.size())) {
        ++count;
    }
    return count;
}

std::string removeAll(std::string_view text, std::string_view unwanted) {
    return replaceAll(text, unwanted, "");
}
