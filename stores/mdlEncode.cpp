#include "stores/mdlEncode.h"

#include <array>
#include <cstdint>

namespace {

struct Base64Tables {
    std::array<char, 64> encode{};
    /// 0 for every code outside the alphabet, "=" too.
    std::array<std::uint8_t, 256> decode{};
};

consteval Base64Tables InitBase64Tables() {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    Base64Tables tables;
    for (std::size_t position = 0; position < alphabet.size(); ++position) {
        tables.encode[position] = alphabet[position];
        const auto code = static_cast<std::uint8_t>(alphabet[position]);
        tables.decode[code] = static_cast<std::uint8_t>(position);
    }
    return tables;
}

constexpr Base64Tables tables = InitBase64Tables();

constexpr char digit(unsigned position) { return tables.encode[position & 63U]; }

constexpr unsigned byteAt(std::string_view text, std::size_t index) {
    return static_cast<std::uint8_t>(text[index]);
}

constexpr unsigned valueAt(std::string_view text, std::size_t index) {
    return tables.decode[byteAt(text, index)];
}

/// `text` without the padding at its end, which is two characters at most.
std::string_view withoutPadding(std::string_view text) {
    for (int dropped = 0; dropped < 2 && text.ends_with('='); ++dropped)
        text.remove_suffix(1);
    return text;
}

}  // namespace

std::string mdlEncode::Base64Encode(std::string_view text) {
    std::string encoded((text.size() + 2) / 3 * 4, '=');
    char* out = encoded.data();
    for (; text.size() >= 3; text.remove_prefix(3)) {
        const unsigned bits = byteAt(text, 0) << 16 | byteAt(text, 1) << 8 | byteAt(text, 2);
        *out++ = digit(bits >> 18);
        *out++ = digit(bits >> 12);
        *out++ = digit(bits >> 6);
        *out++ = digit(bits);
    }
    if (!text.empty()) {
        const bool isPair = text.size() > 1;
        const unsigned bits = byteAt(text, 0) << 16 | (isPair ? byteAt(text, 1) << 8 : 0);
        *out++ = digit(bits >> 18);
        *out++ = digit(bits >> 12);
        if (isPair) *out = digit(bits >> 6);
    }
    return encoded;
}

std::optional<std::string> mdlEncode::Base64Decode(std::string_view text) {
    if (text == "=") return std::nullopt;
    text = withoutPadding(text);
    std::string decoded(text.size() * 3 / 4, '\0');
    std::size_t at = 0;
    for (std::size_t out = 0; out < decoded.size(); at += 4) {
        unsigned bits = 0;
        for (std::size_t index = at; index < at + 4; ++index) {
            bits = bits << 6 | (index < text.size() ? valueAt(text, index) : 0);
        }
        for (int shift = 16; shift >= 0 && out < decoded.size(); shift -= 8) {
            decoded[out++] = static_cast<char>(bits >> shift & 0xFFU);
        }
    }
    return decoded;
}
