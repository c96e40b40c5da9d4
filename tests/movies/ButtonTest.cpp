#include "tests/movies/MovieFile.h"
#include "tests/movies/Screening.h"

#include <gtest/gtest.h>

namespace {

using namespace swf::buttonFlag;

Bits record(unsigned states, unsigned thing, unsigned depth) {
    return Bits().u8(states).u16(thing).u16(depth).move(0, 0).u8(0);
}

/// A button of the second kind, from 20 to 60 in both ways: red, then green, then blue. It gives
/// the number of each condition as a command.
MovieFile movieWithButton() {
    MovieFile movie;
    movie.square(1, 20, 20, 40, red).square(2, 20, 20, 40, green).square(3, 20, 20, 40, blue);
    Bits records = record(Up | Hit, 1, 1) + record(Over, 2, 2) + record(Down, 3, 3);
    records.u8(0);
    Bits body = Bits().u16(9).u8(0).u16(static_cast<unsigned>(records.get().size() + 2));
    body.raw(records.get());
    for (unsigned bit = 0; bit < 9; ++bit) {
        const std::string code = command(std::to_string(1U << bit)).u8(0).get();
        body.u16(static_cast<unsigned>(code.size() + 4)).u16(1U << bit).raw(code);
    }
    for (const unsigned key : {32U, 13U}) {
        const std::string code = command("key" + std::to_string(key)).u8(0).get();
        const bool last = key == 13;
        body.u16(last ? 0 : static_cast<unsigned>(code.size() + 4))
            .u16(key << swf::buttonEventBits)
            .raw(code);
    }
    return movie.tag(Tag::DefineButton2, body).place(9, 1);
}

void move(Screening& screen, int x, int y, bool held = false) {
    screen.player.mouse({x * 20.0, y * 20.0}, held);
}

TEST(MovieButton, ShowsItsStatesAndGivesTheirCommands) {
    Screening screen(movieWithButton().show().file());
    EXPECT_EQ(screen.at(30, 30), red);
    move(screen, 10, 10);
    EXPECT_EQ(screen.commands(), "");
    move(screen, 30, 30);
    EXPECT_EQ(screen.at(30, 30), green);
    EXPECT_EQ(screen.commands(), "1;");
    move(screen, 31, 31);
    EXPECT_EQ(screen.commands(), "");
    move(screen, 31, 31, true);
    EXPECT_EQ(screen.at(30, 30), blue);
    EXPECT_EQ(screen.commands(), "4;");
    move(screen, 31, 31);
    EXPECT_EQ(screen.at(30, 30), green);
    EXPECT_EQ(screen.commands(), "8;");
    move(screen, 80, 80);
    EXPECT_EQ(screen.at(30, 30), red);
    EXPECT_EQ(screen.commands(), "2;");
}

TEST(MovieButton, HoldsTheMouseThatWentDownOnIt) {
    Screening screen(movieWithButton().show().file());
    move(screen, 30, 30);
    move(screen, 30, 30, true);
    move(screen, 80, 80, true);
    EXPECT_EQ(screen.commands(), "1;4;16;");
    EXPECT_EQ(screen.at(30, 30), green);
    move(screen, 30, 30, true);
    EXPECT_EQ(screen.commands(), "32;");
    EXPECT_EQ(screen.at(30, 30), blue);
    move(screen, 80, 80, true);
    move(screen, 80, 80);
    EXPECT_EQ(screen.commands(), "16;64;");
    EXPECT_EQ(screen.at(30, 30), red);
}

TEST(MovieButton, TakesNoNoticeOfAMouseThatWentDownElsewhere) {
    Screening screen(movieWithButton().show().file());
    move(screen, 80, 80, true);
    move(screen, 30, 30, true);
    EXPECT_EQ(screen.commands(), "");
    move(screen, 30, 30);
    EXPECT_EQ(screen.commands(), "1;");
}

TEST(MovieButton, LetsGoWhenTheMouseLeaves) {
    Screening screen(movieWithButton().show().file());
    move(screen, 30, 30);
    EXPECT_TRUE(screen.player.overButton());
    screen.player.mouseLeft(false);
    EXPECT_FALSE(screen.player.overButton());
    EXPECT_EQ(screen.commands(), "1;2;");
}

TEST(MovieButton, IsPressedByItsKeys) {
    Screening screen(movieWithButton().show().file());
    EXPECT_TRUE(screen.player.key(32));
    EXPECT_TRUE(screen.player.key(13));
    EXPECT_FALSE(screen.player.key('x'));
    EXPECT_FALSE(screen.player.key(0));
    EXPECT_EQ(screen.commands(), "key32;key13;");
}

TEST(MovieButton, OfTheFirstKindActsWhenItIsLetGo) {
    MovieFile movie;
    movie.square(1, 20, 20, 40, red);
    Bits body = Bits().u16(9).u8(15).u16(1).u16(1).move(0, 0).u8(0);
    movie.tag(Tag::DefineButton, body.raw(command("click").u8(0).get()));
    // Green instead of red.
    movie.tag(Tag::DefineButtonCxform, Bits()
                                           .u16(9)
                                           .bits(3, 2)
                                           .bits(10, 4)
                                           .bits(0, 10)
                                           .bits(256, 10)
                                           .bits(256, 10)
                                           .bits(0, 10)
                                           .bits(255, 10)
                                           .bits(0, 10));
    Screening screen(movie.place(9, 1).show().file());
    EXPECT_EQ(screen.at(30, 30), green);
    move(screen, 30, 30);
    move(screen, 30, 30, true);
    EXPECT_EQ(screen.commands(), "");
    move(screen, 30, 30);
    EXPECT_EQ(screen.commands(), "click;");
}

TEST(MovieButton, MayHaveFiltersInItsRecords) {
    MovieFile movie;
    movie.square(1, 20, 20, 40, red).square(2, 20, 20, 40, blue);
    Bits first = Bits().u8(Up | Hit | Filters | BlendMode).u16(1).u16(1).move(0, 0).u8(0);
    first.u8(1).u8(1).raw("123456789").u8(5);
    const Bits records = first + record(Over, 2, 2);
    Screening screen(
        movie.tag(Tag::DefineButton2, Bits().u16(9).u8(0).u16(0).raw(records.get()).u8(0))
            .place(9, 1)
            .show()
            .file(8));
    EXPECT_EQ(screen.at(30, 30), red);
    move(screen, 30, 30);
    EXPECT_EQ(screen.at(30, 30), blue);
}

TEST(MovieButton, WorksInASpriteAndFollowsIt) {
    MovieFile inner;
    inner.placeNamed(9, 1, "x").show();
    // The button's sprite goes 30 pixels to the right, from under the mouse.
    const std::string tags = movieWithButton().remove(1).tags() +
                             MovieFile()
                                 .sprite(8, inner)
                                 .place(8, 1)
                                 .show()
                                 .tag(Tag::PlaceObject2, Bits().u8(5).u16(1).move(30, 0))
                                 .show()
                                 .tags();
    Screening screen(
        Bits().raw("FWS").u8(6).u32(0).rect(0, 100, 0, 100).u16(0).u16(1).raw(tags).get());
    move(screen, 25, 30);
    EXPECT_EQ(screen.commands(), "1;");
    screen.advance();
    EXPECT_EQ(screen.commands(), "2;");
    EXPECT_EQ(screen.at(60, 30), red);
    move(screen, 60, 30);
    EXPECT_EQ(screen.commands(), "1;");
}

TEST(MovieButton, IsHitOnlyWhereItsFaceIs) {
    MovieFile movie;
    // A ring: the hole does not count.
    Bits ring = Bits().u16(1).rect(0, 100, 0, 100).u8(1).u8(0).rgb(red).u8(0).styleBits(1, 0);
    ring.jumpAndFill(50, 10, 1).curve(40, 0, 0, 40).curve(0, 40, -40, 0);
    ring.curve(-40, 0, 0, -40).curve(0, -40, 40, 0);
    ring.jump(50, 30).curve(-20, 0, 0, 20).curve(0, 20, 20, 0);
    ring.curve(20, 0, 0, -20).curve(0, -20, -20, 0).endShape();
    movie.tag(Tag::DefineShape, ring);
    movie.tag(Tag::DefineButton2,
              Bits().u16(9).u8(0).u16(0).raw(record(Up | Hit, 1, 1).get()).u8(0));
    Screening screen(movie.place(9, 1).show().file());
    const auto over = [&](int x, int y) {
        move(screen, x, y);
        return screen.player.overButton();
    };
    EXPECT_TRUE(over(50, 20));
    EXPECT_TRUE(over(80, 50));
    EXPECT_FALSE(over(50, 50));
    EXPECT_FALSE(over(12, 12));
    EXPECT_FALSE(over(98, 50));
}

TEST(MovieButton, StaysPressedWhenALoopPlacesItAnew) {
    MovieFile movie = movieWithButton().show().remove(1).place(9, 1).show();
    Screening screen(movie.file());
    move(screen, 30, 30);
    EXPECT_EQ(screen.commands(), "1;");
    screen.advance();
    EXPECT_EQ(screen.at(30, 30), green);
    move(screen, 30, 30, true);
    screen.advance();
    EXPECT_EQ(screen.at(30, 30), blue);
    screen.advance();
    EXPECT_EQ(screen.at(30, 30), blue);
    move(screen, 30, 30);
    EXPECT_EQ(screen.at(30, 30), green);
    EXPECT_EQ(screen.commands(), "4;8;");
}

}  // namespace
