#include "movies/player/Reader.h"

#include "base/Failure.h"

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

}  // namespace swf
