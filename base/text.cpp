#include "base/text.h"

#include "base/Failure.h"

#include <algorithm>

std::string_view piece(std::string_view text, std::string_view separator, std::size_t index) {
    if (text.empty()) throw Failure("no piece in an empty text");
    std::size_t start = 0;
    for (; index > 0; --index) {
        const std::size_t end = text.find(separator, start);
        if (end == std::string_view::npos) throw Failure("too few pieces");
        start = end + separator.size();
    }
    return text.substr(start, text.find(separator, start) - start);
}

std::string_view word(std::string_view text, std::size_t index) { return piece(text, " ", index); }

std::string_view line(std::string_view text, std::size_t index) {
    return piece(text, "\r\n", index);
}

std::string_view characters(std::string_view text, std::size_t first, std::size_t last) {
    return text.substr(std::min(first - 1, text.size()), last - first + 1);
}

std::uint8_t code(std::string_view text, std::size_t position) {
    if (position > text.size()) throw Failure("no character to take the code of");
    return static_cast<std::uint8_t>(text[position - 1]);
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return lower;
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

std::string removeAll(std::string_view text, std::string_view unwanted) {
    return replaceAll(text, unwanted, "");
}
