#include "tests/movies/Screening.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/readFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

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

/// What the program that makes movies says to a description, and that it fails.
std::string complaintAbout(const std::string& description) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "bad.movie";
    std::ofstream(path) << description;
    const std::string line = COBWEAVE_MAKE_MOVIE " 1.2.3 " + path.string() + ' ' +
                             (folder.path() / "bad.swf").string() + " 2>&1";
    FILE* const maker = popen(line.c_str(), "r");
    std::string said;
    char piece[256];
    while (std::fgets(piece, sizeof piece, maker) != nullptr)
        said += piece;
    EXPECT_NE(pclose(maker), 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "bad.swf"));
    const std::size_t name = said.find("bad.movie:");
    return name == std::string::npos ? said : said.substr(name);
}

TEST(MakeMovie, SaysWhereADescriptionIsWrong) {
    EXPECT_EQ(complaintAbout("size 10 10\n\n  nonsense\n"),
              "bad.movie:3: nothing begins with \"nonsense\"\n");
    EXPECT_EQ(complaintAbout("size 10 ten\n"),
              "bad.movie:1: \"ten\" is no number, where one is needed: a height\n");
    EXPECT_EQ(complaintAbout("size 10 10\nshape a\nfill none rect 0 0 1 1\nend\n"),
              "bad.movie:3: no colour is called \"none\"\n");
    EXPECT_EQ(complaintAbout("size 10 10\nshow it at 1\n"),
              "bad.movie:2: nothing is called \"it\"\n");
    EXPECT_EQ(complaintAbout("size 10 10\nshape a\n"), "bad.movie:2: its end is missing\n");
    EXPECT_EQ(complaintAbout("-- nothing\n"), "bad.movie:0: a movie has a size\n");
    EXPECT_EQ(complaintAbout("color a #12345\n"), "bad.movie:1: no colour is called \"#12345\"\n");
}

}  // namespace
