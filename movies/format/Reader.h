#pragma once

#include "movies/format/geometry.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace swf {

/// Reads the bytes and bits of a movie file from front to back. Every reading fails where the bytes
/// end. Whole bytes are read from the next whole byte on: bits that were left over are skipped.
class Reader {
public:
    /// The bytes stay where they are while the reader lives.
    explicit Reader(std::string_view bytes) : left(bytes) {}

    /// Whole numbers, the low byte first.
    [[nodiscard]] std::uint8_t u8();
    [[nodiscard]] std::uint16_t u16();
    [[nodiscard]] std::uint32_t u32();
    [[nodiscard]] std::int16_t i16();
    /// A number of `count` bits, the most significant first; `count` is at most 32.
    [[nodiscard]] std::uint32_t bits(unsigned count);
    /// The next bit, true for 1.
    [[nodiscard]] bool bit() { return bits(1) != 0; }
    /// A number of `count` bits whose first one is its sign; 0 when `count` is.
    [[nodiscard]] std::int32_t signedBits(unsigned count);
    /// A signed number with 16 bits behind the point.
    [[nodiscard]] float fixedBits(unsigned count);
    /// The text up to the next NUL, which is passed over.
    [[nodiscard]] std::string_view text();
    /// The next `count` bytes as they are.
    [[nodiscard]] std::string_view bytes(std::size_t count);
    /// Passes over `count` bytes.
    void skip(std::size_t count) { static_cast<void>(bytes(count)); }
    /// Goes to the next whole byte.
    void align() { bitsLeft = 0; }

    /// The whole bytes that have not been read.
    [[nodiscard]] std::string_view rest() const { return left; }
    /// Whether no whole byte is left.
    [[nodiscard]] bool atEnd() const { return left.empty(); }

private:
    std::string_view left;
    std::uint8_t partial = 0;
    unsigned bitsLeft = 0;
};

/// The small records that many tags share. Each begins and ends at a whole byte.
[[nodiscard]] Rect readRect(Reader& reader);
[[nodiscard]] Matrix readMatrix(Reader& reader);
/// A transform; without alpha it leaves alpha as it is.
[[nodiscard]] ColorTransform readColorTransform(Reader& reader, bool withAlpha);
/// A colour; without alpha it is opaque.
[[nodiscard]] Color readColor(Reader& reader, bool withAlpha);
/// Passes over a list of filters. Fails at a kind that the format does not know, since its length
/// is unknown too.
void skipFilters(Reader& reader);

}  // namespace swf
