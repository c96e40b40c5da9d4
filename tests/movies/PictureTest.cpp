#include "movies/qt/MoviePictures.h"

#include "movies/player/limits.h"
#include "tests/movies/MovieFile.h"
#include "tests/movies/Screening.h"
#include "tests/support/waiting.h"

#include <QBuffer>

#include <gtest/gtest.h>

namespace {

/// The picture of number 7 as the program makes it.
MoviePicture made(Tag code, const Bits& body, const std::string& before = {}) {
    const std::string tags =
        before + MovieFile().tag(code, Bits().u16(7).raw(body.get())).show().tags();
    const std::string file =
        Bits().raw("FWS").u8(8).u32(0).rect(0, 100, 0, 100).u16(0).u16(1).raw(tags).get();
    MoviePictures pictures(swf::readMovie(file));
    MoviePicture picture;
    EXPECT_TRUE(becomesTrue([&] {
        picture = pictures.find(7, true);
        return !pictures.isPacked(7);
    }));
    return picture;
}
QImage pictureOf(Tag code, const Bits& body, const std::string& before = {}) {
    return made(code, body, before).image;
}

std::string jpeg(int width, int height, QRgb color) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "jpeg", 95);
    return bytes.toStdString();
}

void expectNear(QRgb color, int redPart, int greenPart, int bluePart, int alpha) {
    EXPECT_NEAR(qRed(color), redPart, 4);
    EXPECT_NEAR(qGreen(color), greenPart, 4);
    EXPECT_NEAR(qBlue(color), bluePart, 4);
    EXPECT_EQ(qAlpha(color), alpha);
}

TEST(MoviePicture, IsUnpackedFromAPalette) {
    // Rows of three pixels take four bytes.
    const std::string pixels = Bits().rgb(red).rgb(blue).u32(0x99000100).u32(0x01010101).get();
    const QImage image =
        pictureOf(Tag::DefineBitsLossless, Bits().u8(3).u16(3).u16(2).u8(1).raw(packed(pixels)));
    ASSERT_EQ(image.size(), QSize(3, 2));
    EXPECT_EQ(image.pixel(0, 0), 0xFFFF0000);
    EXPECT_EQ(image.pixel(1, 0), 0xFF0000FF);
    EXPECT_EQ(image.pixel(2, 0), 0xFFFF0000);
    EXPECT_EQ(image.pixel(2, 1), 0xFF0000FF);
}

TEST(MoviePicture, IsUnpackedFromAPaletteWithAlpha) {
    const std::string pixels = Bits().rgba(0x400000, 64).rgba(0, 0).u32(0x00000100).get();
    const QImage image =
        pictureOf(Tag::DefineBitsLossless2, Bits().u8(3).u16(2).u16(1).u8(1).raw(packed(pixels)));
    EXPECT_EQ(image.pixel(0, 0), 0x40400000U);
    EXPECT_EQ(qAlpha(image.pixel(1, 0)), 0);
}

TEST(MoviePicture, IsUnpackedFromFifteenBits) {
    const std::string pixels = Bits().u8(0x7C).u8(0x00).u8(0x03).u8(0xE0).get();
    const QImage image =
        pictureOf(Tag::DefineBitsLossless, Bits().u8(4).u16(2).u16(1).raw(packed(pixels)));
    EXPECT_EQ(image.pixel(0, 0), 0xFFFF0000);
    EXPECT_EQ(image.pixel(1, 0), 0xFF00FF00);
}

TEST(MoviePicture, IsUnpackedFromThirtyTwoBitsWithAlpha) {
    const std::string pixels = Bits().u8(128).rgb(0x008000).u8(255).rgb(blue).get();
    const QImage image =
        pictureOf(Tag::DefineBitsLossless2, Bits().u8(5).u16(2).u16(1).raw(packed(pixels)));
    EXPECT_EQ(image.pixel(0, 0), 0x80008000U);
    EXPECT_EQ(image.pixel(1, 0), 0xFF0000FF);
}

TEST(MoviePicture, IsNothingWhenPixelsAreMissingOrTheKindIsUnknown) {
    EXPECT_TRUE(
        pictureOf(Tag::DefineBitsLossless, Bits().u8(5).u16(2).u16(2).raw(packed("abc"))).isNull());
    EXPECT_TRUE(
        pictureOf(Tag::DefineBitsLossless, Bits().u8(5).u16(2).u16(2).raw("no zlib")).isNull());
    EXPECT_TRUE(
        pictureOf(Tag::DefineBitsLossless, Bits().u8(9).u16(2).u16(2).raw(packed("abc"))).isNull());
    EXPECT_TRUE(
        pictureOf(Tag::DefineBitsLossless, Bits().u8(5).u16(0).u16(2).raw(packed("abc"))).isNull());
}

