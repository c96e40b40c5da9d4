#include "tests/movies/worstCases.h"

#include "tests/movies/MovieFile.h"
#include "tests/movies/Screening.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using swf::FillType;

constexpr unsigned shapeNumber = 1;
constexpr unsigned pictureNumber = 7;

/// The beginning of a shape of one fill, or of one line of a width in pixels.
Bits filledWith(const Bits& fill) {
    return Bits().u16(shapeNumber).rect(0, 100, 0, 100).u8(1).raw(fill.get()).u8(0).styleBits(1, 0);
}
Bits linedWith(double width) {
    Bits body = Bits().u16(shapeNumber).rect(0, 100, 0, 100).u8(0).u8(1);
    return body.u16(static_cast<unsigned>(width * swf::twipsPerPixel)).rgb(red).styleBits(0, 1);
}
Bits solid() { return Bits().code(FillType::Solid).rgb(red); }

/// `count` times what stands at different places, a little apart.
std::string repeated(MovieFile& movie, const Bits& shape, unsigned count, double step = 0.01) {
    movie.tag(Tag::DefineShape2, shape);
    for (unsigned depth = 1; depth <= count; ++depth)
        movie.place(shapeNumber, depth, depth * step, 0);
    return movie.show().file();
}
std::string repeated(const Bits& shape, unsigned count, double step = 0.01) {
    MovieFile movie;
    return repeated(movie, shape, count, step);
}

Bits zigzag(Bits body, int edges, double width, double step) {
    for (int edge = 0; edge < edges; ++edge)
        body.line(edge % 2 == 0 ? width : -width, step);
    return body.endShape();
}

/// Petals around the middle, each of them two curves that bulge.
Bits flower(Bits body, int petals, bool asLine) {
    if (asLine) {
        body.jumpAndLine(50, 50);
    } else {
        body.jumpAndFill(50, 50, 1);
    }
    for (int petal = 0; petal < petals; ++petal) {
        const double angle = petal * 2 * std::numbers::pi / petals;
        const double x = 45 * std::cos(angle);
        const double y = 45 * std::sin(angle);
        body.curve(x - y / 8, y + x / 8, y / 8, -x / 8);
        body.curve(-y / 8, x / 8, -x + y / 8, -y - x / 8);
        // Fractions of a twentieth of a pixel add up: back to the middle.
        body.jump(50, 50);
    }
    return body.endShape();
}

Bits gradient(FillType kind) {
    Bits fill = Bits().code(kind).matrix(0.06, 0.06, 50, 50).u8(3);
    return fill.u8(0).rgb(red).u8(128).rgb(green).u8(255).rgb(blue);
}

/// As many colours as there may be, whose light is mixed.
std::string lightGradients(unsigned count) {
    Bits fill = Bits().code(FillType::LinearGradient).matrix(0.06, 0.06, 50, 50).u8(0x1F);
    for (unsigned stop = 0; stop < 15; ++stop)
        fill.u8(17 * stop).rgba(stop % 2 == 0 ? red : blue, 255);
    Bits body = Bits().u16(shapeNumber).rect(0, 100, 0, 100).rect(0, 100, 0, 100).u8(0);
    body.u8(1).raw(fill.get()).u8(0).styleBits(1, 0).square(0, 0, 100).endShape();
    MovieFile movie;
    movie.tag(Tag::DefineShape4, body);
    for (unsigned depth = 1; depth <= count; ++depth)
        movie.place(shapeNumber, depth);
    return movie.show().file(8);
}

/// A picture of so many pixels in every direction that is never one colour.
void addPicture(MovieFile& movie, unsigned size, bool withAlpha) {
    Bits pixels;
    for (unsigned y = 0; y < size; ++y) {
        for (unsigned x = 0; x < size; ++x) {
            const unsigned alpha = withAlpha ? (x + y) % 256 : 255;
            pixels.u8(alpha).u8(x % (alpha + 1)).u8(y % (alpha + 1)).u8(0);
        }
    }
    Bits body = Bits().u16(pictureNumber).code(swf::PixelFormat::Pixels32).u16(size).u16(size);
    movie.tag(withAlpha ? Tag::DefineBitsLossless2 : Tag::DefineBitsLossless,
              body.raw(packed(pixels.get())));
}

Bits pictureFill(FillType kind, double scale) {
    return Bits().code(kind).u16(pictureNumber).matrix(scale, scale, 0, 0);
}

std::string pictures(unsigned width, FillType kind, double pixelsPerPixel, bool withAlpha,
                     unsigned count) {
    MovieFile movie;
    addPicture(movie, width, withAlpha);
    const Bits fill = pictureFill(kind, 20 * pixelsPerPixel);
    return repeated(movie, filledWith(fill).square(0, 0, 100).endShape(), count, 0);
}

