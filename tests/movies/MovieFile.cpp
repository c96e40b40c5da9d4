#include "tests/movies/MovieFile.h"

#include <QByteArray>

#include <cmath>

namespace {

constexpr int twips = 20;

std::int64_t length(double pixels) { return std::llround(pixels * twips); }

}  // namespace

Bits& Bits::u8(unsigned value) {
    left = 0;
    content += static_cast<char>(value & 255U);
    return *this;
}

Bits& Bits::u16(unsigned value) { return u8(value).u8(value >> 8U); }

Bits& Bits::u32(std::uint32_t value) { return u16(value & 65535U).u16(value >> 16U); }

Bits& Bits::text(std::string_view value) { return raw(value).u8(0); }

Bits& Bits::raw(std::string_view value) {
    left = 0;
    content += value;
    return *this;
}

Bits& Bits::bits(std::int64_t value, unsigned count) {
    for (unsigned shift = count; shift-- > 0;) {
        if (left == 0) {
            content += '\0';
            left = 8;
        }
        --left;
        const auto bit = static_cast<unsigned>(static_cast<std::uint64_t>(value) >> shift & 1U);
        content.back() =
            static_cast<char>(static_cast<unsigned char>(content.back()) | bit << left);
    }
    return *this;
}

Bits& Bits::rgb(std::uint32_t color) { return u8(color >> 16U).u8(color >> 8U).u8(color); }

Bits& Bits::rgba(std::uint32_t color, unsigned alpha) { return rgb(color).u8(alpha); }

Bits& Bits::rect(int leftSide, int right, int top, int bottom) {
    left = 0;
    bits(20, 5);
    for (const int side : {leftSide, right, top, bottom})
        bits(length(side), 20);
    left = 0;
    return *this;
}

Bits& Bits::matrix(double scaleX, double scaleY, double x, double y) {
    left = 0;
    bits(1, 1).bits(31, 5).bits(std::llround(scaleX * 65536), 31);
    bits(std::llround(scaleY * 65536), 31).bits(0, 1);
    bits(20, 5).bits(length(x), 20).bits(length(y), 20);
    left = 0;
    return *this;
}

Bits& Bits::styleBits(unsigned fills, unsigned lines) { return bits(fills, 4).bits(lines, 4); }

Bits& Bits::jump(double x, double y) {
    return bits(1, 6).bits(20, 5).bits(length(x), 20).bits(length(y), 20);
}

Bits& Bits::jumpAndFill(double x, double y, unsigned fill, unsigned count) {
    return bits(5, 6).bits(20, 5).bits(length(x), 20).bits(length(y), 20).bits(fill, count);
}

Bits& Bits::jumpAndLine(double x, double y) {
    return bits(9, 6).bits(20, 5).bits(length(x), 20).bits(length(y), 20).bits(1, 1);
}

Bits& Bits::line(double x, double y) {
    return bits(3, 2).bits(15, 4).bits(1, 1).bits(length(x), 17).bits(length(y), 17);
}

Bits& Bits::curve(double controlX, double controlY, double x, double y) {
    bits(2, 2).bits(15, 4).bits(length(controlX), 17).bits(length(controlY), 17);
    return bits(length(x), 17).bits(length(y), 17);
}

Bits& Bits::square(double x, double y, double size) {
    jumpAndFill(x, y, 1);
    return line(size, 0).line(0, size).line(-size, 0).line(0, -size);
}

MovieFile& MovieFile::tag(unsigned code, const Bits& body) {
    Bits head;
    head.u16(code << 6U | 63U).u32(static_cast<std::uint32_t>(body.get().size()));
    content += head.get() + body.get();
    return *this;
}

MovieFile& MovieFile::show(int frames) {
    for (; frames > 0; --frames)
        tag(1);
    return *this;
}

MovieFile& MovieFile::square(unsigned number, double x, double y, double size,
                             std::uint32_t color) {
    Bits body;
    body.u16(number).rect(0, 100, 0, 100).u8(1).u8(0).rgb(color).u8(0).styleBits(1, 0);
    return tag(2, body.square(x, y, size).endShape());
}

MovieFile& MovieFile::place(unsigned number, unsigned depth, double x, double y) {
    return tag(26, Bits().u8(6).u16(depth).u16(number).move(x, y));
}

MovieFile& MovieFile::placeNamed(unsigned number, unsigned depth, std::string_view name) {
    return tag(26, Bits().u8(34).u16(depth).u16(number).text(name));
}

MovieFile& MovieFile::remove(unsigned depth) { return tag(28, Bits().u16(depth)); }

MovieFile& MovieFile::actions(const Bits& code) { return tag(12, Bits(code).u8(0)); }

MovieFile& MovieFile::label(std::string_view name) { return tag(43, Bits().text(name)); }

MovieFile& MovieFile::sprite(unsigned number, const MovieFile& inner) {
    return tag(39, Bits().u16(number).u16(1).raw(inner.tags()).u16(0));
}

std::string MovieFile::body() const {
    return Bits().rect(0, 100, 0, 100).u16(20 * 256).u16(1).raw(content).u16(0).get();
}

std::string MovieFile::file(unsigned version) const {
    const std::string all = body();
    return Bits().raw("FWS").u8(version).u32(static_cast<std::uint32_t>(all.size() + 8)).get() +
           all;
}

std::string MovieFile::packedFile(unsigned version) const {
    const std::string all = body();
    return Bits().raw("CWS").u8(version).u32(static_cast<std::uint32_t>(all.size() + 8)).get() +
           packed(all);
}

std::string packed(std::string_view bytes) {
    const QByteArray all(bytes.data(), static_cast<qsizetype>(bytes.size()));
    return qCompress(all, 9).mid(4).toStdString();
}

Bits action(unsigned code) { return Bits().u8(code); }

Bits action(unsigned code, const Bits& data) {
    return Bits().u8(code).u16(static_cast<unsigned>(data.get().size())).raw(data.get());
}

Bits operator+(Bits left, const Bits& right) { return left.raw(right.get()); }

Bits pushText(std::string_view text) { return action(0x96, Bits().u8(0).text(text)); }

Bits command(std::string_view name) {
    return action(0x83, Bits().text("FSCommand:" + std::string(name)).text(""));
}
