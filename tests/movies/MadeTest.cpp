#include "tests/movies/Screening.h"
#include "tests/support/comesTrue.h"
#include "tests/support/readFile.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

/// A movie that `make_movie` made of a description in made/.
class MadeMovie : public Screening {
public:
    explicit MadeMovie(const std::string& name)
        : Screening(readFile(std::filesystem::path(COBWEAVE_MADE) / (name + ".swf"))) {}

    void mouse(bool held) {
        player.mouse({30 * swf::twipsPerPixel, 30 * swf::twipsPerPixel}, held);
    }
};

TEST(MadeMovie, KeepsWhatIsAtADepthThatIsTaken) {
    MadeMovie movie("depths");
    movie.advance();
    EXPECT_EQ(movie.at(15, 10), red);
    EXPECT_EQ(movie.at(25, 10), black);
    movie.advance();
    EXPECT_EQ(movie.at(15, 10), black);
}

TEST(MadeMovie, OfVersionFiveHasBothAtADepthThatIsTaken) {
    MadeMovie movie("olddepths");
    EXPECT_EQ(movie.movie->version, 5U);
    movie.advance();
    EXPECT_EQ(movie.at(5, 10), red);
    EXPECT_EQ(movie.at(15, 10), blue);
    movie.advance();
    EXPECT_EQ(movie.at(5, 10), black);
    EXPECT_EQ(movie.at(15, 10), blue);
}

TEST(MadeMovie, FindsLabelsWhateverTheirCase) {
    EXPECT_EQ(MadeMovie("labels").commands(), "first;late;");
}

TEST(MadeMovie, KeepsItsFirstBackground) {
    MadeMovie movie("backgrounds");
    movie.advance();
    ASSERT_TRUE(movie.movie->background);
    EXPECT_EQ(*movie.movie->background, (swf::Color{0, 0, 255, 255}));
}

TEST(MadeMovie, ActsNewestFirstAndParentsLast) {
    MadeMovie movie("order");
    EXPECT_EQ(movie.commands(), "newer1;older1;movie1;");
    movie.advance();
    EXPECT_EQ(movie.commands(), "newer2;older2;movie2;");
}

TEST(MadeMovie, GoesOnWithTheActionsOfAClipThatHasGone) {
    MadeMovie movie("gone");
    movie.advance();
    EXPECT_EQ(movie.commands(), "gone;still;end;");
    EXPECT_TRUE(movie.player.stage().empty());
}

TEST(MadeMovie, ShowsTheOneFrameOfASpriteWithoutItsEnd) {
    EXPECT_EQ(MadeMovie("open").at(10, 10), red);
}

TEST(MadeMovie, KeepsTheStateOfAButtonThatALoopPlacesAnew) {
    MadeMovie movie("loop");
    movie.mouse(false);
    movie.advance();
    EXPECT_EQ(movie.at(30, 30), green);
    movie.mouse(true);
    movie.advance(2);
    EXPECT_EQ(movie.at(30, 30), blue);
    movie.mouse(false);
    EXPECT_EQ(movie.at(30, 30), green);
    EXPECT_EQ(movie.commands(), "over;press;release;");
}

TEST(MadeMovie, ShowsManyThingsEdgesAndCurves) {
    MadeMovie movie("many");
    EXPECT_EQ(movie.player.stage().size(), 40U * 30 + 1 + 10 * 10);
    EXPECT_EQ(movie.at(117, 87), red);
    EXPECT_EQ(movie.at(132, 20), green);
    EXPECT_EQ(movie.at(9 * 6 + 3, 9 * 6 + 3), blue);
    EXPECT_FALSE(movie.outcome.cut);
}

/// None is unpacked within a drawing.
TEST(MadeMovie, ShowsLargePicturesWhenTheyAreReady) {
    MadeMovie movie("pictures");
    EXPECT_EQ(movie.at(100, 100), black);
    EXPECT_TRUE(movie.outcome.unfinished);
    QImage image;
    EXPECT_TRUE(comesTrue([&] {
        image = movie.picture();
        return !movie.outcome.unfinished;
    }));
    EXPECT_FALSE(movie.outcome.cut);
    const auto at = [&](int x, int y) { return image.pixel(x, y) & 0xFFFFFFU; };
    EXPECT_EQ(at(100, 100), red);
    EXPECT_EQ(at(600, 600), white);
    EXPECT_EQ(at(800, 100), white);
    EXPECT_EQ(at(1300, 600), red);
    EXPECT_GT(qRed(at(100, 800)), 240);
    EXPECT_LT(qGreen(at(100, 800)), 16);
    EXPECT_GT(qGreen(at(600, 800)), 240);
    EXPECT_EQ(at(720, 720), red);
    EXPECT_EQ(at(1200, 720), green);
    EXPECT_EQ(at(720, 1200), blue);
}

}  // namespace
