#include "movies/player/limits.h"
#include "movies/qt/MovieBrushes.h"
#include "tests/movies/MovieFile.h"
#include "tests/movies/Screening.h"
#include "tests/support/comesTrue.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

std::size_t standing(const swf::DisplayList& list) {
    std::size_t count = list.size();
    for (const auto& [depth, instance] : list) {
        if (instance.inner() != nullptr) count += standing(*instance.inner());
    }
    return count;
}

TEST(MovieBudget, EndsSpritesThatPlaceThemselves) {
    MovieFile inner;
    inner.place(9, 1).place(9, 2).show();
    Screening screen(MovieFile().sprite(9, inner).place(9, 1).show(2).file());
    for (int frame = 0; frame < 5; ++frame) {
        EXPECT_LE(standing(screen.player.stage()), swf::limits::instances);
        screen.advance();
    }
    EXPECT_GT(standing(screen.player.stage()), 10U);
    static_cast<void>(screen.picture());
}

TEST(MovieBudget, EndsSpritesThatPlaceEachOtherThroughButtons) {
    MovieFile inner;
    inner.place(8, 1).show();
    MovieFile movie;
    movie.sprite(9, inner);
    Bits record = Bits().u8(15).u16(9).u16(1).move(0, 0).u8(0).u8(0);
    movie.tag(Tag::DefineButton2, Bits().u16(8).u8(0).u16(0).raw(record.get()));
    Screening screen(movie.place(9, 1).show().file());
    EXPECT_LE(standing(screen.player.stage()), swf::limits::depth + 1U);
    screen.player.mouse({100, 100}, true);
    static_cast<void>(screen.picture());
}

TEST(MovieBudget, StopsAMovieThatGoesToAndFroForEver) {
    const auto to = [](unsigned frame) { return action(Action::GotoFrame, Bits().u16(frame)); };
    MovieFile movie;
    movie.actions(to(1)).show().actions(to(0)).show();
    Screening screen(movie.file());
    screen.advance(swf::limits::exhaustedFrames + 1);
    EXPECT_FALSE(screen.player.moves());
}

