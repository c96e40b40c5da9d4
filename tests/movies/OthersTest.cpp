#include "tests/movies/Screening.h"
#include "tests/support/readFile.h"

#include <gtest/gtest.h>

namespace {

/// A disc, a gradient, a line, text and a picture, drawn by us with a writer of movies that has
/// nothing to do with ours (FreeHEP's, as Debian has it).
TEST(MovieOfAnotherWriter, IsShown) {
    Screening screen(readFile(COBWEAVE_DRAWING));
    EXPECT_EQ(screen.movie->frame.width(), 300 * 20);
    EXPECT_EQ(screen.at(60, 50), 0xC81E1EU);
    EXPECT_EQ(screen.at(5, 5), white);
    EXPECT_GT(qBlue(screen.at(130, 50)), 180);
    EXPECT_GT(qGreen(screen.at(210, 50)), 180);
    EXPECT_EQ(screen.at(50, 110), black);
    EXPECT_GT(qRed(screen.at(275, 125)), 150);
    EXPECT_GT(qBlue(screen.at(245, 155)), 150);
    int inked = 0;
    for (int x = 20; x < 180; ++x)
        inked += screen.at(x, 172) == black;
    EXPECT_GT(inked, 10);
}

}  // namespace