TEST(MoviePicture, MayBeAJpeg) {
    const QImage image = pictureOf(Tag::DefineBitsJPEG2, Bits().raw(jpeg(8, 4, 0xFFFF0000)));
    ASSERT_EQ(image.size(), QSize(8, 4));
    expectNear(image.pixel(3, 2), 255, 0, 0, 255);
}

TEST(MoviePicture, MayBeAJpegWithTheMistakeOfOldTools) {
    using namespace std::string_literals;
    const QImage image =
        pictureOf(Tag::DefineBitsJPEG2, Bits().raw("\xFF\xD9\xFF\xD8"s + jpeg(8, 4, 0xFF0000FF)));
    ASSERT_EQ(image.size(), QSize(8, 4));
    expectNear(image.pixel(3, 2), 0, 0, 255, 255);
}

TEST(MoviePicture, MayBeAJpegWhoseTablesStandApart) {
    using namespace std::string_literals;
    // The tables are a file of their own, cut in front of the frame's head.
    const std::string whole = jpeg(8, 8, 0xFF00FF00);
    const std::size_t frame = whole.find("\xFF\xC0"s);
    ASSERT_NE(frame, std::string::npos);
    const std::string tables = whole.substr(0, frame) + "\xFF\xD9"s;
    const std::string rest = "\xFF\xD8"s + whole.substr(frame);
    const std::string before = MovieFile().tag(Tag::JPEGTables, Bits().raw(tables)).tags();
    const QImage image = pictureOf(Tag::DefineBits, Bits().raw(rest), before);
    ASSERT_EQ(image.size(), QSize(8, 8));
    expectNear(image.pixel(3, 2), 0, 255, 0, 255);
    EXPECT_TRUE(pictureOf(Tag::DefineBits, Bits().raw(rest)).isNull());
}

TEST(MoviePicture, MayBeAJpegWithAlpha) {
    const std::string data = jpeg(4, 1, 0xFFFFFFFF);
    const std::string alpha = packed(Bits().u8(0).u8(64).u8(128).u8(255).get());
    for (const Tag code : {Tag::DefineBitsJPEG3, Tag::DefineBitsJPEG4}) {
        Bits body = Bits().u32(static_cast<std::uint32_t>(data.size()));
        if (code == Tag::DefineBitsJPEG4) body.u16(0);
        const QImage image = pictureOf(code, body.raw(data).raw(alpha));
        ASSERT_EQ(image.size(), QSize(4, 1));
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
        EXPECT_EQ(image.pixel(1, 0), 0x40404040U);
        EXPECT_EQ(qAlpha(image.pixel(2, 0)), 128);
        EXPECT_EQ(image.pixel(3, 0), 0xFFFFFFFF);
    }
}

