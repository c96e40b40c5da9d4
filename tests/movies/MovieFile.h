#pragma once

#include "movies/format/Writer.h"

#include <cstdint>
#include <string>
#include <string_view>

using swf::Action;
using swf::Tag;

/// Bytes and bits of a movie file, one after another. Whole bytes begin behind the bits.
class Bits {
public:
    Bits& u8(unsigned value);
    Bits& u16(unsigned value);
    Bits& u32(std::uint32_t value);
    /// A number of one byte that the format has a name for.
    template <typename Code>
    Bits& code(Code value) {
        return u8(static_cast<unsigned>(value));
    }
    Bits& text(std::string_view value);
    Bits& raw(std::string_view value);
    Bits& bits(std::int64_t value, unsigned count);
    Bits& rgb(std::uint32_t color);
    Bits& rgba(std::uint32_t color, unsigned alpha);
    /// Lengths in pixels, all of these.
    Bits& rect(int left, int right, int top, int bottom);
    Bits& matrix(double scaleX, double scaleY, double x, double y);
    Bits& move(double x, double y) { return matrix(1, 1, x, y); }
    /// The records of a shape: jumps with one choice of styles, lines and curves, and the end.
    Bits& styleBits(unsigned fills, unsigned lines);
    Bits& jump(double x, double y);
    Bits& jumpAndFill(double x, double y, unsigned fill, unsigned count = 1);
    Bits& jumpAndLine(double x, double y);
    Bits& line(double x, double y);
    Bits& curve(double controlX, double controlY, double x, double y);
    Bits& square(double x, double y, double size);
    Bits& endShape() { return bits(0, 6); }

    [[nodiscard]] const std::string& get() const { return writer.get(); }

private:
    swf::Writer writer;
};

/// A movie file, tag by tag, 100 by 100 pixels large.
class MovieFile {
public:
    MovieFile& tag(Tag code, const Bits& body = {});
    MovieFile& show(int frames = 1);
    /// A square that is a shape of the first kind.
    MovieFile& square(unsigned number, double x, double y, double size, std::uint32_t color);
    MovieFile& place(unsigned number, unsigned depth, double x = 0, double y = 0);
    MovieFile& placeNamed(unsigned number, unsigned depth, std::string_view name);
    MovieFile& remove(unsigned depth);
    MovieFile& actions(const Bits& code);
    MovieFile& label(std::string_view name);
    MovieFile& sprite(unsigned number, const MovieFile& content);
    /// Something that nobody knows and that takes many steps to read.
    MovieFile& longToRead();

    [[nodiscard]] const std::string& tags() const { return content; }
    /// What the file is behind its first eight bytes.
    [[nodiscard]] std::string body() const;
    [[nodiscard]] std::string file(unsigned version = 6) const;
    [[nodiscard]] std::string packedFile(unsigned version = 6) const;

private:
    std::string content;
};

/// A button that covers the movie, red and under the mouse green, and says "click" on a press and
/// on the space bar; numbers 1, 2 and 9.
[[nodiscard]] MovieFile clickMovie();

/// What zlib makes of the bytes.
[[nodiscard]] std::string packed(std::string_view bytes);

/// Codes that the player has no name for.
[[nodiscard]] constexpr Tag unknownTag(unsigned code) { return static_cast<Tag>(code); }
[[nodiscard]] constexpr Action unknownAction(unsigned code) { return static_cast<Action>(code); }

/// Byte code of one action.
[[nodiscard]] Bits action(Action code);
[[nodiscard]] Bits action(Action code, const Bits& data);
[[nodiscard]] Bits operator+(Bits left, const Bits& right);
[[nodiscard]] Bits pushText(std::string_view text);
[[nodiscard]] Bits command(std::string_view name);
