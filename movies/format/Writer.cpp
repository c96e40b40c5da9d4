#include "movies/format/Writer.h"

#include <algorithm>
#include <cmath>

namespace swf {

namespace {

std::int32_t rounded(double value) { return static_cast<std::int32_t>(std::lround(value)); }

}  // namespace

void Writer::u8(unsigned value) {
    align();
    content += static_cast<char>(value & 255U);
}

void Writer::u16(unsigned value) {
    u8(value);
    u8(value >> 8U);
}

void Writer::u32(std::uint32_t value) {
    u16(value & 0xFFFFU);
    u16(value >> 16U);
}

void Writer::text(std::string_view value) {
    append(value);
    u8(0);
}

void Writer::append(const Writer& other) { append(other.content); }

void Writer::append(std::string_view other) {
    align();
    content += other;
}

void Writer::bits(std::uint32_t value, unsigned count) {
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

void Writer::signedBits(std::int32_t value, unsigned count) {
    bits(static_cast<std::uint32_t>(value), count);
}

void Writer::rect(const Rect& rect) {
    const std::vector<std::int32_t> sides{rounded(rect.left), rounded(rect.right),
                                          rounded(rect.top), rounded(rect.bottom)};
    const unsigned width = bitsFor(sides);
    align();
    bits(width, 5);
    for (const std::int32_t side : sides)
        signedBits(side, width);
    align();
}

void Writer::pair(double first, double second) {
    const std::vector<std::int32_t> values{rounded(first), rounded(second)};
    const unsigned width = bitsFor(values);
    bits(width, 5);
    for (const std::int32_t value : values)
        signedBits(value, width);
}

void Writer::matrix(const Matrix& matrix) {
    constexpr double one = 65536;
    align();
    const bool scaled = matrix.xx != 1 || matrix.yy != 1;
    bits(scaled, 1);
    if (scaled) pair(matrix.xx * one, matrix.yy * one);
    const bool turned = matrix.yx != 0 || matrix.xy != 0;
    bits(turned, 1);
    if (turned) pair(matrix.yx * one, matrix.xy * one);
    pair(matrix.dx, matrix.dy);
    align();
}

void Writer::color(Color color, bool withAlpha) {
    u8(color.red);
    u8(color.green);
    u8(color.blue);
    if (withAlpha) u8(color.alpha);
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

Writer tag(Tag code, const Writer& body) {
    Writer all;
    const std::size_t length = body.get().size();
    all.u16(static_cast<unsigned>(code) << tagLengthBits |
            static_cast<unsigned>(std::min<std::size_t>(length, longTagLength)));
    if (length >= longTagLength) all.u32(static_cast<std::uint32_t>(length));
    all.append(body);
    return all;
}

}  // namespace swf