TEST(MoviePicture, IsScaledDownWhenItIsLarge) {
    // Squares of red and white, three hundred pixels wide.
    constexpr int width = 1500;
    constexpr int height = 1200;
    QImage board(width, height, QImage::Format_RGB32);
    std::string pixels = Bits().rgb(red).rgb(white).get();
    for (int y = 0; y < height; ++y) {
        QRgb* const row = reinterpret_cast<QRgb*>(board.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const bool isRed = (x / 300 + y / 300) % 2 == 0;
            row[x] = isRed ? 0xFFFF0000 : 0xFFFFFFFF;
            pixels += isRed ? '\0' : '\1';
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    board.save(&buffer, "jpeg", 95);
    for (const MoviePicture& picture :
         {made(Tag::DefineBitsLossless,
               Bits().u8(3).u16(width).u16(height).u8(1).raw(packed(pixels))),
          made(Tag::DefineBitsJPEG2, Bits().raw(bytes.toStdString()))}) {
        EXPECT_EQ(picture.size, QSize(width, height));
        ASSERT_EQ(picture.image.size(), QSize(width / 2, height / 2));
        expectNear(picture.image.pixel(75, 75), 255, 0, 0, 255);
        expectNear(picture.image.pixel(225, 75), 255, 255, 255, 255);
        expectNear(picture.image.pixel(225, 525), 255, 0, 0, 255);
    }
}

TEST(MoviePicture, KeepsItsAlphaWhenItIsScaledDown) {
    const std::string data = jpeg(1000, 1000, 0xFFFFFFFF);
    std::string alpha(1000 * 1000, '\0');
    std::fill(alpha.begin() + 500 * 1000, alpha.end(), '\xFF');
    const QImage image =
        pictureOf(Tag::DefineBitsJPEG3,
                  Bits().u32(static_cast<std::uint32_t>(data.size())).raw(data).raw(packed(alpha)));
    ASSERT_EQ(image.size(), QSize(500, 500));
    EXPECT_EQ(qAlpha(image.pixel(250, 240)), 0);
    EXPECT_EQ(qAlpha(image.pixel(250, 260)), 255);
}

TEST(MoviePicture, CoversTheSamePlaceWhenItIsScaledDown) {
    // 1,000 by 1,000 pixels, the right half of them green, on ten pixels of the movie each.
    const std::string row = std::string(500, '\0') + std::string(500, '\1');
    std::string pixels = Bits().rgb(red).rgb(green).get();
    for (int y = 0; y < 1000; ++y)
        pixels += row;
    for (const bool repeated : {false, true}) {
        MovieFile movie;
        movie.tag(Tag::DefineBitsLossless,
                  Bits().u16(7).u8(3).u16(1000).u16(1000).u8(1).raw(packed(pixels)));
        Bits body = Bits().u16(1).rect(0, 100, 0, 100).u8(1);
        body.code(repeated ? swf::FillType::RepeatingBitmap : swf::FillType::ClippedBitmap);
        body.u16(7).matrix(1, 1, 0, 0).u8(0).styleBits(1, 0).square(0, 0, 100).endShape();
        Screening screen(movie.tag(Tag::DefineShape, body).place(1, 1).show().file());
        EXPECT_EQ(screen.at(10, 50), black);
        EXPECT_TRUE(screen.outcome.unfinished);
        EXPECT_TRUE(becomesTrue([&] {
            static_cast<void>(screen.picture());
            return !screen.outcome.unfinished;
        }));
        EXPECT_EQ(screen.at(22, 50), red);
        EXPECT_EQ(screen.at(28, 50), green);
        EXPECT_EQ(screen.at(70, 50), repeated ? red : green);
    }
}

TEST(MoviePicture, IsNotUnpackedWhenItIsFarTooLarge) {
    constexpr unsigned width = 4096;
    constexpr unsigned height = swf::limits::packedPixels / width + 1;
    const std::string data = packed(std::string(3 + width * height, '\0'));
    const Bits body = Bits().u8(3).u16(width).u16(height).u8(0).raw(data);
    EXPECT_TRUE(pictureOf(Tag::DefineBitsLossless, body).isNull());
}

TEST(MoviePicture, IsNotUnpackedWhenItHasScansWithoutEnd) {
    using namespace std::string_literals;
    std::string data = jpeg(8, 8, 0xFF00FF00);
    EXPECT_FALSE(pictureOf(Tag::DefineBitsJPEG2, Bits().raw(data)).isNull());
    for (int scan = 0; scan < 20; ++scan)
        data += "\xFF\xDA"s;
    EXPECT_TRUE(pictureOf(Tag::DefineBitsJPEG2, Bits().raw(data)).isNull());
}

TEST(MoviePicture, ComesOneADrawing) {
    MovieFile movie;
    for (unsigned number = 1; number <= 3; ++number) {
        const std::string pixels = Bits().u8(0).rgb(green).get();
        movie.tag(Tag::DefineBitsLossless,
                  Bits().u16(number).u8(5).u16(1).u16(1).raw(packed(pixels)));
        Bits body = Bits()
                        .u16(number + 10)
                        .rect(0, 100, 0, 100)
                        .u8(1)
                        .code(swf::FillType::RoughRepeatingBitmap)
                        .u16(number);
        body.matrix(20, 20, 0, 0).u8(0).styleBits(1, 0);
        movie.tag(Tag::DefineShape, body.square(number * 20.0, 10, 10).endShape())
            .place(number + 10, number);
    }
    Screening screen(movie.show().file());
    EXPECT_EQ(screen.picture().pixel(65, 15) & 0xFFFFFFU, black);
    EXPECT_TRUE(screen.outcome.unfinished);
    static_cast<void>(screen.picture());
    EXPECT_TRUE(screen.outcome.unfinished);
    EXPECT_EQ(screen.picture().pixel(65, 15) & 0xFFFFFFU, green);
    EXPECT_FALSE(screen.outcome.unfinished);
}

}  // namespace
