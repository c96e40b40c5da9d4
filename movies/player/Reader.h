#pragma once

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

    [[nodiscard]] std::uint8_t u8();
    [[nodiscard]] std::uint16_t u16();
    [[nodiscard]] std::uint32_t u32();
    [[nodiscard]] std::int16_t i16();
    /// A number of `count` bits, the most significant first; `count` is at most 32.
    [[nodiscard]] std::uint32_t bits(unsigned count);
    [[nodiscard]] bool bit() { return bits(1) != 0; }
    [[nodiscard]] std::int32_t signedBits(unsigned count);
    /// A signed number with 16 bits behind the point.
    [[nodiscard]] float fixedBits(unsigned count);
    /// The text up to the next NUL, which is passed over.
    [[nodiscard]] std::string_view text();
    [[nodiscard]] std::string_view bytes(std::size_t count);
    void skip(std::size_t count) { static_cast<void>(bytes(count)); }
    void align() { bitsLeft = 0; }

    /// The whole bytes that have not been read.
    [[nodiscard]] std::string_view rest() const { return left; }
    [[nodiscard]] bool atEnd() const { return left.empty(); }

private:
    std::string_view left;
    std::uint8_t partial = 0;
    unsigned bitsLeft = 0;
};

}  // namespace swf
