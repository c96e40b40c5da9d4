#include "tests/movies/MovieFile.h"
#include "tests/movies/Screening.h"

#include <gtest/gtest.h>

namespace {

using swf::FillType;

Bits head(unsigned number) { return Bits().u16(number).rect(0, 100, 0, 100); }

/// A movie that shows a square, from 10 to 90, of a fill; the tag is one of the four of shapes.
std::string filled(Tag code, const Bits& fill) {
    Bits body = head(1);
    if (code == Tag::DefineShape4) body.rect(0, 100, 0, 100).u8(0);
    body.u8(1).raw(fill.get()).u8(0).styleBits(1, 0).square(10, 10, 80).endShape();
    MovieFile movie;
    return movie.tag(code, body).place(1, 1).show().file(8);
}

TEST(MovieShape, IsFilledWithAColor) {
    for (const Tag code : {Tag::DefineShape, Tag::DefineShape2}) {
        Screening screen(filled(code, Bits().u8(0).rgb(red)));
        EXPECT_EQ(screen.at(50, 50), red) << static_cast<int>(code);
        EXPECT_EQ(screen.at(5, 50), black) << static_cast<int>(code);
        EXPECT_EQ(screen.at(95, 50), black) << static_cast<int>(code);
    }
    for (const Tag code : {Tag::DefineShape3, Tag::DefineShape4}) {
        Screening screen(filled(code, Bits().u8(0).rgba(green, 128)));
        EXPECT_NEAR(qGreen(screen.at(50, 50)), 128, 1) << static_cast<int>(code);
    }
}

TEST(MovieShape, IsCrispWhenItIsLarge) {
    Screening screen(filled(Tag::DefineShape, Bits().u8(0).rgb(red)));
    const QImage image = screen.picture(4);
    EXPECT_EQ(image.pixel(39, 200) & 0xFFFFFFU, black);
    EXPECT_EQ(image.pixel(40, 200) & 0xFFFFFFU, red);
}

/// A gradient's square is 1638.4 pixels wide; this brings it to the given width.
Bits gradient(FillType kind, double width, double x, double y) {
    Bits bits = Bits().code(kind).matrix(width / 1638.4, width / 1638.4, x, y);
    return bits.u8(2).u8(0).rgb(black).u8(255).rgb(white);
}

TEST(MovieShape, IsFilledWithALinearGradient) {
    Screening screen(filled(Tag::DefineShape, gradient(FillType::LinearGradient, 80, 50, 50)));
    EXPECT_NEAR(qRed(screen.at(20, 50)), 255 / 8, 6);
    EXPECT_NEAR(qRed(screen.at(50, 30)), 128, 4);
    EXPECT_NEAR(qRed(screen.at(80, 70)), 255 * 7 / 8, 6);
}

TEST(MovieShape, IsFilledWithARadialGradient) {
    Screening screen(filled(Tag::DefineShape2, gradient(FillType::RadialGradient, 80, 50, 50)));
    EXPECT_LT(qRed(screen.at(50, 50)), 10);
    EXPECT_NEAR(qRed(screen.at(70, 50)), 128, 8);
    EXPECT_NEAR(qRed(screen.at(50, 30)), 128, 8);
    EXPECT_EQ(screen.at(12, 12), white);
}

TEST(MovieShape, RepeatsOrReflectsAGradient) {
    const auto spread = [](unsigned mode) {
        Bits fill = Bits().code(FillType::LinearGradient).matrix(20 / 1638.4, 20 / 1638.4, 20, 50);
        return fill.u8(mode << 6U | 2U).u8(0).rgba(black, 255).u8(255).rgba(white, 255);
    };
    EXPECT_EQ(Screening(filled(Tag::DefineShape4, spread(0))).at(35, 50), white);
    EXPECT_LT(qRed(Screening(filled(Tag::DefineShape4, spread(1))).at(48, 50)), 60);
    EXPECT_LT(qRed(Screening(filled(Tag::DefineShape4, spread(2))).at(32, 50)), 60);
    EXPECT_GT(qRed(Screening(filled(Tag::DefineShape4, spread(2))).at(48, 50)), 190);
}

TEST(MovieShape, BeginsAGradientWithTheLastOfTheColorsThatAreThere) {
    Bits fill = Bits().code(FillType::LinearGradient).matrix(80 / 1638.4, 80 / 1638.4, 50, 50);
    fill.u8(3).u8(0).rgb(red).u8(0).rgb(green).u8(255).rgb(blue);
    EXPECT_GT(qGreen(Screening(filled(Tag::DefineShape, fill)).at(11, 50)), 240);
}

TEST(MovieShape, ShowsNothingForAPictureThatIsNotThere) {
    EXPECT_EQ(
        Screening(filled(Tag::DefineShape, Bits().code(FillType::ClippedBitmap).u16(9).move(0, 0)))
            .at(50, 50),
        black);
}

TEST(MovieShape, HasCurvesAndHoles) {
    Bits body = head(1).u8(1).u8(0).rgb(red).u8(0).styleBits(1, 0);
    body.jumpAndFill(50, 10, 1).curve(40, 0, 0, 40).curve(0, 40, -40, 0);
    body.curve(-40, 0, 0, -40).curve(0, -40, 40, 0);
    // A hole, drawn the other way round.
    body.jump(40, 40).line(0, 20).line(20, 0).line(0, -20).line(-20, 0).endShape();
    Screening screen(MovieFile().tag(Tag::DefineShape, body).place(1, 1).show().file());
    EXPECT_EQ(screen.at(50, 50), black);
    EXPECT_EQ(screen.at(50, 20), red);
    EXPECT_EQ(screen.at(20, 50), red);
    EXPECT_EQ(screen.at(13, 13), black);
}

TEST(MovieShape, MayHaveAFillOnEachSideOfAnEdge) {
    Bits body = head(1).u8(2).u8(0).rgb(red).u8(0).rgb(blue).u8(0).styleBits(2, 0);
    // The left half is red and the right one blue; the edge between is drawn once.
    body.jumpAndFill(50, 90, 1, 2).line(-40, 0).line(0, -80).line(40, 0);
    body.jumpAndFill(50, 10, 2, 2).line(40, 0).line(0, 80).line(-40, 0);
    body.bits(7, 6).bits(20, 5).bits(1000, 20).bits(200, 20).bits(2, 2).bits(1, 2);
    body.line(0, 80).endShape();
    Screening screen(MovieFile().tag(Tag::DefineShape, body).place(1, 1).show().file());
    EXPECT_EQ(screen.at(30, 50), red);
    EXPECT_EQ(screen.at(70, 50), blue);
}

TEST(MovieShape, PutsNewStylesOnTopOfTheOldOnes) {
    Bits body = head(1).u8(1).u8(0).rgb(red).u8(0).styleBits(1, 0).square(10, 10, 80);
    body.bits(swf::styleChange::NewStyles, 6)
        .u8(1)
        .u8(0)
        .rgb(blue)
        .u8(0)
        .styleBits(1, 0)
        .square(30, 30, 40)
        .endShape();
    Screening screen(MovieFile().tag(Tag::DefineShape2, body).place(1, 1).show().file());
    EXPECT_EQ(screen.at(20, 20), red);
    EXPECT_EQ(screen.at(50, 50), blue);
}

TEST(MovieShape, MayHaveMoreThan254Styles) {
    Bits body = head(1).u8(255).u16(300);
    for (int index = 0; index < 300; ++index)
        body.u8(0).rgb(index == 299 ? green : red);
    body.u8(0).styleBits(9, 0).jumpAndFill(0, 0, 300, 9);
    body.line(90, 0).line(0, 90).line(-90, 0).line(0, -90).endShape();
    Screening screen(MovieFile().tag(Tag::DefineShape2, body).place(1, 1).show().file());
    EXPECT_EQ(screen.at(50, 50), green);
}

TEST(MovieShape, HasLines) {
    Bits body = head(1).u8(0).u8(1).u16(200).rgb(red).styleBits(0, 1);
    body.jumpAndLine(20, 50).line(60, 0).endShape();
    Screening screen(MovieFile().tag(Tag::DefineShape, body).place(1, 1).show().file());
    EXPECT_EQ(screen.at(50, 46), red);
    EXPECT_EQ(screen.at(50, 53), red);
    EXPECT_EQ(screen.at(50, 57), black);
    // The end is round.
    EXPECT_EQ(screen.at(17, 50), red);
    EXPECT_EQ(screen.at(13, 50), black);
}

TEST(MovieShape, HasLinesThatEndAsTheySay) {
    const auto ending = [](unsigned cap, const Bits& paint, bool filled) {
        Bits body = head(1).rect(0, 100, 0, 100).u8(0).u8(0).u8(1).u16(200);
        body.bits(cap, 2).bits(2, 2).bits(filled, 1).bits(0, 9).bits(cap, 2).u16(3 * 256);
        body.raw(paint.get()).styleBits(0, 1).jumpAndLine(20, 50).line(60, 0).endShape();
        return Screening(MovieFile().tag(Tag::DefineShape4, body).place(1, 1).show().file());
    };
    const Bits color = Bits().rgba(red, 255);
    EXPECT_EQ(ending(1, color, false).at(18, 50), black);
    EXPECT_EQ(ending(1, color, false).at(22, 46), red);
    EXPECT_EQ(ending(2, color, false).at(15, 45), red);
    EXPECT_EQ(ending(0, color, false).at(15, 45), black);
    EXPECT_EQ(ending(0, Bits().u8(0).rgba(green, 255), true).at(50, 50), green);
}

TEST(MovieShape, ShowsThinLinesOnePixelWide) {
    Bits body = head(1).u8(0).u8(1).u16(0).rgb(white).styleBits(0, 1);
    body.jumpAndLine(20, 50.5).line(60, 0).endShape();
    Screening screen(MovieFile().tag(Tag::DefineShape, body).place(1, 1).show().file());
    EXPECT_GT(qRed(screen.at(50, 50)), 200);
    EXPECT_EQ(screen.at(50, 52), black);
}

/// A square that morphs: to the right, larger, and from red to blue.
std::string morphing(unsigned ratio, Tag code) {
    Bits styles = Bits().u8(1).u8(0).rgba(red, 255).rgba(blue, 255).u8(0);
    const Bits start = Bits().styleBits(1, 0).square(0, 0, 20).endShape();
    Bits end = Bits().styleBits(0, 0).jump(40, 40);
    end.line(60, 0).curve(0, 30, 0, 30).line(-60, 0).line(0, -60).endShape();
    Bits body = head(1).rect(0, 100, 0, 100);
    if (code == Tag::DefineMorphShape2) body.rect(0, 100, 0, 100).rect(0, 100, 0, 100).u8(0);
    body.u32(static_cast<std::uint32_t>(styles.get().size() + start.get().size()));
    body.raw(styles.get()).raw(start.get()).raw(end.get());
    const Bits place = Bits().u8(18).u16(1).u16(1).u16(ratio);
    return MovieFile().tag(code, body).tag(Tag::PlaceObject2, place).show().file();
}

TEST(MovieShape, MorphsWithItsRatio) {
    for (const Tag code : {Tag::DefineMorphShape, Tag::DefineMorphShape2}) {
        Screening start(morphing(0, code));
        EXPECT_EQ(start.at(10, 10), red);
        EXPECT_EQ(start.at(50, 50), black);
        Screening end(morphing(65535, code));
        EXPECT_EQ(end.at(10, 10), black);
        EXPECT_EQ(end.at(90, 90), blue);
        Screening middle(morphing(32768, code));
        EXPECT_EQ(middle.at(10, 10), black);
        EXPECT_NEAR(qRed(middle.at(40, 40)), 128, 2);
        EXPECT_NEAR(qBlue(middle.at(40, 40)), 128, 2);
        EXPECT_EQ(middle.at(65, 65), black);
    }
}

}  // namespace