std::string recoloredPicture(unsigned width, unsigned count) {
    MovieFile movie;
    addPicture(movie, width, false);
    const Bits fill = pictureFill(FillType::ClippedBitmap, 5);
    movie.tag(Tag::DefineShape2, filledWith(fill).square(0, 0, 100).endShape());
    for (unsigned depth = 1; depth <= count; ++depth) {
        Bits place = Bits().u8(swf::placeFlag::Character | swf::placeFlag::Colors).u16(depth);
        place.u16(shapeNumber).bits(1, 2).bits(10, 4);
        place.bits(128, 10).bits(256, 10).bits(64, 10).bits(256, 10);
        movie.tag(Tag::PlaceObject2, place);
    }
    return movie.show().file();
}

std::string translucent(unsigned count) {
    Bits body = Bits().u16(shapeNumber).rect(0, 100, 0, 100).u8(1).code(FillType::Solid);
    body.rgba(red, 10).u8(0).styleBits(1, 0).square(0, 0, 100).endShape();
    MovieFile movie;
    movie.tag(Tag::DefineShape3, body);
    for (unsigned depth = 1; depth <= count; ++depth)
        movie.place(shapeNumber, depth);
    return movie.show().file();
}

/// A mask of so many edges as the shape, and a square of number 2.
MovieFile withMask(int edges) {
    MovieFile movie;
    movie.tag(Tag::DefineShape2,
              zigzag(filledWith(solid()).jumpAndFill(5, 0, 1), edges, 90, 100.0 / edges));
    return movie.square(2, 0, 0, 100, green);
}
void placeMask(MovieFile& movie, unsigned depth, unsigned last) {
    const Bits place = Bits().u8(swf::placeFlag::Character | swf::placeFlag::ClipDepth);
    movie.tag(Tag::PlaceObject2, Bits(place).u16(depth).u16(shapeNumber).u16(last));
}

/// Masks of `edges` edges, each of which bounds one square.
std::string masks(int edges, unsigned count) {
    MovieFile movie = withMask(edges);
    for (unsigned depth = 1; depth < 2 * count; depth += 2) {
        placeMask(movie, depth, depth + 1);
        movie.place(2, depth + 1);
    }
    return movie.show().file();
}

/// Masks that bound each other, and squares within them.
std::string masksInMasks(int edges, unsigned count, unsigned squares) {
    MovieFile movie = withMask(edges);
    for (unsigned depth = 1; depth <= count; ++depth)
        placeMask(movie, depth, 60000);
    for (unsigned depth = count + 1; depth < count + squares; ++depth)
        movie.place(2, depth);
    return movie.show().file();
}

std::string morphs(int edges, unsigned count) {
    Bits styles = Bits().u8(1).code(FillType::Solid).rgba(red, 255).rgba(blue, 255).u8(0);
    const auto outline = [&](Bits bits, double width) {
        return zigzag(std::move(bits), edges, width, 100.0 / edges);
    };
    const Bits start = outline(Bits().styleBits(1, 0).jumpAndFill(5, 0, 1), 90);
    const Bits end = outline(Bits().styleBits(0, 0).jump(5, 0), 50);
    Bits body = Bits().u16(shapeNumber).rect(0, 100, 0, 100).rect(0, 100, 0, 100);
    body.u32(static_cast<std::uint32_t>(styles.get().size() + start.get().size()));
    MovieFile movie;
    movie.tag(Tag::DefineMorphShape, body.raw(styles.get()).raw(start.get()).raw(end.get()));
    for (unsigned depth = 1; depth <= count; ++depth) {
        Bits place = Bits().u8(swf::placeFlag::Character | swf::placeFlag::Ratio);
        movie.tag(Tag::PlaceObject2, place.u16(depth).u16(shapeNumber).u16(depth * 100));
    }
    return movie.show().file();
}

/// Text of small glyphs that are circles.
std::string text(unsigned columns) {
    Bits glyph = Bits().styleBits(1, 0).jumpAndFill(26, 0, 1);
    glyph.curve(25, 0, 0, 25).curve(0, 25, -25, 0).curve(-25, 0, 0, -25).curve(0, -25, 25, 0);
    const Bits font = Bits().u16(3).u16(2).raw(glyph.endShape().get());
    Bits body = Bits().u16(shapeNumber).rect(0, 100, 0, 100).move(0, 0).u8(1).u8(16);
    for (unsigned row = 0; row < 16; ++row) {
        body.u8(0x8F).u16(3).rgb(red).u16(0).u16((6 * row + 5) * 20).u16(10 * 20).u8(columns);
        for (unsigned column = 0; column < columns; ++column)
            body.bits(0, 1).bits(8, 16);
    }
    MovieFile movie;
    movie.tag(Tag::DefineFont, font).tag(Tag::DefineText, body.u8(0));
    for (unsigned depth = 1; depth <= 4; ++depth)
        movie.place(shapeNumber, depth);
    return movie.show().file();
}

