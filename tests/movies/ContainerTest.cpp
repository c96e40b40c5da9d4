#include "movies/player/MovieLoader.h"
#include "movies/player/limits.h"
#include "tests/movies/MovieFile.h"

#include <gtest/gtest.h>

namespace {

std::size_t framesOf(const std::string& file) {
    return swf::readMovie(file)->timeline.frameCount();
}

TEST(MovieContainer, IsReadPlainAndPackedInAllVersions) {
    const MovieFile movie = MovieFile().show(3);
    for (unsigned version = 1; version <= 12; ++version) {
        EXPECT_EQ(framesOf(movie.file(version)), 3U);
        EXPECT_EQ(framesOf(movie.packedFile(version)), 3U);
        EXPECT_EQ(swf::readMovie(movie.file(version))->version, version);
    }
}

TEST(MovieContainer, HasItsSizeAndRate) {
    const auto movie = swf::readMovie(MovieFile().show().file());
    EXPECT_EQ(movie->frame.width(), 2000);
    EXPECT_EQ(movie->frame.height(), 2000);
    EXPECT_EQ(movie->framesPerSecond, 20);
    EXPECT_FALSE(movie->background.has_value());
}

TEST(MovieContainer, HasItsBackground) {
    const auto movie = swf::readMovie(
        MovieFile().tag(Tag::SetBackgroundColor, Bits().rgb(0x123456)).show().file());
    EXPECT_EQ(movie->background, (swf::Color{0x12, 0x34, 0x56, 255}));
}

TEST(MovieContainer, MayHaveTagsThatNobodyKnows) {
    MovieFile movie;
    movie.tag(unknownTag(69), Bits().u32(8))
        .tag(unknownTag(777), Bits().raw("whatever"))
        .show()
        .tag(unknownTag(500))
        .show();
    EXPECT_EQ(framesOf(movie.file()), 2U);
}

TEST(MovieContainer, LeavesOutATagWithAFault) {
    MovieFile movie;
    movie.tag(Tag::PlaceObject2, Bits().u8(255))
        .tag(Tag::DefineShape, Bits().u16(1))
        .square(2, 0, 0, 10, 0)
        .place(2, 1)
        .show();
    const auto read = swf::readMovie(movie.file());
    EXPECT_EQ(read->timeline.frameCount(), 1U);
    EXPECT_EQ(read->timeline.controls.size(), 1U);
    EXPECT_NE(read->find<swf::Shape>(2), nullptr);
    EXPECT_EQ(read->find<swf::Shape>(1), nullptr);
}

TEST(MovieContainer, KeepsTheFirstOfTwoCharactersOfOneNumber) {
    MovieFile movie;
    movie.square(1, 0, 0, 10, 0).sprite(1, MovieFile().show(5)).sprite(2, MovieFile().show(2));
    movie.sprite(2, MovieFile().show(7)).show();
    const auto read = swf::readMovie(movie.file());
    EXPECT_NE(read->find<swf::Shape>(1), nullptr);
    EXPECT_EQ(read->find<swf::Timeline>(2)->frameCount(), 2U);
}

TEST(MovieContainer, GivesNoMovieForWhatIsNone) {
    EXPECT_EQ(framesOf(""), 0U);
    EXPECT_EQ(framesOf("FW"), 0U);
    EXPECT_EQ(framesOf("GIF89a and more"), 0U);
    EXPECT_EQ(framesOf("ZWS\x0D and more and more"), 0U);
    EXPECT_EQ(framesOf("CWS\x06" + std::string(100, 'x')), 0U);
    std::string flat = Bits().raw("FWS").u8(6).u32(20).rect(0, 0, 0, 0).u16(0).u16(1).get();
    EXPECT_EQ(framesOf(flat + MovieFile().show().tags()), 0U);
}

TEST(MovieContainer, GivesWhatCameBeforeTheEndOfACutFile) {
    const std::string file = MovieFile().show(3).file();
    EXPECT_EQ(framesOf(file.substr(0, file.size() - 3)), 2U);
    const std::string cut = MovieFile().show(20000).packedFile();
    const std::size_t frames = framesOf(cut.substr(0, cut.size() / 2));
    EXPECT_GT(frames, 1000U);
    EXPECT_LT(frames, 20000U);
}

TEST(MovieContainer, IsReadInStepsOfABoundedSize) {
    const std::string body = MovieFile().show().tag(unknownTag(999)).body();
    // The last tag but one says that it is longer than all that there may be.
    std::string bomb = body.substr(0, body.size() - 6) + Bits().u32(0xFFFFFFF0).get();
    bomb.resize(swf::limits::unpackedBytes + 1000, '\0');
    const std::string file = Bits().raw("CWS").u8(6).u32(0xFFFFFFFF).get() + packed(bomb);
    swf::MovieLoader loader(file);
    std::size_t steps = 1;
    while (loader.step())
        ++steps;
    EXPECT_GE(steps, swf::limits::unpackedBytes / swf::limits::bytesPerStep);
    const auto movie = loader.take();
    EXPECT_EQ(movie->bytes.size(), swf::limits::unpackedBytes);
    EXPECT_EQ(movie->timeline.frameCount(), 1U);
}

TEST(MovieContainer, IsReadInStepsThatEndWhenFewBytesHoldMuch) {
    // Each glyph of a font is the same one, of 650 edges: seven fonts of 65,000 in 13 KB.
    constexpr unsigned glyphs = 100;
    Bits glyph = Bits().styleBits(1, 0).jumpAndFill(0, 0, 1);
    for (int edge = 0; edge < 650; ++edge)
        glyph.bits(3, 2).bits(0, 4).bits(0, 1).bits(1, 1).bits(edge % 2 == 0 ? 1 : -1, 2);
    glyph.endShape();
    MovieFile movie;
    for (unsigned number = 1; number <= 7; ++number) {
        Bits font = Bits().u16(number);
        for (unsigned index = 0; index < glyphs; ++index)
            font.u16(2 * glyphs);
        movie.tag(Tag::DefineFont, font.raw(glyph.get()));
    }
    const std::string file = movie.show().file();
    EXPECT_LT(file.size(), swf::limits::bytesPerStep / 8);
    swf::MovieLoader loader(file);
    int steps = 1;
    while (loader.step())
        ++steps;
    // One for the head, one for each font or two.
    EXPECT_GE(steps, 4);
    EXPECT_EQ(loader.take()->timeline.frameCount(), 1U);
}

TEST(MovieContainer, IsReadUpToSoManyTags) {
    std::string many;
    const std::string unknown = Bits().u16(999U << 6U).get();
    for (std::size_t count = 0; count < swf::limits::tags - 2; ++count)
        many += unknown;
    const auto framesBehind = [&](const std::string& tags) {
        const std::string head = MovieFile().body();
        const std::string body = head.substr(0, head.size() - 2) + tags;
        return framesOf(Bits().raw("FWS").u8(6).u32(0).get() + body);
    };
    const std::string frame = MovieFile().show().tags();
    EXPECT_EQ(framesBehind(many + frame), 1U);
    EXPECT_EQ(framesBehind(many + unknown + unknown + frame), 0U);
}

TEST(MovieContainer, IsNotReadWhenTheFileIsTooLarge) {
    std::string file = MovieFile().show().file();
    file.resize(swf::limits::fileBytes);
    EXPECT_EQ(framesOf(file), 1U);
    file += '\0';
    EXPECT_EQ(framesOf(file), 0U);
}

TEST(MovieContainer, KeepsTheFirstBackground) {
    MovieFile movie;
    movie.tag(Tag::SetBackgroundColor, Bits().rgb(0x123456)).show();
    movie.tag(Tag::SetBackgroundColor, Bits().rgb(0xABCDEF)).show();
    const swf::Color first{0x12, 0x34, 0x56, 255};
    EXPECT_EQ(swf::readMovie(movie.file())->background, first);
}

}  // namespace