TEST(MovieBudget, CountsTheFramesThatAMoviePassesOver) {
    const auto to = [](unsigned frame) {
        return action(Action::GotoFrame, Bits().u16(frame)).get();
    };
    for (const unsigned leaps : {2U, 4000U}) {
        Bits code;
        for (unsigned count = 0; count < leaps; ++count)
            code.raw(to(60'000 - count));
        code.raw(to(65'000));
        MovieFile movie;
        movie.actions(code).show(65'000).place(1, 1).show();
        // Whether the last leap came to be made.
        EXPECT_EQ(Screening(movie.file()).player.stage().empty(), leaps > 2);
    }
}

TEST(MovieBudget, StopsAMovieThatPlacesWithoutEnd) {
    MovieFile movie;
    for (unsigned count = 0; count <= swf::limits::work; ++count)
        movie.place(1, count % 500);
    Screening screen(movie.show().show().file());
    EXPECT_TRUE(screen.player.moves());
    screen.advance(2 * static_cast<int>(swf::limits::exhaustedFrames) + 1);
    // Only every second frame is like that, so it goes on.
    EXPECT_TRUE(screen.player.moves());
}

TEST(MovieBudget, HandsOutOnlySoManyCommands) {
    Bits code;
    for (int count = 0; count < 1000; ++count)
        code = code + command("x");
    Screening screen(MovieFile().actions(code).show().file());
    EXPECT_EQ(screen.player.takeCommands().size(), swf::limits::commands);
    const Bits longOne = command(std::string(20000, 'y'));
    EXPECT_EQ(Screening(MovieFile().actions(longOne).show().file()).commands().size(),
              swf::limits::commandBytes + 1);
}

TEST(MovieBudget, ReadsNoMoreControlsThanThereMayBe) {
    MovieFile movie;
    const auto frames = static_cast<int>(swf::limits::controls);
    const auto read = swf::readMovie(movie.show(frames + 10).file());
    EXPECT_EQ(read->timeline.frameCount(), swf::limits::controls);
}

/// A shape with an edge for each step of a zigzag.
Bits zigzag(unsigned number, std::size_t edges, bool line) {
    Bits body = Bits().u16(number).rect(0, 100, 0, 100);
    if (line) {
        body.u8(0).u8(1).u16(20).rgb(red).styleBits(0, 1).jumpAndLine(0, 50);
    } else {
        body.u8(1).u8(0).rgb(red).u8(0).styleBits(1, 0).jumpAndFill(0, 50, 1);
    }
    for (std::size_t edge = 0; edge < edges; ++edge)
        body.line(edge % 2 == 0 ? 90 : -90, 0.05);
    return body.endShape();
}

TEST(MovieBudget, ShowsTheFirstEdgesOfAShapeThatHasTooMany) {
    const auto edgesOf = [](std::size_t edges) {
        const auto movie = swf::readMovie(
            MovieFile().tag(Tag::DefineShape, zigzag(1, edges, false)).show().file());
        const auto* shape = movie->find<swf::Shape>(1);
        return shape == nullptr ? 0 : shape->edges.size();
    };
    EXPECT_EQ(edgesOf(swf::limits::edgesPerShape), swf::limits::edgesPerShape);
    EXPECT_EQ(edgesOf(swf::limits::edgesPerShape + 9), swf::limits::edgesPerShape);
}

TEST(MovieBudget, TakesNoMoreEdgesInAllThanThereMayBe) {
    MovieFile movie;
    const std::size_t shapes = swf::limits::edges / 10000 + 5;
    for (unsigned number = 1; number <= shapes; ++number)
        movie.tag(Tag::DefineShape, zigzag(number, 10000, false));
    const auto read = swf::readMovie(movie.show().packedFile());
    EXPECT_LT(read->characters.size(), shapes);
    EXPECT_GT(read->characters.size(), shapes / 2);
}

TEST(MovieBudget, CutsADrawingThatCostsTooMuch) {
    for (const bool line : {false, true}) {
        MovieFile movie;
        movie.tag(Tag::DefineShape, zigzag(1, 4000, line));
        for (unsigned depth = 1; depth <= 200; ++depth)
            movie.place(1, depth);
        Screening screen(movie.show().file());
        static_cast<void>(screen.picture(4));
        EXPECT_TRUE(screen.outcome.cut);
        EXPECT_LE(screen.outcome.cost, DrawingBudget::whole);
    }
}

TEST(MovieBudget, CutsLargeGradientsOnTopOfEachOther) {
    MovieFile movie;
    Bits body = Bits()
                    .u16(1)
                    .rect(0, 100, 0, 100)
                    .u8(1)
                    .code(swf::FillType::RadialGradient)
                    .matrix(0.1, 0.1, 50, 50);
    body.u8(2).u8(0).rgb(red).u8(255).rgb(blue).u8(0).styleBits(1, 0);
    movie.tag(Tag::DefineShape, body.square(0, 0, 100).endShape());
    for (unsigned depth = 1; depth <= 900; ++depth)
        movie.place(1, depth);
    Screening screen(movie.show().file());
    static_cast<void>(screen.picture(10));
    EXPECT_TRUE(screen.outcome.cut);
}

TEST(MovieBudget, ShowsALargeShapeThatFits) {
    Bits body = Bits().u16(1).rect(0, 100, 0, 100).u8(1).u8(0).rgb(red).u8(0).styleBits(1, 0);
    body.jumpAndFill(10, 10, 1).line(0, 80);
    for (int step = 0; step < 2000; ++step)
        body.line(0.05, step % 2 == 0 ? 0.5 : -0.5);
    body.line(-100, -80).endShape();
    Screening screen(MovieFile().tag(Tag::DefineShape, body).place(1, 1).show().file());
    EXPECT_EQ(screen.at(15, 50), red);
    EXPECT_FALSE(screen.outcome.cut);
}

TEST(MovieBudget, DrawsNothingThatIsTooFarAwayToCountWith) {
    MovieFile movie;
    movie.square(1, 0, 0, 100, red);
    Bits far = Bits().u8(6).u16(1).u16(1).bits(1, 1).bits(31, 5).bits(0x3FFFFFFF, 31);
    far.bits(0x3FFFFFFF, 31).bits(0, 1).bits(31, 5).bits(0x3FFFFFFF, 31).bits(-0x3FFFFFFF, 31);
    Screening screen(movie.tag(Tag::PlaceObject2, far).show().file());
    EXPECT_EQ(screen.at(50, 50), black);
}

TEST(MovieBudget, HasRoomForManyThings) {
    MovieFile movie;
    movie.square(1, 0, 0, 1, red);
    for (unsigned depth = 1; depth <= swf::limits::instances + 10; ++depth)
        movie.place(1, depth, depth % 100, depth / 200);
    const Screening screen(movie.show().file());
    EXPECT_EQ(screen.player.stage().size(), swf::limits::instances);
}

TEST(MovieBudget, MeasuresBetweenThings) {
    double time = 0;
    DrawingBudget budget([&] { return time; });
    EXPECT_TRUE(budget.take(DrawingBudget::whole / 2));
    EXPECT_TRUE(budget.goesOn());
    // The count was twice what it took.
    time = DrawingBudget::whole / 4;
    EXPECT_TRUE(budget.take(DrawingBudget::whole * 0.7));
    time = DrawingBudget::whole * 1.1;
    EXPECT_FALSE(budget.goesOn());
    EXPECT_FALSE(budget.take(1));
    EXPECT_TRUE(budget.exceeded());
}

TEST(MovieBudget, NeverCutsAShortDrawing) {
    MovieFile movie;
    movie.square(1, 0, 0, 100, red);
    for (unsigned depth = 1; depth <= 200; ++depth)
        movie.place(1, depth);
    Screening screen(movie.show().file(), DrawingBudget::processorTime);
    int seen = 0;
    for (int drawing = 0; drawing < 500; ++drawing) {
        const double begin = DrawingBudget::processorTime();
        static_cast<void>(screen.picture());
        constexpr double shortest = 5e6;
        if (DrawingBudget::processorTime() - begin > shortest) continue;
        ++seen;
        EXPECT_FALSE(screen.outcome.cut);
    }
    EXPECT_GT(seen, 0);
}

TEST(MovieBudget, MeasuresWhatOtherThreadsDoMeanwhile) {
    // As Qt's do, while the one that draws waits for them.
    DrawingBudget budget;
    std::thread([] {
        DrawingBudget own;
        while (own.goesOn()) {
        }
    }).join();
    EXPECT_FALSE(budget.goesOn());
}

TEST(MovieBudget, MakesReadyNextTimeWhatThereWasNoTimeFor) {
    // Behind the squares too little is left to put the edges of the large shape in their order.
    MovieFile movie;
    movie.tag(Tag::DefineShape2, zigzag(1, 50000, false)).square(2, 0, 0, 100, blue);
    for (unsigned depth = 1; depth <= 2400; ++depth)
        movie.place(2, depth);
    Screening screen(movie.place(1, 5000).show().file());
    static_cast<void>(screen.picture());
    EXPECT_FALSE(screen.outcome.cut);
    EXPECT_TRUE(screen.outcome.unfinished);
    for (int drawing = 0; drawing < 20 && screen.outcome.unfinished; ++drawing)
        static_cast<void>(screen.picture());
    EXPECT_FALSE(screen.outcome.unfinished);
    EXPECT_FALSE(screen.outcome.cut);
    EXPECT_NE(screen.at(45, 60), blue);
}

TEST(MovieBudget, CountsPicturesThatAreMadeSmaller) {
    // A pixel of the picture is a hundredth of a twentieth of a pixel wide.
    MovieFile movie;
    const std::string pixels = Bits().rgb(red).get() + std::string(700 * 700, '\0');
    movie.tag(Tag::DefineBitsLossless,
              Bits().u16(7).u8(3).u16(700).u16(700).u8(0).raw(packed(pixels)));
    Bits body = Bits().u16(1).rect(0, 100, 0, 100).u8(1).code(swf::FillType::ClippedBitmap);
    body.u16(7).matrix(0.01, 0.01, 50, 50).u8(0).styleBits(1, 0).square(0, 0, 100);
    movie.tag(Tag::DefineShape2, body.endShape());
    for (unsigned depth = 1; depth <= 20; ++depth)
        movie.place(1, depth);
    Screening screen(movie.show().file());
    EXPECT_TRUE(comesTrue([&] {
        static_cast<void>(screen.picture());
        return !screen.outcome.unfinished;
    }));
    EXPECT_EQ(screen.at(50, 50), red);
    EXPECT_FALSE(screen.outcome.cut);
    // All of it at once.
    screen.drawingTime(
        1, [] { return 0; }, 0.001);
    EXPECT_TRUE(screen.outcome.cut);
    EXPECT_LE(screen.outcome.cost, DrawingBudget::whole);
}

TEST(MovieBudget, EndsALongFillBetweenTwoRows) {
    // Steep edges, a hundred in each row. The time is over when the first bands are there.
    Bits body = Bits().u16(1).rect(0, 100, 0, 100).u8(1).code(swf::FillType::Solid).rgb(red);
    body.u8(0).styleBits(1, 0).jumpAndFill(0, 0, 1);
    for (int edge = 0; edge < 400; ++edge)
        body.line(0.25, edge % 2 == 0 ? 100 : -100);
    body.endShape();
    const std::string file = MovieFile().tag(Tag::DefineShape, body).place(1, 1).show().file();
    const auto inked = [](const QImage& image, int y) {
        int count = 0;
        for (int x = 0; x < image.width(); ++x)
            count += qRed(image.pixel(x, y)) > 40;
        return count;
    };
    Screening whole(file, [] { return 0.0; });
    const QImage all = whole.picture(4);
    EXPECT_FALSE(whole.outcome.cut);
    double calls = 0;
    Screening cut(file, [&] { return ++calls * DrawingBudget::whole / 10; });
    const QImage part = cut.picture(4);
    EXPECT_TRUE(cut.outcome.cut);
    EXPECT_GT(inked(all, 280), 300);
    EXPECT_EQ(inked(part, 280), 0);
    EXPECT_EQ(inked(part, 4), inked(all, 4));
}

/// A movie of one line that goes to and fro.
std::string longLine(int edges, double width) {
    Bits body = Bits().u16(1).rect(0, 100, 0, 100).u8(0).u8(1);
    body.u16(static_cast<unsigned>(width * swf::twipsPerPixel)).rgb(white).styleBits(0, 1);
    body.jumpAndLine(10, 5);
    for (int edge = 0; edge < edges; ++edge)
        body.line(edge % 2 == 0 ? 80 : -80, 90.0 / edges);
    body.endShape();
    return MovieFile().tag(Tag::DefineShape, body).place(1, 1).show().file();
}

TEST(MovieBudget, DrawsLongLinesInPiecesThatAreNotSeen) {
    constexpr int edges = 600;
    for (const double width : {0.2, 2.0}) {
        Screening screen(longLine(edges, width), [] { return 0.0; });
        const QImage pieces = screen.picture(2);
        EXPECT_FALSE(screen.outcome.cut);
        QImage whole = screen.ground(2);
        QPainter painter(&whole);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath path({20, 10});
        for (int edge = 1; edge <= edges; ++edge)
            path.lineTo(edge % 2 == 0 ? 20 : 180, 10 + edge * 0.3);
        painter.strokePath(path, QPen(Qt::white, std::max(1.0, width * 2), Qt::SolidLine,
                                      Qt::RoundCap, Qt::RoundJoin));
        int different = 0;
        for (int y = 0; y < whole.height(); ++y) {
            for (int x = 0; x < whole.width(); ++x)
                different += std::abs(qRed(whole.pixel(x, y)) - qRed(pieces.pixel(x, y))) > 24;
        }
        EXPECT_LT(different, 20) << width;
    }
}

TEST(MovieBudget, ShowsTheBeginningOfALineThatTakesTooLong) {
    double calls = 0;
    Screening screen(longLine(3000, 2), [&] { return ++calls * DrawingBudget::whole / 20; });
    const QImage image = screen.picture(2);
    EXPECT_TRUE(screen.outcome.cut);
    EXPECT_EQ(image.pixel(100, 14) & 0xFFFFFFU, white);
    EXPECT_EQ(image.pixel(100, 185) & 0xFFFFFFU, black);
}

/// A comb whose back is solid, from 60 to 100, and which has `teeth` to its left.
MovieFile comb(int teeth) {
    Bits body = Bits().u16(1).rect(0, 100, 0, 100).u8(1).code(swf::FillType::Solid).rgb(red);
    body.u8(0).styleBits(1, 0).jumpAndFill(100, 0, 1).line(0, 100).line(-40, 0);
    for (int tooth = 0; tooth < teeth; ++tooth)
        body.line(-50, -50.0 / teeth).line(50, -50.0 / teeth);
    MovieFile movie;
    movie.tag(Tag::DefineShape, body.line(40, 0).endShape());
    return movie;
}

TEST(MovieBudget, HasNoSeamsBetweenBandsWhereverTheMovieIs) {
    Screening screen(comb(500).place(1, 1).show().file(), [] { return 0.0; });
    QImage image = screen.ground(2);
    {
        QPainter target(&image);
        static_cast<void>(screen.painter.draw(target, {0, 0.37, 200, 199}, screen.player.stage(),
                                              {0.1, 0, 0, 0.1, 0, 0.37}));
    }
    for (int y = 2; y < 198; ++y)
        EXPECT_EQ(image.pixel(180, y) & 0xFFFFFFU, red) << y;
}

TEST(MovieBudget, BoundsByMasksThatTakeLong) {
    // The comb bounds a green square, and then stands no more in the way of a blue one.
    MovieFile movie = comb(500);
    movie.square(2, 0, 0, 100, green).square(3, 0, 0, 10, blue);
    const Bits place = Bits().u8(swf::placeFlag::Character | swf::placeFlag::ClipDepth);
    movie.tag(Tag::PlaceObject2, Bits(place).u16(1).u16(1).u16(2)).place(2, 2).place(3, 3);
    Screening screen(movie.show().file(), [] { return 0.0; });
    const QImage image = screen.picture(4);
    const auto at = [&](int x, int y) { return image.pixel(4 * x, 4 * y) & 0xFFFFFFU; };
    EXPECT_EQ(at(80, 50), green);
    EXPECT_EQ(at(3, 50), black);
    EXPECT_EQ(at(5, 5), blue);
    EXPECT_GT(qGreen(at(35, 50)), 60);
    EXPECT_LT(qGreen(at(35, 50)), 200);
    EXPECT_EQ(qRed(at(35, 50)), 0);
    EXPECT_FALSE(screen.outcome.cut);
}

TEST(MovieBudget, ShowsAsMuchOfWhatMasksBoundAsThereIsTimeFor) {
    MovieFile movie = comb(500);
    movie.square(2, 0, 0, 100, green);
    const Bits mask = Bits().u8(swf::placeFlag::Character | swf::placeFlag::ClipDepth);
    for (unsigned depth = 1; depth <= 2; ++depth)
        movie.tag(Tag::PlaceObject2, Bits(mask).u16(depth).u16(1).u16(60000));
    for (unsigned depth = 3; depth < 9000; ++depth)
        movie.place(2, depth);
    double time = 0;
    Screening screen(movie.show().file(), [&] { return time += DrawingBudget::whole / 400; });
    const QImage image = screen.picture(4);
    EXPECT_TRUE(screen.outcome.cut);
    EXPECT_EQ(image.pixel(4 * 80, 4 * 50) & 0xFFFFFFU, green);
    EXPECT_EQ(image.pixel(4 * 3, 4 * 50) & 0xFFFFFFU, black);
}

TEST(MovieBudget, CountsTheLightOfGradients) {
    for (const bool asLine : {false, true}) {
        for (const bool light : {false, true}) {
            Bits fill = Bits().code(swf::FillType::LinearGradient).matrix(0.06, 0.06, 50, 50);
            fill.u8(light ? 0x1F : 0x0F);
            for (unsigned stop = 0; stop < 15; ++stop)
                fill.u8(17 * stop).rgba(stop % 2 == 0 ? red : blue, 255);
            Bits body = Bits().u16(1).rect(0, 100, 0, 100).rect(0, 100, 0, 100).u8(0);
            if (asLine) {
                // Without caps, with round joints, and filled.
                body.u8(0).u8(1).u16(100).bits(1, 2).bits(0, 2).bits(1, 1).bits(0, 9).bits(1, 2);
                body.raw(fill.get()).styleBits(0, 1).jumpAndLine(10, 50).line(80, 0);
            } else {
                body.u8(1).raw(fill.get()).u8(0).styleBits(1, 0).square(10, 10, 80);
            }
            MovieFile movie;
            movie.tag(Tag::DefineShape4, body.endShape());
            for (unsigned depth = 1; depth <= 20; ++depth)
                movie.place(1, depth);
            Screening screen(movie.show().file(8));
            EXPECT_NE(screen.at(30, 50), black);
            EXPECT_EQ(screen.outcome.cut, light) << asLine;
        }
    }
}

/// A movie of a shape that morphs, with a fill and an outline that goes to the right and down, with
/// many small steps on the way, and back.
std::string longMorph(int edges) {
    const Bits styles = Bits().u8(1).u8(0).rgba(red, 255).rgba(red, 255).u8(0);
    const auto outline = [edges](Bits bits) {
        for (int edge = 0; edge < edges; ++edge)
            bits.line(edge % 2 == 0 ? 0.05 : -0.05, edge % 4 == 0 ? 0.05 : 0);
        return bits.line(80, 0).line(0, -500).line(-80, 0).endShape();
    };
    const Bits start = outline(Bits().styleBits(1, 0).jumpAndFill(10, 0, 1));
    const Bits end = outline(Bits().styleBits(0, 0).jump(10, 0));
    Bits body = Bits().u16(1).rect(0, 100, 0, 100).rect(0, 100, 0, 100);
    body.u32(static_cast<std::uint32_t>(styles.get().size() + start.get().size()));
    body.raw(styles.get()).raw(start.get()).raw(end.get());
    return MovieFile().tag(Tag::DefineMorphShape, body).place(1, 1).show().file();
}

TEST(MovieBudget, ShowsALargeMorphingShapeThatFits) {
    Screening screen(longMorph(30000));
    EXPECT_EQ(screen.at(50, 50), red);
    EXPECT_FALSE(screen.outcome.cut);
}

TEST(MovieBudget, CountsBothEndsOfAShapeThatMorphs) {
    const auto movie = swf::readMovie(longMorph(40000));
    const auto* morph = movie->find<swf::MorphShape>(1);
    ASSERT_NE(morph, nullptr);
    EXPECT_EQ(morph->start.edges.size(), swf::limits::edgesPerShape / 2);
    EXPECT_EQ(morph->end.edges.size(), swf::limits::edgesPerShape / 2);
}

/// Squares that lie over each other, red ones and then a green one that goes to the right.
MovieFile standingAndMoving(unsigned standing) {
    MovieFile movie;
    movie.square(1, 0, 0, 100, red).square(2, 0, 0, 10, green);
    for (unsigned depth = 1; depth <= standing; ++depth)
        movie.place(1, depth);
    movie.place(2, 5000).show();
    for (unsigned frame = 1; frame < 9; ++frame) {
        const Bits move = Bits().u8(swf::placeFlag::Move | swf::placeFlag::Matrix);
        movie.tag(Tag::PlaceObject2, Bits(move).u16(5000).move(10 * frame, 0)).show();
    }
    return movie;
}

TEST(MovieBudget, DrawsOnceWhatStandsStillBehindAllThatMoves) {
    Screening screen(standingAndMoving(1000).file());
    static_cast<void>(screen.picture());
    const double first = screen.outcome.cost;
    for (int frame = 1; frame < 9; ++frame) {
        screen.advance();
        EXPECT_EQ(screen.at(10 * frame + 5, 5), green);
        EXPECT_EQ(screen.at(10 * frame - 5, 5), red);
        EXPECT_FALSE(screen.outcome.cut);
    }
    EXPECT_LT(screen.outcome.cost, first / 50);
    // In another size all of it is drawn anew.
    EXPECT_EQ(screen.picture(2).pixel(170, 10) & 0xFFFFFFU, green);
    EXPECT_GT(screen.outcome.cost, first);
}

TEST(MovieBudget, CompletesADrawingThatWasCutByTheNextOnes) {
    Screening screen(standingAndMoving(4000).file());
    static_cast<void>(screen.picture());
    EXPECT_TRUE(screen.outcome.cut);
    for (int drawing = 0; drawing < 20 && screen.outcome.unfinished; ++drawing) {
        static_cast<void>(screen.picture());
        EXPECT_LE(screen.outcome.cost, DrawingBudget::whole);
    }
    EXPECT_FALSE(screen.outcome.cut);
    EXPECT_EQ(screen.at(5, 5), green);
}

TEST(MovieBudget, DrawsAnewWhatStoodStillWhenItChanges) {
    const Bits change = Bits().u8(swf::placeFlag::Move | swf::placeFlag::Matrix);
    MovieFile movie;
    movie.square(1, 0, 0, 100, red).square(2, 0, 0, 100, blue).square(3, 90, 90, 10, green);
    for (unsigned depth = 1; depth <= 1000; ++depth)
        movie.place(depth == 500 ? 2 : 1, depth);
    movie.show(4);
    for (unsigned depth = 501; depth <= 1000; ++depth)
        movie.tag(Tag::PlaceObject2, Bits(change).u16(depth).move(50, 0));
    movie.show(4).remove(500).place(3, 2000).show(4);
    Screening screen(movie.file());
    const auto colors = [&] {
        screen.advance(4);
        for (int drawing = 0; drawing < 3; ++drawing)
            static_cast<void>(screen.picture());
        return std::pair(screen.at(20, 20), screen.at(95, 95));
    };
    EXPECT_EQ(screen.at(20, 20), red);
    EXPECT_EQ(screen.at(20, 20), red);
    EXPECT_EQ(colors(), std::pair(blue, red));
    EXPECT_EQ(colors(), std::pair(red, green));
}

TEST(MovieBudget, DrawsEachTimeWhatTakesTooLongByItself) {
    MovieFile movie;
    movie.tag(Tag::DefineShape2, zigzag(1, 60000, false)).square(2, 0, 0, 100, blue);
    for (unsigned depth = 1; depth <= 500; ++depth)
        movie.place(2, depth);
    double time = 0;
    Screening screen(movie.place(1, 5000).show().file(),
                     [&] { return time += DrawingBudget::whole / 30; });
    static_cast<void>(screen.picture());
    for (int drawing = 0; drawing < 30 && screen.outcome.unfinished; ++drawing)
        static_cast<void>(screen.picture());
    EXPECT_FALSE(screen.outcome.unfinished);
    EXPECT_EQ(screen.at(1, 1), blue);
    EXPECT_TRUE(screen.outcome.cut);
}

TEST(MovieBudget, CopiesTheSeenPartOfAPictureAndItsEdges) {
    QImage image(4, 1, QImage::Format_RGB32);
    for (int x = 0; x < 4; ++x)
        image.setPixel(x, 0, 0xFF000000U + static_cast<unsigned>(x));
    const auto row = [&](int left, int width) {
        const QImage made = movieBrushes::extended(image, {left, -5, width, 20});
        std::string found;
        for (int x = 0; x < made.width(); ++x)
            found += std::to_string(qBlue(made.pixel(x, 19)));
        return found;
    };
    EXPECT_EQ(row(-2, 8), "00012333");
    EXPECT_EQ(row(1, 2), "12");
    EXPECT_EQ(row(2, 4), "2333");
    EXPECT_EQ(row(-9, 3), "000");
    EXPECT_EQ(row(9, 3), "333");
}

TEST(MovieBudget, ChangesTheColorsOfAPictureAsFarAsTheTimeGoes) {
    swf::ColorTransform colors;
    colors.multiply[0] = 0;
    QImage image(10, 10, QImage::Format_RGB32);
    image.fill(Qt::white);
    int rows = 0;
    EXPECT_FALSE(movieBrushes::recolored(image, colors, [&] { return ++rows < 5; }));
    EXPECT_EQ(rows, 5);
    const auto made = movieBrushes::recolored(image, colors, [] { return true; });
    ASSERT_TRUE(made);
    EXPECT_EQ(made->pixel(9, 9), 0xFF00FFFFU);
}

}  // namespace
