#pragma once

#include "movies/format/codes.h"
#include "movies/format/geometry.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace swf {

/// Writes the bytes and bits of a movie file. Whole bytes begin behind the bits that were written.
class Writer {
public:
    /// Whole numbers, the low byte first; what does not fit is cut off.
    void u8(unsigned value);
    void u16(unsigned value);
    void u32(std::uint32_t value);
    /// A number of one byte that the format has a name for.
    template <typename Code>
    void code(Code value) {
        static_assert(sizeof(Code) == 1);
        u8(static_cast<unsigned>(value));
    }
    /// The text and a NUL.
    void text(std::string_view value);
    /// What another writer has written, or bytes as they are.
    void append(const Writer& other);
    void append(std::string_view other);
    /// The low `count` bits, the most significant first.
    void bits(std::uint32_t value, unsigned count);
    void signedBits(std::int32_t value, unsigned count);
    /// Goes to the next whole byte; the bits between are 0.
    void align() { bitsLeft = 0; }

    /// The small records that many tags share, each from a whole byte to a whole byte. Fractions of
    /// twentieths of a pixel are rounded.
    void rect(const Rect& rect);
    void matrix(const Matrix& matrix);
    /// Writes a colour with or without the byte for alpha.
    void color(Color color, bool withAlpha);

    /// All that was written.
    [[nodiscard]] const std::string& get() const { return content; }

private:
    void pair(double first, double second);

    std::string content;
    unsigned bitsLeft = 0;
};

/// The bits that each of the numbers fits in, sign included.
[[nodiscard]] unsigned bitsFor(const std::vector<std::int32_t>& values);

/// A tag with its head.
[[nodiscard]] Writer tag(Tag code, const Writer& body = {});

}  // namespace swf
