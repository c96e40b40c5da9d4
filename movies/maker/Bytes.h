#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Writes the bytes and bits of a movie file. Whole bytes begin behind the bits that were written.
class Bytes {
public:
    void u8(unsigned value);
    void u16(unsigned value);
    void u32(std::uint32_t value);
    void text(std::string_view value);
    void append(const Bytes& other);
    void append(std::string_view other);
    void bits(std::uint32_t value, unsigned count);
    void signedBits(std::int32_t value, unsigned count);
    void align() { bitsLeft = 0; }

    [[nodiscard]] const std::string& get() const { return content; }

private:
    std::string content;
    unsigned bitsLeft = 0;
};

/// The bits that each of the numbers fits in, sign included.
[[nodiscard]] unsigned bitsFor(const std::vector<std::int32_t>& values);

/// A tag with its head.
[[nodiscard]] Bytes tag(unsigned code, const Bytes& body);