/// Sprites within each other, each of which has the next one four times.
std::string sprites() {
    MovieFile movie;
    movie.square(1, 0, 0, 4, red);
    for (unsigned number = 2; number <= 8; ++number) {
        MovieFile inner;
        for (unsigned depth = 1; depth <= 4; ++depth)
            inner.place(number - 1, depth, depth * 3, number * 2);
        movie.sprite(number, inner.show());
    }
    return movie.place(8, 1).show().file();
}

std::string smallSquares(unsigned count) {
    MovieFile movie;
    movie.square(1, 0, 0, 1, red);
    for (unsigned depth = 1; depth <= count; ++depth)
        movie.place(1, depth, depth % 100, depth / 200 % 100);
    return movie.show().file();
}

}  // namespace

std::vector<WorstCase> worstCases(unsigned divisor) {
    const auto some = [divisor](unsigned count) { return std::max(1U, count / divisor); };
    const auto edges = [&](unsigned count) { return static_cast<int>(some(count)); };
    using enum FillType;
    const unsigned width = 400 / static_cast<unsigned>(std::lround(std::sqrt(divisor)));
    const auto zigzagFill = [](int edges, double width) {
        return zigzag(filledWith(solid()).jumpAndFill(5, 0, 1), edges, width, 100.0 / edges);
    };
    const auto zigzagLine = [](int edges, double width, double thick) {
        return zigzag(linedWith(thick).jumpAndLine(5, 0), edges, width, 100.0 / edges);
    };
    const auto square = [](const Bits& fill) {
        return filledWith(fill).square(0, 0, 100).endShape();
    };
    return {
        {"16,384 small squares", smallSquares(some(16384))},
        {"sprites in sprites", sprites()},
        {"wide zigzag", repeated(zigzagFill(edges(500), 90), some(200))},
        {"wide zigzag of 4,000 edges", repeated(zigzagFill(edges(2000), 90), some(200))},
        {"narrow zigzag", repeated(zigzagFill(edges(2000), 1), some(200))},
        {"60,000 edges in one shape",
         repeated(zigzag(filledWith(solid()).jumpAndFill(5, 0, 1), edges(60000), 20, 0.05), 1)},
        {"curves", repeated(flower(filledWith(solid()), 40, false), some(300))},
        {"2,000 curves", repeated(flower(filledWith(solid()), edges(1000), false), some(20))},
        {"30,000 curves in one shape",
         repeated(flower(filledWith(solid()), edges(15000), false), 1)},
        {"squares", repeated(square(solid()), some(16000))},
        {"translucent squares", translucent(some(400))},
        {"linear gradients", repeated(square(gradient(LinearGradient)), some(900))},
        {"radial gradients", repeated(square(gradient(RadialGradient)), some(900))},
        {"gradients of light", lightGradients(some(100))},
        {"gradient in a zigzag",
         repeated(zigzag(filledWith(gradient(LinearGradient)).jumpAndFill(5, 0, 1), 200, 90, 0.5),
                  some(200))},
        {"thin lines", repeated(zigzagLine(edges(500), 90, 0.05), some(200))},
        {"thick lines", repeated(zigzagLine(100, 90, 8), some(200))},
        {"short thick lines", repeated(zigzagLine(edges(2000), 1, 8), some(200))},
        {"curved lines", repeated(flower(linedWith(1), 40, true), some(200))},
        {"pictures as they are", pictures(width, ClippedBitmap, 0.25, false, some(1000))},
        {"pictures with alpha as they are", pictures(width, ClippedBitmap, 0.25, true, some(1000))},
        {"scaled pictures", pictures(width, ClippedBitmap, 0.3, false, some(1000))},
        {"scaled pictures with alpha", pictures(width, ClippedBitmap, 0.3, true, some(1000))},
        {"roughly scaled pictures", pictures(width, RoughClippedBitmap, 0.3, false, some(1000))},
        {"repeated pictures", pictures(width, RepeatingBitmap, 0.1, false, some(1000))},
        {"pictures that extend their edges",
         pictures(width, ClippedBitmap, 0.1, false, some(1000))},
        {"pictures that are made smaller",
         pictures(width, ClippedBitmap, 0.0005, false, some(100))},
        {"recolored pictures", recoloredPicture(width, some(20))},
        {"simple masks", masks(4, some(2000))},
        {"complex masks", masks(edges(500), some(200))},
        {"masks in masks", masksInMasks(edges(500), 6, some(2000))},
        {"many masks in masks", masksInMasks(edges(500), some(200), some(2000))},
        {"morphing", morphs(edges(1000), some(100))},
        {"large morphs", morphs(edges(30000), 3)},
        {"text", text(some(250))},
    };
}
