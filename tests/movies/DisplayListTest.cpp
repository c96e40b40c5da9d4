#include "tests/movies/MovieFile.h"
#include "tests/movies/Screening.h"

#include <gtest/gtest.h>

namespace {

namespace placeFlag = swf::placeFlag;

MovieFile squares() { return MovieFile().square(1, 0, 0, 20, red).square(2, 0, 0, 20, blue); }

TEST(MovieStage, PlacesThingsByDepth) {
    Screening screen(squares().place(2, 5, 10, 10).place(1, 3, 0, 0).show().file());
    EXPECT_EQ(screen.at(5, 5), red);
    EXPECT_EQ(screen.at(15, 15), blue);
    EXPECT_EQ(screen.at(25, 25), blue);
    EXPECT_EQ(screen.at(35, 35), black);
}

TEST(MovieStage, PlacesWithTheFirstTagToo) {
    Bits place = Bits().u16(1).u16(1).move(30, 30);
    // Half of the red is taken away, and green is added.
    place.bits(3, 2).bits(10, 4).bits(128, 10).bits(256, 10).bits(256, 10);
    place.bits(0, 10).bits(100, 10).bits(0, 10);
    Screening screen(squares().tag(Tag::PlaceObject, place).show().file());
    EXPECT_EQ(qRed(screen.at(40, 40)), 127);
    EXPECT_EQ(qGreen(screen.at(40, 40)), 100);
    EXPECT_EQ(screen.at(20, 20), black);
}

TEST(MovieStage, MovesReplacesAndRemoves) {
    MovieFile movie = squares();
    movie.place(1, 1).show();
    movie.tag(Tag::PlaceObject2, Bits().u8(placeFlag::Move | placeFlag::Matrix).u16(1).move(40, 0))
        .show();
    movie.tag(Tag::PlaceObject2, Bits().u8(placeFlag::Move | placeFlag::Character).u16(1).u16(2))
        .show();
    movie.remove(1).show();
    movie.place(1, 1).show();
    movie.tag(Tag::RemoveObject, Bits().u16(1).u16(1)).show();
    Screening screen(movie.file());
    EXPECT_EQ(screen.at(10, 10), red);
    screen.advance();
    EXPECT_EQ(screen.at(10, 10), black);
    EXPECT_EQ(screen.at(50, 10), red);
    screen.advance();
    EXPECT_EQ(screen.at(50, 10), blue);
    screen.advance();
    EXPECT_EQ(screen.at(50, 10), black);
    screen.advance();
    EXPECT_EQ(screen.at(10, 10), red);
    screen.advance();
    EXPECT_EQ(screen.at(10, 10), black);
}

TEST(MovieStage, ChangesColorsAndAlphaThroughSprites) {
    // In the sprite half as bright; the sprite itself half transparent.
    MovieFile inner;
    Bits dim =
        Bits().u8(placeFlag::Character | placeFlag::Colors).u16(1).u16(1).bits(1, 2).bits(10, 4);
    dim.bits(128, 10).bits(128, 10).bits(128, 10).bits(256, 10);
    inner.tag(Tag::PlaceObject2, dim).show();
    Bits fade =
        Bits().u8(placeFlag::Character | placeFlag::Colors).u16(1).u16(9).bits(1, 2).bits(10, 4);
    fade.bits(256, 10).bits(256, 10).bits(256, 10).bits(128, 10);
    Screening screen(squares().sprite(9, inner).tag(Tag::PlaceObject2, fade).show().file());
    EXPECT_NEAR(qRed(screen.at(10, 10)), 64, 2);
}

TEST(MovieStage, ScalesAndTurns) {
    Bits place = Bits().u8(placeFlag::Character | placeFlag::Matrix).u16(1).u16(1);
    // A quarter turn: x to y, y to -x.
    place.bits(1, 1).bits(20, 5).bits(0, 20).bits(0, 20);
    place.bits(1, 1).bits(20, 5).bits(65536, 20).bits(-65536, 20);
    place.bits(20, 5).bits(50 * 20, 20).bits(50 * 20, 20);
    MovieFile movie = MovieFile().square(1, 10, 0, 20, red);
    Screening screen(movie.tag(Tag::PlaceObject2, place).show().file());
    EXPECT_EQ(screen.at(40, 70), red);
    EXPECT_EQ(screen.at(60, 70), black);
    EXPECT_EQ(screen.at(40, 55), black);
}

TEST(MovieStage, BoundsWhatStandsBehindAMask) {
    MovieFile movie = MovieFile().square(1, 0, 0, 100, red).square(2, 20, 20, 20, green);
    movie.tag(Tag::PlaceObject2,
              Bits().u8(placeFlag::Character | placeFlag::ClipDepth).u16(1).u16(2).u16(2));
    movie.place(1, 2).place(2, 3, 40, 40).show();
    Screening screen(movie.file());
    EXPECT_EQ(screen.at(30, 30), red);
    EXPECT_EQ(screen.at(50, 50), black);
    EXPECT_EQ(screen.at(70, 70), green);
}

TEST(MovieStage, PassesOverWhatTheThirdTagHasMore) {
    Bits place = Bits().u8(6).u8(0x1F).u16(1).text("Class").u16(1).move(30, 0);
    place.u8(1).u8(1).raw("blur.....").u8(3).u8(1);
    Screening screen(squares().tag(Tag::PlaceObject3, place).show().file(8));
    EXPECT_EQ(screen.at(40, 10), red);
}

TEST(MovieStage, KeepsSpritesThatStandInTheFirstFrameWhenItBeginsAnew) {
    MovieFile inner;
    inner.place(1, 1).show().place(1, 2, 20, 0).show().place(1, 3, 40, 0).show();
    inner.actions(action(Action::Stop));
    Screening screen(squares().sprite(9, inner).place(9, 1).show().show().file());
    screen.advance(2);
    EXPECT_EQ(screen.at(50, 10), red);
}

TEST(MovieStage, PlaysSpritesOnTheirOwn) {
    MovieFile inner;
    inner.place(1, 1).show().remove(1).place(2, 1).show();
    MovieFile movie = squares().sprite(9, inner).place(9, 1).place(9, 2, 50, 0).show();
    Screening screen(movie.file());
    EXPECT_TRUE(screen.player.moves());
    EXPECT_EQ(screen.at(10, 10), red);
    screen.advance();
    EXPECT_EQ(screen.at(10, 10), blue);
    EXPECT_EQ(screen.at(60, 10), blue);
    screen.advance();
    EXPECT_EQ(screen.at(10, 10), red);
}

TEST(MovieStage, MovesNotWithOneFrame) {
    EXPECT_FALSE(Screening(squares().place(1, 1).show().file()).player.moves());
    MovieFile still;
    still.place(1, 1).show();
    EXPECT_FALSE(Screening(squares().sprite(9, still).place(9, 1).show().file()).player.moves());
}

TEST(MovieStage, ShowsASpriteThatHasNoEndOfAFrame) {
    MovieFile inner;
    inner.place(1, 1);
    Screening screen(squares().sprite(9, inner).place(9, 1).show().file());
    EXPECT_EQ(screen.at(10, 10), red);
}

}  // namespace
