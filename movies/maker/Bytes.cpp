#include "movies/maker/Bytes.h"

#include <algorithm>

void Bytes::u8(unsigned value) {
    align();
    content += static_cast<char>(value & 255U);
}

void Bytes::u16(unsigned value) {
    u8(value);
    u8(value >> 8U);
}

void Bytes::u32(std::uint32_t value) {
    u16(value & 0xFFFFU);
    u16(value >> 16U);
}

void Bytes::text(std::string_view value) {
    append(value);
    u8(0);
}

void Bytes::append(const Bytes& other) { append(other.content); }

void Bytes::append(std::string_view other) {
    align();
    content += other;
}

void Bytes::bits(std::uint32_t value, unsigned count) {
    for (; count > 0; --count) {
        if (bitsLeft == 0) {
            content += '\0';
            bitsLeft = 8;
        }
        --bitsLeft;
        const unsigned bit = value >> (count - 1U) & 1U;
        content.back() =
            static_cast<char>(static_cast<unsigned char>(content.back()) | bit << bitsLeft);
    }
}

void Bytes::signedBits(std::int32_t value, unsigned count) {
    bits(static_cast<std::uint32_t>(value), count);
}

unsigned bitsFor(const std::vector<std::int32_t>& values) {
    unsigned most = 1;
    for (const std::int32_t value : values) {
        unsigned count = 1;
        for (std::int32_t rest = value < 0 ? ~value : value; rest != 0; rest >>= 1)
            ++count;
        most = std::max(most, count);
    }
    return most;
}

Bytes tag(unsigned code, const Bytes& body) {
    constexpr std::size_t longest = 63;
    Bytes all;
    const std::size_t length = body.get().size();
    all.u16(code << 6U | static_cast<unsigned>(std::min(length, longest)));
    if (length >= longest) all.u32(static_cast<std::uint32_t>(length));
    all.append(body);
    return all;
}
