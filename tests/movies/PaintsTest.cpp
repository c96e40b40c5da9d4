#include "tests/movies/Screening.h"
#include "tests/support/readFile.h"

#include <gtest/gtest.h>

namespace {

/// A movie of cells, 40 by 40 pixels, that `make_movie` made of made/paints.movie.
class MoviePaints : public testing::Test {
protected:
    MoviePaints() {
        // A small picture is unpacked in one drawing and seen in the next.
        static_cast<void>(screen.picture());
        image = screen.picture();
    }
    QRgb at(int column, int row, int x, int y) {
        return image.pixel(40 * column + x, 40 * row + y) & 0xFFFFFFU;
    }
    /// How many pixels of the column are white, where each may be so in part.
    int heightOfLine(int column) {
        int sum = 0;
        for (int y = 0; y < 40; ++y)
            sum += qRed(at(column, 2, 20, y));
        return (sum + 127) / 255;
    }

    Screening screen{readFile(COBWEAVE_MADE "/paints.swf")};
    QImage image;
};

void expectNear(QRgb color, int redPart, int greenPart, int bluePart) {
    EXPECT_NEAR(qRed(color), redPart, 8);
    EXPECT_NEAR(qGreen(color), greenPart, 8);
    EXPECT_NEAR(qBlue(color), bluePart, 8);
}

TEST_F(MoviePaints, MixNumbersOrLight) {
    expectNear(at(0, 0, 20, 20), 127, 127, 0);
    expectNear(at(1, 0, 20, 20), 188, 188, 0);
}

TEST_F(MoviePaints, TakeTheStopsOfAGradientAsTheyAreWritten) {
    EXPECT_EQ(at(2, 0, 18, 20), red);
    EXPECT_EQ(at(2, 0, 22, 20), blue);
    expectNear(at(3, 0, 38, 20), 10, 245, 0);
    expectNear(at(4, 0, 28, 20), 242, 0, 0);
    expectNear(at(4, 0, 30, 20), 15, 15, 255);
}

TEST_F(MoviePaints, BeginARadialGradientAtItsFocus) {
    expectNear(at(5, 0, 29, 20), 10, 10, 10);
    EXPECT_GT(qRed(at(5, 0, 10, 20)), 120);
    EXPECT_EQ(at(5, 0, 1, 1), white);
    EXPECT_GT(qRed(at(5, 1, 2, 20)), 200);
    expectNear(at(5, 1, 37, 20), 10, 0, 245);
}

TEST_F(MoviePaints, ReflectAGradientBeyondItsEnds) {
    EXPECT_GT(qRed(at(0, 1, 9, 20)), 230);
    EXPECT_LT(qRed(at(0, 1, 19, 20)), 30);
    EXPECT_GT(qRed(at(0, 1, 29, 20)), 230);
}

TEST_F(MoviePaints, ShowPicturesOnceOrOverAndOver) {
    EXPECT_EQ(at(1, 1, 2, 2), red);
    EXPECT_EQ(at(1, 1, 38, 2), green);
    EXPECT_EQ(at(1, 1, 38, 38), white);
    EXPECT_EQ(at(2, 1, 2, 2), red);
    EXPECT_EQ(at(2, 1, 17, 2), green);
    EXPECT_EQ(at(2, 1, 32, 37), blue);
}

TEST_F(MoviePaints, FillLinesWithPicturesAndGradients) {
    EXPECT_EQ(at(3, 1, 5, 15), red);
    EXPECT_EQ(at(3, 1, 38, 25), white);
    EXPECT_EQ(at(3, 1, 5, 5), black);
    EXPECT_GT(qRed(at(4, 1, 9, 20)), 230);
    EXPECT_LT(qRed(at(4, 1, 19, 20)), 30);
}

TEST_F(MoviePaints, ScaleLinesInTheDirectionsThatTheySay) {
    EXPECT_EQ(heightOfLine(0), 10);  // 2 times the root of (1 + 49) / 2
    EXPECT_EQ(heightOfLine(1), 2);
    EXPECT_EQ(heightOfLine(2), 14);
    EXPECT_EQ(heightOfLine(3), 2);
    EXPECT_EQ(heightOfLine(4), 9);  // the diagonal of a square leans 7.1 to one: 2 times 4.4
}

TEST_F(MoviePaints, BoundOthersByTheirOutlines) {
    EXPECT_EQ(at(5, 2, 7, 20), green);
    EXPECT_EQ(at(5, 2, 13, 20), black);
    EXPECT_EQ(at(5, 2, 18, 20), green);
}

}  // namespace
