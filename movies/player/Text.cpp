#include "movies/player/Text.h"

#include "base/Failure.h"
#include "movies/format/codes.h"
#include "movies/player/limits.h"
#include "movies/player/shapeReaders.h"

namespace swf {

namespace {

void readGlyphs(const Reader& table, const std::vector<std::uint32_t>& offsets, Font& font) {
    if (offsets.size() > limits::glyphsPerFont) throw Failure("too many glyphs");
    std::size_t edgesLeft = limits::edgesPerShape;
    for (const std::uint32_t offset : offsets) {
        Reader reader = table;
        reader.skip(offset);
        font.glyphs.push_back(readGlyph(reader, edgesLeft));
        edgesLeft -= font.glyphs.back().edges.size();
    }
}

/// The flag of the second and third font tag for offsets of four bytes.
constexpr unsigned wideOffsets = 8;

/// What holds for the glyphs of a text from one record on.
struct Style {
    Glyph glyph;
    bool hasFont = false;
};

void readTextStyle(Reader& reader, unsigned changes, bool withAlpha, Style& style) {
    const bool font = changes & textFlag::Font;
    if (font) {
        style.glyph.font = reader.u16();
        style.hasFont = true;
    }
    if (changes & textFlag::Color) style.glyph.color = readColor(reader, withAlpha);
    if (changes & textFlag::X) style.glyph.place.x = reader.i16();
    if (changes & textFlag::Y) style.glyph.place.y = reader.i16();
    if (font) style.glyph.height = reader.u16();
}

}  // namespace

Font readFirstFont(Reader& reader) {
    const Reader table = reader;
    std::vector<std::uint32_t> offsets{reader.u16()};
    // The table's first entry leads behind the table, and so gives its length.
    for (std::size_t left = offsets.front() / 2; left > 1; --left)
        offsets.push_back(reader.u16());
    Font font;
    readGlyphs(table, offsets, font);
    return font;
}

Font readNamedFont(Reader& reader, bool fine) {
    const unsigned flags = reader.u8();
    reader.skip(1);
    reader.skip(reader.u8());
    const std::size_t count = reader.u16();
    const Reader table = reader;
    std::vector<std::uint32_t> offsets;
    for (std::size_t left = count; left > 0; --left) {
        offsets.push_back(flags & wideOffsets ? reader.u32() : reader.u16());
    }
    Font font;
    if (fine) font.em = 20480;
    readGlyphs(table, offsets, font);
    return font;
}

Text readText(Reader& reader, bool withAlpha) {
    Text text;
    text.bounds = readRect(reader);
    text.matrix = readMatrix(reader);
    const unsigned glyphBits = reader.u8();
    const unsigned advanceBits = reader.u8();
    if (glyphBits > 32 || advanceBits > 32) throw Failure("numbers too wide");
    Style style;
    while (const unsigned changes = reader.u8()) {
        readTextStyle(reader, changes, withAlpha, style);
        for (unsigned left = reader.u8(); left > 0; --left) {
            style.glyph.index = reader.bits(glyphBits);
            const double advance = reader.signedBits(advanceBits);
            if (text.glyphs.size() == limits::glyphsPerText) throw Failure("too many glyphs");
            if (style.hasFont) text.glyphs.push_back(style.glyph);
            style.glyph.place.x += advance;
        }
        reader.align();
    }
    return text;
}

}  // namespace swf
