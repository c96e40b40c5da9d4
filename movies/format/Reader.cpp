#include "movies/format/Reader.h"

#include "base/Failure.h"
#include "movies/format/codes.h"

#include <algorithm>

namespace swf {

std::uint8_t Reader::u8() { return static_cast<std::uint8_t>(bytes(1).front()); }

std::uint16_t Reader::u16() {
    const unsigned low = u8();
    return static_cast<std::uint16_t>(low | static_cast<unsigned>(u8()) << 8U);
}

std::uint32_t Reader::u32() {
    const std::uint32_t low = u16();
    return low | static_cast<std::uint32_t>(u16()) << 16U;
}

std::int16_t Reader::i16() { return static_cast<std::int16_t>(u16()); }

std::uint32_t Reader::bits(unsigned count) {
    std::uint64_t value = 0;
    while (count > 0) {
        if (bitsLeft == 0) {
            if (left.empty()) throw Failure("the bits end");
            partial = static_cast<std::uint8_t>(left.front());
            left.remove_prefix(1);
            bitsLeft = 8;
        }
        const unsigned taken = std::min(count, bitsLeft);
        const unsigned piece = partial >> (bitsLeft - taken) & ((1U << taken) - 1U);
        value = value << taken | piece;
        bitsLeft -= taken;
        count -= taken;
    }
    return static_cast<std::uint32_t>(value);
}

std::int32_t Reader::signedBits(unsigned count) {
    if (count == 0) return 0;
    const std::uint32_t value = bits(count);
    const std::uint32_t sign = 1U << (count - 1U);
    // The number's sign bit spreads to the left.
    return static_cast<std::int32_t>((value ^ sign) - sign);
}

float Reader::fixedBits(unsigned count) { return static_cast<float>(signedBits(count)) / 65536.0F; }

std::string_view Reader::text() {
    const std::size_t length = left.find('\0');
    if (length == std::string_view::npos) throw Failure("a text without an end");
    const std::string_view found = bytes(length);
    skip(1);
    return found;
}

std::string_view Reader::bytes(std::size_t count) {
    align();
    if (count > left.size()) throw Failure("the bytes end");
    const std::string_view found = left.substr(0, count);
    left.remove_prefix(count);
    return found;
}

Rect readRect(Reader& reader) {
    reader.align();
    const unsigned width = reader.bits(5);
    Rect rect;
    rect.left = reader.signedBits(width);
    rect.right = reader.signedBits(width);
    rect.top = reader.signedBits(width);
    rect.bottom = reader.signedBits(width);
    reader.align();
    return rect;
}

Matrix readMatrix(Reader& reader) {
    reader.align();
    Matrix matrix;
    if (reader.bit()) {
        const unsigned width = reader.bits(5);
        matrix.xx = reader.fixedBits(width);
        matrix.yy = reader.fixedBits(width);
    }
    if (reader.bit()) {
        const unsigned width = reader.bits(5);
        matrix.yx = reader.fixedBits(width);
        matrix.xy = reader.fixedBits(width);
    }
    const unsigned width = reader.bits(5);
    matrix.dx = reader.signedBits(width);
    matrix.dy = reader.signedBits(width);
    reader.align();
    return matrix;
}

ColorTransform readColorTransform(Reader& reader, bool withAlpha) {
    reader.align();
    ColorTransform transform;
    const bool adds = reader.bit();
    const bool multiplies = reader.bit();
    const unsigned width = reader.bits(4);
    const std::size_t channels = withAlpha ? 4 : 3;
    for (std::size_t index = 0; multiplies && index < channels; ++index) {
        transform.multiply[index] = reader.signedBits(width);
    }
    for (std::size_t index = 0; adds && index < channels; ++index) {
        transform.add[index] = reader.signedBits(width);
    }
    reader.align();
    return transform;
}

Color readColor(Reader& reader, bool withAlpha) {
    Color color;
    color.red = reader.u8();
    color.green = reader.u8();
    color.blue = reader.u8();
    if (withAlpha) color.alpha = reader.u8();
    return color;
}

void skipFilters(Reader& reader) {
    for (unsigned left = reader.u8(); left > 0; --left) {
        switch (static_cast<FilterType>(reader.u8())) {
            case FilterType::DropShadow: reader.skip(23); break;
            case FilterType::Blur: reader.skip(9); break;
            case FilterType::Glow: reader.skip(15); break;
            case FilterType::Bevel: reader.skip(27); break;
            case FilterType::GradientGlow:
            case FilterType::GradientBevel: {
                const std::size_t colors = reader.u8();
                reader.skip(5 * colors + 19);
                break;
            }
            case FilterType::Convolution: {
                const std::size_t columns = reader.u8();
                const std::size_t rows = reader.u8();
                reader.skip(8 + 4 * columns * rows + 5);
                break;
            }
            case FilterType::ColorMatrix: reader.skip(80); break;
            default: throw Failure("an unknown filter");
        }
    }
}

}  // namespace swf
