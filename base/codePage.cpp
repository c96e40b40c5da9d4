#include "base/codePage.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

/// The characters of the codes 80 to 9F; all others are those of the same number.
constexpr std::array<char16_t, 32> windowsCharacters = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr std::uint8_t firstWindowsCode = 0x80;

char32_t characterOf(std::uint8_t code) {
    const unsigned index = code - unsigned{firstWindowsCode};
    return code >= firstWindowsCode && index < windowsCharacters.size() ? windowsCharacters[index]
                                                                        : code;
}

char byteOf(char32_t character) {
    const auto* const found =
        std::find(windowsCharacters.begin(), windowsCharacters.end(), character);
    if (found != windowsCharacters.end()) {
        return static_cast<char>(firstWindowsCode + (found - windowsCharacters.begin()));
    }
    const bool ownNumber = character < firstWindowsCode || (character >= 0xA0 && character <= 0xFF);
    return ownNumber ? static_cast<char>(character) : '?';
}

void appendUtf8(std::string& text, char32_t character) {
    const auto put = [&text](char32_t bits) { text += static_cast<char>(bits); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | (character >> 6));
        put(0x80 | (character & 0x3F));
    } else {
        put(0xE0 | (character >> 12));
        put(0x80 | ((character >> 6) & 0x3F));
        put(0x80 | (character & 0x3F));
    }
}

/// What `text` begins with that is the same in UTF-8 and in the code page.
std::string_view asciiAtFront(std::string_view text) {
    const auto isAscii = [](char byte) { return static_cast<std::uint8_t>(byte) < 0x80; };
    const auto* const end = std::find_if_not(text.begin(), text.end(), isAscii);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

/// The number of bytes of the character that `lead` begins; 0 when it begins none.
std::size_t lengthFromLead(std::uint8_t lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    if (lead >= 0xF0 && lead < 0xF5) return 4;
    return 0;
}

/// The number that the first `length` bytes, those of one character, are.
char32_t characterAtFront(std::string_view utf8, std::size_t length) {
    const auto lead = static_cast<std::uint8_t>(utf8.front());
    char32_t character = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (const char byte : utf8.substr(1, length - 1)) {
        character = (character << 6) | (static_cast<std::uint8_t>(byte) & 0x3F);
    }
    return character;
}

/// The number of bytes of the character that `utf8` begins with; 0 when it begins with none: bytes
/// are missing, the character has a shorter form, or no such character exists.
std::size_t lengthAtFront(std::string_view utf8) {
    const std::size_t length = lengthFromLead(static_cast<std::uint8_t>(utf8.front()));
    if (length == 0 || length > utf8.size()) return 0;
    const std::string_view rest = utf8.substr(1, length - 1);
    const bool whole = std::all_of(rest.begin(), rest.end(), codePage::isContinuation);
    if (!whole) return 0;
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    const char32_t character = characterAtFront(utf8, length);
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    const bool exists = character >= smallest[length] && character <= 0x10FFFF && !surrogate;
    return exists ? length : 0;
}

}  // namespace

std::string codePage::toUtf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::string_view ascii = asciiAtFront(bytes);
        text += ascii;
        bytes.remove_prefix(ascii.size());
        if (bytes.empty()) break;
        appendUtf8(text, characterOf(static_cast<std::uint8_t>(bytes.front())));
        bytes.remove_prefix(1);
    }
    return text;
}

std::string codePage::fromUtf8(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::string_view ascii = asciiAtFront(utf8);
        bytes += ascii;
        utf8.remove_prefix(ascii.size());
        if (utf8.empty()) break;
        const std::size_t length = lengthAtFront(utf8);
        if (length == 0) {
            bytes += '?';
            utf8.remove_prefix(1);
            continue;
        }
        bytes += byteOf(characterAtFront(utf8, length));
        utf8.remove_prefix(length);
    }
    return bytes;
}

bool codePage::isUtf8(std::string_view bytes) {
    for (;;) {
        bytes.remove_prefix(asciiAtFront(bytes).size());
        if (bytes.empty()) return true;
        const std::size_t length = lengthAtFront(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
}

bool codePage::isContinuation(char byte) {
    return (static_cast<std::uint8_t>(byte) & 0xC0) == 0x80;
}

std::string_view codePage::cutUtf8(std::string_view utf8, std::size_t size) {
    if (utf8.size() <= size) return utf8;
    while (size > 0 && isContinuation(utf8[size]))
        --size;
    return utf8.substr(0, size);
}

std::size_t codePage::controlAtFront(std::string_view utf8) {
    const auto code = [&](std::size_t index) {
        return index < utf8.size() ? static_cast<std::uint8_t>(utf8[index]) : 0xFF;
    };
    if (code(0) < 0x20 || code(0) == 0x7F) return 1;
    return code(0) == 0xC2 && code(1) >= 0x80 && code(1) < 0xA0 ? 2 : 0;
}

std::string codePage::printable(std::string_view utf8) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string shown;
    while (!utf8.empty()) {
        const std::size_t control = controlAtFront(utf8);
        const std::size_t length = lengthAtFront(utf8);
        const bool isShown = control == 0 && length > 0;
        const std::string_view front = utf8.substr(0, std::max<std::size_t>(length, 1));
        for (const char byte : front) {
            const auto code = static_cast<std::uint8_t>(byte);
            if (isShown) {
                shown += byte;
            } else {
                shown.append("\\x") += digits[code >> 4];
                shown += digits[code & 0xF];
            }
        }
        utf8.remove_prefix(front.size());
    }
    return shown;
}
