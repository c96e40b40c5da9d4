#include "tests/movies/MovieFile.h"
#include "tests/movies/Screening.h"

#include <gtest/gtest.h>

namespace {

/// A glyph that is a square of a whole em above the line, in units of an em of `em` pixels.
Bits glyph(double em) {
    return Bits()
        .styleBits(1, 0)
        .jumpAndFill(0, -em, 1)
        .line(em, 0)
        .line(0, em)
        .line(-em, 0)
        .line(0, -em)
        .endShape();
}

/// An empty glyph and the square.
Bits glyphs(double em, bool wide) {
    const Bits empty = Bits().styleBits(0, 0).endShape();
    const auto first = static_cast<unsigned>(empty.get().size());
    Bits bits;
    if (wide) {
        bits.u32(12).u32(12 + first).u32(0);
    } else {
        bits.u16(4).u16(4 + first);
    }
    return bits.raw(empty.get()).raw(glyph(em).get());
}

Bits named(unsigned flags) { return Bits().u16(3).u8(flags).u8(0).u8(4).raw("Font").u16(2); }

/// Text of one font of number 3: a square 20 pixels high at 10, 50, an empty glyph that takes 30
/// pixels, and another square.
Bits text(bool withAlpha) {
    Bits body = Bits().u16(4).rect(0, 100, 0, 100).move(5, 0).u8(4).u8(16).u8(15).u16(3);
    if (withAlpha) {
        body.rgba(green, 255);
    } else {
        body.rgb(green);
    }
    body.u16(5 * 20).u16(50 * 20).u16(20 * 20);
    body.u8(2).bits(1, 4).bits(20 * 20, 16).bits(0, 4).bits(10 * 20, 16);
    // Goes on in another colour, where the last one ended.
    body.u8(0x84);
    if (withAlpha) {
        body.rgba(red, 255);
    } else {
        body.rgb(red);
    }
    return body.u8(1).bits(1, 4).bits(0, 16).u8(0);
}

void expectText(const MovieFile& movie) {
    Screening screen(movie.file(8));
    EXPECT_EQ(screen.at(12, 45), green);
    EXPECT_EQ(screen.at(28, 32), green);
    EXPECT_EQ(screen.at(12, 55), black);
    EXPECT_EQ(screen.at(12, 28), black);
    EXPECT_EQ(screen.at(35, 45), black);
    EXPECT_EQ(screen.at(45, 45), red);
    EXPECT_EQ(screen.at(62, 45), black);
}

TEST(MovieText, IsDrawnWithTheFirstKindOfFont) {
    MovieFile movie;
    const Bits font = Bits().u16(3).raw(glyphs(1024 / 20.0, false).get());
    movie.tag(Tag::DefineFont, font).tag(Tag::DefineText, text(false)).place(4, 1).show();
    expectText(movie);
}

TEST(MovieText, IsDrawnWithTheSecondKindOfFont) {
    for (const bool wide : {false, true}) {
        // The table of the named kinds has one place more, for the codes.
        Bits table;
        const Bits empty = Bits().styleBits(0, 0).endShape();
        const auto first = static_cast<unsigned>(empty.get().size());
        if (wide) {
            table.u32(12).u32(12 + first).u32(0);
        } else {
            table.u16(6).u16(6 + first).u16(0);
        }
        table.raw(empty.get()).raw(glyph(1024 / 20.0).get());
        MovieFile movie;
        movie.tag(Tag::DefineFont2, named(wide ? 8 : 0).raw(table.get()))
            .tag(Tag::DefineText2, text(true))
            .place(4, 1)
            .show();
        expectText(movie);
    }
}

TEST(MovieText, IsDrawnWithTheThirdKindOfFontWhichIsFiner) {
    const Bits empty = Bits().styleBits(0, 0).endShape();
    const auto first = static_cast<unsigned>(empty.get().size());
    Bits table = Bits().u16(6).u16(6 + first).u16(0).raw(empty.get()).raw(glyph(1024).get());
    MovieFile movie;
    movie.tag(Tag::DefineFont3, named(0).raw(table.get()))
        .tag(Tag::DefineText2, text(true))
        .place(4, 1)
        .show();
    expectText(movie);
}

TEST(MovieText, ShowsNothingWithoutItsFontOrGlyphs) {
    Screening without(MovieFile().tag(Tag::DefineText, text(false)).place(4, 1).show().file());
    EXPECT_EQ(without.at(12, 45), black);
    MovieFile movie;
    const Bits one = Bits().u16(3).u16(2).raw(Bits().styleBits(0, 0).endShape().get());
    movie.tag(Tag::DefineFont, one).tag(Tag::DefineText, text(false)).place(4, 1).show();
    EXPECT_EQ(Screening(movie.file()).at(12, 45), black);
}

TEST(MovieText, BoundsOthersAsAMask) {
    MovieFile movie;
    const Bits font = Bits().u16(3).raw(glyphs(1024 / 20.0, false).get());
    movie.tag(Tag::DefineFont, font).tag(Tag::DefineText, text(false)).square(5, 0, 0, 100, blue);
    Bits mask = Bits().u8(swf::placeFlag::Character | swf::placeFlag::ClipDepth);
    movie.tag(Tag::PlaceObject2, mask.u16(1).u16(4).u16(2));
    Screening screen(movie.place(5, 2).show().file());
    EXPECT_EQ(screen.at(12, 45), blue);
    EXPECT_EQ(screen.at(45, 45), blue);
    EXPECT_EQ(screen.at(35, 45), black);
    EXPECT_EQ(screen.at(12, 55), black);
}

}  // namespace
